#include "modal_box_catcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QWidget>

ModalBoxCatcher::ModalBoxCatcher() {
    timer_.setInterval(10);
    QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
    timer_.start();
}

std::vector<CaughtBox> ModalBoxCatcher::take() {
    std::vector<CaughtBox> caught;
    caught.swap(boxes_);
    return caught;
}

void ModalBoxCatcher::poll() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;

    CaughtBox caught;
    caught.title = box->windowTitle();
    caught.text = box->text();
    caught.buttons = box->standardButtons();
    caught.icon = box->icon();
    caught.hasParent = box->parentWidget() != nullptr;
    boxes_.push_back(caught);
    if (onBox) onBox(caught);

    if (QAbstractButton* ok = box->button(QMessageBox::Ok))
        ok->click();
    else
        box->reject();
}
