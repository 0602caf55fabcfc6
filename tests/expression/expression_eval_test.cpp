// Evaluation: operators, functions, literals, assignment texts, variables and failures.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

using E = Expression;
using Seq = std::vector<E::token>;
const double kPi = 3.141592653589793;

// Compared exactly: the order of operations and the function formulas are fixed.
TEST(ExpressionEval, Values)
{
    const double a = 0.3;
    const std::string x3 = "x = 0.3";
    const struct { std::string text, assignments; double expected; } cases[] = {
        {"x^y/x", "x = 2 y = 0.5", std::pow(2.0, 0.5) / 2.0},
        {"-x^2", "x = 3", -9.0},
        {"+x", "x = 3", 3.0},
        {"-2^2", "", -4.0},
        {"2^3^2", "", 512.0},
        {"8/4/2", "", 1.0},
        {"(1+2)*3-1", "", 8.0},
        {"1/(1/0)", "", 0.0},  // only the final value must be finite
        {"0.5 * (1. + 0.2 - 1e-1)", "", 0.5 * (1.0 + 0.2 - 0.1)},
        {"log10(3) - ln(3) / ln(10)", "", std::log10(3.0) - std::log(3.0) / std::log(10.0)},
        {"sin(2*pi*x)*exp(-4*pi^2*x)", "x = 0.1",
         std::sin(2 * kPi * 0.1) * std::exp(-4 * std::pow(kPi, 2.0) * 0.1)},
        {"sin(x)", x3, std::sin(a)},          {"cos(x)", x3, std::cos(a)},
        {"tg(x)", x3, std::tan(a)},           {"ctg(x)", x3, 1.0 / std::tan(a)},
        {"arcsin(x)", x3, std::asin(a)},      {"arccos(x)", x3, std::acos(a)},
        {"arctg(x)", x3, std::atan(a)},       {"arcctg(x)", x3, 1.5707963267948966 - std::atan(a)},
        {"exp(x)", x3, std::exp(a)},          {"ln(x)", x3, std::log(a)},
        {"log10(x)", x3, std::log10(a)},      {"log2(x)", x3, std::log(a) / 0.6931471805599453},
        {"sqrt(x)", x3, std::sqrt(a)},        {"abs(x)", "x = -0.3", 0.3},
        {"sinh(x)", x3, std::sinh(a)},        {"cosh(x)", x3, std::cosh(a)},
        // Literals count with 6 significant digits; assigned values keep full precision.
        {"3.14159265*x", "x = 1", 3.14159},
        {"1234567", "", 1234570.0},
        {"1.0000001", "", 1.0},
        {"x", "x = 3.14159265", 3.14159265},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Expression(c.text).eval(c.assignments), c.expected) << c.text;
    }
}

TEST(ExpressionEval, Failures)
{
    for (const char* text : {"1/0", "-1/0", "0/0", "ln(0)", "sqrt(-1)", "ctg(0)", "(-8)^(1/3)",
                             "0*exp(1000)", "arcsin(2)", "1e308*10", "log2(-1)"}) {
        EXPECT_THROW(Expression(text).eval(""), ExpressionBadResult) << text;
    }
    // A unary *, / or ^ constructs and fails at the first evaluation.
    for (const char* text : {"*2", "(*2)", "/x", "^2", "1+(*2)"}) {
        Expression e(text);
        EXPECT_THROW(e.eval("x = 1"), ExpressionWrongFormat) << text;
        EXPECT_THROW(e.eval("x = 1"), ExpressionWrongFormat) << text;
    }
    // Names are looked up only when evaluated; the first missing one is reported.
    for (const auto& [text, name] : std::vector<std::pair<std::string, std::string>>{
             {"y+1", "y"}, {"y+x", "y"}, {"x+e", "e"}, {"X", "X"}, {"sin(z)*x", "z"}}) {
        try {
            Expression(text).eval("x = 1");
            ADD_FAILURE() << text << " evaluated";
        } catch (const ExpressionUnknownVariable& error) {
            EXPECT_EQ(error.name, name) << text;
        }
    }
}

// Reached directly only with names that a constructed object never holds.
TEST(ExpressionEval, ApplyAndCalculateGuards)
{
    const Expression e("x");
    EXPECT_EQ(e.apply_unary("-", 2.0), -2.0);
    EXPECT_EQ(e.apply_unary("+", 2.0), 2.0);
    for (const char* op : {"*", "/", "^", ""}) {
        EXPECT_THROW(e.apply_unary(op, 1), ExpressionWrongFormat) << op;
    }
    EXPECT_THROW(e.apply_binary("%", 1, 2), ExpressionWrongFormat);
    EXPECT_THROW(e.apply_function("tan", 1), ExpressionWrongFormat);
    EXPECT_TRUE(std::isinf(e.apply_binary("/", 1.0, 0.0)));  // checked by the caller, not here

    const E::token one{"1", E::number}, plus{"+", E::binary_operator};
    for (const Seq& bad : std::vector<Seq>{{}, {one, one}, {one, plus}, {{"-", E::unary_operator}},
             {{"sin", E::function}}, {one, {"(", E::parenthesis}}, {{"abc", E::number}}}) {
        EXPECT_THROW(e.calculate(bad), ExpressionWrongFormat) << describe(bad);
    }
    EXPECT_EQ(e.calculate({one, {"2.5", E::number}, {"*", E::binary_operator}}), 2.5);
    EXPECT_EQ(e.calculate({{"pi", E::variable}}), kPi);
}

TEST(ExpressionEval, AssignmentTexts)
{
    const std::vector<std::pair<std::string, double>> accepted = {
        {"x = 1 y = 2", 21},
        {"  x\t=\t1\ny = 2  ", 21},
        {"x = -0.5 y = 1e-07", -0.5 + 10 * 1e-07},
        {"x = 1e3 y = 2.", 1020},
        {"x = 5 y = 2 x = 1", 21},
    };
    for (const auto& [text, expected] : accepted) {
        EXPECT_EQ(Expression("x + 10*y").eval(text), expected) << text;
    }
    for (const char* text : {"x=1", "x = ", "x =", "x", "x : 1", "x == 1", "x = abc", "1x = 2",
                             "x_1 = 2", "x = 1e400", "= 1", "x = 1 y", "x = 0x10", "x = 1,5 y = 2",
                             "x = nan", "x = inf", "\xc3\xa9 = 1"}) {
        EXPECT_THROW(Expression("x").eval(text), ExpressionWrongFormat) << '"' << text << '"';
    }
}

TEST(ExpressionEval, VariablesPersistInEachCopyAndSurviveFailures)
{
    Expression e("1/x + y");
    EXPECT_THROW(e.eval("x = 1"), ExpressionUnknownVariable);
    EXPECT_THROW(e.eval("x = 0 y = 1"), ExpressionBadResult);
    EXPECT_THROW(e.eval("x = 4 y=3"), ExpressionWrongFormat);  // x = 4 before it is kept
    EXPECT_EQ(e.eval(""), 1.25);
    EXPECT_EQ(e.eval(" \t\n "), 1.25);
    EXPECT_EQ(e.eval("x = 2"), 1.5);

    Expression p("pi*x");  // any name may be assigned, pi included, and it stays
    EXPECT_EQ(p.eval("pi = 3 x = 2"), 6.0);
    EXPECT_EQ(p.eval("x = 1"), 3.0);

    Expression copy = p;  // copies keep their own variables
    EXPECT_EQ(copy.eval("x = 5"), 15.0);
    EXPECT_EQ(p.eval(""), 3.0);
}


}  // namespace
