// The least-squares task: the polynomials of degree 1 and 2 that fit the
// typed points best, their sums of squared errors, and their plot.

#include <iostream>
#include <string>
#include <vector>

#include <QLineEdit>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "numeric/approximating_polynomial.h"

void Widget::solveMNK() {
    std::cerr << "Least squares task begin." << std::endl << std::endl;

    std::vector<Point> table(tableColumns[task]);
    getTableFunc(table);
    // Both are built before any field is written, so a failure of either
    // leaves every field empty.
    const ApproximatingPolynomial p1(table, 1);
    const ApproximatingPolynomial p2(table, 2);

    const std::string p1Text = p1.toString();
    const std::string p2Text = p2.toString();
    ui->res1->setText(QString::fromLatin1(p1Text.data(), static_cast<int>(p1Text.size())));
    ui->res2->setText(QString::fromLatin1(p2Text.data(), static_cast<int>(p2Text.size())));
    ui->eps1->setText(QString::number(p1.deviation(), 'g', 5));
    ui->eps2->setText(QString::number(p2.deviation(), 'g', 5));

    plotMNK(table, p1, p2);

    std::cerr << "Least squares task end." << std::endl << std::endl;
}

void Widget::plotMNK(const std::vector<Point>& points, const ApproximatingPolynomial& p1,
                     const ApproximatingPolynomial& p2) {
    const int c = tableColumns[task];
    const int m = plotSamples;
    const PlotArray sampleX = plotArray(m);
    const PlotArray sampleP1 = plotArray(m);
    const PlotArray sampleP2 = plotArray(m);

    const double a = points[0].x;
    const double b = points[c - 1].x;
    const double d = (b - a) / (m - 1);
    for (int i = 0; i < m; ++i) {
        sampleX[i] = i * d + a;
        sampleP1[i] = p1.calc(sampleX[i]);
        sampleP2[i] = p2.calc(sampleX[i]);
    }
    showCurves(points, sampleX.get(), m, {{sampleP1.get(), QT_TRANSLATE_NOOP("Widget", "P1(x)")}, {sampleP2.get(), QT_TRANSLATE_NOOP("Widget", "P2(x)")}});
}
