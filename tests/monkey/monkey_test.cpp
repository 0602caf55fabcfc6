// Monkey test of the main window: a seeded, reproducible stream of random user
// actions over all five tasks. After every action the table's shape is
// checked. Every press of "Расчет" must end in exactly one message box that
// the inputs allow, add one framed run of the task to the run log, and leave
// the task's curves (or none) on the plot; the whole log's framing is checked
// every 250 presses and at the end.
//
// KALKORA_MONKEY_SEED and KALKORA_MONKEY_ACTIONS override the seed and the
// number of actions; KALKORA_MONKEY_TRACE=1 prints each action before it
// runs, so that the last line printed names the action of a crash.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "window_harness.h"

namespace {

bool startsWith(const std::string& s, const std::string& p) { return s.compare(0, p.size(), p) == 0; }
bool endsWith(const std::string& s, const std::string& p) {
    return s.size() >= p.size() && s.compare(s.size() - p.size(), p.size(), p) == 0;
}

const char* const kTaskButtons[5] = {"checkInterpolation", "checkSpline", "checkMNK", "checkDifferentiation",
                                     "checkIntegration"};
const char* const kTaskNames[5] = {"Interpolation", "Spline", "Least squares", "Differentiation", "Integration"};
// Curves of a successful calculation in attachment order: "f(x)" holds the
// table's points, every other curve 100 samples.
const std::vector<std::string> kCurves[5] = {
    {"N(x)", "f(x)"}, {"S(x)", "f(x)"}, {"P1(x)", "P2(x)", "f(x)"}, {"N(x)", "N'(x)", "N''(x)", "f(x)"}, {}};

// How a press of "Расчет" can end: the success box, then the error handlers
// with their box text and log line (the unknown name and the spline's x
// follow the texts given here).
enum Row { Success, WrongFormat, BadResult, UnknownVariable, EqualPoints, SplineUndefined, Singular, NotTridiagonal,
           Undefined, RowCount };
const struct { const char *name, *box, *log; } kRows[RowCount] = {
    {"success", "Расчет завершен", ""},
    {"wrong format", "Неправильный формат ввода выражения", "Error: expression has wrong format."},
    {"bad result", "Значение выражения для заданных аргументов не определено либо слишком велико",
     "Error: result of expression evaluation is bad (equals to nan or inf)."},
    {"unknown variable", "Неизвестная переменная: ", "Error: expression has unknown variable: "},
    {"equal points", "Все точки, в которых задана исходная функция, должны быть различными",
     "Error: input table contains some equal X coordinates."},
    {"spline undefined", "Значение сплайна в точке x = ", "Error: spline is undefined at x = "},
    {"singular", "Матрица системы является вырожденной", "Error: matrix is singular."},
    {"not tridiagonal", "Матрица системы не является трехдиагональной", "Error: matrix is not tridiagonal."},
    {"undefined", "Неизвестная ошибка", "Error: undefined error."},
};

// The row a box shows, or -1; payload gets the unknown name or the spline's x.
int classify(const CaughtBox& box, QString& payload) {
    const QString text = box.text, splineTail = QString::fromUtf8(" не определено");
    if (box.title == QString::fromUtf8("Сообщение")) return text == QString::fromUtf8(kRows[Success].box) ? 0 : -1;
    if (box.title != QString::fromUtf8("Ошибка")) return -1;
    for (int r = WrongFormat; r < RowCount; ++r) {
        const QString head = QString::fromUtf8(kRows[r].box), tail = r == SplineUndefined ? splineTail : QString();
        const bool hasPayload = r == UnknownVariable || r == SplineUndefined;
        if (hasPayload ? text.startsWith(head) && text.endsWith(tail) && text.size() > head.size() + tail.size()
                       : text == head) {
            payload = text.mid(head.size(), text.size() - head.size() - tail.size());
            return r;
        }
    }
    return -1;
}

// The first place where the run log breaks its framing, or "": every
// "<Task> task begin." line is closed, before the next begin line, by its own
// "<Task> task end." line or by an "Error: " line, and every "Error: " line
// is followed by an empty line.
std::string framingFault(const std::string& log) {
    const std::string begin = " task begin.", end = " task end.";
    std::istringstream in(log);
    std::string line, open;  // the task whose frame is open, or ""
    bool afterError = false;
    for (int number = 1; std::getline(in, line); ++number) {
        const std::string where = "line " + std::to_string(number) + " \"" + line + "\": ";
        if (afterError && !line.empty()) return where + "no empty line after the error line";
        afterError = false;
        if (endsWith(line, begin)) {
            if (!open.empty()) return where + "begins inside the frame of " + open;
            open = line.substr(0, line.size() - begin.size());
        } else if (endsWith(line, end)) {
            if (line.substr(0, line.size() - end.size()) != open) return where + "ends a frame that is not open";
            open.clear();
        } else if (startsWith(line, "Error: ")) {
            if (open.empty()) return where + "error line outside a frame";
            open.clear();
            afterError = true;
        }
    }
    return afterError ? "the log ends right after an error line" : open.empty() ? "" : "the log ends inside " + open;
}

// What the expression field holds, as far as the outcome depends on it:
// Valid succeeds or meets a bad value, Malformed is rejected when the
// function is built, Unknown is well formed but led by an unknown name, and
// Random may be anything.
enum class Kind { Valid, Malformed, Unknown, Random };

const char* const kSpins[4] = {"x1", "x2", "h1", "h2"};
constexpr double kCellLimit = 999.99999, kXLimit = 99.9999;
// Integrations with more subintervals than this (both steps together) write
// long logs; a run lets only a few of them through, to bound its time.
constexpr double kHeavySteps = 3000;
constexpr int kMaxHeavy = 6;

double round5(double v) { return std::round(v * 1e5) / 1e5; }
unsigned bit(int row) { return 1u << row; }

class Monkey {
public:
    explicit Monkey(std::uint32_t seed) : seed_(seed), rng_(seed) {
        logName_ = harness_.dir().path() + "/" + harness_.logName();
    }

