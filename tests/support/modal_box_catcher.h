#pragma once
// ModalBoxCatcher: answers the application's modal message boxes in tests. While alive, a 10 ms timer (which also
// runs inside a box's own event loop) records each visible QMessageBox and closes it with Ok (or rejects it).

#include <functional>
#include <vector>

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
    ModalBoxCatcher();
    ModalBoxCatcher(const ModalBoxCatcher&) = delete;
    ModalBoxCatcher& operator=(const ModalBoxCatcher&) = delete;

    // Every box caught since construction or since the last take().
    std::vector<CaughtBox> take();

    // Called for each box before it is closed: a box shown just before the process exits can only be reported from
    // here.
    std::function<void(const CaughtBox&)> onBox;

private:
    QTimer timer_;
    std::vector<CaughtBox> boxes_;
};
