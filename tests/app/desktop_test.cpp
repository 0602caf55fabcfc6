// The window as a student meets it on a desktop: texts that fit their widgets, typing that reaches the calculation by
// every route, the Tab chain, and a plot that shows every point.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QtWidgets>
#include <QTest>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>

#include "window_harness.h"

namespace {

// The pixels a widget's text paints, at the given size: where the widget drawn with its text differs from the widget
// drawn without it.
QImage ink(QWidget* widget, const QSize& size) {
    const QSize kept = widget->size();
    const QString text = widget->property("text").toString();
    widget->resize(size);
    const QImage with = widget->grab().toImage();
    widget->setProperty("text", QString());
    const QImage without = widget->grab().toImage();
    widget->setProperty("text", text);
    widget->resize(kept);
    QImage mask(with.size(), QImage::Format_Mono);
    mask.fill(0);
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x) mask.setPixel(x, y, with.pixel(x, y) != without.pixel(x, y));
    return mask;
}

// How many logical pixels of the text's ink the widget cuts off at its left, right, top and bottom edges. The text is
// drawn once more with room around it; the part of that drawing that matches what the widget shows locates the
// widget's edges in it.
std::vector<int> cutOff(QWidget* widget) {
    const int room = 16;
    const QImage shown = ink(widget, widget->size());
    const QImage full = ink(widget, widget->size() + QSize(2 * room, 2 * room));
    const int w = shown.width(), h = shown.height(), extra = full.width() - w;
    const double ratio = widget->devicePixelRatioF();
    QImage blank = full;
    blank.fill(0);
    if (full == blank) ADD_FAILURE() << widget->objectName().toStdString() << " draws no text";  // a font without Cyrillic
    for (int top = 0; top <= extra; ++top) {
        for (int left = 0; left <= extra; ++left) {
            if (full.copy(left, top, w, h) != shown) continue;
            std::vector<int> cut(4, 0);
            for (int y = 0; y < full.height(); ++y) {
                for (int x = 0; x < full.width(); ++x) {
                    if (!full.pixelIndex(x, y)) continue;
                    const int beyond[4] = {left - x, x - (left + w - 1), top - y, y - (top + h - 1)};
                    for (int e = 0; e < 4; ++e) cut[e] = std::max(cut[e], int(std::ceil(beyond[e] / ratio)));
                }
            }
            return cut;
        }
    }
    ADD_FAILURE() << widget->objectName().toStdString() << ": its text is not drawn where it was";
    return {};
}

// Every label and button text of every task layout, in Russian and in English, at the font resolution this run was
// given.
TEST(Desktop, EveryTextFitsItsWidget) {
    for (const bool english : {false, true}) {
        std::optional<InEnglish> language;
        if (english) language.emplace();
        WindowHarness h;
        EXPECT_EQ(h.window().size(), QSize(670, 550));
        for (const char* task : kTaskButtons) {
            h.click(task);
            for (QWidget* widget : h.window().findChildren<QWidget*>()) {
                const QString text = widget->property("text").toString();
                if (widget->isHidden() || text.isEmpty() ||
                    !(qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget)))
                    continue;
                const std::vector<int> cut = cutOff(widget);
                // No ink may be lost sideways; a pixel of a descender or an accent may.
                EXPECT_EQ(cut, (std::vector<int>{0, 0, std::min(cut[2], 1), std::min(cut[3], 1)}))
                    << task << ": " << widget->objectName().toStdString() << " \""
                    << QTextDocumentFragment::fromHtml(text).toPlainText().toStdString()
                    << "\" cut left, right, top, bottom";
            }
        }
    }
}

QWidget* focused() { return QApplication::focusWidget(); }

// Each key goes to whichever widget has the focus when it is typed.
void type(const char* keys) {
    for (const char* key = keys; *key; ++key) QTest::keyClick(focused(), *key);
}

void press(Qt::Key key) { QTest::keyClick(focused(), key); }

