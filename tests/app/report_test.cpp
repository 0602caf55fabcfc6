// The report of a calculation: its inputs, every result as its field shows it, the plot as vector graphics and the
// calculation's own lines of the run log, as an HTML page, a PDF file and a printout; no file where it cannot be
// written; the actions only while the window shows a calculation; the whole run log one action away.
#include <gtest/gtest.h>

#include <sys/mount.h>
#include <unistd.h>

#include <QtWidgets>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTest>

#include <qwt_plot.h>

#include "app/report.h"
#include "window_harness.h"

namespace {

QAction* action(WindowHarness& h, const char* name) {
    return h.child<QWidget>("plot")->findChild<QAction*>(QString::fromLatin1(name));
}

// What poppler reads from a PDF file: its text, or the list of its images.
QString poppler(const char* tool, const QStringList& arguments) {
    QProcess run;
    run.start(QString::fromLatin1(tool), arguments);
    EXPECT_TRUE(run.waitForFinished(60000)) << tool;
    return QString::fromUtf8(run.readAllStandardOutput());
}

QString withoutBlanks(QString text) {
    return text.remove(QRegularExpression(u("\\s")));
}

QString fileText(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Each task and one failure, then the report saved as HTML and as PDF: the inputs and every result text as shown,
// the error as its box said it, the plot as SVG or vector graphics, and the trace byte for byte the log's section.
TEST(Report, HoldsInputsResultsPlotAndTheCalculationsOwnLines) {
    const std::vector<double> xs = {0, 1, 2, 3, 4}, squares = {0, 1, 4, 9, 16};
    const struct { int task; const char* function; std::vector<double> xs, ys; double x1; const char* inputs; } runs[] = {
        {0, "sin(x)", {0, 1, 2, 3}, {}, 1.5, "f(x)|sin(x)|n|3|X*|1,5000"},
        {1, "", xs, squares, 2.5, "X*|2,5000"},
        {2, "", {0, 1, 2, 3, 4, 5}, {1, 3, 2, 5, 4, 6}, 0, ""},
        {3, "", xs, squares, 2, "X*|2,0000"},
        {4, "x^2", {}, {}, 1, "f(x)|x^2|x1|1,0000|x2|0,0000|h1|0,50|h2|0,25|Метод прямоугольников"},
        {4, "y", {}, {}, 1, "f(x)|y"},
    };
    WindowHarness h;
    const QString dir = QString::fromStdString(h.dir().path()) + u("/");
    int n = 0;
    for (const auto& run : runs) {
        SCOPED_TRACE(run.task);
        const std::string before = h.log();
        h.enter(run.task, run.function, run.xs, run.ys, run.x1);
        const CaughtBox box = h.calculate();
        const QString trace = QString::fromStdString(h.log().substr(before.size()));
        QStringList shown;  // the result texts, and the error's box
        for (const char* field : {"res1", "res2", "eps1", "eps2"})
            if (!h.child<QWidget>(field)->isHidden() && !h.field(field).empty()) shown << u(h.field(field).c_str());
        if (box.title == u("Ошибка")) shown << box.text;

        const QString page = dir + QStringLiteral("report%1.html").arg(++n);
        const QString offered = saveThroughDialog([&] { action(h, "actionSaveReport")->trigger(); }, page);
        EXPECT_EQ(offered, h.child<QAbstractButton>(kTaskButtons[run.task])->text() + u(".pdf"));
        const QString html = fileText(page);
        EXPECT_TRUE(html.startsWith(u("<!DOCTYPE html>")) && html.contains(u("<meta charset=\"utf-8\">")));
        EXPECT_TRUE(html.contains(u("<h1>Kalkora: отчёт о расчёте «%1»</h1>\n<p>Расчёт выполнен ").arg(offered.chopped(4))));
        for (const QString& text : u(run.inputs).split('|', Qt::SkipEmptyParts) + shown)
            EXPECT_TRUE(html.contains(text.toHtmlEscaped())) << text.toStdString();
        EXPECT_TRUE(html.contains(u("<svg")) && !html.contains(u("<img")));
        if (run.task != 4) {  // the table of points: column numbers over the x row
            EXPECT_TRUE(html.contains(u("<tr><th></th><th>0</th>")) && html.contains(u("<tr><th>x</th><td>")));
        }
        const int pre = html.indexOf(u("<pre>")) + 5;
        QString lines = html.mid(pre, html.indexOf(u("</pre>")) - pre);
        lines.replace(u("&lt;"), u("<")).replace(u("&gt;"), u(">")).replace(u("&amp;"), u("&"));
        EXPECT_EQ(lines.toStdString(), trace.toStdString());

        const QString pdf = dir + QStringLiteral("report%1").arg(n);  // no extension: the type chosen decides
        saveThroughDialog([&] { action(h, "actionSaveReport")->trigger(); }, pdf, u("Документ PDF (*.pdf)"));
        const QString text = withoutBlanks(poppler("pdftotext", {u("-layout"), pdf + u(".pdf"), u("-")}));
        for (const QString& expected : u(run.inputs).split('|', Qt::SkipEmptyParts) + shown)
            EXPECT_TRUE(text.contains(withoutBlanks(expected))) << expected.toStdString();
        int at = 0;
        for (const QString& line : trace.split('\n', Qt::SkipEmptyParts)) {
            at = text.indexOf(withoutBlanks(line), at);
            ASSERT_GE(at, 0) << line.toStdString();
        }
        // pdfimages lists a header of two lines, then one line per raster image.
        EXPECT_EQ(poppler("pdfimages", {u("-list"), pdf + u(".pdf")}).trimmed().split('\n').size(), 2);
    }
}

// Printing draws the pages it saves: a printer that writes a PDF file gets as many pages with the same text.
TEST(Report, PrintsThePagesItSaves) {
    WindowHarness h;
    h.enter(3, "", {0, 1, 2, 3, 4}, {0, 1, 8, 27, 64}, 2);
    h.calculate();
    const QString dir = QString::fromStdString(h.dir().path()) + u("/");
    saveThroughDialog([&] { action(h, "actionSaveReport")->trigger(); }, dir + u("saved.pdf"));
    QTimer answer;  // prints to a file, as the dialog's own "Print to File (PDF)" does
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
            // The dialog lists the system's printers first and printing to a file last.
            auto* printers = dialog->findChild<QComboBox*>(u("printers"));
            printers->setCurrentIndex(printers->count() - 1);
            dialog->findChild<QLineEdit*>(u("filename"))->setText(dir + u("printed.pdf"));
            QMetaObject::invokeMethod(dialog, "accept");
        }
    });
    answer.start(10);
    action(h, "actionPrintReport")->trigger();
    answer.stop();
    const auto pages = [](const QString& file) {
        return poppler("pdfinfo", {file}).section(u("Pages:"), 1).section('\n', 0, 0).trimmed();
    };
    EXPECT_EQ(pages(dir + u("printed.pdf")).toStdString(), pages(dir + u("saved.pdf")).toStdString());
    EXPECT_EQ(poppler("pdftotext", {u("-layout"), dir + u("printed.pdf"), u("-")}).toStdString(),
              poppler("pdftotext", {u("-layout"), dir + u("saved.pdf"), u("-")}).toStdString());
}