    void run(int count) {
        const auto start = std::chrono::steady_clock::now();
        while (done_ < count && !::testing::Test::HasFailure()) step();
        if (!::testing::Test::HasFailure()) {
            EXPECT_EQ(framingFault(readLog(0)), "");
        }
        if (::testing::Test::HasFailure())
            ADD_FAILURE() << "monkey seed " << seed_ << " failed at action " << done_ << "; replay with"
                          << " KALKORA_MONKEY_SEED=" << seed_ << " KALKORA_MONKEY_ACTIONS=" << done_
                          << " KALKORA_MONKEY_TRACE=1";
        std::printf("monkey: seed %u, %d actions, %d presses of calculate, %d heavy integrations, %.1f s\n", seed_,
                    done_, presses_, heavy_,
                    std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        for (int r = 0; r < RowCount; ++r) std::printf("  %-17s %d\n", kRows[r].name, seen_[r]);
    }

private:
    int pick(int n) { return static_cast<int>(rng_() % static_cast<std::uint32_t>(n)); }
    bool chance(int percent) { return pick(100) < percent; }
    // A uniformly chosen number with the given decimals in [-limit, limit].
    double decimal(double limit, int decimals) {
        const double scale = std::pow(10.0, decimals);
        const auto steps = static_cast<std::uint32_t>(std::llround(limit * scale));
        return (static_cast<double>(rng_() % (2 * steps + 1)) - steps) / scale;
    }

    QTableWidget* table() const { return harness_.child<QTableWidget>("tableFunc"); }
    QTabWidget* tabs() const { return harness_.child<QTabWidget>("tabWidget"); }
    QDoubleSpinBox* spin(const char* name) const { return harness_.child<QDoubleSpinBox>(name); }
    std::string field(const char* name) const { return harness_.child<QLineEdit>(name)->text().toStdString(); }
    bool shown(const char* name) const { return harness_.child<QWidget>(name)->isVisibleTo(harness_.child("tab")); }

    // Performs one user action, then checks the table's shape.
    template <class F>
    void act(const std::string& what, F&& action) {
        if (qEnvironmentVariableIsSet("KALKORA_MONKEY_TRACE")) {
            std::printf("monkey %d: %s\n", ++done_, what.c_str());
            std::fflush(stdout);
        } else {
            ++done_;
        }
        action();
        static const int kColumns[5] = {0, 5, 6, 5, 0}, kRowCounts[5] = {1, 2, 2, 2, 0};
        EXPECT_EQ(table()->columnCount(), task_ == 0 ? harness_.child<QSpinBox>("n")->value() + 1 : kColumns[task_]);
        EXPECT_EQ(table()->rowCount(), kRowCounts[task_]);
    }

    // Selecting a task and pressing "Очистить" both empty the expression and
    // put n and the spin boxes back to their start values.
    void expectCleared() {
        kind_ = Kind::Valid;
        EXPECT_EQ(field("exprFunc"), "");
        EXPECT_EQ(std::vector<double>({spin("x1")->value(), spin("x2")->value(), spin("h1")->value(),
                                       spin("h2")->value(), double(harness_.child<QSpinBox>("n")->value())}),
                  std::vector<double>({0, 0, 0.5, 0.25, 3}));
    }

    // One action, drawn by weight; an action on a widget that the selected
    // task hides is skipped, and one on the input panel first brings its tab.
    void step() {
        enum { Task, Rule, N, Cell, Fill, Text, Spin, Calculate, Clear, Tab, Count };
        static const int kWeights[Count] = {6, 4, 5, 18, 8, 14, 14, 13, 3, 5};
        static const char* const kRules[3] = {"checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod"};
        int kind = 0;
        for (int roll = pick(90); roll >= kWeights[kind]; roll -= kWeights[kind++]) {}
        if (kind != Tab && tabs()->currentIndex() != 0) switchTab(0);
        const int rows = table()->rowCount(), columns = table()->columnCount();
        if (kind == Task) {
            const int task = pick(5);
            act(kTaskButtons[task], [&] { harness_.click(kTaskButtons[task]); task_ = task; expectCleared(); });
        } else if (kind == Rule && task_ == 4) {
            const char* rule = kRules[pick(3)];
            act(rule, [&] { harness_.click(rule); EXPECT_TRUE(harness_.child<QAbstractButton>(rule)->isChecked()); });
        } else if (kind == N && shown("n")) {
            const int value = chance(50) ? 5 * pick(2) : pick(6);  // often a limit
            act("n = " + std::to_string(value), [&] {
                QSpinBox* n = harness_.child<QSpinBox>("n");
                n->findChild<QLineEdit*>()->selectAll();
                QTest::keyClicks(n->findChild<QLineEdit*>(), QString::number(value));
                QTest::keyClick(n, Qt::Key_Return);
                EXPECT_EQ(n->value(), value);
            });
        } else if (kind == Cell && columns > 0) {
            const int row = pick(rows);
            typeCell(row, pick(columns), cellValue(row));
        } else if (kind == Fill && columns > 0) {
            fillTable();
        } else if (kind == Text && shown("exprFunc")) {
            typeExpression();
        } else if (kind == Spin) {
            moveSpin();
        } else if (kind == Calculate) {
            calculate();
        } else if (kind == Clear) {
            act("clear", [&] { harness_.click("clearButton"); expectCleared(); });
        } else if (kind == Tab) {
            switchTab(1 - tabs()->currentIndex());
        }
    }

    void switchTab(int index) {
        act("tab " + std::to_string(index), [&] {
            QTabBar* bar = tabs()->tabBar();
            QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
            EXPECT_EQ(tabs()->currentIndex(), index);
        });
    }

    // 0, an extreme, a duplicate of a cell of the same row or one editor step
    // away from it, a small integer, or any value.
    double cellValue(int row) {
        const double other = harness_.cell(row, pick(table()->columnCount()));
        switch (pick(10)) {
        case 0: return 0;
        case 1: return chance(50) ? kCellLimit : -kCellLimit;
        case 2: return other;
        case 3: return std::max(-kCellLimit, std::min(kCellLimit, round5(other + (chance(50) ? 1e-5 : -1e-5))));
        case 4: case 5: case 6: return pick(21) - 10;
        default: return decimal(kCellLimit, 5);
        }
    }

    void typeCell(int row, int column, double value) {
        const std::string cell = std::to_string(row) + ", " + std::to_string(column);
        act("cell " + cell + " = " + QString::number(value, 'f', 5).toStdString(), [&] {
            harness_.typeCell(row, column, value);
            EXPECT_NEAR(harness_.cell(row, column), value, 1e-9);
        });
    }

    // The whole table: abscissas in a shuffled progression whose step is one
    // editor step or wider, and any ordinates.
    void fillTable() {
        const int columns = table()->columnCount();
        const double base = chance(20) ? -kCellLimit : decimal(50, 2);
        const double steps[4] = {1e-5, 0.5, 1, std::abs(decimal(300.0 / columns, 5))}, step = steps[pick(4)];
        std::vector<double> xs;
        for (int c = 0; c < columns; ++c) xs.push_back(std::min(kCellLimit, round5(base + c * step)));
        for (int c = columns - 1; c > 0; --c) std::swap(xs[c], xs[pick(c + 1)]);
        for (int c = 0; c < columns; ++c) typeCell(0, c, xs[c]);
        for (int c = 0; c < columns && table()->rowCount() == 2; ++c) typeCell(1, c, cellValue(1));
    }

    std::string gap() { return chance(25) ? " " : ""; }
    std::string op() { return gap() + "+-*/^"[pick(5)] + gap(); }
    std::string sign() { return chance(15) ? std::string(1, "+-"[pick(2)]) : ""; }
    // A well-formed text over x, pi, numbers and the sixteen functions: terms
    // joined by binary operators, a sign only first inside brackets.
    std::string compose(int depth) {
        static const char* const kFunctions[16] = {"sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg", "arcctg",
                                                   "exp", "ln", "log10", "log2", "abs", "sqrt", "sinh", "cosh"};
        static const char* const kNumbers[9] = {"2", "0.5", "1.", "1e-1", "3", "10", "0.25", "2.5E1", "7"};
        std::string s;
        for (int terms = 1 + pick(3); terms > 0; --terms) {
            if (!s.empty()) s += op();
            switch (pick(depth > 0 ? 6 : 3)) {
            case 0: s += "x"; break;
            case 1: s += kNumbers[pick(9)]; break;
            case 2: s += "pi"; break;
            case 3: s += std::string(kFunctions[pick(16)]) + "(" + gap() + compose(depth - 1) + ")"; break;
            case 4: s += "(" + compose(depth - 1) + ")"; break;
            default: s += "(" + sign() + compose(depth - 1) + ")";
            }
        }
        return s;
    }

    // Examples and compositions, texts with a fault that the function's
    // construction rejects, texts led by an unknown name, and noise.
    void typeExpression() {
        static const char* const kExamples[13] = {"sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)",
                                                  "log10(3) - ln(3) / ln(10)", "x^2", "sqrt(x)", "1/x", "ln(x)",
                                                  "exp(x*50)", "", "x", "-x^2", "2*(-x)", "((x))"};
        // Each is wrong on its own and after "valid * ".
        static const char* const kBroken[16] = {"2x", "x y", ".5", "х^2", "синус(x)", "sin x", "()", "1e400",
                                                "x_1", "2,5", "   ", "sin()", "2(x)", "2*-x", "x^-1", "1e"};
        static const char* const kUnknown[8] = {"y", "X", "e", "sin2", "Sin", "abc1", "LOG10", "Pi"};
        static const char* const kOdd[4] = {"*2", "(*x)", "x+(^x)", "(/2)"};  // unary operators with no meaning
        static const QString kLetters = QString::fromUtf8("éü±µжхпиЖ");
        QString text;
        Kind kind = Kind::Valid;
        const int roll = pick(10);
        if (roll < 2) {
            text = kExamples[pick(13)];
        } else if (roll < 5) {
            text = QString::fromStdString(sign() + compose(3));
        } else if (roll < 7) {
            kind = Kind::Malformed;
            const QString valid = QString::fromStdString(compose(2)), broken = QString::fromUtf8(kBroken[pick(16)]);
            const QString forms[5] = {valid + "(", ")" + valid, valid + "+", broken, valid + " * " + broken};
            text = forms[pick(5)];
        } else if (roll < 9) {
            kind = Kind::Unknown;
            unknown_ = kUnknown[pick(8)];
            text = QString::fromStdString(unknown_ + (chance(30) ? "" : op() + compose(2)));
        } else {
            kind = Kind::Random;
            if (chance(30)) text = kOdd[pick(4)];
            for (int length = text.isEmpty() ? 1 + pick(chance(20) ? 300 : 20) : 0; length > 0; --length)
                text += chance(10) ? kLetters[pick(kLetters.size())] : QChar(0x20 + pick(95));
        }
        act("text \"" + text.toStdString() + "\"", [&] {
            harness_.typeText("exprFunc", text);
            EXPECT_EQ(field("exprFunc"), text.toStdString());
            kind_ = kind;
        });
    }

    // One of the visible spin boxes x1, x2, h1, h2: to a limit, to the other
    // box of its pair or to any value (x mostly small); now and then all four
    // to the longest integration the form allows.
    void moveSpin() {
        std::vector<int> visible;
        for (int i = 0; i < 4; ++i)
            if (shown(kSpins[i])) visible.push_back(i);
        if (visible.size() == 4 && chance(4)) {
            const double extremes[4] = {-kXLimit, kXLimit, 0.01, chance(50) ? 0.01 : 0.02};
            for (int i = 0; i < 4; ++i) typeSpin(kSpins[i], extremes[i]);
        } else if (!visible.empty()) {
            const int i = visible[pick(static_cast<int>(visible.size()))];
            const bool x = i < 2;
            typeSpin(kSpins[i], chance(30)   ? (x ? (chance(50) ? -kXLimit : kXLimit) : (chance(50) ? 0.01 : 2.0))
                                : chance(15) ? spin(kSpins[i ^ 1])->value()
                                : x          ? decimal(chance(60) ? 10 : kXLimit, 4)
                                             : (1 + pick(200)) / 100.0);
        }
    }

    void typeSpin(const char* name, double value) {
        act(std::string(name) + " = " + QString::number(value, 'f', 4).toStdString(), [&] {
            harness_.typeNumber(name, value);
            EXPECT_NEAR(spin(name)->value(), value, 1e-12) << name;
        });
    }

    // The rows a press may end in, from the inputs as they are before it:
    // the table's sorted abscissas, whether they are pairwise distinct, x1, x2.
    unsigned allowedRows(const std::vector<double>& xs, bool distinct, double x1, double x2) const {
        const unsigned table = bit(distinct ? Success : EqualPoints);
        if (task_ == 1)
            return distinct ? bit(x1 >= xs.front() - 1e-7 && x1 <= xs.back() + 1e-7 ? Success : SplineUndefined)
                            : table;
        if (task_ == 2) return table | (distinct ? bit(Singular) : 0);
        if (task_ == 3) return table;
        // Interpolation and integration build the function first; integration
        // from x1 to x2 = x1 never calls it.
        const unsigned ok = (task_ == 0 ? table : bit(Success)) | bit(BadResult);
        switch (kind_) {
        case Kind::Malformed: return bit(WrongFormat);
        case Kind::Unknown: return bit(task_ == 4 && x1 == x2 ? Success : UnknownVariable);
        case Kind::Valid: return ok;
        case Kind::Random: break;
        }
        return ok | bit(WrongFormat) | bit(UnknownVariable);
    }

    void calculate() {
        const double width = std::abs(spin("x2")->value() - spin("x1")->value());
        if (task_ == 4 && width / spin("h1")->value() + width / spin("h2")->value() > kHeavySteps) {
            if (heavy_ < kMaxHeavy) {
                ++heavy_;
            } else {  // enough long integrations in this run: widen the steps first
                typeSpin("h1", (50 + pick(151)) / 100.0);
                typeSpin("h2", (50 + pick(151)) / 100.0);
            }
        }
        std::vector<double> xs;
        for (int c = 0; c < table()->columnCount(); ++c) xs.push_back(harness_.cell(0, c));
        std::sort(xs.begin(), xs.end());
        const bool distinct =
            std::adjacent_find(xs.begin(), xs.end(), [](double a, double b) { return b - a < 1e-8; }) == xs.end();
        const double x1 = spin("x1")->value();
        const unsigned allowed = allowedRows(xs, distinct, x1, spin("x2")->value());
        const int tab = tabs()->currentIndex();
        EXPECT_EQ(readLog(logSize_), "") << "the log grew outside a calculation";
        act("calculate", [&] {
            harness_.click("calcButton");
            ++presses_;
            const std::vector<CaughtBox> boxes = harness_.boxes().take();
            ASSERT_EQ(boxes.size(), 1u);
            QString payload;
            const int row = classify(boxes[0], payload);
            ASSERT_NE(row, -1) << boxes[0].title.toStdString() << ": " << boxes[0].text.toStdString();
            ++seen_[row];
            EXPECT_TRUE(allowed & bit(row)) << kTaskNames[task_] << " ended in " << kRows[row].name;
            EXPECT_EQ(tabs()->currentIndex(), tab);
            if (row == UnknownVariable && kind_ == Kind::Unknown) { EXPECT_EQ(payload.toStdString(), unknown_); }
            if (row == SplineUndefined) { EXPECT_EQ(payload, QString::number(x1, 'g', 6)) << payload.toStdString(); }

            // The log gains one run of the task, closed by its end line or by
            // the box's error line (its x in the stream's own format).
            std::ostringstream last;
            last << kRows[row].log;
            if (row == UnknownVariable) last << payload.toLatin1().constData();
            if (row == SplineUndefined) last << x1;
            const std::string added = readLog(logSize_), name = kTaskNames[task_];
            logSize_ += static_cast<std::streamoff>(added.size());
            EXPECT_TRUE(startsWith(added, name + " task begin.\n\n")) << added.substr(0, 300);
            EXPECT_TRUE(endsWith(added, (row == Success ? name + " task end." : last.str()) + "\n\n"))
                << added.substr(added.size() - std::min<size_t>(added.size(), 300));
            EXPECT_EQ(added.find(" task begin.", added.find(" task begin.") + 1), std::string::npos);
            expectPlot(row == Success ? kCurves[task_] : std::vector<std::string>(), xs);
        });
        if (presses_ % 250 == 0) {
            EXPECT_EQ(framingFault(readLog(0)), "");
        }
    }

    void expectPlot(const std::vector<std::string>& expected, const std::vector<double>& xs) const {
        std::vector<std::string> titles;
        const QwtPlotItemList items = harness_.child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve);
        for (const QwtPlotItem* item : items) titles.push_back(item->title().text().toStdString());
        ASSERT_EQ(titles, expected);
        for (const QwtPlotItem* item : items) {
            const auto* curve = static_cast<const QwtPlotCurve*>(item);
            if (curve->title().text() == "f(x)") {
                ASSERT_EQ(curve->dataSize(), xs.size());
                for (size_t i = 0; i < xs.size(); ++i) EXPECT_EQ(curve->sample(static_cast<int>(i)).x(), xs[i]);
            } else {  // one node: the interpolation plot spans the node's x ± 1
                EXPECT_EQ(curve->dataSize(), 100u) << curve->title().text().toStdString();
                EXPECT_EQ(curve->sample(0).x(), xs.size() == 1 ? xs[0] - 1 : xs.front());
            }
        }
    }

