// Cost of one Function call, what a quadrature rule pays per node, side by
// side with two other evaluators of the same formula at the same arguments,
// muparser and fparser, and with the formula compiled by the C++ compiler
// (the floor under any evaluator). The run ends with a table of the medians
// and of the ratios Kalkora / muparser and Kalkora / fparser.
//
// The repetitions of all cases are interleaved in random order (Google
// Benchmark's --benchmark_enable_random_interleaving, on by default here,
// with 7 repetitions), so that a slow moment of a shared machine falls on
// every case alike. The arguments sweep a small range so that no call repeats
// the previous one. Both peers are given pi as a constant, their usual way,
// and fparser is optimised after parsing, as its documentation advises.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#include "expression/function.h"
#include "median_reporter.h"

#ifdef KALKORA_HAVE_MUPARSER
#include <muParser.h>
#endif
#ifdef KALKORA_HAVE_FPARSER
#include <fparser.hh>
#endif

namespace {

const double kPi = 3.141592653589793;

// Each formula in the dialect of each evaluator (the peers know arctg as
// atan, fparser knows ln as log) and as C++.
struct Formula {
    const char* name;
    const char* kalkora;
    const char* muparser;
    const char* fparser;
    double (*compiled)(double);
};

const Formula kFormulas[] = {
    {"sin_exp", "sin(2*pi*x)*exp(-4*pi^2*x)", "sin(2*pi*x)*exp(-4*pi^2*x)", "sin(2*pi*x)*exp(-4*pi^2*x)",
     [](double x) { return std::sin(2 * kPi * x) * std::exp(-4 * std::pow(kPi, 2.0) * x); }},
    {"literals", "0.5 * (1. + 0.2 - 1e-1)", "0.5 * (1. + 0.2 - 1e-1)", "0.5 * (1. + 0.2 - 1e-1)",
     [](double) { return 0.5 * (1. + 0.2 - 1e-1); }},
    {"logarithms", "log10(3) - ln(3) / ln(10)", "log10(3) - ln(3) / ln(10)", "log10(3) - log(3) / log(10)",
     [](double) { return std::log10(3.0) - std::log(3.0) / std::log(10.0); }},
    {"polynomial", "x^5 - 3*x^4 + 2*x^3 - x + 7", "x^5 - 3*x^4 + 2*x^3 - x + 7", "x^5 - 3*x^4 + 2*x^3 - x + 7",
     [](double x) { return std::pow(x, 5.0) - 3 * std::pow(x, 4.0) + 2 * std::pow(x, 3.0) - x + 7; }},
    {"mixed", "sqrt(abs(x))*cosh(x/10) + arctg(x)", "sqrt(abs(x))*cosh(x/10) + atan(x)",
     "sqrt(abs(x))*cosh(x/10) + atan(x)",
     [](double x) { return std::sqrt(std::fabs(x)) * std::cosh(x / 10) + std::atan(x); }},
    {"rational", "(x+1)*(x-1)/(x*x+1) - 2*x", "(x+1)*(x-1)/(x*x+1) - 2*x", "(x+1)*(x-1)/(x*x+1) - 2*x",
     [](double x) { return (x + 1) * (x - 1) / (x * x + 1) - 2 * x; }},
};

void nextArgument(double& x)
{
    x += 0.001;
    if (x > 1.0) {
        x = 0.0;
    }
}

void kalkora(benchmark::State& state, const Formula& formula)
{
    Function f(formula.kalkora);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(x));
        nextArgument(x);
    }
}

void compiled(benchmark::State& state, const Formula& formula)
{
    // Through a pointer the compiler cannot see, as an evaluator is reached.
    double (*volatile function)(double) = formula.compiled;
    double (*const call)(double) = function;
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(x));
        nextArgument(x);
    }
}

#ifdef KALKORA_HAVE_MUPARSER
void defineMuparser(mu::Parser& parser, double& x, const Formula& formula)
{
    parser.DefineConst("pi", kPi);
    parser.DefineVar("x", &x);
    parser.SetExpr(formula.muparser);
}

void muparser(benchmark::State& state, const Formula& formula)
{
    double x = 0.0;
    mu::Parser parser;
    defineMuparser(parser, x, formula);
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.Eval());
        nextArgument(x);
    }
}
#endif

