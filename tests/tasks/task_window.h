#pragma once
// Helpers of the task suites: drive the real window as a user would (type
// the table and the fields, press "Расчет") and read back what it shows.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <QLineEdit>
#include <QPointF>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "window_harness.h"

inline QString u(const char* text) {
    return QString::fromUtf8(text);
}

struct ShownCurve {
    std::string title;
    std::vector<QPointF> samples;
};

// The curves attached to the plot, in the order they were attached.
inline std::vector<ShownCurve> shownCurves(WindowHarness& harness) {
    std::vector<ShownCurve> shown;
    for (QwtPlotItem* item : harness.child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve)) {
        auto* curve = static_cast<QwtPlotCurve*>(item);
        ShownCurve c{curve->title().text().toStdString(), {}};
        for (size_t i = 0; i < curve->dataSize(); ++i) c.samples.push_back(curve->sample(static_cast<int>(i)));
        shown.push_back(c);
    }
    return shown;
}

inline std::vector<std::string> titles(const std::vector<ShownCurve>& curves) {
    std::vector<std::string> result;
    for (const ShownCurve& c : curves) result.push_back(c.title);
    return result;
}

// Types the points into the table: xs into row 0, ys (if any) into row 1.
inline void typePoints(WindowHarness& harness, const std::vector<double>& xs,
                       const std::vector<double>& ys = {}) {
    for (size_t c = 0; c < xs.size(); ++c) harness.typeCell(0, static_cast<int>(c), xs[c]);
    for (size_t c = 0; c < ys.size(); ++c) harness.typeCell(1, static_cast<int>(c), ys[c]);
}

// Presses "Расчет" and returns the boxes it showed.
inline std::vector<CaughtBox> calculate(WindowHarness& harness) {
    harness.click("calcButton");
    return harness.boxes().take();
}

inline void expectSuccessBox(const std::vector<CaughtBox>& boxes) {
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u("Сообщение"));
    EXPECT_EQ(boxes[0].text, u("Расчет завершен"));
    EXPECT_EQ(boxes[0].buttons, QMessageBox::Ok);
    EXPECT_EQ(boxes[0].icon, QMessageBox::Information);
    EXPECT_FALSE(boxes[0].hasParent);
}

inline void expectErrorBox(const std::vector<CaughtBox>& boxes, const QString& text) {
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u("Ошибка"));
    EXPECT_EQ(boxes[0].text.toStdString(), text.toStdString());
    EXPECT_EQ(boxes[0].buttons, QMessageBox::Ok);
    EXPECT_FALSE(boxes[0].hasParent);
}

inline QString field(WindowHarness& harness, const char* name) {
    return harness.child<QLineEdit>(name)->text();
}

inline bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

inline bool endsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}
