// The fast evaluation (the folded program, the direct rounding of x) against the text route it stands for, bit for
// bit and exception for exception: on the fuzz corpus, on curated and random texts, at special and random arguments,
// after assignments (pi = 3 included), under every number setting of number_settings.h, with objects built under one
// setting and used under another.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "expression/decimal_rounding.h"
#include "expression/function.h"
#include "expression/number_environment.h"
#include "expression_test_support.h"
#include "number_settings.h"

namespace {

std::string printed(double x) {
    char text[300];
    std::snprintf(text, sizeof text, "%lg", x);
    return text;
}

double fromBits(std::uint64_t bits) {
    double x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

// Ties at the 7th significant digit exact in binary, signed zeros, the ends of the directly rounded range, denormals,
// powers of ten and of two (values that round to a power of two take the exact route; 2^17 ends the inline one),
// DBL_MAX, each with neighbours (infinities included) and negated; NaN. Then `randomCount` more: raw bits, log-uniform magnitudes, the integration range, and exact ties
// n5 * 10^k and n5 * 2^k.
std::vector<double> arguments(std::size_t randomCount, std::uint64_t seed, bool everyPowerOfTen) {
    std::vector<double> xs = {0.0, 1e-07, 1234565, 1234575, 999999.5, 9999995, 100000.5, 1.234375, 0.1171875,
                              0.3828125, 12.34375, 0.5, 0.25, 1.0000001, 123456.7, 0.30000000000000004, 99.99995,
                              1e-17, 1e27, 131072, 1e-300, 4.9e-324, 2.2250738585072014e-308, DBL_MAX, 6.02214076e23,
                              9.9999995e26, 0.1, 2.5};
    for (int k = -18; k <= 28; k += everyPowerOfTen ? 1 : 7) xs.push_back(std::pow(10.0, k));
    for (int k = -56; k <= 88; k += everyPowerOfTen ? 4 : 16) xs.push_back(std::ldexp(1.0, k));
    for (std::size_t i = 0, n = xs.size(); i < n; ++i)
        xs.insert(xs.end(), {std::nextafter(xs[i], 0.0), std::nextafter(xs[i], INFINITY), -xs[i]});
    std::mt19937_64 random(seed);
    using Real = std::uniform_real_distribution<double>;
    using Int = std::uniform_int_distribution<int>;
    for (std::size_t added = 0; added < randomCount; added += 5) {
        const std::uint64_t bits = random();
        if (std::isfinite(fromBits(bits))) xs.push_back(fromBits(bits));
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
    ASSERT_TRUE(number_environment::standard_rounding_and_point());
    for (double x : arguments(200000, 20240601, true)) {
        const bool inRange = x == 0 || (std::fabs(x) >= 1e-17 && std::fabs(x) < 1e27);
        ASSERT_EQ(decimal_rounding::in_rounding_range(x), inRange) << x;
        if (inRange) {
            ASSERT_EQ(bitsOf(decimal_rounding::round_like_printf(x)), bitsOf(std::strtod(printed(x).c_str(), nullptr)))
                << x;
        }
    }
}

// Expression texts from a small grammar: names with and without values, numbers that round, overflow, underflow or
// are subnormal, every operator and function, unary signs (and the invalid unary *, / and ^), brackets.
std::string randomText(std::mt19937_64& random, int depth) {
    static const char* const names[] = {"x", "x", "x", "x", "pi", "pi", "y", "e", "X"};
    static const char* const numbers[] = {"0", "1", "2", "3", "10", "0.5", "0.1", "1.5", "3.14159265", "1e-310",
                                          "4.9e-324", "1e308", "1.7e308", "1e-17", "123456.75", "0.0001234565",
                                          "1e-400", "2.5e+3", "1E2", "700", "1e-5", "0.3333333"};
    static const char* const functions[] = {"sin", "cos",  "tg",    "ctg", "arcsin", "arccos", "arctg", "arcctg",
                                            "exp", "ln",   "log10", "log2", "abs",   "sqrt",   "sinh",  "cosh"};
    static const char* const unary[] = {"-", "-", "-", "+", "+", "*", "/", "^"};
    static const char* const binary[] = {"+", "-", "*", "/", "^"};
    const auto pick = [&](const auto& list) { return list[random() % std::size(list)]; };
    switch (depth <= 0 ? random() % 2 : random() % 8) {
    case 0:
        return pick(names);
    case 1:
        return pick(numbers);
    case 2:
        return std::string("(") + pick(unary) + randomText(random, depth - 1) + ")";
    case 3:
        return std::string(pick(functions)) + "(" + randomText(random, depth - 1) + ")";
    case 4:
        return "(" + randomText(random, depth - 1) + pick(binary) + randomText(random, depth - 1) + ")";
    default:  // no brackets, so that priorities and associativity count
        return randomText(random, depth - 1) + " " + pick(binary) + " " + randomText(random, depth - 1);
    }
}

// The first lines of the fuzz corpus, curated texts (a long chain to the left; one to the right whose computed values
// wait on the machine's stack, deeper than its local array) and random ones.
std::vector<std::string> texts(std::size_t randomCount) {
    std::vector<std::string> all = {"sin(2*pi*x)*exp(-4*pi^2*x)", "x^5 - 3*x^4 + 2*x^3 - x + 7", "1/(1/0)", "0*exp(x)",
                                    "1e-310*x", "x*1e-310", "2^1030/2^1029", "(-8)^(1/3)", "sqrt(x)*0+1"};
    std::string deep = "x", right = "x";
    for (int i = 0; i < 40; ++i) {
        deep = "(" + deep + "+" + std::to_string(i) + ")*0.5";
        right = (i % 2 ? "sin(x)-(" : "x*2-(") + right + ")";
    }
    all.insert(all.end(), {deep, right});
    for (const auto& file : std::filesystem::directory_iterator(KALKORA_FUZZ_CORPUS)) {
        std::ifstream in(file.path(), std::ios::binary);
        std::string line;
        std::getline(in, line);
        all.push_back(line);
    }
    std::mt19937_64 random(11);
    for (std::size_t i = 0; i < randomCount; ++i) all.push_back(randomText(random, 1 + static_cast<int>(i % 5)));
    return all;
}

// A Function built under the standard setting, under rounding upward (which changes its numbers) and under
// flush-to-zero, called under every setting at 40 special arguments (in turn, so that each text meets each about five
// times) and 8 random ones, then copied: the copy goes on alike.
TEST(FastEvaluation, FunctionMatchesTheTextRoute) {
    const std::vector<NumberSetting> settings = numberSettings();
    if (number_settings::commaLocaleName() == nullptr)
        std::printf("No locale with a decimal comma here (scripts/install-deps.sh generates ru_RU.UTF-8): "
                    "the comma settings are not tested.\n");
    const std::vector<double> special = arguments(0, 0, false);
    std::mt19937_64 random(5);
    std::vector<const NumberSetting*> builds = {&settings[0], &settings[1]};
    for (const NumberSetting& s : settings)
        if (s.name.rfind("flush", 0) == 0) builds.push_back(&s);
    std::size_t compared = 0, next = 0;
    for (const std::string& text : texts(150)) {
        for (const NumberSetting* built : builds) {
            built->enter();
            std::unique_ptr<Function> fast;
            std::unique_ptr<Expression> reference;
            try {
                fast = std::make_unique<Function>(text);
                reference = std::make_unique<Expression>(text);
            } catch (const ExpressionWrongFormat&) {
            }
            built->leave();
            if (!fast) break;
            for (const NumberSetting& called : settings) {
                for (std::size_t i = 0; i < 48; ++i) {
                    const double x = i < 40 ? special[next++ % special.size()] : fromBits(random());
                    if (i == 20 && &called == &settings.back()) fast = std::make_unique<Function>(*fast);
                    called.enter();
                    const std::string got = outcomeOf([&] { return (*fast)(x); });
                    const std::string expected = textRoute(*reference, x);
                    called.leave();
                    ASSERT_EQ(got, expected) << '"' << text << "\" at " << x << ", built " << built->name
                                             << ", called " << called.name;
                    ++compared;
                }
            }
        }
    }
    std::printf("%zu calls compared\n", compared);
}

// eval against set_variables + calculate over a sequence of assignment texts, each under every setting in turn, on
// one object and then on a copy: values of x and of other names (pi included, so that constants fold anew), names
// given a value late, subnormal and huge values, and initialize() putting pi back.
TEST(FastEvaluation, EvalMatchesTheTextRoute) {
    const std::vector<NumberSetting> settings = numberSettings();
    const char* const assignments[] = {"",      "x = 0.5",          "pi = 3",  "x = 2 pi = 3", "y = 1e-310",
                                       "x = -0", "pi = 1e308 x = 10", "e = 2.5", "X = -1",       "initialize",
                                       "x = 1e-310 y = 4", "pi = 3.141592653589793"};
    std::size_t compared = 0;
    for (const std::string& text : texts(150)) {
        std::unique_ptr<Expression> fast, reference;
        try {
            fast = std::make_unique<Expression>(text);
            reference = std::make_unique<Expression>(text);
        } catch (const ExpressionWrongFormat&) {
            continue;
        }
        for (int copy = 0; copy < 2; ++copy) {
            if (copy) fast = std::make_unique<Expression>(*fast);
            for (const NumberSetting& setting : settings) {
                for (const std::string a : assignments) {
                    setting.enter();
                    std::string got, expected;
                    if (a == "initialize") {
                        fast->initialize();
                        reference->initialize();
                        got = outcomeOf([&] { return fast->eval(""); });
                        expected = textRoute(*reference, std::string());
                    } else {
                        got = outcomeOf([&] { return fast->eval(a); });
                        expected = textRoute(*reference, a);
                    }
                    setting.leave();
                    ASSERT_EQ(got, expected) << '"' << text << "\" after \"" << a << "\", " << setting.name;
                    ++compared;
                }
            }
        }
    }
    std::printf("%zu evaluations compared\n", compared);
}

}  // namespace
