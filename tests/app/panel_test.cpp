#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include <QDir>
#include <QDoubleSpinBox>
#include <QImage>
#include <QItemDelegate>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleOptionViewItem>
#include <QTabWidget>
#include <QTableWidget>
#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_item.h>

#include "window_harness.h"

namespace {

QString u(const char* text) {
    return QString::fromUtf8(text);
}

QString rich(const char* base, const char* subscript, const char* tail) {
    return u("<html><head/><body><p>") + u(base) + u("<span style=\" vertical-align:sub;\">") +
           u(subscript) + u("</span>") + u(tail) + u("</p></body></html>");
}

const char* const taskButtons[5] = {"checkInterpolation", "checkSpline", "checkMNK",
                                    "checkDifferentiation", "checkIntegration"};

std::vector<std::string> words(const char* names) {
    std::vector<std::string> result;
    std::string word;
    for (const char* c = names;; ++c) {
        if (*c == ' ' || *c == '\0') {
            if (!word.empty()) result.push_back(word);
            word.clear();
            if (*c == '\0') break;
        } else {
            word += *c;
        }
    }
    return result;
}

TEST(RichLabel, HasTheDesignerForm) {
    EXPECT_EQ(rich("x", "1", " = "),
              u("<html><head/><body><p>x<span style=\" vertical-align:sub;\">1</span> = "
                "</p></body></html>"));
}

TEST(TaskSelection, ShowsExactlyTheWidgetsOfTheTask) {
    const struct {
        const char* names;
        bool shown[5];
    } cases[] = {
        {"label_f exprFunc", {true, false, false, false, true}},
        {"label_n n", {true, false, false, false, false}},
        {"label_x1 x1", {true, true, false, true, true}},
        {"label_x2 x2 label_h1 h1 label_h2 h2", {false, false, false, false, true}},
        {"checkRectMethod checkTrapezMethod checkSimpsonMethod", {false, false, false, false, true}},
        {"label_res1 label_res2 res1 res2", {true, true, true, true, true}},
        {"label_eps1 eps1", {true, false, true, false, true}},
        {"label_eps2 eps2", {false, false, true, false, false}},
        {"frame frame_2 frame_3 frame_4 frame_5 label_func tableFunc plot calcButton "
         "clearButton helpButton closeButton label_task label_parameters label_result label_error",
         {true, true, true, true, true}},
    };
    WindowHarness harness;
    // Start-up selects interpolation; then every task from each other one.
    bool started = false;
    for (int task : {0, 4, 1, 2, 3, 4, 0, 2, 1, 0, 3}) {
        if (started) harness.click(taskButtons[task]);
        started = true;
        EXPECT_TRUE(harness.child<QRadioButton>(taskButtons[task])->isChecked());
        for (const auto& c : cases) {
            for (const std::string& name : words(c.names)) {
                EXPECT_EQ(!harness.child(name.c_str())->isHidden(), c.shown[task])
                    << name << " in task " << task;
            }
        }
    }
}

// What each task sets; nullptr leaves the previous text in place.
struct Setting {
    const char* label;
    bool toolTip;
    QString values[5];
};

std::vector<Setting> taskSettings() {
    const QString keep;
    return {
        {"label_n", true, {u("Степень интерполяционного полинома"), keep, keep, keep, keep}},
        {"label_x1", false, {u("X* = "), u("X* = "), keep, u("X* = "), rich("x", "1", " = ")}},
        {"label_x2", false, {keep, keep, keep, keep, rich("x", "2", " = ")}},
        {"label_h1", false, {keep, keep, keep, keep, rich("h", "1", " = ")}},
        {"label_h2", false, {keep, keep, keep, keep, rich("h", "2", " = ")}},
        {"label_res1", false,
         {u("L(x) = "), u("S(x):"), rich("P", "1", "(x) = "), u("f'(X*) = "), rich("Ans(h", "1", ") = ")}},
        {"label_res1", true,
         {u("Полином Лагранжа"), u("Кубический сплайн"), u("Приближающий многочлен 1-ой степени"),
          u("Значение 1-ой производной в точке X*"), u("Значение интеграла, посчитанного с шагом h1")}},
        {"label_res2", false,
         {u("N(x) = "), u("S(X*) = "), rich("P", "2", "(x) = "), u("f''(X*) = "), rich("Ans(h", "2", ") = ")}},
        {"label_res2", true,
         {u("Полином Ньютона"), u("Значение сплайна в точке X*"), u("Приближающий многочлен 2-ой степени"),
          u("Значение 2-ой производной в точке X*"), u("Значение интеграла, посчитанного с шагом h2")}},
        {"label_eps1", false, {u("ε(X*) = "), keep, rich("ε", "1", " = "), keep, u("ε = ")}},
        {"label_eps1", true,
         {u("Погрешность интерполяции в точке X*"), keep, u("Сумма квадратов ошибок для многочлена P1(x)"),
          keep, u("Погрешность, вычисленная методом Рунге-Ромберга")}},
        {"label_eps2", false, {keep, keep, rich("ε", "2", " = "), keep, keep}},
        {"label_eps2", true, {keep, keep, u("Сумма квадратов ошибок для многочлена P2(x)"), keep, keep}},
    };
}

TEST(TaskSelection, LabelsKeepTheTextOfTheLastTaskThatSetIt) {
    // The form's own texts, before any task slot ran.
    std::map<std::pair<std::string, bool>, QString> expected = {
        {{"label_n", true}, QString()},       {{"label_x1", false}, u("X* = ")},
        {{"label_x2", false}, u("x2 = ")},    {{"label_h1", false}, u("h1 = ")},
        {{"label_h2", false}, u("h2 = ")},    {{"label_res1", false}, u("L(x) = ")},
        {{"label_res1", true}, QString()},    {{"label_res2", false}, u("N(x) = ")},
        {{"label_res2", true}, QString()},    {{"label_eps1", false}, u("ε1 = ")},
        {{"label_eps1", true}, QString()},    {{"label_eps2", false}, u("ε2 = ")},
        {{"label_eps2", true}, QString()},
    };
    const std::vector<Setting> settings = taskSettings();
    WindowHarness harness;
    bool started = false;
    for (int task : {0, 4, 0, 2, 1, 3, 2, 4, 3, 1, 0}) {
        if (started) harness.click(taskButtons[task]);
        started = true;
        for (const Setting& s : settings) {
            if (!s.values[task].isNull()) expected[{s.label, s.toolTip}] = s.values[task];
        }
        for (const auto& [key, text] : expected) {
            auto* label = harness.child<QLabel>(key.first.c_str());
            EXPECT_EQ(key.second ? label->toolTip() : label->text(), text)
                << key.first << (key.second ? " tool tip" : " text") << " after task " << task;
        }
    }
}

void expectTable(WindowHarness& harness, int columns, const QStringList& rowHeaders,
                 const char* context) {
    auto* table = harness.child<QTableWidget>("tableFunc");
    ASSERT_EQ(table->columnCount(), columns) << context;
    ASSERT_EQ(table->rowCount(), rowHeaders.size()) << context;
    EXPECT_FALSE(table->isHidden()) << context;
    for (int r = 0; r < rowHeaders.size(); ++r) {
        ASSERT_NE(table->verticalHeaderItem(r), nullptr) << context;
        EXPECT_EQ(table->verticalHeaderItem(r)->text(), rowHeaders[r]) << context;
        EXPECT_STREQ(table->itemDelegateForRow(r)->metaObject()->className(), "SpinBoxDelegate")
            << context;
        for (int c = 0; c < columns; ++c) {
            QTableWidgetItem* item = table->item(r, c);
            ASSERT_NE(item, nullptr) << context << " cell " << r << "," << c;
            EXPECT_EQ(item->data(Qt::DisplayRole).type(), QVariant::Double) << context;
            EXPECT_EQ(item->data(Qt::DisplayRole).toDouble(), 0.0) << context;
        }
    }
    for (int c = 0; c < columns; ++c) {
        ASSERT_NE(table->horizontalHeaderItem(c), nullptr) << context;
        EXPECT_EQ(table->horizontalHeaderItem(c)->text(), QString::number(c)) << context;
        if (!rowHeaders.isEmpty()) {
            EXPECT_EQ(table->columnWidth(c), 90) << context;
        }
    }
}

TEST(TaskSelection, SizesAndLabelsTheTableOfPoints) {
    const struct {
        int task;
        int columns;
        QStringList rows;
    } cases[] = {
        {1, 5, {"x", "f(x)"}},
        {2, 6, {"x", "f(x)"}},
        {3, 5, {"x", "f(x)"}},
        {4, 0, {}},
        {0, 4, {"x"}},
    };
    WindowHarness harness;
    expectTable(harness, 4, {"x"}, "at start-up");
    for (const auto& c : cases) {
        harness.click(taskButtons[c.task]);
        expectTable(harness, c.columns, c.rows, taskButtons[c.task]);
    }
}

TEST(TaskSelection, StartsWithInterpolationOnTheInputTabAndAnEmptyPlot) {
    WindowHarness harness;
    EXPECT_TRUE(harness.child<QRadioButton>("checkInterpolation")->isChecked());
    EXPECT_TRUE(harness.child<QRadioButton>("checkRectMethod")->isChecked());
    EXPECT_EQ(harness.child<QTabWidget>("tabWidget")->currentIndex(), 0);
    auto* plot = harness.child<QwtPlot>("plot");
    const QwtPlotItemList items = plot->itemList();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0]->rtti(), QwtPlotItem::Rtti_PlotGrid);
    ASSERT_NE(plot->legend(), nullptr);
    EXPECT_TRUE(plot->legend()->isEmpty());
    EXPECT_EQ(harness.child<QDoubleSpinBox>("h1")->text(), u("0,50"));
    EXPECT_TRUE(harness.boxes().take().empty());
}

