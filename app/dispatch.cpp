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
    QMessageBox::information(nullptr, QString::fromUtf8("Ошибка"), message);
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
        reportFailure("Error: expression has wrong format.",
                      QString::fromUtf8("Неправильный формат ввода выражения"));
        return;
    } catch (const ExpressionBadResult&) {
        reportFailure("Error: result of expression evaluation is bad (equals to nan or inf).",
                      QString::fromUtf8("Значение выражения для заданных аргументов не определено "
                                        "либо слишком велико"));
        return;
    } catch (const ExpressionUnknownVariable& e) {
        reportFailure("Error: expression has unknown variable: " + e.name,
                      QString::fromUtf8("Неизвестная переменная: ") +
                          QString::fromLatin1(e.name.data(), static_cast<int>(e.name.size())));
        return;
    } catch (const EqualPointsException&) {
        reportFailure("Error: input table contains some equal X coordinates.",
                      QString::fromUtf8("Все точки, в которых задана исходная функция, должны быть "
                                        "различными"));
        return;
    } catch (const SplineUndefinedException& e) {
        // The log shows x in the stream's default format, the box with 'g' 6.
        std::cerr << "Error: spline is undefined at x = " << e.x << std::endl << std::endl;
        QMessageBox::information(nullptr, QString::fromUtf8("Ошибка"),
                                 QString::fromUtf8("Значение сплайна в точке x = ") +
                                     QString::number(e.x, 'g', 6) +
                                     QString::fromUtf8(" не определено"));
        return;
    } catch (const MatrixIsSingular&) {
        reportFailure("Error: matrix is singular.",
                      QString::fromUtf8("Матрица системы является вырожденной"));
        return;
    } catch (const MatrixIsNotTridiagonal&) {
        reportFailure("Error: matrix is not tridiagonal.",
                      QString::fromUtf8("Матрица системы не является трехдиагональной"));
        return;
    } catch (...) {
        reportFailure("Error: undefined error.", QString::fromUtf8("Неизвестная ошибка"));
        return;
    }
    QMessageBox::information(nullptr, QString::fromUtf8("Сообщение"),
                             QString::fromUtf8("Расчет завершен"));
}
