// The spline task: the natural cubic spline through the typed points, its
// value at X*, and the plot of the points and the spline.

#include <iostream>
#include <string>
#include <vector>

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "numeric/spline.h"

void Widget::solveSpline() {
    std::cerr << "Spline task begin." << std::endl << std::endl;

    std::vector<Point> table(tableColumns[task]);
    getTableFunc(table);
    const Spline spline(table);

    const std::string text = spline.toString();
    ui->res1->setText(QString::fromLatin1(text.data(), static_cast<int>(text.size())));
    // Outside the table this throws with the spline text already shown.
    ui->res2->setText(QString::number(spline.calc(ui->x1->value()), 'g', 6));

    plotSpline(table, spline);

    std::cerr << "Spline task end." << std::endl << std::endl;
}

void Widget::plotSpline(const std::vector<Point>& points, const Spline& s) {
    const int c = tableColumns[task];
    const int m = plotSamples;
    const PlotArray sampleX = plotArray(m);
    const PlotArray sampleY = plotArray(m);

    const double a = points[0].x;
    const double b = points[c - 1].x;
    const double d = (b - a) / (m - 1);
    for (int i = 0; i < m; ++i) {
        // The last sample may pass b by rounding; the spline reaches 1e-7
        // beyond its end nodes, so this never throws.
        sampleX[i] = i * d + a;
        sampleY[i] = s.calc(sampleX[i]);
    }
    showCurves(points, sampleX.get(), m, {{sampleY.get(), QT_TRANSLATE_NOOP("Widget", "S(x)")}});
}
