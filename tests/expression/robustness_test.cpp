// Any bytes, as an expression text or as an assignment text, end in a value or in one of the
// three expression exceptions: never in a crash, a hang or another exception.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "expression/expression.h"
#include "expression/function.h"

namespace {

// 0 for a value, 1-3 for the expression exceptions; anything else propagates and fails.
template <class F>
int outcomeOf(F&& f)
{
    try {
        f();
    } catch (const ExpressionWrongFormat&) {
        return 1;
    } catch (const ExpressionUnknownVariable&) {
        return 2;
    } catch (const ExpressionBadResult&) {
        return 3;
    }
    return 0;
}

// Mostly pieces of the expression alphabet, with any byte now and then.
std::string randomText(std::mt19937& rng, std::size_t maxLength)
{
    static const std::vector<std::string> pieces = {
        "x", "y", "pi", "sin", "ln", "log2", "arcctg", "(", ")", "+", "-", "*", "/", "^",
        " ", "0", "1", "2.5", "e", "E", ".", "1e", "=", "x = ", "\t", "9"};
    std::uniform_int_distribution<std::size_t> length(0, maxLength), pick(0, pieces.size() + 3);
    std::uniform_int_distribution<int> byte(0, 255);
    std::string s;
    for (std::size_t i = 0, n = length(rng); i < n; ++i) {
        const std::size_t k = pick(rng);
        s += k < pieces.size() ? pieces[k] : std::string(1, static_cast<char>(byte(rng)));
    }
    return s;
}

TEST(ExpressionRobustness, RandomTexts)
{
    std::mt19937 rng(20240611);
    const Expression prototype("x + y*pi");
    int constructed = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(rng, 12);
        SCOPED_TRACE(::testing::PrintToString(text));
        // As an assignment text: whatever it did, the object still evaluates.
        Expression e = prototype;
        outcomeOf([&] { e.eval(text); });
        EXPECT_EQ(e.eval("x = 1 y = 2 pi = 3"), 7.0);
        // As an expression text: same argument, same outcome, a finite value.
        std::unique_ptr<Function> f;
        if (outcomeOf([&] { f = std::make_unique<Function>(text); }) != 0) continue;
        ++constructed;
        for (double x : {0.0, -2.5, 1e-7}) {
            double first = 0, second = 0;
            const int o = outcomeOf([&] { first = (*f)(x); });
            EXPECT_EQ(outcomeOf([&] { second = (*f)(x); }), o);
            if (o == 0) {
                EXPECT_TRUE(std::isfinite(first));
                EXPECT_EQ(std::memcmp(&first, &second, sizeof first), 0);
            }
        }
    }
    EXPECT_GT(constructed, 100);  // the generator does reach valid texts
}

TEST(ExpressionRobustness, HostileAndLongTexts)
{
    // Embedded NUL, bytes >= 128, a number that overflows, one that underflows, deep nesting.
    for (const std::string& text : {std::string("x\0", 2), std::string("sin(\xe2\x80\x8bx)"),
             std::string(100000, '9'), "0." + std::string(100000, '0') + "1",
             std::string(100000, '('), std::string(100000, ')'), std::string(50000, '-') + "x"}) {
        SCOPED_TRACE(text.substr(0, 20));
        std::unique_ptr<Function> f;
        if (outcomeOf([&] { f = std::make_unique<Function>(text); }) == 0) {
            outcomeOf([&] { (*f)(1.0); });
        }
        Expression e("x");
        outcomeOf([&] { e.eval(text); });
        EXPECT_EQ(e.eval("x = 2"), 2.0);
    }
    std::string nested = std::string(20000, '(') + "x";  // deep but valid: ((x)+1)+1 ...
    for (int i = 0; i < 20000; ++i) nested += ")+1";
    EXPECT_EQ(Function(nested)(3), 20003.0);
}

}  // namespace
