// Expression: construction, conversion into postfix order, assignment texts
// and evaluation.

#include <cmath>
#include <cstdio>
#include <locale>
#include <sstream>

#include "errors/errors.h"
#include "expression/expression.h"

Expression::Expression(const std::string& text)
{
    std::vector<token> infix;
    split(text, infix);
    check_expression(infix);
    convert_expression(infix, postfix);
}

void Expression::convert_expression(std::vector<token>& infix, std::vector<token>& out) const
{
    mark_unaries(infix);

    // Shunting-yard with one operator stack; "(" has priority 0, so popping
    // by priority always stops at it.
    std::vector<token> stack;
    for (const token& t : infix) {
        switch (t.type) {
        case parenthesis:
            if (t.text == "(") {
                stack.push_back(t);
                break;
            }
            for (;;) {
                if (stack.empty()) {
                    throw ExpressionWrongFormat();
                }
                if (stack.back().text == "(") {
                    break;
                }
                out.push_back(stack.back());
                stack.pop_back();
            }
            // A function under this "(" stays until an operator, an enclosing
            // ")" or the end takes it.
            stack.pop_back();
            break;
        case binary_operator: {
            const int p = priority(t);
            if (t.text == "^") {
                // Right-associative: 2^3^2 is 2^(3^2).
                while (!stack.empty() && priority(stack.back()) > p) {
                    out.push_back(stack.back());
                    stack.pop_back();
                }
            } else {
                while (!stack.empty() && priority(stack.back()) >= p) {
                    out.push_back(stack.back());
                    stack.pop_back();
                }
            }
            stack.push_back(t);
            break;
        }
        case unary_operator:
            // Binds tighter than * and /, looser than ^: -2^2 is -(2^2).
            while (!stack.empty() && priority(stack.back()) > 3) {
                out.push_back(stack.back());
                stack.pop_back();
            }
            stack.push_back(t);
            break;
        case variable:
        case number:
            out.push_back(t);
            break;
        case function:
            stack.push_back(t);
            break;
        default:
            throw ExpressionWrongFormat();
        }
    }
    while (!stack.empty()) {
        out.push_back(stack.back());
        stack.pop_back();
    }
}

void Expression::set_variables(const std::string& text)
{
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    for (;;) {
        std::string name;
        if (!(in >> name)) {
            return;
        }
        std::string equals;
        double value = 0.0;
        in >> equals >> value;
        if (!is_variable(name)) {
            throw ExpressionWrongFormat();
        }
        if (in.fail() || in.bad()) {
            throw ExpressionWrongFormat();
        }
        if (equals != "=") {
            throw ExpressionWrongFormat();
        }
        variables[name] = value;
    }
}

double Expression::calculate(const std::vector<token>& postfix_sequence) const
{
    std::vector<double> stack;
    for (const token& t : postfix_sequence) {
        switch (t.type) {
        case binary_operator: {
            if (stack.size() < 2) {
                throw ExpressionWrongFormat();
            }
            const double b = stack.back();
            stack.pop_back();
            const double a = stack.back();
            stack.pop_back();
            stack.push_back(apply_binary(t.text, a, b));
            break;
        }
        case unary_operator: {
            if (stack.empty()) {
                throw ExpressionWrongFormat();
            }
            const double a = stack.back();
            stack.pop_back();
            stack.push_back(apply_unary(t.text, a));
            break;
        }
        case variable: {
            const auto found = variables.find(t.text);
            if (found == variables.end()) {
                throw ExpressionUnknownVariable(t.text);
            }
            stack.push_back(found->second);
            break;
        }
        case number: {
            // The text holds the literal rounded to 6 significant digits;
            // reading it back gives the value the expression computes with.
            double value = 0.0;
            if (std::sscanf(t.text.c_str(), "%50lg", &value) != 1) {
                throw ExpressionWrongFormat();
            }
            stack.push_back(value);
            break;
        }
        case function: {
            if (stack.empty()) {
                throw ExpressionWrongFormat();
            }
            const double a = stack.back();
            stack.pop_back();
            stack.push_back(apply_function(t.text, a));
            break;
        }
        default:
            throw ExpressionWrongFormat();
        }
    }
    if (stack.size() != 1) {
        throw ExpressionWrongFormat();
    }
    // Only the final value is checked: 1/(1/0) is a valid 0.
    const double result = stack.back();
    if (std::isnan(result) || std::isinf(std::fabs(result))) {
        throw ExpressionBadResult();
    }
    return result;
}

double Expression::eval(const std::string& text)
{
    set_variables(text);
    return calculate(postfix);
}

double Expression::apply_unary(const std::string& op, double a) const
{
    if (op == "+") {
        return a;
    }
    if (op == "-") {
        return -a;
    }
    throw ExpressionWrongFormat();
}

double Expression::apply_binary(const std::string& op, double a, double b) const
{
    if (op == "+") {
        return a + b;
    }
    if (op == "-") {
        return a - b;
    }
    if (op == "*") {
        return a * b;
    }
    if (op == "/") {
        return a / b;
    }
    if (op == "^") {
        return std::pow(a, b);
    }
    throw ExpressionWrongFormat();
}

double Expression::apply_function(const std::string& name, double a) const
{
    if (name == "sin") {
        return std::sin(a);
    }
    if (name == "cos") {
        return std::cos(a);
    }
    if (name == "tg") {
        return std::tan(a);
    }
    if (name == "ctg") {
        return 1.0 / std::tan(a);
    }
    if (name == "arcsin") {
        return std::asin(a);
    }
    if (name == "arccos") {
        return std::acos(a);
    }
    if (name == "arctg") {
        return std::atan(a);
    }
    if (name == "arcctg") {
        return 1.5707963267948966 - std::atan(a);
    }
    if (name == "exp") {
        return std::exp(a);
    }
    if (name == "ln") {
        return std::log(a);
    }
    if (name == "log10") {
        return std::log10(a);
    }
    if (name == "log2") {
        // A division by ln 2, not a product with its reciprocal: log2(8) is exactly 3.
        return std::log(a) / 0.6931471805599453;
    }
    if (name == "abs") {
        return std::fabs(a);
    }
    if (name == "sqrt") {
        return std::sqrt(a);
    }
    if (name == "sinh") {
        return std::sinh(a);
    }
    if (name == "cosh") {
        return std::cosh(a);
    }
    throw ExpressionWrongFormat();
}
