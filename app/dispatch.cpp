// The calculate button: runs the selected task and is the one place where a
// failed calculation is reported, as a line in the run log followed by an
// empty line and a message box titled "Ошибка". A run log that could not be
// written in full gets one more box after the calculation's own.

#include <clocale>
#include <functional>
#include <iostream>
#include <string>

#include <QMessageBox>
#include <QString>

#include "app/run_log_writer.h"
#include "app/widget.h"
#include "errors/errors.h"

namespace {

void reportFailure(const std::string& logText, const QString& message) {
    std::cerr << logText << std::endl << std::endl;
    QMessageBox::information(nullptr, QString::fromUtf8("Ошибка"), message);
}

// Runs the calculation; a failure becomes its log line and its box. Returns
// whether the calculation completed.
bool runReportingFailure(const std::function<void()>& calculation) {
    try {
        calculation();
        return true;
    } catch (const ExpressionWrongFormat&) {
        reportFailure("Error: expression has wrong format.",
                      QString::fromUtf8("Неправильный формат ввода выражения"));
    } catch (const ExpressionBadResult&) {
        reportFailure("Error: result of expression evaluation is bad (equals to nan or inf).",
                      QString::fromUtf8("Значение выражения для заданных аргументов не определено "
                                        "либо слишком велико"));
    } catch (const ExpressionUnknownVariable& e) {
        reportFailure("Error: expression has unknown variable: " + e.name,
                      QString::fromUtf8("Неизвестная переменная: ") +
                          QString::fromLatin1(e.name.data(), static_cast<int>(e.name.size())));
    } catch (const EqualPointsException&) {
        reportFailure("Error: input table contains some equal X coordinates.",
                      QString::fromUtf8("Все точки, в которых задана исходная функция, должны быть "
                                        "различными"));
    } catch (const SplineUndefinedException& e) {
        // The log shows x in the stream's default format, the box with 'g' 6.
        std::cerr << "Error: spline is undefined at x = " << e.x << std::endl << std::endl;
        QMessageBox::information(nullptr, QString::fromUtf8("Ошибка"),
                                 QString::fromUtf8("Значение сплайна в точке x = ") +
                                     QString::number(e.x, 'g', 6) +
                                     QString::fromUtf8(" не определено"));
    } catch (const MatrixIsSingular&) {
        reportFailure("Error: matrix is singular.",
                      QString::fromUtf8("Матрица системы является вырожденной"));
    } catch (const MatrixIsNotTridiagonal&) {
        reportFailure("Error: matrix is not tridiagonal.",
                      QString::fromUtf8("Матрица системы не является трехдиагональной"));
    } catch (...) {
        reportFailure("Error: undefined error.", QString::fromUtf8("Неизвестная ошибка"));
    }
    return false;
}

}  // namespace

void Widget::on_calcButton_clicked() {
    RunLogWriter& log = RunLogWriter::installed();
    // Lines lost by an earlier calculation stay lost; this one logs again.
    log.restart();
    const bool completed = runReportingFailure([this] {
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
    });
    if (completed) {
        QMessageBox::information(nullptr, QString::fromUtf8("Сообщение"),
                                 QString::fromUtf8("Расчет завершен"));
    }
    if (!log.complete()) {
        QMessageBox::information(nullptr, QString::fromUtf8("Ошибка"),
                                 QString::fromUtf8("Не удалось полностью записать журнал расчета в файл ") +
                                     QString::fromLatin1(log.fileName().c_str()) + QString::fromUtf8(": ") +
                                     qt_error_string(log.error()));
    }
}
