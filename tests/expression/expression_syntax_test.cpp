// Tokenizing, the syntax check, the arity of operators and the postfix order.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

// Texts that construct. Some fail only later, at evaluation (*2, y+1).
const std::vector<std::string> kAccepted = {
    "2*(-x)", "-x^2", "sin(cos(x))", "((x))", "x^(-1)", "x", "0", "pi", "+x",
    "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "log10(3) - ln(3) / ln(10)",
    "x\t+\n1\r", "  x  ", "y+1", "*2", "(*2)", "1.", "0.5e+3", "2E-2", "Sin", "sin(x)^2",
    "-sin(x)", "2^3^2", "8/4/2", "x2+log10(X)", "(((((x)))))", "abs(-(-x))", "-(+x)",
    "1e308", "1e-400", "00012", "x+(y)-(z)"};

// Texts that the constructor rejects with ExpressionWrongFormat.
const std::vector<std::string> kRejected = {
    "2*-x", "x^-1", "2(x)", "(x)(y)", "sin x", "sin()", "()", "x y", "2x", "x+", "sin",
    "", "   ", "\t\n", ".1", "1e", "2e+", "1e400", "-1e400", "x_1", "1.5.2", ")(", "x)", "0x10",
    "x\v+1", "2 3", "2,5", "x=1", "#", "(", ")", "x(", "(x", "x+)", "--x", "-", "x--y",
    "sin(x)(x)", "(x)2", "x(2)", "sin-x", "cos^2(x)", "x*", "((x)", "(x))", "x+()",
    "sin(x", std::string("x\0+1", 4), "\xc3\xa9", "x\x80", "Ln(x", "pi pi", "1 .5"};

TEST(ExpressionSyntax, AcceptedTextsConstruct)
{
    for (const std::string& text : kAccepted) {
        EXPECT_NO_THROW(Expression{text}) << '"' << text << '"';
    }
}

TEST(ExpressionSyntax, RejectedTextsThrowWrongFormat)
{
    for (const std::string& text : kRejected) {
        EXPECT_THROW(Expression{text}, ExpressionWrongFormat) << '"' << text << '"';
    }
}

TEST(ExpressionSyntax, SplitTokenSequences)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0.5 * (1. + 0.2 - 1e-1)",
         "number:0.5 undefined_operator:* parenthesis:( number:1 undefined_operator:+ "
         "number:0.2 undefined_operator:- number:0.1 parenthesis:)"},
        {"sin(2*pi*x)",
         "function:sin parenthesis:( number:2 undefined_operator:* variable:pi "
         "undefined_operator:* variable:x parenthesis:)"},
        {"x2+log10(X)",
         "variable:x2 undefined_operator:+ function:log10 parenthesis:( variable:X parenthesis:)"},
        // Numbers keep their value written with 6 significant digits.
        {"3.14159265", "number:3.14159"},
        {"1234567", "number:1.23457e+06"},
        {"1000000", "number:1e+06"},
        {"100000", "number:100000"},
        {"2.5e-3", "number:0.0025"},
        {"1e-5", "number:1e-05"},
        {"0.000123456789", "number:0.000123457"},
        {"00012", "number:12"},
        {"1.", "number:1"},
        {"1e-400", "number:0"},
        // The stream reads no hexadecimal: 0 is a number, x10 a name.
        {"0x10", "number:0 variable:x10"},
        {"2x", "number:2 variable:x"},
        {"1e5x", "number:100000 variable:x"},
        {"1 2", "number:1 number:2"},
        {"sin2 Sin e", "variable:sin2 variable:Sin variable:e"},
        {"a\tb\nc\rd", "variable:a variable:b variable:c variable:d"},
        {"", ""},
        {"  \t ", ""},
        {"-+*/^()",
         "undefined_operator:- undefined_operator:+ undefined_operator:* undefined_operator:/ "
         "undefined_operator:^ parenthesis:( parenthesis:)"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(describe(splitText(text)), expected) << '"' << text << '"';
    }
    EXPECT_EQ(splitText("0.5 * (1. + 0.2 - 1e-1)").size(), 9u);
}

TEST(ExpressionSyntax, SplitRejectsBadNamesAndNumbers)
{
    for (const char* text : {"1.5.2", ".1", "x_1", "1e", "2e+", "1e400", "x=1", "#", "a\vb",
                             "2,5", "x\xe9"}) {
        EXPECT_THROW(splitText(text), ExpressionWrongFormat) << '"' << text << '"';
    }
}

