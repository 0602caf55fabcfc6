// The window by keyboard alone: Tab and Shift+Tab round every control of every layout on both pages, the standard
// keys, and the plot's focus, menu, zoom and pan keys.
#include <gtest/gtest.h>

#include <QtWidgets>
#include <QTest>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>

#include "window_harness.h"

namespace {

QWidget* focused() { return QApplication::focusWidget(); }

void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    if (!focused()) return ADD_FAILURE() << "no widget has the focus";
    QTest::keyClick(focused(), Qt::Key(key), modifiers);
    QApplication::processEvents();  // the table makes its first or last cell current once it has the focus
}

// The window is active again once a message box has closed (a window manager's work on a desktop).
void backFromBox(Widget& window) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

// What has the focus, in the words of the expected walks: a cell as "r,c", the tab bar as "tabs", the plot as "plot".
QString stop(Widget& window) {
    QWidget* at = focused();
    auto* table = window.findChild<QTableWidget*>(u("tableFunc"));
    if (at == table) return QStringLiteral("%1,%2").arg(table->currentRow()).arg(table->currentColumn());
    if (qobject_cast<QTabBar*>(at)) return u("tabs");
    if (qobject_cast<QwtPlotCanvas*>(at)) return u("plot");
    return at ? at->objectName() : u("(none)");
}

// Walks from the current focus with the key until the walk is back where it began.
QString walk(Widget& window, Qt::Key key) {
    QStringList stops{stop(window)};
    for (int i = 0; i < 40 && (stops.size() < 2 || stops.back() != stops.front()); ++i) {
        press(key);
        stops << stop(window);
    }
    return stops.join(' ');
}

// Every cell of a table in row order.
QString cells(int columns, int rows) {
    QStringList all;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c) all << QStringLiteral("%1,%2").arg(r).arg(c);
    return all.join(' ');
}

QString reversed(const QString& walk) {
    QStringList stops = walk.split(' ');
    std::reverse(stops.begin(), stops.end());
    return stops.join(' ');
}

// One row per task layout: the input page's chain from the task button, and the result page's from the tab bar.
TEST(Keyboard, TabAndShiftTabGoRoundEveryControlOfEachPage) {
    const QString buttons = u("calcButton clearButton helpButton closeButton tabs");
    const struct { const char* task; QString inputs; const char* results; } layouts[] = {
        {"checkInterpolation", "x1 " + cells(4, 1) + " exprFunc n", "res1 res2 eps1"},
        {"checkSpline", "x1 " + cells(5, 2), "res1 res2"},
        {"checkMNK", cells(6, 2), "res1 res2 eps1 eps2"},
        {"checkDifferentiation", "x1 " + cells(5, 2), "res1 res2"},
        {"checkIntegration", u("x1 x2 h1 h2 checkRectMethod tableFunc exprFunc"), "res1 res2 eps1"},
    };
    WindowHarness h;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&h.window()));
    EXPECT_EQ(focused()->objectName(), u("checkInterpolation"));
    for (const auto& layout : layouts) {
        h.click(layout.task);
        QTabWidget* pages = h.child<QTabWidget>("tabWidget");
        // The empty table of integration is a stop of its own.
        const QString inputs = QString(layout.inputs).replace(u("tableFunc"), u("-1,-1"));
        const QString input = u(layout.task) + " " + inputs + " " + buttons + " " + u(layout.task);
        const QString result = "tabs " + u(layout.results) + " plot tabs";
        for (const auto& [page, expected] : {std::pair{0, input}, std::pair{1, result}}) {
            pages->setCurrentIndex(page);
            (page == 0 ? h.child<QWidget>(layout.task) : pages->tabBar())->setFocus(Qt::TabFocusReason);
            EXPECT_EQ(walk(h.window(), Qt::Key_Tab).toStdString(), expected.toStdString()) << page;
            EXPECT_EQ(walk(h.window(), Qt::Key_Backtab).toStdString(), reversed(expected).toStdString()) << page;
        }
        pages->setCurrentIndex(0);
    }
}

