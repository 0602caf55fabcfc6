#include <limits>

#include "linalg_test_util.h"

static const double kNaN = std::numeric_limits<double>::quiet_NaN(), kInf = INFINITY;

// Which class each failing operation throws, and which check wins when two would fail.
TEST(MatrixErrors, EveryOperationThrowsItsOwnClass) {
    Matrix m = getIdentityMatrix(3);
    const Matrix c = getIdentityMatrix(3), m2 = getIdentityMatrix(2);
    const Vec v2{1, 2}, v3{1, 2, 3};
    const std::pair<const char*, std::vector<std::function<void()>>> groups[] = {
        {"none", {[&] { c[2]; }}},
        {"MatrixIndexOutOfBound",  // a bad index wins over the wrong size of v2
         {[&] { m[-1]; }, [&] { m[3]; }, [&] { c[-1]; }, [&] { c[3]; }, [&] { m.swapRows(-1, 0); },
          [&] { m.swapRows(0, 3); }, [&] { m.swapColumns(3, 0); }, [&] { m.swapColumns(0, -1); },
          [&] { m.insertColumn(3, v2); }, [&] { m.insertColumn(-1, v2); }}},
        {"MatrixWrongDimensions",
         {[&] { m.insertColumn(0, v2); }, [&] { c* v2; }, [&] { c* m2; }, [&] { c + m2; },
          [&] { m2 - c; }, [&] { v2 + v3; }, [&] { v3 - v2; }}},
        {"VectorWrongDimensions", {[&] { dotProduct(v2, v3); }, [&] { dotProduct(v3, v2); },
                                   [&] { tensor_product(v3, v2); }, [&] { tensor_product(v2, v3); }}},
    };
    for (const auto& g : groups)
        for (const auto& action : g.second)
            EXPECT_EQ(thrownBy(action), g.first) << "action " << &action - g.second.data();
    EXPECT_EQ(maxAbsDiff(m, getIdentityMatrix(3)), 0.0);  // no failing call changed it
}

TEST(MatrixArithmetic, ProductsSumsTransposeAndStructuralOperations) {
    const Matrix A = fromRows({{1, 2}, {3, 4}}), B = fromRows({{0, 1}, {5, -2}});
    Matrix S = fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    S.swapRows(0, 2);
    S.swapColumns(0, 1);
    const Matrix swapped = S;
    S.insertColumn(1, {-1, -2, -3});
    const std::pair<Matrix, Rows> cases[] = {
        {A * B, {{10, -3}, {20, -5}}}, {A + B, {{1, 3}, {8, 2}}}, {A - B, {{1, 1}, {-2, 6}}},
        {A * 0.5, {{0.5, 1}, {1.5, 2}}}, {A.transposed(), {{1, 3}, {2, 4}}},
        {tensor_product({1, 2}, {3, 4}), {{3, 4}, {6, 8}}},
        {swapped, {{8, 7, 9}, {5, 4, 6}, {2, 1, 3}}}, {S, {{8, -1, 9}, {5, -2, 6}, {2, -3, 3}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(maxAbsDiff(c.first, fromRows(c.second)), 0.0) << "case " << &c - cases;
    EXPECT_EQ((A * Vec{1, -1}), (Vec{-1, -1}));
    EXPECT_EQ(dotProduct({1, 2, 3}, {4, -5, 6}), 12.0);
    EXPECT_EQ((Vec{1, 2} + Vec{3, 5}), (Vec{4, 7}));
    EXPECT_EQ((Vec{1, 2} - Vec{3, 5}), (Vec{-2, -3}));
}

TEST(MatrixStructure, TridiagonalTestIsExactAndSymmetryToleratesUpTo1e5) {
    const std::pair<double, bool> corners[] = {
        {0.0, true}, {-0.0, true}, {1e-300, false}, {-1e-300, false}, {kNaN, false}};
    for (const auto& c : corners)
        for (const bool upper : {true, false}) {
            Matrix m = fromRows({{1, 2, 0, 0}, {3, 4, 5, 0}, {0, 6, 7, 8}, {0, 0, 9, 1}});
            (upper ? m[0][2] : m[3][1]) = c.first;
            EXPECT_EQ(m.isTridiagonal(), c.second) << c.first << (upper ? " upper" : " lower");
        }
    struct Case { double a, b; bool symmetric; };
    const Case cases[] = {
        {0.0, 1e-5, true},  // exactly 1e-5 apart
        {1.0, 1.000005, true},
        {1.0, 1.00002, false},
        {1.0, 1.00001, false},  // 1.0000000000065512e-05 apart in doubles
    };
    for (const Case& c : cases) {
        Matrix m = getIdentityMatrix(3);
        m[1][2] = c.a, m[2][1] = c.b;
        EXPECT_EQ(m.isSymmetrical(), c.symmetric) << c.a << " vs " << c.b;
        EXPECT_EQ(m.transposed().isSymmetrical(), c.symmetric) << "transposed " << c.b;
    }
    EXPECT_TRUE(Matrix().isTridiagonal() && Matrix().isSymmetrical());
}

TEST(MatrixNormsAndRounding, NaNPropagatesAndHalvesGoAwayFromZero) {
    EXPECT_EQ(norm(Vec{1, -7, 3}), 7.0);
    EXPECT_EQ(norm(Vec{}) + norm(Matrix()) + off(Matrix()), 0.0);
    EXPECT_EQ(norm2({3, 4}), 25.0);  // no square root
    EXPECT_EQ(norm(fromRows({{1, -2}, {-3, 0.5}})), 3.5);  // row sums, not column sums
    EXPECT_EQ(off(fromRows({{9, 9, 9}, {3, 9, 9}, {0, 4, 9}})), 5.0);  // lower triangle only
    // A NaN anywhere makes the norm NaN, also when larger elements follow it.
    EXPECT_TRUE(std::isnan(norm(Vec{1, kNaN, 5})) && std::isnan(norm(Vec{kNaN, 5})));
    EXPECT_TRUE(std::isnan(norm(fromRows({{kNaN, 0}, {5, 5}}))));

    struct Case { double x; int digits; double expected; };
    const Case cases[] = {{1.23456, 2, 1.23},  {2.5, 0, 3.0},      {-1.5, 0, -2.0},
                          {0.5, 0, 1.0},       {-0.5, 0, -1.0},    {0.125, 2, 0.13},
                          {-0.125, 2, -0.13}, {1250.0, -2, 1300.0}};
    for (const Case& c : cases) EXPECT_EQ(round(c.x, c.digits), c.expected) << c.x;
    Matrix m = fromRows({{1.005, -2.345}, {0.125, 3.14159}});
    m.doRound();  // 1.005 is stored just below 1.005
    EXPECT_EQ(maxAbsDiff(m, fromRows({{1.0, -2.35}, {0.13, 3.14}})), 0.0);
    const std::pair<double, int> signs[] = {
        {0.0, 1}, {-0.0, 1}, {3.5, 1}, {kInf, 1}, {-1e-300, -1}, {-kInf, -1}, {kNaN, -1}};
    for (const auto& c : signs) EXPECT_EQ(sign(c.first), c.second) << c.first;
}
