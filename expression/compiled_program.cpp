// CompiledProgram: building, folding of the postfix steps into code for a
// stack machine, and the machine.
//
// The machine keeps the top of its stack in a local variable and the values
// below it in memory. An operation takes each operand from the top of the
// stack, a constant or the argument, in as many forms as folding needs to
// emit one instruction per operation left, without reordering operands:
// apply(op, a, b) always receives a and b in the order of calculate.

#include "expression/compiled_program.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstring>

#include "errors/errors.h"

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace {

using Op = Operation::Code;

// The forms of a binary operation: where its left and right operands come
// from. The first five leave the result on the top of the stack in place of
// an operand; the last three push it.
enum Form : std::uint8_t {
    below_top,       // the value under the top, the top (both popped)
    top_constant,
    top_argument,
    constant_top,
    argument_top,
    argument_constant,
    constant_argument,
    argument_argument,
    kForms
};

constexpr int kBinaryOperations = Operation::power - Operation::add + 1;
constexpr int kUnaryOperations = 1 + Operation::cosh - Operation::sin + 1;  // with negate

// Machine codes: push a constant or the argument; each binary operation in
// each form; each unary operation (negate, sin ... cosh) on the top
// and on the argument (pushed).
enum MachineCode : std::uint8_t {
    finish,  // the last instruction: check the top and return it
    push_constant,
    push_argument,
    binary_first,
    unary_on_top_first = binary_first + kBinaryOperations * kForms,
    unary_on_argument_first = unary_on_top_first + kUnaryOperations,
    code_end = unary_on_argument_first + kUnaryOperations
};
static_assert(code_end <= 256, "codes fit in a byte");

constexpr int unaryIndex(Op op)
{
    return op == Operation::negate ? 0 : 1 + (op - Operation::sin);
}

constexpr std::uint8_t binaryCode(Op op, Form form)
{
    return static_cast<std::uint8_t>(binary_first + (op - Operation::add) * kForms + form);
}

constexpr std::uint8_t unaryOnTop(Op op)
{
    return static_cast<std::uint8_t>(unary_on_top_first + unaryIndex(op));
}

constexpr std::uint8_t unaryOnArgument(Op op)
{
    return static_cast<std::uint8_t>(unary_on_argument_first + unaryIndex(op));
}

constexpr bool pushes(std::uint8_t code)
{
    const int form = (code - binary_first) % kForms;
    return code == push_constant || code == push_argument || code >= unary_on_argument_first ||
           (code >= binary_first && code < unary_on_top_first && form >= argument_constant);
}

constexpr bool readsArgument(std::uint8_t code)
{
    const int form = (code - binary_first) % kForms;
    return code == push_argument || code >= unary_on_argument_first ||
           (code >= binary_first && code < unary_on_top_first && form != below_top && form != top_constant &&
            form != constant_top);
}

// On the bits: a comparison would take a subnormal for 0 under
// denormals-are-zero.
bool subnormal(double v)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return (bits & 0x7FF0000000000000u) == 0 && (bits & 0x000FFFFFFFFFFFFFu) != 0;
}

// Whether a step raised an exception other than inexact, including the x86
// denormal-operand flag, which <cfenv> does not name. Flags are sticky: the
// caller checks after every step, and a raised flag is cleared here, so the
// flags seen belong to the last step (inexact, left set, is ignored).
bool raisedAnythingButInexact()
{
    bool raised = std::fetestexcept(FE_ALL_EXCEPT & ~FE_INEXACT) != 0;
#if defined(__x86_64__)
    raised = raised || (_mm_getcsr() & 0x02u) != 0;
#endif
    if (raised) {
        std::feclearexcept(FE_ALL_EXCEPT);
#if defined(__x86_64__)
        _mm_setcsr(_mm_getcsr() & ~0x3Fu);
#endif
    }
    return raised;
}

// Keeps the compiler from moving the computation of v across this point,
// so that the flags read after a step are those of that step.
inline void pin(double& v)
{
    __asm__ __volatile__("" : "+m"(v));
}

// A value during folding: known, the argument, or computed by the code
// emitted so far (then it is on the machine's stack).
struct Value {
    enum Kind : std::uint8_t { known, argument, computed } kind;
    double number;
};

}  // namespace

void CompiledProgram::reserve(std::size_t steps)
{
    steps_.reserve(steps);
}

void CompiledProgram::add_number(double value)
{
    steps_.push_back({step_number, Operation::invalid, 0, 0, value});
}

void CompiledProgram::add_new_name(const std::string& name)
{
    steps_.push_back({step_name, Operation::invalid, 0, names_.size(), 0.0});
    names_.push_back(name);
}

void CompiledProgram::add_name(std::size_t slot)
{
    steps_.push_back({step_name, Operation::invalid, 0, slot, 0.0});
}

