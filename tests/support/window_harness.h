#pragma once
// WindowHarness: the main window under test, built and shown in a fresh temporary working directory (where it writes
// its run log), with every message box answered by a ModalBoxCatcher. Destruction closes the window and gives file
// descriptor 2 (redirected into the log) back to the test.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QPointF>
#include <QString>
#include <QTableWidget>
#include <QWidget>
#include <gtest/gtest.h>

#include "app/widget.h"
#include "modal_box_catcher.h"
#include "temp_work_dir.h"

inline QString u(const char* text) { return QString::fromUtf8(text); }

// The five task buttons, indexed by task number.
inline const char* const kTaskButtons[5] = {"checkInterpolation", "checkSpline", "checkMNK",
                                            "checkDifferentiation", "checkIntegration"};

// A curve attached to the plot.
struct Curve {
    std::string title;
    std::vector<QPointF> samples;
};

// The window in English for the life of the object: its translation is installed before the window is built, and
// taken away again so that the next window is as written.
class InEnglish {
public:
    InEnglish();
    ~InEnglish();
    InEnglish(const InEnglish&) = delete;
    InEnglish& operator=(const InEnglish&) = delete;
};

// Saves through the file dialog that `trigger` opens, as a user would: chooses the type (a filter's text) when one is
// given, types the name and accepts. Gives back the name the dialog offered.
QString saveThroughDialog(const std::function<void()>& trigger, const QString& name, const QString& type = QString());

class WindowHarness {
public:
    // beforeWindow, when given, runs in the fresh working directory (its path the argument) before the window opens
    // its run log there.
    explicit WindowHarness(const std::function<void(const std::string&)>& beforeWindow = {});
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
        if (!widget) ADD_FAILURE() << "the window has no child named " << name;
        return widget;
    }

    // Clicks the named push or radio button.
    void click(const char* name);
    // Types into a table cell through its editor, as a user would (decimal comma, Return to commit).
    void typeCell(int row, int column, double value);
    double cell(int row, int column) const;
    // Selects the task and types its input: f(x), the table's x row and (but for interpolation, whose n follows xs)
    // its f(x) row, and X*.
    void enter(int task, const char* function, const std::vector<double>& xs, const std::vector<double>& ys = {},
               double x1 = 0);
    // Replaces the content of the named spin box or line edit by typing.
    void typeNumber(const char* name, double value);
    void typeText(const char* name, const QString& text);

    // Presses "Расчет": the one information box with an Ok button that it must show, or an empty box (and a test
    // failure) when it showed another number of boxes.
    CaughtBox calculate();
    std::string field(const char* name) const;
    // The curves attached to the plot, in the order they were attached.
    std::vector<Curve> curves() const;

    // The run log's file name, and everything written to it so far.
    std::string logName() const;
    std::string log() const;

private:
    TempWorkDir dir_;
    int savedStderr_;
    ModalBoxCatcher catcher_;
    std::unique_ptr<Widget> window_;
};
