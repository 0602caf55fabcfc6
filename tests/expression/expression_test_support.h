#pragma once
// Helpers for the expression tests: the postfix sequence, a text form of token sequences and of evaluation outcomes,
// and the text route, the reference for every faster way of evaluating.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"

struct ExpressionTestAccess {
    static const std::vector<Expression::token>& postfix(const Expression& e) { return e.postfix; }
};

inline std::string describe(const std::vector<Expression::token>& tokens) {
    std::string s;
    for (const auto& t : tokens) s += (s.empty() ? "" : " ") + Expression::token_t_list[t.type] + ":" + t.text;
    return s;
}

inline std::uint64_t bitsOf(double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

// The value's bits (so NaN payloads and -0.0 count), or the exception class with the missing name.
template <class Run>
std::string outcomeOf(Run run) {
    try {
        return "value " + std::to_string(bitsOf(run()));
    } catch (const ExpressionWrongFormat&) {
        return "ExpressionWrongFormat";
    } catch (const ExpressionUnknownVariable& e) {
        return "ExpressionUnknownVariable " + e.name;
    } catch (const ExpressionBadResult&) {
        return "ExpressionBadResult";
    }
}

// What eval(assignments) gives, by the steps it is made of: set_variables, then calculate's walk over the postfix
// sequence.
inline std::string textRoute(Expression& e, const std::string& assignments) {
    return outcomeOf([&] {
        e.set_variables(assignments);
        return e.calculate(ExpressionTestAccess::postfix(e));
    });
}

// What a Function of e's text gives at x: the argument refused when it is not finite, otherwise eval of the text
// "x = %lg" written in the current locale and rounding mode.
inline std::string textRoute(Expression& e, double x) {
    if (!std::isfinite(x)) return "ExpressionBadResult";
    char text[300];
    std::snprintf(text, sizeof text, "x = %lg", x);
    return textRoute(e, std::string(text));
}
