#pragma once
// Widget: the application's one window. It owns the form, the plot's grid,
// legend and four reusable curves, and the cell editor of the table of
// points; it receives every user action as a slot, and its task solvers read
// the input panel, call the numerical code and write the results and plots.
//
// Construction redirects the process's standard error into the run log
// "log-<start time>.txt" in the working directory (the process ends with
// status 1 when that file cannot be created) and sets the C library's locale
// to "C". Only one Widget should exist at a time: the run log is
// process-wide.

#include <initializer_list>
#include <memory>
#include <vector>

#include <QWidget>
#include <qwt_legend.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>

#include "app/report.h"
#include "expression/function.h"
#include "numeric/point.h"

class ApproximatingPolynomial;
class QFileDialog;
class QKeyEvent;
class Polynomial;
class SpinBoxDelegate;
class Spline;
class Ui_Widget;

class Widget : public QWidget {
    Q_OBJECT

public:
    explicit Widget(QWidget* parent = nullptr);
    ~Widget() override;

protected:
    // Keyboard input into every spin box of the window, the table's cell
    // editors included: "." and "," are both taken as the decimal separator
    // of the window's language, and the first key
    // typed into a box that shows a value replaces that value (the boxes show
    // every decimal, so a digit typed into them would otherwise be refused or
    // land in the wrong place).
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void on_calcButton_clicked();
    void on_clearButton_clicked();
    void on_helpButton_clicked();
    void on_closeButton_clicked();
    void on_checkInterpolation_clicked();
    void on_checkSpline_clicked();
    void on_checkMNK_clicked();
    void on_checkDifferentiation_clicked();
    void on_checkIntegration_clicked();
    void on_checkRectMethod_clicked();
    void on_checkTrapezMethod_clicked();
    void on_checkSimpsonMethod_clicked();
    void on_n_valueChanged(int value);

private:
    void setFiles();

    // Makes `number` the selected task and gives the panel its layout.
    void selectTask(int number);
    // Sizes the table of points, labels its headers and puts a 0.0 item into
    // every empty cell; cells that already have an item keep it.
    void setPoints(int columns, int rows);
    void clearInput();
    void clearResult();
    void clearAll();
    // Back to the full range: the attached curves' extent (with a margin that
    // keeps the end points off the canvas frame), or the start-up axes when
    // no curve is attached.
    void showFullRange();
    // The plot's context menu (save, copy, show all) and its left-drag panner.
    void setUpPlotTools();
    // Asks for a file and writes the plot to it as PNG, SVG or PDF, by the
    // name's extension; a failure is shown with its reason.
    void savePlot();
    // Runs a save dialog built in saveFolder with its title and "Name (*.ext)"
    // filters, offering `proposed`: the name the user picks, or an empty text
    // when cancelled. The name's folder becomes saveFolder.
    QString askSaveName(QFileDialog& dialog, const QString& proposed);
    // Rescales both axes by factor around the canvas point at.
    void zoomPlot(const QPoint& at, double factor);

    // The keyboard (window_keys.cpp): the Tab chain of both pages, F1,
    // Ctrl+Return and Ctrl+Q, and the plot's focus and keys.
    void setUpKeyboard();
    // Ctrl+Return: calculates as «Расчет» does, with an open cell editor's
    // value taken, and leaves the focus where it was.
    void calculateFromKeyboard();
    // Keys the focused widget does not handle on its own: Shift+F10 for its
    // context menu, and on the plot "+", "-" and the arrows. True when used.
    bool keyCommand(QWidget* target, const QKeyEvent& key);
    // Where Tab (forward) or Shift+Tab lands: the table at its first or last
    // cell, a result field selected but shown from its start.
    void tabbedInto(QObject* target, bool forward);

    // What a screen reader says (accessibility.cpp): the frames' names and
    // the cells' places once, the controls' names from their labels after
    // every task change, the plot's description after every plot.
    void setUpAccessibility();
    void nameControls();
    void nameCells();
    void describePlot();

    // The report (report_tools.cpp): its actions, disabled until a
    // calculation has run and again when the panel is cleared or the task
    // changes; what a calculation records when it begins and ends (the error
    // box's text, when it failed); saving, printing, and opening the run log.
    void setUpReport();
    void enableReport(bool enabled);
    void beginReport();
    void endReport(const QString& error);
    void saveReport();
    void writeReport(const QString& name, bool html);
    void printReport();

    // Task input: the function typed in exprFunc (an empty field means 0),
    // and the table of points sorted by x; both table readers throw
    // EqualPointsException for abscissas closer than 1e-8.
    Function parseFunc();
    void getTableFunc(std::vector<Point>& points);
    void calcTableFunc(std::vector<Point>& points);

    // Sample storage of a plot, released when the plot function returns (the
    // curves keep copies). When the memory cannot be had, the user is told
    // and the process ends with status 1.
    using PlotArray = std::unique_ptr<double[]>;
    static PlotArray plotArray(int count);
    // Draws the table's points as red dots (curves[0], "f(x)") over the
    // sampled lines: curves[k] gets (xs, lines[k-1].ys) titled lines[k-1].title.
    // The lines are attached first and the dots last, so the dots lie on top.
    struct SampledLine {
        const double* ys;
        const char* title;
    };
    void showCurves(const std::vector<Point>& points, const double* xs, int samples,
                    std::initializer_list<SampledLine> lines);

    void solveIntegration();
    void solveInterpolation();
    void plotInterpolation(const std::vector<Point>& points, const Polynomial& p);
    void solveDifferentiation();
    void plotDifferentiation(const std::vector<Point>& points, const Polynomial& p,
                             const Polynomial& dp, const Polynomial& d2p);
    void solveMNK();
    void plotMNK(const std::vector<Point>& points, const ApproximatingPolynomial& p1,
                 const ApproximatingPolynomial& p2);
    void solveSpline();
    void plotSpline(const std::vector<Point>& points, const Spline& s);

    // 0 interpolation, 1 cubic spline, 2 least squares, 3 differentiation,
    // 4 integration.
    int task;
    // 0 rectangles, 1 trapezoidal rule, 2 Simpson's rule.
    int integrationMethod;
    // Table shape per task; tableColumns[0] follows the spin box n (n + 1).
    int tableColumns[5];
    int tableRows[5];
    // Created without a parent; the window deletes it (the table holds only
    // a guarded pointer to it), so that it lives exactly as long as the
    // window, which in the program is the whole process.
    SpinBoxDelegate* delegate;
    int plotSamples;
    // The plot items are members, declared before ui on purpose: they are
    // destroyed (and so detached from the plot) before the QWidget base
    // deletes the plot, which would otherwise delete attached items itself.
    QwtPlotCurve curves[4];
    QwtPlotGrid grid;
    QwtLegend legend;
    Ui_Widget* ui;
    // Where the plot or a report was last saved: the next save dialog opens there.
    QString saveFolder;
    // The last calculation, as its report tells it, and the run log's file.
    Report report;
    QString logPath;
};