// Cancelling leaves no document: the progress is asked at every 500 trace lines and a "no" ends the work.
TEST(Report, CancelledWorkGivesNoDocument) {
    Report report;
    QByteArray trace;
    for (int i = 0; i < 1000; ++i) trace += "Part: 1   x_left = 0   x_right = 1   Result: 0.5\n";
    QwtPlot plot;
    int asked = 0;
    const Report::Progress cancel = [&asked](qint64 done, qint64 total) { return ++asked, done < total / 2; };
    EXPECT_TRUE(report.toHtml(trace, Report::svgOf(plot), cancel).isEmpty());
    EXPECT_EQ(asked, 1);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&buffer);
    EXPECT_FALSE(report.paint(pdf, trace, plot, cancel));
    EXPECT_EQ(asked, 2);
}

// The actions are there only while the window shows a calculation, failed ones included; «Очистить» and a change of
// task take them away. The run log is opened whole in the desktop's viewer.
TEST(Report, ActionsFollowTheCalculationShownAndTheLogOpens) {
    WindowHarness h;
    const auto enabled = [&h] {
        return action(h, "actionSaveReport")->isEnabled() && action(h, "actionPrintReport")->isEnabled();
    };
    EXPECT_FALSE(enabled());
    EXPECT_EQ(action(h, "actionSaveReport")->shortcut(), QKeySequence(QKeySequence::Save));
    EXPECT_EQ(action(h, "actionPrintReport")->shortcut(), QKeySequence(QKeySequence::Print));
    const std::pair<const char*, const char*> steps[] = {
        {"calcButton", "on"}, {"clearButton", "off"}, {"calcButton", "on"}, {"checkSpline", "off"},
        {"calcButton", "on"}, {"checkSpline", "off"}};
    for (const auto& [button, state] : steps) {
        h.click(button);
        h.boxes().take();
        EXPECT_EQ(enabled(), std::string(state) == "on") << button;
    }

    QTextBrowser viewer;  // stands in for the desktop's viewer of local files
    QDesktopServices::setUrlHandler(u("file"), &viewer, "setSource");
    action(h, "actionOpenRunLog")->trigger();
    QDesktopServices::unsetUrlHandler(u("file"));
    EXPECT_EQ(viewer.source(), QUrl::fromLocalFile(QString::fromStdString(h.dir().path() + "/" + h.logName())));
}

