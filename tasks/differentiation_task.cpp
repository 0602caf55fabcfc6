// The differentiation task: the first and second derivatives at X* of the
// Newton polynomial through the typed points, and the plot of the points,
// the polynomial and both derivatives.

#include <iostream>
#include <vector>

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "numeric/newton_polynomial.h"
#include "numeric/polynomial.h"

void Widget::solveDifferentiation() {
    std::cerr << "Differentiation task begin." << std::endl << std::endl;

    std::vector<Point> table(tableColumns[task]);
    getTableFunc(table);
    const Polynomial n = NewtonPolynomial(table).toSimplePolynomial();
    const Polynomial n1 = n.derivative();
    const Polynomial n2 = n1.derivative();

    const double x = ui->x1->value();
    ui->res1->setText(QString::number(n1.calc(x), 'g', 6));
    ui->res2->setText(QString::number(n2.calc(x), 'g', 6));

    plotDifferentiation(table, n, n1, n2);

    std::cerr << "Differentiation task end." << std::endl << std::endl;
}

void Widget::plotDifferentiation(const std::vector<Point>& points, const Polynomial& p,
                                 const Polynomial& dp, const Polynomial& d2p) {
    const int c = tableColumns[task];
    const int m = plotSamples;
    const PlotArray sampleX = plotArray(m);
    const PlotArray sampleP = plotArray(m);
    const PlotArray sampleDP = plotArray(m);
    const PlotArray sampleD2P = plotArray(m);

    const double a = points[0].x;
    const double b = points[c - 1].x;
    const double d = (b - a) / (m - 1);
    for (int i = 0; i < m; ++i) {
        sampleX[i] = i * d + a;
        sampleP[i] = p.calc(sampleX[i]);
        sampleDP[i] = dp.calc(sampleX[i]);
        sampleD2P[i] = d2p.calc(sampleX[i]);
    }
    showCurves(points, sampleX.get(), m,
               {{sampleP.get(), QT_TRANSLATE_NOOP("Widget", "N(x)")}, {sampleDP.get(), QT_TRANSLATE_NOOP("Widget", "N'(x)")}, {sampleD2P.get(), QT_TRANSLATE_NOOP("Widget", "N''(x)")}});
}
