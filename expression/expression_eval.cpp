// Expression: construction, conversion into postfix order, assignment texts,
// evaluation, and the building and folding of the compiled program.

#include <cmath>
#include <cstdio>
#include <locale>
#include <sstream>
#include <string_view>
#include <unordered_map>

#include "errors/errors.h"
#include "expression/expression.h"

namespace {

// The name whose value a Function supplies at each call.
const std::string kArgument = "x";

double checked(double result)
{
    if (std::isnan(result) || std::isinf(std::fabs(result))) {
        throw ExpressionBadResult();
    }
    return result;
}

}  // namespace

Expression::Expression(const std::string& text)
{
    std::vector<token> infix;
    split(text, infix);
    check_expression(infix);
    convert_expression(infix, postfix);
    prepare(true);
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
        // The program reads x when it runs; every other name is folded in.
        if (name != kArgument) {
            folded = Folding::none;
        }
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
    return checked(stack.back());
}

double Expression::eval(const std::string& text)
{
    set_variables(text);
    if (!number_environment::standard_rounding_and_point()) {
        return calculate(postfix);
    }
    const auto x = variables.find(kArgument);
    const bool x_given = x != variables.end();
    if (folded != (x_given ? Folding::x_as_argument : Folding::constants_only) && !prepare(x_given)) {
        return calculate(postfix);
    }
    return program.run(program.reads_argument() ? x->second : 0.0);
}

bool Expression::prepare(bool x_given)
{
    if (!number_environment::standard_rounding_and_point()) {
        return false;
    }
    if (!compiled) {
        compile();
    }
    const std::vector<std::string>& names = program.names();
    std::vector<const double*> values(names.size(), nullptr);
    std::size_t argument = names.size();
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        if (x_given && names[slot] == kArgument) {
            argument = slot;
            continue;
        }
        const auto found = variables.find(names[slot]);
        if (found != variables.end()) {
            values[slot] = &found->second;
        }
    }
    program.fold(values, argument);
    folded = x_given ? Folding::x_as_argument : Folding::constants_only;
    return true;
}

void Expression::compile()
{
    // The numbers are read now with the conversion calculate uses, which
    // depends on the rounding mode and the decimal point: that is why the
    // program is built only where they are standard. The slot of every distinct name, numbered by first
    // use: one hash lookup per name token keeps this linear in the length of
    // the text however many names it holds. The keys view the texts of
    // postfix, which does not change.
    std::unordered_map<std::string_view, std::size_t> slots;
    program.reserve(postfix.size());
    for (const token& t : postfix) {
        switch (t.type) {
        case number: {
            double value = 0.0;
            if (std::sscanf(t.text.c_str(), "%50lg", &value) != 1) {
                program.add_failure();
            } else {
                program.add_number(value);
            }
            break;
        }
        case variable: {
            const auto known = slots.try_emplace(std::string_view(t.text), slots.size());
            if (known.second) {
                program.add_new_name(t.text);
            } else {
                program.add_name(known.first->second);
            }
            break;
        }
        case binary_operator:
            program.add_operation(Operation::binary(t.text), 2);
            break;
        case unary_operator:
            program.add_operation(Operation::unary(t.text), 1);
            break;
        case function:
            program.add_operation(Operation::function(t.text), 1);
            break;
        default:
            program.add_failure();
            break;
        }
    }
    compiled = true;
}

double Expression::apply_unary(const std::string& op, double a) const
{
    const Operation::Code code = Operation::unary(op);
    if (code == Operation::invalid) {
        throw ExpressionWrongFormat();
    }
    return Operation::apply(code, a);
}

double Expression::apply_binary(const std::string& op, double a, double b) const
{
    const Operation::Code code = Operation::binary(op);
    if (code == Operation::invalid) {
        throw ExpressionWrongFormat();
    }
    return Operation::apply(code, a, b);
}

double Expression::apply_function(const std::string& name, double a) const
{
    const Operation::Code code = Operation::function(name);
    if (code == Operation::invalid) {
        throw ExpressionWrongFormat();
    }
    return Operation::apply(code, a);
}
