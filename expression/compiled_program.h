#pragma once
// CompiledProgram: the postfix sequence of an Expression as code for a small
// stack machine, with the steps whose operands are known ahead of time
// already computed. Expression builds it once from its tokens, folds it with
// the current values of its names and runs it while those stay.
//
// Runs give what calculate gives, bit for bit, and fail where and as
// calculate fails: a folded step is the same operation on the same values in
// the same order, computed ahead of time only where no floating-point setting
// but the rounding mode could change it (see fold). Only the final value is
// checked, at every run. Fold and run only where
// number_environment::standard_rounding_and_point() holds.
//
// Value type: a copy runs independently of its original.

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "expression/operation.h"

class CompiledProgram {
public:
    // Building: one call per token of the postfix sequence, in order, after
    // reserve(the number of tokens).
    void reserve(std::size_t steps);
    void add_number(double value);
    // A name's first use; it gets the next slot (0, 1, ...).
    void add_new_name(const std::string& name);
    // A later use of the name in `slot`.
    void add_name(std::size_t slot);
    // An operator or function with 1 or 2 operands; Operation::invalid fails when reached.
    void add_operation(Operation::Code op, int operands);
    // A token at which calculate throws ExpressionWrongFormat.
    void add_failure();

    // The distinct names, by slot.
    const std::vector<std::string>& names() const { return names_; }

    // Computes ahead of time what does not depend on the name in slot
    // `argument` (none when it is names().size() or more). values[slot] points
    // to the value of that name, nullptr when it has none; the argument's is
    // not read. The first failure that calculate would meet (a name with no
    // value, a step with too few values, an invalid operation) does not
    // depend on any value: it is found here and thrown by every run.
    void fold(const std::vector<const double*>& values, std::size_t argument);

    // After fold: whether value reads its argument.
    bool reads_argument() const { return reads_argument_; }

    // After fold: true when every evaluation fails before it computes
    // anything (a name with no value, a unary *); fail() throws that.
    bool fails() const { return state_ >= state_wrong_format; }
    [[noreturn]] void fail() const;

    // After fold, unless fails(): the final value for this value of the
    // argument, not yet checked. Throws nothing.
    double value(double argument) const { return state_ == state_constant ? constant_ : execute(argument); }

    // The check of calculate's final value: ExpressionBadResult for NaN and
    // infinities, which compare false with <=.
    static double checked(double v)
    {
        if (!(std::fabs(v) <= DBL_MAX)) {
            bad_result();
        }
        return v;
    }

    // After fold: what calculate returns or throws.
    double run(double argument) const
    {
        if (fails()) {
            fail();
        }
        return checked(value(argument));
    }

    // One instruction of the folded code; its operand is a constant or unused.
    struct Instruction {
        std::uint8_t code;
        double operand;
    };

private:
    enum State : std::uint8_t {
        state_constant,
        state_code,
        state_wrong_format,  // also before the first fold
        state_unknown_name
    };
    enum StepKind : std::uint8_t { step_number, step_name, step_operation, step_failure };
    struct Step {
        StepKind kind;
        Operation::Code op;
        std::uint8_t operands;
        std::size_t slot;
        double value;
    };

    double execute(double argument) const;
    [[noreturn]] static void bad_result();

    std::vector<Step> steps_;
    std::vector<std::string> names_;

    State state_ = state_wrong_format;
    bool reads_argument_ = false;
    double constant_ = 0.0;
    std::size_t failure_slot_ = 0;  // state_unknown_name: the name's slot
    std::vector<Instruction> code_;
    std::size_t depth_ = 0;  // the most values run keeps in memory at once
};
