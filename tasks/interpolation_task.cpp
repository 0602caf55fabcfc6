// The interpolation task: Lagrange and Newton polynomials through the nodes
// typed in the table, with y = f(x), their error at X*, and the plot of the
// nodes and of the Newton polynomial.

#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "numeric/lagrange_polynomial.h"
#include "numeric/newton_polynomial.h"
#include "numeric/polynomial.h"

void Widget::solveInterpolation() {
    std::cerr << "Interpolation task begin." << std::endl << std::endl;

    std::vector<Point> table(tableColumns[task]);
    calcTableFunc(table);
    const LagrangePolynomial lagrange(table);
    const NewtonPolynomial newton(table);

    const std::string lagrangeText = lagrange.toString();
    const std::string newtonText = newton.toString();
    ui->res1->setText(QString::fromLatin1(lagrangeText.data(), static_cast<int>(lagrangeText.size())));
    ui->res2->setText(QString::fromLatin1(newtonText.data(), static_cast<int>(newtonText.size())));

    const double x = ui->x1->value();
    const double lx = lagrange.calc(x);
    Function f = parseFunc();
    const double fx = f(x);
    ui->eps1->setText(QString::number(std::fabs(lx - fx), 'g', 5));

    plotInterpolation(table, newton.toSimplePolynomial());

    std::cerr << "Interpolation task end." << std::endl << std::endl;
}

void Widget::plotInterpolation(const std::vector<Point>& points, const Polynomial& p) {
    const int c = tableColumns[task];
    const int m = plotSamples;
    const PlotArray sampleX = plotArray(m);
    const PlotArray sampleY = plotArray(m);

    double a = points[0].x;
    double b = points[c - 1].x;
    if (c == 1) {
        // One node: a constant over a unit either side of it.
        a = points[0].x - 1;
        b = points[0].x + 1;
    }
    const double d = (b - a) / (m - 1);
    for (int i = 0; i < m; ++i) {
        sampleX[i] = i * d + a;
        sampleY[i] = p.calc(sampleX[i]);
    }
    showCurves(points, sampleX.get(), m, {{sampleY.get(), QT_TRANSLATE_NOOP("Widget", "N(x)")}});
}
