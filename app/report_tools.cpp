// The report of the last calculation: what the window records of it when it
// begins and ends, and the actions that save it (PDF or HTML), print it and
// open the whole run log, in the plot's menu and on their standard keys.

#include <unistd.h>

#include <QAction>
#include <QBuffer>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QRadioButton>
#include <QSaveFile>
#include <QUrl>
#include <qwt_plot.h>

#include "app/accessibility.h"
#include "app/report.h"
#include "app/run_log_writer.h"
#include "app/ui_widget.h"
#include "app/widget.h"

namespace {

// Where the run log's descriptor stands: the end of what has been written.
qint64 logPosition() {
    return lseek(2, 0, SEEK_CUR);
}

// A progress dialog for work that may take longer than half a second; the
// callback moves it on and tells whether the user cancelled.
struct ReportProgress {
    explicit ReportProgress(QWidget* window)
        : dialog(Widget::tr("Отчёт готовится…"), Widget::tr("Отмена"), 0, 1, window) {
        dialog.setWindowTitle(window->windowTitle());
        dialog.setWindowModality(Qt::WindowModal);
        dialog.setMinimumDuration(500);
        dialog.setValue(0);
    }
    Report::Progress callback() {
        return [this](qint64 done, qint64 total) {
            dialog.setMaximum(int(total));
            dialog.setValue(int(done));
            return !dialog.wasCanceled();
        };
    }
    QProgressDialog dialog;
};

}  // namespace

void Widget::setUpReport() {
    const auto addReportAction = [this](const char* name, const QString& text, const QKeySequence& keys, auto run) {
        auto* action = new QAction(text, ui->plot);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, run);
        ui->plot->addAction(action);
        addAction(action);  // the keys work on either page
    };
    auto* separator = new QAction(ui->plot);
    separator->setSeparator(true);
    ui->plot->addAction(separator);
    addReportAction("actionSaveReport", tr("Сохранить отчёт…"), QKeySequence::Save, [this] { saveReport(); });
    addReportAction("actionPrintReport", tr("Печать отчёта…"), QKeySequence::Print, [this] { printReport(); });
    addReportAction("actionOpenRunLog", tr("Открыть журнал расчётов"), QKeySequence(), [this] {
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(logPath)))
            QMessageBox::information(nullptr, tr("Ошибка"), tr("Не удалось открыть журнал расчётов %1").arg(logPath));
    });
    enableReport(false);
}

void Widget::enableReport(bool enabled) {
    for (const char* name : {"actionSaveReport", "actionPrintReport"})
        ui->plot->findChild<QAction*>(QString::fromLatin1(name))->setEnabled(enabled);
}

void Widget::beginReport() {
    report = Report();
    const QRadioButton* const taskButtons[5] = {ui->checkInterpolation, ui->checkSpline, ui->checkMNK,
                                                ui->checkDifferentiation, ui->checkIntegration};
    report.task = taskButtons[task]->text();
    report.time = QDateTime::currentDateTime();
    report.language = locale().bcp47Name();
    const std::pair<QLabel*, QWidget*> inputs[] = {{ui->label_f, ui->exprFunc}, {ui->label_n, ui->n},
                                                   {ui->label_x1, ui->x1},      {ui->label_x2, ui->x2},
                                                   {ui->label_h1, ui->h1},      {ui->label_h2, ui->h2}};
    for (const auto& [label, field] : inputs)
        if (!field->isHidden()) report.inputs.append({spokenLabel(label->text()), field->property("text").toString()});
    for (QRadioButton* rule : {ui->checkRectMethod, ui->checkTrapezMethod, ui->checkSimpsonMethod})
        if (!rule->isHidden() && rule->isChecked()) report.inputs.append({tr("Метод"), rule->text()});

    const QTableWidget* table = ui->tableFunc;
    if (table->rowCount() > 0) {
        QStringList header{QString()};
        for (int c = 0; c < table->columnCount(); ++c) header << table->model()->headerData(c, Qt::Horizontal).toString();
        report.table << header;
        for (int r = 0; r < table->rowCount(); ++r) {
            QStringList row{table->model()->headerData(r, Qt::Vertical).toString()};
            for (int c = 0; c < table->columnCount(); ++c) {
                const QTableWidgetItem* item = table->item(r, c);
                row << (item ? table->locale().toString(item->data(Qt::DisplayRole).toDouble()) : QString());
            }
            report.table << row;
        }
    }
    report.logBegin = logPosition();
}

void Widget::endReport(const QString& error) {
    report.error = error;
    const std::pair<QLabel*, QLineEdit*> results[] = {{ui->label_res1, ui->res1}, {ui->label_res2, ui->res2},
                                                      {ui->label_eps1, ui->eps1}, {ui->label_eps2, ui->eps2}};
    for (const auto& [label, field] : results)
        if (!field->isHidden()) report.results.append({spokenLabel(label->text()), field->text()});
    const RunLogWriter& log = RunLogWriter::installed();
    report.logFile = logPath;
    report.logEnd = logPosition();
    if (!log.complete()) report.logProblem = qt_error_string(log.error());
    enableReport(true);
}

void Widget::saveReport() {
    QFileDialog dialog(this, tr("Сохранить отчёт"), saveFolder, tr("Документ PDF (*.pdf);;Страница HTML (*.html)"));
    const QString name = askSaveName(dialog, report.task + QStringLiteral(".pdf"));
    if (name.isEmpty()) return;
    const QString suffix = QFileInfo(name).suffix().toLower();
    const bool html = suffix == QLatin1String("html") || suffix == QLatin1String("htm") ||
                      (suffix != QLatin1String("pdf") && dialog.selectedNameFilter().contains(QLatin1String("*.html")));
    writeReport(name, html);
}

void Widget::writeReport(const QString& name, bool html) {
    QByteArray trace, document;
    Report shown = report;
    QString unread;
    if (!shown.readTrace(trace, unread)) shown.logProblem = unread;
    ReportProgress progress(this);
    if (html) {
        document = shown.toHtml(trace, Report::svgOf(*ui->plot), progress.callback());
    } else {
        QBuffer buffer(&document);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setTitle(shown.task);
        pdf.setCreator(QStringLiteral("Kalkora"));
        if (!shown.paint(pdf, trace, *ui->plot, progress.callback())) document.clear();
    }
    if (document.isEmpty()) return;  // cancelled

    // The whole file or none: a write that fails, or a flush that does,
    // leaves no partial file behind. Qt reports a write cut short by a full
    // disk only as a short count; writing the rest gives the system's reason.
    QSaveFile file(name);
    bool written = file.open(QIODevice::WriteOnly);
    for (qint64 done = 0; written && done < document.size();) {
        const qint64 step = file.write(document.constData() + done, document.size() - done);
        written = step > 0;
        done += step;
    }
    if (!written || !file.flush() || !file.commit()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        QMessageBox::information(nullptr, tr("Ошибка"), tr("Не удалось сохранить отчёт в файл %1: %2").arg(name, reason));
    }
}

void Widget::printReport() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(report.task);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    QByteArray trace;
    Report shown = report;
    QString unread;
    if (!shown.readTrace(trace, unread)) shown.logProblem = unread;
    ReportProgress progress(this);
    shown.paint(printer, trace, *ui->plot, progress.callback());
}