TEST(PointCount, SizesTheInterpolationTable) {
    const struct {
        int n;
        int columns;
    } cases[] = {{0, 1}, {5, 6}, {1, 2}, {4, 5}, {3, 4}};
    WindowHarness harness;
    for (const auto& c : cases) {
        harness.child<QSpinBox>("n")->setValue(c.n);
        const std::string context = "n = " + std::to_string(c.n);
        expectTable(harness, c.columns, {"x"}, context.c_str());
    }
}

TEST(PointCount, KeepsTypedValuesAndDiscardsRemovedColumns) {
    const double typed[4] = {1.5, -2.25, 999.99999, -999.99999};
    WindowHarness harness;
    auto* n = harness.child<QSpinBox>("n");
    for (int c = 0; c < 4; ++c) harness.typeCell(0, c, typed[c]);
    for (int c = 0; c < 4; ++c) ASSERT_EQ(harness.cell(0, c), typed[c]) << "typed into column " << c;

    n->setValue(5);
    for (int c = 0; c < 4; ++c) EXPECT_EQ(harness.cell(0, c), typed[c]) << "column " << c;
    EXPECT_EQ(harness.cell(0, 4), 0.0);
    EXPECT_EQ(harness.cell(0, 5), 0.0);

    harness.typeCell(0, 4, 7);
    harness.typeCell(0, 5, 8);
    n->setValue(3);
    EXPECT_EQ(harness.child<QTableWidget>("tableFunc")->columnCount(), 4);
    n->setValue(5);
    for (int c = 0; c < 4; ++c) EXPECT_EQ(harness.cell(0, c), typed[c]) << "column " << c;
    EXPECT_EQ(harness.cell(0, 4), 0.0) << "a removed column came back";
    EXPECT_EQ(harness.cell(0, 5), 0.0) << "a removed column came back";
}

