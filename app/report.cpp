#include "app/report.h"

#include <algorithm>
#include <cstring>

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QSvgGenerator>
#include <qwt_plot.h>
#include <qwt_plot_renderer.h>

namespace {

// Progress is reported and cancelling looked at every this many trace lines.
constexpr int kLinesPerStep = 500;

QString escaped(const QString& text) {
    return text.toHtmlEscaped();
}

// The trace is ASCII as the log writes it; only the characters HTML reserves change.
void appendEscaped(QByteArray& out, const char* begin, const char* end) {
    for (const char* c = begin; c != end; ++c) {
        switch (*c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        default: out += *c;
        }
    }
}

// The plot as a report shows it: on white, without the canvas frame.
void setUpForReports(QwtPlotRenderer& renderer) {
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame);
}

// Pages written from the top down: a text, a table or a picture goes on
// below the last one, or on a new page when it does not fit.
class PageFlow {
public:
    PageFlow(QPagedPaintDevice& device, QPainter& painter)
        : device_(device), painter_(painter), area_(painter.viewport()) {}

    double width() const { return area_.width(); }

    // Room for `height` more: a new page when the rest of this one is too short.
    double take(double height) {
        if (y_ > 0 && y_ + height > area_.height()) {
            device_.newPage();
            y_ = 0;
        }
        const double top = y_;
        y_ += height;
        return top;
    }

    void text(const QString& text, const QFont& font, double gapAfter) {
        painter_.setFont(font);
        const QRectF box = QFontMetricsF(font, &device_).boundingRect(QRectF(0, 0, width(), 1e9),
                                                                      Qt::TextWordWrap, text);
        const double top = take(box.height());
        painter_.drawText(QRectF(0, top, width(), box.height()), Qt::TextWordWrap, text);
        take(gapAfter);
    }

    // Rows of cells in columns of the given widths, with a thin grid.
    void grid(const QList<QStringList>& rows, const QVector<double>& widths, const QFont& font, double gapAfter) {
        painter_.setFont(font);
        const QFontMetricsF metrics(font, &device_);
        const double pad = metrics.height() / 4;
        for (const QStringList& row : rows) {
            double height = metrics.height();
            for (int c = 0; c < row.size() && c < widths.size(); ++c)
                height = std::max(height, metrics.boundingRect(QRectF(0, 0, widths[c] - 2 * pad, 1e9),
                                                               Qt::TextWordWrap, row[c]).height());
            const double top = take(height + 2 * pad);
            double left = 0;
            for (int c = 0; c < row.size() && c < widths.size(); ++c) {
                const QRectF cell(left, top, widths[c], height + 2 * pad);
                painter_.drawRect(cell);
                painter_.drawText(cell.adjusted(pad, pad, -pad, -pad), Qt::TextWordWrap, row[c]);
                left += widths[c];
            }
        }
        take(gapAfter);
    }

    QPainter& painter() { return painter_; }

private:
    QPagedPaintDevice& device_;
    QPainter& painter_;
    QRect area_;
    double y_ = 0;
};

}  // namespace

QString Report::title() const {
    return tr("Kalkora: отчёт о расчёте «%1»").arg(task);
}

QString Report::when() const {
    return tr("Расчёт выполнен %1").arg(QLocale(language).toString(time, QLocale::LongFormat));
}

QString Report::traceNote() const {
    return logProblem.isEmpty()
               ? QString()
               : tr("Журнал расчёта записан не полностью (%1): строки, которые не удалось записать, потеряны.")
                     .arg(logProblem);
}

bool Report::readTrace(QByteArray& trace, QString& problem) const {
    QFile file(logFile);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(logBegin)) {
        problem = file.errorString();
        return false;
    }
    trace = file.read(logEnd - logBegin);
    if (trace.size() != logEnd - logBegin) {
        problem = tr("файл журнала короче, чем был при расчёте");
        return false;
    }
    return true;
}

