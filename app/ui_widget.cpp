#include "app/ui_widget.h"

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMetaObject>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QWidget>
#include <qwt_plot.h>

namespace {

QFrame* makeFrame(QWidget* parent, const char* name, const QRect& geometry) {
    auto* frame = new QFrame(parent);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setGeometry(geometry);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Plain);
    return frame;
}

template <class T>
T* makeWidget(QWidget* parent, const char* name, const QRect& geometry) {
    auto* widget = new T(parent);
    widget->setObjectName(QString::fromLatin1(name));
    widget->setGeometry(geometry);
    return widget;
}

template <class T>
T* makeBold(QWidget* parent, const char* name, const QRect& geometry, const QFont& font) {
    T* widget = makeWidget<T>(parent, name, geometry);
    widget->setFont(font);
    return widget;
}

QDoubleSpinBox* makeDoubleSpinBox(QWidget* parent, const char* name, const QRect& geometry,
                                  int decimals, double minimum, double maximum, double step,
                                  double value) {
    auto* box = makeWidget<QDoubleSpinBox>(parent, name, geometry);
    // Decimals first: the range and the value are rounded to them.
    box->setDecimals(decimals);
    box->setMinimum(minimum);
    box->setMaximum(maximum);
    box->setSingleStep(step);
    box->setValue(value);
    return box;
}

QString translated(const char* text) {
    return QCoreApplication::translate("Widget", text, nullptr);
}

}  // namespace

void Ui_Widget::setupUi(QWidget* Widget) {
    if (Widget->objectName().isEmpty()) Widget->setObjectName(QString::fromLatin1("Widget"));
    Widget->resize(670, 550);
    Widget->setMinimumSize(QSize(670, 550));
    Widget->setMaximumSize(QSize(670, 550));
    Widget->setLocale(QLocale(QLocale::Russian, QLocale::RussianFederation));

    QFont font;
    font.setPointSize(14);
    font.setBold(true);
    font.setWeight(75);

    tabWidget = makeWidget<QTabWidget>(Widget, "tabWidget", QRect(10, 10, 651, 531));

    // First page: the input panel.
    tab = new QWidget();
    tab->setObjectName(QString::fromLatin1("tab"));
    frame_2 = makeFrame(tab, "frame_2", QRect(10, 220, 621, 201));
    label_func = makeBold<QLabel>(frame_2, "label_func", QRect(10, 10, 191, 17), font);
    tableFunc = makeWidget<QTableWidget>(frame_2, "tableFunc", QRect(20, 40, 576, 87));
    exprFunc = makeWidget<QLineEdit>(frame_2, "exprFunc", QRect(80, 150, 221, 27));
    label_f = makeBold<QLabel>(frame_2, "label_f", QRect(25, 155, 61, 17), font);
    label_n = makeBold<QLabel>(frame_2, "label_n", QRect(330, 155, 41, 17), font);
    n = makeWidget<QSpinBox>(frame_2, "n", QRect(370, 150, 41, 27));
    n->setMaximum(5);
    n->setValue(3);
    closeButton = makeBold<QPushButton>(tab, "closeButton", QRect(480, 440, 131, 41), font);

    frame_3 = makeFrame(tab, "frame_3", QRect(280, 10, 351, 201));
    label_parameters = makeBold<QLabel>(frame_3, "label_parameters", QRect(10, 10, 191, 17), font);
    label_x1 = makeBold<QLabel>(frame_3, "label_x1", QRect(20, 40, 51, 17), font);
    x1 = makeDoubleSpinBox(frame_3, "x1", QRect(70, 35, 81, 27), 4, -99.9999, 99.9999, 0.0001, 0);
    label_x2 = makeBold<QLabel>(frame_3, "label_x2", QRect(180, 40, 51, 17), font);
    x2 = makeDoubleSpinBox(frame_3, "x2", QRect(230, 35, 81, 27), 4, -99.9999, 99.9999, 0.0001, 0);
    label_h1 = makeBold<QLabel>(frame_3, "label_h1", QRect(20, 75, 51, 17), font);
    h1 = makeDoubleSpinBox(frame_3, "h1", QRect(70, 70, 61, 27), 2, 0.01, 2, 0.01, 0.5);
    label_h2 = makeBold<QLabel>(frame_3, "label_h2", QRect(180, 75, 51, 17), font);
    h2 = makeDoubleSpinBox(frame_3, "h2", QRect(230, 70, 61, 27), 2, 0.01, 2, 0.01, 0.25);
    checkRectMethod = makeBold<QRadioButton>(frame_3, "checkRectMethod", QRect(20, 110, 271, 22), font);
    checkRectMethod->setChecked(true);
    checkTrapezMethod = makeBold<QRadioButton>(frame_3, "checkTrapezMethod", QRect(20, 140, 271, 22), font);
    checkSimpsonMethod = makeBold<QRadioButton>(frame_3, "checkSimpsonMethod", QRect(20, 170, 271, 22), font);
    helpButton = makeBold<QPushButton>(tab, "helpButton", QRect(330, 440, 131, 41), font);

    frame = makeFrame(tab, "frame", QRect(10, 10, 261, 201));
    label_task = makeBold<QLabel>(frame, "label_task", QRect(10, 10, 181, 17), font);
    checkInterpolation = makeBold<QRadioButton>(frame, "checkInterpolation", QRect(20, 40, 181, 22), font);
    checkInterpolation->setChecked(true);
    checkSpline = makeBold<QRadioButton>(frame, "checkSpline", QRect(20, 70, 231, 22), font);
    checkMNK = makeBold<QRadioButton>(frame, "checkMNK", QRect(20, 100, 231, 22), font);
    checkDifferentiation = makeBold<QRadioButton>(frame, "checkDifferentiation", QRect(20, 130, 241, 22), font);
    checkIntegration = makeBold<QRadioButton>(frame, "checkIntegration", QRect(20, 160, 241, 22), font);
    calcButton = makeBold<QPushButton>(tab, "calcButton", QRect(30, 440, 131, 41), font);
    clearButton = makeBold<QPushButton>(tab, "clearButton", QRect(180, 440, 131, 41), font);
    tabWidget->addTab(tab, QString());

    // Second page: the results.
    tab_2 = new QWidget();
    tab_2->setObjectName(QString::fromLatin1("tab_2"));
    plot = makeWidget<QwtPlot>(tab_2, "plot", QRect(10, 130, 411, 351));
    frame_4 = makeFrame(tab_2, "frame_4", QRect(10, 10, 631, 111));
    label_result = makeBold<QLabel>(frame_4, "label_result", QRect(10, 10, 111, 17), font);
    label_res1 = makeBold<QLabel>(frame_4, "label_res1", QRect(10, 35, 91, 17), font);
    label_res2 = makeBold<QLabel>(frame_4, "label_res2", QRect(10, 75, 91, 17), font);
    res1 = makeWidget<QLineEdit>(frame_4, "res1", QRect(100, 30, 521, 27));
    res1->setReadOnly(true);
    res2 = makeWidget<QLineEdit>(frame_4, "res2", QRect(100, 70, 521, 27));
    res2->setReadOnly(true);
    frame_5 = makeFrame(tab_2, "frame_5", QRect(460, 130, 181, 111));
    label_error = makeBold<QLabel>(frame_5, "label_error", QRect(10, 10, 141, 17), font);
    label_eps1 = makeBold<QLabel>(frame_5, "label_eps1", QRect(15, 40, 71, 21), font);
    eps1 = makeWidget<QLineEdit>(frame_5, "eps1", QRect(80, 40, 91, 27));
    eps1->setReadOnly(true);
    eps2 = makeWidget<QLineEdit>(frame_5, "eps2", QRect(80, 70, 91, 27));
    eps2->setReadOnly(true);
    label_eps2 = makeBold<QLabel>(frame_5, "label_eps2", QRect(15, 70, 61, 21), font);
    tabWidget->addTab(tab_2, QString());

    QWidget* const focusChain[] = {
        checkInterpolation, checkSpline, checkMNK, checkDifferentiation, checkIntegration,
        x1, x2, h1, h2, checkRectMethod, checkTrapezMethod, checkSimpsonMethod,
        tableFunc, exprFunc, n, calcButton, clearButton, helpButton, closeButton,
        tabWidget, res1, res2, eps1, eps2};
    for (size_t i = 1; i < sizeof focusChain / sizeof focusChain[0]; ++i)
        QWidget::setTabOrder(focusChain[i - 1], focusChain[i]);

    retranslateUi(Widget);
    tabWidget->setCurrentIndex(0);
    QMetaObject::connectSlotsByName(Widget);
}

