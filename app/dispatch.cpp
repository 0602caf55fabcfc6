// The calculate button: runs the selected task and is the one place where a
// failed calculation is reported, as a line in the run log followed by an
// empty line and a message box titled "Ошибка".

#include <clocale>
#include <iostream>
#include <string>

#include <QMessageBox>
#include <QString>

#include "app/widget.h"
#include "errors/errors.h"

namespace {

void reportFailure(const std::string& logText, const QString& message) {
    std::cerr << logText << std::endl << std::endl;
    QMessageBox::information(nullptr, Widget::tr("Ошибка"), message);
}

}  // namespace

void Widget::on_calcButton_clicked() {
    try {
        clearResult();
        // The evaluator reads and writes numbers with '.'.
        setlocale(LC_ALL, "C");
        switch (task) {
        case 0: solveInterpolation(); break;
        case 1: solveSpline(); break;
        case 2: solveMNK(); break;
        case 3: solveDifferentiation(); break;
        case 4: solveIntegration(); break;
        }
    } catch (const ExpressionWrongFormat&) {
        reportFailure("Error: expression has wrong format.", tr("Неправильный формат ввода выражения"));
        return;
    } catch (const ExpressionBadResult&) {
        reportFailure("Error: result of expression evaluation is bad (equals to nan or inf).",
                      tr("Значение выражения для заданных аргументов не определено либо слишком велико"));
        return;
    } catch (const ExpressionUnknownVariable& e) {
        reportFailure("Error: expression has unknown variable: " + e.name,
                      tr("Неизвестная переменная: %1")
                          .arg(QString::fromLatin1(e.name.data(), static_cast<int>(e.name.size()))));
        return;
    } catch (const EqualPointsException&) {
        reportFailure("Error: input table contains some equal X coordinates.",
                      tr("Все точки, в которых задана исходная функция, должны быть различными"));
        return;
    } catch (const SplineUndefinedException& e) {
        // The log shows x in the stream's default format, the box with 'g' 6.
        std::cerr << "Error: spline is undefined at x = " << e.x << std::endl << std::endl;
        QMessageBox::information(nullptr, tr("Ошибка"),
                                 tr("Значение сплайна в точке x = %1 не определено").arg(QString::number(e.x, 'g', 6)));
        return;
    } catch (const MatrixIsSingular&) {
        reportFailure("Error: matrix is singular.", tr("Матрица системы является вырожденной"));
        return;
    } catch (const MatrixIsNotTridiagonal&) {
        reportFailure("Error: matrix is not tridiagonal.", tr("Матрица системы не является трехдиагональной"));
        return;
    } catch (...) {
        reportFailure("Error: undefined error.", tr("Неизвестная ошибка"));
        return;
    }
    QMessageBox::information(nullptr, tr("Сообщение"), tr("Расчет завершен"));
}
