// What a screen reader is given: every control named in words after the label it shows in each layout, every cell
// with its place, a plot that says what it shows, and no container below the window that claims to be a window.
#include <gtest/gtest.h>

#include <QtWidgets>
#include <qwt_plot.h>

#include "window_harness.h"

namespace {

QAccessibleInterface* accessible(QObject* object) { return QAccessible::queryAccessibleInterface(object); }
std::string spoken(QObject* object, QAccessible::Text text = QAccessible::Name) {
    return accessible(object)->text(text).toStdString();
}

// The controls a user can reach on the current page: shown, taking the focus by Tab, and not the inner part of
// another control (a spin box's line edit, a widget standing in for its focus proxy).
QList<QWidget*> reachable(Widget& window) {
    QList<QWidget*> controls;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (w->isVisible() && (w->focusPolicy() & Qt::TabFocus) && !w->focusProxy() &&
            !qobject_cast<QAbstractSpinBox*>(w->parentWidget()))
            controls << w;
    }
    return controls;
}

TEST(Accessibility, EveryControlIsNamedAfterTheLabelItShowsInEachLayout) {
    // The names of x1 x2 h1 h2 exprFunc n res1 res2 eps1 eps2 where shown ("-" where hidden), and res1's description.
    const struct { const char* task; const char* names; const char* res1Description; } layouts[] = {
        {"checkInterpolation", "X* - - - f(x) n L(x) N(x) ε(X*) -", "Полином Лагранжа"},
        {"checkSpline", "X* - - - - - S(x) S(X*) - -", "Кубический сплайн"},
        {"checkMNK", "- - - - - - P1(x) P2(x) ε1 ε2", "Приближающий многочлен 1-ой степени"},
        {"checkDifferentiation", "X* - - - - - f'(X*) f''(X*) - -", "Значение 1-ой производной в точке X*"},
        {"checkIntegration", "x1 x2 h1 h2 f(x) - Ans(h1) Ans(h2) ε -", "Значение интеграла, посчитанного с шагом h1"},
    };
    const char* const fields[] = {"x1", "x2", "h1", "h2", "exprFunc", "n", "res1", "res2", "eps1", "eps2"};
    WindowHarness h;
    auto* pages = h.child<QTabWidget>("tabWidget");
    for (const auto& layout : layouts) {
        h.click(layout.task);
        const QStringList names = u(layout.names).split(' ');
        for (int i = 0; i < 10; ++i) {
            QWidget* field = h.child<QWidget>(fields[i]);
            EXPECT_EQ(field->isHidden() ? "-" : spoken(field), names[i].toStdString()) << layout.task << " " << fields[i];
        }
        EXPECT_EQ(spoken(h.child<QWidget>("res1"), QAccessible::Description), layout.res1Description);
        EXPECT_EQ(spoken(h.child<QWidget>("tableFunc")), "Исходная функция");
        for (int page : {0, 1}) {
            pages->setCurrentIndex(page);
            for (QWidget* control : reachable(h.window())) {
                const std::string name = spoken(control);
                EXPECT_TRUE(!name.empty() && name.find('<') == std::string::npos)
                    << layout.task << " " << control->objectName().toStdString() << ": \"" << name << "\"";
            }
        }
        pages->setCurrentIndex(0);
    }
}

// No ancestor of any widget below the window is a border, a window or a dialog (a screen reader would take it for a
// window of its own and drop the focus changes inside it); the frames are groupings named after their titles, the
// plot is a chart.
TEST(Accessibility, ContainersAreGroupingsNamedAfterTheirTitles) {
    WindowHarness h;
    QAccessibleInterface* window = accessible(&h.window());
    for (QWidget* widget : h.window().findChildren<QWidget*>()) {
        for (QAccessibleInterface* up = accessible(widget)->parent(); up && up != window; up = up->parent()) {
            const QAccessible::Role role = up->role();
            EXPECT_TRUE(role != QAccessible::Border && role != QAccessible::Window && role != QAccessible::Dialog)
                << widget->objectName().toStdString() << " lies in a " << role;
        }
    }
    const std::pair<const char*, const char*> frames[] = {
        {"frame", "Решаемая задача"}, {"frame_2", "Исходная функция"}, {"frame_3", "Другие параметры"},
        {"frame_4", "Решение"}, {"frame_5", "Погрешность"}};
    for (const auto& [frame, title] : frames) {
        EXPECT_EQ(accessible(h.child<QWidget>(frame))->role(), QAccessible::Grouping) << frame;
        EXPECT_EQ(spoken(h.child<QWidget>(frame)), title);
    }
    QWidget* canvas = h.child<QwtPlot>("plot")->canvas();
    EXPECT_EQ(accessible(canvas)->role(), QAccessible::Chart);
    EXPECT_EQ(spoken(canvas), "График");
}

// A cell says its row, its column and the value it shows; its editor says where it is; the plot describes its curves
// and their range after each calculation, and says it is empty after a clear.
TEST(Accessibility, CellsSayWhereTheyAreAndThePlotWhatItShows) {
    WindowHarness h;
    auto* table = h.child<QTableWidget>("tableFunc");
    QWidget* canvas = h.child<QwtPlot>("plot")->canvas();
    const auto cell = [&](int row, int column) {
        return accessible(table)->tableInterface()->cellAt(row, column)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(spoken(canvas, QAccessible::Description), "нет кривых");
    h.typeText("exprFunc", u("x"));
    for (int c = 0; c < 4; ++c) h.typeCell(0, c, c - 0.5);
    EXPECT_EQ(cell(0, 0), "x, столбец 0: -0,5");
    EXPECT_EQ(cell(0, 3), "x, столбец 3: 2,5");
    h.calculate();
    EXPECT_EQ(spoken(canvas, QAccessible::Description), "f(x), N(x) на отрезке [-0,5; 2,5]");

    h.click("checkMNK");
    EXPECT_EQ(spoken(canvas, QAccessible::Description), "нет кривых");
    EXPECT_EQ(cell(1, 5), "f(x), столбец 5: 0");
    for (int c = 0; c < 6; ++c) h.typeCell(0, c, c), h.typeCell(1, c, 2 * c);
    EXPECT_EQ(cell(1, 5), "f(x), столбец 5: 10");
    h.calculate();
    EXPECT_EQ(spoken(canvas, QAccessible::Description), "f(x), P1(x), P2(x) на отрезке [0; 5]");

    table->setCurrentCell(1, 2);
    table->editItem(table->item(1, 2));
    QWidget* editor = table->indexWidget(table->model()->index(1, 2));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(spoken(editor), "f(x), столбец 2");
}

}  // namespace
