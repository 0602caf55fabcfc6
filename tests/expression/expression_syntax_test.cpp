// Tokenizing, the syntax check, the arity of operators and the postfix order.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

using E = Expression;
using Seq = std::vector<E::token>;

TEST(ExpressionSyntax, AcceptedAndRejectedTexts)
{
    // Some accepted texts fail only later, at evaluation (*2, y+1).
    for (const std::string text :
         {"2*(-x)", "-x^2", "sin(cos(x))", "((x))", "x^(-1)", "x", "0", "pi", "+x", "Sin", "1.",
          "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "log10(3) - ln(3) / ln(10)",
          "x\t+\n1\r", "  x  ", "y+1", "*2", "(*2)", "0.5e+3", "2E-2", "sin(x)^2", "-sin(x)",
          "x2+log10(X)", "abs(-(-x))", "-(+x)", "1e308", "1e-400", "00012", "x+(y)-(z)"}) {
        EXPECT_NO_THROW(Expression{text}) << '"' << text << '"';
    }
    for (const std::string text :
         {"2*-x", "x^-1", "2(x)", "(x)(y)", "sin x", "sin()", "()", "x y", "2x", "x+", "sin", "",
          "   ", "\t\n", ".1", "1e", "2e+", "1e400", "-1e400", "x_1", "1.5.2", ")(", "x)", "0x10",
          "x\v+1", "2 3", "2,5", "x=1", "#", "(", ")", "x(", "(x", "x+)", "--x", "-", "x--y",
          "sin(x)(x)", "(x)2", "x(2)", "sin-x", "cos^2(x)", "((x)", "(x))", "x+()", "sin(x",
          "\xc3\xa9", "x\x80", "pi pi", "1 .5", ")+("}) {
        EXPECT_THROW(Expression{text}, ExpressionWrongFormat) << '"' << text << '"';
    }
    EXPECT_THROW(Expression(std::string("x\0+1", 4)), ExpressionWrongFormat);
}

TEST(ExpressionSyntax, SplitTokenSequences)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0.5 * (1. + 0.2 - 1e-1)",
         "number:0.5 undefined_operator:* parenthesis:( number:1 undefined_operator:+ "
         "number:0.2 undefined_operator:- number:0.1 parenthesis:)"},
        // Numbers keep their value written with 6 significant digits.
        {"3.14159265", "number:3.14159"},
        {"1234567", "number:1.23457e+06"},
        {"1000000", "number:1e+06"},
        {"100000", "number:100000"},
        {"0.000123456789", "number:0.000123457"},
        {"1e-400", "number:0"},
        // The stream reads no hexadecimal: 0 is a number, x10 a name.
        {"0x10", "number:0 variable:x10"},
        {"2x", "number:2 variable:x"},
        {"a\tb\nc\rd", "variable:a variable:b variable:c variable:d"},
        {"  \t ", ""},
        {"-+*/^()", "undefined_operator:- undefined_operator:+ undefined_operator:* "
                    "undefined_operator:/ undefined_operator:^ parenthesis:( parenthesis:)"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(describe(splitText(text)), expected) << '"' << text << '"';
    }
    EXPECT_EQ(splitText("0.5 * (1. + 0.2 - 1e-1)").size(), 9u);
    for (const char* text : {"1.5.2", ".1", "x_1", "1e", "2e+", "1e400", "x=1", "a\vb", "x\xe9"}) {
        EXPECT_THROW(splitText(text), ExpressionWrongFormat) << '"' << text << '"';
    }
    Seq out = {{"first", E::variable}};  // split appends
    Expression("x").split("x+1", out);
    EXPECT_EQ(describe(out), "variable:first variable:x undefined_operator:+ number:1");
}

// Sequences that no text produces: a start already marked binary passes like an undecided
// operator; a token of undefined type matches no row of the transition table.
TEST(ExpressionSyntax, CheckExpressionOnHandBuiltSequences)
{
    const Expression e("x");
    const E::token x{"x", E::variable};
    EXPECT_NO_THROW(e.check_expression({{"+", E::binary_operator}, x}));
    EXPECT_THROW(e.check_expression({{"?", E::undefined}, x}), ExpressionWrongFormat);
    EXPECT_THROW(e.check_expression({x, {"?", E::undefined}}), ExpressionWrongFormat);
    EXPECT_THROW(e.check_expression({}), ExpressionWrongFormat);
}

TEST(ExpressionSyntax, PostfixOrder)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"sin(2*pi*x)*exp(-4*pi^2*x)",
         "number:2 variable:pi binary_operator:* variable:x binary_operator:* function:sin "
         "number:4 unary_operator:- variable:pi number:2 binary_operator:^ binary_operator:* "
         "variable:x binary_operator:* function:exp binary_operator:*"},
        {"2^3^2", "number:2 number:3 number:2 binary_operator:^ binary_operator:^"},
        {"8/4/2", "number:8 number:4 binary_operator:/ number:2 binary_operator:/"},
        {"2-3-4", "number:2 number:3 binary_operator:- number:4 binary_operator:-"},
        {"-2^2", "number:2 number:2 binary_operator:^ unary_operator:-"},
        {"sin(x)^2", "variable:x function:sin number:2 binary_operator:^"},
        {"-sin(x)", "variable:x function:sin unary_operator:-"},
        {"1+2*3", "number:1 number:2 number:3 binary_operator:* binary_operator:+"},
        {"((x))", "variable:x"},
        // Operators first in the text or after "(" are unary.
        {"-x*(-y)+(+2)", "variable:x unary_operator:- variable:y unary_operator:- "
                         "binary_operator:* number:2 unary_operator:+ binary_operator:+"},
        {"*2", "number:2 unary_operator:*"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(describe(ExpressionTestAccess::postfix(Expression(text))), expected) << text;
    }
}

TEST(ExpressionSyntax, ConvertExpressionGuardsAndAppends)
{
    const Expression e("x");
    Seq unbalanced = {{"x", E::variable}, {")", E::parenthesis}}, none;
    EXPECT_THROW(e.convert_expression(unbalanced, none), ExpressionWrongFormat);
    Seq infix = splitText("x+1");
    Seq out = {{"first", E::number}};
    e.convert_expression(infix, out);
    EXPECT_EQ(describe(out), "number:first variable:x number:1 binary_operator:+");
    EXPECT_EQ(describe(infix), "variable:x binary_operator:+ number:1");
}

}  // namespace
