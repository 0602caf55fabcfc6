// Function: an expression of x called like a function of a double.

#include "expression/function.h"

#include <cmath>
#include <cstdio>

#include "errors/errors.h"

Function::Function(const std::string& text) : expression(text) {}

double Function::operator()(double x)
{
    checkValue(x);
    // Usually the value that the text below would assign is computed without
    // the text.
    static const std::string name = "x";
    double result = 0.0;
    if (expression.eval_printed(name, x, result)) {
        return result;
    }
    char buffer[300];
    std::snprintf(buffer, sizeof buffer, "x = %lg", x);
    return expression.eval(std::string(buffer));
}

void checkValue(double v)
{
    if (std::isnan(v) || std::isinf(std::fabs(v))) {
        throw ExpressionBadResult();
    }
}
