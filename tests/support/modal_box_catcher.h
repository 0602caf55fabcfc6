#pragma once
// ModalBoxCatcher: answers the application's modal message boxes in tests.
// While an instance is alive, a timer polls QApplication::activeModalWidget()
// every 10 ms; each message box found is recorded (title, text, buttons,
// icon, parent) and closed with its Ok button (or rejected if it has none).
// The timer runs inside the box's own event loop, so code that opens a box
// and waits for it (QMessageBox::information) returns normally.

#include <functional>
#include <vector>

#include <QMessageBox>
#include <QObject>
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

    // Called for each box as it is caught, before it is closed: a box shown
    // just before the process exits can only be reported from here.
    std::function<void(const CaughtBox&)> onBox;

private:
    void poll();

    QTimer timer_;
    std::vector<CaughtBox> boxes_;
};
