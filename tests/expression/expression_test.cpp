// Expression: the texts accepted and rejected, the steps of the constructor, evaluation, assignment texts and the
// variables kept between calls.

#include <gtest/gtest.h>

#include <cmath>
#include <locale>
#include <string>
#include <vector>

#include "expression_test_support.h"

namespace {

using E = Expression;
using Seq = std::vector<E::token>;
const double kPi = 3.141592653589793;

// Texts that construct (some fail only later, at evaluation: see Outcomes) and texts that do not.
TEST(ExpressionSyntax, AcceptedAndRejectedTexts) {
    for (const char* text : {"2*(-x)", "sin(cos(x))", "((x))", "x^(-1)", "0", "Sin", "x\t+\n1\r", "  x  ", "0.5e+3",
                             "2E-2", "x2+log10(X)", "abs(-(-x))", "-(+x)", "1e-400", "00012", "x+(y)-(z)"}) {
        EXPECT_NO_THROW(Expression{text}) << '"' << text << '"';
    }
    for (const std::string& text : std::vector<std::string>{
             "2*-x", "x^-1", "2(x)", "(x)(y)", "sin x", "sin()", "()", "x y", "2x", "x+", "sin", "", "   ", ".1", "1e",
             "2e+", "1e400", "x_1", "1.5.2", ")(", "0x10", "x\v+1", "2 3", "2,5", "x=1", "#", "x(", "x+)", "--x",
             "(x)2", "x(2)", "cos^2(x)", "((x)", "(x))", "\xc3\xa9", "x\x80", "1 .5", ")+(", std::string("x\0+1", 4),
             std::string(100000, '(') + "x"}) {
        EXPECT_THROW(Expression{text}, ExpressionWrongFormat) << '"' << text.substr(0, 20) << '"';
    }
}

// The steps of the constructor one by one: split and convert_expression append to their output, the latter marks the
// operators in place. On sequences no text produces: a start marked binary passes the check, a token of undefined
// type matches no rule, and an unmatched ")" stops the conversion.
TEST(ExpressionSyntax, StepsOneByOne) {
    Expression e("x");
    const E::token x{"x", E::variable}, what{"?", E::undefined};
    Seq infix = {{"first", E::variable}}, out = {{"first", E::number}}, unbalanced = {x, {")", E::parenthesis}};
    e.split("-sin(x)+1", infix);
    EXPECT_EQ(describe(infix), "variable:first undefined_operator:- function:sin parenthesis:( variable:x "
                               "parenthesis:) undefined_operator:+ number:1");
    infix.erase(infix.begin());
    e.convert_expression(infix, out);
    EXPECT_EQ(describe(out), "number:first variable:x function:sin unary_operator:- number:1 binary_operator:+");
    EXPECT_EQ(describe(infix), "unary_operator:- function:sin parenthesis:( variable:x parenthesis:) "
                               "binary_operator:+ number:1");
    EXPECT_THROW(e.convert_expression(unbalanced, out), ExpressionWrongFormat);
    EXPECT_NO_THROW(e.check_expression({{"+", E::binary_operator}, x}));
    EXPECT_THROW(e.check_expression({what, x}), ExpressionWrongFormat);
    EXPECT_THROW(e.check_expression({x, what}), ExpressionWrongFormat);
}

// Values compared bit for bit (the order of operations and the function formulas are fixed) and failures by exception
// class. Every text constructs; each outcome holds at two evaluations in turn on one object.
TEST(ExpressionEval, Outcomes) {
    const double a = 0.3;
    const std::string x3 = "x = 0.3", bad = "ExpressionBadResult", format = "ExpressionWrongFormat";
    const auto v = [](double value) { return "value " + std::to_string(bitsOf(value)); };
    const struct { std::string text, assignments, expected; } cases[] = {
        {"-x^2", "x = 3", v(-9.0)},  // unary minus binds looser than ^
        {"+x", "x = 3", v(3.0)},
        {"2^3^2", "", v(512.0)},
        {"8/4/2", "", v(1.0)},
        {"2-3-4", "", v(-5.0)},
        {"1+2*3", "", v(7.0)},
        {"(1+2)*3-1", "", v(8.0)},
        {"sin(x)^2", x3, v(std::pow(std::sin(a), 2.0))},
        {"-sin(x)", x3, v(-std::sin(a))},
        {"0.5 * (1. + 0.2 - 1e-1)", "", v(0.5 * (1.0 + 0.2 - 0.1))},
        {"sin(2*pi*x)*exp(-4*pi^2*x)", x3, v(std::sin(2 * kPi * a) * std::exp(-4 * std::pow(kPi, 2.0) * a))},
        {"cos(x)", x3, v(std::cos(a))},
        {"tg(x)", x3, v(std::tan(a))},
        {"ctg(x)", x3, v(1.0 / std::tan(a))},
        {"arcsin(x)", x3, v(std::asin(a))},
        {"arccos(x)", x3, v(std::acos(a))},
        {"arctg(x)", x3, v(std::atan(a))},
        {"arcctg(x)", x3, v(1.5707963267948966 - std::atan(a))},
        {"exp(x)", x3, v(std::exp(a))},
        {"ln(x)", x3, v(std::log(a))},
        {"log10(x)", x3, v(std::log10(a))},
        {"log2(x)", x3, v(std::log(a) / 0.6931471805599453)},
        {"sqrt(x)", x3, v(std::sqrt(a))},
        {"abs(x)", "x = -0.3", v(0.3)},
        {"sinh(x)", x3, v(std::sinh(a))},
        {"cosh(x)", x3, v(std::cosh(a))},
        // Literals count with 6 significant digits; assigned values keep full precision.
        {"3.14159265*x", "x = 1", v(3.14159)},
        {"1234567", "", v(1234570.0)},
        {"x", "x = 3.14159265", v(3.14159265)},
        {"a/b - b/a", "a = 1 b = 2", v(-1.5)},  // names used twice
        {"1/(1/0)", "", v(0.0)},  // only the final value must be finite
        {"1/0", "", bad},
        {"-1/0", "", bad},
        {"(-8)^(1/3)", "", bad},
        {"*2", "", format},  // a unary *, / or ^
        {"1+(*2)", "", format},
        {"y+x", "", "ExpressionUnknownVariable y"},  // names are looked up at evaluation; the first missing is reported
        {"x+e", x3, "ExpressionUnknownVariable e"},
        {"X", x3, "ExpressionUnknownVariable X"},
        {"sin(q)*(*w)", "w = 2", "ExpressionUnknownVariable q"},  // as found on the way: before the unary *
    };
    for (const auto& c : cases) {
        Expression e(c.text);
        for (int i = 0; i < 2; ++i) EXPECT_EQ(outcomeOf([&] { return e.eval(c.assignments); }), c.expected) << c.text;
    }
}

// Reached directly only with names and sequences that a constructed object never holds.
TEST(ExpressionEval, ApplyAndCalculateGuards) {
    const Expression e("x");
    EXPECT_FALSE(e.is_variable(""));
    for (const char* op : {"*", "/", "^", ""}) EXPECT_THROW(e.apply_unary(op, 1), ExpressionWrongFormat) << op;
    EXPECT_THROW(e.apply_binary("%", 1, 2), ExpressionWrongFormat);
    EXPECT_THROW(e.apply_function("tan", 1), ExpressionWrongFormat);
    EXPECT_THROW(e.priority({")", E::parenthesis}), ExpressionWrongFormat);
    const E::token one{"1", E::number}, plus{"+", E::binary_operator}, minus{"-", E::unary_operator};
    const E::token sin{"sin", E::function}, open{"(", E::parenthesis}, abc{"abc", E::number};
    for (const Seq& bad : std::vector<Seq>{{}, {one, one}, {one, plus}, {minus}, {sin}, {one, open}, {abc}})
        EXPECT_THROW(e.calculate(bad), ExpressionWrongFormat) << describe(bad);
    EXPECT_EQ(e.calculate({one, {"2.5", E::number}, {"*", E::binary_operator}}), 2.5);
}

TEST(ExpressionEval, AssignmentTexts) {
    const struct { std::string text; double expected; } accepted[] = {
        {"x = 1 y = 2", 21},
        {"  x\t=\t1\ny = 2  ", 21},
        {"x = -0.5 y = 1e-07", -0.5 + 10 * 1e-07},
        {"x = 1e3 y = 2.", 1020},
        {"x = 5 y = 2 x = 1", 21},
    };
    for (const auto& [text, expected] : accepted) EXPECT_EQ(Expression("x + 10*y").eval(text), expected) << text;
    for (const char* text : {"x=1", "x = ", "x : 1", "x == 1", "x = abc", "1x = 2", "x = 1e400", "= 1", "x = 1 y",
                             "x = 0x10", "x = 1,5 y = 2", "x = inf", "\xc3\xa9 = 1"}) {
        EXPECT_THROW(Expression("x").eval(text), ExpressionWrongFormat) << '"' << text << '"';
    }
}

// Numbers in both texts are read and written in the classic locale, whatever the global one says.
TEST(ExpressionEval, TextsIgnoreTheGlobalLocale) {
    struct Comma : std::numpunct<char> { char do_decimal_point() const override { return ','; } };
    struct Restore { std::locale old; ~Restore() { std::locale::global(old); } } restore{
        std::locale::global(std::locale(std::locale::classic(), new Comma))};
    EXPECT_EQ(Expression("x").eval("x = 0.5"), 0.5);
    EXPECT_EQ(Expression("2.5*x").eval("x = 1"), 2.5);
}

TEST(ExpressionEval, VariablesPersistInEachCopyAndSurviveFailures) {
    Expression e("1/x + y");
    EXPECT_THROW(e.eval("x = 1"), ExpressionUnknownVariable);
    EXPECT_THROW(e.eval("x = 0 y = 1"), ExpressionBadResult);
    EXPECT_THROW(e.eval("x = 4 y=3"), ExpressionWrongFormat);  // x = 4 before it is kept
    EXPECT_EQ(e.eval(""), 1.25);
    EXPECT_EQ(e.eval("x = 2"), 1.5);

    Expression p("pi*x");  // any name may be assigned, pi included; it stays until initialize()
    EXPECT_EQ(p.eval("pi = 3 x = 2"), 6.0);
    EXPECT_EQ(p.eval("x = 1"), 3.0);
    Expression copy = p;  // copies keep their own variables
    EXPECT_EQ(copy.eval("x = 5"), 15.0);
    EXPECT_EQ(p.eval(""), 3.0);
    p.initialize();
    EXPECT_EQ(p.eval(""), kPi);
}

}  // namespace
