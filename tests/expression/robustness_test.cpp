// Any bytes, as an expression text or as an assignment text, end in a value
// or in one of the three expression exceptions: never in a crash, a hang or
// another exception. Also the regression inputs found by fuzzing.

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

enum class Outcome { value, wrongFormat, unknownVariable, badResult };

template <class F>
Outcome outcomeOf(F&& f)
{
    try {
        f();
        return Outcome::value;
    } catch (const ExpressionWrongFormat&) {
        return Outcome::wrongFormat;
    } catch (const ExpressionUnknownVariable&) {
        return Outcome::unknownVariable;
    } catch (const ExpressionBadResult&) {
        return Outcome::badResult;
    }
    // Anything else propagates and fails the test.
}

// Random texts drawn mostly from the expression alphabet, with any byte now and then.
std::string randomText(std::mt19937& rng, std::size_t maxLength)
{
    static const std::vector<std::string> pieces = {
        "x", "y", "pi", "sin", "ln", "log2", "arcctg", "(", ")", "+", "-", "*", "/", "^",
        " ", "0", "1", "2.5", "e", "E", ".", "1e", "=", "x = ", "\t", "9"};
    std::uniform_int_distribution<std::size_t> length(0, maxLength);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() + 3);
    std::uniform_int_distribution<int> byte(0, 255);
    std::string s;
    const std::size_t n = length(rng);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t k = pick(rng);
        if (k < pieces.size()) {
            s += pieces[k];
        } else {
            s += static_cast<char>(byte(rng));
        }
    }
    return s;
}

TEST(ExpressionRobustness, RandomExpressionTexts)
{
    std::mt19937 rng(20240611);
    int constructed = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(rng, 12);
        SCOPED_TRACE(::testing::PrintToString(text));
        std::unique_ptr<Function> f;
        if (outcomeOf([&] { f = std::make_unique<Function>(text); }) != Outcome::value) {
            continue;
        }
        ++constructed;
        for (double x : {0.0, 1.0, -2.5, 1e-7}) {
            double first = 0;
            const Outcome o = outcomeOf([&] { first = (*f)(x); });
            // Same argument, same outcome: a call keeps no state but x.
            double second = 0;
            EXPECT_EQ(outcomeOf([&] { second = (*f)(x); }), o);
            if (o == Outcome::value) {
                EXPECT_TRUE(std::isfinite(first));
                EXPECT_EQ(std::memcmp(&first, &second, sizeof first), 0);
            }
        }
    }
    EXPECT_GT(constructed, 100);  // the generator does reach valid texts
}

TEST(ExpressionRobustness, RandomAssignmentTexts)
{
    std::mt19937 rng(7);
    const Expression prototype("x + y*pi");
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(rng, 10);
        SCOPED_TRACE(::testing::PrintToString(text));
        Expression e = prototype;
        outcomeOf([&] { e.eval(text); });
        // Whatever the text did, the object still evaluates.
        EXPECT_EQ(e.eval("x = 1 y = 2 pi = 3"), 7.0);
    }
}

TEST(ExpressionRobustness, HostileTexts)
{
    const std::vector<std::string> texts = {
        std::string("\0", 1),
        std::string("x\0", 2),
        std::string(1, '\xff'),
        "\x80\x81\xfe",
        "sin(\xe2\x80\x8bx)",
        std::string(100000, 'a'),
        std::string(100000, '9'),                 // overflows: 1e99999
        std::string(100000, '0') + "1",           // 1
        "0." + std::string(100000, '0') + "1",    // 1e-100001: underflows to 0
        std::string(100000, '('),
        std::string(100000, ')'),
        std::string(50000, '-') + "x",
        std::string(50000, '(') + "x" + std::string(50000, ')'),
    };
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 20));
        std::unique_ptr<Function> f;
        if (outcomeOf([&] { f = std::make_unique<Function>(text); }) == Outcome::value) {
            outcomeOf([&] { (*f)(1.0); });
        }
        Expression e("x");
        outcomeOf([&] { e.eval(text); });
        EXPECT_EQ(e.eval("x = 2"), 2.0);
    }
}

TEST(ExpressionRobustness, LongButValidTexts)
{
    std::string sum = "1";
    std::string nested = "x";
    for (int i = 0; i < 20000; ++i) {
        sum += "+1";
        nested = "(" + nested + ")";
    }
    EXPECT_EQ(Function(sum)(0), 20001.0);
    EXPECT_EQ(Function(nested)(3), 3.0);
    EXPECT_EQ(Function("-(" + std::string(30000, '(') + "x" + std::string(30000, ')') + ")")(2), -2.0);
}

}  // namespace
