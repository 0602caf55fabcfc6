#pragma once
// WindowHarness: the application's main window under test. It makes a fresh
// temporary working directory (the window writes its run log there), builds
// and shows the window, answers every message box through a ModalBoxCatcher,
// and on destruction closes the window and gives file descriptor 2 back to
// the test process (the window redirects standard error into its log).

#include <memory>
#include <string>

#include <QString>
#include <QTableWidget>
#include <QWidget>

#include "app/widget.h"
#include "modal_box_catcher.h"
#include "temp_work_dir.h"

class WindowHarness {
public:
    WindowHarness();
    ~WindowHarness();
    WindowHarness(const WindowHarness&) = delete;
    WindowHarness& operator=(const WindowHarness&) = delete;

    Widget& window() { return *window_; }
    ModalBoxCatcher& boxes() { return catcher_; }
    const TempWorkDir& dir() const { return dir_; }

    // A child widget by object name; fails the test when there is none.
    template <class T = QWidget>
    T* child(const char* name) const {
        T* widget = window_->findChild<T*>(QString::fromLatin1(name));
        if (!widget) missingChild(name);
        return widget;
    }

    // Clicks the named button (a push button or a radio button).
    void click(const char* name);
    // Edits one cell of the table of points through its cell editor, typing
    // the value as a user would (with the window's decimal comma) and
    // committing it with Return.
    void typeCell(int row, int column, double value);
    double cell(int row, int column) const;
    // Types a number into the named spin box (decimal comma, as shown) or a
    // text into the named line edit, replacing what was there.
    void typeNumber(const char* name, double value);
    void typeText(const char* name, const QString& text);

    // The run log's file name, and everything written to it so far.
    std::string logName() const;
    std::string log() const;

private:
    static void missingChild(const char* name);

    TempWorkDir dir_;
    int savedStderr_;
    ModalBoxCatcher catcher_;
    std::unique_ptr<Widget> window_;
};
