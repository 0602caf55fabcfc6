// The compiled evaluation and the direct rounding of x, checked bit for bit against the text route they stand in
// for: the text "x = %lg" stored by set_variables, then calculate's walk. Function is checked here as a whole: its
// values, failures and copies are those of that route.

#include <gtest/gtest.h>

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "expression/decimal_rounding.h"
#include "expression/function.h"
#include "expression_test_support.h"

namespace {

std::string textRoute(Expression& e, const std::string& assignments)
{
    return outcomeOf([&] {
        e.set_variables(assignments);
        return e.calculate(ExpressionTestAccess::postfix(e));
    });
}

std::string textRoute(Expression& e, double x)
{
    char text[300];
    std::snprintf(text, sizeof text, "x = %lg", x);
    return textRoute(e, text);
}

// Constructed: ties at the 7th significant digit exact in binary, signed zeros, the ends of the directly rounded
// range, denormals, powers of ten, DBL_MAX; each with neighbours (infinities included) and negated; NaN.
// Random, fixed seed: raw bit patterns, log-uniform magnitudes, the integration range, and exact ties n5 * 10^k
// and n5 * 2^k.
std::vector<double> arguments(std::size_t randomCount, std::uint64_t seed)
{
    std::vector<double> xs = {0.0, 1e-07, 1234565, 1234575, 999999.5, 9999995, 100000.5, 1.234375, 0.1171875,
                              0.3828125, 12.34375, 0.5, 0.25, 1.0000001, 123456.7, 0.30000000000000004, 99.99995,
                              1e-17, 1e27, 1e-300, 4.9e-324, 2.2250738585072014e-308, DBL_MAX, 6.02214076e23,
                              9.9999995e26};
    for (int k = -18; k <= 28; ++k) xs.push_back(std::pow(10.0, k));
    for (std::size_t i = 0, n = xs.size(); i < n; ++i) {
        xs.insert(xs.end(), {std::nextafter(xs[i], 0.0), std::nextafter(xs[i], INFINITY), -xs[i]});
    }
    std::mt19937_64 random(seed);
    using Real = std::uniform_real_distribution<double>;
    using Int = std::uniform_int_distribution<int>;
    for (std::size_t added = 0; added < randomCount; added += 5) {
        const std::uint64_t bits = random();
        double x;
        std::memcpy(&x, &bits, sizeof x);
        if (std::isfinite(x)) xs.push_back(x);
        xs.push_back((bits & 1 ? 1 : -1) * std::pow(10.0, Real(-20, 30)(random)));
        xs.push_back(Real(-100, 100)(random));
        const double tie = Int(100000, 999999)(random) * 10.0 + 5;
        const int k = Int(-12, 12)(random);
        xs.push_back(k >= 0 ? tie * std::pow(10.0, k) : tie / std::pow(10.0, -k));
        xs.push_back(std::ldexp(tie, Int(-40, 20)(random)));
    }
    xs.push_back(NAN);
    return xs;
}

TEST(DecimalRounding, AgreesWithPrintfAndStrtod)
{
    ASSERT_TRUE(decimal_rounding::standard_environment());
    const std::vector<double> xs = arguments(200000, 20240601);
    std::size_t direct = 0;
    for (double x : xs) {
        double rounded = 12345;  // must stay untouched outside the promised range
        char text[64];
        std::snprintf(text, sizeof text, "%lg", x);
        const bool inRange = x == 0 || (std::fabs(x) >= 1e-17 && std::fabs(x) < 1e27);
        ASSERT_EQ(decimal_rounding::round_like_printf(x, rounded), inRange) << x;
        ASSERT_EQ(bitsOf(rounded), bitsOf(inRange ? std::strtod(text, nullptr) : 12345.0)) << x << " -> " << text;
        direct += inRange;
    }
    EXPECT_GT(direct, xs.size() * 3 / 4);
}

// Every operator and function, unary signs, literals that round, names without values, operators failing only at
// evaluation, and nesting deeper than the inline stack.
std::vector<std::string> expressionTexts()
{
    std::vector<std::string> t = {
        "sin(2*pi*x)*exp(-4*pi^2*x)", "0.5 * (1. + 0.2 - 1e-1)", "log10(3) - ln(3) / ln(10)", "x", "-x", "+x",
        "-(-x)", "x-x", "x/x", "1/x", "1/(1/x)", "x^2", "-x^2", "2^3^x", "x^x", "pi*x", "(-8)^(1/3)+x", "x^(-1)",
        "3.14159265*x", "1234567*x+1e-07", "sin(x)", "cos(x)", "tg(x)", "ctg(x)", "arcsin(x)", "arccos(x)",
        "arctg(x)", "arcctg(x)", "exp(x)", "ln(x)", "log10(x)", "log2(x)", "abs(x)", "sqrt(x)", "sinh(x)", "cosh(x)",
        "0*exp(x)", "sqrt(x)*0+1", "y+x", "x+y", "sin(y)*(*x)", "*x", "(/x)", "2*(^x)", "e", "x*X"};
    std::string deep = "x", right = "x";
    for (int i = 0; i < 40; ++i) {
        deep = "(" + deep + "+" + std::to_string(i) + ")*0.5";
        right = "x-(" + right + ")";
    }
    t.insert(t.end(), {deep, right});
    return t;
}

// One object called in turn at every argument: a failure leaves it usable, a non-finite x is refused before the
// evaluation (which would find y unknown); then a copy made after the calls.
TEST(FastEvaluation, FunctionMatchesTheTextRoute)
{
    const std::vector<double> xs = arguments(1000, 7);
    for (const std::string& text : expressionTexts()) {
        Function fast(text);
        Expression reference(text);
        for (double x : xs) {
            const std::string expected = std::isfinite(x) ? textRoute(reference, x) : "ExpressionBadResult";
            ASSERT_EQ(outcomeOf([&] { return fast(x); }), expected) << text << " at " << x;
        }
        Function copy = fast;
        for (double x : {0.37, -2.5, 1e-07}) {
            ASSERT_EQ(outcomeOf([&] { return copy(x); }), outcomeOf([&] { return fast(x); })) << text;
        }
    }
}

// eval on one object in turn: values kept across calls, pi reassigned, several names, the first missing name
// reported; then a copy.
TEST(FastEvaluation, EvalMatchesTheTextRoute)
{
    const std::vector<std::vector<const char*>> cases = {  // expression, then assignments
        {"x*y+pi", "", "x = 2", "y = 3", "pi = 3", "x = 1e308 y = 10", "x = -0 y = 1"},
        {"a/b - b/a", "a = 1", "b = 0", "b = 2", "a = 0", "a = 1e-310 b = 1e-310"},
        {"x^y^z", "x = 2 y = 3 z = 2", "z = 0.5", "x = -1 y = 0.5", "x = 0 y = -1 z = 1"},
        {"sin(q)*(*w)", "", "q = 1", "q = 1 w = 2"},
        {"-(pi)+abs(-pi)", "", "pi = -0"},
        {"w1+w2*w3-w4/w5", "w1 = 1 w2 = 2 w3 = 3", "w4 = 4", "w5 = 0", "w5 = 5"},
    };
    for (const auto& c : cases) {
        Expression fast(c[0]), reference(c[0]);
        for (std::size_t i = 1; i < c.size(); ++i) {
            EXPECT_EQ(outcomeOf([&] { return fast.eval(c[i]); }), textRoute(reference, c[i])) << c[0] << " / " << c[i];
        }
        Expression copy = fast;
        EXPECT_EQ(outcomeOf([&] { return copy.eval(""); }), textRoute(reference, "")) << c[0];
    }
}

// Outside round-to-nearest the C library rounds the text differently: the fast paths step aside, also for objects
// built under one mode and called under another.
TEST(FastEvaluation, OtherRoundingModesFollowTheTextRoute)
{
    const double xs[] = {1.0000001, 0.30000000000000004, 1234565, 2.0 / 3, -123.456789, 0.1171875};
    for (int built : {FE_TONEAREST, FE_UPWARD})
        for (int called : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST})
            for (const char* text : {"x", "0.3*x+0.7", "sin(2*pi*x)*exp(-4*pi^2*x)"}) {
                std::fesetround(built);
                Function fast(text);
                Expression reference(text);
                for (double x : xs) {
                    std::fesetround(called);
                    const std::string got = outcomeOf([&] { return fast(x); });
                    const std::string expected = textRoute(reference, x);
                    std::fesetround(FE_TONEAREST);  // so that a failure prints normally
                    ASSERT_EQ(got, expected) << text << " at " << x << ", modes " << built << "/" << called;
                }
            }
}

}  // namespace
