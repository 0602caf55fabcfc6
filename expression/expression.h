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
// Speed: the constructor also compiles the postfix sequence into a private
// program (opcodes, number texts read once with the same "%50lg" conversion),
// which eval runs instead of walking the tokens. Every result, exception and
// the moment it is thrown are those of calculate(postfix): sequences the
// program cannot reproduce step for step (a unary *, / or ^) are left to
// calculate, and so is every evaluation while the C library's decimal point
// is not "." or the rounding mode is not to-nearest.

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

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

    // The fast route of eval(name + " = " + the "%lg" text of value), taken
    // without writing the text: when the C library's decimal point is "." and
    // its rounding mode to-nearest, and value is 0 or 1e-17 <= |value| < 1e27,
    // stores under `name` the value that text denotes, evaluates into
    // `result` and returns true (or throws what eval would throw). Otherwise
    // changes nothing and returns false: the caller then writes the text and
    // calls eval. `name` must be a valid name.
    bool eval_printed(const std::string& name, double value, double& result);

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

    std::set<std::string> functions;
    std::set<std::string> operators;
    std::map<std::string, double> variables;  // pi and every assigned name
    std::vector<token> postfix;

    // The compiled form of postfix. Instructions refer to variables by the
    // index of their token in postfix, never by pointer, so that copies stay
    // independent.
    struct instruction {
        std::uint8_t op;      // an operation code, see expression_eval.cpp
        std::uint32_t token;  // variables: index of the token in postfix
        std::uint32_t slot;   // variables: index of the name among the distinct names
        double number;        // the value of a number token
    };
    void compile();
    double run_program() const;

    std::vector<instruction> program;
    std::size_t program_depth = 0;  // the most values on the stack at once
    std::size_t program_names = 0;  // distinct variable names
    bool program_valid = false;     // compiled, and equivalent to calculate(postfix)
};
