// Each task from end to end through the window: input typed as a user would, the result fields, the curves on the
// plot and the framing of the run log; then every failure as its box and line.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QtWidgets>

#include "window_harness.h"

namespace {

using Fn = std::function<double(double)>;

// Enters a task's input: f(x), n from the number of nodes (interpolation), x in row 0 and y in row 1 of the table, X*
// (or x1).
// The four result fields, "res1 | res2 | eps1 | eps2".
std::string fields(WindowHarness& h) {
    return h.field("res1") + " | " + h.field("res2") + " | " + h.field("eps1") + " | " + h.field("eps2");
}

// The run log is one run of the task, framed by its begin and end lines.
void expectFramedLog(WindowHarness& h, const std::string& task) {
    const std::string log = h.log(), begin = task + " task begin.\n\n", end = task + " task end.\n\n";
    EXPECT_EQ(log.compare(0, begin.size(), begin), 0) << log;
    EXPECT_TRUE(log.size() > end.size() && log.compare(log.size() - end.size(), end.size(), end) == 0) << log;
    EXPECT_EQ(log.find(" task ", begin.size()), log.size() - end.size() + task.size()) << log;
}

// The four tasks that plot: each row typed, calculated, and its fields, curves and log checked. The curves are the
// task's lines, 100 samples over the range of the nodes (one node: a unit either side of it) on the given functions,
// then the table's points, sorted, as dots.
TEST(TaskRuns, FieldsCurvesAndLogOfEachPlottingTask) {
    const Fn square = [](double x) { return x * x; }, line = [](double x) { return 2 * x + 1; };
    const Fn twice = [](double x) { return 2 * x; }, two = [](double) { return 2.0; };
    const Fn zero = [](double) { return 0.0; };
    const struct {
        int task;
        const char* function;
        std::vector<double> xs, ys;  // as typed; interpolation computes y = f(x)
        double xStar;
        const char* fields;
        std::vector<Fn> lines;
    } cases[] = {
        {0, "x^2", {3, 0, 2, 1}, {9, 0, 4, 1}, 1.5,
         "0(x-1)(x-2)(x-3)+0.5(x+0)(x-2)(x-3)-2(x+0)(x-1)(x-3)+1.5(x+0)(x-1)(x-2) | "
         "0+1(x+0)+1(x+0)(x-1)+0(x+0)(x-1)(x-2) | 0 | ",
         {square}},
        {0, "x^2", {2}, {4}, 5, "4 | 4 | 21 | ", {[](double) { return 4.0; }}},
        {1, "", {1, 2, 3, 4, 5}, {3, 5, 7, 9, 11}, 4,
         "S[1]=2x^1+1; S[2]=2x^1+1; S[3]=2x^1+1; S[4]=2x^1+1 | 9 |  | ", {line}},
        {1, "", {0, 0.00001, 0.00002, 0.00003, 0.00004}, {0, 1, 2, 3, 4}, 0.00002, "", {}},  // one cell step apart
        {1, "", {0, 1, 2, 3, 4}, {0, 1, 4, 9, 16}, 1.5,  // S(X*) needs all six digits
         "S[1]=0.4286x^3+0.5714x^1; S[2]=-0.1429x^3+1.714x^2-1.143x^1+0.5714; S[3]=0.1429x^3+2.286x^1-1.714; "
         "S[4]=-0.4286x^3+5.143x^2-13.14x^1+13.71 | 2.23214 |  | ", {}},
        {2, "", {5, 2, 0, 4, 1, 3}, {25, 4, 0, 16, 1, 9}, 0, "5x^1-3.333 | 1x^2+0x^1+0 | 37.333 | 0",
         {[](double x) { return 5 * x - 10.0 / 3; }, square}},
        {3, "", {4, 3, 2, 1, 0}, {16, 9, 4, 1, 0}, 10, "20 | 2 |  | ", {square, twice, two}},
        {3, "", {0, 1, 2, 3, 4}, {1, 3, 5, 7, 9}, -3, "2 | 0 |  | ", {line, two, zero}},
    };
    const std::vector<std::string> titles[4] = {
        {"N(x)", "f(x)"}, {"S(x)", "f(x)"}, {"P1(x)", "P2(x)", "f(x)"}, {"N(x)", "N'(x)", "N''(x)", "f(x)"}};
    const char* const names[4] = {"Interpolation", "Spline", "Least squares", "Differentiation"};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.task) + " at " + std::to_string(c.xStar));
        WindowHarness h;
        h.enter(c.task, c.function, c.xs, c.ys, c.xStar);
        EXPECT_EQ(h.calculate().text, u("Расчет завершен"));
        EXPECT_TRUE(!*c.fields || fields(h) == c.fields) << fields(h);
        for (size_t i = 0; i < c.xs.size(); ++i) EXPECT_EQ(h.cell(0, int(i)), c.xs[i]);  // not reordered
        expectFramedLog(h, names[c.task]);
        if (&c == cases) {
            EXPECT_EQ(h.log(), "Interpolation task begin.\n\n"
                               "Lagrange polynomial constructed.\n(There is no significant information about this process.)\n\n"
                               "Newton polynomial constructed.\ndelta[1] = 1\ndelta[2] = 1\ndelta[3] = -0\n\n"
                               "Interpolation task end.\n\n");
        }

        const std::vector<Curve> shown = h.curves();
        std::vector<std::string> shownTitles;
        for (const Curve& curve : shown) shownTitles.push_back(curve.title);
        ASSERT_EQ(shownTitles, titles[c.task]);
        std::vector<std::pair<double, double>> dots;
        for (size_t i = 0; i < c.xs.size(); ++i) dots.push_back({c.xs[i], c.ys[i]});
        std::sort(dots.begin(), dots.end());
        ASSERT_EQ(shown.back().samples.size(), dots.size());
        for (size_t i = 0; i < dots.size(); ++i)
            EXPECT_EQ(shown.back().samples[i], QPointF(dots[i].first, dots[i].second)) << i;
        const bool single = dots.size() == 1;
        for (size_t k = 0; k < c.lines.size(); ++k) {
            const std::vector<QPointF>& s = shown[k].samples;
            ASSERT_EQ(s.size(), 100u) << shown[k].title;
            EXPECT_EQ(s.front().x(), dots.front().first - single) << shown[k].title;
            EXPECT_NEAR(s.back().x(), dots.back().first + single, 1e-12) << shown[k].title;
            for (const QPointF& p : s) EXPECT_NEAR(p.y(), c.lines[k](p.x()), 1e-9) << shown[k].title << " at " << p.x();
        }
    }
}

