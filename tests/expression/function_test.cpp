// Function: f(x) from an expression text, evaluated at x written with "%lg".

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/function.h"

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();
const double kPi = 3.141592653589793;

TEST(Function, Values)
{
    const struct { std::string text; double x, expected; } cases[] = {
        {"x^2", -0.5, 0.25},
        {"pi*x", 1, kPi},
        {"3.14159265*x", 1, 3.14159},
        {"x", 1.0000001, 1},  // x is handed over with 6 significant digits
        {"x", 1234567, 1234570},
        {"x", 0.30000000000000004, 0.3},
        {"x", -0.0, 0},
        {"1/x", 1e-7, 1e7},  // written 1e-07: still a valid assignment
        {"sin(2*pi*x)*exp(-4*pi^2*x)", 0.25,
         std::sin(2 * kPi * 0.25) * std::exp(-4 * std::pow(kPi, 2.0) * 0.25)},
    };
    for (const auto& c : cases) EXPECT_EQ(Function(c.text)(c.x), c.expected) << c.text << c.x;

    // f built from "x" returns exactly the value that the "%lg" text of the argument denotes.
    Function f("x");
    for (double x : {1.0 / 3.0, 1e-300, 4.9e-324, 1.7976931348623157e308, -123456.5, 999999.5,
                     6.02214076e23}) {
        char text[64];
        std::snprintf(text, sizeof text, "%lg", x);
        EXPECT_EQ(f(x), std::strtod(text, nullptr)) << x;
    }
}

TEST(Function, Failures)
{
    Function reciprocal("1/x");
    EXPECT_THROW(reciprocal(0), ExpressionBadResult);
    EXPECT_EQ(reciprocal(4), 0.25);  // usable after a failure

    EXPECT_THROW(Function("y+x")(1), ExpressionUnknownVariable);  // constructs, fails when called
    EXPECT_THROW(Function("*2")(1), ExpressionWrongFormat);
    EXPECT_THROW(Function(""), ExpressionWrongFormat);

    // A non-finite x is refused before evaluation, which would find y unknown.
    Function y("y");
    for (double x : {kNaN, kInf, -kInf}) EXPECT_THROW(y(x), ExpressionBadResult) << x;
    EXPECT_THROW(y(0), ExpressionUnknownVariable);
    for (double v : {-1.7976931348623157e308, 4.9e-324}) EXPECT_NO_THROW(checkValue(v));
    for (double v : {kNaN, kInf, -kInf}) EXPECT_THROW(checkValue(v), ExpressionBadResult) << v;
}

TEST(Function, CopiesEvaluateIndependently)
{
    Function f("sin(2*pi*x)*exp(-4*pi^2*x)"), h("x");
    const double before = f(0.3);
    Function g = f;
    h = f;
    // Calls on one copy leave the others alone: each call sets only its own x.
    for (double x : {0.0, 0.5, -2.0}) {
        const double fx = f(x);
        EXPECT_EQ(g(x + 1), f(x + 1));
        EXPECT_EQ(h(x), fx);
        EXPECT_EQ(f(x), fx);
    }
    EXPECT_THROW(g(kNaN), ExpressionBadResult);
    EXPECT_EQ(f(0.3), before);
}

}  // namespace
