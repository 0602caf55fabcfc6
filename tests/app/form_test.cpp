#include <gtest/gtest.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMetaMethod>
#include <QRadioButton>
#include <QSpinBox>
#include <QStringList>
#include <QTabWidget>
#include <QTableWidget>
#include <qwt_plot.h>

#include "app/ui_widget.h"
#include "app/widget.h"

namespace {

QString u(const char* text) {
    return QString::fromUtf8(text);
}

// The bare form on a plain window: what setupUi alone builds.
class FormTest : public ::testing::Test {
protected:
    void SetUp() override { ui.setupUi(&host); }

    template <class T = QWidget>
    T* child(const char* name) {
        T* widget = host.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    QWidget host;
    Ui_Widget ui;
};

TEST_F(FormTest, WidgetTree) {
    const struct {
        const char* name;
        const char* className;
        const char* parent;  // "page" for the two tab pages
        QRect geometry;
        bool bold;
    } cases[] = {
        {"tabWidget", "QTabWidget", "Widget", {10, 10, 651, 531}, false},
        {"frame", "QFrame", "tab", {10, 10, 261, 201}, false},
        {"label_task", "QLabel", "frame", {10, 10, 181, 17}, true},
        {"checkInterpolation", "QRadioButton", "frame", {20, 40, 181, 22}, true},
        {"checkSpline", "QRadioButton", "frame", {20, 70, 231, 22}, true},
        {"checkMNK", "QRadioButton", "frame", {20, 100, 231, 22}, true},
        {"checkDifferentiation", "QRadioButton", "frame", {20, 130, 241, 22}, true},
        {"checkIntegration", "QRadioButton", "frame", {20, 160, 241, 22}, true},
        {"frame_3", "QFrame", "tab", {280, 10, 351, 201}, false},
        {"label_parameters", "QLabel", "frame_3", {10, 10, 191, 17}, true},
        {"label_x1", "QLabel", "frame_3", {20, 40, 51, 17}, true},
        {"x1", "QDoubleSpinBox", "frame_3", {70, 35, 81, 27}, false},
        {"label_x2", "QLabel", "frame_3", {180, 40, 51, 17}, true},
        {"x2", "QDoubleSpinBox", "frame_3", {230, 35, 81, 27}, false},
        {"label_h1", "QLabel", "frame_3", {20, 75, 51, 17}, true},
        {"h1", "QDoubleSpinBox", "frame_3", {70, 70, 61, 27}, false},
        {"label_h2", "QLabel", "frame_3", {180, 75, 51, 17}, true},
        {"h2", "QDoubleSpinBox", "frame_3", {230, 70, 61, 27}, false},
        {"checkRectMethod", "QRadioButton", "frame_3", {20, 110, 271, 22}, true},
        {"checkTrapezMethod", "QRadioButton", "frame_3", {20, 140, 271, 22}, true},
        {"checkSimpsonMethod", "QRadioButton", "frame_3", {20, 170, 271, 22}, true},
        {"frame_2", "QFrame", "tab", {10, 220, 621, 201}, false},
        {"label_func", "QLabel", "frame_2", {10, 10, 191, 17}, true},
        {"tableFunc", "QTableWidget", "frame_2", {20, 40, 576, 87}, false},
        {"label_f", "QLabel", "frame_2", {25, 155, 61, 17}, true},
        {"exprFunc", "QLineEdit", "frame_2", {80, 150, 221, 27}, false},
        {"label_n", "QLabel", "frame_2", {330, 155, 41, 17}, true},
        {"n", "QSpinBox", "frame_2", {370, 150, 41, 27}, false},
        {"calcButton", "QPushButton", "tab", {30, 440, 131, 41}, true},
        {"clearButton", "QPushButton", "tab", {180, 440, 131, 41}, true},
        {"helpButton", "QPushButton", "tab", {330, 440, 131, 41}, true},
        {"closeButton", "QPushButton", "tab", {480, 440, 131, 41}, true},
        {"frame_4", "QFrame", "tab_2", {10, 10, 631, 111}, false},
        {"label_result", "QLabel", "frame_4", {10, 10, 111, 17}, true},
        {"label_res1", "QLabel", "frame_4", {10, 35, 91, 17}, true},
        {"res1", "QLineEdit", "frame_4", {100, 30, 521, 27}, false},
        {"label_res2", "QLabel", "frame_4", {10, 75, 91, 17}, true},
        {"res2", "QLineEdit", "frame_4", {100, 70, 521, 27}, false},
        {"plot", "QwtPlot", "tab_2", {10, 130, 411, 351}, false},
        {"frame_5", "QFrame", "tab_2", {460, 130, 181, 111}, false},
        {"label_error", "QLabel", "frame_5", {10, 10, 141, 17}, true},
        {"label_eps1", "QLabel", "frame_5", {15, 40, 71, 21}, true},
        {"eps1", "QLineEdit", "frame_5", {80, 40, 91, 27}, false},
        {"eps2", "QLineEdit", "frame_5", {80, 70, 91, 27}, false},
        {"label_eps2", "QLabel", "frame_5", {15, 70, 61, 21}, true},
    };
    const int defaultPointSize = QApplication::font().pointSize();
    for (const auto& c : cases) {
        QWidget* widget = child(c.name);
        if (!widget) continue;
        EXPECT_STREQ(widget->metaObject()->className(), c.className) << c.name;
        EXPECT_EQ(widget->parentWidget()->objectName(), QString::fromLatin1(c.parent)) << c.name;
        EXPECT_EQ(widget->geometry(), c.geometry) << c.name;
        EXPECT_EQ(widget->font().bold(), c.bold) << c.name;
        EXPECT_EQ(widget->font().weight(), c.bold ? 75 : QFont::Normal) << c.name;
        EXPECT_EQ(widget->font().pointSize(), c.bold ? 14 : defaultPointSize) << c.name;
        if (auto* frame = qobject_cast<QFrame*>(widget); frame && c.className == std::string("QFrame")) {
            EXPECT_EQ(frame->frameShape(), QFrame::StyledPanel) << c.name;
            EXPECT_EQ(frame->frameShadow(), QFrame::Plain) << c.name;
        }
    }
    // The form's members are exactly the widgets found by name.
    EXPECT_EQ(ui.plot, child<QwtPlot>("plot"));
    EXPECT_EQ(ui.n, child<QSpinBox>("n"));
    EXPECT_EQ(ui.tabWidget->count(), 2);
    EXPECT_EQ(ui.tabWidget->widget(0), child("tab"));
    EXPECT_EQ(ui.tabWidget->widget(1), child("tab_2"));
    EXPECT_EQ(ui.tabWidget->currentIndex(), 0);
}

TEST_F(FormTest, Texts) {
    const struct {
        const char* name;
        const char* text;
    } cases[] = {
        {"label_task", "Решаемая задача"},
        {"checkInterpolation", "Интерполяция"},
        {"checkSpline", "Кубический сплайн"},
        {"checkMNK", "МНК-аппроксимация"},
        {"checkDifferentiation", "Дифференцирование"},
        {"checkIntegration", "Интегрирование"},
        {"label_parameters", "Другие параметры"},
        {"label_x1", "X* = "},
        {"label_x2", "x2 = "},
        {"label_h1", "h1 = "},
        {"label_h2", "h2 = "},
        {"checkRectMethod", "Метод прямоугольников"},
        {"checkTrapezMethod", "Метод трапеций"},
        {"checkSimpsonMethod", "Метод Симпсона"},
        {"label_func", "Исходная функция"},
        {"label_f", "f(x) = "},
        {"label_n", "n = "},
        {"calcButton", "Расчет"},
        {"clearButton", "Очистить"},
        {"helpButton", "Справка"},
        {"closeButton", "Выход"},
        {"label_result", "Решение"},
        {"label_res1", "L(x) = "},
        {"label_res2", "N(x) = "},
        {"label_error", "Погрешность"},
        {"label_eps1", "ε1 = "},
        {"label_eps2", "ε2 = "},
        {"exprFunc", ""},
        {"res1", ""},
        {"res2", ""},
        {"eps1", ""},
        {"eps2", ""},
    };
    for (const auto& c : cases) {
        QWidget* widget = child(c.name);
        if (!widget) continue;
        EXPECT_EQ(widget->property("text").toString(), u(c.text)) << c.name;
        EXPECT_EQ(widget->toolTip(), QString()) << c.name;
    }
    EXPECT_EQ(host.windowTitle(), u("Kalkora"));
    EXPECT_EQ(ui.tabWidget->tabText(0), u("Ввод данных"));
    EXPECT_EQ(ui.tabWidget->tabText(1), u("Результат"));
    for (const char* name : {"res1", "res2", "eps1", "eps2"}) EXPECT_TRUE(child<QLineEdit>(name)->isReadOnly()) << name;
    EXPECT_FALSE(ui.exprFunc->isReadOnly());
}

TEST_F(FormTest, NumberFieldsAndChoices) {
    const struct {
        const char* name;
        int decimals;
        double minimum, maximum, step, value;
        const char* shown;
    } cases[] = {
        {"x1", 4, -99.9999, 99.9999, 0.0001, 0, "0,0000"},
        {"x2", 4, -99.9999, 99.9999, 0.0001, 0, "0,0000"},
        {"h1", 2, 0.01, 2, 0.01, 0.5, "0,50"},
        {"h2", 2, 0.01, 2, 0.01, 0.25, "0,25"},
    };
    for (const auto& c : cases) {
        auto* box = child<QDoubleSpinBox>(c.name);
        EXPECT_EQ(box->decimals(), c.decimals) << c.name;
        EXPECT_DOUBLE_EQ(box->minimum(), c.minimum) << c.name;
        EXPECT_DOUBLE_EQ(box->maximum(), c.maximum) << c.name;
        EXPECT_DOUBLE_EQ(box->singleStep(), c.step) << c.name;
        EXPECT_DOUBLE_EQ(box->value(), c.value) << c.name;
        EXPECT_EQ(box->text(), u(c.shown)) << c.name;
    }
    EXPECT_EQ(ui.n->minimum(), 0);
    EXPECT_EQ(ui.n->maximum(), 5);
    EXPECT_EQ(ui.n->value(), 3);
    EXPECT_EQ(ui.tableFunc->rowCount(), 0);
    EXPECT_EQ(ui.tableFunc->columnCount(), 0);

    // Two exclusive groups of radio buttons, one checked in each.
    EXPECT_TRUE(ui.checkInterpolation->isChecked());
    EXPECT_TRUE(ui.checkRectMethod->isChecked());
    ui.checkSimpsonMethod->click();
    ui.checkMNK->click();
    EXPECT_FALSE(ui.checkRectMethod->isChecked());
    EXPECT_FALSE(ui.checkInterpolation->isChecked());
    EXPECT_TRUE(ui.checkSimpsonMethod->isChecked());
    EXPECT_TRUE(ui.checkMNK->isChecked());
}

TEST_F(FormTest, WindowIsFixedSizeWithRussianLocale) {
    EXPECT_EQ(host.objectName(), u("Widget"));
    EXPECT_EQ(host.size(), QSize(670, 550));
    EXPECT_EQ(host.minimumSize(), QSize(670, 550));
    EXPECT_EQ(host.maximumSize(), QSize(670, 550));
    EXPECT_EQ(host.locale(), QLocale(QLocale::Russian, QLocale::RussianFederation));
    EXPECT_EQ(ui.h1->locale(), QLocale(QLocale::Russian, QLocale::RussianFederation));
    EXPECT_EQ(ui.h1->valueFromText(u("1,25")), 1.25);
}

TEST_F(FormTest, TabOrderChain) {
    const char* const expected[] = {
        "checkInterpolation", "checkSpline", "checkMNK", "checkDifferentiation",
        "checkIntegration", "x1", "x2", "h1", "h2", "checkRectMethod", "checkTrapezMethod",
        "checkSimpsonMethod", "tableFunc", "exprFunc", "n", "calcButton", "clearButton",
        "helpButton", "closeButton", "tabWidget", "res1", "res2", "eps1", "eps2"};
    QStringList wanted;
    for (const char* name : expected) wanted << QString::fromLatin1(name);

    // Walk the focus chain once round from the first widget, keeping only the
    // chained widgets (compound widgets put their internals in between).
    QStringList order;
    QWidget* start = ui.checkInterpolation;
    QWidget* at = start;
    do {
        if (wanted.contains(at->objectName()) && !order.contains(at->objectName()))
            order << at->objectName();
        at = at->nextInFocusChain();
    } while (at != start);
    EXPECT_EQ(order, wanted);
}

TEST(WidgetMetaObject, HasThirteenPrivateSlotsInOrder) {
    const QMetaObject& meta = Widget::staticMetaObject;
    EXPECT_STREQ(meta.className(), "Widget");
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << method.methodSignature().constData();
        EXPECT_EQ(method.access(), QMetaMethod::Private) << method.methodSignature().constData();
        names << QString::fromLatin1(method.methodSignature());
    }
    EXPECT_EQ(names, QStringList({"on_calcButton_clicked()", "on_clearButton_clicked()",
                                  "on_helpButton_clicked()", "on_closeButton_clicked()",
                                  "on_checkInterpolation_clicked()", "on_checkSpline_clicked()",
                                  "on_checkMNK_clicked()", "on_checkDifferentiation_clicked()",
                                  "on_checkIntegration_clicked()", "on_checkRectMethod_clicked()",
                                  "on_checkTrapezMethod_clicked()", "on_checkSimpsonMethod_clicked()",
                                  "on_n_valueChanged(int)"}));
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
}

}  // namespace
