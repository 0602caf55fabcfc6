#pragma once
// Helpers shared by the expression tests: a read-only look at the private tables of an
// Expression, and a compact text form of token sequences ("number:0.5 undefined_operator:*").

#include <map>
#include <set>
#include <string>
#include <vector>

#include "expression/expression.h"

struct ExpressionTestAccess {
    static const std::set<std::string>& functions(const Expression& e) { return e.functions; }
    static const std::set<std::string>& operators(const Expression& e) { return e.operators; }
    static const auto& variables(const Expression& e) { return e.variables; }
    static const std::vector<Expression::token>& postfix(const Expression& e) { return e.postfix; }
};

inline std::string describe(const std::vector<Expression::token>& tokens)
{
    std::string s;
    for (const Expression::token& t : tokens) {
        s += (s.empty() ? "" : " ") + Expression::token_t_list[t.type] + ":" + t.text;
    }
    return s;
}

// The tokens of `text` as split produces them (no check, no conversion).
inline std::vector<Expression::token> splitText(const std::string& text)
{
    std::vector<Expression::token> out;
    Expression("0").split(text, out);
    return out;
}
