#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <locale>
#include <string>

#include <unistd.h>

#include "../expression/expression_test_support.h"
#include "errors/errors.h"
#include "numeric/quadrature.h"
#include "stderr_capture.h"

using Rule = double (*)(Function, double, double, double);
using Estimate = double (*)(double, double, double, double);
static const Rule kRules[] = {integrateWithRectangles, integrateWithTrapezoidalRule, integrateWithSimpson};

// Every rule: the subinterval count (the "Part: " lines) and the oriented integral, exact for a linear f (nodes have
// at most 6 significant digits, so f sees them exactly); Simpson's rule is exact for cubics.
TEST(QuadratureRules, SubintervalCountsExactnessAndOperationOrder) {
    const struct { const char* f; double x1, x2, h; int parts; double integral; } cases[] = {
        {"2*x+1", 0, 1, 0.4, 3, 2},
        {"1", 0, 2.0000005, 1, 2, 2},        // a sliver below 1e-6 of a step is dropped
        {"1", 0, 2.000002, 1, 3, 2.000002},  // a larger one is a subinterval of its own
        {"3-x", -0.5, -2, 0.4, 4, -6.375},
        {"1", 3, 3, 0.5, 0, 0},
        {"1", 0, 1, 0, 0, 0},
        {"1", 0, 1e300, 1e-300, 0, 0},  // a count beyond int gives no subinterval
    };
    for (Rule rule : kRules)
        for (const auto& c : cases) {
            StderrCapture log;
            EXPECT_NEAR(rule(Function(c.f), c.x1, c.x2, c.h), c.integral, 1e-12) << c.f << " to " << c.x2;
            const std::string text = log.take();
            int parts = 0;
            for (size_t at = 0; (at = text.find("Part: ", at)) != std::string::npos; ++at) ++parts;
            EXPECT_EQ(parts, c.parts) << c.x1 << " " << c.x2 << " " << c.h;
        }
    StderrCapture quiet;
    EXPECT_NEAR(integrateWithSimpson(Function("x^3-x"), -1, 1.5, 0.5), 0.390625, 1e-14);
    // Bit-exact where the order shows: ends computed afresh from i (accumulated ends give 0.9999999999999999 for the
    // rectangles), Simpson dividing the sum once by 6 (dividing each part gives 1 for h = 0.1).
    EXPECT_EQ(integrateWithSimpson(Function("x^2"), 0, 1, 1), 1.0 / 3);
    EXPECT_EQ(integrateWithRectangles(Function("1"), 0, 1, 0.1), 1.0);
    EXPECT_EQ(integrateWithSimpson(Function("1"), 0, 1, 0.1), 0.9999999999999999);
    EXPECT_EQ(integrateWithSimpson(Function("1"), 0, 1, 0.7), 1.0);
}

// Halving h divides the error by 2^order. Runge-Romberg predicts the error of the second result, whichever step is
// the finer, and gives NaN for steps less than a relative 1e-8 apart.
TEST(QuadratureConvergence, ErrorRatiosAndEstimates) {
    const double exact = std::exp(1.0) - 1;
    const struct { Rule rule; Estimate estimate; double ratio; } cases[] = {
        {integrateWithRectangles, calcRectanglesError, 4},
        {integrateWithTrapezoidalRule, calcTrapezoidalRuleError, 4},
        {integrateWithSimpson, calcSimpsonError, 16},
    };
    StderrCapture quiet;
    for (const auto& c : cases) {
        const double i1 = c.rule(Function("exp(x)"), 0, 1, 0.1), i2 = c.rule(Function("exp(x)"), 0, 1, 0.05);
        EXPECT_NEAR((i1 - exact) / (i2 - exact), c.ratio, 0.05 * c.ratio);
        EXPECT_NEAR(c.estimate(i1, i2, 0.1, 0.05), i2 - exact, 0.01 * std::fabs(i2 - exact));
        EXPECT_NEAR(c.estimate(i2, i1, 0.05, 0.1), i1 - exact, 0.01 * std::fabs(i1 - exact));
        EXPECT_TRUE(std::isnan(c.estimate(1, 2, 0.1, 0.1 * (1 + 5e-9))));
        EXPECT_FALSE(std::isnan(c.estimate(1, 2, 0.1, 0.1 * (1 + 2e-8))));
    }
}

