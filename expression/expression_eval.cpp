// Expression: construction, conversion into postfix order, assignment texts
// and evaluation.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <locale>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "errors/errors.h"
#include "expression/decimal_rounding.h"
#include "expression/expression.h"

namespace {

// Operation codes of the compiled program. The formulas live in the two
// apply_*_code functions below only, shared by calculate (through
// apply_unary, apply_binary and apply_function) and by the program, so both
// compute every value with the same operations.
enum : std::uint8_t {
    op_invalid,   // no such operator or function
    op_identity,  // unary +: compiled to nothing
    op_number,
    op_variable,        // the first use of a name in the sequence
    op_variable_again,  // a later use of the same name
    op_add,
    op_subtract,
    op_multiply,
    op_divide,
    op_power,
    op_negate,
    op_sin,
    op_cos,
    op_tg,
    op_ctg,
    op_arcsin,
    op_arccos,
    op_arctg,
    op_arcctg,
    op_exp,
    op_ln,
    op_log10,
    op_log2,
    op_abs,
    op_sqrt,
    op_sinh,
    op_cosh
};

std::uint8_t binary_code(const std::string& op)
{
    if (op == "+") {
        return op_add;
    }
    if (op == "-") {
        return op_subtract;
    }
    if (op == "*") {
        return op_multiply;
    }
    if (op == "/") {
        return op_divide;
    }
    if (op == "^") {
        return op_power;
    }
    return op_invalid;
}

std::uint8_t unary_code(const std::string& op)
{
    if (op == "+") {
        return op_identity;
    }
    if (op == "-") {
        return op_negate;
    }
    return op_invalid;
}

std::uint8_t function_code(const std::string& name)
{
    static const struct {
        const char* name;
        std::uint8_t code;
    } table[] = {{"sin", op_sin},       {"cos", op_cos},       {"tg", op_tg},
                 {"ctg", op_ctg},       {"arcsin", op_arcsin}, {"arccos", op_arccos},
                 {"arctg", op_arctg},   {"arcctg", op_arcctg}, {"exp", op_exp},
                 {"ln", op_ln},         {"log10", op_log10},   {"log2", op_log2},
                 {"abs", op_abs},       {"sqrt", op_sqrt},     {"sinh", op_sinh},
                 {"cosh", op_cosh}};
    for (const auto& entry : table) {
        if (name == entry.name) {
            return entry.code;
        }
    }
    return op_invalid;
}

double apply_binary_code(std::uint8_t code, double a, double b)
{
    switch (code) {
    case op_add:
        return a + b;
    case op_subtract:
        return a - b;
    case op_multiply:
        return a * b;
    case op_divide:
        return a / b;
    default:  // op_power
        return std::pow(a, b);
    }
}

// The unary minus and the sixteen functions.
double apply_unary_code(std::uint8_t code, double a)
{
    switch (code) {
    case op_negate:
        return -a;
    case op_sin:
        return std::sin(a);
    case op_cos:
        return std::cos(a);
    case op_tg:
        return std::tan(a);
    case op_ctg:
        return 1.0 / std::tan(a);
    case op_arcsin:
        return std::asin(a);
    case op_arccos:
        return std::acos(a);
    case op_arctg:
        return std::atan(a);
    case op_arcctg:
        return 1.5707963267948966 - std::atan(a);
    case op_exp:
        return std::exp(a);
    case op_ln:
        return std::log(a);
    case op_log10:
        return std::log10(a);
    case op_log2:
        // A division by ln 2, not a product with its reciprocal: log2(8) is exactly 3.
        return std::log(a) / 0.6931471805599453;
    case op_abs:
        return std::fabs(a);
    case op_sqrt:
        return std::sqrt(a);
    case op_sinh:
        return std::sinh(a);
    default:  // op_cosh
        return std::cosh(a);
    }
}

// Only the final value is checked: 1/(1/0) is a valid 0.
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
    compile();
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
    return checked(stack.back());
}

double Expression::eval(const std::string& text)
{
    set_variables(text);
    return program_valid && decimal_rounding::standard_environment() ? run_program() : calculate(postfix);
}

bool Expression::eval_printed(const std::string& name, double value, double& result)
{
    double rounded = 0.0;
    if (!decimal_rounding::standard_environment() || !decimal_rounding::round_like_printf(value, rounded)) {
        return false;
    }
    variables[name] = rounded;
    result = program_valid ? run_program() : calculate(postfix);
    return true;
}

