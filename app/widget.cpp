#include "app/widget.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <string>

#include <QBrush>
#include <QColor>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPen>
#include <QRadioButton>
#include <QSpinBox>
#include <QStringList>
#include <QTabBar>
#include <QTableWidget>
#include <qwt_plot.h>
#include <qwt_scale_engine.h>

#include "app/accessibility.h"
#include "app/run_log.h"
#include "app/run_log_writer.h"
#include "app/spin_box_delegate.h"
#include "app/ui_widget.h"

namespace {

// A label text with a subscript, in the rich-text form that Qt's form
// designer writes: %1 in `text` marks where the subscript goes, as in
// "x%1 = " for x with the subscript 1.
QString rich(const QString& text, const char* subscript) {
    return QStringLiteral("<html><head/><body><p>") +
           text.arg(QStringLiteral("<span style=\" vertical-align:sub;\">") + QLatin1String(subscript) +
                    QStringLiteral("</span>")) +
           QStringLiteral("</p></body></html>");
}

const char* const helpText = QT_TRANSLATE_NOOP(
    "Widget",
    "Для ввода функции f(x) необходимо заполнить соответствующее текстовое поле. "
    "Вводимый текст должен являться корректным математическим выражением и может содержать только латинские буквы, цифры, круглые скобки, знаки арифметических операций (+ - * / ^), десятичные разделители (.), знаки экспоненты (e E) и пробелы. "
    "Названия функций, переменных и констант должны начинаться с латинских букв, но могут содержать и цифры. "
    "При записи вещественных чисел обязательно указывать целую часть (0.1 - корректно, .1 - некорректно). "
    "Используемые переменные должны быть известны (в выражении для f(x) можно использовать только переменную x). "
    "Если поле не заполнено, функция считается тождественно равной 0.\n"
    "\n"
    "Cписок доступных функций и констант:\n"
    "sin(x)  cos(x)  tg(x)  ctg(x)  arcsin(x)  arccos(x)  arctg(x)  arcctg(x)  exp(x)  ln(x)  log10(x)  log2(x)  abs(x)  sqrt(x)  sinh(x)  cosh(x)  pi\n"
    "\n"
    "Примеры корректных выражений:\n"
    "sin(2*pi*x)*exp(-4*pi^2*x)\n"
    "0.5 * (1. + 0.2 - 1e-1)\n"
    "log10(3) - ln(3) / ln(10)\n");

// The form's bold 14-point texts sit in boxes 17 to 22 pixels tall and sized
// for a narrow face. Carlito fits every one of them (at most a pixel of a
// descender is cut); the fallbacks keep every text's full width and lose a
// few pixels of descenders; without any of them the platform's font stays.
void useFontThatFits() {
    const QStringList installed = QFontDatabase().families();
    for (const char* family : {"Carlito", "DejaVu Sans Condensed", "Liberation Sans"}) {
        if (!installed.contains(QString::fromLatin1(family))) continue;
        QFont font = QApplication::font();
        font.setFamily(QString::fromLatin1(family));
        QApplication::setFont(font);
        return;
    }
}

// The numbers the window shows and reads follow its language: the form's own
// locale is Russian (a decimal comma), and a translation names its own
// locale. A window in another language writes no group separator, which its
// readers could take for a decimal one ("1,000").
void useTranslatedNumberFormat(QWidget* window) {
    QLocale numbers(QCoreApplication::translate("Widget", "ru_RU", "the locale of the numbers in the window"));
    if (numbers == window->locale()) return;
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);
    window->setLocale(numbers);
}

// Axis numbers as the window writes numbers, with a decimal comma, and without
// a thousands separator, which a reader could take for a decimal one ("1,000").
void useWindowNumberFormat(const QLocale& windowLocale) {
    QLocale locale = windowLocale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(locale);
}

}  // namespace

