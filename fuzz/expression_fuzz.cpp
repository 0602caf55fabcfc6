// Fuzz target for the expression evaluator. The input's first line is the text of a Function, called at a few points;
// the rest is an assignment text given to eval. Construction may fail only with ExpressionWrongFormat and a call or
// eval only with the three expression exceptions; a value must be finite, and a second call or a call on a copy must
// give the same outcome bit for bit. Anything else aborts, which the fuzzer reports as a crash.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "expression/function.h"
#include "expression_test_support.h"

namespace {

// The value's bits, or which exception came out (with the unknown name); a value that is not finite aborts.
std::string outcome(const std::function<double()>& run) {
    return outcomeOf([&] {
        const double v = run();
        if (!std::isfinite(v)) std::abort();
        return v;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t line = std::min(input.find('\n'), input.size());
    try {
        Function f(input.substr(0, line)), copy = f;
        for (double x : {0.0, 1.0, -2.5, 1e-7}) {
            const std::string first = outcome([&] { return f(x); });
            if (outcome([&] { return f(x); }) != first || outcome([&] { return copy(x); }) != first) std::abort();
        }
    } catch (const ExpressionWrongFormat&) {
    }
    // A fresh object per input keeps runs reproducible; whatever the text stored, the object must evaluate normally
    // afterwards.
    Expression e("x + y*pi");
    outcome([&] { return e.eval(input.substr(std::min(line + 1, size))); });
    if (e.eval("x = 1 y = 2 pi = 3") != 7.0) std::abort();
    return 0;
}
