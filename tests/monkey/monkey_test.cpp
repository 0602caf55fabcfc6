// Monkey test of the main window: a seeded, reproducible stream of random user actions over all five tasks. The one
// invariant: every press of "Расчет" ends in exactly one message box and adds exactly one framed run of the selected
// task to the run log, closed by the task's end line after the success box or by one error line after an error box
// (the task run tests pin which line each box has). KALKORA_MONKEY_SEED and KALKORA_MONKEY_ACTIONS override the seed
// and the action count; KALKORA_MONKEY_TRACE=1 prints each action before it runs, so a crash names its action.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "window_harness.h"

namespace {

const char* const kNames[5] = {"Interpolation", "Spline", "Least squares", "Differentiation", "Integration"};
const char* const kSpins[4] = {"x1", "x2", "h1", "h2"};
constexpr double kCellLimit = 999.99999, kXLimit = 99.9999;

class Monkey {
public:
    explicit Monkey(std::uint32_t seed) : seed_(seed), rng_(seed) {}

    void run(int count) {
        while (done_ < count && !::testing::Test::HasFailure()) step();
        if (::testing::Test::HasFailure())
            ADD_FAILURE() << "monkey seed " << seed_ << " failed at action " << done_ << "; replay with KALKORA_MONKEY_SEED="
                          << seed_ << " KALKORA_MONKEY_ACTIONS=" << done_ << " KALKORA_MONKEY_TRACE=1";
        std::cout << "monkey: seed " << seed_ << ", " << done_ << " actions, " << presses_ << " presses, " << successes_
                  << " successes" << std::endl;
    }

private:
    int pick(int n) { return static_cast<int>(rng_() % static_cast<std::uint32_t>(n)); }
    bool chance(int percent) { return pick(100) < percent; }
    template <class T>
    T any(std::initializer_list<T> items) { return items.begin()[pick(int(items.size()))]; }
    // A uniformly chosen number with the given decimals in [-limit, limit].
    double decimal(double limit, int decimals) {
        const double scale = std::pow(10.0, decimals);
        const auto steps = static_cast<std::uint32_t>(std::llround(limit * scale));
        return (static_cast<double>(rng_() % (2 * steps + 1)) - steps) / scale;
    }
    QTableWidget* table() const { return h_.child<QTableWidget>("tableFunc"); }
    bool shown(const char* name) const { return h_.child(name)->isVisibleTo(h_.child("tab")); }

    // Counts an action and, when tracing, names it before it runs.
    void note(const std::string& what) {
        ++done_;
        if (trace_) std::cout << "monkey " << done_ << ": " << what << std::endl;
    }
    void click(const char* button) { note(button), h_.click(button); }

    // One action, drawn by weight; an action on a widget that the selected task hides is skipped, and one on the
    // input panel first brings its tab.
    void step() {
        enum { Task, Rule, N, Cell, Fill, Text, Spin, Calculate, Clear, Tab, Count };
        static const int kWeights[Count] = {6, 4, 5, 18, 8, 14, 14, 13, 3, 5};
        int kind = 0;
        for (int roll = pick(90); roll >= kWeights[kind]; roll -= kWeights[kind++]) {}
        QTabBar* bar = h_.child<QTabWidget>("tabWidget")->tabBar();
        const int tab = kind == Tab ? 1 - bar->currentIndex() : 0;
        if (tab != bar->currentIndex()) {
            note("tab " + std::to_string(tab));
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        }
        const int rows = table()->rowCount(), columns = table()->columnCount();
        if (kind == Task) {
            task_ = pick(5);
            click(kTaskButtons[task_]);
        } else if (kind == Clear) {
            click("clearButton");
        } else if (kind == Rule && task_ == 4) {
            click(any({"checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod"}));
        } else if (kind == N && shown("n")) {
            const int value = chance(50) ? 5 * pick(2) : pick(6);  // often a limit
            note("n = " + std::to_string(value));
            auto* n = h_.child<QSpinBox>("n");
            n->findChild<QLineEdit*>()->selectAll();
            QTest::keyClicks(n->findChild<QLineEdit*>(), QString::number(value));
            QTest::keyClick(n, Qt::Key_Return);
        } else if (kind == Cell && columns > 0) {
            const int row = pick(rows);
            typeCell(row, pick(columns), cellValue(row));
        } else if (kind == Fill && columns > 0) {
            fillTable();
        } else if (kind == Text && shown("exprFunc")) {
            const QString text = expression();
            note("text \"" + text.toStdString() + "\"");
            h_.typeText("exprFunc", text);
        } else if (kind == Spin) {
            moveSpin();
        } else if (kind == Calculate) {
            calculate();
        }
    }

    // 0, an extreme, a duplicate of a cell of the same row or one editor step away from it, a small integer, or any
    // value.
    double cellValue(int row) {
        const double other = h_.cell(row, pick(table()->columnCount()));
        switch (pick(10)) {
        case 0: return 0;
        case 1: return chance(50) ? kCellLimit : -kCellLimit;
        case 2: return other;
        case 3: return std::clamp(std::round((other + (chance(50) ? 1e-5 : -1e-5)) * 1e5) / 1e5, -kCellLimit, kCellLimit);
        case 4: case 5: case 6: return pick(21) - 10;
        default: return decimal(kCellLimit, 5);
        }
    }

    void typeCell(int row, int column, double value) {
        note("cell " + std::to_string(row) + ", " + std::to_string(column) + " = " + std::to_string(value));
        h_.typeCell(row, column, value);
    }

