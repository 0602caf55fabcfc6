#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "linalg/matrix.h"
#include "linalg_test_util.h"

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(MatrixShape, EmptyMatricesHaveNoRowsAndPassTheStructuralTests) {
    for (const Matrix& m : {Matrix(), Matrix(0), getIdentityMatrix(0)}) {
        EXPECT_EQ(m.dimension(), 0);
        EXPECT_EQ(norm(m), 0.0);
        EXPECT_EQ(off(m), 0.0);
        EXPECT_TRUE(m.isTridiagonal());
        EXPECT_TRUE(m.isSymmetrical());
        EXPECT_EQ(thrownBy([&] { m[0]; }), "MatrixIndexOutOfBound");
    }
}

TEST(MatrixShape, CopiesAreDeep) {
    Matrix a(2);
    Matrix b = a;
    b[0][0] = 7.0;
    EXPECT_EQ(a[0][0], 0.0);
}

// Index and dimension errors, and which check wins when two would fail.
TEST(MatrixErrors, EveryOperationThrowsItsOwnClass) {
    Matrix m3 = getIdentityMatrix(3);
    const Matrix c3 = getIdentityMatrix(3);
    const Matrix m2 = getIdentityMatrix(2);
    const std::vector<double> v2{1, 2}, v3{1, 2, 3};
    struct Case {
        const char* what;
        std::function<void()> action;
        const char* expected;
    };
    const Case cases[] = {
        {"row -1", [&] { m3[-1]; }, "MatrixIndexOutOfBound"},
        {"row n", [&] { m3[3]; }, "MatrixIndexOutOfBound"},
        {"const row n", [&] { c3[3]; }, "MatrixIndexOutOfBound"},
        {"last row", [&] { c3[2]; }, "none"},
        {"swapRows(-1, 0)", [&] { m3.swapRows(-1, 0); }, "MatrixIndexOutOfBound"},
        {"swapRows(0, 3)", [&] { m3.swapRows(0, 3); }, "MatrixIndexOutOfBound"},
        {"swapColumns(3, 0)", [&] { m3.swapColumns(3, 0); }, "MatrixIndexOutOfBound"},
        {"swapColumns(0, -1)", [&] { m3.swapColumns(0, -1); }, "MatrixIndexOutOfBound"},
        {"insertColumn(3, bad size)", [&] { m3.insertColumn(3, v2); }, "MatrixIndexOutOfBound"},
        {"insertColumn(-1, bad size)", [&] { m3.insertColumn(-1, v2); }, "MatrixIndexOutOfBound"},
        {"insertColumn(0, size 2)", [&] { m3.insertColumn(0, v2); }, "MatrixWrongDimensions"},
        {"matrix * vector", [&] { c3* v2; }, "MatrixWrongDimensions"},
        {"matrix * matrix", [&] { c3* m2; }, "MatrixWrongDimensions"},
        {"matrix + matrix", [&] { c3 + m2; }, "MatrixWrongDimensions"},
        {"matrix - matrix", [&] { m2 - c3; }, "MatrixWrongDimensions"},
        {"vector + vector", [&] { v2 + v3; }, "MatrixWrongDimensions"},
        {"vector - vector", [&] { v3 - v2; }, "MatrixWrongDimensions"},
        {"dotProduct", [&] { dotProduct(v2, v3); }, "VectorWrongDimensions"},
        {"tensor_product", [&] { tensor_product(v3, v2); }, "VectorWrongDimensions"},
    };
    for (const Case& c : cases) EXPECT_EQ(thrownBy(c.action), c.expected) << c.what;
    // None of the failing calls changed the matrix.
    EXPECT_EQ(maxAbsDiff(m3, getIdentityMatrix(3)), 0.0);
}

TEST(MatrixArithmetic, ProductsSumsAndTranspose) {
    const Matrix A = fromRows({{1, 2}, {3, 4}});
    const Matrix B = fromRows({{0, 1}, {5, -2}});
    EXPECT_EQ(maxAbsDiff(A * B, fromRows({{10, -3}, {20, -5}})), 0.0);
    EXPECT_EQ(maxAbsDiff(B * A, fromRows({{3, 4}, {-1, 2}})), 0.0);
    EXPECT_EQ(maxAbsDiff(A + B, fromRows({{1, 3}, {8, 2}})), 0.0);
    EXPECT_EQ(maxAbsDiff(A - B, fromRows({{1, 1}, {-2, 6}})), 0.0);
    EXPECT_EQ(maxAbsDiff(A * 0.5, fromRows({{0.5, 1}, {1.5, 2}})), 0.0);
    EXPECT_EQ(maxAbsDiff(A.transposed(), fromRows({{1, 3}, {2, 4}})), 0.0);
    EXPECT_EQ((A * std::vector<double>{1, -1}), (std::vector<double>{-1, -1}));
    EXPECT_EQ(maxAbsDiff(tensor_product({1, 2}, {3, 4}), fromRows({{3, 4}, {6, 8}})), 0.0);
    EXPECT_EQ(dotProduct({1, 2, 3}, {4, -5, 6}), 12.0);
    EXPECT_EQ(dotProduct({}, {}), 0.0);
    EXPECT_EQ((std::vector<double>{1, 2} + std::vector<double>{3, 5}), (std::vector<double>{4, 7}));
    EXPECT_EQ((std::vector<double>{1, 2} - std::vector<double>{3, 5}), (std::vector<double>{-2, -3}));
}

