// Expression: cutting the text into tokens, checking the token sequence and
// deciding the arity of every operator.

#include <locale>
#include <sstream>

#include "errors/errors.h"
#include "expression/expression.h"

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isOpening(const Expression::token& t)
{
    return t.type == Expression::parenthesis && t.text == "(";
}

bool isClosing(const Expression::token& t)
{
    return t.type == Expression::parenthesis && t.text == ")";
}

// Which token type may follow which (rows: current token, columns: next).
// Indexed by the values of Expression::token_t.
constexpr bool kMayFollow[8][8] = {
    //  undef  paren  undop  binop  unop   var    num    func
    {false, false, false, false, false, false, false, false},  // undefined
    {false, true,  true,  true,  true,  true,  true,  true},   // parenthesis
    {false, true,  false, false, false, true,  true,  true},   // undefined_operator
    {false, true,  false, false, false, true,  true,  true},   // binary_operator
    {false, true,  false, false, false, true,  true,  true},   // unary_operator
    {false, true,  true,  true,  false, false, false, false},  // variable
    {false, true,  true,  true,  false, false, false, false},  // number
    {false, true,  false, false, false, false, false, false},  // function
};

bool mayFollow(Expression::token_t cur, Expression::token_t next)
{
    const auto c = static_cast<unsigned>(cur);
    const auto n = static_cast<unsigned>(next);
    return c < 8 && n < 8 && kMayFollow[c][n];
}

}  // namespace

void Expression::split(const std::string& text, std::vector<token>& out)
{
    initialize();

    std::istringstream in(text);
    in.imbue(std::locale::classic());
    std::string name;
    char c;
    while (in.get(c)) {
        if (!is_delimiter(c)) {
            if (name.empty() && isDigit(c)) {
                // A number: let the stream read as much of it as forms a
                // literal, then keep its value written with 6 significant digits.
                in.unget();
                double value;
                if (!(in >> value)) {
                    throw ExpressionWrongFormat();
                }
                std::ostringstream written;
                written.imbue(std::locale::classic());
                written << value;
                out.push_back({written.str(), number});
            } else {
                name += c;
            }
            continue;
        }
        if (!name.empty()) {
            const token_t type = get_type({name, undefined});
            out.push_back({name, type});
            name.clear();
        }
        const std::string one(1, c);
        if (is_operator(one)) {
            out.push_back({one, undefined_operator});
        } else if (c == '(' || c == ')') {
            out.push_back({one, parenthesis});
        }
    }
    if (!name.empty()) {
        const token_t type = get_type({name, undefined});
        out.push_back({name, type});
    }
}

void Expression::check_expression(const std::vector<token>& v) const
{
    // Every rule is checked; the verdict is given once at the end.
    bool wrong = false;
    const std::size_t n = v.size();

    for (std::size_t i = 0; i + 1 < n; ++i) {
        const token& cur = v[i];
        const token& next = v[i + 1];
        if (!mayFollow(cur.type, next.type)) {
            wrong = true;
        }
        // A function takes its argument in brackets.
        if (cur.type == function && !isOpening(next)) {
            wrong = true;
        }
        // Empty brackets.
        if (isOpening(cur) && isClosing(next)) {
            wrong = true;
        }
        // An operator with nothing on its right.
        if (cur.type == undefined_operator && isClosing(next)) {
            wrong = true;
        }
        // After ")" only an operator or another ")" may come.
        if (isClosing(cur) && next.type != undefined_operator && !isClosing(next)) {
            wrong = true;
        }
        // "(" opens a function's argument, an operand, or a nested bracket.
        if (isOpening(next) && cur.type != function && cur.type != undefined_operator &&
            !isOpening(cur)) {
            wrong = true;
        }
    }

    if (n == 0) {
        wrong = true;
    } else if (v[n - 1].type == function || v[n - 1].type == undefined_operator) {
        wrong = true;
    }

    long depth = 0;
    for (const token& t : v) {
        if (isOpening(t)) {
            ++depth;
        } else if (isClosing(t)) {
            --depth;
            if (depth < 0) {
                wrong = true;
            }
        }
    }
    if (depth != 0) {
        wrong = true;
    }

    if (wrong) {
        throw ExpressionWrongFormat();
    }
}

void Expression::mark_unaries(std::vector<token>& v) const
{
    if (!v.empty() && v[0].type == undefined_operator) {
        v[0].type = unary_operator;
    }
    if (v.size() < 2) {
        return;
    }
    // Right to left, so that v[i - 1] still has the type split gave it.
    for (std::size_t i = v.size() - 1; i >= 1; --i) {
        if (v[i].type != undefined_operator) {
            continue;
        }
        const token& before = v[i - 1];
        if (before.type == undefined_operator || before.type == function) {
            throw ExpressionWrongFormat();
        }
        v[i].type = isOpening(before) ? unary_operator : binary_operator;
    }
}