void Ui_Widget::retranslateUi(QWidget* Widget) {
    Widget->setWindowTitle(translated("Kalkora"));
    label_func->setText(translated("Исходная функция"));
    label_f->setText(translated("f(x) = "));
    label_n->setToolTip(QString());
    label_n->setText(translated("n = "));
    closeButton->setText(translated("Выход"));
    label_parameters->setText(translated("Другие параметры"));
    label_x1->setToolTip(QString());
    label_x1->setText(translated("X* = "));
    label_x2->setToolTip(QString());
    label_x2->setText(translated("x2 = "));
    label_h1->setToolTip(QString());
    label_h1->setText(translated("h1 = "));
    label_h2->setToolTip(QString());
    label_h2->setText(translated("h2 = "));
    checkRectMethod->setText(translated("Метод прямоугольников"));
    checkTrapezMethod->setText(translated("Метод трапеций"));
    checkSimpsonMethod->setText(translated("Метод Симпсона"));
    helpButton->setText(translated("Справка"));
    label_task->setText(translated("Решаемая задача"));
    checkInterpolation->setText(translated("Интерполяция"));
    checkSpline->setText(translated("Кубический сплайн"));
    checkMNK->setText(translated("МНК-аппроксимация"));
    checkDifferentiation->setText(translated("Дифференцирование"));
    checkIntegration->setText(translated("Интегрирование"));
    calcButton->setText(translated("Расчет"));
    clearButton->setText(translated("Очистить"));
    tabWidget->setTabText(tabWidget->indexOf(tab), translated("Ввод данных"));
    label_result->setText(translated("Решение"));
    label_res1->setToolTip(QString());
    label_res1->setText(translated("L(x) = "));
    label_res2->setToolTip(QString());
    label_res2->setText(translated("N(x) = "));
    label_error->setText(translated("Погрешность"));
    label_eps1->setToolTip(QString());
    label_eps1->setText(translated("ε1 = "));
    label_eps2->setToolTip(QString());
    label_eps2->setText(translated("ε2 = "));
    tabWidget->setTabText(tabWidget->indexOf(tab_2), translated("Результат"));
}
