// The window's language: chosen from the desktop's languages; in English no Russian is left in any text a user sees
// or hears, numbers take a decimal point, and the run log stays as it is.
#include <gtest/gtest.h>

#include <QtWidgets>
#include <QTest>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "app/translations.h"
#include "window_harness.h"

namespace {

void removeTranslations() {
    for (QTranslator* translator : QCoreApplication::instance()->findChildren<QTranslator*>()) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

// The desktop's languages, most preferred first (as LANGUAGE=de:en gives them), and the translation installed.
TEST(Translation, TheFirstLanguageThatIsRussianOrTranslatedWins) {
    const std::pair<const char*, const char*> rows[] = {
        {"en", "en"}, {"en-GB", "en"}, {"de:en-US", "en"}, {"C:en", "en"},
        {"ru:en", ""}, {"ru-RU", ""}, {"C", ""}, {"de", ""}, {"", ""}};
    for (const auto& [languages, installed] : rows) {
        const QStringList list = u(languages).split(':', Qt::SkipEmptyParts);
        EXPECT_EQ(installTranslations(list), u(installed)) << languages;
        EXPECT_EQ(QCoreApplication::translate("Widget", "Расчет"), *installed ? u("Calculate") : u("Расчет"))
            << languages;
        removeTranslations();
    }
}

bool russian(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x400 && c.unicode() < 0x530; });
}

// Every text of the current page a user sees or a screen reader says: texts, tool tips, tab titles, table headers,
// accessible names and descriptions, the legend and the plot's menu.
QStringList texts(Widget& window) {
    QStringList all{window.windowTitle()};
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        all << widget->property("text").toString() << widget->toolTip() << spoken->text(QAccessible::Name)
            << spoken->text(QAccessible::Description);
        for (QAction* action : widget->actions()) all << action->text();
        if (auto* tabs = qobject_cast<QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i) all << tabs->tabText(i);
        if (auto* table = qobject_cast<QTableWidget*>(widget)) {
            for (int r = 0; r < table->rowCount(); ++r) all << table->model()->headerData(r, Qt::Vertical).toString();
            for (int r = 0; r < table->rowCount(); ++r)
                for (int c = 0; c < table->columnCount(); ++c) all << table->item(r, c)->data(Qt::AccessibleTextRole).toString();
        }
        if (auto* plot = qobject_cast<QwtPlot*>(widget))
            for (QwtPlotItem* item : plot->itemList()) all << item->title().text();
    }
    return all.filter(QRegularExpression(u("[\u0400-\u052f]")));
}

// Each layout on both pages, the help, a calculation of each task and an error of every kind: nothing in Russian, and
// the run log of each error byte for byte the one the Russian window writes.
TEST(Translation, TheEnglishWindowHasNoRussianLeftAndTheSameLog) {
    const std::vector<double> line = {1, 3, 5, 7, 9};
    const struct { int task; const char* function; std::vector<double> xs, ys; double x1; } runs[] = {
        {0, "x^2", {0, 1, 2, 3}, {}, 1.5},
        {1, "", {0, 1, 2, 3, 4}, line, 2},
        {2, "", {0, 1, 2, 3, 4, 5}, {1, 3, 2, 5, 4, 6}, 0},
        {3, "", {0, 1, 2, 3, 4}, line, 2},
        {4, "x", {}, {}, 1},
        {4, "x^", {}, {}, 1},                                  // wrong format
        {4, "1/(x+0.75)", {}, {}, -1},                         // bad result
        {4, "y", {}, {}, -1},                                  // unknown variable
        {3, "", {}, {}, 0},                                    // equal points
        {1, "", {6, 7, 8, 9, 10}, line, 10.0001},              // spline undefined
        {2, "", {0, 0.00001, 0.00002, 0.00003, 0.00004, 0.00005}, line, 0},  // singular matrix
    };
    for (const auto& run : runs) {
        SCOPED_TRACE(run.function);
        std::string russianLog;
        {
            WindowHarness h;
            h.enter(run.task, run.function, run.xs, run.ys, run.x1);
            h.calculate();
            russianLog = h.log();
        }
        InEnglish english;
        WindowHarness h;
        h.enter(run.task, run.function, run.xs, run.ys, run.x1);
        const CaughtBox box = h.calculate();
        EXPECT_FALSE(box.text.isEmpty() || russian(box.title + box.text)) << box.text.toStdString();
        EXPECT_EQ(h.log(), russianLog);
        auto* pages = h.child<QTabWidget>("tabWidget");
        for (int page : {0, 1}) {
            pages->setCurrentIndex(page);
            EXPECT_EQ(texts(h.window()).join('|').toStdString(), "") << run.task << " page " << page;
        }
    }
    InEnglish english;
    WindowHarness h;
    h.click("helpButton");
    const std::vector<CaughtBox> help = h.boxes().take();
    ASSERT_EQ(help.size(), 1u);
    EXPECT_FALSE(russian(help[0].title + help[0].text));
}

// English numbers: a decimal point in the boxes and the cells, "," typed as "." is, and no group separator.
TEST(Translation, EnglishNumbersTakeADecimalPointAndACommaTypedAsOne) {
    InEnglish english;
    WindowHarness h;
    EXPECT_EQ(h.child<QDoubleSpinBox>("h1")->text(), u("0.50"));
    auto* x1 = h.child<QDoubleSpinBox>("x1");
    x1->setFocus();
    x1->selectAll();
    QTest::keyClicks(x1, "1,25");
    EXPECT_EQ(x1->value(), 1.25);
    h.click("checkSpline");
    h.typeCell(0, 0, 999.99999);
    EXPECT_EQ(h.child<QTableWidget>("tableFunc")->item(0, 0)->data(Qt::AccessibleTextRole).toString(),
              u("x, column 0: 1000"));
}

}  // namespace
