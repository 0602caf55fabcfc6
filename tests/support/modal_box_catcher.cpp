#include "modal_box_catcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <utility>

ModalBoxCatcher::ModalBoxCatcher() {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible()) return;
        boxes_.push_back({box->windowTitle(), box->text(), box->standardButtons(), box->icon(),
                          box->parentWidget() != nullptr});
        if (onBox) onBox(boxes_.back());
        if (QAbstractButton* ok = box->button(QMessageBox::Ok)) ok->click();
        else box->reject();
    });
    timer_.start(10);
}

std::vector<CaughtBox> ModalBoxCatcher::take() {
    return std::exchange(boxes_, {});
}