TEST(CellEditor, IsAFiveDecimalSpinBoxOverTheCellRange) {
    WindowHarness harness;
    auto* table = harness.child<QTableWidget>("tableFunc");
    harness.click("checkMNK");
    for (int row = 0; row < 2; ++row) {
        QAbstractItemDelegate* delegate = table->itemDelegateForRow(row);
        ASSERT_NE(delegate, nullptr);
        QWidget* editor = delegate->createEditor(table->viewport(), QStyleOptionViewItem(),
                                                 table->model()->index(row, 0));
        auto* box = qobject_cast<QDoubleSpinBox*>(editor);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->parent(), table->viewport());
        EXPECT_EQ(box->decimals(), 5);
        EXPECT_DOUBLE_EQ(box->minimum(), -999.99999);
        EXPECT_DOUBLE_EQ(box->maximum(), 999.99999);
        EXPECT_DOUBLE_EQ(box->singleStep(), 0.00001);
        EXPECT_EQ(box->value(), 0.0);
        delete editor;
    }
    // Both rows are edited through it and store doubles.
    harness.typeCell(0, 5, 0.00001);
    harness.typeCell(1, 5, -123.45678);
    EXPECT_EQ(harness.cell(0, 5), 0.00001);
    EXPECT_EQ(harness.cell(1, 5), -123.45678);
    EXPECT_EQ(table->item(1, 5)->data(Qt::DisplayRole).type(), QVariant::Double);
}

