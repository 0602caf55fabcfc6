#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <QSpinBox>
#include <QTableWidget>

#include "task_window.h"

namespace {

const char* const taskButtons[5] = {"checkInterpolation", "checkSpline", "checkMNK",
                                    "checkDifferentiation", "checkIntegration"};

// Each failure reaches the user as exactly one "Ошибка" box and the log as
// its line and an empty line; fields written before the failure stay.
TEST(ErrorReport, EveryHandlerFromTheWindow) {
    const struct {
        const char* what;
        int task;
        std::function<void(WindowHarness&)> fill;
        const char* logLine;
        const char* message;
        const char* res1Prefix;  // what the task wrote before failing ("" for nothing)
    } cases[] = {
        {"wrong format", 4, [](WindowHarness& h) { h.typeText("exprFunc", u("x^")); },
         "Error: expression has wrong format.", "Неправильный формат ввода выражения", ""},
        {"non-Latin-1 letter", 0,
         [](WindowHarness& h) {
             h.typeText("exprFunc", u("2*х"));  // a Cyrillic x
             typePoints(h, {0, 1, 2, 3});
         },
         "Error: expression has wrong format.", "Неправильный формат ввода выражения", ""},
        {"bad result at a node", 4,
         [](WindowHarness& h) {
             h.typeText("exprFunc", u("1/x"));
             h.typeNumber("x1", -1);
             h.typeNumber("x2", 1);
             h.click("checkTrapezMethod");
         },
         "Error: result of expression evaluation is bad (equals to nan or inf).",
         "Значение выражения для заданных аргументов не определено либо слишком велико", ""},
        {"bad result at X*", 0,
         [](WindowHarness& h) {
             h.typeText("exprFunc", u("sqrt(x)"));
             typePoints(h, {0, 1, 2, 3});
             h.typeNumber("x1", -1);
         },
         "Error: result of expression evaluation is bad (equals to nan or inf).",
         "Значение выражения для заданных аргументов не определено либо слишком велико", "0(x-1)"},
        {"unknown variable", 4,
         [](WindowHarness& h) {
             h.typeText("exprFunc", u("y"));
             h.typeNumber("x2", 1);  // x1 = x2 would evaluate nothing
         },
         "Error: expression has unknown variable: y", "Неизвестная переменная: y", ""},
        {"unknown variable at the nodes", 0,
         [](WindowHarness& h) {
             h.typeText("exprFunc", u("x+alpha2"));
             typePoints(h, {0, 1, 2, 3});
         },
         "Error: expression has unknown variable: alpha2", "Неизвестная переменная: alpha2", ""},
        {"fresh interpolation table", 0, [](WindowHarness&) {},
         "Error: input table contains some equal X coordinates.",
         "Все точки, в которых задана исходная функция, должны быть различными", ""},
        {"fresh spline table", 1, [](WindowHarness&) {},
         "Error: input table contains some equal X coordinates.",
         "Все точки, в которых задана исходная функция, должны быть различными", ""},
        {"fresh least-squares table", 2, [](WindowHarness&) {},
         "Error: input table contains some equal X coordinates.",
         "Все точки, в которых задана исходная функция, должны быть различными", ""},
        {"fresh differentiation table", 3, [](WindowHarness&) {},
         "Error: input table contains some equal X coordinates.",
         "Все точки, в которых задана исходная функция, должны быть различными", ""},
        {"equal first and last columns", 3,
         [](WindowHarness& h) { typePoints(h, {7, 1, 2, 3, 7}, {1, 2, 3, 4, 5}); },
         "Error: input table contains some equal X coordinates.",
         "Все точки, в которых задана исходная функция, должны быть различными", ""},
        {"spline beyond its last node", 1,
         [](WindowHarness& h) {
             typePoints(h, {0, 1, 2, 3, 4}, {1, 3, 5, 7, 9});
             h.typeNumber("x1", 4.0001);
         },
         "Error: spline is undefined at x = 4.0001", "Значение сплайна в точке x = 4.0001 не определено",
         "S[1]=2x^1+1; "},
        {"spline before its first node", 1,
         [](WindowHarness& h) {
             typePoints(h, {-2.5, 1, 2, 3, 4}, {1, 3, 5, 7, 9});
             h.typeNumber("x1", -2.5001);
         },
         "Error: spline is undefined at x = -2.5001", "Значение сплайна в точке x = -2.5001 не определено",
         "S[1]="},
        // Abscissas one cell step apart leave no pivot of 1e-8 in the normal equations.
        {"singular normal equations", 2,
         [](WindowHarness& h) {
             typePoints(h, {0, 0.00001, 0.00002, 0.00003, 0.00004, 0.00005}, {1, 2, 3, 4, 5, 6});
         },
         "Error: matrix is singular.", "Матрица системы является вырожденной", ""},
        // The panel never gives a table without its cells; one taken away
        // behind its back fails as an internal error.
        {"table cell missing", 1,
         [](WindowHarness& h) { delete h.child<QTableWidget>("tableFunc")->takeItem(1, 2); },
         "Error: undefined error.", "Неизвестная ошибка", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        WindowHarness harness;
        harness.click(taskButtons[c.task]);
        c.fill(harness);
        const size_t logBefore = harness.log().size();
        expectErrorBox(calculate(harness), u(c.message));

        const std::string log = harness.log().substr(logBefore);
        EXPECT_TRUE(endsWith(log, std::string(c.logLine) + "\n\n")) << log;
        EXPECT_EQ(log.find(" task end."), std::string::npos) << log;
        EXPECT_TRUE(field(harness, "res1").startsWith(u(c.res1Prefix))) << field(harness, "res1").toStdString();
        if (!*c.res1Prefix) {
            EXPECT_EQ(field(harness, "res1"), QString());
        }
        EXPECT_EQ(field(harness, "eps1"), QString());
        EXPECT_TRUE(shownCurves(harness).empty());
    }
}

// Details of reading the table that the window shows.
TEST(TableInput, SortedForTheCalculationButNotOnScreen) {
    WindowHarness harness;
    harness.click("checkDifferentiation");
    typePoints(harness, {4, 3, 2, 1, 0}, {16, 9, 4, 1, 0});
    harness.typeNumber("x1", 1);
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(field(harness, "res1"), u("2"));
    for (int c = 0; c < 5; ++c) EXPECT_EQ(harness.cell(0, c), 4 - c);

    // Abscissas one cell step (1e-5) apart are distinct points.
    harness.click("checkSpline");
    typePoints(harness, {0, 0.00001, 0.00002, 0.00003, 0.00004}, {0, 1, 2, 3, 4});
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(field(harness, "res2"), u("0"));
}

TEST(TableInput, EmptyFunctionMeansZero) {
    WindowHarness harness;
    typePoints(harness, {0, 1, 2, 3});
    harness.typeNumber("x1", 2.5);
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(field(harness, "res2"), u("0+0(x+0)+0(x+0)(x-1)+0(x+0)(x-1)(x-2)"));
    EXPECT_EQ(field(harness, "eps1"), u("0"));
}

}  // namespace
