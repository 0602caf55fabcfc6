#pragma once
// Expression: an arithmetic expression text such as "sin(2*pi*x)*exp(-4*pi^2*x)",
// parsed once into postfix order and evaluated as often as asked, each time
// with fresh variable values given as an assignment text ("x = 0.5").
//
// Language: numbers (always starting with a digit, value kept with 6
// significant digits), names (a letter, then letters and digits), the
// operators + - * / ^ (unary + and - allowed first in the text or right after
// "("), round brackets, and sixteen functions whose argument is always in
// brackets. The only predefined name is pi.
//
// Failures: ExpressionWrongFormat (malformed text, from the constructor; or
// a unary *, / or ^, found at the first evaluation), ExpressionUnknownVariable
// (a name with no value, at evaluation) and ExpressionBadResult (a final value
// that is NaN or infinite). After any failure of eval the object stays usable.
//
// Number texts are read and written in the classic ("C") locale by the
// streams; the number re-read of calculate and the callers' own formatting
// follow the C library's locale, which the application keeps at "C".
// Not thread-safe: eval changes the stored variables.
//
// Speed: eval runs a CompiledProgram instead of walking the tokens: built
// once from the postfix sequence (numbers read with the same "%50lg"),
// folded with the current values of the names (pi, and every other name
// except x, whose value is read at each run), folded again after an
// assignment to any name but x. Every result, exception and the moment it is
// thrown are those of calculate(postfix). The program is built, folded and
// run only where the check of number_environment.h passes; elsewhere eval
// is calculate(postfix).

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "expression/compiled_program.h"
#include "expression/decimal_rounding.h"
#include "expression/number_environment.h"

class Expression {
public:
    enum token_t : std::int32_t {
        undefined = 0,           // a token under construction; never kept
        parenthesis = 1,         // "(" or ")"
        undefined_operator = 2,  // an operator whose arity is not decided yet
        binary_operator = 3,
        unary_operator = 4,
        variable = 5,            // a name that is not a function: x, pi, ...
        number = 6,
        function = 7
    };

    // Printable names of the token types, indexed by their values.
    static const std::string token_t_list[8];

    struct token {
        std::string text;  // as typed, except numbers: their value with 6 significant digits
        token_t type;
    };

    // Splits, checks and converts the text into postfix order; throws
    // ExpressionWrongFormat for a malformed text.
    explicit Expression(const std::string& text);

    // Stores the assignments of `text` ("x = 1 y = 2"; blanks around "=" are
    // required), then evaluates the expression. Assignments stay for later calls.
    double eval(const std::string& text);

    // The steps of the pipeline above. They are public so that each can be
    // exercised on its own; ordinary users need only the constructor and eval.

    // Fills the tables of function names and operators and sets pi.
    void initialize();
    bool is_operator(const std::string& s) const;
    bool is_delimiter(char c) const;
    bool is_variable(const std::string& s) const;
    token_t get_type(const token& tok) const;
    int priority(const token& tok) const;

    // Appends the tokens of `text` to `out` (which is not cleared).
    void split(const std::string& text, std::vector<token>& out);
    void check_expression(const std::vector<token>& v) const;
    void mark_unaries(std::vector<token>& v) const;

    // Marks the operators of `infix` as unary or binary, then appends the
    // postfix form of `infix` to `out`.
    void convert_expression(std::vector<token>& infix, std::vector<token>& out) const;
    void set_variables(const std::string& text);
    double calculate(const std::vector<token>& postfix_sequence) const;

    double apply_unary(const std::string& op, double a) const;
    double apply_binary(const std::string& op, double a, double b) const;
    double apply_function(const std::string& name, double a) const;

private:
    // Lets the tests look at the tables and the postfix sequence.
    friend struct ExpressionTestAccess;
    // Function's calls take the fast route below.
    friend class Function;

    // What a Function computes for x: eval("x = " + the "%lg" text of x),
    // with x finite. Where number_environment::standard_rounding_and_point()
    // holds and, if the expression reads x, x = 0 or 1e-17 <= |x| < 1e27:
    // sets `result` and returns true, or throws what eval throws. Otherwise
    // changes nothing and returns false, and the caller takes the text route.
    // It does not store x: only a Function calls it, and a Function's
    // variables are never read before its next assignment of x.
    bool call(double x, double& result);
    // Builds the program if needed and folds it for the current values,
    // with x as the argument when `x_given` (then x has a value). Returns
    // false, changing nothing, unless
    // number_environment::standard_rounding_and_point().
    bool prepare(bool x_given);
    // Builds the program from postfix, where
    // number_environment::standard_rounding_and_point().
    void compile();

    std::set<std::string> functions;
    std::set<std::string> operators;
    std::map<std::string, double> variables;  // pi and every assigned name
    std::vector<token> postfix;

    enum class Folding : std::uint8_t { none, constants_only, x_as_argument };
    CompiledProgram program;
    bool compiled = false;
    Folding folded = Folding::none;  // for which values; none after a change
};

// In the header, so that a Function's call is one function call plus the
// program's run. The registers are checked first. The decimal point needs a
// call into the C library, made last so that its cost overlaps the
// evaluation, whose value (plain arithmetic, no exception) is discarded when
// the check fails. A program that does not read x needs no rounding, nor the
// text route for x outside the rounding's range: where the check passes, the
// text of every finite x assigns a finite value.
inline bool Expression::call(double x, double& result)
{
    if (!number_environment::x87_default() || !number_environment::sse_rounds_to_nearest()) {
        return false;
    }
    if (folded != Folding::x_as_argument && !prepare(true)) {
        return false;
    }
    if (program.fails()) {
        if (!number_environment::decimal_point_is_dot()) {
            return false;
        }
        program.fail();
    }
    double argument = x;
    if (program.reads_argument()) {
        if (!decimal_rounding::in_rounding_range(x)) {
            return false;
        }
        argument = decimal_rounding::round_like_printf(x);
    }
    const double value = program.value(argument);
    if (!number_environment::decimal_point_is_dot()) {
        return false;
    }
    result = CompiledProgram::checked(value);
    return true;
}