TEST(TaskRuns, IntegrationByEachRule) {
    // The rule: 0 rectangles, 1 trapezoids, 2 Simpson.
    const struct { const char* function; double x1, x2, h1, h2; int rule; const char* fields; } cases[] = {
        {"x^2", 0, 1, 0.5, 0.25, 0, "0.3125 | 0.328125 | -0.0052083 | "},
        {"x^2", 1, 0, 0.5, 0.25, 1, "-0.375 | -0.34375 | -0.010417 | "},
        {"x^2", 0, 1, 1, 0.5, 2, "0.333333 | 0.333333 | 0 | "},
        {"x", 0, 1, 0.3, 0.3, 1, "0.5 | 0.5 | nan | "},
        {"", -3, 5, 0.5, 0.25, 2, "0 | 0 | 0 | "},
    };
    const char* const rules[3] = {"checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod"};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.function) + " " + rules[c.rule]);
        WindowHarness h;
        h.click("checkIntegration");
        h.click("checkSimpsonMethod");
        h.enter(4, c.function, {}, {}, c.x1);  // selecting the task again brings back rectangles
        h.typeNumber("x2", c.x2);
        h.typeNumber("h1", c.h1);
        h.typeNumber("h2", c.h2);
        if (c.rule) h.click(rules[c.rule]);
        EXPECT_EQ(h.calculate().text, u("Расчет завершен"));
        EXPECT_EQ(fields(h), c.fields);
        EXPECT_TRUE(h.curves().empty());
        expectFramedLog(h, "Integration");
    }
}

// A second press starts from an empty result tab, and so does a failing one.
TEST(TaskRuns, SecondPressClearsTheFirstRun) {
    WindowHarness h;
    h.enter(1, "", {0, 1, 2, 3, 4}, {0, 1, 0, 1, 0});
    h.calculate();
    h.calculate();
    EXPECT_EQ(h.curves().size(), 2u);
    h.typeNumber("x1", 5);
    EXPECT_EQ(h.calculate().text, u("Значение сплайна в точке x = 5 не определено"));
    EXPECT_TRUE(h.curves().empty());
    EXPECT_EQ(h.field("res2"), "");
}

// Each failure reaches the user as exactly one "Ошибка" box and the log as its line and an empty line; fields written
// before the failure stay.
TEST(TaskRuns, EveryErrorHandlerFromTheWindow) {
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
        h.enter(c.task, c.function ? c.function : "", c.xs, c.ys, c.x1);
        if (!c.function) delete h.child<QTableWidget>("tableFunc")->takeItem(1, 2);
        const CaughtBox box = h.calculate();
        EXPECT_EQ(box.title, u("Ошибка"));
        EXPECT_EQ(box.text.toStdString(), c.report.second);
        const std::string log = h.log(), tail = c.report.first + std::string("\n\n");
        EXPECT_EQ(log.compare(log.size() - std::min(log.size(), tail.size()), tail.size(), tail), 0) << log;
        EXPECT_EQ(log.find(" task end."), std::string::npos) << log;
        EXPECT_EQ(h.field("res1").substr(0, std::strlen(c.res1)), c.res1);
        EXPECT_EQ(h.field("res1").empty(), !*c.res1);
        EXPECT_EQ(h.field("eps1"), "");
        EXPECT_TRUE(h.curves().empty());
    }
}

}  // namespace
