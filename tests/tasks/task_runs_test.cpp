#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QtWidgets>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "window_harness.h"

namespace {

QString u(const char* text) { return QString::fromUtf8(text); }
using Fn = std::function<double(double)>;
const char* const taskButtons[5] = {"checkInterpolation", "checkSpline", "checkMNK", "checkDifferentiation",
                                    "checkIntegration"};

struct Curve {
    std::string title;
    std::vector<QPointF> samples;
};

// The curves attached to the plot, which must have these titles in this order.
std::vector<Curve> curves(WindowHarness& h, const std::vector<std::string>& titles = {}) {
    std::vector<Curve> shown;
    std::vector<std::string> shownTitles;
    for (QwtPlotItem* item : h.child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve)) {
        auto* curve = static_cast<QwtPlotCurve*>(item);
        shown.push_back({curve->title().text().toStdString(), {}});
        shownTitles.push_back(shown.back().title);
        for (size_t i = 0; i < curve->dataSize(); ++i) shown.back().samples.push_back(curve->sample(int(i)));
    }
    EXPECT_EQ(shownTitles, titles);
    shown.resize(titles.size());
    return shown;
}

// Saves the result tab of a successful run into the build tree for a person to look at.
void screenshot(WindowHarness& h, const char* name) {
    const QString dir = QString::fromUtf8(KALKORA_SCREENSHOT_DIR);
    h.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    EXPECT_TRUE(QDir().mkpath(dir) && h.window().grab().save(dir + u("/result-") + u(name) + u(".png")));
}

// 100 samples from a to b, each on y within the tolerance.
void expectCurve(const Curve& curve, double a, double b, const Fn& y, double tolerance = 1e-9) {
    ASSERT_EQ(curve.samples.size(), 100u) << curve.title;
    EXPECT_DOUBLE_EQ(curve.samples.front().x(), a) << curve.title;
    EXPECT_NEAR(curve.samples.back().x(), b, 1e-12) << curve.title;
    for (const QPointF& s : curve.samples) EXPECT_NEAR(s.y(), y(s.x()), tolerance) << curve.title << " at " << s.x();
}

// The dots of the table points, sorted by x, with y = f(x).
void expectDots(const Curve& curve, std::vector<double> xs, const Fn& f) {
    std::sort(xs.begin(), xs.end());
    EXPECT_EQ(curve.title, "f(x)");
    ASSERT_EQ(curve.samples.size(), xs.size());
    for (size_t i = 0; i < xs.size(); ++i) EXPECT_EQ(curve.samples[i], QPointF(xs[i], f(xs[i])));
}

// Enters a task's input as a user would: f(x), the nodes' count n (if any are given), x in row 0
// and y in row 1 of the table, X* (or x1).
void enter(WindowHarness& h, int task, const char* function, const std::vector<double>& xs,
           const std::vector<double>& ys = {}, double x1 = 0) {
    h.click(taskButtons[task]);
    if (task == 0 && !xs.empty()) h.child<QSpinBox>("n")->setValue(int(xs.size()) - 1);
    h.typeText("exprFunc", u(function));
    for (size_t c = 0; c < xs.size(); ++c) h.typeCell(0, int(c), xs[c]);
    for (size_t c = 0; c < ys.size(); ++c) h.typeCell(1, int(c), ys[c]);
    h.typeNumber("x1", x1);
}

// Presses "Расчет" and checks the one box it shows: success, or the error with this text.
void calculate(WindowHarness& h, const QString& error = QString()) {
    h.click("calcButton");
    const std::vector<CaughtBox> boxes = h.boxes().take();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, error.isNull() ? u("Сообщение") : u("Ошибка"));
    EXPECT_EQ(boxes[0].text.toStdString(), (error.isNull() ? u("Расчет завершен") : error).toStdString());
    EXPECT_EQ(boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(boxes[0].buttons, QMessageBox::Ok);
}

std::string field(WindowHarness& h, const char* name) { return h.child<QLineEdit>(name)->text().toStdString(); }

// The four result fields, "res1 | res2 | eps1 | eps2".
std::string fields(WindowHarness& h) {
    return field(h, "res1") + " | " + field(h, "res2") + " | " + field(h, "eps1") + " | " + field(h, "eps2");
}

