// Function: an expression of x called like a function of a double.

#include "expression/function.h"

#include <cmath>
#include <cstdio>

#include "errors/errors.h"

namespace {

// The route the call stands for, taken where the fast one does not apply.
// Kept out of line so that the usual call does not set up its buffer.
[[gnu::noinline]] double textRoute(Expression& expression, double x)
{
    char buffer[300];
    std::snprintf(buffer, sizeof buffer, "x = %lg", x);
    return expression.eval(std::string(buffer));
}

}  // namespace

Function::Function(const std::string& text) : expression(text) {}

double Function::operator()(double x)
{
    checkValue(x);
    // Usually the value that the text would assign is computed without the text.
    double result = 0.0;
    if (expression.call(x, result)) {
        return result;
    }
    return textRoute(expression, x);
}

void checkValue(double v)
{
    if (std::isnan(v) || std::isinf(std::fabs(v))) {
        throw ExpressionBadResult();
    }
}