TEST(ClearButton, ResetsEveryInputAndKeepsTheTaskAndLayout) {
    for (int task = 0; task < 5; ++task) {
        SCOPED_TRACE(taskButtons[task]);
        WindowHarness harness;
        harness.click(taskButtons[task]);
        auto* table = harness.child<QTableWidget>("tableFunc");
        const int columns = table->columnCount();
        const int rows = table->rowCount();

        harness.child<QLineEdit>("exprFunc")->setText(u("x^2"));
        harness.child<QDoubleSpinBox>("x1")->setValue(1.5);
        harness.child<QDoubleSpinBox>("x2")->setValue(-2);
        harness.child<QDoubleSpinBox>("h1")->setValue(0.1);
        harness.child<QDoubleSpinBox>("h2")->setValue(0.05);
        harness.click("checkSimpsonMethod");
        harness.child<QSpinBox>("n")->setValue(5);
        for (int r = 0; r < table->rowCount(); ++r)
            for (int c = 0; c < table->columnCount(); ++c) harness.typeCell(r, c, r + c + 0.5);
        for (const char* name : {"res1", "res2", "eps1", "eps2"})
            harness.child<QLineEdit>(name)->setText(u("old"));

        std::map<std::string, std::pair<bool, QString>> layout;
        for (QLabel* label : harness.window().findChildren<QLabel*>())
            layout[label->objectName().toStdString()] = {label->isHidden(), label->text() + label->toolTip()};

        harness.click("clearButton");

        EXPECT_TRUE(harness.child<QRadioButton>(taskButtons[task])->isChecked());
        EXPECT_EQ(harness.child<QLineEdit>("exprFunc")->text(), QString());
        EXPECT_EQ(harness.child<QDoubleSpinBox>("x1")->value(), 0.0);
        EXPECT_EQ(harness.child<QDoubleSpinBox>("x2")->value(), 0.0);
        EXPECT_EQ(harness.child<QDoubleSpinBox>("h1")->value(), 0.5);
        EXPECT_EQ(harness.child<QDoubleSpinBox>("h2")->value(), 0.25);
        EXPECT_TRUE(harness.child<QRadioButton>("checkRectMethod")->isChecked());
        EXPECT_EQ(harness.child<QSpinBox>("n")->value(), 3);
        QStringList rowHeaders;
        if (rows >= 1) rowHeaders << u("x");
        if (rows == 2) rowHeaders << u("f(x)");
        expectTable(harness, columns, rowHeaders, "after clearing");
        for (const char* name : {"res1", "res2", "eps1", "eps2"})
            EXPECT_EQ(harness.child<QLineEdit>(name)->text(), QString()) << name;
        for (QLabel* label : harness.window().findChildren<QLabel*>()) {
            const std::pair<bool, QString> now = {label->isHidden(), label->text() + label->toolTip()};
            EXPECT_EQ(now, layout[label->objectName().toStdString()]) << label->objectName().toStdString();
        }
        EXPECT_TRUE(harness.boxes().take().empty());
    }
}

