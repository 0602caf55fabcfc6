// Cost of one Function call, what a quadrature rule pays per node, side by
// side with muparser evaluating the same expression at the same arguments;
// the run ends with a table of the ratios Kalkora / muparser.
// The arguments sweep a small range so that no call repeats the previous one.
// muparser is given pi as a constant, its usual way; it folds constant
// sub-expressions at compile time, where Kalkora looks pi up at every call.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#include "expression/function.h"

#ifdef KALKORA_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

// The examples of the help text.
const char* const kSinExp = "sin(2*pi*x)*exp(-4*pi^2*x)";
const char* const kLiterals = "0.5 * (1. + 0.2 - 1e-1)";
const char* const kLogarithms = "log10(3) - ln(3) / ln(10)";

void nextArgument(double& x)
{
    x += 0.001;
    if (x > 1.0) {
        x = 0.0;
    }
}

void kalkora(benchmark::State& state, const char* text)
{
    Function f(text);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(x));
        nextArgument(x);
    }
}
BENCHMARK_CAPTURE(kalkora, sin_exp, kSinExp);
BENCHMARK_CAPTURE(kalkora, literals, kLiterals);
BENCHMARK_CAPTURE(kalkora, logarithms, kLogarithms);

#ifdef KALKORA_HAVE_MUPARSER
void defineParser(mu::Parser& parser, double& x, const char* text)
{
    parser.DefineConst("pi", 3.141592653589793);
    parser.DefineVar("x", &x);
    parser.SetExpr(text);
}

void muparser(benchmark::State& state, const char* text)
{
    double x = 0.0;
    mu::Parser parser;
    defineParser(parser, x, text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.Eval());
        nextArgument(x);
    }
}
BENCHMARK_CAPTURE(muparser, sin_exp, kSinExp);
BENCHMARK_CAPTURE(muparser, literals, kLiterals);
BENCHMARK_CAPTURE(muparser, logarithms, kLogarithms);

// Both evaluators must compute the same functions (x = 0.25 has 6 digits,
// so Kalkora's rounding of x does not show).
void checkSameValues()
{
    for (const char* text : {kSinExp, kLiterals, kLogarithms}) {
        double x = 0.25;
        mu::Parser parser;
        defineParser(parser, x, text);
        const double theirs = parser.Eval();
        const double ours = Function(text)(x);
        if (std::fabs(ours - theirs) > 1e-12 * (1 + std::fabs(ours))) {
            std::fprintf(stderr, "%s: Kalkora %.17g, muparser %.17g\n", text, ours, theirs);
            std::exit(1);
        }
    }
}
#endif

void constructFunction(benchmark::State& state)
{
    const std::string text = kSinExp;
    for (auto _ : state) {
        Function f(text);
        benchmark::DoNotOptimize(&f);
    }
}
BENCHMARK(constructFunction);

// The console report, then the ratio of each expression's CPU time (the
// median when there are repetitions) with Kalkora to its CPU time with
// muparser. CPU time, because the machine may be shared: wall time then
// includes the time other processes hold the core.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(isatty(fileno(stdout)) ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (single || median) {
                times_[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\n%-12s %14s %14s %8s\n", "expression", "Kalkora ns", "muparser ns", "ratio");
        for (const auto& [name, ours] : times_) {
            if (name.rfind("kalkora/", 0) != 0) {
                continue;
            }
            const std::string expression = name.substr(8);
            const auto theirs = times_.find("muparser/" + expression);
            if (theirs == times_.end()) {
                continue;
            }
            std::printf("%-12s %14.1f %14.1f %8.2f\n", expression.c_str(), ours, theirs->second,
                        ours / theirs->second);
        }
    }

private:
    std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
#ifdef KALKORA_HAVE_MUPARSER
    checkSameValues();
#endif
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
