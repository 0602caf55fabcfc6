// The heaviest calculation the form allows: the integral over
// [-99.9999, 99.9999] with h1 = h2 = 0.01 (20,000 subintervals per run), run
// twice with one rule and followed by its estimate, as the integration task
// does, with the run log going to a real file (standard error reopened onto
// a file in a temporary directory, as the window does at start-up).
// The log is truncated between iterations, outside the timed region.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>

#include "numeric/quadrature.h"

namespace {

using Rule = double (*)(Function, double, double, double);
using Estimate = double (*)(double, double, double, double);

// A smooth f that stays finite over the whole form range.
const char* const kFunction = "sin(2*pi*x)*exp(-x^2/100)";

std::string openLog()
{
    char dir[] = "/tmp/kalkora-bench-XXXXXX";
    if (!mkdtemp(dir)) {
        std::perror("mkdtemp");
        std::exit(1);
    }
    const std::string path = std::string(dir) + "/log.txt";
    if (!std::freopen(path.c_str(), "w", stderr)) {
        std::perror("freopen");
        std::exit(1);
    }
    return path;
}

void heaviestIntegration(benchmark::State& state, Rule rule, Estimate estimate)
{
    static const std::string path = openLog();
    const double x1 = -99.9999;
    const double x2 = 99.9999;
    const double h1 = 0.01;
    const double h2 = 0.01;
    for (auto _ : state) {
        state.PauseTiming();
        std::cerr.flush();
        if (ftruncate(fileno(stderr), 0) != 0 || std::fseek(stderr, 0, SEEK_SET) != 0) {
            state.SkipWithError("cannot truncate the log");
            break;
        }
        state.ResumeTiming();

        std::cerr << "Integration task begin." << std::endl << std::endl;
        Function f(kFunction);
        const double i1 = rule(f, x1, x2, h1);
        const double i2 = rule(f, x1, x2, h2);
        benchmark::DoNotOptimize(estimate(i1, i2, h1, h2));
        std::cerr << "Integration task end." << std::endl << std::endl;
    }
    state.counters["log_bytes"] = static_cast<double>(std::ftell(stderr));
}

BENCHMARK_CAPTURE(heaviestIntegration, rectangles, integrateWithRectangles, calcRectanglesError)
    ->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(heaviestIntegration, trapezoidal, integrateWithTrapezoidalRule, calcTrapezoidalRuleError)
    ->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(heaviestIntegration, simpson, integrateWithSimpson, calcSimpsonError)
    ->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