TEST(ExpressionSyntax, SplitAppendsToTheOutput)
{
    Expression e("x");
    std::vector<Expression::token> out = {{"first", Expression::variable}};
    e.split("x+1", out);
    EXPECT_EQ(describe(out), "variable:first variable:x undefined_operator:+ number:1");
}

// One hand-built sequence for each rule of the check that texts alone reach
// only together with others.
TEST(ExpressionSyntax, CheckExpressionRules)
{
    const Expression e("x");
    using Seq = std::vector<Expression::token>;
    const Expression::token x{"x", Expression::variable};
    const Expression::token one{"1", Expression::number};
    const Expression::token plus{"+", Expression::undefined_operator};
    const Expression::token open{"(", Expression::parenthesis};
    const Expression::token close{")", Expression::parenthesis};
    const Expression::token sin{"sin", Expression::function};

    const std::vector<std::pair<Seq, bool>> cases = {
        {{x}, true},
        {{plus, x}, true},
        {{sin, open, x, close}, true},
        {{open, plus, x, close, plus, one}, true},
        {{}, false},                          // empty
        {{x, plus}, false},                   // ends with an operator
        {{sin}, false},                       // ends with a function
        {{sin, x}, false},                    // function without "("
        {{open, close}, false},               // empty brackets
        {{open, x, plus, close}, false},      // operator before ")"
        {{open, x, close, x}, false},         // ")" followed by a name
        {{x, open, one, close}, false},       // "(" after a name
        {{close, plus, open}, false},         // depth below 0, then back to 0
        {{open, x}, false},                   // unclosed
        {{x, one}, false},                    // transition table
        {{plus, plus, x}, false},             // transition table
        {{{"+", Expression::binary_operator}, x}, true},
        {{{"?", Expression::undefined}, x}, false},  // no row allows undefined
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto& [seq, ok] = cases[i];
        if (ok) {
            EXPECT_NO_THROW(e.check_expression(seq)) << "case " << i << ": " << describe(seq);
        } else {
            EXPECT_THROW(e.check_expression(seq), ExpressionWrongFormat)
                << "case " << i << ": " << describe(seq);
        }
    }
}

TEST(ExpressionSyntax, MarkUnaries)
{
    const Expression e("x");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"-x", "unary_operator:- variable:x"},
        {"-x*(-y)+(+2)",
         "unary_operator:- variable:x binary_operator:* parenthesis:( unary_operator:- "
         "variable:y parenthesis:) binary_operator:+ parenthesis:( unary_operator:+ number:2 "
         "parenthesis:)"},
        {"sin(-x)^2",
         "function:sin parenthesis:( unary_operator:- variable:x parenthesis:) "
         "binary_operator:^ number:2"},
        {"*2", "unary_operator:* number:2"},
        {"+", "unary_operator:+"},
    };
    for (const auto& [text, expected] : cases) {
        auto tokens = splitText(text);
        e.mark_unaries(tokens);
        EXPECT_EQ(describe(tokens), expected) << text;
    }

    // An operator right after another operator or after a function name.
    for (const char* text : {"x+-1", "sin-x", "x--"}) {
        auto tokens = splitText(text);
        EXPECT_THROW(e.mark_unaries(tokens), ExpressionWrongFormat) << text;
    }
    std::vector<Expression::token> none;
    EXPECT_NO_THROW(e.mark_unaries(none));
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
        {"ln(exp(x))", "variable:x function:exp function:ln"},
        {"((x))", "variable:x"},
    };
    for (const auto& [text, expected] : cases) {
        const Expression e(text);
        EXPECT_EQ(describe(ExpressionTestAccess::postfix(e)), expected) << text;
    }
}

TEST(ExpressionSyntax, ConvertExpressionGuards)
{
    const Expression e("x");
    using Seq = std::vector<Expression::token>;
    const std::vector<Seq> bad = {
        {{")", Expression::parenthesis}},
        {{"x", Expression::variable}, {")", Expression::parenthesis}},
        {{"x", Expression::undefined}},
    };
    for (Seq seq : bad) {
        Seq out;
        EXPECT_THROW(e.convert_expression(seq, out), ExpressionWrongFormat) << describe(seq);
    }
    // Tokens are appended to what the output already holds.
    Seq infix = splitText("x+1");
    Seq out = {{"first", Expression::number}};
    e.convert_expression(infix, out);
    EXPECT_EQ(describe(out), "number:first variable:x number:1 binary_operator:+");
    EXPECT_EQ(describe(infix), "variable:x binary_operator:+ number:1");
}

}  // namespace