    // The whole table: abscissas in a shuffled progression whose step is one editor step or wider, and any ordinates.
    void fillTable() {
        const int n = table()->columnCount();
        const double base = chance(20) ? -kCellLimit : decimal(50, 2);
        const double step = any({1e-5, 0.5, 1.0, std::abs(decimal(300.0 / n, 5))});
        std::vector<double> xs;
        for (int c = 0; c < n; ++c) xs.push_back(std::min(kCellLimit, std::round((base + c * step) * 1e5) / 1e5));
        for (int c = n - 1; c > 0; --c) std::swap(xs[c], xs[pick(c + 1)]);
        for (int c = 0; c < n; ++c) typeCell(0, c, xs[c]);
        for (int c = 0; c < n && table()->rowCount() == 2; ++c) typeCell(1, c, cellValue(1));
    }

    // Texts over every function, some undefined on part of the axis (so failures come at any sample of a plot), texts
    // that construction rejects, unknown names, and noise with letters outside Latin-1.
    QString expression() {
        static const char* const kTexts[] = {
            "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "", "1/x", "sqrt(x)", "exp(x*50)", "x^x",
            "ln(x)-log10(x)*log2(x)", "arcsin(x)+arccos(x/100)", "tg(x)*ctg(x)-arctg(x)^arcctg(x)", "abs(-(x))^0.5",
            "sinh(x)/cosh(x)", "cos(x)^2E1", "x+(", "2x", ".5", "х^2", "sin()", "2*-x", "1e400", "y", "X", "e+x",
            "sin2", "Pi*x"};
        if (chance(75)) return u(kTexts[pick(int(std::size(kTexts)))]);
        QString noise = chance(30) ? u(any({"*2", "(*x)", "x+(^x)"})) : QString();
        for (int n = 1 + pick(20); n > 0; --n) noise += chance(10) ? u("éжхП").at(pick(4)) : QChar(0x20 + pick(95));
        return noise;
    }

    // One of the visible spin boxes x1, x2, h1, h2: to a limit or to any value.
    void moveSpin() {
        std::vector<int> visible;
        for (int i = 0; i < 4; ++i)
            if (shown(kSpins[i])) visible.push_back(i);
        if (visible.empty()) return;
        const int i = visible[pick(static_cast<int>(visible.size()))];
        const double value = i < 2 ? (chance(30) ? any({-kXLimit, kXLimit}) : decimal(chance(60) ? 10 : kXLimit, 4))
                                   : (chance(30) ? any({0.01, 2.0}) : (1 + pick(200)) / 100.0);
        note(std::string(kSpins[i]) + " = " + std::to_string(value));
        h_.typeNumber(kSpins[i], value);
    }

    void calculate() {
        // Integrations with thousands of subintervals write long logs: only a few per run.
        const auto spin = [this](const char* name) { return h_.child<QDoubleSpinBox>(name)->value(); };
        const double width = std::abs(spin("x2") - spin("x1"));
        if (task_ == 4 && width / spin("h1") + width / spin("h2") > 3000 && heavy_++ >= 6)
            for (const char* step : {"h1", "h2"}) h_.typeNumber(step, (50 + pick(151)) / 100.0);
        note("calculate");
        const CaughtBox box = h_.calculate();
        ++presses_;
        const bool success = box.title == u("Сообщение") && box.text == u("Расчет завершен");
        ASSERT_TRUE(success || box.title == u("Ошибка")) << box.title.toStdString() << ": " << box.text.toStdString();
        successes_ += success;
        // What the log gained: the begin line, a body, then the end line or one error line.
        std::ifstream in(h_.dir().path() + "/" + h_.logName(), std::ios::binary);
        std::ostringstream text;
        text << in.seekg(logSize_).rdbuf();
        const std::string added = text.str(), head = std::string(kNames[task_]) + " task begin.\n\n";
        logSize_ += static_cast<std::streamoff>(added.size());
        const std::string tail = success ? kNames[task_] + std::string(" task end.\n\n") : "Error: ";
        const size_t end = success ? added.size() - std::min(added.size(), tail.size()) : added.rfind("\nError: ") + 1;
        ASSERT_TRUE(added.rfind(head, 0) == 0 && end >= head.size() && added.compare(end, tail.size(), tail) == 0 &&
                    added.find('\n', end) == added.size() - 2)
            << added.substr(0, 300) << "\n...\n" << added.substr(added.size() - std::min<size_t>(added.size(), 300));
        const std::string body = "\n" + added.substr(head.size(), end - head.size());
        for (const char* line : {" task begin.\n", " task end.\n", "\nError: "})
            EXPECT_EQ(body.find(line), std::string::npos) << "inside the run: " << line;
    }

    WindowHarness h_;
    const std::uint32_t seed_;
    std::mt19937 rng_;  // its sequence is fixed by the standard: a seed replays the run anywhere
    const bool trace_ = qEnvironmentVariableIsSet("KALKORA_MONKEY_TRACE");
    std::streamoff logSize_ = 0;
    int task_ = 0, done_ = 0, presses_ = 0, successes_ = 0, heavy_ = 0;
};

TEST(Monkey, EveryPressShowsOneBoxAndLogsOneFramedRun) {
    const auto number = [](const char* name, unsigned fallback) {
        return qEnvironmentVariableIsEmpty(name) ? fallback : qgetenv(name).toUInt();
    };
    // Every box makes the headless platform note that it cannot propagate size hints: a thousand boxes would bury the
    // test's own output.
    static QtMessageHandler qtMessages = nullptr;
    qtMessages = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& at, const QString& text) {
        if (!text.contains(QLatin1String("propagateSizeHints"))) qtMessages(type, at, text);
    });
    Monkey(number("KALKORA_MONKEY_SEED", 20240611)).run(static_cast<int>(number("KALKORA_MONKEY_ACTIONS", 10000)));
    qInstallMessageHandler(qtMessages);
}

}  // namespace
