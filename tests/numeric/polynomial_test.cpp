#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "numeric/polynomial.h"

namespace {

using V = std::vector<double>;

V coefficients(const Polynomial& p) {
    V c;
    for (int i = 0; i < p.size(); ++i) c.push_back(p[i]);
    return c;
}

TEST(PolynomialText, HighestPowerFirstWithNegligibleTermsLeftOut) {
    const struct { V c; std::string text; } cases[] = {
        {{1, -2, 0, 3}, "3x^3-2x^1+1"},
        {{-0.5, 0, 0}, "-0.5"},
        {{0, 1}, "1x^1"},
        {{1e-9, 0}, "0"},
        {{}, "0"},
        {{1e-8}, "1e-08"},
        {{-9e-9, -1, 9e-9}, "-1x^1"},
        {{1.0 / 3, 12345.6}, "1.235e+04x^1+0.3333"},
        {{2.5, 0, -1e-5}, "-1e-05x^2+2.5"},
    };
    for (const auto& c : cases) EXPECT_EQ(Polynomial(c.c).toString(), c.text);
}

TEST(PolynomialArithmetic, SizesAndCoefficients) {
    EXPECT_EQ(coefficients(Polynomial(V{1, 1}) * Polynomial(V{-1, 1})), (V{-1, 0, 1}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2}) + Polynomial(V{0, 0, 3})), (V{1, 2, 3}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 0}) + Polynomial(V{2})), (V{3, 0}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2, 0}) * 2.0), (V{2, 4, 0}));
    EXPECT_EQ(coefficients(Polynomial() * Polynomial(V{1, 1})), (V{0}));
    EXPECT_EQ(coefficients(Polynomial(V{1, 2, 3}).derivative()), (V{2, 6}));
    EXPECT_EQ(Polynomial(V{5}).derivative().size(), 0);
    EXPECT_EQ(coefficients(Polynomial(2)), (V{0, 0}));
}

TEST(PolynomialCalc, ValuesAndProductProperty) {
    EXPECT_EQ(Polynomial(V{1, 1, 1}).calc(2), 7);
    EXPECT_EQ(Polynomial().calc(3), 0);
    // Ascending running power; Horner's scheme gives 0.5242 here.
    EXPECT_EQ(Polynomial(V{0.1, 0.2, 0.3, 0.4}).calc(0.7), 0.5241999999999999);
    const Polynomial p(V{0.5, -1, 2}), q(V{3, 0.25});
    for (double x : {-2.0, -0.3, 1.7}) {
        EXPECT_NEAR((p * q).calc(x), p.calc(x) * q.calc(x), 1e-12);
        EXPECT_NEAR((p + q).calc(x), p.calc(x) + q.calc(x), 1e-12);
        EXPECT_NEAR(p.derivative().calc(x), -1 + 4 * x, 1e-12);
    }
}

}  // namespace
