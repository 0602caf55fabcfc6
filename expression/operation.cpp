// Operation: the operations of the texts of operators and function names.

#include "expression/operation.h"

Operation::Code Operation::binary(const std::string& text)
{
    if (text.size() != 1) {
        return invalid;
    }
    switch (text[0]) {
    case '+':
        return add;
    case '-':
        return subtract;
    case '*':
        return multiply;
    case '/':
        return divide;
    case '^':
        return power;
    default:
        return invalid;
    }
}

Operation::Code Operation::unary(const std::string& text)
{
    if (text == "+") {
        return identity;
    }
    return text == "-" ? negate : invalid;
}

Operation::Code Operation::function(const std::string& name)
{
    static const struct {
        const char* name;
        Code op;
    } table[] = {{"sin", sin},       {"cos", cos},       {"tg", tg},
                 {"ctg", ctg},       {"arcsin", arcsin}, {"arccos", arccos},
                 {"arctg", arctg},   {"arcctg", arcctg}, {"exp", exp},
                 {"ln", ln},         {"log10", log10},   {"log2", log2},
                 {"abs", abs},       {"sqrt", sqrt},     {"sinh", sinh},
                 {"cosh", cosh}};
    for (const auto& entry : table) {
        if (name == entry.name) {
            return entry.op;
        }
    }
    return invalid;
}
