// Monkey test of the main window: a seeded, reproducible stream of random user actions over all
// five tasks. Every press of "Расчет" must end in exactly one message box that the inputs allow,
// add one framed run of the task to the run log and leave the task's curves (or none) on the plot.
// KALKORA_MONKEY_SEED and KALKORA_MONKEY_ACTIONS override the seed and the number of actions;
// KALKORA_MONKEY_TRACE=1 prints each action before it runs, so the last line names a crash.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
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
#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include "window_harness.h"

namespace {

// Per task: its radio button, its name in the log, the curves of a success in attachment order.
const struct { const char *button, *name; std::vector<std::string> curves; } kTasks[5] = {
    {"checkInterpolation", "Interpolation", {"N(x)", "f(x)"}},
    {"checkSpline", "Spline", {"S(x)", "f(x)"}},
    {"checkMNK", "Least squares", {"P1(x)", "P2(x)", "f(x)"}},
    {"checkDifferentiation", "Differentiation", {"N(x)", "N'(x)", "N''(x)", "f(x)"}},
    {"checkIntegration", "Integration", {}}};

// How a press of "Расчет" can end: the success box, then the error handlers with their box text
// and log line (the unknown name and the spline's x follow the texts given here).
enum Row { Success, WrongFormat, BadResult, UnknownVariable, EqualPoints, SplineUndefined, Singular,
           NotTridiagonal, Undefined, RowCount };
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
    {"not tridiagonal", "Матрица системы не является трехдиагональной",
     "Error: matrix is not tridiagonal."},
    {"undefined", "Неизвестная ошибка", "Error: undefined error."},
};

// The row a box shows, or -1; payload gets the unknown name or the spline's x.
int classify(const CaughtBox& box, QString& payload) {
    const bool error = box.title == QString::fromUtf8("Ошибка");
    if (!error && box.title != QString::fromUtf8("Сообщение")) return -1;
    for (int r = error ? WrongFormat : Success; r < (error ? RowCount : WrongFormat); ++r) {
        const QString head = QString::fromUtf8(kRows[r].box),
                      tail = QString::fromUtf8(r == SplineUndefined ? " не определено" : "");
        payload = box.text.mid(head.size(), box.text.size() - head.size() - tail.size());
        const bool hasPayload = r == UnknownVariable || r == SplineUndefined;
        if (box.text.startsWith(head) && box.text.endsWith(tail) && payload.isEmpty() != hasPayload)
            return r;
    }
    return -1;
}

// What the expression field holds, as far as the outcome depends on it: Valid succeeds or meets
// a bad value, Malformed is rejected when the function is built, Unknown is well formed but led
// by an unknown name, and Random may be anything.
enum class Kind { Valid, Malformed, Unknown, Random };

const char* const kSpins[4] = {"x1", "x2", "h1", "h2"};
constexpr double kCellLimit = 999.99999, kXLimit = 99.9999;
// Integrations with more subintervals than this (both steps together) write long logs; a run
// lets only a few of them through, to bound its time.
constexpr double kHeavySteps = 3000, kMaxHeavy = 6;

double round5(double v) { return std::round(v * 1e5) / 1e5; }
unsigned bit(int row) { return 1u << row; }

class Monkey {
public:
    explicit Monkey(std::uint32_t seed) : seed_(seed), rng_(seed) {}

