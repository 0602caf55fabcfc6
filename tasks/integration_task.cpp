// The integration task: the integral of f from x1 to x2 with steps h1 and
// h2 by the selected rule, and the Runge-Romberg estimate of its error.

#include <iostream>

#include <QDoubleSpinBox>
#include <QLineEdit>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "numeric/quadrature.h"

void Widget::solveIntegration() {
    std::cerr << "Integration task begin." << std::endl << std::endl;

    Function f = parseFunc();
    const double x1 = ui->x1->value();
    const double x2 = ui->x2->value();
    const double h1 = ui->h1->value();
    const double h2 = ui->h2->value();

    double I1 = 0.0;
    double I2 = 0.0;
    double err = 0.0;
    switch (integrationMethod) {
    case 0:
        I1 = integrateWithRectangles(f, x1, x2, h1);
        I2 = integrateWithRectangles(f, x1, x2, h2);
        err = calcRectanglesError(I1, I2, h1, h2);
        break;
    case 1:
        I1 = integrateWithTrapezoidalRule(f, x1, x2, h1);
        I2 = integrateWithTrapezoidalRule(f, x1, x2, h2);
        err = calcTrapezoidalRuleError(I1, I2, h1, h2);
        break;
    default:
        I1 = integrateWithSimpson(f, x1, x2, h1);
        I2 = integrateWithSimpson(f, x1, x2, h2);
        err = calcSimpsonError(I1, I2, h1, h2);
        break;
    }

    ui->res1->setText(QString::number(I1, 'g', 6));
    ui->res2->setText(QString::number(I2, 'g', 6));
    ui->eps1->setText(QString::number(err, 'g', 5));

    std::cerr << "Integration task end." << std::endl << std::endl;
}
