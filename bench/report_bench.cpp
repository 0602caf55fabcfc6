// The report of the heaviest calculation the form allows: Simpson's rule over
// [-99.9999, 99.9999] with h1 = h2 = 0.01, a trace of 40,008 lines, written
// as an HTML page (the plot as SVG) and as a PDF document, each into memory
// as the window builds it before saving. The trace is the integration's own
// run log, written to a file and read back once before timing.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <QApplication>
#include <QBuffer>
#include <QPdfWriter>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "app/report.h"
#include "numeric/quadrature.h"

namespace {

QByteArray heaviestTrace() {
    char dir[] = "/tmp/kalkora-bench-XXXXXX";
    if (!mkdtemp(dir) || !std::freopen((std::string(dir) + "/log.txt").c_str(), "w", stderr)) {
        std::perror("log");
        std::exit(1);
    }
    std::cerr << "Integration task begin." << std::endl << std::endl;
    Function f("sin(2*pi*x)*exp(-x^2/100)");
    for (int run = 0; run < 2; ++run) integrateWithSimpson(f, -99.9999, 99.9999, 0.01);
    std::cerr << "Integration task end." << std::endl << std::endl;
    std::ifstream in(std::string(dir) + "/log.txt", std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    return QByteArray(bytes.data(), int(bytes.size()));
}

struct Heaviest {
    Heaviest() : trace(heaviestTrace()) {
        report.task = QStringLiteral("Интегрирование");
        report.time = QDateTime::currentDateTime();
        report.language = QStringLiteral("ru");
        report.inputs = {{QStringLiteral("f(x)"), QStringLiteral("sin(2*pi*x)*exp(-x^2/100)")},
                         {QStringLiteral("x1"), QStringLiteral("-99,9999")}, {QStringLiteral("x2"), QStringLiteral("99,9999")},
                         {QStringLiteral("h1"), QStringLiteral("0,01")}, {QStringLiteral("h2"), QStringLiteral("0,01")}};
        report.results = {{QStringLiteral("Ans(h1)"), QStringLiteral("1.18e-17")},
                          {QStringLiteral("Ans(h2)"), QStringLiteral("1.18e-17")}, {QStringLiteral("ε"), QStringLiteral("nan")}};
        plot.resize(411, 351);
        QVector<double> xs, ys;
        for (int i = 0; i < 100; ++i) xs << i * 0.1, ys << std::sin(i * 0.1);
        curve.setSamples(xs, ys);
        curve.attach(&plot);
        plot.replot();
    }
    QByteArray trace;
    Report report;
    QwtPlot plot;
    QwtPlotCurve curve;
};

Heaviest& heaviest() {
    static Heaviest h;
    return h;
}

const Report::Progress kNeverCancelled = [](qint64, qint64) { return true; };

void reportAsHtml(benchmark::State& state) {
    Heaviest& h = heaviest();
    for (auto _ : state) {
        const QByteArray page = h.report.toHtml(h.trace, Report::svgOf(h.plot), kNeverCancelled);
        benchmark::DoNotOptimize(page.constData());
        state.counters["bytes"] = page.size();
    }
    state.counters["trace lines"] = h.trace.count('\n');
}

void reportAsPdf(benchmark::State& state) {
    Heaviest& h = heaviest();
    for (auto _ : state) {
        QByteArray document;
        QBuffer buffer(&document);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        h.report.paint(pdf, h.trace, h.plot, kNeverCancelled);
        state.counters["bytes"] = document.size();
    }
}

}  // namespace

BENCHMARK(reportAsHtml)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(reportAsPdf)->Unit(benchmark::kMillisecond)->Iterations(3);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