// The run's log: framed by the task's begin and end lines, holding the numerical code's trace.
void expectLog(WindowHarness& h, const std::string& task, const std::string& trace) {
    const std::string log = h.log(), begin = task + " task begin.\n\n", end = task + " task end.\n\n";
    EXPECT_EQ(log.compare(0, begin.size(), begin), 0) << log;
    EXPECT_TRUE(log.size() > end.size() && log.compare(log.size() - end.size(), end.size(), end) == 0) << log;
    EXPECT_NE(log.find(trace), std::string::npos) << log;
}

TEST(Interpolation, PolynomialsErrorAndPlot) {
    const Fn square = [](double x) { return x * x; };
    const struct {
        const char* function;
        std::vector<double> nodes;  // as typed; n follows their count
        double xStar;
        const char *lagrange, *newton, *error;
        Fn interpolant;
    } cases[] = {
        {"x^2", {3, 0, 2, 1}, 1.5, "0(x-1)(x-2)(x-3)+0.5(x+0)(x-2)(x-3)-2(x+0)(x-1)(x-3)+1.5(x+0)(x-1)(x-2)",
         "0+1(x+0)+1(x+0)(x-1)+0(x+0)(x-1)(x-2)", "0", square},
        {"", {-1, 0.5, 2}, 7, "0(x-0.5)(x-2)+0(x+1)(x-2)+0(x+1)(x-0.5)", "0+0(x+1)+0(x+1)(x-0.5)", "0",
         [](double) { return 0.0; }},
        {"x^2", {2}, 5, "4", "4", "21", [](double) { return 4.0; }},
        {"2*x+1", {-1.5, 2.5}, 0.25, "0.5(x-2.5)+1.5(x+1.5)", "-2+2(x+1.5)", "0", [](double x) { return 2 * x + 1; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.lagrange);
        WindowHarness h;
        enter(h, 0, c.function, c.nodes, {}, c.xStar);
        calculate(h);
        EXPECT_EQ(fields(h), c.lagrange + (" | " + std::string(c.newton)) + " | " + c.error + " | ");
        for (size_t i = 0; i < c.nodes.size(); ++i) EXPECT_EQ(h.cell(0, int(i)), c.nodes[i]);  // not reordered
        const std::vector<Curve> shown = curves(h, {"N(x)", "f(x)"});
        const auto [lo, hi] = std::minmax_element(c.nodes.begin(), c.nodes.end());
        expectCurve(shown[0], *lo - (c.nodes.size() == 1), *hi + (c.nodes.size() == 1), c.interpolant, 1e-12);
        expectDots(shown[1], c.nodes, c.interpolant);
        expectLog(h, "Interpolation", "Newton polynomial constructed.\n");
        if (&c != cases) continue;
        EXPECT_EQ(h.log(), "Interpolation task begin.\n\n"
                           "Lagrange polynomial constructed.\n(There is no significant information about this process.)\n\n"
                           "Newton polynomial constructed.\ndelta[1] = 1\ndelta[2] = 1\ndelta[3] = -0\n\n"
                           "Interpolation task end.\n\n");
        screenshot(h, "interpolation");
    }
}

TEST(Differentiation, DerivativesAtXStarAndPlot) {
    const Fn square = [](double x) { return x * x; }, twice = [](double x) { return 2 * x; };
    const Fn line = [](double x) { return 2 * x + 1; }, two = [](double) { return 2.0; };
    const struct {
        std::vector<double> xs;
        double xStar;
        const char *first, *second;
        Fn f, df, d2f;
    } cases[] = {
        {{0, 1, 2, 3, 4}, 1.5, "3", "2", square, twice, two},
        {{4, 3, 2, 1, 0}, 10, "20", "2", square, twice, two},
        {{0, 1, 2, 3, 4}, -3, "2", "0", line, two, [](double) { return 0.0; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        WindowHarness h;
        std::vector<double> ys;
        for (double x : c.xs) ys.push_back(c.f(x));
        enter(h, 3, "", c.xs, ys, c.xStar);
        calculate(h);
        EXPECT_EQ(fields(h), c.first + (" | " + std::string(c.second)) + " |  | ");
        const std::vector<Curve> shown = curves(h, {"N(x)", "N'(x)", "N''(x)", "f(x)"});
        expectCurve(shown[0], 0, 4, c.f);
        expectCurve(shown[1], 0, 4, c.df);
        expectCurve(shown[2], 0, 4, c.d2f);
        expectDots(shown[3], c.xs, c.f);
        expectLog(h, "Differentiation", "Newton polynomial constructed.\ndelta[1] = ");
        if (&c == cases) screenshot(h, "differentiation");
    }
}

TEST(LeastSquares, LineAndParabola) {
    const struct {
        std::vector<double> xs, ys;
        double p1[2], p2[3];  // coefficients from the highest power down
        const char* fields;  // the points lie on a parabola: its sum of squared errors is 0
    } cases[] = {
        {{0, 1, 2, 3, 4, 5}, {1, 3, 5, 7, 9, 11}, {2, 1}, {0, 2, 1}, "2x^1+1 | 0x^2+2x^1+1 | 0 | 0"},
        {{0, 1, 2, 3, 4, 5}, {0, 1, 4, 9, 16, 25}, {5, -10.0 / 3}, {1, 0, 0}, "5x^1-3.333 | 1x^2+0x^1+0 | 37.333 | 0"},
        {{5, 2, 0, 4, 1, 3}, {25, 4, 0, 16, 1, 9}, {5, -10.0 / 3}, {1, 0, 0}, "5x^1-3.333 | 1x^2+0x^1+0 | 37.333 | 0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.xs[0]);
        WindowHarness h;
        enter(h, 2, "", c.xs, c.ys);
        calculate(h);
        EXPECT_EQ(fields(h), c.fields);
        const auto [lo, hi] = std::minmax_element(c.xs.begin(), c.xs.end());
        const std::vector<Curve> shown = curves(h, {"P1(x)", "P2(x)", "f(x)"});
        expectCurve(shown[0], *lo, *hi, [&](double x) { return c.p1[0] * x + c.p1[1]; });
        expectCurve(shown[1], *lo, *hi, [&](double x) { return (c.p2[0] * x + c.p2[1]) * x + c.p2[2]; });
        EXPECT_EQ(shown[2].samples.size(), 6u);
        expectLog(h, "Least squares", "Approximating polynomial of degree 1 construction...");
        EXPECT_NE(h.log().find("Approximating polynomial of degree 2 construction..."), std::string::npos);
        if (&c == cases + 1) screenshot(h, "least-squares");
    }
}

TEST(Spline, ValueAtXStarWithinTheNodes) {
    const std::vector<double> steps = {0, 1, 2, 3, 4}, line = {1, 3, 5, 7, 9}, zigzag = {0, 1, 0, 1, 0};
    const struct {
        std::vector<double> xs, ys;
        double xStar, value;
    } cases[] = {
        {steps, line, 0, 1},
        {steps, line, 4, 9},
        {steps, line, 2.5, 6},
        {steps, zigzag, 1, 1},
        {steps, {2, -1, 0.5, 3, 3}, 2, 0.5},
        {{0, 0.00001, 0.00002, 0.00003, 0.00004}, {0, 1, 2, 3, 4}, 0, 0},  // one cell step apart: distinct
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.xStar);
        WindowHarness h;
        enter(h, 1, "", c.xs, c.ys, c.xStar);
        calculate(h);
        EXPECT_NEAR(std::stod(field(h, "res2")), c.value, 1e-12) << field(h, "res2");
        EXPECT_TRUE(c.ys != line || field(h, "res1") == "S[1]=2x^1+1; S[2]=2x^1+1; S[3]=2x^1+1; S[4]=2x^1+1")
            << field(h, "res1");
        const std::vector<Curve> shown = curves(h, {"S(x)", "f(x)"});
        ASSERT_EQ(shown[0].samples.size(), 100u);
        EXPECT_EQ(shown[0].samples.front(), QPointF(c.xs[0], c.ys[0]));  // through the end nodes
        EXPECT_NEAR(shown[0].samples.back().y(), c.ys[4], 1e-12);
        if (c.ys == line) expectCurve(shown[0], 0, 4, [](double x) { return 2 * x + 1; });
        EXPECT_EQ(shown[1].samples.size(), 5u);
        expectLog(h, "Spline", "\nMatrix:\n");
        if (&c == cases + 4) screenshot(h, "spline");
    }
}

TEST(Integration, EachRuleOverLimitsAndSteps) {
    const struct {
        const char* function;
        double x1, x2, h1, h2;
        int rule;  // rectangles, trapezoids, Simpson
        const char* fields;
    } cases[] = {
        {"x", 0, 1, 0.5, 0.25, 0, "0.5 | 0.5 | 0 | "},
        {"x", 0, 1, 0.5, 0.25, 1, "0.5 | 0.5 | 0 | "},
        {"x", 0, 1, 0.5, 0.25, 2, "0.5 | 0.5 | 0 | "},
        {"x^2", 0, 1, 0.5, 0.25, 0, "0.3125 | 0.328125 | -0.0052083 | "},
        {"x^2", 0, 1, 0.5, 0.25, 1, "0.375 | 0.34375 | 0.010417 | "},
        {"x^2", 0, 1, 1, 0.5, 2, "0.333333 | 0.333333 | 0 | "},
        {"x", 1, 0, 0.5, 0.25, 0, "-0.5 | -0.5 | 0 | "},
        {"x^2", 1, 0, 0.5, 0.25, 1, "-0.375 | -0.34375 | -0.010417 | "},
        {"x^2", 2, 2, 0.5, 0.25, 2, "0 | 0 | 0 | "},
        {"x^2", 2, 2, 0.5, 0.5, 0, "0 | 0 | nan | "},
        {"x", 0, 1, 0.3, 0.3, 1, "0.5 | 0.5 | nan | "},
        {"", -3, 5, 0.5, 0.25, 2, "0 | 0 | 0 | "},
    };
    const char* const rules[3] = {"checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod"};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.function) + " " + rules[c.rule] + " " + std::to_string(c.x1) + ".." +
                     std::to_string(c.x2));
        WindowHarness h;
        h.click("checkIntegration");
        h.click("checkSimpsonMethod");
        enter(h, 4, c.function, {}, {}, c.x1);  // selecting the task again brings back rectangles
        h.typeNumber("x2", c.x2);
        h.typeNumber("h1", c.h1);
        h.typeNumber("h2", c.h2);
        if (c.rule) h.click(rules[c.rule]);
        calculate(h);
        EXPECT_EQ(fields(h), c.fields);
        curves(h);
        expectLog(h, "Integration", "Total: ");
        if (&c == cases + 4) screenshot(h, "integration");
        if (&c != cases) continue;
        EXPECT_EQ(h.log(), "Integration task begin.\n\n"
                           "Integration with rectangles method...\nx1 = 0   x2 = 1   h = 0.5\n"
                           "Part: 1   x_left = 0   x_right = 0.5   Result: 0.125\n"
                           "Part: 2   x_left = 0.5   x_right = 1   Result: 0.375\n"
                           "Total: 0.5\n\n"
                           "Integration with rectangles method...\nx1 = 0   x2 = 1   h = 0.25\n"
                           "Part: 1   x_left = 0   x_right = 0.25   Result: 0.03125\n"
                           "Part: 2   x_left = 0.25   x_right = 0.5   Result: 0.09375\n"
                           "Part: 3   x_left = 0.5   x_right = 0.75   Result: 0.15625\n"
                           "Part: 4   x_left = 0.75   x_right = 1   Result: 0.21875\n"
                           "Total: 0.5\n\n"
                           "Integration task end.\n\n");
    }
}

