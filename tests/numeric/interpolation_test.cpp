#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "numeric/interpolation_util.h"
#include "numeric/lagrange_polynomial.h"
#include "numeric/newton_polynomial.h"
#include "numeric/polynomial.h"
#include "stderr_capture.h"

using V = std::vector<double>;
using Table = std::vector<Point>;

static V coefficients(const Polynomial& p) {
    V c;
    for (int i = 0; i < p.size(); ++i) c.push_back(p[i]);
    return c;
}

// Text highest power first with negligible terms left out; sizes, coefficients and values of the operations.
TEST(Polynomial, TextArithmeticAndValues) {
    const struct { V c; std::string text; } cases[] = {
        {{1, -2, 0, 3}, "3x^3-2x^1+1"},
        {{-0.5, 0, 0}, "-0.5"},
        {{0, 1}, "1x^1"},
        {{1e-9, 0}, "0"},
        {{1e-8}, "1e-08"},
        {{1.0 / 3, 12345.6}, "1.235e+04x^1+0.3333"},
    };
    for (const auto& c : cases) EXPECT_EQ(Polynomial(c.c).toString(), c.text);
    EXPECT_EQ(coefficients(Polynomial(V{1, 1}) * Polynomial(V{-1, 1})), (V{-1, 0, 1}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2}) + Polynomial(V{0, 0, 3})), (V{1, 2, 3}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 0}) + Polynomial(V{2})), (V{3, 0}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2, 0}) * 2.0), (V{2, 4, 0}));
    EXPECT_EQ(coefficients(Polynomial() * Polynomial(V{1, 1})), (V{0}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2, 3}).derivative()), (V{2, 6}));
    EXPECT_EQ(Polynomial(V{5}).derivative().size(), 0);
    EXPECT_EQ(coefficients(Polynomial(2)), (V{0, 0}));
    // Ascending running power; Horner's scheme gives 0.5242 here.
    EXPECT_EQ(Polynomial(V{0.1, 0.2, 0.3, 0.4}).calc(0.7), 0.5241999999999999);
    const Polynomial p(V{0.5, -1, 2}), q(V{3, 0.25});
    for (double x : {-2.0, -0.3, 1.7}) {
        EXPECT_NEAR((p * q).calc(x), p.calc(x) * q.calc(x), 1e-12);
        EXPECT_NEAR((p + q).calc(x), p.calc(x) + q.calc(x), 1e-12);
        EXPECT_NEAR(p.derivative().calc(x), -1 + 4 * x, 1e-12);
    }
}

// Newton's and Lagrange's forms of hand-computed tables, values, error bounds and the helpers behind them.
TEST(InterpolationForms, TextsValuesBoundsFactorialAndSign) {
    const struct { Table points; std::string newton, lagrange; } cases[] = {
        {{{0, 1}, {1, 3}, {2, 2}}, "1+2(x+0)-1.5(x+0)(x-1)", "0.5(x-1)(x-2)-3(x+0)(x-2)+1(x+0)(x-1)"},
        {{{-3, 1}, {1.5, 2}}, "1+0.2222(x+3)", "-0.2222(x-1.5)+0.4444(x+3)"},
        {{{0, 123456}}, "1.235e+05", "1.235e+05"},
    };
    StderrCapture quiet;
    for (const auto& c : cases) {
        EXPECT_EQ(NewtonPolynomial(c.points).toString(), c.newton);
        EXPECT_EQ(LagrangePolynomial(c.points).toString(), c.lagrange);
    }
    const NewtonPolynomial newton(cases[0].points);
    const LagrangePolynomial lagrange(cases[0].points);
    EXPECT_DOUBLE_EQ(newton.calc(0.5), 2.375);  // 1 + 2x - 1.5x(x - 1) at 0.5: 1 + 1 + 0.375
    EXPECT_EQ(newton.calcDelta(1, 2), -1);      // the delta[k] log lines show calcDelta(0, k)
    // (M / 3!) |x (x - 1)(x - 2)| with M = 6: the product is negative at both points.
    EXPECT_DOUBLE_EQ(newton.calc(1.5, 6).second, 0.375);
    EXPECT_DOUBLE_EQ(lagrange.calc(-1, 6).second, 6.0);
    EXPECT_EQ(NewtonPolynomial({}).calc(1, 7.5), std::make_pair(0.0, 7.5));
    EXPECT_EQ(LagrangePolynomial({}).calc(1, 7.5), std::make_pair(0.0, 7.5));
    const struct { int n, expected; } factorials[] = {{-3, 1}, {0, 1}, {5, 120}};
    for (const auto& c : factorials) EXPECT_EQ(factorial(c.n), c.expected) << c.n;
    const struct { double v; char expected; } signs[] = {{-1e-300, '-'}, {0.0, '+'}, {-0.0, '+'}, {NAN, '+'}};
    for (const auto& c : signs) EXPECT_EQ(sign(c.v), c.expected) << c.v;
}

// Random tables: both forms pass through their nodes with error bound 0 there, agree between the nodes, and expand
// into n coefficients with the same values.
TEST(InterpolationProperty, FormsAgreeOnRandomTables) {
    StderrCapture quiet;
    std::mt19937 gen(20240517);
    std::uniform_real_distribution<double> value(-10, 10), gap(0.2, 2);
    for (int trial = 0; trial < 50; ++trial) {
        const int n = 1 + trial % 7;
        Table points;
        double x = value(gen) / 2;
        for (int i = 0; i < n; ++i, x += gap(gen)) points.push_back({x, value(gen)});
        const NewtonPolynomial newton(points);
        const LagrangePolynomial lagrange(points);
        const Polynomial expandedN = newton.toSimplePolynomial(), expandedL = lagrange.toSimplePolynomial();
        ASSERT_TRUE(expandedN.size() == n && expandedL.size() == n);
        for (const Point& p : points) {  // the bounds are never negative
            EXPECT_LT(std::fabs(newton.calc(p.x) - p.y) + std::fabs(lagrange.calc(p.x) - p.y), 1e-9) << p.x;
            EXPECT_EQ(newton.calc(p.x, 5.0).second + lagrange.calc(p.x, 5.0).second, 0.0) << p.x;
        }
        for (double t = points.front().x; t <= points.back().x; t += 0.37) {
            const double v = newton.calc(t), tol = 1e-6 * (1 + std::fabs(v));
            EXPECT_NEAR(lagrange.calc(t), v, 1e-3 * tol);
            EXPECT_NEAR(expandedN.calc(t), v, tol);
            EXPECT_NEAR(expandedL.calc(t), v, tol);
        }
    }
}