// Numbers typed into the spin boxes and the cells as a user would, reaching a calculation: "." works as the decimal
// comma, and the first key typed into a box or an editor that shows a value replaces it, whether the editor was
// opened by a double click, by Tab from the previous cell, by typing on the cell, or clicked into when open.
TEST(Desktop, TypedNumbersReachTheCalculation) {
    WindowHarness h;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&h.window()));
    auto* table = h.child<QTableWidget>("tableFunc");
    h.typeText("exprFunc", u("x"));
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(0, 0)).center());
    type("2.5");
    press(Qt::Key_Tab);
    type("-1,25");
    press(Qt::Key_Tab);
    QWidget* editor = focused();
    QTest::mouseClick(editor->findChild<QLineEdit*>(), Qt::LeftButton, {}, QPoint(editor->width() - 25, 5));
    type("7.");
    press(Qt::Key_Return);
    table->setCurrentCell(0, 3);
    type("0.125");
    press(Qt::Key_Return);
    h.child<QDoubleSpinBox>("x1")->setFocus();
    type("1.5");
    h.calculate();
    const std::vector<double> typed = {2.5, -1.25, 7, 0.125};
    for (int c = 0; c < 4; ++c) EXPECT_EQ(h.cell(0, c), typed[c]) << c;
    auto* dots = static_cast<QwtPlotCurve*>(h.child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve).back());
    ASSERT_EQ(dots->dataSize(), 4u);
    EXPECT_EQ(dots->sample(0), QPointF(-1.25, -1.25));
    EXPECT_EQ(dots->sample(3), QPointF(7, 7));
    EXPECT_EQ(h.child<QDoubleSpinBox>("x1")->value(), 1.5);
    for (const char* name : {"res1", "res2"})  // long polynomials are shown from their start
        EXPECT_EQ(h.child<QLineEdit>(name)->cursorPosition(), 0) << name;

    h.window().activateWindow();  // back from the box
    ASSERT_TRUE(QTest::qWaitForWindowActive(&h.window()));
    h.click("checkIntegration");
    const std::pair<const char*, const char*> spins[] = {{"x1", "-0.5"}, {"x2", "1.0"}, {"h1", "0,25"}, {"h2", ".5"}};
    for (const auto& [name, keys] : spins) {
        QTest::mouseClick(h.child<QDoubleSpinBox>(name)->findChild<QLineEdit*>(), Qt::LeftButton, {}, QPoint(50, 5));
        type(keys);
    }
    h.calculate();
    EXPECT_NE(h.log().find("x1 = -0.5   x2 = 1   h = 0.25\n"), std::string::npos) << h.log();
    EXPECT_NE(h.log().find("x1 = -0.5   x2 = 1   h = 0.5\n"), std::string::npos) << h.log();
}

// Table points at the ends of the range are drawn fully inside the canvas; a calculation without curves brings back
// the start-up axes, numbered without thousands separators on any desktop.
TEST(Desktop, PlotShowsEveryPointAndReturnsToItsStartUpAxes) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    WindowHarness h;
    auto* plot = h.child<QwtPlot>("plot");
    h.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    const auto expectStartUpAxes = [plot] {
        for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
            EXPECT_EQ(plot->axisInterval(axis).minValue(), 0.0) << axis;
            EXPECT_EQ(plot->axisInterval(axis).maxValue(), 1000.0) << axis;
            EXPECT_EQ(plot->axisScaleDraw(axis)->label(1000).text(), u("1000"));
        }
    };
    expectStartUpAxes();
    const std::vector<double> xs = {0, 1, 2, 3, 3.9}, ys = {0, 1, 4, 9, 19.5};  // ends just inside a scale step
    h.click("checkDifferentiation");
    for (int c = 0; c < 5; ++c) h.typeCell(0, c, xs[c]), h.typeCell(1, c, ys[c]);
    h.calculate();
    // Hairlines for the lines, square dots 5 pixels wide for the table's points.
    const struct { const char* title; Qt::GlobalColor color; double width; QwtPlotCurve::CurveStyle style; } pens[] = {
        {"N(x)", Qt::darkGreen, 0, QwtPlotCurve::Lines}, {"N'(x)", Qt::blue, 0, QwtPlotCurve::Lines},
        {"N''(x)", Qt::black, 0, QwtPlotCurve::Lines}, {"f(x)", Qt::red, 5, QwtPlotCurve::Dots}};
    const QwtPlotItemList items = plot->itemList(QwtPlotItem::Rtti_PlotCurve);
    ASSERT_EQ(items.size(), 4);
    for (int k = 0; k < 4; ++k) {
        const auto* curve = static_cast<const QwtPlotCurve*>(items[k]);
        EXPECT_EQ(curve->title().text(), u(pens[k].title));
        EXPECT_EQ(curve->pen(), QPen(QBrush(pens[k].color), pens[k].width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin))
            << pens[k].title;
        EXPECT_EQ(curve->style(), pens[k].style) << pens[k].title;
    }
    // The scales leave a little room beyond the end points, and each point's dot (5 pixels wide) is drawn clear of
    // the canvas frame.
    for (int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        const std::vector<double>& values = axis == QwtPlot::xBottom ? xs : ys;
        const double room = 0.05 * (values.back() - values.front());  // at least, the scales round outwards
        EXPECT_LE(plot->axisInterval(axis).minValue(), values.front() - room) << axis;
        EXPECT_GE(plot->axisInterval(axis).maxValue(), values.back() + room) << axis;
        EXPECT_LT(plot->axisInterval(axis).width(), 2 * (values.back() - values.front())) << axis;
    }
    const QRect canvas = plot->canvas()->contentsRect().adjusted(3, 3, -3, -3);
    for (int c = 0; c < 5; ++c)
        EXPECT_TRUE(canvas.contains(plot->transform(QwtPlot::xBottom, xs[c]), plot->transform(QwtPlot::yLeft, ys[c])))
            << xs[c];
    h.click("checkIntegration");
    h.calculate();
    expectStartUpAxes();
}

