#pragma once
// Function: the real function f(x) of an expression text in the one variable
// x, such as "x^2" or "sin(2*pi*x)". A value type: a copy evaluates
// independently of its original.
//
// The argument is handed to the expression as the text "x = %lg", so f is
// evaluated at x rounded to 6 significant digits (f(1.0000001) is f(1)).
// That text needs "." as decimal point: the C library's locale must be "C".
// The call computes that rounded value directly where it can (see
// decimal_rounding.h) and runs the expression's compiled program with it
// (Expression::call); it writes the text only for the rare x outside
// 1e-17 <= |x| < 1e27, or when the locale or rounding mode is not standard.
// Not thread-safe: a call changes the held expression.

#include <string>

#include "expression/expression.h"

class Function {
public:
    // Throws ExpressionWrongFormat for a malformed text (an empty one included).
    explicit Function(const std::string& text);

    // f(x). Throws ExpressionBadResult when x or the value is NaN or infinite,
    // ExpressionUnknownVariable for a name other than x and pi, and
    // ExpressionWrongFormat for a unary *, / or ^.
    double operator()(double x);

private:
    Expression expression;
};

// Throws ExpressionBadResult when v is NaN or infinite.
void checkValue(double v);
