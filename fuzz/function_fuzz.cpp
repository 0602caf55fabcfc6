// Fuzz target: any bytes as the text of a Function, called at a few points.
// Construction may fail only with ExpressionWrongFormat; a call only with the
// three expression exceptions. A value must be finite, a second call with the
// same argument and a call on a copy must give the same outcome bit for bit.
// Anything else aborts, which the fuzzer reports as a crash.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "errors/errors.h"
#include "expression/function.h"

namespace {

struct Outcome {
    int kind = 0;  // 0 value, 1 wrong format, 2 unknown variable, 3 bad result
    double value = 0.0;
    std::string name;

    bool operator==(const Outcome& o) const
    {
        return kind == o.kind && std::memcmp(&value, &o.value, sizeof value) == 0 &&
               name == o.name;
    }
};

Outcome call(Function& f, double x)
{
    Outcome out;
    try {
        out.value = f(x);
        if (!std::isfinite(out.value)) {
            std::abort();
        }
    } catch (const ExpressionWrongFormat&) {
        out.kind = 1;
    } catch (const ExpressionUnknownVariable& e) {
        out.kind = 2;
        out.name = e.name;
    } catch (const ExpressionBadResult&) {
        out.kind = 3;
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::unique_ptr<Function> f;
    try {
        f = std::make_unique<Function>(text);
    } catch (const ExpressionWrongFormat&) {
        return 0;
    }
    Function copy = *f;
    for (double x : {0.0, 1.0, -2.5, 1e-7}) {
        const Outcome first = call(*f, x);
        if (!(call(*f, x) == first) || !(call(copy, x) == first)) {
            std::abort();
        }
    }
    return 0;
}
