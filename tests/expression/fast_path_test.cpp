// The compiled evaluation and the direct rounding of x, checked bit for bit against the text route they stand in for:
// the text "x = %lg" stored by set_variables, then calculate's walk.

#include <gtest/gtest.h>

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "expression/decimal_rounding.h"
#include "expression/function.h"
#include "expression_test_support.h"

namespace {

std::string printed(double x) {
    char text[300];
    std::snprintf(text, sizeof text, "%lg", x);
    return text;
}

std::string textRoute(Expression& e, const std::string& assignments) {
    return outcomeOf([&] {
        e.set_variables(assignments);
        return e.calculate(ExpressionTestAccess::postfix(e));
    });
}

// Ties at the 7th significant digit exact in binary, signed zeros, the ends of the directly rounded range, denormals,
// powers of ten, DBL_MAX, each with neighbours (infinities included) and negated; NaN. Random, fixed seed: raw bits,
// log-uniform magnitudes, the integration range, and exact ties n5 * 10^k and n5 * 2^k.
std::vector<double> arguments(std::size_t randomCount, std::uint64_t seed) {
    std::vector<double> xs = {0.0, 1e-07, 1234565, 1234575, 999999.5, 9999995, 100000.5, 1.234375, 0.1171875,
                              0.3828125, 12.34375, 0.5, 0.25, 1.0000001, 123456.7, 0.30000000000000004, 99.99995,
                              1e-17, 1e27, 1e-300, 4.9e-324, 2.2250738585072014e-308, DBL_MAX, 6.02214076e23,
                              9.9999995e26};
    for (int k = -18; k <= 28; ++k) xs.push_back(std::pow(10.0, k));
    for (std::size_t i = 0, n = xs.size(); i < n; ++i)
        xs.insert(xs.end(), {std::nextafter(xs[i], 0.0), std::nextafter(xs[i], INFINITY), -xs[i]});
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
        const double tie = Int(100000, 999999)(random) * 10.0 + 5, k = Int(-12, 12)(random);
        xs.push_back(k >= 0 ? tie * std::pow(10.0, k) : tie / std::pow(10.0, -k));
        xs.push_back(std::ldexp(tie, Int(-40, 20)(random)));
    }
    xs.push_back(NAN);
    return xs;
}

TEST(DecimalRounding, AgreesWithPrintfAndStrtod) {
    ASSERT_TRUE(decimal_rounding::standard_environment());
    const std::vector<double> xs = arguments(200000, 20240601);
    for (double x : xs) {
        double rounded = 12345;  // must stay untouched outside the promised range
        const bool inRange = x == 0 || (std::fabs(x) >= 1e-17 && std::fabs(x) < 1e27);
        ASSERT_EQ(decimal_rounding::round_like_printf(x, rounded), inRange) << x;
        ASSERT_EQ(bitsOf(rounded), bitsOf(inRange ? std::strtod(printed(x).c_str(), nullptr) : 12345.0)) << x;
    }
}

// Function as a whole. One object per text (every operator, unary signs, literals that round, names without values,
// unary * / ^, nesting deeper than the inline stack) called at every argument: a failure leaves it usable, a
// non-finite x is refused before the evaluation (which would find y unknown). Outside round-to-nearest, also for
// objects built under another mode, the C library rounds the text differently: the fast paths must step aside.
TEST(FastEvaluation, FunctionMatchesTheTextRoute) {
    std::vector<std::string> texts = {"sin(2*pi*x)*exp(-4*pi^2*x)", "0.3*x+0.7", "x", "-x", "+x", "-(-x)", "x-x",
                                      "x/x", "1/x", "1/(1/x)", "x^2", "-x^2", "2^3^x", "x^x", "pi*x", "(-8)^(1/3)+x",
                                      "x^(-1)", "3.14159265*x", "1234567*x+1e-07", "arcsin(x)", "ln(x)", "0*exp(x)",
                                      "sqrt(x)*0+1", "y+x", "x+y", "sin(y)*(*x)", "*x", "(/x)", "2*(^x)", "e", "x*X"};
    std::string deep = "x", right = "x";
    for (int i = 0; i < 40; ++i) {
        deep = "(" + deep + "+" + std::to_string(i) + ")*0.5";
        right = "x-(" + right + ")";
    }
    texts.insert(texts.end(), {deep, right});
    const std::vector<double> xs = arguments(1000, 7);
    for (int built : {FE_TONEAREST, FE_UPWARD})
        for (int called : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO})
            for (const std::string& text : texts) {
                std::fesetround(built);
                Function fast(text);
                Expression reference(text);
                for (double x : xs) {
                    std::fesetround(called);
                    const std::string got = outcomeOf([&] { return fast(x); });
                    const std::string expected = std::isfinite(x) ? textRoute(reference, "x = " + printed(x))
                                                                  : "ExpressionBadResult";
                    std::fesetround(FE_TONEAREST);  // so that a failure prints normally
                    ASSERT_EQ(got, expected) << text << " at " << x << ", modes " << built << "/" << called;
                }
            }
}

}  // namespace
