// Cost of one Function call: what a quadrature rule pays per node.
// The arguments sweep a small range so that no call repeats the previous one.

#include <benchmark/benchmark.h>

#include <string>

#include "expression/function.h"

namespace {

void callFunction(benchmark::State& state, const std::string& text)
{
    Function f(text);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(x));
        x += 0.001;
        if (x > 1.0) {
            x = 0.0;
        }
    }
}

// The examples of the help text.
BENCHMARK_CAPTURE(callFunction, sin_exp, std::string("sin(2*pi*x)*exp(-4*pi^2*x)"));
BENCHMARK_CAPTURE(callFunction, literals, std::string("0.5 * (1. + 0.2 - 1e-1)"));
BENCHMARK_CAPTURE(callFunction, logarithms, std::string("log10(3) - ln(3) / ln(10)"));

void constructFunction(benchmark::State& state)
{
    const std::string text = "sin(2*pi*x)*exp(-4*pi^2*x)";
    for (auto _ : state) {
        Function f(text);
        benchmark::DoNotOptimize(&f);
    }
}
BENCHMARK(constructFunction);

}  // namespace

BENCHMARK_MAIN();
