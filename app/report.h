#pragma once
// Report: one calculation as a student hands it in: the task and when it ran,
// the inputs as typed, every result as its field shows it (or the error as
// its box said it), the plot, and the calculation's own lines of the run log,
// read back from the log file between the positions where they begin and end.
// It renders itself as one self-contained HTML page (the plot as inline SVG)
// or as pages of a PDF file or a printer (the plot as vector graphics).
// Texts are in the window's language; the trace stays as the log wrote it.

#include <functional>

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;
class QwtPlot;

class Report {
    Q_DECLARE_TR_FUNCTIONS(Report)

public:
    struct Field {
        QString label;  // as the window says it, markup dropped ("x1", "L(x)")
        QString text;   // exactly as the field shows it
    };

    // Told how far the work is (done of total steps); answers false to cancel it.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    QString task;  // the task's name, as its button says it
    QDateTime time;
    QList<Field> inputs;
    QList<QStringList> table;  // the table of points as shown: the column headers, then each row after its header
    QList<Field> results;
    QString error;  // the text of the error box, when the calculation failed
    QString language;  // of the window, as in "ru" or "en"
    QString logFile;
    qint64 logBegin = 0;  // the calculation's lines: [logBegin, logEnd) of the log file
    qint64 logEnd = 0;
    QString logProblem;  // why the run log was not written in full, when it was not

    // The calculation's lines of the run log; false (and why) when the file
    // cannot be read back as it was written.
    bool readTrace(QByteArray& trace, QString& problem) const;

    // The whole page, UTF-8; plotSvg is the plot as an SVG document. Empty
    // when the progress cancels it.
    QByteArray toHtml(const QByteArray& trace, const QByteArray& plotSvg, const Progress& progress) const;

    // Draws the pages onto a PDF writer or a printer, the plot from `plot`
    // through Qwt's renderer. False when the progress cancels it.
    bool paint(QPagedPaintDevice& pages, const QByteArray& trace, QwtPlot& plot, const Progress& progress) const;

    // The plot as it is shown, as an SVG document.
    static QByteArray svgOf(QwtPlot& plot);

private:
    QString title() const;
    QString when() const;
    QString traceNote() const;
};