// A second press starts from an empty result tab; after a failure the window stays usable.
TEST(CalculateButton, SecondPressClearsTheFirstRun) {
    WindowHarness h;
    enter(h, 3, "", {0, 1, 2, 3, 4}, {0, 1, 4, 9, 16});
    calculate(h);
    calculate(h);
    curves(h, {"N(x)", "N'(x)", "N''(x)", "f(x)"});
    enter(h, 1, "", {0, 1, 2, 3, 4}, {0, 1, 0, 1, 0});
    calculate(h);
    curves(h, {"S(x)", "f(x)"});
    h.typeNumber("x1", 5);
    calculate(h, u("Значение сплайна в точке x = 5 не определено"));
    curves(h);
    EXPECT_EQ(field(h, "res2"), "");
    h.typeNumber("x1", 2);
    calculate(h);
    EXPECT_NEAR(std::stod(field(h, "res2")), 0.0, 1e-12);
    curves(h, {"S(x)", "f(x)"});
}

// Each failure reaches the user as exactly one "Ошибка" box and the log as its line and an empty
// line; fields written before the failure stay.
TEST(ErrorReport, EveryHandlerFromTheWindow) {
    const std::pair<const char*, const char*> format = {"Error: expression has wrong format.",
                                                        "Неправильный формат ввода выражения"};
    const std::pair<const char*, const char*> bad = {
        "Error: result of expression evaluation is bad (equals to nan or inf).",
        "Значение выражения для заданных аргументов не определено либо слишком велико"};
    const std::pair<const char*, const char*> equal = {
        "Error: input table contains some equal X coordinates.",
        "Все точки, в которых задана исходная функция, должны быть различными"};
    const std::vector<double> line = {1, 3, 5, 7, 9};
    const struct {
        int task;
        const char* function;
        std::vector<double> xs, ys;
        double x1;
        std::pair<const char*, const char*> report;  // log line, box text
        const char* res1;                             // what the task wrote before failing
    } cases[] = {
        {4, "x^", {}, {}, -1, format, ""},
        {0, "2*х", {0, 1, 2, 3}, {}, 0, format, ""},  // a Cyrillic letter
        {4, "1/(x+0.75)", {}, {}, -1, bad, ""},
        {0, "sqrt(x)", {0, 1, 2, 3}, {}, -1, bad, "0(x-1)"},
        {4, "y", {}, {}, -1, {"Error: expression has unknown variable: y", "Неизвестная переменная: y"}, ""},
        {0, "", {}, {}, 0, equal, ""},
        {1, "", {}, {}, 0, equal, ""},
        {2, "", {}, {}, 0, equal, ""},
        {3, "", {}, {}, 0, equal, ""},
        {3, "", {7, 1, 2, 3, 7}, {1, 2, 3, 4, 5}, 0, equal, ""},
        {1, "", {6, 7, 8, 9, 10}, line, 10.0001,
         {"Error: spline is undefined at x = 10.0001", "Значение сплайна в точке x = 10.0001 не определено"},
         "S[1]=2x^1-11; "},
        {1, "", {-2.5, 1, 2, 3, 4}, line, -2.5001,
         {"Error: spline is undefined at x = -2.5001", "Значение сплайна в точке x = -2.5001 не определено"}, "S[1]="},
        // Abscissas one cell step apart leave no pivot of 1e-8 in the normal equations.
        {2, "", {0, 0.00001, 0.00002, 0.00003, 0.00004, 0.00005}, {1, 2, 3, 4, 5, 6}, 0,
         {"Error: matrix is singular.", "Матрица системы является вырожденной"}, ""},
        // A table cell taken away behind the panel's back is an internal error.
        {1, nullptr, {}, {}, 0, {"Error: undefined error.", "Неизвестная ошибка"}, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.report.first);
        WindowHarness h;
        enter(h, c.task, c.function ? c.function : "", c.xs, c.ys, c.x1);
        if (!c.function) delete h.child<QTableWidget>("tableFunc")->takeItem(1, 2);
        calculate(h, u(c.report.second));
        const std::string log = h.log(), tail = c.report.first + std::string("\n\n");
        EXPECT_EQ(log.compare(log.size() - std::min(log.size(), tail.size()), tail.size(), tail), 0) << log;
        EXPECT_EQ(log.find(" task end."), std::string::npos) << log;
        EXPECT_EQ(field(h, "res1").substr(0, std::strlen(c.res1)), c.res1);
        EXPECT_EQ(field(h, "res1").empty(), !*c.res1);
        EXPECT_EQ(field(h, "eps1"), "");
        curves(h);
    }
}

}  // namespace
