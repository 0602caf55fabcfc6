#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "linalg/lup.h"
#include "linalg_test_util.h"
#include "stderr_capture.h"

namespace {

struct Factors {
    Matrix L, U, P;
    int swaps = -99;
};

Factors factor(const Matrix& A) {
    Factors f;
    LUPdecomposition(A, f.L, f.U, f.P, f.swaps);
    return f;
}

TEST(LUPdecomposition, SmallCasesGiveTheExpectedFactors) {
    struct Case {
        Rows A, L, U, P;
        int swaps;
    };
    const Case cases[] = {
        // Zero on the diagonal: the pivot comes from row 1.
        {{{0, 1}, {1, 0}}, {{1, 0}, {0, 1}}, {{1, 0}, {0, 1}}, {{0, 1}, {1, 0}}, 1},
        // Equal candidates: the topmost row stays, no exchange is counted.
        {{{2, 1}, {2, 3}}, {{1, 0}, {1, 1}}, {{2, 1}, {0, 2}}, {{1, 0}, {0, 1}}, 0},
        // Two exchanges of different rows: multipliers move with their rows.
        {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}},
         {{1, 0, 0}, {1.0 / 7, 1, 0}, {4.0 / 7, 0.5, 1}},
         {{7, 8, 10}, {0, 6.0 / 7, 11.0 / 7}, {0, 0, -0.5}},
         {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
         2},
        {{{1e-8}}, {{1}}, {{1e-8}}, {{1}}, 0},
        {{}, {}, {}, {}, 0},
    };
    for (const Case& c : cases) {
        const Factors f = factor(fromRows(c.A));
        const int n = static_cast<int>(c.A.size());
        ASSERT_EQ(f.L.dimension(), n);
        EXPECT_LT(maxAbsDiff(f.L, fromRows(c.L)), 1e-15) << "L, n = " << n;
        EXPECT_LT(maxAbsDiff(f.U, fromRows(c.U)), 1e-15) << "U, n = " << n;
        EXPECT_EQ(maxAbsDiff(f.P, fromRows(c.P)), 0.0) << "P, n = " << n;
        EXPECT_EQ(f.swaps, c.swaps) << "n = " << n;
    }
}

TEST(LUPdecomposition, PivotsBelow1e8AreSingular) {
    struct Case {
        Rows A;
        const char* expected;
    };
    const Case cases[] = {
        {{{1e-9}}, "MatrixIsSingular"},
        {{{1e-8}}, "none"},
        {{{1, 2}, {2, 4}}, "MatrixIsSingular"},  // remaining pivot 0 at the last column
        {{{0, 0}, {0, 1}}, "MatrixIsSingular"},
        {{{1, 0}, {0, 0}}, "MatrixIsSingular"},
    };
    for (const Case& c : cases) {
        const Matrix A = fromRows(c.A);
        EXPECT_EQ(thrownBy([&] { factor(A); }), c.expected) << A[0][0];
        EXPECT_EQ(thrownBy([&] { calcDeterminantWithLUP(A); }), c.expected) << A[0][0];
        EXPECT_EQ(thrownBy([&] { calcInverseMatrixWithLUP(A); }), c.expected) << A[0][0];
    }
}

TEST(LUPdecomposition, FactorsReproducePA) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const Matrix A = randomDominant(6, seed) * 0.5 + randomDominant(6, seed + 100).transposed();
        const Factors f = factor(A);
        EXPECT_LT(maxAbsDiff(f.P * A, f.L * f.U), 1e-12) << seed;
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(f.L[i][i], 1.0);
            for (int j = i + 1; j < 6; ++j) {
                EXPECT_EQ(f.L[i][j], 0.0);
                EXPECT_LE(std::fabs(f.L[j][i]), 1.0);  // partial pivoting bounds the multipliers
            }
            // Eliminated entries are zeros only up to rounding.
            for (int j = 0; j < i; ++j) EXPECT_LT(std::fabs(f.U[i][j]), 1e-15);
        }
    }
}

