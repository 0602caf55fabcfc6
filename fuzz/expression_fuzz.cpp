// Fuzz target for the expression evaluator, differential: the fast evaluation must give what the text route gives,
// bit for bit and exception for exception. The input's first line is the text of a Function, called at a few points
// under every number setting of number_settings.h and then through a copy; the rest is an assignment text given to
// eval of an Expression of the same text (or of "x + y*pi" when the text does not construct), twice. Construction may
// fail only with ExpressionWrongFormat and evaluation only with the three expression exceptions (the text route checks
// that values are finite). Anything else aborts, which the fuzzer reports as a crash.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "expression/function.h"
#include "expression_test_support.h"
#include "number_settings.h"

namespace {

const std::vector<NumberSetting>& settings() {
    static const std::vector<NumberSetting> all = numberSettings();
    return all;
}

void expectSame(const std::string& fast, const std::string& reference, const std::string& what) {
    if (fast != reference) {
        std::fprintf(stderr, "%s: fast route %s, text route %s\n", what.c_str(), fast.c_str(), reference.c_str());
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t line = std::min(input.find('\n'), input.size());
    const std::string text = input.substr(0, line), assignments = input.substr(std::min(line + 1, size));
    std::unique_ptr<Function> f;
    try {
        f = std::make_unique<Function>(text);
    } catch (const ExpressionWrongFormat&) {
    }
    if (f) {
        Expression reference(text);
        for (const NumberSetting& setting : settings()) {
            for (double x : {0.0, 1.0, -2.5, 1e-7, 0.30000000000000004, 1e-310}) {
                setting.enter();
                const std::string fast = outcomeOf([&] { return (*f)(x); }), slow = textRoute(reference, x);
                setting.leave();
                expectSame(fast, slow, setting.name + ", x = " + std::to_string(x));
            }
            f = std::make_unique<Function>(*f);
        }
    }
    // A fresh pair per input keeps runs reproducible.
    const std::string evaluated = f ? text : "x + y*pi";
    Expression fast(evaluated), reference(evaluated);
    for (int round = 0; round < 2; ++round) {
        expectSame(outcomeOf([&] { return fast.eval(assignments); }), textRoute(reference, assignments), "eval");
    }
    return 0;
}
