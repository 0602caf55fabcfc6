#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "errors/errors.h"
#include "numeric/quadrature.h"
#include "stderr_capture.h"

namespace {

using Rule = double (*)(Function, double, double, double);
using Estimate = double (*)(double, double, double, double);
const Rule kRules[] = {integrateWithRectangles, integrateWithTrapezoidalRule, integrateWithSimpson};

int countParts(const std::string& log) {
    int n = 0;
    for (size_t at = 0; (at = log.find("Part: ", at)) != std::string::npos; ++at) ++n;
    return n;
}

// Subinterval count (the "Part: " lines) and oriented length (the integral of 1) for every rule.
TEST(QuadratureFrame, SubintervalCounts) {
    const struct { double x1, x2, h; int parts; double integral; } cases[] = {
        {0, 1, 0.4, 3, 1},
        {0, 2.0000005, 1, 2, 2},        // a sliver below 1e-6 of a step is dropped
        {0, 2.000002, 1, 3, 2.000002},  // a larger one is a subinterval of its own
        {1, 0, 0.5, 2, -1},
        {-0.5, -2, 0.4, 4, -1.5},
        {3, 3, 0.5, 0, 0},
        {0, 1, 0, 0, 0},
        {0, 1e300, 1e-300, 0, 0},  // a count beyond int gives no subinterval
    };
    for (Rule rule : kRules) {
        for (const auto& c : cases) {
            StderrCapture log;
            EXPECT_NEAR(rule(Function("1"), c.x1, c.x2, c.h), c.integral, 1e-12) << c.x2;
            EXPECT_EQ(countParts(log.take()), c.parts) << c.x1 << " " << c.x2 << " " << c.h;
        }
    }
}

// Nodes have at most 6 significant digits, so f sees them exactly.
TEST(QuadratureExactness, LowDegreePolynomialsAndOperationOrder) {
    const struct { Rule rule; const char* f; double x1, x2, h, exact; } cases[] = {
        {integrateWithRectangles, "2*x+1", 0, 1, 0.25, 2},
        {integrateWithTrapezoidalRule, "3-x", 2, -1, 0.5, -7.5},
        {integrateWithSimpson, "x^3-x", -1, 1.5, 0.5, 0.390625},
        {integrateWithSimpson, "x^3", 0, 1, 0.4, 0.25},
    };
    StderrCapture quiet;
    for (const auto& c : cases) {
        EXPECT_NEAR(c.rule(Function(c.f), c.x1, c.x2, c.h), c.exact, 1e-14) << c.f;
    }
    // Bit-exact where the order shows: ends computed afresh from i (accumulated ends give
    // 0.9999999999999999 for the rectangles), Simpson dividing the sum once by 6 (dividing each
    // part gives 1 for h = 0.1).
    EXPECT_EQ(integrateWithSimpson(Function("x^2"), 0, 1, 1), 1.0 / 3);
    EXPECT_EQ(integrateWithRectangles(Function("1"), 0, 1, 0.1), 1.0);
    EXPECT_EQ(integrateWithSimpson(Function("1"), 0, 1, 0.1), 0.9999999999999999);
    EXPECT_EQ(integrateWithSimpson(Function("1"), 0, 1, 0.7), 1.0);
    // Independent value: the integral of sin over [0, pi] is 2 (f rounds x to 6 digits).
    EXPECT_NEAR(integrateWithSimpson(Function("sin(x)"), 0, std::acos(-1.0), 0.05), 2, 2e-5);
}

// Halving h divides the error by 2^order; Runge-Romberg with the two results predicts the
// error of the finer one.
TEST(QuadratureConvergence, ErrorRatiosAndEstimates) {
    const double exact = std::exp(1.0) - 1;
    const struct { Rule rule; Estimate estimate; double ratio; } cases[] = {
        {integrateWithRectangles, calcRectanglesError, 4},
        {integrateWithTrapezoidalRule, calcTrapezoidalRuleError, 4},
        {integrateWithSimpson, calcSimpsonError, 16},
    };
    StderrCapture quiet;
    for (const auto& c : cases) {
        const double i1 = c.rule(Function("exp(x)"), 0, 1, 0.1);
        const double i2 = c.rule(Function("exp(x)"), 0, 1, 0.05);
        EXPECT_NEAR((i1 - exact) / (i2 - exact), c.ratio, 0.05 * c.ratio);
        EXPECT_NEAR(c.estimate(i1, i2, 0.1, 0.05), i2 - exact, 0.01 * std::fabs(i2 - exact));
    }
}

TEST(QuadratureEstimates, DivisorsAndEqualSteps) {
    const struct { Estimate estimate; double i1, i2, h1, h2, expected; } cases[] = {
        {calcTrapezoidalRuleError, 1, 0.25, 0.5, 0.25, 0.25},  // (I1 - I2) / (2^2 - 1)
        {calcSimpsonError, 1, 0.25, 0.5, 0.25, 0.05},  // (I1 - I2) / (2^4 - 1)
        {calcRectanglesError, 0.25, 1, 0.25, 0.5, 1},  // steps the other way round
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(c.estimate(c.i1, c.i2, c.h1, c.h2), c.expected);
    for (Estimate estimate : {calcRectanglesError, calcTrapezoidalRuleError, calcSimpsonError}) {
        EXPECT_TRUE(std::isnan(estimate(1, 2, 0.1, 0.1)));
        EXPECT_TRUE(std::isnan(estimate(1, 2, 0.1, 0.1 * (1 + 5e-9))));
        EXPECT_FALSE(std::isnan(estimate(1, 2, 0.1, 0.1 * (1 + 2e-8))));
    }
}

TEST(QuadratureLog, CompleteRunsAndFailure) {
    StderrCapture log;
    integrateWithSimpson(Function("x^2"), 1, 0, 0.4);
    EXPECT_EQ(log.take(), "Integration with Simpson method...\n"
                          "x1 = 1   x2 = 0   h = 0.4\n"
                          "Part: 1   x_left = 1   x_right = 0.6   Result: -0.261333\n"
                          "Part: 2   x_left = 0.6   x_right = 0.2   Result: -0.0693333\n"
                          "Part: 3   x_left = 0.2   x_right = 0   Result: -0.00266667\n"
                          "Total: -0.333333\n\n");
    integrateWithRectangles(Function("x"), 0, 1, 0.5);
    EXPECT_EQ(log.take(), "Integration with rectangles method...\nx1 = 0   x2 = 1   h = 0.5\n"
                          "Part: 1   x_left = 0   x_right = 0.5   Result: 0.125\n"
                          "Part: 2   x_left = 0.5   x_right = 1   Result: 0.375\nTotal: 0.5\n\n");
    // The failing subinterval and the total are not written.
    EXPECT_THROW(integrateWithTrapezoidalRule(Function("1/x"), -1, 1, 0.5), ExpressionBadResult);
    EXPECT_EQ(log.take(), "Integration with trapezoidal method...\nx1 = -1   x2 = 1   h = 0.5\n"
                          "Part: 1   x_left = -1   x_right = -0.5   Result: -0.75\n");
}

}  // namespace
