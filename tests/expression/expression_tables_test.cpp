// The tables of an Expression and the classification of characters, names
// and operators.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

using T = Expression::token_t;

TEST(ExpressionTables, TokenTypeNamesFollowTheirValues)
{
    const std::vector<std::pair<T, std::string>> cases = {
        {Expression::undefined, "undefined"},
        {Expression::parenthesis, "parenthesis"},
        {Expression::undefined_operator, "undefined_operator"},
        {Expression::binary_operator, "binary_operator"},
        {Expression::unary_operator, "unary_operator"},
        {Expression::variable, "variable"},
        {Expression::number, "number"},
        {Expression::function, "function"},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(static_cast<int>(cases[i].first), static_cast<int>(i));
        EXPECT_EQ(Expression::token_t_list[i], cases[i].second);
    }
    EXPECT_EQ(sizeof(Expression::token_t), 4u);
}

TEST(ExpressionTables, ConstructionFillsTheTables)
{
    const Expression e("x");
    const std::set<std::string> functions = {
        "sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg", "arcctg",
        "exp", "ln", "log10", "log2", "abs", "sqrt", "sinh", "cosh"};
    EXPECT_EQ(ExpressionTestAccess::functions(e), functions);
    EXPECT_EQ(ExpressionTestAccess::operators(e),
              (std::set<std::string>{"+", "-", "*", "/", "^"}));
    const auto& vars = ExpressionTestAccess::variables(e);
    ASSERT_EQ(vars.size(), 1u);
    EXPECT_EQ(vars.at("pi"), 3.141592653589793);
}

TEST(ExpressionTables, PostfixHoldsOnlyEvaluableTokens)
{
    for (const char* text : {"x", "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)",
                             "log10(3) - ln(3) / ln(10)", "((x))", "-(+x)", "*2"}) {
        SCOPED_TRACE(text);
        const Expression e(text);
        const auto& postfix = ExpressionTestAccess::postfix(e);
        ASSERT_FALSE(postfix.empty());
        for (const auto& t : postfix) {
            EXPECT_TRUE(t.type == Expression::binary_operator ||
                        t.type == Expression::unary_operator || t.type == Expression::variable ||
                        t.type == Expression::number || t.type == Expression::function)
                << Expression::token_t_list[t.type] << " " << t.text;
        }
    }
}

TEST(ExpressionTables, InitializeSetsPiAgainAndKeepsTheTables)
{
    Expression e("pi");
    EXPECT_EQ(e.eval("pi = 3"), 3.0);
    e.initialize();
    e.initialize();
    EXPECT_EQ(e.eval(""), 3.141592653589793);
    EXPECT_EQ(ExpressionTestAccess::functions(e).size(), 16u);
    EXPECT_EQ(ExpressionTestAccess::operators(e).size(), 5u);
}

TEST(ExpressionTables, IsVariable)
{
    const Expression e("x");
    const std::vector<std::pair<std::string, bool>> cases = {
        {"x", true},     {"x2", true},   {"X", true},     {"pi", true},
        {"Sin", true},   {"sin", true},  {"abc123", true}, {"2x", false},
        {"", false},     {"_x", false},  {"x.5", false},  {"x_1", false},
        {".5", false},   {"#", false},   {",5", false},   {"x=1", false},
        {"\xc3\xa9", false},  // a UTF-8 letter is two bytes >= 128
        {"x\xff", false}, {std::string("x\0y", 3), false}, {"x y", false},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(e.is_variable(text), expected) << '"' << text << '"';
    }
}

TEST(ExpressionTables, IsDelimiterAndIsOperator)
{
    const Expression e("x");
    for (char c : {'+', '-', '*', '/', '^', '\t', '\n', '\r', ' ', '(', ')'}) {
        EXPECT_TRUE(e.is_delimiter(c)) << int(c);
    }
    for (char c : {'\v', '\f', ',', '_', '=', '.', 'a', '0', '\0', '%', '\x80', '\xff'}) {
        EXPECT_FALSE(e.is_delimiter(c)) << int(c);
    }
    for (const char* op : {"+", "-", "*", "/", "^"}) {
        EXPECT_TRUE(e.is_operator(op)) << op;
    }
    for (const char* s : {"", "(", "++", "**", "x", " +"}) {
        EXPECT_FALSE(e.is_operator(s)) << s;
    }
}

TEST(ExpressionTables, GetTypeClassifiesNames)
{
    const Expression e("x");
    const std::vector<std::pair<std::string, T>> cases = {
        {"log10", Expression::function}, {"sin", Expression::function},
        {"cosh", Expression::function},  {"Log10", Expression::variable},
        {"e", Expression::variable},     {"sin2", Expression::variable},
        {"pi", Expression::variable},    {"x", Expression::variable},
    };
    for (const auto& [text, type] : cases) {
        EXPECT_EQ(e.get_type({text, Expression::undefined}), type) << text;
    }
    for (const char* bad : {"x_1", ".5", ",5", "#", "", "x.y"}) {
        EXPECT_THROW(e.get_type({bad, Expression::undefined}), ExpressionWrongFormat) << bad;
    }
}

TEST(ExpressionTables, Priority)
{
    const Expression e("x");
    struct Case {
        Expression::token tok;
        int expected;
    };
    const std::vector<Case> cases = {
        {{"(", Expression::parenthesis}, 0},
        {{"+", Expression::binary_operator}, 1},
        {{"-", Expression::binary_operator}, 1},
        {{"*", Expression::binary_operator}, 2},
        {{"/", Expression::binary_operator}, 2},
        {{"^", Expression::binary_operator}, 4},
        {{"-", Expression::unary_operator}, 3},
        {{"*", Expression::unary_operator}, 3},
        {{"^", Expression::unary_operator}, 3},
        {{"sin", Expression::function}, 5},
        {{"anything", Expression::function}, 5},
        {{"+", Expression::undefined_operator}, 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(e.priority(c.tok), c.expected)
            << c.tok.text << " " << Expression::token_t_list[c.tok.type];
    }
    EXPECT_THROW(e.priority({"x", Expression::variable}), ExpressionWrongFormat);
    EXPECT_THROW(e.priority({")", Expression::parenthesis}), ExpressionWrongFormat);
    EXPECT_THROW(e.priority({"", Expression::binary_operator}), ExpressionWrongFormat);
}

}  // namespace