// The plot's tools: a wheel notch zooms around the cursor, a left drag pans, the context menu shows the whole plot
// again, saves it through a file dialog and copies it.
TEST(Desktop, PlotToolsZoomPanResetSaveAndCopy) {
    WindowHarness h;
    auto* plot = h.child<QwtPlot>("plot");
    QWidget* canvas = plot->canvas();
    EXPECT_EQ(plot->contextMenuPolicy(), Qt::ActionsContextMenu);
    std::map<std::string, QAction*> actions;
    for (const char* name : {"actionSavePlot", "actionCopyPlot", "actionResetPlot"}) {
        actions[name] = plot->findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_TRUE(actions[name] && plot->actions().contains(actions[name])) << name;
    }
    h.click("checkSpline");
    for (int c = 0; c < 5; ++c) h.typeCell(0, c, c), h.typeCell(1, c, c * c);
    h.calculate();
    h.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    const QwtInterval full = plot->axisInterval(QwtPlot::xBottom);

    const QPoint at(canvas->width() / 4, canvas->height() / 2);
    const double under = plot->canvasMap(QwtPlot::xBottom).invTransform(at.x());
    QWheelEvent notch(at, canvas->mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas, &notch);
    const QwtInterval zoomed = plot->axisInterval(QwtPlot::xBottom);
    EXPECT_NEAR(zoomed.width(), 0.9 * full.width(), 1e-12);
    EXPECT_NEAR(plot->canvasMap(QwtPlot::xBottom).invTransform(at.x()), under, 1e-9 * full.width());

    QTest::mousePress(canvas, Qt::LeftButton, {}, at);
    QTest::mouseMove(canvas, at + QPoint(40, 0));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, at + QPoint(40, 0));
    const QwtInterval panned = plot->axisInterval(QwtPlot::xBottom);
    EXPECT_LT(panned.minValue(), zoomed.minValue());
    EXPECT_NEAR(panned.width(), zoomed.width(), 1e-12);

    actions["actionResetPlot"]->trigger();
    EXPECT_EQ(plot->axisInterval(QwtPlot::xBottom), full);

    // The name typed, the type chosen (if any), the file written and its first bytes; no bytes where it cannot be
    // written and a box says why.
    const struct { const char *typed, *type, *written; QByteArray head; } files[] = {
        {"plot.png", nullptr, "plot.png", "\x89PNG"}, {"plot.svg", nullptr, "plot.svg", "<?xml"},
        {"plot.pdf", nullptr, "plot.pdf", "%PDF"}, {"chosen", "Рисунок SVG (*.svg)", "chosen.svg", "<?xml"},
        {"missing/plot.png", nullptr, "missing/plot.png", ""}};
    const QString dir = QString::fromStdString(h.dir().path()) + u("/");
    for (const auto& f : files) {
        h.boxes().take();
        const QString offered = saveThroughDialog([&] { actions["actionSavePlot"]->trigger(); }, dir + u(f.typed),
                                                  f.type ? u(f.type) : QString());
        EXPECT_EQ(offered, u("Кубический сплайн.png"));
        QFile file(dir + u(f.written));
        EXPECT_EQ(file.open(QIODevice::ReadOnly) ? file.read(f.head.size()) : QByteArray(), f.head) << f.typed;
        const std::vector<CaughtBox> boxes = h.boxes().take();
        ASSERT_EQ(boxes.size(), f.head.isEmpty() ? 1u : 0u) << f.typed;
        if (f.head.isEmpty()) {
            EXPECT_EQ(boxes[0].title, u("Ошибка"));
            EXPECT_TRUE(boxes[0].text.startsWith(u("Не удалось сохранить график в файл ") + dir + u(f.written) + u(": ")));
        }
    }
    EXPECT_EQ(QImage(dir + u("plot.png")).size(), plot->size() * 2);  // drawn at twice a screen's resolution

    QApplication::clipboard()->clear();
    actions["actionCopyPlot"]->trigger();
    EXPECT_FALSE(QApplication::clipboard()->image().isNull());
}

}  // namespace
