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

// Shows a failure's box and gives back its text.
QString showFailure(const QString& message) {
    QMessageBox::information(nullptr, Widget::tr("Ошибка"), message);
    return message;
}

QString reportFailure(const std::string& logText, const QString& message) {
    std::cerr << logText << std::endl << std::endl;
    return showFailure(message);
}

// Runs the calculation; a failure becomes its log line and its box. Returns
// the box's text, empty when the calculation completed.
QString runReportingFailure(const std::function<void()>& calculation) {
    try {
        calculation();
        return QString();
    } catch (const ExpressionWrongFormat&) {
        return reportFailure("Error: expression has wrong format.", Widget::tr("Неправильный формат ввода выражения"));
    } catch (const ExpressionBadResult&) {
        return reportFailure("Error: result of expression evaluation is bad (equals to nan or inf).",
                             Widget::tr("Значение выражения для заданных аргументов не определено либо слишком велико"));
    } catch (const ExpressionUnknownVariable& e) {
        return reportFailure("Error: expression has unknown variable: " + e.name,
                             Widget::tr("Неизвестная переменная: %1")
                                 .arg(QString::fromLatin1(e.name.data(), static_cast<int>(e.name.size()))));
    } catch (const EqualPointsException&) {
        return reportFailure("Error: input table contains some equal X coordinates.",
                             Widget::tr("Все точки, в которых задана исходная функция, должны быть различными"));
    } catch (const SplineUndefinedException& e) {
        // The log shows x in the stream's default format, the box with 'g' 6.
        std::cerr << "Error: spline is undefined at x = " << e.x << std::endl << std::endl;
        return showFailure(
            Widget::tr("Значение сплайна в точке x = %1 не определено").arg(QString::number(e.x, 'g', 6)));
    } catch (const MatrixIsSingular&) {
        return reportFailure("Error: matrix is singular.", Widget::tr("Матрица системы является вырожденной"));
    } catch (const MatrixIsNotTridiagonal&) {
        return reportFailure("Error: matrix is not tridiagonal.",
                             Widget::tr("Матрица системы не является трехдиагональной"));
    } catch (...) {
        return reportFailure("Error: undefined error.", Widget::tr("Неизвестная ошибка"));
    }
}

}  // namespace

void Widget::on_calcButton_clicked() {
    RunLogWriter& log = RunLogWriter::installed();
    // Lines lost by an earlier calculation stay lost; this one logs again.
    log.restart();
    beginReport();
    const QString failure = runReportingFailure([this] {
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
    endReport(failure);
    if (failure.isEmpty()) QMessageBox::information(nullptr, tr("Сообщение"), tr("Расчет завершен"));
    if (!log.complete()) {
        QMessageBox::information(nullptr, tr("Ошибка"),
                                 tr("Не удалось полностью записать журнал расчета в файл %1: %2")
                                     .arg(QString::fromLatin1(log.fileName().c_str()), qt_error_string(log.error())));
    }
}