// A result is read from its start; the plot takes the focus with a visible frame; Shift+F10, or the Menu key as X11 delivers it (the key and a
// context-menu event), opens its menu once; "+", "=", "-" and Ctrl+"+"/"-" zoom around the middle, the arrows pan.
TEST(Keyboard, PlotTakesFocusOpensItsMenuOnceZoomsAndPans) {
    WindowHarness h;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&h.window()));
    h.click("checkSpline");
    for (int c = 0; c < 5; ++c) h.typeCell(0, c, c), h.typeCell(1, c, c * c);
    h.calculate();
    backFromBox(h.window());
    h.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    auto* plot = h.child<QwtPlot>("plot");
    QWidget* canvas = plot->canvas();
    const QImage unfocused = canvas->grab().toImage();
    // On the way, a long result is selected by Tab but shown from its start.
    h.child<QTabWidget>("tabWidget")->tabBar()->setFocus();
    press(Qt::Key_Tab);
    auto* result = h.child<QLineEdit>("res1");
    ASSERT_EQ(focused(), result);
    EXPECT_EQ(result->selectedText(), result->text());
    EXPECT_EQ(result->cursorPosition(), 0);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), canvas);
    EXPECT_NE(canvas->grab().toImage(), unfocused);

    int menus = 0;
    QTimer closer;  // counts each menu that opens and closes it
    QObject::connect(&closer, &QTimer::timeout, [&menus] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) ++menus, menu->close();
    });
    closer.start(10);
    const auto menusAfter = [&](const std::function<void()>& keys) {
        menus = 0;
        keys();
        QTest::qWait(50);
        backFromBox(h.window());
        return menus;
    };
    EXPECT_EQ(menusAfter([] { press(Qt::Key_F10, Qt::ShiftModifier); }), 1);
    EXPECT_EQ(menusAfter([canvas] {
        press(Qt::Key_Menu);
        const QPoint middle = canvas->rect().center();
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, middle, canvas->mapToGlobal(middle));
        QApplication::sendEvent(canvas, &menu);
    }), 1);
    closer.stop();
    ASSERT_EQ(focused(), canvas);

    const auto interval = [plot](int axis) { return plot->axisInterval(axis); };
    const struct { int key; Qt::KeyboardModifiers modifiers; double width; int axis; int moved; } keys[] = {
        {Qt::Key_Plus, Qt::ShiftModifier, 0.9, QwtPlot::xBottom, 0},
        {Qt::Key_Plus, Qt::KeypadModifier, 0.9, QwtPlot::yLeft, 0},
        {Qt::Key_Equal, Qt::NoModifier, 0.9, QwtPlot::xBottom, 0},
        {Qt::Key_Plus, Qt::ControlModifier, 0.9, QwtPlot::xBottom, 0},
        {Qt::Key_Minus, Qt::NoModifier, 1 / 0.9, QwtPlot::yLeft, 0},
        {Qt::Key_Minus, Qt::ControlModifier, 1 / 0.9, QwtPlot::xBottom, 0},
        {Qt::Key_Left, Qt::NoModifier, 1, QwtPlot::xBottom, -1},
        {Qt::Key_Right, Qt::NoModifier, 1, QwtPlot::xBottom, 1},
        {Qt::Key_Up, Qt::NoModifier, 1, QwtPlot::yLeft, 1},
        {Qt::Key_Down, Qt::NoModifier, 1, QwtPlot::yLeft, -1},
    };
    for (const auto& k : keys) {
        const QwtInterval before = interval(k.axis);
        press(k.key, k.modifiers);
        const QwtInterval after = interval(k.axis);
        const QString key = QKeySequence(k.key | k.modifiers).toString();
        EXPECT_NEAR(after.width(), k.width * before.width(), 1e-9 * before.width()) << key.toStdString();
        // Zooming keeps the middle; panning moves by a tenth of the range.
        const double shift = (after.minValue() + after.maxValue() - before.minValue() - before.maxValue()) / 2;
        EXPECT_NEAR(shift, k.moved * 0.1 * before.width(), 0.02 * before.width()) << key.toStdString();
    }
}

// F1 shows the help from either page; Ctrl+Return calculates from any field of the input page, an open cell editor
// included, exactly as «Расчет» does, and leaves the focus where it was; Ctrl+Tab turns the page from the table;
// Ctrl+Q closes the window.
TEST(Keyboard, StandardKeysHelpCalculateTurnThePageAndClose) {
    WindowHarness h;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&h.window()));
    QTabWidget* pages = h.child<QTabWidget>("tabWidget");
    for (int page : {0, 1}) {
        pages->setCurrentIndex(page);
        pages->tabBar()->setFocus();
        press(Qt::Key_F1);
        const std::vector<CaughtBox> help = h.boxes().take();
        ASSERT_EQ(help.size(), 1u) << page;
        EXPECT_EQ(help[0].title, u("Справка"));
        backFromBox(h.window());
    }
    pages->setCurrentIndex(0);

    // Each calculation by click, then the same by key from a field: the same box and the same log lines.
    h.click("checkDifferentiation");
    for (int c = 0; c < 5; ++c) h.typeCell(0, c, c), h.typeCell(1, c, c * c * c);
    h.typeNumber("x1", 2);
    for (const char* field : {"x1", "tableFunc", "calcButton"}) {
        const std::string before = h.log();
        const CaughtBox clicked = h.calculate();
        const std::string byClick = h.log().substr(before.size());
        backFromBox(h.window());
        QWidget* from = h.child<QWidget>(field);
        from->setFocus();
        press(Qt::Key_Return, Qt::ControlModifier);
        const std::vector<CaughtBox> keyed = h.boxes().take();
        ASSERT_EQ(keyed.size(), 1u) << field;
        EXPECT_EQ(keyed[0].text, clicked.text) << field;
        EXPECT_EQ(h.log().substr(before.size() + byClick.size()), byClick) << field;
        backFromBox(h.window());
        EXPECT_EQ(focused(), from) << field;
    }
    // A value typed into a cell editor and not yet committed takes part.
    auto* table = h.child<QTableWidget>("tableFunc");
    table->setFocus();
    table->setCurrentCell(0, 4);
    QTest::keyClicks(table, "5");
    ASSERT_NE(qobject_cast<QDoubleSpinBox*>(focused()), nullptr);
    press(Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(h.boxes().take().size(), 1u);
    backFromBox(h.window());
    EXPECT_EQ(h.cell(0, 4), 5.0);
    EXPECT_NE(h.log().find("Differentiation task begin."), std::string::npos);
    EXPECT_EQ(focused(), table);

    // No calculation from the result page.
    pages->setCurrentIndex(1);
    h.child<QWidget>("res1")->setFocus();
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(h.boxes().take().empty());
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(pages->currentIndex(), 0);
    table->setFocus();
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(pages->currentIndex(), 1);
    EXPECT_EQ(stop(h.window()), u("tabs"));

    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(h.window().isVisible());
}

}  // namespace
