#include "window_harness.h"

#include "app/translations.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>
#include <QTranslator>
#include <gtest/gtest.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

namespace {

// Selects everything in a spin box's line edit, types the value as the box shows it (locale and decimals) and commits
// it with Return.
void typeInto(QDoubleSpinBox* box, double value) {
    QLineEdit* line = box->findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, box->locale().toString(value, 'f', box->decimals()));
    QTest::keyClick(box, Qt::Key_Return);
}

}  // namespace

QString saveThroughDialog(const std::function<void()>& trigger, const QString& name, const QString& type) {
    QString offered;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            auto* typed = dialog->findChild<QLineEdit*>(u("fileNameEdit"));
            offered = typed->text();
            if (!type.isEmpty()) dialog->selectNameFilter(type), emit dialog->filterSelected(type);
            typed->setText(name);
            QMetaObject::invokeMethod(dialog, "accept");
        }
    });
    answer.start(10);
    trigger();
    return offered;
}

InEnglish::InEnglish() {
    EXPECT_EQ(installTranslations({u("en")}), u("en"));
}

InEnglish::~InEnglish() {
    for (QTranslator* translator : QCoreApplication::instance()->findChildren<QTranslator*>()) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

WindowHarness::WindowHarness(const std::function<void(const std::string&)>& beforeWindow) : savedStderr_(dup(2)) {
    if (beforeWindow) beforeWindow(dir_.path());
    window_ = std::make_unique<Widget>();
    window_->show();
}

WindowHarness::~WindowHarness() {
    window_.reset();
    std::cerr.flush();
    std::fflush(stderr);
    dup2(savedStderr_, 2);
    close(savedStderr_);
}

void WindowHarness::click(const char* name) {
    child<QAbstractButton>(name)->click();
}

void WindowHarness::enter(int task, const char* function, const std::vector<double>& xs,
                          const std::vector<double>& ys, double x1) {
    click(kTaskButtons[task]);
    if (task == 0 && !xs.empty()) child<QSpinBox>("n")->setValue(int(xs.size()) - 1);
    typeText("exprFunc", u(function));
    for (size_t c = 0; c < xs.size(); ++c) typeCell(0, int(c), xs[c]);
    for (size_t c = 0; c < ys.size() && task; ++c) typeCell(1, int(c), ys[c]);
    typeNumber("x1", x1);
}

void WindowHarness::typeCell(int row, int column, double value) {
    auto* table = child<QTableWidget>("tableFunc");
    QTableWidgetItem* item = table->item(row, column);
    ASSERT_NE(item, nullptr) << "no cell " << row << ", " << column;
    table->setCurrentItem(item);
    table->editItem(item);
    auto* editor = qobject_cast<QDoubleSpinBox*>(table->indexWidget(table->model()->index(row, column)));
    ASSERT_NE(editor, nullptr) << "cell " << row << ", " << column << " opened no spin box";
    typeInto(editor, value);
    // The delegate commits and closes the editor through a queued call and deletes it later: let both happen now.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

double WindowHarness::cell(int row, int column) const {
    QTableWidgetItem* item = child<QTableWidget>("tableFunc")->item(row, column);
    return item ? item->data(Qt::DisplayRole).toDouble() : -12345.0;
}

void WindowHarness::typeNumber(const char* name, double value) {
    if (auto* box = child<QDoubleSpinBox>(name)) typeInto(box, value);
}

void WindowHarness::typeText(const char* name, const QString& text) {
    auto* line = child<QLineEdit>(name);
    if (!line) return;
    line->selectAll();
    line->del();
    // One key event per character carrying the character itself, so that letters outside Latin-1 arrive as a keyboard
    // layout would send them.
    for (const QChar ch : text) {
        for (QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, 0, Qt::NoModifier, QString(ch));
            QApplication::sendEvent(line, &event);
        }
    }
}

CaughtBox WindowHarness::calculate() {
    click("calcButton");
    std::vector<CaughtBox> shown = catcher_.take();
    EXPECT_EQ(shown.size(), 1u) << "boxes after a calculation";
    if (shown.size() != 1) return {};
    EXPECT_TRUE(shown[0].icon == QMessageBox::Information && shown[0].buttons == QMessageBox::Ok && !shown[0].hasParent);
    return shown[0];
}

std::string WindowHarness::field(const char* name) const {
    return child<QLineEdit>(name)->text().toStdString();
}

std::vector<Curve> WindowHarness::curves() const {
    std::vector<Curve> shown;
    for (QwtPlotItem* item : child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve)) {
        auto* curve = static_cast<QwtPlotCurve*>(item);
        shown.push_back({curve->title().text().toStdString(), {}});
        for (size_t i = 0; i < curve->dataSize(); ++i) shown.back().samples.push_back(curve->sample(int(i)));
    }
    return shown;
}

std::string WindowHarness::logName() const {
    for (const auto& entry : std::filesystem::directory_iterator(dir_.path()))
        if (entry.path().filename().string().rfind("log-", 0) == 0) return entry.path().filename().string();
    return std::string();
}

std::string WindowHarness::log() const {
    std::cerr.flush();
    std::fflush(stderr);
    std::ifstream in(dir_.path() + "/" + logName(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}