QByteArray Report::toHtml(const QByteArray& trace, const QByteArray& plotSvg, const Progress& progress) const {
    QString head;
    head += QStringLiteral("<!DOCTYPE html>\n<html lang=\"%1\">\n<head>\n<meta charset=\"utf-8\">\n").arg(language);
    head += QStringLiteral("<title>%1</title>\n").arg(escaped(title()));
    head += QStringLiteral(
        "<style>\nbody { font-family: sans-serif; margin: 2em; }\n"
        "table { border-collapse: collapse; margin: 0.5em 0; }\n"
        "th, td { border: 1px solid #999; padding: 0.2em 0.6em; text-align: left; }\n"
        "pre { font-family: monospace; font-size: 0.85em; }\n</style>\n</head>\n<body>\n");
    head += QStringLiteral("<h1>%1</h1>\n<p>%2</p>\n").arg(escaped(title()), escaped(when()));

    head += QStringLiteral("<h2>%1</h2>\n<table>\n").arg(escaped(tr("Исходные данные")));
    for (const Field& field : inputs)
        head += QStringLiteral("<tr><th>%1</th><td>%2</td></tr>\n").arg(escaped(field.label), escaped(field.text));
    head += QStringLiteral("</table>\n");
    if (!table.isEmpty()) {
        head += QStringLiteral("<table>\n");
        for (int r = 0; r < table.size(); ++r) {
            head += QStringLiteral("<tr>");
            for (int c = 0; c < table[r].size(); ++c) {
                const char* cell = r == 0 || c == 0 ? "th" : "td";
                head += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(cell), escaped(table[r][c]));
            }
            head += QStringLiteral("</tr>\n");
        }
        head += QStringLiteral("</table>\n");
    }

    head += QStringLiteral("<h2>%1</h2>\n").arg(escaped(tr("Результаты")));
    if (!error.isEmpty()) head += QStringLiteral("<p><strong>%1</strong></p>\n").arg(escaped(error));
    if (!results.isEmpty()) {
        head += QStringLiteral("<table>\n");
        for (const Field& field : results)
            head += QStringLiteral("<tr><th>%1</th><td>%2</td></tr>\n").arg(escaped(field.label), escaped(field.text));
        head += QStringLiteral("</table>\n");
    }
    head += QStringLiteral("<h2>%1</h2>\n").arg(escaped(tr("График")));

    QByteArray page = head.toUtf8();
    // The SVG document without its XML declaration, inline.
    const int svg = plotSvg.indexOf("<svg");
    if (svg >= 0) page += plotSvg.mid(svg) + '\n';

    QString traceHead = QStringLiteral("<h2>%1</h2>\n").arg(escaped(tr("Журнал расчёта")));
    if (!traceNote().isEmpty()) traceHead += QStringLiteral("<p><strong>%1</strong></p>\n").arg(escaped(traceNote()));
    page += traceHead.toUtf8() + "<pre>";
    page.reserve(page.size() + trace.size() + trace.size() / 8 + 64);
    const qint64 lines = trace.count('\n');
    qint64 line = 0;
    for (const char* at = trace.constData(); at != trace.constData() + trace.size();) {
        const char* end = static_cast<const char*>(memchr(at, '\n', trace.constData() + trace.size() - at));
        end = end ? end + 1 : trace.constData() + trace.size();
        appendEscaped(page, at, end);
        at = end;
        if (++line % kLinesPerStep == 0 && !progress(line, lines)) return QByteArray();
    }
    page += "</pre>\n</body>\n</html>\n";
    return page;
}

QByteArray Report::svgOf(QwtPlot& plot) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(plot.size());
    svg.setViewBox(QRect(QPoint(), plot.size()));
    QPainter painter(&svg);
    QwtPlotRenderer renderer;
    setUpForReports(renderer);
    renderer.render(&plot, &painter, QRectF(QPointF(), plot.size()));
    painter.end();
    return buffer.data();
}

bool Report::paint(QPagedPaintDevice& pages, const QByteArray& trace, QwtPlot& plot, const Progress& progress) const {
    pages.setPageSize(QPageSize(QPageSize::A4));
    pages.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    QPainter painter(&pages);
    PageFlow flow(pages, painter);
    // The window's own face; no ligatures or kerning, so that text copied
    // from the document is the text written ("fi", not one glyph for both).
    QFont font = QGuiApplication::font();
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setPointSizeF(10);
    QFont bold = font;
    bold.setBold(true);
    QFont heading = bold;
    heading.setPointSizeF(13);
    const double gap = QFontMetricsF(font, &pages).height();

    flow.text(title(), heading, gap / 2);
    flow.text(when(), font, gap);
    flow.text(tr("Исходные данные"), bold, gap / 3);
    QList<QStringList> fields;
    for (const Field& field : inputs) fields << QStringList{field.label, field.text};
    flow.grid(fields, {flow.width() * 0.3, flow.width() * 0.7}, font, gap / 2);
    if (!table.isEmpty()) flow.grid(table, QVector<double>(table[0].size(), flow.width() / 7), font, gap);

    flow.text(tr("Результаты"), bold, gap / 3);
    if (!error.isEmpty()) flow.text(error, bold, gap / 2);
    fields.clear();
    for (const Field& field : results) fields << QStringList{field.label, field.text};
    flow.grid(fields, {flow.width() * 0.2, flow.width() * 0.8}, font, gap);

    flow.text(tr("График"), bold, gap / 3);
    QwtPlotRenderer renderer;
    setUpForReports(renderer);
    const QSizeF shown = plot.size();
    const double height = flow.width() * shown.height() / shown.width();
    const double top = flow.take(height);
    renderer.render(&plot, &painter, QRectF(0, top, flow.width(), height));
    flow.take(gap);

    flow.text(tr("Журнал расчёта"), bold, gap / 3);
    if (!traceNote().isEmpty()) flow.text(traceNote(), bold, gap / 3);
    // The trace in columns as the log has it.
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setStyleHint(QFont::TypeWriter);
    mono.setFixedPitch(true);
    mono.setStyleStrategy(QFont::PreferNoShaping);
    mono.setPointSizeF(7.5);
    painter.setFont(mono);
    const QFontMetricsF metrics(mono, &pages);
    const QList<QByteArray> lines = trace.split('\n');
    const qint64 count = lines.size() - (trace.endsWith('\n') ? 1 : 0);
    for (qint64 i = 0; i < count; ++i) {
        const double y = flow.take(metrics.lineSpacing());
        painter.drawText(QPointF(0, y + metrics.ascent()), QString::fromLatin1(lines[int(i)]));
        if ((i + 1) % kLinesPerStep == 0 && !progress(i + 1, count)) return false;
    }
    return painter.end();
}
