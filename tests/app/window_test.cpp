#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include <QtWidgets>
#include <qwt_legend.h>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "window_harness.h"

namespace {

// The bare form on a plain window: what setupUi alone builds that the user meets as behaviour (the geometry, fonts
// and texts of the widgets live in the form file only; the layout tests below and the desktop tests check what they
// show).
TEST(Form, WindowInputLimitsAndTabOrder) {
    QWidget host;
    Ui_Widget ui;
    ui.setupUi(&host);
    const auto child = [&host](const char* name) {
        QWidget* widget = host.findChild<QWidget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    };
    for (const char* name : {"res1", "res2", "eps1", "eps2"})
        EXPECT_TRUE(child(name)->property("readOnly").toBool()) << name;
    EXPECT_FALSE(ui.exprFunc->isReadOnly());
    QTabWidget* tabs = ui.tabWidget;
    EXPECT_EQ(tabs->count(), 2);
    EXPECT_EQ(tabs->currentIndex(), 0);
    const std::pair<const char*, const char*> pages[] = {{"tab", "Ввод данных"}, {"tab_2", "Результат"}};
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(tabs->widget(i) == child(pages[i].first) && tabs->tabText(i) == u(pages[i].second)) << i;

    EXPECT_EQ(host.objectName(), u("Widget"));
    EXPECT_EQ(host.windowTitle(), u("Kalkora"));
    for (const QSize& size : {host.size(), host.minimumSize(), host.maximumSize()}) EXPECT_EQ(size, QSize(670, 550));
    EXPECT_EQ(host.locale(), QLocale(QLocale::Russian, QLocale::RussianFederation));
    // Minimum, maximum and step as the box shows them (decimals and comma).
    const std::pair<const char*, const char*> ranges[] = {
        {"x1", "-99,9999 99,9999 0,0001"}, {"x2", "-99,9999 99,9999 0,0001"},
        {"h1", "0,01 2,00 0,01"}, {"h2", "0,01 2,00 0,01"}};
    for (const auto& [name, range] : ranges) {
        auto* box = static_cast<QDoubleSpinBox*>(child(name));
        EXPECT_EQ(box->textFromValue(box->minimum()) + " " + box->textFromValue(box->maximum()) + " " +
                      box->textFromValue(box->singleStep()), u(range)) << name;
        EXPECT_EQ(box->locale(), host.locale()) << name;
    }
    EXPECT_EQ(std::make_pair(ui.n->minimum(), ui.n->maximum()), std::make_pair(0, 5));
    EXPECT_EQ(ui.tableFunc->rowCount() + ui.tableFunc->columnCount(), 0);
    EXPECT_TRUE(ui.checkInterpolation->isChecked() && ui.checkRectMethod->isChecked());

    const QStringList wanted = {
        "checkInterpolation", "checkSpline", "checkMNK", "checkDifferentiation", "checkIntegration",
        "x1", "x2", "h1", "h2", "checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod",
        "tableFunc", "exprFunc", "n", "calcButton", "clearButton", "helpButton", "closeButton",
        "tabWidget", "res1", "res2", "eps1", "eps2"};
    // One round of the focus chain, keeping only the chained widgets (compound widgets put their internals in
    // between).
    QStringList order;
    QWidget* at = ui.checkInterpolation;
    do {
        if (wanted.contains(at->objectName()) && !order.contains(at->objectName())) order << at->objectName();
        at = at->nextInFocusChain();
    } while (at != ui.checkInterpolation);
    EXPECT_EQ(order, wanted);
}

// "P_1(x) = " stands for the rich-text label P<sub>1</sub>(x) = in the form the form designer writes; texts without
// '_' are plain.
QString labelText(const char* text) {
    const QString plain = u(text);
    const int at = plain.indexOf('_');
    if (at < 0) return plain;
    return u("<html><head/><body><p>") + plain.left(at) + u("<span style=\" vertical-align:sub;\">") +
           plain.mid(at + 1, 1) + u("</span>") + plain.mid(at + 2) + u("</p></body></html>");
}

const int tableColumns[5] = {4, 5, 6, 5, 0}, tableRows[5] = {1, 2, 2, 2, 0};

// The table of points: shape, headers, the cell editor on every row and 0.0 in every cell from column `keptColumns`
// on.
void expectTable(WindowHarness& h, int columns, int rows, int keptColumns = 0) {
    auto* table = h.child<QTableWidget>("tableFunc");
    ASSERT_EQ(table->columnCount(), columns);
    ASSERT_EQ(table->rowCount(), rows);
    for (int r = 0; r < rows; ++r) {
        EXPECT_EQ(table->model()->headerData(r, Qt::Vertical).toString(), r == 0 ? u("x") : u("f(x)"));
        EXPECT_STREQ(table->itemDelegateForRow(r)->metaObject()->className(), "SpinBoxDelegate");
        for (int c = keptColumns; c < columns; ++c) {
            ASSERT_NE(table->item(r, c), nullptr) << r << ", " << c;
            EXPECT_EQ(table->item(r, c)->data(Qt::DisplayRole), QVariant(0.0)) << r << ", " << c;
        }
    }
    for (int c = 0; c < columns; ++c) {
        EXPECT_EQ(table->model()->headerData(c, Qt::Horizontal).toString(), QString::number(c));
        EXPECT_TRUE(rows == 0 || table->columnWidth(c) == 90) << c;
    }
}

TEST(Window, EachTaskShapesThePanelAndClearKeepsIt) {
    // Shown in tasks 0..4.
    const std::pair<const char*, const char*> shown[] = {
        {"label_f exprFunc", "10001"},
        {"label_n n", "10000"},
        {"label_x1 x1", "11011"},
        {"label_x2 x2 label_h1 h1 label_h2 h2 checkRectMethod checkTrapezMethod checkSimpsonMethod", "00001"},
        {"label_res1 label_res2 res1 res2 frame frame_2 frame_3 frame_4 frame_5 label_func tableFunc plot "
         "calcButton clearButton helpButton closeButton label_task label_parameters label_result label_error",
         "11111"},
        {"label_eps1 eps1", "10101"},
        {"label_eps2 eps2", "00100"},
    };
    // The form's text, then what tasks 0..4 set; nullptr keeps the previous text.
    const struct {
        const char* label;
        bool toolTip;
        const char* texts[6];
    } labels[] = {
        {"label_n", true, {"", "Степень интерполяционного полинома"}},
        {"label_x1", false, {"X* = ", "X* = ", "X* = ", nullptr, "X* = ", "x_1 = "}},
        {"label_x2", false, {"x2 = ", nullptr, nullptr, nullptr, nullptr, "x_2 = "}},
        {"label_h1", false, {"h1 = ", nullptr, nullptr, nullptr, nullptr, "h_1 = "}},
        {"label_h2", false, {"h2 = ", nullptr, nullptr, nullptr, nullptr, "h_2 = "}},
        {"label_res1", false, {"L(x) = ", "L(x) = ", "S(x):", "P_1(x) = ", "f'(X*) = ", "Ans(h_1) = "}},
        {"label_res1", true, {"", "Полином Лагранжа", "Кубический сплайн", "Приближающий многочлен 1-ой степени",
                              "Значение 1-ой производной в точке X*", "Значение интеграла, посчитанного с шагом h1"}},
        {"label_res2", false, {"N(x) = ", "N(x) = ", "S(X*) = ", "P_2(x) = ", "f''(X*) = ", "Ans(h_2) = "}},
        {"label_res2", true, {"", "Полином Ньютона", "Значение сплайна в точке X*", "Приближающий многочлен 2-ой степени",
                              "Значение 2-ой производной в точке X*", "Значение интеграла, посчитанного с шагом h2"}},
        {"label_eps1", false, {"ε1 = ", "ε(X*) = ", nullptr, "ε_1 = ", nullptr, "ε = "}},
        {"label_eps1", true, {"", "Погрешность интерполяции в точке X*", nullptr,
                              "Сумма квадратов ошибок для многочлена P1(x)", nullptr,
                              "Погрешность, вычисленная методом Рунге-Ромберга"}},
        {"label_eps2", false, {"ε2 = ", nullptr, nullptr, "ε_2 = "}},
        {"label_eps2", true, {"", nullptr, nullptr, "Сумма квадратов ошибок для многочлена P2(x)"}},
    };
    std::map<std::pair<std::string, bool>, QString> expected;
    for (const auto& l : labels) expected[{l.label, l.toolTip}] = labelText(l.texts[0]);

    WindowHarness h;
    EXPECT_EQ(h.child<QTabWidget>("tabWidget")->currentIndex(), 0);
    auto* plot = h.child<QwtPlot>("plot");
    ASSERT_EQ(plot->itemList().size(), 1);
    EXPECT_EQ(plot->itemList()[0]->rtti(), QwtPlotItem::Rtti_PlotGrid);
    EXPECT_TRUE(plot->legend() && plot->legend()->isEmpty());
    // Every input and result changed from its initial value.
    const auto dirty = [&h] {
        h.child<QLineEdit>("exprFunc")->setText(u("x^2"));
        for (const char* name : {"x1", "x2", "h1", "h2"}) h.child<QDoubleSpinBox>(name)->setValue(1.5);
        h.click("checkSimpsonMethod");
        h.child<QSpinBox>("n")->setValue(5);
        auto* table = h.child<QTableWidget>("tableFunc");
        for (int r = 0; r < table->rowCount(); ++r)
            for (int c = 0; c < table->columnCount(); ++c) table->item(r, c)->setData(Qt::DisplayRole, 1.5);
        for (const char* name : {"res1", "res2", "eps1", "eps2"}) h.child<QLineEdit>(name)->setText(u("old"));
    };
    const auto expectPanel = [&](int task) {
        EXPECT_TRUE(h.child<QRadioButton>(kTaskButtons[task])->isChecked());
        EXPECT_TRUE(h.child<QRadioButton>("checkRectMethod")->isChecked());
        EXPECT_EQ(h.child<QSpinBox>("n")->value(), 3);
        const std::pair<const char*, double> spins[] = {{"x1", 0}, {"x2", 0}, {"h1", 0.5}, {"h2", 0.25}};
        for (const auto& [name, value] : spins) EXPECT_EQ(h.child<QDoubleSpinBox>(name)->value(), value) << name;
        for (const char* name : {"exprFunc", "res1", "res2", "eps1", "eps2"})
            EXPECT_EQ(h.child<QLineEdit>(name)->text(), QString()) << name;
        expectTable(h, tableColumns[task], tableRows[task]);
        for (const auto& [names, tasks] : shown)
            for (const QString& name : QString::fromLatin1(names).split(' '))
                EXPECT_EQ(!h.child(name.toLatin1())->isHidden(), tasks[task] == '1') << name.toStdString();
        for (const auto& [key, text] : expected) {
            auto* label = h.child<QLabel>(key.first.c_str());
            EXPECT_EQ(key.second ? label->toolTip() : label->text(), text) << key.first << " " << key.second;
        }
    };
    // Start-up selects interpolation; then every task follows each other one and itself. Selecting a task and
    // clearing both reset every input and the results and give the task's layout.
    int step = 0;
    for (int task : {0, 4, 1, 2, 3, 4, 0, 2, 1, 0, 3, 3, 1, 4, 2, 2, 4, 4, 3, 0, 0, 1, 1, 3, 2, 0}) {
        SCOPED_TRACE(std::to_string(step) + " " + kTaskButtons[task]);
        if (step++) {
            dirty();
            h.click(kTaskButtons[task]);
        }
        for (const auto& l : labels)
            if (l.texts[task + 1]) expected[{l.label, l.toolTip}] = labelText(l.texts[task + 1]);
        expectPanel(task);
        dirty();
        h.click("clearButton");
        expectPanel(task);
    }
    EXPECT_TRUE(h.boxes().take().empty());
}

TEST(Window, PointCountResizesTheTableKeepingTypedValues) {
    WindowHarness harness;
    auto* n = harness.child<QSpinBox>("n");
    const double typed[4] = {0.00001, -2.25, 999.99999, -999.99999};
    for (int c = 0; c < 4; ++c) harness.typeCell(0, c, typed[c]);
    n->setValue(5);
    expectTable(harness, 6, 1, 4);
    for (int c = 0; c < 4; ++c) EXPECT_EQ(harness.cell(0, c), typed[c]) << c;
    harness.typeCell(0, 5, 7);
    n->setValue(0);
    expectTable(harness, 1, 1, 1);
    n->setValue(5);
    expectTable(harness, 6, 1, 1);  // the removed columns come back as zeros
    EXPECT_EQ(harness.cell(0, 0), typed[0]);
}

TEST(Window, HelpShowsItsTextAndCloseClosesTheWindow) {
    const char* const help =
        "Для ввода функции f(x) необходимо заполнить соответствующее текстовое поле. Вводимый текст должен являться корректным математическим выражением и может содержать только латинские буквы, цифры, круглые скобки, знаки арифметических операций (+ - * / ^), десятичные разделители (.), знаки экспоненты (e E) и пробелы. Названия функций, переменных и констант должны начинаться с латинских букв, но могут содержать и цифры. При записи вещественных чисел обязательно указывать целую часть (0.1 - корректно, .1 - некорректно). Используемые переменные должны быть известны (в выражении для f(x) можно использовать только переменную x). Если поле не заполнено, функция считается тождественно равной 0.\n\n"
        "C" "писок доступных функций и констант:\n"  // a Latin C
        "sin(x)  cos(x)  tg(x)  ctg(x)  arcsin(x)  arccos(x)  arctg(x)  arcctg(x)  exp(x)  ln(x)  log10(x)  log2(x)  abs(x)  sqrt(x)  sinh(x)  cosh(x)  pi\n\n"
        "Примеры корректных выражений:\nsin(2*pi*x)*exp(-4*pi^2*x)\n0.5 * (1. + 0.2 - 1e-1)\nlog10(3) - ln(3) / ln(10)\n";
    WindowHarness harness;
    harness.click("helpButton");
    const std::vector<CaughtBox> boxes = harness.boxes().take();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u("Справка"));
    EXPECT_EQ(boxes[0].text.toStdString(), help);
    EXPECT_EQ(boxes[0].icon, QMessageBox::Information);
    EXPECT_EQ(boxes[0].buttons, QMessageBox::Ok);
    harness.click("closeButton");
    EXPECT_FALSE(harness.window().isVisible());
}

}  // namespace