#ifdef KALKORA_HAVE_FPARSER
void defineFparser(FunctionParser& parser, const Formula& formula)
{
    parser.AddConstant("pi", kPi);
    if (parser.Parse(formula.fparser, "x") >= 0) {
        std::fprintf(stderr, "fparser cannot parse %s: %s\n", formula.fparser, parser.ErrorMsg());
        std::exit(1);
    }
    parser.Optimize();
}

void fparser(benchmark::State& state, const Formula& formula)
{
    FunctionParser parser;
    defineFparser(parser, formula);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.Eval(&x));
        nextArgument(x);
    }
}
#endif

// Every evaluator must compute the same functions (x = 0.25 has 6 digits,
// so Kalkora's rounding of x does not show).
void checkSameValues()
{
    for (const Formula& formula : kFormulas) {
        double x = 0.25;
        std::map<std::string, double> values = {{"Kalkora", Function(formula.kalkora)(x)},
                                                {"compiled", formula.compiled(x)}};
#ifdef KALKORA_HAVE_MUPARSER
        mu::Parser mu;
        defineMuparser(mu, x, formula);
        values["muparser"] = mu.Eval();
#endif
#ifdef KALKORA_HAVE_FPARSER
        FunctionParser fp;
        defineFparser(fp, formula);
        values["fparser"] = fp.Eval(&x);
#endif
        const double ours = values["Kalkora"];
        for (const auto& [who, theirs] : values) {
            if (std::fabs(ours - theirs) > 1e-12 * (1 + std::fabs(ours))) {
                std::fprintf(stderr, "%s: Kalkora %.17g, %s %.17g\n", formula.kalkora, ours, who.c_str(), theirs);
                std::exit(1);
            }
        }
    }
}

void constructFunction(benchmark::State& state)
{
    const std::string text = kFormulas[0].kalkora;
    for (auto _ : state) {
        Function f(text);
        benchmark::DoNotOptimize(&f);
    }
}

void registerAll()
{
    for (const Formula& formula : kFormulas) {
        const std::string name = formula.name;
        benchmark::RegisterBenchmark(("kalkora/" + name).c_str(), kalkora, formula);
#ifdef KALKORA_HAVE_MUPARSER
        benchmark::RegisterBenchmark(("muparser/" + name).c_str(), muparser, formula);
#endif
#ifdef KALKORA_HAVE_FPARSER
        benchmark::RegisterBenchmark(("fparser/" + name).c_str(), fparser, formula);
#endif
        benchmark::RegisterBenchmark(("compiled/" + name).c_str(), compiled, formula);
    }
    benchmark::RegisterBenchmark("constructFunction", constructFunction)->Unit(benchmark::kMicrosecond);
}

// The console report, then the median CPU time of each formula with each
// evaluator and the ratios. CPU time, because the machine may be shared: wall
// time then includes the time other processes hold the core.
class RatioReporter : public MedianReporter {
public:
    RatioReporter() : MedianReporter(Clock::cpu) {}

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        std::printf("\nns per call (median CPU time)\n%-12s %9s %9s %9s %9s %12s %12s\n", "formula", "Kalkora",
                    "muparser", "fparser", "compiled", "K/muparser", "K/fparser");
        for (const Formula& formula : kFormulas) {
            const std::string name = formula.name;
            const double ours = time("kalkora/" + name), mu = time("muparser/" + name);
            const double fp = time("fparser/" + name);
            std::printf("%-12s %9.1f %9.1f %9.1f %9.1f %12.2f %12.2f\n", name.c_str(), ours, mu, fp,
                        time("compiled/" + name), ours / mu, ours / fp);
        }
    }
};

}  // namespace

int main(int argc, char** argv)
{
    // Defaults first, so that the same flags given on the command line win.
    std::vector<char*> args = {argv[0]};
    char repetitions[] = "--benchmark_repetitions=7";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    args.insert(args.end(), {repetitions, interleaving, aggregates});
    args.insert(args.end(), argv + 1, argv + argc);
    int count = static_cast<int>(args.size());
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data())) {
        return 1;
    }
    checkSameValues();
    registerAll();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
