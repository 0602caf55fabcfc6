// Evaluation: operators, functions, assignment texts, variables and failures.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

struct ValueCase {
    std::string text;
    std::string assignments;
    double expected;  // compared exactly: the order of operations is fixed
};

void expectValues(const std::vector<ValueCase>& cases)
{
    for (const auto& c : cases) {
        Expression e(c.text);
        const double got = e.eval(c.assignments);
        EXPECT_EQ(got, c.expected) << c.text << " with \"" << c.assignments << '"';
    }
}

const double kPi = 3.141592653589793;

TEST(ExpressionEval, Operators)
{
    expectValues({
        {"x+y", "x = 1.5 y = 2.25", 3.75},
        {"x-y", "x = 1.5 y = 2.25", -0.75},
        {"x*y", "x = 1.5 y = 2.25", 3.375},
        {"x/y", "x = 1 y = 3", 1.0 / 3.0},
        {"x^y", "x = 2 y = 0.5", std::pow(2.0, 0.5)},
        {"x^2", "x = 3", 9.0},
        {"-x", "x = 3", -3.0},
        {"+x", "x = 3", 3.0},
        {"-(-x)", "x = 3", 3.0},
        {"-x^2", "x = 3", -9.0},
        {"-2^2", "", -4.0},
        {"2^3^2", "", 512.0},
        {"8/4/2", "", 1.0},
        {"2-3-4", "", -5.0},
        {"1+2*3", "", 7.0},
        {"(1+2)*3", "", 9.0},
        {"2*(-3)", "", -6.0},
        {"2^(-1)", "", 0.5},
        {"sin(x)^2", "x = 0.5", std::pow(std::sin(0.5), 2.0)},
        {"-sin(x)", "x = 0.5", -std::sin(0.5)},
        {"pi", "", kPi},
        {"1/(1/0)", "", 0.0},
        {"0.5 * (1. + 0.2 - 1e-1)", "", 0.5 * (1.0 + 0.2 - 0.1)},
        {"log10(3) - ln(3) / ln(10)", "", std::log10(3.0) - std::log(3.0) / std::log(10.0)},
        {"sin(2*pi*x)*exp(-4*pi^2*x)", "x = 0.1",
         std::sin(2 * kPi * 0.1) * std::exp(-4 * std::pow(kPi, 2.0) * 0.1)},
    });
}

TEST(ExpressionEval, Functions)
{
    const double a = 0.3;
    expectValues({
        {"sin(x)", "x = 0.3", std::sin(a)},
        {"cos(x)", "x = 0.3", std::cos(a)},
        {"tg(x)", "x = 0.3", std::tan(a)},
        {"ctg(x)", "x = 0.3", 1.0 / std::tan(a)},
        {"arcsin(x)", "x = 0.3", std::asin(a)},
        {"arccos(x)", "x = 0.3", std::acos(a)},
        {"arctg(x)", "x = 0.3", std::atan(a)},
        {"arcctg(x)", "x = 0.3", 1.5707963267948966 - std::atan(a)},
        {"exp(x)", "x = 0.3", std::exp(a)},
        {"ln(x)", "x = 0.3", std::log(a)},
        {"log10(x)", "x = 0.3", std::log10(a)},
        {"log2(x)", "x = 0.3", std::log(a) / 0.6931471805599453},
        {"abs(x)", "x = -0.3", 0.3},
        {"sqrt(x)", "x = 0.3", std::sqrt(a)},
        {"sinh(x)", "x = 0.3", std::sinh(a)},
        {"cosh(x)", "x = 0.3", std::cosh(a)},
        {"arcctg(0)", "", 1.5707963267948966},
        {"log2(8)", "", 3.0},
        {"log2(10)", "", std::log(10.0) / 0.6931471805599453},
        {"abs(-2)", "", 2.0},
        {"ctg(1)", "", 1.0 / std::tan(1.0)},
    });
}