struct CommaPoint : std::numpunct<char> { char do_decimal_point() const override { return ','; } };
struct InfinityAsOo : std::num_put<char> {
    iter_type do_put(iter_type out, std::ios_base& s, char fill, double v) const override {
        return std::isfinite(v) ? std::num_put<char>::do_put(out, s, fill, v) : std::copy_n("oo", 2, out);
    }
};

// Byte for byte, also under a global C++ locale that writes numbers its own way, and in the file behind descriptor 2
// as each rule returns or throws, even with stderr fully buffered and std::cerr not flushing per operation.
TEST(QuadratureLog, CompleteRunsFailureAndFlushing) {
    StderrCapture log;
    static char buffer[1 << 16];
    std::setvbuf(stderr, buffer, _IOFBF, sizeof buffer);
    std::cerr.unsetf(std::ios_base::unitbuf);
    const std::locale old =
        std::locale::global(std::locale(std::locale(std::locale::classic(), new CommaPoint), new InfinityAsOo));
    integrateWithSimpson(Function("x^2"), 1, 0, 0.4);
    std::string expected = "Integration with Simpson method...\nx1 = 1   x2 = 0   h = 0.4\n"
                           "Part: 1   x_left = 1   x_right = 0.6   Result: -0.261333\n"
                           "Part: 2   x_left = 0.6   x_right = 0.2   Result: -0.0693333\n"
                           "Part: 3   x_left = 0.2   x_right = 0   Result: -0.00266667\nTotal: -0.333333\n\n";
    EXPECT_EQ(lseek(2, 0, SEEK_END), off_t(expected.size()));  // the size of the file
    integrateWithRectangles(Function("1e300"), 0.5, 2e9, 1e9);
    expected += "Integration with rectangles method...\nx1 = 0.5   x2 = 2e+09   h = 1e+09\n"
                "Part: 1   x_left = 0.5   x_right = 1e+09   Result: inf\n"
                "Part: 2   x_left = 1e+09   x_right = 2e+09   Result: inf\nTotal: inf\n\n";
    // The failing subinterval and the total are not written.
    EXPECT_THROW(integrateWithTrapezoidalRule(Function("1/x"), -1, 1, 0.5), ExpressionBadResult);
    expected += "Integration with trapezoidal method...\nx1 = -1   x2 = 1   h = 0.5\n"
                "Part: 1   x_left = -1   x_right = -0.5   Result: -0.75\n";
    EXPECT_EQ(lseek(2, 0, SEEK_END), off_t(expected.size()));
    std::locale::global(old);
    std::cerr.setf(std::ios_base::unitbuf);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    EXPECT_EQ(log.take(), expected);
}

// The log, then the result's bits or the exception.
static std::string run(const std::function<double()>& action) {
    StderrCapture log;
    const std::string outcome = outcomeOf(action);
    return log.take() + "=> " + outcome;
}

// Lines assembled, or written field by field while std::cerr throws on failure: the same bytes, in every rounding
// mode (printf rounds its digits by it).
TEST(QuadratureLog, SameBytesAsFieldByFieldWriting) {
    const struct { const char* f; double x1, x2, h; } cases[] = {
        {"sin(2*pi*x)*exp(-x^2/100)", -99.9999, 99.9999, 0.25},
        {"x", -0.0, 0, 1},                    // "x1 = -0", no subinterval
        {"1/x", -1, 1, 0.25},                 // fails at an end or the middle
        {"exp(x)", 1e-20, 1e-15, 1e-17},      // exponent notation
        {"cos(x)", -1e-5, 1e-5, 1e-7},        // ends near 0 off by rounding
        {"(x/1000)^13", -1e25, 1e25, 1e23},   // infinite parts, total NaN
        {"1.7e308*sin(x*1000)", 0, 1, 0.01},  // overflow inside Simpson's sum
        {"x^2", 123456.7, 123457.9, 0.01},    // nodes rounded to 6 digits
        {"y", 0, 1, 0.5},
        {"*x", 0, 1, 0.5},
    };
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO})
        for (const auto& c : cases)
            for (Rule rule : kRules) {
                std::fesetround(mode);
                const std::string assembled = run([&] { return rule(Function(c.f), c.x1, c.x2, c.h); });
                std::cerr.exceptions(std::ios_base::badbit);
                const std::string fieldByField = run([&] { return rule(Function(c.f), c.x1, c.x2, c.h); });
                std::cerr.exceptions(std::ios_base::goodbit);
                std::fesetround(FE_TONEAREST);
                ASSERT_EQ(assembled, fieldByField) << c.f << " over " << c.x1 << ".." << c.x2 << " mode " << mode;
            }
}
