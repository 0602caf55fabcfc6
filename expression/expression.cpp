// Expression: the tables of names and operators, the classification of
// characters and names, and the operator priorities.

#include "expression/expression.h"

#include <cctype>

#include "errors/errors.h"

const std::string Expression::token_t_list[8] = {
    "undefined", "parenthesis", "undefined_operator", "binary_operator",
    "unary_operator", "variable", "number", "function"};

void Expression::initialize()
{
    static const char* const functionNames[] = {
        "sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg", "arcctg",
        "exp", "ln", "log10", "log2", "abs", "sqrt", "sinh", "cosh"};
    for (const char* name : functionNames) {
        functions.insert(name);
    }
    for (const char* op : {"+", "-", "*", "/", "^"}) {
        operators.insert(op);
    }
    // Set even when present: a user may have assigned pi on an earlier call.
    variables["pi"] = 3.141592653589793;
    folded = Folding::none;
}

bool Expression::is_operator(const std::string& s) const
{
    return operators.count(s) != 0;
}

bool Expression::is_delimiter(char c) const
{
    if (is_operator(std::string(1, c))) {
        return true;
    }
    return c == '\t' || c == '\n' || c == '\r' || c == ' ' || c == '(' || c == ')';
}

bool Expression::is_variable(const std::string& s) const
{
    if (s.empty()) {
        return false;
    }
    // isalpha takes an unsigned char value: a byte >= 128 held in a plain
    // (signed) char would otherwise be a negative argument.
    if (!std::isalpha(static_cast<unsigned char>(s[0]))) {
        return false;
    }
    for (std::size_t i = 1; i < s.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        if (!std::isalpha(c) && !(c >= '0' && c <= '9')) {
            return false;
        }
    }
    return true;
}

Expression::token_t Expression::get_type(const token& tok) const
{
    if (functions.count(tok.text) != 0) {
        return function;
    }
    if (is_variable(tok.text)) {
        return variable;
    }
    throw ExpressionWrongFormat();
}

int Expression::priority(const token& tok) const
{
    if (tok.text == "(") {
        return 0;
    }
    if (tok.type == function) {
        return 5;
    }
    if (tok.type == unary_operator) {
        return 3;
    }
    switch (tok.text.empty() ? '\0' : tok.text[0]) {
    case '+':
    case '-':
        return 1;
    case '*':
    case '/':
        return 2;
    case '^':
        return 4;
    default:
        throw ExpressionWrongFormat();
    }
}
