// The heaviest calculation the form allows: the integral over
// [-99.9999, 99.9999] with h1 = h2 = 0.01 (20,000 subintervals per run), run
// twice with one rule and followed by its estimate, as the integration task
// does, with the run log going to a real file (standard error reopened onto
// a file in a temporary directory and given the window's log writer, as the
// window does at start-up).
//
// Beside each rule runs its floor: the same log bytes, read back from the
// file after one run, written to the same file a line per write(2); and the
// rule's evaluations of f alone. The run ends with the table of the times,
// the ratio to the floor, and that ratio without the time of f. The log is
// truncated between iterations, outside the timed region.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

#include "median_reporter.h"
#include "numeric/quadrature.h"
#include "temporary_run_log.h"

namespace {

using Rule = double (*)(Function, double, double, double);
using Estimate = double (*)(double, double, double, double);

// A smooth f that stays finite over the whole form range.
const char* const kFunction = "sin(2*pi*x)*exp(-x^2/100)";

bool truncateLog()
{
    std::cerr.flush();
    return ftruncate(fileno(stderr), 0) == 0 && std::fseek(stderr, 0, SEEK_SET) == 0;
}

// What the integration task does with one rule, log lines included.
void integrate(Rule rule, Estimate estimate)
{
    const double x1 = -99.9999;
    const double x2 = 99.9999;
    const double h1 = 0.01;
    const double h2 = 0.01;
    std::cerr << "Integration task begin." << std::endl << std::endl;
    Function f(kFunction);
    const double i1 = rule(f, x1, x2, h1);
    const double i2 = rule(f, x1, x2, h2);
    benchmark::DoNotOptimize(estimate(i1, i2, h1, h2));
    std::cerr << "Integration task end." << std::endl << std::endl;
}

void heaviestIntegration(benchmark::State& state, Rule rule, Estimate estimate)
{
    temporaryRunLog();
    for (auto _ : state) {
        state.PauseTiming();
        if (!truncateLog()) {
            state.SkipWithError("cannot truncate the log");
            break;
        }
        state.ResumeTiming();
        integrate(rule, estimate);
    }
    state.counters["log_bytes"] = static_cast<double>(lseek(fileno(stderr), 0, SEEK_CUR));
}

// The log of one run of the rule, cut into its lines.
std::vector<std::string> logLines(Rule rule, Estimate estimate)
{
    if (!truncateLog()) {
        return {};
    }
    integrate(rule, estimate);
    std::ifstream in(temporaryRunLog(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        const std::size_t next = end == std::string::npos ? text.size() : end + 1;
        lines.push_back(text.substr(at, next - at));
        at = next;
    }
    return lines;
}

void lineFloor(benchmark::State& state, Rule rule, Estimate estimate)
{
    temporaryRunLog();
    const std::vector<std::string> lines = logLines(rule, estimate);
    const int fd = fileno(stderr);
    for (auto _ : state) {
        state.PauseTiming();
        if (lines.empty() || !truncateLog()) {
            state.SkipWithError("cannot make or truncate the log");
            break;
        }
        state.ResumeTiming();
        for (const std::string& line : lines) {
            if (write(fd, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
                state.SkipWithError("write failed");
                break;
            }
        }
    }
    state.counters["lines"] = static_cast<double>(lines.size());
}

// The share of f: the evaluations the rule makes (Function built once, both
// runs, the same arguments in the same order), without the rest of the rule
// and without the log. The nodes are computed as the rules compute them.
void functionCalls(benchmark::State& state, int evaluationsPerPart)
{
    const double x1 = -99.9999;
    const double x2 = 99.9999;
    const double h = 0.01;
    const int n = static_cast<int>((x2 - x1) / h + 0.999999);
    for (auto _ : state) {
        Function f(kFunction);
        double sum = 0.0;
        for (int run = 0; run < 2; ++run) {
            for (int i = 1; i <= n; ++i) {
                const double l = static_cast<double>(i - 1) * h + x1;
                const double r = std::min(x2, static_cast<double>(i) * h + x1);
                const double m = (l + r) * 0.5;
                if (evaluationsPerPart == 1) {
                    sum += f(m);
                } else if (evaluationsPerPart == 2) {
                    sum += f(l) + f(r);
                } else {
                    sum += f(l) + f(m) + f(r);
                }
            }
        }
        benchmark::DoNotOptimize(sum);
    }
}

#define KALKORA_RULE(name, rule, estimate, evaluationsPerPart)                          \
    BENCHMARK_CAPTURE(heaviestIntegration, name, rule, estimate)                        \
        ->Unit(benchmark::kMillisecond)                                                 \
        ->UseRealTime();                                                                \
    BENCHMARK_CAPTURE(lineFloor, name, rule, estimate)                                  \
        ->Unit(benchmark::kMillisecond)                                                 \
        ->UseRealTime();                                                                \
    BENCHMARK_CAPTURE(functionCalls, name, evaluationsPerPart)                          \
        ->Unit(benchmark::kMillisecond)                                                 \
        ->UseRealTime()

KALKORA_RULE(rectangles, integrateWithRectangles, calcRectanglesError, 1);
KALKORA_RULE(trapezoidal, integrateWithTrapezoidalRule, calcTrapezoidalRuleError, 2);
KALKORA_RULE(simpson, integrateWithSimpson, calcSimpsonError, 3);

// The console report, then per rule the wall time of the integration and of
// its floor (the medians when there are repetitions) and their ratio.
class RatioReporter : public MedianReporter {
public:
    RatioReporter() : MedianReporter(Clock::wall) {}

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\n%-12s %16s %10s %8s %8s %14s\n", "rule", "integration ms", "floor ms", "ratio", "f ms",
                    "ratio less f");
        for (const auto& [name, ours] : times()) {
            const std::string prefix = "heaviestIntegration/";
            if (name.rfind(prefix, 0) != 0) {
                continue;
            }
            const std::string rule = name.substr(prefix.size());
            const double floor = time("lineFloor/" + rule);
            const double calls = time("functionCalls/" + rule);
            std::printf("%-12s %16.2f %10.2f %8.2f %8.2f %14.2f\n", rule.c_str(), ours, floor, ours / floor, calls,
                        (ours - calls) / floor);
        }
    }
};

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
