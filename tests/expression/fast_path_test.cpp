// The compiled evaluation and the direct rounding of x, each checked bit for
// bit against the text route it stands in for: the text "x = %lg" stored by
// set_variables and the postfix sequence walked by calculate.

#include <gtest/gtest.h>

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/decimal_rounding.h"
#include "expression/function.h"
#include "expression_test_support.h"

namespace {

// A value (compared by its bits, so NaN payloads and -0.0 count) or the
// exception class and the name it carries.
struct Outcome {
    enum Kind { value, wrong_format, unknown_variable, bad_result } kind = value;
    std::uint64_t bits = 0;
    std::string name;

    bool operator==(const Outcome& o) const { return kind == o.kind && bits == o.bits && name == o.name; }
};

std::ostream& operator<<(std::ostream& out, const Outcome& o)
{
    double v;
    std::memcpy(&v, &o.bits, sizeof v);
    const char* kinds[] = {"value", "wrong format", "unknown variable", "bad result"};
    return out << kinds[o.kind] << ' ' << v << ' ' << o.name;
}

Outcome outcomeOf(const std::function<double()>& run)
{
    Outcome o;
    try {
        const double v = run();
        std::memcpy(&o.bits, &v, sizeof v);
    } catch (const ExpressionWrongFormat&) {
        o.kind = Outcome::wrong_format;
    } catch (const ExpressionUnknownVariable& e) {
        o.kind = Outcome::unknown_variable;
        o.name = e.name;
    } catch (const ExpressionBadResult&) {
        o.kind = Outcome::bad_result;
    }
    return o;
}

// The text route: store the assignments, then walk the postfix tokens.
Outcome textRoute(Expression& e, const std::string& assignments)
{
    return outcomeOf([&] {
        e.set_variables(assignments);
        return e.calculate(ExpressionTestAccess::postfix(e));
    });
}

std::string assignmentOf(double x)
{
    char text[300];
    std::snprintf(text, sizeof text, "x = %lg", x);
    return text;
}

std::uint64_t bitsOf(double v)
{
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

// Hand-picked arguments: ties at the 7th significant digit that are exact in
// binary (and their neighbours), signed zeros, the ends of the directly
// rounded range, denormals, powers of ten and the largest double.
std::vector<double> constructedArguments()
{
    std::vector<double> xs = {0.0, -0.0, 1e-07, -1e-07, 1234565, 1234575, -1234565, 999999.5,
                              9999995, 100000.5, 1.234375, 0.1171875, 0.3828125, 12.34375,
                              0.5, 0.25, 1.0000001, 123456.7, 0.30000000000000004, 99.99995,
                              1e-17, 1e27, 1e28, 1e-300, 4.9e-324, 2.2250738585072014e-308,
                              DBL_MAX, -DBL_MAX, 6.02214076e23, 9.9999995e26};
    for (int k = -18; k <= 28; ++k) {
        xs.push_back(std::pow(10.0, k));
    }
    const std::size_t n = xs.size();
    for (std::size_t i = 0; i < n; ++i) {
        xs.push_back(std::nextafter(xs[i], 0.0));
        xs.push_back(std::nextafter(xs[i], INFINITY));
        xs.push_back(-xs[i]);
    }
    return xs;
}

// Random arguments from a fixed seed: raw bit patterns (every exponent),
// log-uniform magnitudes, the integration form's range, and exact ties
// n5 * 10^k and n5 * 2^k.
std::vector<double> randomArguments(std::size_t count, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::vector<double> xs;
    while (xs.size() < count) {
        const std::uint64_t bits = random();
        double x;
        std::memcpy(&x, &bits, sizeof x);
        if (std::isfinite(x)) {
            xs.push_back(x);
        }
        const double magnitude = std::pow(10.0, std::uniform_real_distribution<double>(-20, 30)(random));
        xs.push_back(bits & 1 ? magnitude : -magnitude);
        xs.push_back(std::uniform_real_distribution<double>(-100, 100)(random));
        const double tie = static_cast<double>(std::uniform_int_distribution<long>(100000, 999999)(random) * 10 + 5);
        const int k = std::uniform_int_distribution<int>(-12, 12)(random);
        xs.push_back(k >= 0 ? tie * std::pow(10.0, k) : tie / std::pow(10.0, -k));
        xs.push_back(std::ldexp(tie, std::uniform_int_distribution<int>(-40, 20)(random)));
    }
    return xs;
}

TEST(DecimalRounding, AgreesWithPrintfAndStrtod)
{
    ASSERT_TRUE(decimal_rounding::standard_environment());
    std::vector<double> xs = constructedArguments();
    const std::vector<double> random = randomArguments(200000, 20240601);
    xs.insert(xs.end(), random.begin(), random.end());
    std::size_t direct = 0;
    for (double x : xs) {
        double rounded = 12345;
        const bool handled = decimal_rounding::round_like_printf(x, rounded);
        // The range the header promises, and nothing outside it.
        const double a = std::fabs(x);
        ASSERT_EQ(handled, x == 0 || (a >= 1e-17 && a < 1e27)) << x;
        if (!handled) {
            EXPECT_EQ(rounded, 12345);
            continue;
        }
        ++direct;
        char text[64];
        std::snprintf(text, sizeof text, "%lg", x);
        ASSERT_EQ(bitsOf(rounded), bitsOf(std::strtod(text, nullptr))) << x << " -> " << text;
    }
    EXPECT_GT(direct, xs.size() * 3 / 4);
    double unused;
    for (double x : {NAN, INFINITY, -INFINITY}) {
        EXPECT_FALSE(decimal_rounding::round_like_printf(x, unused));
    }
}

// Texts over every operator, every function, unary signs, literals that
// round, names without values, operators that fail only at evaluation, and
// nesting deeper than the program's inline stack.
const std::vector<std::string>& expressionTexts()
{
    static const std::vector<std::string> texts = [] {
        std::vector<std::string> t = {
            "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "log10(3) - ln(3) / ln(10)",
            "x", "-x", "+x", "-(-x)", "x-x", "x/x", "1/x", "1/(1/x)", "x^2", "-x^2", "2^3^x", "x^x",
            "(-8)^(1/3)+x", "x^(-1)", "3.14159265*x", "1234567*x+1e-07", "pi*x", "sin(x)", "cos(x)",
            "tg(x)", "ctg(x)", "arcsin(x)", "arccos(x)", "arctg(x)", "arcctg(x)", "exp(x)", "ln(x)",
            "log10(x)", "log2(x)", "abs(x)", "sqrt(x)", "sinh(x)", "cosh(x)", "0*exp(x)",
            "sqrt(x)*0+1", "y+x", "x+y", "sin(y)*(*x)", "*x", "(/x)", "2*(^x)", "e", "x*X"};
        std::string deep = "x";
        for (int i = 0; i < 40; ++i) {
            deep = "(" + deep + "+" + std::to_string(i) + ")*0.5";
        }
        t.push_back(deep);
        std::string right = "x";
        for (int i = 0; i < 40; ++i) {
            right = "x-(" + right + ")";
        }
        t.push_back(right);
        return t;
    }();
    return texts;
}

TEST(FastEvaluation, FunctionMatchesTheTextRoute)
{
    std::vector<double> xs = constructedArguments();
    const std::vector<double> random = randomArguments(1000, 7);
    xs.insert(xs.end(), random.begin(), random.end());
    std::size_t compared = 0;
    for (const std::string& text : expressionTexts()) {
        Function fast(text);
        Expression reference(text);
        for (double x : xs) {
            const Outcome expected = std::isfinite(x) ? textRoute(reference, assignmentOf(x))
                                                      : Outcome{Outcome::bad_result, 0, ""};
            ASSERT_EQ(outcomeOf([&] { return fast(x); }), expected) << text << " at " << x;
            ++compared;
        }
        // A copy made after calls evaluates like the original.
        Function copy = fast;
        for (double x : {0.37, -2.5, 1e-07}) {
            ASSERT_EQ(outcomeOf([&] { return copy(x); }), outcomeOf([&] { return fast(x); })) << text;
        }
    }
    EXPECT_GT(compared, 60000u);
}

// eval with arbitrary assignment texts: values kept across calls, pi
// reassigned, several names, the first missing name reported.
TEST(FastEvaluation, EvalMatchesTheTextRoute)
{
    const struct {
        const char* expression;
        std::vector<const char*> assignments;  // evaluated in turn on one object
    } cases[] = {
        {"x*y+pi", {"", "x = 2", "y = 3", "pi = 3", "x = 1e308 y = 10", "x = -0 y = 1"}},
        {"a/b - b/a", {"a = 1", "b = 0", "b = 2", "a = 0", "a = 1e-310 b = 1e-310"}},
        {"x^y^z", {"x = 2 y = 3 z = 2", "z = 0.5", "x = -1 y = 0.5", "x = 0 y = -1 z = 1"}},
        {"sin(q)*(*w)", {"", "q = 1", "q = 1 w = 2"}},
        {"-(pi)+abs(-pi)", {"", "pi = -0"}},
        {"w1+w2*w3-w4/w5", {"w1 = 1 w2 = 2 w3 = 3", "w4 = 4", "w5 = 0", "w5 = 5"}},
    };
    for (const auto& c : cases) {
        Expression fast(c.expression);
        Expression reference(c.expression);
        for (const char* text : c.assignments) {
            EXPECT_EQ(outcomeOf([&] { return fast.eval(text); }), textRoute(reference, text))
                << c.expression << " after " << text;
        }
        Expression copy = fast;
        EXPECT_EQ(outcomeOf([&] { return copy.eval(""); }), textRoute(reference, "")) << c.expression;
    }
}

// Outside round-to-nearest the C library rounds the text differently; the
// fast paths step aside and the results still follow the text route, also
// for objects built under one mode and called under another.
TEST(FastEvaluation, OtherRoundingModesFollowTheTextRoute)
{
    const std::vector<std::string> texts = {"x", "0.3*x+0.7", "sin(2*pi*x)*exp(-4*pi^2*x)"};
    const std::vector<double> xs = {1.0000001, 0.30000000000000004, 1234565, 2.0 / 3, -123.456789, 0.1171875};
    for (int built : {FE_TONEAREST, FE_UPWARD}) {
        for (int called : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
            for (const std::string& text : texts) {
                std::fesetround(built);
                Function fast(text);
                Expression reference(text);
                std::fesetround(called);
                for (double x : xs) {
                    const Outcome got = outcomeOf([&] { return fast(x); });
                    const Outcome expected = textRoute(reference, assignmentOf(x));
                    std::fesetround(FE_TONEAREST);
                    ASSERT_EQ(got, expected) << text << " at " << x << " modes " << built << "/" << called;
                    std::fesetround(called);
                }
                std::fesetround(FE_TONEAREST);
            }
        }
    }
}

}  // namespace
