// Cost of building an Expression from long texts, by shape: each case is
// run at 10^4, 10^5 and 10^6 characters, so that a step whose cost grows
// faster than the text shows as a ratio above 10 between neighbouring sizes.
// Only the constructor is timed; the texts are written before the loop.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "expression/expression.h"

namespace {

// "a+b+...+Z+aa+ab+...": every name once, shortest first, skipping the
// function names and pi, until the text has `length` characters.
std::string distinctNames(std::size_t length)
{
    static const std::set<std::string> reserved = {
        "sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg", "arcctg", "exp",
        "ln", "log10", "log2", "abs", "sqrt", "sinh", "cosh", "pi"};
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string alphanumeric = letters + "0123456789";
    std::string text;
    // An odometer over the characters of the name: position 0 counts in
    // letters, the others in letters and digits.
    std::vector<std::size_t> digits{0};
    while (text.size() < length) {
        std::string name;
        for (std::size_t i = 0; i < digits.size(); ++i) {
            name += (i == 0 ? letters : alphanumeric)[digits[i]];
        }
        if (reserved.count(name) == 0) {
            text += text.empty() ? "" : "+";
            text += name;
        }
        for (std::size_t i = digits.size(); i-- > 0;) {
            const std::size_t base = i == 0 ? letters.size() : alphanumeric.size();
            if (++digits[i] < base) {
                break;
            }
            digits[i] = 0;
            if (i == 0) {
                digits.push_back(0);
            }
        }
    }
    return text;
}

// `unit` joined by "+" until the text has `length` characters.
std::string repeated(std::size_t length, const std::string& unit)
{
    std::string text = unit;
    while (text.size() < length) {
        text += "+" + unit;
    }
    return text;
}

std::string oneName(std::size_t length)
{
    return repeated(length, "x");
}

// "1+2+3+...": every number is read by the stream and written back.
std::string manyNumbers(std::size_t length)
{
    std::string text = "1";
    for (long k = 2; text.size() < length; ++k) {
        text += "+" + std::to_string(k);
    }
    return text;
}

// "((...(x)...))": the operator stack and the bracket depth grow with the text.
std::string deepBrackets(std::size_t length)
{
    const std::size_t depth = length / 2;
    return std::string(depth, '(') + "x" + std::string(depth, ')');
}

// "sin(sin(...sin(x)...))": every function waits on the stack until the end.
std::string nestedFunctions(std::size_t length)
{
    const std::size_t depth = length / 5;
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) {
        text += "sin(";
    }
    return text + "x" + std::string(depth, ')');
}

// "x-x*x/x^x-x*x/x^x...": every operator pops the one before it.
std::string mixedOperators(std::size_t length)
{
    return repeated(length, "x-x*x/x^x");
}

// One name, one number: the cost of a single long token.
std::string longName(std::size_t length)
{
    return std::string(length, 'x');
}

// "0.111...": a literal of that many digits overflows, which the text must not.
std::string longNumber(std::size_t length)
{
    return "0." + std::string(length - 2, '1');
}

template <std::string (*Text)(std::size_t)>
void build(benchmark::State& state)
{
    const std::string text = Text(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        Expression e(text);
        benchmark::DoNotOptimize(&e);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

#define KALKORA_BUILD_CASE(shape)                                                            \
    BENCHMARK_TEMPLATE(build, shape)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(           \
        benchmark::kMillisecond)

KALKORA_BUILD_CASE(distinctNames);
KALKORA_BUILD_CASE(oneName);
KALKORA_BUILD_CASE(manyNumbers);
KALKORA_BUILD_CASE(deepBrackets);
KALKORA_BUILD_CASE(nestedFunctions);
KALKORA_BUILD_CASE(mixedOperators);
KALKORA_BUILD_CASE(longName);
KALKORA_BUILD_CASE(longNumber);

}  // namespace

BENCHMARK_MAIN();
