// Each task's full numerical solve on its largest table, as the window's
// solvers run it minus the widgets: the log lines, the numerical classes,
// the texts, the values at X* and the 100 plot samples of every curve. The
// run log goes to a real file (standard error reopened onto a file in a
// temporary directory and given the window's log writer); it is truncated
// every few thousand iterations, outside the timed region.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "errors/errors.h"
#include "expression/function.h"
#include "numeric/approximating_polynomial.h"
#include "numeric/lagrange_polynomial.h"
#include "numeric/newton_polynomial.h"
#include "numeric/point.h"
#include "numeric/polynomial.h"
#include "numeric/spline.h"
#include "temporary_run_log.h"

namespace {

constexpr int kSamples = 100;
const double kXStar = 0.7;

// Keeps the log file small without timing the truncation.
void truncateLogNowAndThen(benchmark::State& state, std::size_t& count)
{
    if (++count % 4096 != 0) {
        return;
    }
    state.PauseTiming();
    std::cerr.flush();
    if (ftruncate(fileno(stderr), 0) != 0 || std::fseek(stderr, 0, SEEK_SET) != 0) {
        state.SkipWithError("cannot truncate the log");
    }
    state.ResumeTiming();
}

// Sorted by x, neighbours at least 1e-8 apart, as the input readers leave tables.
void sortAndCheck(std::vector<Point>& points)
{
    std::sort(points.begin(), points.end());
    for (std::size_t j = 0; j + 1 < points.size(); ++j) {
        if (std::fabs(points[j + 1].x - points[j].x) < 1e-8) {
            throw EqualPointsException();
        }
    }
}

std::vector<double> sampleXs(const std::vector<Point>& points)
{
    const double a = points.front().x;
    const double b = points.back().x;
    const double d = (b - a) / (kSamples - 1);
    std::vector<double> xs(kSamples);
    for (int i = 0; i < kSamples; ++i) {
        xs[i] = i * d + a;
    }
    return xs;
}

const std::vector<Point> kFivePoints = {{-1.5, 0.8}, {-0.4, 1.9}, {0.3, 1.1}, {1.2, -0.6}, {2.5, 0.4}};
const std::vector<Point> kSixPoints = {{-2, 3.1}, {-1.1, 1.2}, {-0.3, 0.4}, {0.6, 0.9}, {1.4, 2.2}, {2.3, 4.8}};

// 6 nodes, y = f(x): both interpolation polynomials, their texts, the error
// at X*, and the expanded Newton polynomial sampled for the plot.
void interpolation(benchmark::State& state)
{
    temporaryRunLog();
    const std::string text = "sin(2*pi*x)*exp(-x^2/10)";
    const double nodes[6] = {2.1, -2, -1.2, -0.4, 0.5, 1.3};
    std::size_t count = 0;
    for (auto _ : state) {
        std::cerr << "Interpolation task begin." << std::endl << std::endl;
        std::vector<Point> table(6);
        Function f(text);
        for (int j = 0; j < 6; ++j) {
            table[j].x = nodes[j];
            table[j].y = f(nodes[j]);
        }
        sortAndCheck(table);
        const LagrangePolynomial lagrange(table);
        const NewtonPolynomial newton(table);
        benchmark::DoNotOptimize(lagrange.toString());
        benchmark::DoNotOptimize(newton.toString());
        Function g(text);
        benchmark::DoNotOptimize(std::fabs(lagrange.calc(kXStar) - g(kXStar)));
        const Polynomial p = newton.toSimplePolynomial();
        for (double x : sampleXs(table)) {
            benchmark::DoNotOptimize(p.calc(x));
        }
        std::cerr << "Interpolation task end." << std::endl << std::endl;
        truncateLogNowAndThen(state, count);
    }
}
BENCHMARK(interpolation)->Unit(benchmark::kMicrosecond)->UseRealTime();

// 5 points: the spline, its text, its value at X* and 100 samples.
void spline(benchmark::State& state)
{
    temporaryRunLog();
    std::size_t count = 0;
    for (auto _ : state) {
        std::cerr << "Spline task begin." << std::endl << std::endl;
        std::vector<Point> table = kFivePoints;
        sortAndCheck(table);
        const Spline s(table);
        benchmark::DoNotOptimize(s.toString());
        benchmark::DoNotOptimize(s.calc(kXStar));
        for (double x : sampleXs(table)) {
            benchmark::DoNotOptimize(s.calc(x));
        }
        std::cerr << "Spline task end." << std::endl << std::endl;
        truncateLogNowAndThen(state, count);
    }
}
BENCHMARK(spline)->Unit(benchmark::kMicrosecond)->UseRealTime();

// 6 points: degrees 1 and 2, their texts and deviations, 100 samples each.
void leastSquares(benchmark::State& state)
{
    temporaryRunLog();
    std::size_t count = 0;
    for (auto _ : state) {
        std::cerr << "Least squares task begin." << std::endl << std::endl;
        std::vector<Point> table = kSixPoints;
        sortAndCheck(table);
        const ApproximatingPolynomial p1(table, 1);
        const ApproximatingPolynomial p2(table, 2);
        benchmark::DoNotOptimize(p1.toString());
        benchmark::DoNotOptimize(p2.toString());
        benchmark::DoNotOptimize(p1.deviation());
        benchmark::DoNotOptimize(p2.deviation());
        for (double x : sampleXs(table)) {
            benchmark::DoNotOptimize(p1.calc(x));
            benchmark::DoNotOptimize(p2.calc(x));
        }
        std::cerr << "Least squares task end." << std::endl << std::endl;
        truncateLogNowAndThen(state, count);
    }
}
BENCHMARK(leastSquares)->Unit(benchmark::kMicrosecond)->UseRealTime();

// 5 points: N, N' and N'' from the Newton polynomial, the derivatives at X*,
// 100 samples of each.
void differentiation(benchmark::State& state)
{
    temporaryRunLog();
    std::size_t count = 0;
    for (auto _ : state) {
        std::cerr << "Differentiation task begin." << std::endl << std::endl;
        std::vector<Point> table = kFivePoints;
        sortAndCheck(table);
        const Polynomial n = NewtonPolynomial(table).toSimplePolynomial();
        const Polynomial n1 = n.derivative();
        const Polynomial n2 = n1.derivative();
        benchmark::DoNotOptimize(n1.calc(kXStar));
        benchmark::DoNotOptimize(n2.calc(kXStar));
        for (double x : sampleXs(table)) {
            benchmark::DoNotOptimize(n.calc(x));
            benchmark::DoNotOptimize(n1.calc(x));
            benchmark::DoNotOptimize(n2.calc(x));
        }
        std::cerr << "Differentiation task end." << std::endl << std::endl;
        truncateLogNowAndThen(state, count);
    }
}
BENCHMARK(differentiation)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