TEST(LUPdeterminant, SignFollowsTheRowExchanges) {
    struct Case {
        Rows A;
        double expected;
    };
    const Case cases[] = {
        {{}, 1.0},
        {{{-4}}, -4.0},
        {{{0, 1}, {1, 0}}, -1.0},
        {{{0, 1, 0}, {1, 0, 0}, {0, 0, 1}}, -1.0},  // one transposition
        {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, 1.0},   // a 3-cycle: two exchanges
        {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, 1.0},
        {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, -3.0},
        {{{2, 0, 0}, {0, 3, 0}, {0, 0, 4}}, 24.0},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(calcDeterminantWithLUP(fromRows(c.A)), c.expected, 1e-12) << c.A.size();
}

TEST(LUPinverse, InverseTimesAIsTheIdentity) {
    const Matrix A = randomDominant(5, 2024);
    const Matrix R = calcInverseMatrixWithLUP(A);
    EXPECT_LT(maxAbsDiff(R * A, getIdentityMatrix(5)), 1e-14);
    EXPECT_LT(maxAbsDiff(A * R, getIdentityMatrix(5)), 1e-14);
    EXPECT_EQ(calcInverseMatrixWithLUP(Matrix()).dimension(), 0);
    EXPECT_LT(maxAbsDiff(calcInverseMatrixWithLUP(fromRows({{0, 2}, {4, 0}})),
                         fromRows({{0, 0.25}, {0.5, 0}})), 1e-16);
}

TEST(LUPsolve, ResidualIsSmallForBothOverloads) {
    for (unsigned seed = 10; seed < 15; ++seed) {
        const Matrix A = randomDominant(7, seed);
        const std::vector<double> b = randomVector(7, seed + 1);
        const Factors f = factor(A);
        EXPECT_LT(residual(A, solveWithLUP(f.L, f.U, f.P, b), b), 1e-13) << seed;
        StderrCapture log;
        EXPECT_LT(residual(A, solveWithLUP(A, b), b), 1e-13) << seed;
    }
}

TEST(LUPsolve, ErrorsAndWhatIsLoggedBeforeThem) {
    StderrCapture log;
    EXPECT_EQ(thrownBy([] { solveWithLUP(fromRows({{1, 2}, {2, 4}}), {1, 1}); }), "MatrixIsSingular");
    EXPECT_EQ(log.take(), "LUP decomposition start.\n");

    // A size mismatch surfaces from the product P*b, after the whole dump.
    EXPECT_EQ(thrownBy([] { solveWithLUP(getIdentityMatrix(2), {1, 1, 1}); }), "MatrixWrongDimensions");
    const std::string dump = log.take();
    EXPECT_EQ(dump.rfind("LUP decomposition stop.\n\n"), dump.size() - 25);

    const Factors f = factor(getIdentityMatrix(2));
    EXPECT_EQ(thrownBy([&] { solveWithLUP(f.L, f.U, f.P, {1}); }), "MatrixWrongDimensions");
    EXPECT_EQ(thrownBy([&] { solveWithLUP(f.L, Matrix(3), f.P, {1, 1}); }), "MatrixWrongDimensions");
    EXPECT_EQ(log.take(), "");
}

TEST(LUPsolve, CompleteLog) {
    StderrCapture log;
    const std::vector<double> x = solveWithLUP(fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}), {1, 1, 1});
    EXPECT_NEAR(x[0], -1.0, 1e-14);
    EXPECT_NEAR(x[1], 1.0, 1e-14);
    EXPECT_NEAR(x[2], 0.0, 1e-14);
    // P is not its own inverse here, so the P * L * U block differs from A.
    EXPECT_EQ(log.take(),
              "LUP decomposition start.\n"
              "L:\n"
              "  1.000   0.000   0.000 \n"
              "  0.143   1.000   0.000 \n"
              "  0.571   0.500   1.000 \n"
              "U:\n"
              "  7.000   8.000  10.000 \n"
              "  0.000   0.857   1.571 \n"
              "  0.000   0.000  -0.500 \n"
              "P:\n"
              "  0.000   0.000   1.000 \n"
              "  1.000   0.000   0.000 \n"
              "  0.000   1.000   0.000 \n"
              "P * L * U:\n"
              "  4.000   5.000   6.000 \n"
              "  7.000   8.000  10.000 \n"
              "  1.000   2.000   3.000 \n"
              "LUP decomposition stop.\n"
              "\n");

    solveWithLUP(fromRows({{1234.5}}), {1});
    EXPECT_EQ(log.take(),
              "LUP decomposition start.\nL:\n  1.000 \nU:\n1234.500 \nP:\n  1.000 \n"
              "P * L * U:\n1234.500 \nLUP decomposition stop.\n\n");
}

}  // namespace