Widget::Widget(QWidget* parent)
    : QWidget(parent), legend(nullptr), ui(new Ui_Widget) {
    useFontThatFits();
    installAccessibleRoles();
    ui->setupUi(this);
    useTranslatedNumberFormat(this);
    useWindowNumberFormat(locale());
    setUpKeyboard();
    ui->checkInterpolation->setFocus();
    qApp->installEventFilter(this);
    // Long polynomials are read from their start.
    for (QLineEdit* result : {ui->res1, ui->res2})
        connect(result, &QLineEdit::textChanged, result, [result] { result->setCursorPosition(0); });
    setUpPlotTools();
    setUpReport();
    setUpAccessibility();
    delegate = new SpinBoxDelegate();

    const int columns[5] = {4, 5, 6, 5, 0};
    const int rows[5] = {1, 2, 2, 2, 0};
    for (int i = 0; i < 5; ++i) {
        tableColumns[i] = columns[i];
        tableRows[i] = rows[i];
    }
    plotSamples = 100;

    grid.setMajorPen(QPen(QBrush(Qt::black, Qt::SolidPattern), 0, Qt::DotLine, Qt::SquareCap,
                          Qt::BevelJoin));
    grid.attach(ui->plot);
    // The plot takes the legend as its child; the member is destroyed before
    // the plot, which removes it from the plot's children first.
    ui->plot->insertLegend(&legend, QwtPlot::RightLegend, -1.0);

    curves[0].setPen(QPen(QBrush(Qt::red, Qt::SolidPattern), 5.0, Qt::SolidLine, Qt::SquareCap,
                          Qt::BevelJoin));
    curves[0].setStyle(QwtPlotCurve::Dots);
    // Hairlines (width 0), whatever the resolution.
    curves[1].setPen(QPen(QBrush(Qt::darkGreen), 0));
    curves[2].setPen(QPen(QBrush(Qt::blue), 0));
    curves[3].setPen(QPen(QBrush(Qt::black), 0));

    // The run log and the evaluator format and parse numbers with '.'.
    setlocale(LC_ALL, "C");
    setFiles();
    on_checkInterpolation_clicked();
}

Widget::~Widget() {
    delete ui;
    delete delegate;
}

void Widget::setFiles() {
    const time_t now = time(nullptr);
    const std::string name = runLogFileName(ctime(&now));
    if (!freopen(name.c_str(), "w", stderr)) {
        QMessageBox::information(nullptr, tr("Ошибка"),
                                 tr("Не удалось открыть файл %1 на запись.").arg(QString::fromLatin1(name.c_str())));
        exit(1);
    }
    RunLogWriter::install(name);
    logPath = QFileInfo(QString::fromLatin1(name.c_str())).absoluteFilePath();
}

Widget::PlotArray Widget::plotArray(int count) {
    PlotArray array(new (std::nothrow) double[count]);
    if (!array) {
        QMessageBox::information(nullptr, tr("Ошибка"), tr("Недостаточно памяти"));
        exit(1);
    }
    return array;
}

void Widget::showCurves(const std::vector<Point>& points, const double* xs, int samples,
                        std::initializer_list<SampledLine> lines) {
    const int c = tableColumns[task];
    const PlotArray pointX = plotArray(c);
    const PlotArray pointY = plotArray(c);
    for (int i = 0; i < c; ++i) {
        pointX[i] = points[i].x;
        pointY[i] = points[i].y;
    }

    const int lineCount = static_cast<int>(lines.size());
    for (int k = 1; k <= lineCount; ++k) curves[k].attach(ui->plot);
    curves[0].attach(ui->plot);
    curves[0].setSamples(pointX.get(), pointY.get(), c);
    curves[0].setTitle(tr("f(x)"));
    int k = 1;
    for (const SampledLine& line : lines) {
        curves[k].setSamples(xs, line.ys, samples);
        curves[k].setTitle(tr(line.title));
        ++k;
    }
    // A margin of 5 % of the extent on each side, before the scales round
    // outwards to whole steps, keeps the end points clear of the canvas frame.
    QRectF extent = curves[0].boundingRect();
    for (int k = 1; k <= lineCount; ++k) extent |= curves[k].boundingRect();
    const std::pair<int, double> margins[] = {{QwtPlot::xBottom, 0.05 * extent.width()},
                                              {QwtPlot::yLeft, 0.05 * extent.height()}};
    for (const auto& [axis, margin] : margins) ui->plot->axisScaleEngine(axis)->setMargins(margin, margin);
    ui->plot->updateLayout();
    ui->plot->replot();
    describePlot();
}