void CompiledProgram::add_operation(Operation::Code op, int operands)
{
    // An invalid operation fails, and so does calculate, whether or not it
    // finds its operands: the same exception either way.
    steps_.push_back(
        {op == Operation::invalid ? step_failure : step_operation, op, static_cast<std::uint8_t>(operands), 0, 0.0});
}

void CompiledProgram::add_failure()
{
    steps_.push_back({step_failure, Operation::invalid, 0, 0, 0.0});
}

void CompiledProgram::fold(const std::vector<const double*>& values, std::size_t argument)
{
    code_.clear();
    code_.reserve(steps_.size() + 1);
    depth_ = 0;
    state_ = state_code;
    std::size_t stacked = 0;  // values in the machine's memory after the code so far
    const auto emit = [&](std::uint8_t code, double operand) {
        code_.push_back({code, operand});
        if (pushes(code)) {
            depth_ = std::max(depth_, ++stacked);
        } else if (code >= binary_first && code < unary_on_top_first && (code - binary_first) % kForms == below_top) {
            --stacked;
        }
    };
    // Folding computes a step ahead of time only when it reads and yields no
    // subnormal and raises nothing but inexact: then neither flush-to-zero,
    // denormals-are-zero nor an exception mask can change its result, nor
    // can it set errno, so that computing it at every run, under whatever
    // settings, would give the same (the mathematics library makes no
    // subnormal step between normal arguments and a normal result without a
    // flag). Any other step stays in the code. Steps are folded in the
    // default SSE state, without traps, to nearest as the caller checked.
    std::fenv_t saved;
    std::feholdexcept(&saved);
#if defined(__x86_64__)
    _mm_setcsr(0x1F80);
#endif
    const auto folds = [](double result, double a, double b) {
        const bool clean = !raisedAnythingButInexact();
        return clean && !subnormal(a) && !subnormal(b) && !subnormal(result);
    };
    std::vector<Value> stack;
    for (const Step& step : steps_) {
        if (step.kind == step_number) {
            stack.push_back({Value::known, step.value});
            continue;
        }
        if (step.kind == step_name) {
            if (step.slot == argument) {
                stack.push_back({Value::argument, 0.0});
            } else if (values[step.slot] == nullptr) {
                state_ = state_unknown_name;
                failure_slot_ = step.slot;
                break;
            } else {
                stack.push_back({Value::known, *values[step.slot]});
            }
            continue;
        }
        if (step.kind == step_failure || stack.size() < step.operands) {
            state_ = state_wrong_format;
            break;
        }
        if (step.operands == 1) {
            Value& a = stack.back();
            if (step.op == Operation::identity) {
                continue;
            }
            if (a.kind == Value::known) {
                double operand = a.number;
                pin(operand);
                double result = Operation::apply(step.op, operand);
                pin(result);
                if (folds(result, a.number, 0.0)) {
                    a.number = result;
                    continue;
                }
                emit(push_constant, a.number);
                a.kind = Value::computed;
            }
            emit(a.kind == Value::argument ? unaryOnArgument(step.op) : unaryOnTop(step.op), 0.0);
            a.kind = Value::computed;
            continue;
        }
        const Value b = stack.back();
        stack.pop_back();
        Value& a = stack.back();
        if (a.kind == Value::known && b.kind == Value::known) {
            double left = a.number, right = b.number;
            pin(left);
            pin(right);
            double result = Operation::apply(step.op, left, right);
            pin(result);
            if (folds(result, a.number, b.number)) {
                a.number = result;
                continue;
            }
            emit(push_constant, a.number);
            a.kind = Value::computed;
        }
        static constexpr Form kForm[3][3] = {
            // right: known, argument, computed
            {top_constant, constant_argument, constant_top},        // left known
            {argument_constant, argument_argument, argument_top},   // left argument
            {top_constant, top_argument, below_top},                // left computed
        };
        const Form form = kForm[a.kind][b.kind];
        emit(binaryCode(step.op, form), a.kind == Value::known ? a.number : b.number);
        a.kind = Value::computed;
    }
    std::fesetenv(&saved);
    if (state_ == state_code && stack.size() != 1) {
        state_ = state_wrong_format;
    }
    if (state_ == state_code && stack.back().kind == Value::known) {
        constant_ = stack.back().number;
        state_ = state_constant;
    } else if (state_ == state_code) {
        if (stack.back().kind == Value::argument) {
            emit(push_argument, 0.0);
        }
        emit(finish, 0.0);
    }
    reads_argument_ = state_ == state_code && std::any_of(code_.begin(), code_.end(), [](const Instruction& in) {
                          return readsArgument(in.code);
                      });
}

void CompiledProgram::fail() const
{
    if (state_ == state_unknown_name) {
        throw ExpressionUnknownVariable(names_[failure_slot_]);
    }
    throw ExpressionWrongFormat();
}

