// Function: f(x) from an expression text.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/function.h"

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(Function, Values)
{
    struct Case {
        std::string text;
        double x;
        double expected;
    };
    const std::vector<Case> cases = {
        {"x^2", 3, 9},
        {"x^2", -0.5, 0.25},
        {"pi*x", 1, 3.141592653589793},
        {"3.14159265*x", 1, 3.14159},
        // x is handed over with 6 significant digits.
        {"x", 1.0000001, 1},
        {"x", 1234567, 1234570},
        {"x", 123456.7, 123457},
        {"x", 0.30000000000000004, 0.3},
        {"x", 1e-07, 1e-07},
        {"x", -0.5, -0.5},
        {"x", -0.0, 0},
        {"0", 5, 0},
        {"sin(2*pi*x)*exp(-4*pi^2*x)", 0.25,
         std::sin(2 * 3.141592653589793 * 0.25) *
             std::exp(-4 * std::pow(3.141592653589793, 2.0) * 0.25)},
    };
    for (const auto& c : cases) {
        Function f(c.text);
        EXPECT_EQ(f(c.x), c.expected) << c.text << " at " << c.x;
    }
}

// Property: f built from "x" returns exactly the value that the text
// "%lg" of the argument denotes.
TEST(Function, ArgumentIsRoundedAsPrintfWritesIt)
{
    Function f("x");
    const std::vector<double> xs = {0.1, 1.0 / 3.0, 2.0 / 3.0, 1e-300, 4.9e-324, 1.7976931348623157e308,
                                    -123456.5, 999999.5, 1e15 + 1, 6.02214076e23, -2.5};
    for (double x : xs) {
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

    Function root("sqrt(x)");
    EXPECT_THROW(root(-1), ExpressionBadResult);
    Function ln("ln(x)");
    EXPECT_THROW(ln(0), ExpressionBadResult);
    Function exponent("exp(x)");
    EXPECT_THROW(exponent(1000), ExpressionBadResult);
    // 1e-7 is written 1e-07: still a valid assignment, and a tiny x stays non-zero.
    EXPECT_EQ(reciprocal(1e-7), 1e7);

    for (const char* text : {"y+x", "X", "e", "sin2"}) {
        std::unique_ptr<Function> f;
        ASSERT_NO_THROW(f = std::make_unique<Function>(text)) << text;
        EXPECT_THROW((*f)(1), ExpressionUnknownVariable) << text;
    }
    try {
        Function f("y+x");
        f(1);
        ADD_FAILURE() << "y+x evaluated";
    } catch (const ExpressionUnknownVariable& error) {
        EXPECT_EQ(error.name, "y");
    }

    Function star("*2");
    EXPECT_THROW(star(1), ExpressionWrongFormat);

    for (const char* text : {"", " ", "\t", "x+", "sin", "sin2(x)"}) {
        EXPECT_THROW(Function{text}, ExpressionWrongFormat) << '"' << text << '"';
    }
}

TEST(Function, NonFiniteArgumentsAreRejectedBeforeEvaluation)
{
    // y has no value: reaching the evaluation would throw ExpressionUnknownVariable.
    Function f("y");
    for (double x : {kNaN, kInf, -kInf}) {
        EXPECT_THROW(f(x), ExpressionBadResult) << x;
    }
    EXPECT_THROW(f(0), ExpressionUnknownVariable);
}

TEST(Function, CheckValue)
{
    for (double v : {0.0, -0.0, 1.0, -1e308, 1.7976931348623157e308, 4.9e-324}) {
        EXPECT_NO_THROW(checkValue(v)) << v;
    }
    for (double v : {kNaN, kInf, -kInf}) {
        EXPECT_THROW(checkValue(v), ExpressionBadResult) << v;
    }
}

TEST(Function, CopiesEvaluateIndependently)
{
    Function f("sin(2*pi*x)*exp(-4*pi^2*x)");
    const double before = f(0.3);
    Function g = f;
    Function h("x");
    h = f;
    EXPECT_EQ(g(0.3), before);
    EXPECT_EQ(g(-0.7), f(-0.7));
    // Calls on one copy leave the others alone: each call sets only its own x.
    for (double x : {0.0, 0.01, 0.5, 1.5, -2.0}) {
        const double fx = f(x);
        EXPECT_EQ(g(x + 1), f(x + 1));
        EXPECT_EQ(h(x), fx);
        EXPECT_EQ(f(x), fx);
    }
    EXPECT_THROW(g(kNaN), ExpressionBadResult);
    EXPECT_EQ(f(0.3), before);
}

}  // namespace