void Widget::on_clearButton_clicked() {
    clearAll();
    setPoints(tableColumns[task], tableRows[task]);
}

void Widget::on_helpButton_clicked() {
    QMessageBox::information(nullptr, tr("Справка"), tr(helpText));
}

void Widget::on_closeButton_clicked() {
    close();
}

void Widget::selectTask(int number) {
    task = number;
    clearAll();
    if (number == 0) tableColumns[0] = ui->n->value() + 1;
    setPoints(tableColumns[task], tableRows[task]);

    // Which input and result widgets each task uses, indexed by task number.
    struct Group {
        QWidget* widgets[6];
        bool shown[5];
    };
    const Group groups[] = {
        {{ui->label_f, ui->exprFunc}, {true, false, false, false, true}},
        {{ui->label_n, ui->n}, {true, false, false, false, false}},
        {{ui->label_x1, ui->x1}, {true, true, false, true, true}},
        {{ui->label_x2, ui->x2, ui->label_h1, ui->h1, ui->label_h2, ui->h2},
         {false, false, false, false, true}},
        {{ui->checkRectMethod, ui->checkTrapezMethod, ui->checkSimpsonMethod},
         {false, false, false, false, true}},
        {{ui->label_res1, ui->label_res2, ui->res1, ui->res2}, {true, true, true, true, true}},
        {{ui->label_eps1, ui->eps1}, {true, false, true, false, true}},
        {{ui->label_eps2, ui->eps2}, {false, false, true, false, false}},
    };
    for (const Group& group : groups) {
        for (QWidget* widget : group.widgets) {
            if (widget) widget->setVisible(group.shown[task]);
        }
    }
}

void Widget::on_checkInterpolation_clicked() {
    selectTask(0);
    ui->label_n->setToolTip(tr("Степень интерполяционного полинома"));
    ui->label_x1->setText(tr("X* = "));
    ui->label_res1->setText(tr("L(x) = "));
    ui->label_res1->setToolTip(tr("Полином Лагранжа"));
    ui->label_res2->setText(tr("N(x) = "));
    ui->label_res2->setToolTip(tr("Полином Ньютона"));
    ui->label_eps1->setText(tr("ε(X*) = "));
    ui->label_eps1->setToolTip(tr("Погрешность интерполяции в точке X*"));
    nameControls();
}

void Widget::on_checkSpline_clicked() {
    selectTask(1);
    ui->label_x1->setText(tr("X* = "));
    ui->label_res1->setText(tr("S(x):"));
    ui->label_res1->setToolTip(tr("Кубический сплайн"));
    ui->label_res2->setText(tr("S(X*) = "));
    ui->label_res2->setToolTip(tr("Значение сплайна в точке X*"));
    nameControls();
}

void Widget::on_checkMNK_clicked() {
    selectTask(2);
    ui->label_res1->setText(rich(tr("P%1(x) = "), "1"));
    ui->label_res1->setToolTip(tr("Приближающий многочлен 1-ой степени"));
    ui->label_res2->setText(rich(tr("P%1(x) = "), "2"));
    ui->label_res2->setToolTip(tr("Приближающий многочлен 2-ой степени"));
    ui->label_eps1->setText(rich(tr("ε%1 = "), "1"));
    ui->label_eps1->setToolTip(tr("Сумма квадратов ошибок для многочлена P1(x)"));
    ui->label_eps2->setText(rich(tr("ε%1 = "), "2"));
    ui->label_eps2->setToolTip(tr("Сумма квадратов ошибок для многочлена P2(x)"));
    nameControls();
}