void CompiledProgram::bad_result()
{
    throw ExpressionBadResult();
}

// The operations in the order of their machine codes.
#define KALKORA_BINARY_OPERATIONS(X) X(add) X(subtract) X(multiply) X(divide) X(power)
#define KALKORA_UNARY_OPERATIONS(X)                                                                                   \
    X(negate) X(sin) X(cos) X(tg) X(ctg) X(arcsin) X(arccos) X(arctg) X(arcctg) X(exp) X(ln) X(log10) X(log2) X(abs) \
        X(sqrt) X(sinh) X(cosh)

// The machine jumps from each instruction straight to the code of the next
// (GCC's labels as values): one well-predicted indirect jump per
// instruction, where a switch in a loop takes four jumps through one shared
// dispatch.
#define KALKORA_NEXT __extension__({ goto* kCode[(++in)->code]; })

#define KALKORA_BINARY_LABELS(op)                                                                                     \
    &&op##_below_top, &&op##_top_constant, &&op##_top_argument, &&op##_constant_top, &&op##_argument_top,             \
        &&op##_argument_constant, &&op##_constant_argument, &&op##_argument_argument,
#define KALKORA_ON_TOP_LABEL(op) &&op##_on_top,
#define KALKORA_ON_ARGUMENT_LABEL(op) &&op##_on_argument,

// `top` is the top of the stack, `below` points just above the values under
// it, `x` is the argument and in->operand the instruction's constant.
#define KALKORA_BINARY_CODE(op)                                                                                      \
    op##_below_top : top = Operation::apply(Operation::op, *--below, top);                                           \
    KALKORA_NEXT;                                                                                                     \
    op##_top_constant : top = Operation::apply(Operation::op, top, in->operand);                                     \
    KALKORA_NEXT;                                                                                                     \
    op##_top_argument : top = Operation::apply(Operation::op, top, x);                                               \
    KALKORA_NEXT;                                                                                                     \
    op##_constant_top : top = Operation::apply(Operation::op, in->operand, top);                                     \
    KALKORA_NEXT;                                                                                                     \
    op##_argument_top : top = Operation::apply(Operation::op, x, top);                                               \
    KALKORA_NEXT;                                                                                                     \
    op##_argument_constant : *below++ = top;                                                                         \
    top = Operation::apply(Operation::op, x, in->operand);                                                           \
    KALKORA_NEXT;                                                                                                     \
    op##_constant_argument : *below++ = top;                                                                         \
    top = Operation::apply(Operation::op, in->operand, x);                                                           \
    KALKORA_NEXT;                                                                                                     \
    op##_argument_argument : *below++ = top;                                                                         \
    top = Operation::apply(Operation::op, x, x);                                                                     \
    KALKORA_NEXT;
#define KALKORA_UNARY_CODE(op)                                                                                       \
    op##_on_top : top = Operation::apply(Operation::op, top);                                                        \
    KALKORA_NEXT;                                                                                                     \
    op##_on_argument : *below++ = top;                                                                               \
    top = Operation::apply(Operation::op, x);                                                                        \
    KALKORA_NEXT;

namespace {

// The machine over code that ends with `finish`; the values under the top
// go to `heap` when given, else to a local array of kLocal.
constexpr std::size_t kLocal = 32;

double machine(const CompiledProgram::Instruction* in, double x, double* heap)
{
    __extension__ static const void* const kCode[] = {
        &&finish_, &&push_constant_, &&push_argument_, KALKORA_BINARY_OPERATIONS(KALKORA_BINARY_LABELS)
            KALKORA_UNARY_OPERATIONS(KALKORA_ON_TOP_LABEL) KALKORA_UNARY_OPERATIONS(KALKORA_ON_ARGUMENT_LABEL)};
    static_assert(sizeof kCode / sizeof kCode[0] == code_end, "one label per machine code");
    double local[kLocal];
    double* below = heap != nullptr ? heap : local;
    double top = 0.0;  // pushed once under the first value, never read
    __extension__({ goto* kCode[in->code]; });
finish_:
    return top;
push_constant_:
    *below++ = top;
    top = in->operand;
    KALKORA_NEXT;
push_argument_:
    *below++ = top;
    top = x;
    KALKORA_NEXT;
    KALKORA_BINARY_OPERATIONS(KALKORA_BINARY_CODE)
    KALKORA_UNARY_OPERATIONS(KALKORA_UNARY_CODE)
}

// A program deeper than the machine's local array.
[[gnu::noinline]] double deepMachine(const CompiledProgram::Instruction* code, double x, std::size_t depth)
{
    std::vector<double> below(depth);
    return machine(code, x, below.data());
}

}  // namespace

double CompiledProgram::execute(double x) const
{
    return depth_ > kLocal ? deepMachine(code_.data(), x, depth_) : machine(code_.data(), x, nullptr);
}
