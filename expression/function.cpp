// Function: an expression of x called like a function of a double.

#include "expression/function.h"

#include <cmath>
#include <cstdio>

#include "errors/errors.h"

Function::Function(const std::string& text) : expression(text) {}

double Function::operator()(double x)
{
    checkValue(x);
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