void Widget::on_checkDifferentiation_clicked() {
    selectTask(3);
    ui->label_x1->setText(tr("X* = "));
    ui->label_res1->setText(tr("f'(X*) = "));
    ui->label_res1->setToolTip(tr("Значение 1-ой производной в точке X*"));
    ui->label_res2->setText(tr("f''(X*) = "));
    ui->label_res2->setToolTip(tr("Значение 2-ой производной в точке X*"));
    nameControls();
}

void Widget::on_checkIntegration_clicked() {
    selectTask(4);
    ui->label_x1->setText(rich(tr("x%1 = "), "1"));
    ui->label_x2->setText(rich(tr("x%1 = "), "2"));
    ui->label_h1->setText(rich(tr("h%1 = "), "1"));
    ui->label_h2->setText(rich(tr("h%1 = "), "2"));
    ui->label_res1->setText(rich(tr("Ans(h%1) = "), "1"));
    ui->label_res1->setToolTip(tr("Значение интеграла, посчитанного с шагом h1"));
    ui->label_res2->setText(rich(tr("Ans(h%1) = "), "2"));
    ui->label_res2->setToolTip(tr("Значение интеграла, посчитанного с шагом h2"));
    ui->label_eps1->setText(tr("ε = "));
    ui->label_eps1->setToolTip(tr("Погрешность, вычисленная методом Рунге-Ромберга"));
    nameControls();
}

void Widget::on_checkRectMethod_clicked() {
    integrationMethod = 0;
}

void Widget::on_checkTrapezMethod_clicked() {
    integrationMethod = 1;
}

void Widget::on_checkSimpsonMethod_clicked() {
    integrationMethod = 2;
}

void Widget::on_n_valueChanged(int value) {
    tableColumns[0] = value + 1;
    setPoints(tableColumns[task], tableRows[task]);
}

void Widget::setPoints(int columns, int rows) {
    QTableWidget* table = ui->tableFunc;
    table->setRowCount(rows);
    table->setColumnCount(columns);
    if (rows >= 1) {
        QStringList labels(tr("x"));
        if (rows != 1) labels << tr("f(x)");
        table->setVerticalHeaderLabels(labels);
    }
    QStringList headers;
    for (int c = 0; c < columns; ++c) headers << QString::number(c);
    table->setHorizontalHeaderLabels(headers);

    for (int r = 0; r < rows; ++r) {
        table->setItemDelegateForRow(r, delegate);
        for (int c = 0; c < columns; ++c) {
            table->setColumnWidth(c, 90);
            if (!table->item(r, c)) {
                auto* item = new QTableWidgetItem;
                item->setData(Qt::DisplayRole, 0.0);
                table->setItem(r, c, item);
            }
        }
    }
}

void Widget::clearInput() {
    ui->tableFunc->clear();
    ui->exprFunc->clear();
    ui->x1->setValue(0);
    ui->x2->setValue(0);
    ui->h1->setValue(0.5);
    ui->h2->setValue(0.25);
    // A click rather than setChecked, so that the slot resets integrationMethod.
    ui->checkRectMethod->click();
    ui->n->setValue(3);
}

void Widget::clearResult() {
    ui->res1->clear();
    ui->res2->clear();
    ui->eps1->clear();
    ui->eps2->clear();
    for (QwtPlotCurve& curve : curves) curve.detach();
    showFullRange();
    ui->plot->updateLayout();
    ui->plot->replot();
    describePlot();
}

void Widget::clearAll() {
    clearInput();
    clearResult();
    // The fields no longer show the last calculation.
    enableReport(false);
}