    void run(int count) {
        while (done_ < count && !::testing::Test::HasFailure()) step();
        if (::testing::Test::HasFailure())
            ADD_FAILURE() << "monkey seed " << seed_ << " failed at action " << done_
                          << "; replay with KALKORA_MONKEY_SEED=" << seed_
                          << " KALKORA_MONKEY_ACTIONS=" << done_ << " KALKORA_MONKEY_TRACE=1";
        std::cout << "monkey: seed " << seed_ << ", " << done_ << " actions, " << presses_
                  << " presses";
        for (int r = 0; r < RowCount; ++r) std::cout << ", " << seen_[r] << ' ' << kRows[r].name;
        std::cout << std::endl;
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

    QTableWidget* table() const { return harness_.child<QTableWidget>("tableFunc"); }
    QTabWidget* tabs() const { return harness_.child<QTabWidget>("tabWidget"); }
    double spin(const char* name) const { return harness_.child<QDoubleSpinBox>(name)->value(); }
    bool shown(const char* name) const {
        return harness_.child<QWidget>(name)->isVisibleTo(harness_.child("tab"));
    }

    // Counts an action and, when tracing, names it before it runs.
    void note(const std::string& what) {
        ++done_;
        if (trace_) std::cout << "monkey " << done_ << ": " << what << std::endl;
    }
    void click(const char* button) { note(button); harness_.click(button); }

    // One action, drawn by weight; an action on a widget that the selected task hides is
    // skipped, and one on the input panel first brings its tab.
    void step() {
        enum { Task, Rule, N, Cell, Fill, Text, Spin, Calculate, Clear, Tab, Count };
        static const int kWeights[Count] = {6, 4, 5, 18, 8, 14, 14, 13, 3, 5};
        int kind = 0;
        for (int roll = pick(90); roll >= kWeights[kind]; roll -= kWeights[kind++]) {}
        QTabBar* bar = tabs()->tabBar();
        const int tab = kind == Tab ? 1 - bar->currentIndex() : 0;
        if (tab != bar->currentIndex()) {
            note("tab " + std::to_string(tab));
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        }
        const int rows = table()->rowCount(), columns = table()->columnCount();
        if (kind == Task || kind == Clear) {  // both empty the expression
            if (kind == Task) task_ = pick(5);
            click(kind == Task ? kTasks[task_].button : "clearButton");
            kind_ = Kind::Valid;
        } else if (kind == Rule && task_ == 4) {
            click(any({"checkRectMethod", "checkTrapezMethod", "checkSimpsonMethod"}));
        } else if (kind == N && shown("n")) {
            const int value = chance(50) ? 5 * pick(2) : pick(6);  // often a limit
            note("n = " + std::to_string(value));
            auto* n = harness_.child<QSpinBox>("n");
            n->findChild<QLineEdit*>()->selectAll();
            QTest::keyClicks(n->findChild<QLineEdit*>(), QString::number(value));
            QTest::keyClick(n, Qt::Key_Return);
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
        }
    }

    // 0, an extreme, a duplicate of a cell of the same row or one editor step away from it, a
    // small integer, or any value.
    double cellValue(int row) {
        const double other = harness_.cell(row, pick(table()->columnCount()));
        switch (pick(10)) {
        case 0: return 0;
        case 1: return chance(50) ? kCellLimit : -kCellLimit;
        case 2: return other;
        case 3: return std::clamp(round5(other + (chance(50) ? 1e-5 : -1e-5)), -kCellLimit,
                                  kCellLimit);
        case 4: case 5: case 6: return pick(21) - 10;
        default: return decimal(kCellLimit, 5);
        }
    }

    void typeCell(int row, int column, double value) {
        note("cell " + std::to_string(row) + ", " + std::to_string(column) + " = " +
             QString::number(value, 'f', 5).toStdString());
        harness_.typeCell(row, column, value);
    }

    // The whole table: abscissas in a shuffled progression whose step is one editor step or
    // wider, and any ordinates.
    void fillTable() {
        const int n = table()->columnCount();
        const double base = chance(20) ? -kCellLimit : decimal(50, 2);
        const double step = any({1e-5, 0.5, 1.0, std::abs(decimal(300.0 / n, 5))});
        std::vector<double> xs;
        for (int c = 0; c < n; ++c) xs.push_back(std::min(kCellLimit, round5(base + c * step)));
        for (int c = n - 1; c > 0; --c) std::swap(xs[c], xs[pick(c + 1)]);
        for (int c = 0; c < n; ++c) typeCell(0, c, xs[c]);
        for (int c = 0; c < n && table()->rowCount() == 2; ++c) typeCell(1, c, cellValue(1));
    }

    std::string gap() { return chance(25) ? " " : ""; }
    std::string op() { return gap() + "+-*/^"[pick(5)] + gap(); }
    std::string sign() { return chance(15) ? std::string(1, "+-"[pick(2)]) : ""; }
    // A well-formed text over x, pi, numbers and the sixteen functions: terms joined by binary
    // operators, a sign only first inside brackets.
    std::string compose(int depth) {
        std::string s;
        for (int terms = 1 + pick(3); terms > 0; --terms) {
            if (!s.empty()) s += op();
            switch (pick(depth > 0 ? 6 : 3)) {
            case 0: s += "x"; break;
            case 1: s += any({"2", "0.5", "1.", "1e-1", "3", "10", "0.25", "2.5E1", "7"}); break;
            case 2: s += "pi"; break;
            case 3:
                s += std::string(any({"sin", "cos", "tg", "ctg", "arcsin", "arccos", "arctg",
                                      "arcctg", "exp", "ln", "log10", "log2", "abs", "sqrt", "sinh",
                                      "cosh"})) + "(" + gap() + compose(depth - 1) + ")";
                break;
            case 4: s += "(" + compose(depth - 1) + ")"; break;
            default: s += "(" + sign() + compose(depth - 1) + ")";
            }
        }
        return s;
    }

    // Examples and compositions, texts with a fault that the function's construction rejects,
    // texts led by an unknown name, and noise.
    void typeExpression() {
        static const QString kLetters = QString::fromUtf8("éü±µжхпиЖ");
        QString text;
        Kind kind = Kind::Valid;
        const int roll = pick(10);
        if (roll < 2) {
            text = any({"sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "x^2", "1/x",
                        "log10(3) - ln(3) / ln(10)", "sqrt(x)", "ln(x)", "exp(x*50)", "", "x",
                        "-x^2", "2*(-x)", "((x))"});
        } else if (roll < 5) {
            text = QString::fromStdString(sign() + compose(3));
        } else if (roll < 7) {  // each broken text is wrong on its own and after "valid * "
            kind = Kind::Malformed;
            const QString valid = QString::fromStdString(compose(2));
            const QString bad = QString::fromUtf8(
                any({"2x", "x y", ".5", "х^2", "синус(x)", "sin x", "()", "1e400", "x_1", "2,5",
                     "   ", "sin()", "2(x)", "2*-x", "x^-1", "1e"}));
            text = any<QString>({valid + "(", ")" + valid, valid + "+", bad, valid + " * " + bad});
        } else if (roll < 9) {
            kind = Kind::Unknown;
            unknown_ = any({"y", "X", "e", "sin2", "Sin", "abc1", "LOG10", "Pi"});
            text = unknown_ + QString::fromStdString(chance(30) ? "" : op() + compose(2));
        } else {
            kind = Kind::Random;
            if (chance(30)) text = any({"*2", "(*x)", "x+(^x)", "(/2)"});  // meaningless unary ops
            for (int n = text.isEmpty() ? 1 + pick(chance(20) ? 300 : 20) : 0; n > 0; --n)
                text += chance(10) ? kLetters[pick(kLetters.size())] : QChar(0x20 + pick(95));
        }
        note("text \"" + text.toStdString() + "\"");
        harness_.typeText("exprFunc", text);
        kind_ = kind;
    }

    // One of the visible spin boxes x1, x2, h1, h2: to a limit, to the other box of its pair or
    // to any value (x mostly small); now and then all four to the longest integration allowed.
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
            typeSpin(kSpins[i], chance(30)   ? (x ? (chance(50) ? -kXLimit : kXLimit)
                                                  : (chance(50) ? 0.01 : 2.0))
                                : chance(15) ? spin(kSpins[i ^ 1])
                                : x          ? decimal(chance(60) ? 10 : kXLimit, 4)
                                             : (1 + pick(200)) / 100.0);
        }
    }

    void typeSpin(const char* name, double value) {
        note(std::string(name) + " = " + QString::number(value, 'f', 4).toStdString());
        harness_.typeNumber(name, value);
    }

    // The rows a press may end in, from the inputs as they are before it: the table's sorted
    // abscissas, whether they are pairwise distinct, x1, x2.
    unsigned allowedRows(const std::vector<double>& xs, bool distinct, double x1, double x2) const {
        const unsigned table = bit(distinct ? Success : EqualPoints);
        const bool inside = !xs.empty() && x1 >= xs.front() - 1e-7 && x1 <= xs.back() + 1e-7;
        if (task_ == 1 && distinct) return bit(inside ? Success : SplineUndefined);
        if (task_ == 1 || task_ == 3) return table;
        if (task_ == 2) return table | (distinct ? bit(Singular) : 0);
        // Interpolation and integration build the function first; integration from x1 to
        // x2 = x1 never calls it.
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
        const double width = std::abs(spin("x2") - spin("x1"));
        if (task_ == 4 && width / spin("h1") + width / spin("h2") > kHeavySteps &&
            heavy_++ >= kMaxHeavy) {  // enough long integrations in this run: widen the steps
            typeSpin("h1", (50 + pick(151)) / 100.0);
            typeSpin("h2", (50 + pick(151)) / 100.0);
        }
        std::vector<double> xs;
        for (int c = 0; c < table()->columnCount(); ++c) xs.push_back(harness_.cell(0, c));
        std::sort(xs.begin(), xs.end());
        const auto equal = [](double a, double b) { return b - a < 1e-8; };
        const bool distinct = std::adjacent_find(xs.begin(), xs.end(), equal) == xs.end();
        const double x1 = spin("x1");
        const unsigned allowed = allowedRows(xs, distinct, x1, spin("x2"));
        EXPECT_EQ(readLog(), "") << "the log grew outside a calculation";
        note("calculate");
        harness_.click("calcButton");
        ++presses_;
        const std::vector<CaughtBox> boxes = harness_.boxes().take();
        ASSERT_EQ(boxes.size(), 1u);
        QString payload;
        const int row = classify(boxes[0], payload);
        ASSERT_NE(row, -1) << boxes[0].title.toStdString() << ": " << boxes[0].text.toStdString();
        ++seen_[row];
        const std::string name = kTasks[task_].name;
        EXPECT_TRUE(allowed & bit(row)) << name << " ended in " << kRows[row].name;
        if (row == UnknownVariable && kind_ == Kind::Unknown) { EXPECT_EQ(payload, unknown_); }
        if (row == SplineUndefined) { EXPECT_EQ(payload, QString::number(x1, 'g', 6)); }

        // The log gains one framed run of the task: its begin line, lines of the run only, then
        // its end line or the box's error line (the spline's x in the stream's own format), each
        // followed by an empty line.
        std::ostringstream last;
        last << (row == Success ? name + " task end." : kRows[row].log);
        if (row == UnknownVariable) last << payload.toLatin1().constData();
        if (row == SplineUndefined) last << x1;
        last << "\n\n";
        const std::string added = readLog(), head = name + " task begin.\n\n", tail = last.str();
        logSize_ += static_cast<std::streamoff>(added.size());
        const size_t end = added.find(tail, head.size());  // the first closing line
        ASSERT_TRUE(added.rfind(head, 0) == 0 && end != std::string::npos &&
                    end + tail.size() == added.size())
            << added.substr(0, 300) << "\n...\n"
            << added.substr(added.size() - std::min<size_t>(added.size(), 300));
        const std::string body = "\n" + added.substr(head.size(), end - head.size());
        for (const char* line : {" task begin.\n", " task end.\n", "\nError: "})
            EXPECT_EQ(body.find(line), std::string::npos) << "inside the run: " << line;
        expectPlot(row == Success ? kTasks[task_].curves : std::vector<std::string>(), xs);
    }

    // The task's curves after a success, none after an error: "f(x)" holds the sorted table, each
    // other curve 100 samples from the first node on (one node: from the node's x - 1).
    void expectPlot(const std::vector<std::string>& expected, const std::vector<double>& xs) const {
        const auto items = harness_.child<QwtPlot>("plot")->itemList(QwtPlotItem::Rtti_PlotCurve);
        std::vector<std::string> titles;
        for (const QwtPlotItem* item : items) titles.push_back(item->title().text().toStdString());
        ASSERT_EQ(titles, expected);
        for (const QwtPlotItem* item : items) {
            const auto* curve = static_cast<const QwtPlotCurve*>(item);
            std::vector<double> at;
            for (size_t i = 0; i < curve->dataSize(); ++i) at.push_back(curve->sample(int(i)).x());
            if (curve->title().text() == "f(x)") EXPECT_EQ(at, xs);
            else EXPECT_TRUE(at.size() == 100 && at[0] == (xs.size() == 1 ? xs[0] - 1 : xs[0]))
                << curve->title().text().toStdString() << ": " << at.size() << " samples";
        }
    }

    std::string readLog() const {  // what the run log gained since the last press
        std::cerr.flush();
        std::fflush(stderr);
        std::ifstream in(harness_.dir().path() + "/" + harness_.logName(), std::ios::binary);
        std::ostringstream text;
        text << in.seekg(logSize_).rdbuf();
        return text.str();
    }

    WindowHarness harness_;
    const std::uint32_t seed_;
    std::mt19937 rng_;  // its sequence is fixed by the standard: a seed replays the run anywhere
    const bool trace_ = qEnvironmentVariableIsSet("KALKORA_MONKEY_TRACE");
    QString unknown_;
    std::streamoff logSize_ = 0;
    int task_ = 0, done_ = 0, presses_ = 0, heavy_ = 0, seen_[RowCount] = {};
    Kind kind_ = Kind::Valid;
};

TEST(Monkey, RandomUserActionsKeepBoxesLogAndPlotConsistent) {
    const auto number = [](const char* name, unsigned fallback) {
        return qEnvironmentVariableIsEmpty(name) ? fallback : qgetenv(name).toUInt();
    };
    // Every box makes the headless platform note that it cannot propagate size hints: a thousand
    // boxes would bury the test's own output.
    static QtMessageHandler qtMessages = nullptr;
    qtMessages = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& at,
                                           const QString& text) {
        if (!text.contains(QLatin1String("propagateSizeHints"))) qtMessages(type, at, text);
    });
    Monkey(number("KALKORA_MONKEY_SEED", 20240611))
        .run(static_cast<int>(number("KALKORA_MONKEY_ACTIONS", 10000)));
    qInstallMessageHandler(qtMessages);
}

}  // namespace