void Expression::compile()
{
    program.clear();
    program_depth = 0;
    program_names = 0;
    program_valid = false;
    // The numbers are read now with the conversion calculate uses; that
    // reading depends on the C library's locale and rounding mode, so the
    // program is only valid in the environment in which it is run.
    if (!decimal_rounding::standard_environment() || postfix.size() > UINT32_MAX) {
        return;
    }
    std::vector<instruction> code;
    std::size_t depth = 0;
    std::size_t most = 0;
    // The slot of every distinct variable name, numbered by first use. One
    // hash lookup per variable token keeps compiling linear in the length of
    // the text however many distinct names it holds. The keys view the texts
    // of postfix, which is not changed while they are in use.
    std::unordered_map<std::string_view, std::uint32_t> slots;
    for (std::size_t i = 0; i < postfix.size(); ++i) {
        const token& t = postfix[i];
        instruction in{op_number, static_cast<std::uint32_t>(i), 0, 0.0};
        std::size_t operands = 0;
        switch (t.type) {
        case number:
            if (std::sscanf(t.text.c_str(), "%50lg", &in.number) != 1) {
                return;
            }
            break;
        case variable: {
            // The first use of a name looks it up (and throws if it has no
            // value); later uses take the value found then, which cannot
            // change during one evaluation.
            const auto known =
                slots.try_emplace(std::string_view(t.text), static_cast<std::uint32_t>(slots.size()));
            in.slot = known.first->second;
            in.op = known.second ? op_variable : op_variable_again;
            break;
        }
        case binary_operator:
            in.op = binary_code(t.text);
            operands = 2;
            break;
        case unary_operator:
            in.op = unary_code(t.text);
            operands = 1;
            break;
        case function:
            in.op = function_code(t.text);
            operands = 1;
            break;
        default:
            return;
        }
        // A step that calculate would turn into an exception stays with calculate.
        if (in.op == op_invalid || depth < operands) {
            return;
        }
        depth = depth - operands + 1;
        most = std::max(most, depth);
        if (in.op != op_identity) {
            code.push_back(in);
        }
    }
    if (depth != 1) {
        return;
    }
    program = std::move(code);
    program_depth = most;
    program_names = slots.size();
    program_valid = true;
}

double Expression::run_program() const
{
    constexpr std::size_t kLocal = 32;
    double local_stack[kLocal];
    double local_values[kLocal];
    std::vector<double> large_stack;
    std::vector<double> large_values;
    double* stack = local_stack;
    double* values = local_values;  // of the distinct names, once looked up
    if (program_depth > kLocal) {
        large_stack.resize(program_depth);
        stack = large_stack.data();
    }
    if (program_names > kLocal) {
        large_values.resize(program_names);
        values = large_values.data();
    }
    // top is the number of values on the stack; compile has checked that no
    // instruction finds too few.
    std::size_t top = 0;
    for (const instruction& in : program) {
        switch (in.op) {
        case op_number:
            stack[top++] = in.number;
            break;
        case op_variable: {
            const std::string& name = postfix[in.token].text;
            const auto found = variables.find(name);
            if (found == variables.end()) {
                throw ExpressionUnknownVariable(name);
            }
            values[in.slot] = found->second;
            stack[top++] = found->second;
            break;
        }
        case op_variable_again:
            stack[top++] = values[in.slot];
            break;
        case op_add:
        case op_subtract:
        case op_multiply:
        case op_divide:
        case op_power:
            --top;
            stack[top - 1] = apply_binary_code(in.op, stack[top - 1], stack[top]);
            break;
        default:
            stack[top - 1] = apply_unary_code(in.op, stack[top - 1]);
            break;
        }
    }
    return checked(stack[0]);
}

double Expression::apply_unary(const std::string& op, double a) const
{
    const std::uint8_t code = unary_code(op);
    if (code == op_identity) {
        return a;
    }
    if (code == op_invalid) {
        throw ExpressionWrongFormat();
    }
    return apply_unary_code(code, a);
}

double Expression::apply_binary(const std::string& op, double a, double b) const
{
    const std::uint8_t code = binary_code(op);
    if (code == op_invalid) {
        throw ExpressionWrongFormat();
    }
    return apply_binary_code(code, a, b);
}

double Expression::apply_function(const std::string& name, double a) const
{
    const std::uint8_t code = function_code(name);
    if (code == op_invalid) {
        throw ExpressionWrongFormat();
    }
    return apply_unary_code(code, a);
}
