#pragma once
// ModalBoxCatcher: answers the application's modal message boxes in tests. While alive, a 10 ms timer (which also
// runs inside a box's own event loop) records each visible QMessageBox and closes it with Ok (or rejects it).

#include <functional>
#include <utility>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QString>
#include <QTimer>

struct CaughtBox {
    QString title;
    QString text;
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool hasParent = false;
};

class ModalBoxCatcher {
public:
    ModalBoxCatcher() {
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
    ModalBoxCatcher(const ModalBoxCatcher&) = delete;
    ModalBoxCatcher& operator=(const ModalBoxCatcher&) = delete;

    // Every box caught since construction or since the last take().
    std::vector<CaughtBox> take() { return std::exchange(boxes_, {}); }

    // Called for each box before it is closed: a box shown just before the process exits can only be reported from
    // here.
    std::function<void(const CaughtBox&)> onBox;

private:
    QTimer timer_;
    std::vector<CaughtBox> boxes_;
};