    std::string readLog(std::streamoff from) const {
        std::cerr.flush();
        std::fflush(stderr);
        std::ifstream in(logName_, std::ios::binary);
        in.seekg(from);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    WindowHarness harness_;
    const std::uint32_t seed_;
    std::mt19937 rng_;  // its sequence is fixed by the standard: a seed replays the same run everywhere
    std::string logName_, unknown_;
    std::streamoff logSize_ = 0;
    int task_ = 0, done_ = 0, presses_ = 0, heavy_ = 0, seen_[RowCount] = {};
    Kind kind_ = Kind::Valid;
};

QtMessageHandler qtMessages = nullptr;

// Every message box makes the headless platform note that it cannot
// propagate size hints: a thousand boxes would bury the test's own output.
void withoutSizeHintNotes(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!message.contains(QLatin1String("propagateSizeHints"))) qtMessages(type, context, message);
}

TEST(Monkey, RandomUserActionsKeepBoxesLogAndPlotConsistent) {
    const auto number = [](const char* name, unsigned fallback) {
        return qEnvironmentVariableIsEmpty(name) ? fallback : qgetenv(name).toUInt();
    };
    qtMessages = qInstallMessageHandler(withoutSizeHintNotes);
    Monkey(number("KALKORA_MONKEY_SEED", 20240611)).run(static_cast<int>(number("KALKORA_MONKEY_ACTIONS", 10000)));
    qInstallMessageHandler(qtMessages);
}

}  // namespace