TEST(ExpressionEval, BadResults)
{
    for (const char* text : {"1/0", "-1/0", "0/0", "ln(0)", "sqrt(-1)", "ctg(0)", "(-8)^(1/3)",
                             "0*exp(1000)", "exp(1000)", "arcsin(2)", "1e308*10", "log2(-1)"}) {
        Expression e(text);
        EXPECT_THROW(e.eval(""), ExpressionBadResult) << text;
    }
}

// The apply_* functions are reached directly only for names that a
// constructed object never holds.
TEST(ExpressionEval, ApplyRejectsUnknownOperatorsAndNames)
{
    const Expression e("x");
    EXPECT_EQ(e.apply_unary("-", 2.0), -2.0);
    EXPECT_EQ(e.apply_unary("+", 2.0), 2.0);
    for (const char* op : {"*", "/", "^", "", "x"}) {
        EXPECT_THROW(e.apply_unary(op, 1.0), ExpressionWrongFormat) << op;
    }
    for (const char* op : {"%", "", "**", "("}) {
        EXPECT_THROW(e.apply_binary(op, 1.0, 2.0), ExpressionWrongFormat) << op;
    }
    for (const char* name : {"tan", "log", "Sin", "", "pi"}) {
        EXPECT_THROW(e.apply_function(name, 1.0), ExpressionWrongFormat) << name;
    }
    EXPECT_TRUE(std::isinf(e.apply_binary("/", 1.0, 0.0)));
    EXPECT_TRUE(std::isnan(e.apply_function("sqrt", -1.0)));
}

TEST(ExpressionEval, UnaryOperatorsWithoutMeaningFailAtFirstEvaluation)
{
    for (const char* text : {"*2", "(*2)", "/x", "^2", "1+(*2)"}) {
        Expression e(text);  // constructs
        EXPECT_THROW(e.eval("x = 1"), ExpressionWrongFormat) << text;
    }
}

TEST(ExpressionEval, LiteralsCountWithSixSignificantDigits)
{
    expectValues({
        {"3.14159265", "", 3.14159},
        {"1234567", "", 1234570.0},
        {"123456.7", "", 123457.0},
        {"1.0000001", "", 1.0},
        {"0.1", "", 0.1},
        {"2.5e-3", "", 0.0025},
        {"100000", "", 100000.0},
        {"1e-400", "", 0.0},
        {"3.14159265*x", "x = 1", 3.14159},
        // Assigned values keep full precision; only literals are rounded.
        {"x", "x = 3.14159265", 3.14159265},
    });
}

TEST(ExpressionEval, AcceptedAssignmentTexts)
{
    struct Case {
        std::string text;
        double x;
        double y;
    };
    const std::vector<Case> cases = {
        {"x = 1 y = 2", 1, 2},
        {"  x = 1   y = 2  ", 1, 2},
        {"x\t=\t1\ny = 2", 1, 2},
        {"x = -0.5 y = 1e-07", -0.5, 1e-07},
        {"x = 1e3 y = 2.", 1000, 2},
        {"y = 2 x = 1", 1, 2},
        {"x = 5 y = 2 x = 1", 1, 2},
        {"pi = 3 x = 1 y = 2", 1, 2},
    };
    for (const auto& c : cases) {
        Expression e("x + 10*y");
        EXPECT_EQ(e.eval(c.text), c.x + 10 * c.y) << c.text;
    }
}

TEST(ExpressionEval, RejectedAssignmentTexts)
{
    for (const char* text : {"x=1", "x = ", "x =", "x", "x : 1", "x == 1", "x = abc", "1x = 2",
                             "x_1 = 2", "x = 1e400", "= 1", "x = 1 y", "x = 1 y = ", "x = 0x10",
                             "x = 1,5 y = 2", "x = nan", "x = inf", "\xc3\xa9 = 1"}) {
        Expression e("x");
        EXPECT_THROW(e.eval(text), ExpressionWrongFormat) << '"' << text << '"';
    }
}

TEST(ExpressionEval, EmptyAssignmentTextSetsNothing)
{
    Expression e("pi");
    EXPECT_EQ(e.eval(""), kPi);
    EXPECT_EQ(e.eval(" \t\n "), kPi);
    EXPECT_EQ(ExpressionTestAccess::variables(e).size(), 1u);
}

