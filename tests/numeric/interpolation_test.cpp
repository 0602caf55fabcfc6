#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "numeric/interpolation_util.h"
#include "numeric/lagrange_polynomial.h"
#include "numeric/newton_polynomial.h"
#include "stderr_capture.h"

namespace {

using Table = std::vector<Point>;

TEST(InterpolationUtil, FactorialAndSign) {
    const struct { int n, expected; } factorials[] = {{-3, 1}, {0, 1}, {5, 120}, {12, 479001600}};
    for (const auto& c : factorials) EXPECT_EQ(factorial(c.n), c.expected) << c.n;
    const struct { double v; char expected; } signs[] = {
        {-1.0, '-'}, {-1e-300, '-'}, {0.0, '+'}, {-0.0, '+'}, {NAN, '+'}, {2.0, '+'}};
    for (const auto& c : signs) EXPECT_EQ(sign(c.v), c.expected) << c.v;
}

TEST(InterpolationText, NewtonAndLagrangeForms) {
    const struct { Table points; std::string newton, lagrange; } cases[] = {
        {{{0, 1}, {1, 3}, {2, 2}},
         "1+2(x+0)-1.5(x+0)(x-1)", "0.5(x-1)(x-2)-3(x+0)(x-2)+1(x+0)(x-1)"},
        {{{-3, 1}, {1.5, 2}}, "1+0.2222(x+3)", "-0.2222(x-1.5)+0.4444(x+3)"},
        {{{0, 123456}}, "1.235e+05", "1.235e+05"},
        {{}, "", ""},
    };
    StderrCapture quiet;
    for (const auto& c : cases) {
        EXPECT_EQ(NewtonPolynomial(c.points).toString(), c.newton);
        EXPECT_EQ(LagrangePolynomial(c.points).toString(), c.lagrange);
    }
}

TEST(InterpolationLog, ConstructionLines) {
    StderrCapture log;
    NewtonPolynomial({{0, 1}, {1, 3}, {2, 2}});
    EXPECT_EQ(log.take(), "Newton polynomial constructed.\ndelta[1] = 2\ndelta[2] = -1.5\n\n");
    NewtonPolynomial({{0, 1}});
    EXPECT_EQ(log.take(), "Newton polynomial constructed.\n\n");
    LagrangePolynomial({{0, 1}, {1, 3}});
    EXPECT_EQ(log.take(), "Lagrange polynomial constructed.\n"
                          "(There is no significant information about this process.)\n\n");
}

// Random tables: both forms pass through their nodes with error bound 0 there, agree between
// the nodes, and expand into n coefficients with the same values.
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
        const Polynomial expandedN = newton.toSimplePolynomial();
        const Polynomial expandedL = lagrange.toSimplePolynomial();
        ASSERT_EQ(expandedN.size(), n);
        ASSERT_EQ(expandedL.size(), n);
        for (const Point& p : points) {
            EXPECT_NEAR(newton.calc(p.x), p.y, 1e-9);
            EXPECT_NEAR(lagrange.calc(p.x), p.y, 1e-9);
            EXPECT_EQ(newton.calc(p.x, 5.0).second, 0.0);
            EXPECT_EQ(lagrange.calc(p.x, 5.0).second, 0.0);
        }
        for (double t = points.front().x; t <= points.back().x; t += 0.37) {
            const double v = newton.calc(t), tol = 1e-6 * (1 + std::fabs(v));
            EXPECT_NEAR(lagrange.calc(t), v, 1e-3 * tol);
            EXPECT_NEAR(expandedN.calc(t), v, tol);
            EXPECT_NEAR(expandedL.calc(t), v, tol);
        }
    }
}

TEST(InterpolationValues, HandComputedValuesAndBounds) {
    StderrCapture quiet;
    const NewtonPolynomial newton({{0, 1}, {1, 3}, {2, 2}});
    const LagrangePolynomial lagrange({{0, 1}, {1, 3}, {2, 2}});
    // 1 + 2x - 1.5x(x - 1) at 0.5: 1 + 1 + 0.375.
    EXPECT_DOUBLE_EQ(newton.calc(0.5), 2.375);
    EXPECT_DOUBLE_EQ(lagrange.calc(0.5), 2.375);
    EXPECT_EQ(newton.calcDelta(1, 2), -1);  // the delta[k] log lines show calcDelta(0, k)
    // (M / 3!) |x (x - 1)(x - 2)| with M = 6: the product is negative at both points.
    EXPECT_DOUBLE_EQ(newton.calc(1.5, 6).second, 0.375);
    EXPECT_DOUBLE_EQ(lagrange.calc(-1, 6).second, 6.0);
    EXPECT_EQ(NewtonPolynomial({}).calc(1, 7.5), std::make_pair(0.0, 7.5));
    EXPECT_EQ(LagrangePolynomial({}).calc(1, 7.5), std::make_pair(0.0, 7.5));
    EXPECT_EQ(newton.toSimplePolynomial().toString(), "-1.5x^2+3.5x^1+1");
    EXPECT_EQ(lagrange.toSimplePolynomial().toString(), "-1.5x^2+3.5x^1+1");
}

}  // namespace