TEST(MatrixArithmetic, ProductRulesHoldOnRandomMatrices) {
    const Matrix A = randomDominant(4, 1), B = randomDominant(4, 2);
    const std::vector<double> v = randomVector(4, 3);
    EXPECT_LT(maxAbsDiff((A * B).transposed(), B.transposed() * A.transposed()), 1e-12);
    EXPECT_LT(norm((A * B) * v - A * (B * v)), 1e-12);
    EXPECT_EQ(maxAbsDiff(A * getIdentityMatrix(4), A), 0.0);
    EXPECT_EQ(dotProduct(v, v), norm2(v));
}

TEST(MatrixStructure, SwapsExchangeContentsButRowsKeepTheirPlace) {
    Matrix m = fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    const std::vector<double>* row0 = &m[0];
    m.swapRows(0, 2);
    EXPECT_EQ(&m[0], row0);
    EXPECT_EQ(m[0], (std::vector<double>{7, 8, 9}));
    m.swapColumns(0, 1);
    EXPECT_EQ(maxAbsDiff(m, fromRows({{8, 7, 9}, {5, 4, 6}, {2, 1, 3}})), 0.0);
    m.swapRows(1, 1);
    m.swapColumns(2, 2);
    EXPECT_EQ(maxAbsDiff(m, fromRows({{8, 7, 9}, {5, 4, 6}, {2, 1, 3}})), 0.0);
    m.insertColumn(1, {-1, -2, -3});
    EXPECT_EQ(maxAbsDiff(m, fromRows({{8, -1, 9}, {5, -2, 6}, {2, -3, 3}})), 0.0);
    EXPECT_EQ(m.dimension(), 3);
}

TEST(MatrixStructure, TridiagonalTestIsExact) {
    struct Case {
        double corner;
        bool expected;
    };
    const Case cases[] = {{0.0, true}, {-0.0, true}, {1e-300, false}, {-1e-300, false}, {kNaN, false}};
    for (const Case& c : cases) {
        Matrix upper = fromRows({{1, 2, 0}, {3, 4, 5}, {0, 6, 7}});
        upper[0][2] = c.corner;
        Matrix lower = fromRows({{1, 2, 0}, {3, 4, 5}, {0, 6, 7}});
        lower[2][0] = c.corner;
        EXPECT_EQ(upper.isTridiagonal(), c.expected) << c.corner;
        EXPECT_EQ(lower.isTridiagonal(), c.expected) << c.corner;
    }
}

TEST(MatrixStructure, SymmetryToleratesUpTo1e5) {
    struct Case {
        double a01, a10;
        bool expected;
    };
    const Case cases[] = {
        {0.0, 1e-5, true},        // difference exactly 1e-5 passes
        {1.0, 1.000005, true},
        {1.0, 1.00002, false},
        {1.0, 1.00001, false},    // 1.0000000000065512e-05 apart in doubles
        {1.0, 1.0001, false},
        {-3.0, -3.0, true},
    };
    for (const Case& c : cases) {
        Matrix m = getIdentityMatrix(3);
        m[0][1] = c.a01;
        m[1][0] = c.a10;
        EXPECT_EQ(m.isSymmetrical(), c.expected) << c.a01 << " vs " << c.a10;
        m = m.transposed();
        EXPECT_EQ(m.isSymmetrical(), c.expected) << "transposed " << c.a01 << " vs " << c.a10;
    }
}

TEST(MatrixNorms, ValuesAndNaN) {
    EXPECT_EQ(norm(std::vector<double>{1, -7, 3}), 7.0);
    EXPECT_EQ(norm(std::vector<double>{}), 0.0);
    EXPECT_EQ(norm2({3, 4}), 25.0);  // no square root
    EXPECT_EQ(norm(fromRows({{1, -2}, {-3, 0.5}})), 3.5);
    EXPECT_EQ(off(fromRows({{9, 9, 9}, {3, 9, 9}, {0, 4, 9}})), 5.0);  // lower triangle only
    // A NaN anywhere makes the norm NaN, also when larger elements follow it.
    EXPECT_TRUE(std::isnan(norm(std::vector<double>{1, kNaN, 5})));
    EXPECT_TRUE(std::isnan(norm(std::vector<double>{kNaN, 5})));
    EXPECT_TRUE(std::isnan(norm(fromRows({{kNaN, 0}, {5, 5}}))));
    EXPECT_EQ(norm(std::vector<double>{-kInf, 1}), kInf);
}

TEST(MatrixRounding, HalvesGoAwayFromZero) {
    struct Case {
        double x;
        int digits;
        double expected;
    };
    const Case cases[] = {
        {1.23456, 2, 1.23}, {2.5, 0, 3.0},    {-1.5, 0, -2.0},   {0.5, 0, 1.0},
        {-0.5, 0, -1.0},    {0.125, 2, 0.13}, {-0.125, 2, -0.13}, {1250.0, -2, 1300.0},
        {-7.0, 0, -7.0},
    };
    for (const Case& c : cases) EXPECT_EQ(round(c.x, c.digits), c.expected) << c.x << ", " << c.digits;

    // 1.005 is stored just below 1.005, so it rounds down.
    Matrix m = fromRows({{1.005, -2.345}, {0.125, 3.14159}});
    m.doRound();
    EXPECT_EQ(maxAbsDiff(m, fromRows({{1.0, -2.35}, {0.13, 3.14}})), 0.0);
}

TEST(MatrixRounding, SignCountsZerosAsPositive) {
    struct Case {
        double x;
        int expected;
    };
    const Case cases[] = {{0.0, 1}, {-0.0, 1}, {3.5, 1}, {kInf, 1}, {-1e-300, -1}, {-kInf, -1}, {kNaN, -1}};
    for (const Case& c : cases) EXPECT_EQ(sign(c.x), c.expected) << c.x;
}

}  // namespace