TEST(ExpressionEval, VariablesPersistAcrossEvaluations)
{
    Expression e("x + y");
    EXPECT_EQ(e.eval("x = 1 y = 2"), 3.0);
    EXPECT_EQ(e.eval("x = 5"), 7.0);
    EXPECT_EQ(e.eval(""), 7.0);

    // Any name may be assigned, pi included, and it stays.
    Expression p("pi*x");
    EXPECT_EQ(p.eval("pi = 3 x = 2"), 6.0);
    EXPECT_EQ(p.eval("x = 1"), 3.0);

    // Assignments before a rejected one are kept.
    Expression q("x");
    EXPECT_THROW(q.eval("x = 5 y=3"), ExpressionWrongFormat);
    EXPECT_EQ(q.eval(""), 5.0);
}

TEST(ExpressionEval, UnknownVariableCarriesItsName)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"x", "x"}, {"y+1", "y"}, {"y+x", "y"}, {"x+e", "e"}, {"X", "X"}, {"sin2", "sin2"},
        {"sin(z)*x", "z"},
    };
    for (const auto& [text, name] : cases) {
        Expression e(text);  // names are looked up only when evaluated
        try {
            e.eval(text == "x" ? "" : "x = 1");
            ADD_FAILURE() << text << " evaluated";
        } catch (const ExpressionUnknownVariable& error) {
            EXPECT_EQ(error.name, name) << text;
        }
    }
    Expression e("x");
    EXPECT_THROW(e.eval(""), ExpressionUnknownVariable);
    EXPECT_EQ(e.eval("x = 1"), 1.0);
    EXPECT_EQ(e.eval(""), 1.0);
}

TEST(ExpressionEval, UsableAfterAFailedEvaluation)
{
    Expression e("1/x + y");
    EXPECT_THROW(e.eval("x = 1"), ExpressionUnknownVariable);
    EXPECT_THROW(e.eval("x = 0 y = 1"), ExpressionBadResult);
    EXPECT_THROW(e.eval("x=2"), ExpressionWrongFormat);
    EXPECT_EQ(e.eval("x = 2"), 1.5);
    EXPECT_THROW(e.eval("x = 0"), ExpressionBadResult);
    EXPECT_EQ(e.eval("x = 4 y = 0"), 0.25);

    Expression u("*2");
    EXPECT_THROW(u.eval(""), ExpressionWrongFormat);
    EXPECT_THROW(u.eval(""), ExpressionWrongFormat);
}

TEST(ExpressionEval, CalculateGuardsItsStack)
{
    const Expression e("x");
    using Seq = std::vector<Expression::token>;
    const Expression::token one{"1", Expression::number};
    const std::vector<Seq> bad = {
        {},
        {one, one},
        {{"+", Expression::binary_operator}},
        {one, {"+", Expression::binary_operator}},
        {{"-", Expression::unary_operator}},
        {{"sin", Expression::function}},
        {one, {"(", Expression::parenthesis}},
        {one, {"+", Expression::undefined_operator}},
        {{"abc", Expression::number}},
    };
    for (const Seq& seq : bad) {
        EXPECT_THROW(e.calculate(seq), ExpressionWrongFormat) << describe(seq);
    }
    EXPECT_EQ(e.calculate({one, {"2.5", Expression::number}, {"*", Expression::binary_operator}}),
              2.5);
    EXPECT_EQ(e.calculate({{"pi", Expression::variable}}), kPi);
}

TEST(ExpressionEval, CopiesEvaluateIndependently)
{
    Expression a("x*y");
    EXPECT_EQ(a.eval("x = 2 y = 3"), 6.0);
    Expression b = a;
    EXPECT_EQ(b.eval("y = 10"), 20.0);
    EXPECT_EQ(a.eval(""), 6.0);
    EXPECT_EQ(a.eval("x = 5"), 15.0);
    EXPECT_EQ(b.eval(""), 20.0);
}

}  // namespace