TEST(TaskSelection, ResetsTheRuleAndClearsTheInputs) {
    WindowHarness harness;
    for (int from = 0; from < 5; ++from) {
        for (int to = 0; to < 5; ++to) {
            harness.click(taskButtons[from]);
            harness.click("checkSimpsonMethod");
            harness.child<QLineEdit>("exprFunc")->setText(u("x"));
            harness.child<QDoubleSpinBox>("x1")->setValue(2);
            harness.click(taskButtons[to]);
            EXPECT_TRUE(harness.child<QRadioButton>("checkRectMethod")->isChecked()) << from << "->" << to;
            EXPECT_FALSE(harness.child<QRadioButton>("checkSimpsonMethod")->isChecked());
            EXPECT_EQ(harness.child<QLineEdit>("exprFunc")->text(), QString()) << from << "->" << to;
            EXPECT_EQ(harness.child<QDoubleSpinBox>("x1")->value(), 0.0) << from << "->" << to;
        }
    }
}

TEST(HelpButton, ShowsTheHelpText) {
    const char* const expected = "Для ввода функции f(x) необходимо заполнить соответствующее текстовое поле. Вводимый текст должен являться корректным математическим выражением и может содержать только латинские буквы, цифры, круглые скобки, знаки арифметических операций (+ - * / ^), десятичные разделители (.), знаки экспоненты (e E) и пробелы. Названия функций, переменных и констант должны начинаться с латинских букв, но могут содержать и цифры. При записи вещественных чисел обязательно указывать целую часть (0.1 - корректно, .1 - некорректно). Используемые переменные должны быть известны (в выражении для f(x) можно использовать только переменную x). Если поле не заполнено, функция считается тождественно равной 0.\n"
        "\n"
        "Cписок доступных функций и констант:\n"
        "sin(x)  cos(x)  tg(x)  ctg(x)  arcsin(x)  arccos(x)  arctg(x)  arcctg(x)  exp(x)  ln(x)  log10(x)  log2(x)  abs(x)  sqrt(x)  sinh(x)  cosh(x)  pi\n"
        "\n"
        "Примеры корректных выражений:\n"
        "sin(2*pi*x)*exp(-4*pi^2*x)\n"
        "0.5 * (1. + 0.2 - 1e-1)\n"
        "log10(3) - ln(3) / ln(10)\n";
    WindowHarness harness;
    harness.click("helpButton");
    const std::vector<CaughtBox> boxes = harness.boxes().take();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u("Справка"));
    EXPECT_EQ(boxes[0].text.toStdString(), expected);
    EXPECT_EQ(boxes[0].buttons, QMessageBox::Ok);
    EXPECT_EQ(boxes[0].icon, QMessageBox::Information);
    EXPECT_FALSE(boxes[0].hasParent);
    // The list heading starts with a Latin C.
    EXPECT_NE(boxes[0].text.toStdString().find("\nC\xd0\xbf\xd0\xb8\xd1\x81\xd0\xbe\xd0\xba"),
              std::string::npos);
}

TEST(CloseButton, ClosesTheWindow) {
    WindowHarness harness;
    ASSERT_TRUE(harness.window().isVisible());
    harness.click("closeButton");
    EXPECT_FALSE(harness.window().isVisible());
}

// Counts the pixels of a widget's rendering that are clearly darker than
// its background: text drawn in a font that lacks Cyrillic comes out blank.
int darkPixels(QWidget* widget) {
    const QImage image = widget->grab().toImage();
    int dark = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 100) ++dark;
    return dark;
}

TEST(Screenshots, EveryTaskLayoutRendersItsRussianText) {
    const char* const files[5] = {"interpolation", "spline", "least-squares", "differentiation",
                                  "integration"};
    ASSERT_TRUE(QDir().mkpath(QString::fromUtf8(KALKORA_SCREENSHOT_DIR)));
    WindowHarness harness;
    for (int task = 0; task < 5; ++task) {
        harness.click(taskButtons[task]);
        const QString path = QString::fromUtf8(KALKORA_SCREENSHOT_DIR) + u("/layout-") +
                             u(files[task]) + u(".png");
        EXPECT_TRUE(harness.window().grab().save(path)) << path.toStdString();
        for (const char* name : {"label_task", "label_func", "checkInterpolation", "calcButton"})
            EXPECT_GT(darkPixels(harness.child(name)), 20) << name << " renders no text";
    }
}

}  // namespace
