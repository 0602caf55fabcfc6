// The tables of an Expression and the classification of characters, names and operators.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression_test_support.h"

namespace {

using E = Expression;

// The names are checked through describe() in every token test; the values are fixed here.
TEST(ExpressionTables, TokenTypeValues)
{
    EXPECT_EQ((std::vector<int>{E::undefined, E::parenthesis, E::undefined_operator,
                                E::binary_operator, E::unary_operator, E::variable, E::number,
                                E::function}),
              (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(E::token_t_list[0], "undefined");
    EXPECT_EQ(sizeof(E::token_t), 4u);
}

TEST(ExpressionTables, InitializeFillsTheTablesAndResetsPi)
{
    Expression e("pi");
    EXPECT_EQ(ExpressionTestAccess::functions(e),
              (std::set<std::string>{"sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg",
                                     "arcctg", "exp", "ln", "log10", "log2", "abs", "sqrt",
                                     "sinh", "cosh"}));
    EXPECT_EQ(ExpressionTestAccess::operators(e), (std::set<std::string>{"+", "-", "*", "/", "^"}));
    EXPECT_EQ(ExpressionTestAccess::variables(e),
              (std::map<std::string, double>{{"pi", 3.141592653589793}}));
    EXPECT_EQ(e.eval("pi = 3"), 3.0);
    e.initialize();
    EXPECT_EQ(e.eval(""), 3.141592653589793);
    EXPECT_EQ(ExpressionTestAccess::functions(e).size(), 16u);
}

TEST(ExpressionTables, CharacterAndNameClasses)
{
    const Expression e("x");
    for (const char* s : {"x", "x2", "X", "pi", "Sin", "sin", "abc123"}) {
        EXPECT_TRUE(e.is_variable(s)) << s;
    }
    // A UTF-8 letter is two bytes >= 128; an embedded NUL is not a letter either.
    for (const std::string& s : std::vector<std::string>{"2x", "", "_x", "x.5", "x_1", ".5", "#",
             ",5", "x=1", "\xc3\xa9", "x\xff", "x y", std::string("x\0y", 3)}) {
        EXPECT_FALSE(e.is_variable(s)) << '"' << s << '"';
    }
    // Split shows the delimiters and operators that are; these are not.
    for (char c : {'\v', '\f', ',', '_', '=', '.', 'a', '0', '\0', '\x80', '\xff'}) {
        EXPECT_FALSE(e.is_delimiter(c)) << int(c);
    }
    for (const char* s : {"", "(", "++", "x", " +"}) EXPECT_FALSE(e.is_operator(s)) << s;
}

TEST(ExpressionTables, GetTypeAndPriority)
{
    const Expression e("x");
    const std::vector<std::pair<std::string, E::token_t>> types = {
        {"log10", E::function}, {"cosh", E::function},  {"Log10", E::variable},
        {"sin2", E::variable},  {"pi", E::variable},    {"e", E::variable}};
    for (const auto& [text, type] : types) EXPECT_EQ(e.get_type({text, E::undefined}), type);
    EXPECT_THROW(e.get_type({"x_1", E::undefined}), ExpressionWrongFormat);
    const std::vector<std::pair<E::token, int>> priorities = {
        {{"(", E::parenthesis}, 0},     {{"+", E::binary_operator}, 1},
        {{"-", E::binary_operator}, 1}, {{"*", E::binary_operator}, 2},
        {{"/", E::binary_operator}, 2}, {{"^", E::binary_operator}, 4},
        {{"-", E::unary_operator}, 3},  {{"^", E::unary_operator}, 3},
        {{"sin", E::function}, 5},      {{"+", E::undefined_operator}, 1}};
    for (const auto& [tok, expected] : priorities) {
        EXPECT_EQ(e.priority(tok), expected) << tok.text << " " << E::token_t_list[tok.type];
    }
    EXPECT_THROW(e.priority({"x", E::variable}), ExpressionWrongFormat);
    EXPECT_THROW(e.priority({")", E::parenthesis}), ExpressionWrongFormat);
}

}  // namespace
