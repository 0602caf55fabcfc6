#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <QDir>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>

#include "task_window.h"

namespace {

// Checks a plotted sample set: count, first and last abscissa, and every
// ordinate against the function the curve should follow.
void expectSamples(const ShownCurve& curve, double a, double b, const std::function<double(double)>& y,
                   double tolerance) {
    ASSERT_EQ(curve.samples.size(), 100u) << curve.title;
    EXPECT_DOUBLE_EQ(curve.samples.front().x(), a) << curve.title;
    EXPECT_NEAR(curve.samples.back().x(), b, 1e-12) << curve.title;
    for (const QPointF& s : curve.samples) EXPECT_NEAR(s.y(), y(s.x()), tolerance) << curve.title << " at " << s.x();
}

void expectDots(const ShownCurve& curve, const std::vector<double>& xs, const std::vector<double>& ys) {
    EXPECT_EQ(curve.title, "f(x)");
    ASSERT_EQ(curve.samples.size(), xs.size());
    for (size_t i = 0; i < xs.size(); ++i) {
        EXPECT_EQ(curve.samples[i].x(), xs[i]);
        EXPECT_EQ(curve.samples[i].y(), ys[i]);
    }
}

void expectFramedLog(const std::string& log, const std::string& name) {
    EXPECT_TRUE(startsWith(log, name + " task begin.\n\n")) << log;
    EXPECT_TRUE(endsWith(log, name + " task end.\n\n")) << log;
}

TEST(InterpolationTask, PolynomialsErrorAndPlot) {
    const auto square = [](double x) { return x * x; };
    const struct {
        const char* function;
        int n;
        std::vector<double> typed;  // node abscissas in the typed column order
        double xStar;
        const char* lagrange;
        const char* newton;
        const char* error;
        std::vector<double> nodes, values;  // sorted, as plotted
        double a, b;                        // plotted range
        std::function<double(double)> interpolant;
    } cases[] = {
        {"x^2", 3, {0, 1, 2, 3}, 1.5,
         "0(x-1)(x-2)(x-3)+0.5(x+0)(x-2)(x-3)-2(x+0)(x-1)(x-3)+1.5(x+0)(x-1)(x-2)",
         "0+1(x+0)+1(x+0)(x-1)+0(x+0)(x-1)(x-2)", "0", {0, 1, 2, 3}, {0, 1, 4, 9}, 0, 3, square},
        {"x^2", 3, {3, 0, 2, 1}, -2,  // typed out of order; X* outside the nodes
         "0(x-1)(x-2)(x-3)+0.5(x+0)(x-2)(x-3)-2(x+0)(x-1)(x-3)+1.5(x+0)(x-1)(x-2)",
         "0+1(x+0)+1(x+0)(x-1)+0(x+0)(x-1)(x-2)", "0", {0, 1, 2, 3}, {0, 1, 4, 9}, 0, 3, square},
        {"", 2, {-1, 0.5, 2}, 7, "0(x-0.5)(x-2)+0(x+1)(x-2)+0(x+1)(x-0.5)", "0+0(x+1)+0(x+1)(x-0.5)",
         "0", {-1, 0.5, 2}, {0, 0, 0}, -1, 2, [](double) { return 0.0; }},
        {"x^2", 0, {2}, 5, "4", "4", "21", {2}, {4}, 1, 3, [](double) { return 4.0; }},
        {"2*x+1", 1, {-1.5, 2.5}, 0.25, "0.5(x-2.5)+1.5(x+1.5)", "-2+2(x+1.5)", "0", {-1.5, 2.5}, {-2, 6},
         -1.5, 2.5, [](double x) { return 2 * x + 1; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.function + std::string(" on ") + std::to_string(c.typed.size()) + " nodes");
        WindowHarness harness;
        harness.typeText("exprFunc", u(c.function));
        harness.child<QSpinBox>("n")->setValue(c.n);
        typePoints(harness, c.typed);
        harness.typeNumber("x1", c.xStar);
        expectSuccessBox(calculate(harness));

        EXPECT_EQ(field(harness, "res1").toStdString(), c.lagrange);
        EXPECT_EQ(field(harness, "res2").toStdString(), c.newton);
        EXPECT_EQ(field(harness, "eps1").toStdString(), c.error);
        EXPECT_EQ(field(harness, "eps2"), QString());
        for (size_t i = 0; i < c.typed.size(); ++i) EXPECT_EQ(harness.cell(0, static_cast<int>(i)), c.typed[i]);

        const std::vector<ShownCurve> curves = shownCurves(harness);
        ASSERT_EQ(titles(curves), (std::vector<std::string>{"N(x)", "f(x)"}));
        expectSamples(curves[0], c.a, c.b, c.interpolant, 1e-12);
        expectDots(curves[1], c.nodes, c.values);
        expectFramedLog(harness.log(), "Interpolation");
    }
}

TEST(InterpolationTask, LogsBothConstructionsBetweenItsFrame) {
    WindowHarness harness;
    harness.typeText("exprFunc", u("x^2"));
    typePoints(harness, {0, 1, 2, 3});
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(harness.log(),
              "Interpolation task begin.\n\n"
              "Lagrange polynomial constructed.\n(There is no significant information about this process.)\n\n"
              "Newton polynomial constructed.\ndelta[1] = 1\ndelta[2] = 1\ndelta[3] = -0\n\n"
              "Interpolation task end.\n\n");
}

TEST(DifferentiationTask, DerivativesAtXStarAndPlot) {
    const struct {
        std::vector<double> xs, ys;
        double xStar;
        const char *first, *second;
        std::function<double(double)> f, df, d2f;
    } cases[] = {
        {{0, 1, 2, 3, 4}, {0, 1, 4, 9, 16}, 1.5, "3", "2",
         [](double x) { return x * x; }, [](double x) { return 2 * x; }, [](double) { return 2.0; }},
        {{4, 3, 2, 1, 0}, {16, 9, 4, 1, 0}, 10, "20", "2",
         [](double x) { return x * x; }, [](double x) { return 2 * x; }, [](double) { return 2.0; }},
        {{0, 1, 2, 3, 4}, {1, 3, 5, 7, 9}, -3, "2", "0",
         [](double x) { return 2 * x + 1; }, [](double) { return 2.0; }, [](double) { return 0.0; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.first);
        WindowHarness harness;
        harness.click("checkDifferentiation");
        typePoints(harness, c.xs, c.ys);
        harness.typeNumber("x1", c.xStar);
        expectSuccessBox(calculate(harness));

        EXPECT_EQ(field(harness, "res1").toStdString(), c.first);
        EXPECT_EQ(field(harness, "res2").toStdString(), c.second);
        EXPECT_EQ(field(harness, "eps1"), QString());
        const std::vector<ShownCurve> curves = shownCurves(harness);
        ASSERT_EQ(titles(curves), (std::vector<std::string>{"N(x)", "N'(x)", "N''(x)", "f(x)"}));
        expectSamples(curves[0], 0, 4, c.f, 1e-9);
        expectSamples(curves[1], 0, 4, c.df, 1e-9);
        expectSamples(curves[2], 0, 4, c.d2f, 1e-9);
        expectDots(curves[3], {0, 1, 2, 3, 4}, c.f(1) == 1 ? std::vector<double>{0, 1, 4, 9, 16}
                                                          : std::vector<double>{1, 3, 5, 7, 9});
        const std::string log = harness.log();
        expectFramedLog(log, "Differentiation");
        EXPECT_NE(log.find("Newton polynomial constructed.\ndelta[1] = "), std::string::npos);
    }
}

TEST(LeastSquaresTask, LineAndParabola) {
    const struct {
        std::vector<double> xs, ys;
        double p1a, p1b;       // P1 = p1a x + p1b
        double p2a, p2b, p2c;  // P2 = p2a x^2 + p2b x + p2c
        const char *p1Text, *p2Text, *eps1, *eps2;  // nullptr: checked through the curves only
    } cases[] = {
        {{0, 1, 2, 3, 4, 5}, {1, 3, 5, 7, 9, 11}, 2, 1, 0, 2, 1, "2x^1+1", "0x^2+2x^1+1", "0", "0"},
        {{0, 1, 2, 3, 4, 5}, {0, 1, 4, 9, 16, 25}, 5, -10.0 / 3, 1, 0, 0, "5x^1-3.333", "1x^2+0x^1+0", "37.333", "0"},
        // Typed in another column order: the same fit.
        {{5, 2, 0, 4, 1, 3}, {25, 4, 0, 16, 1, 9}, 5, -10.0 / 3, 1, 0, 0, "5x^1-3.333", "1x^2+0x^1+0", "37.333", "0"},
        {{4, -2.5, 0, 1.5, 3, -1}, {9, -4, 1, 4, 7, -1}, 2, 1, 0, 2, 1, nullptr, nullptr, nullptr, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.xs[0]);
        WindowHarness harness;
        harness.click("checkMNK");
        typePoints(harness, c.xs, c.ys);
        expectSuccessBox(calculate(harness));

        const char* const names[4] = {"res1", "res2", "eps1", "eps2"};
        const char* const texts[4] = {c.p1Text, c.p2Text, c.eps1, c.eps2};
        for (int i = 0; i < 4; ++i) {
            if (texts[i]) {
                EXPECT_EQ(field(harness, names[i]).toStdString(), texts[i]) << names[i];
            }
        }
        // Points on the fitted curve leave (almost) nothing over.
        EXPECT_LT(std::fabs(field(harness, "eps2").toDouble()), 1e-18);

        const double lo = *std::min_element(c.xs.begin(), c.xs.end());
        const double hi = *std::max_element(c.xs.begin(), c.xs.end());
        const std::vector<ShownCurve> curves = shownCurves(harness);
        ASSERT_EQ(titles(curves), (std::vector<std::string>{"P1(x)", "P2(x)", "f(x)"}));
        expectSamples(curves[0], lo, hi, [&](double x) { return c.p1a * x + c.p1b; }, 1e-9);
        expectSamples(curves[1], lo, hi, [&](double x) { return (c.p2a * x + c.p2b) * x + c.p2c; }, 1e-9);
        EXPECT_EQ(curves[2].samples.size(), 6u);
        const std::string log = harness.log();
        expectFramedLog(log, "Least squares");
        EXPECT_NE(log.find("Approximating polynomial of degree 1 construction..."), std::string::npos);
        EXPECT_NE(log.find("Approximating polynomial of degree 2 construction..."), std::string::npos);
    }
}

TEST(SplineTask, ValueAtXStarWithinTheNodes) {
    const std::vector<double> xs = {0, 1, 2, 3, 4};
    const struct {
        std::vector<double> ys;
        double xStar;
        double value;
    } cases[] = {
        {{1, 3, 5, 7, 9}, 0, 1},  {{1, 3, 5, 7, 9}, 4, 9},    {{1, 3, 5, 7, 9}, 2.5, 6},
        {{0, 1, 0, 1, 0}, 0, 0},  {{0, 1, 0, 1, 0}, 1, 1},    {{0, 1, 0, 1, 0}, 3, 1},
        {{0, 1, 0, 1, 0}, 4, 0},  {{2, -1, 0.5, 3, 3}, 2, 0.5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE("X* = " + std::to_string(c.xStar));
        WindowHarness harness;
        harness.click("checkSpline");
        typePoints(harness, xs, c.ys);
        harness.typeNumber("x1", c.xStar);
        expectSuccessBox(calculate(harness));

        EXPECT_NEAR(field(harness, "res2").toDouble(), c.value, 1e-12) << field(harness, "res2").toStdString();
        if (c.ys[1] == 3) {
    EXPECT_EQ(field(harness, "res1"), u("S[1]=2x^1+1; S[2]=2x^1+1; S[3]=2x^1+1; S[4]=2x^1+1"));
        }
        const std::vector<ShownCurve> curves = shownCurves(harness);
        ASSERT_EQ(titles(curves), (std::vector<std::string>{"S(x)", "f(x)"}));
        ASSERT_EQ(curves[0].samples.size(), 100u);
        EXPECT_EQ(curves[0].samples.front(), QPointF(0, c.ys[0]));
        EXPECT_NEAR(curves[0].samples.back().y(), c.ys[4], 1e-12);
        expectDots(curves[1], xs, c.ys);
        const std::string log = harness.log();
        expectFramedLog(log, "Spline");
        EXPECT_NE(log.find("h[4] = 1\n\nMatrix:\n"), std::string::npos);
    }
}

TEST(IntegrationTask, EachRuleOverLimitsAndSteps) {
    const struct {
        const char* function;
        double x1, x2, h1, h2;
        const char* rule;
        const char *res1, *res2, *eps;
    } cases[] = {
        {"x", 0, 1, 0.5, 0.25, "checkRectMethod", "0.5", "0.5", "0"},
        {"x", 0, 1, 0.5, 0.25, "checkTrapezMethod", "0.5", "0.5", "0"},
        {"x", 0, 1, 0.5, 0.25, "checkSimpsonMethod", "0.5", "0.5", "0"},
        {"x^2", 0, 1, 0.5, 0.25, "checkRectMethod", "0.3125", "0.328125", "-0.0052083"},
        {"x^2", 0, 1, 0.5, 0.25, "checkTrapezMethod", "0.375", "0.34375", "0.010417"},
        {"x^2", 0, 1, 1, 0.5, "checkSimpsonMethod", "0.333333", "0.333333", "0"},
        {"x", 1, 0, 0.5, 0.25, "checkRectMethod", "-0.5", "-0.5", "0"},
        {"x^2", 1, 0, 0.5, 0.25, "checkTrapezMethod", "-0.375", "-0.34375", "-0.010417"},
        {"x^2", 2, 2, 0.5, 0.25, "checkSimpsonMethod", "0", "0", "0"},
        {"x^2", 2, 2, 0.5, 0.5, "checkRectMethod", "0", "0", "nan"},
        {"x", 0, 1, 0.3, 0.3, "checkTrapezMethod", "0.5", "0.5", "nan"},
        {"", -3, 5, 0.5, 0.25, "checkSimpsonMethod", "0", "0", "0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.function) + " " + c.rule + " " + std::to_string(c.x1) + ".." + std::to_string(c.x2));
        WindowHarness harness;
        harness.click("checkIntegration");
        harness.typeText("exprFunc", u(c.function));
        harness.typeNumber("x1", c.x1);
        harness.typeNumber("x2", c.x2);
        harness.typeNumber("h1", c.h1);
        harness.typeNumber("h2", c.h2);
        harness.click(c.rule);
        expectSuccessBox(calculate(harness));

        EXPECT_EQ(field(harness, "res1").toStdString(), c.res1);
        EXPECT_EQ(field(harness, "res2").toStdString(), c.res2);
        EXPECT_EQ(field(harness, "eps1").toStdString(), c.eps);
        EXPECT_EQ(field(harness, "eps2"), QString());
        EXPECT_TRUE(shownCurves(harness).empty());
        expectFramedLog(harness.log(), "Integration");
    }
}

TEST(IntegrationTask, LogHoldsBothTracesInOrder) {
    WindowHarness harness;
    harness.click("checkIntegration");
    harness.typeText("exprFunc", u("x"));
    harness.typeNumber("x2", 1);
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(harness.log(),
              "Integration task begin.\n\n"
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

TEST(IntegrationTask, ReselectingTheTaskBringsBackRectangles) {
    WindowHarness harness;
    harness.click("checkIntegration");
    harness.click("checkSimpsonMethod");
    harness.click("checkIntegration");
    harness.typeText("exprFunc", u("x^2"));
    harness.typeNumber("x2", 1);
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(field(harness, "res1"), u("0.3125"));
}

// Two presses in a row: the second run starts from an empty result tab.
TEST(CalculateButton, SecondPressClearsTheFirstRun) {
    WindowHarness harness;
    harness.click("checkDifferentiation");
    typePoints(harness, {0, 1, 2, 3, 4}, {0, 1, 4, 9, 16});
    expectSuccessBox(calculate(harness));
    expectSuccessBox(calculate(harness));
    EXPECT_EQ(shownCurves(harness).size(), 4u);

    harness.click("checkSpline");
    typePoints(harness, {0, 1, 2, 3, 4}, {0, 1, 0, 1, 0});
    expectSuccessBox(calculate(harness));
    ASSERT_EQ(shownCurves(harness).size(), 2u);
    harness.typeNumber("x1", 5);
    expectErrorBox(calculate(harness), u("Значение сплайна в точке x = 5 не определено"));
    EXPECT_TRUE(shownCurves(harness).empty());
    EXPECT_EQ(field(harness, "res2"), QString());
    EXPECT_TRUE(field(harness, "res1").startsWith(u("S[1]=")));

    // Still usable after the failure.
    harness.typeNumber("x1", 2);
    expectSuccessBox(calculate(harness));
    EXPECT_NEAR(field(harness, "res2").toDouble(), 0.0, 1e-12);  // y at that node
    EXPECT_EQ(shownCurves(harness).size(), 2u);
}

TEST(Screenshots, EveryTaskAfterASuccessfulRun) {
    const struct {
        const char* button;
        const char* file;
        std::function<void(WindowHarness&)> fill;
    } cases[] = {
        {"checkInterpolation", "interpolation", [](WindowHarness& h) {
             h.typeText("exprFunc", u("sin(x)"));
             typePoints(h, {0, 1.5, 3, 4.5});
         }},
        {"checkSpline", "spline", [](WindowHarness& h) { typePoints(h, {0, 1, 2, 3, 4}, {0, 1, 0, 1, 0}); }},
        {"checkMNK", "least-squares", [](WindowHarness& h) { typePoints(h, {0, 1, 2, 3, 4, 5}, {1, 0, 2, 5, 9, 15}); }},
        {"checkDifferentiation", "differentiation",
         [](WindowHarness& h) { typePoints(h, {0, 1, 2, 3, 4}, {0, 1, 0, 1, 0}); }},
        {"checkIntegration", "integration", [](WindowHarness& h) {
             h.typeText("exprFunc", u("sin(2*pi*x)*exp(-4*pi^2*x)"));
             h.typeNumber("x2", 1);
         }},
    };
    ASSERT_TRUE(QDir().mkpath(QString::fromUtf8(KALKORA_SCREENSHOT_DIR)));
    for (const auto& c : cases) {
        WindowHarness harness;
        harness.click(c.button);
        c.fill(harness);
        expectSuccessBox(calculate(harness));
        harness.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
        const QString path = QString::fromUtf8(KALKORA_SCREENSHOT_DIR) + u("/result-") + u(c.file) + u(".png");
        EXPECT_TRUE(harness.window().grab().save(path)) << path.toStdString();
    }
}

}  // namespace