// The save dialog opens where the last save went; closed without a name, it writes nothing and says nothing.
TEST(Report, TheDialogOpensWhereTheLastSaveWentAndCancelWritesNothing) {
    WindowHarness h;
    h.calculate();
    const auto save = [&] { action(h, "actionSaveReport")->trigger(); };
    saveThroughDialog(save, QDir::current().absoluteFilePath(u("first.html")));
    QString opened;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            opened = dialog->directory().absolutePath();
            dialog->reject();
        }
    });
    answer.start(10);
    const QStringList before = QDir::current().entryList(QDir::Files);
    save();
    EXPECT_EQ(opened, QDir::currentPath());
    EXPECT_EQ(QDir::current().entryList(QDir::Files), before);
    EXPECT_TRUE(h.boxes().take().empty());
}

// A folder that cannot be written, or a disk that fills up (root mounts a read-only and a tiny file system there),
// gets a box with the system's reason and no file at all.
TEST(Report, AFileThatCannotBeWrittenLeavesNothingBehind) {
    WindowHarness h;
    h.enter(1, "", {0, 1, 2, 3, 4}, {0, 1, 4, 9, 16}, 2.5);
    h.calculate();
    const struct { unsigned long flags; const char* options; const char* reason; } cases[] = {
        {MS_RDONLY, "", "Read-only file system"}, {0, "size=8k", "No space left on device"}};
    for (const auto& c : cases) {
        TempWorkDir folder;
        if (mount("tmpfs", folder.path().c_str(), "tmpfs", c.flags, c.options) != 0) {
            GTEST_SKIP() << "mounting a tmpfs needs root";
        }
        const QString name = QString::fromStdString(folder.path()) + u("/report.pdf");
        saveThroughDialog([&] { action(h, "actionSaveReport")->trigger(); }, name);
        const std::vector<CaughtBox> boxes = h.boxes().take();
        ASSERT_EQ(boxes.size(), 1u) << c.options;
        EXPECT_EQ(boxes[0].text.toStdString(), u("Не удалось сохранить отчёт в файл %1: %2").arg(name, u(c.reason)).toStdString());
        EXPECT_TRUE(QDir(QString::fromStdString(folder.path())).entryList(QDir::NoDotAndDotDot | QDir::AllEntries)
                        .isEmpty()) << c.options;
        umount2(folder.path().c_str(), MNT_DETACH);
    }
}

}  // namespace
