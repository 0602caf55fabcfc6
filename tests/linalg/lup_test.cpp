#include "linalg/lup.h"
#include "linalg_test_util.h"

struct Factors {
    Matrix L, U, P;
    int swaps = -1;
    explicit Factors(const Matrix& A) { LUPdecomposition(A, L, U, P, swaps); }
};

TEST(LUPdecomposition, Factors) {
    struct Case { Rows A, L, U, P; int swaps; };
    const Case cases[] = {
        {{{0, 1}, {1, 0}}, {{1, 0}, {0, 1}}, {{1, 0}, {0, 1}}, {{0, 1}, {1, 0}}, 1},
        // Equal candidates: the topmost row stays, no exchange is counted.
        {{{2, 1}, {2, 3}}, {{1, 0}, {1, 1}}, {{2, 1}, {0, 2}}, {{1, 0}, {0, 1}}, 0},
        // Two exchanges of different rows: the multipliers move with their rows.
        {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, {{1, 0, 0}, {1.0 / 7, 1, 0}, {4.0 / 7, 0.5, 1}},
         {{7, 8, 10}, {0, 6.0 / 7, 11.0 / 7}, {0, 0, -0.5}}, {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, 2},
        {{{1e-8}}, {{1}}, {{1e-8}}, {{1}}, 0},
        {{}, {}, {}, {}, 0},
    };
    for (const Case& c : cases) {
        const Factors f(fromRows(c.A));
        EXPECT_LT(maxAbsDiff(f.L, fromRows(c.L)), 1e-15) << "L, n = " << c.A.size();
        EXPECT_LT(maxAbsDiff(f.U, fromRows(c.U)), 1e-15) << "U, n = " << c.A.size();
        EXPECT_EQ(maxAbsDiff(f.P, fromRows(c.P)), 0.0) << "P, n = " << c.A.size();
        EXPECT_EQ(f.swaps, c.swaps) << "n = " << c.A.size();
    }
}

TEST(LUPdecomposition, SingularPivotsAndDeterminantSigns) {
    struct Case { Rows A; const char* thrown; double det; };
    const Case cases[] = {
        {{{1e-9}}, "MatrixIsSingular", 0},
        {{{-1e-8}}, "none", -1e-8},
        {{{1, 2}, {2, 4}}, "MatrixIsSingular", 0},  // only the last pivot is 0
        {{{0, 0}, {0, 1}}, "MatrixIsSingular", 0},
        {{}, "none", 1.0},
        {{{0, 1}, {1, 0}}, "none", -1.0},
        {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, "none", -3.0},  // two exchanges
    };
    for (const Case& c : cases) {
        const Matrix A = fromRows(c.A);
        double det = 0;
        EXPECT_EQ(thrownBy([&] { Factors{A}; }), c.thrown) << c.det;
        EXPECT_EQ(thrownBy([&] { det = calcDeterminantWithLUP(A); }), c.thrown) << c.det;
        EXPECT_EQ(thrownBy([&] { calcInverseMatrixWithLUP(A); }), c.thrown) << c.det;
        EXPECT_NEAR(det, c.det, 1e-12 * std::fabs(c.det));
    }
}

TEST(LUPsolve, InverseAndResidualsOfBothSolvers) {
    // Well conditioned, its rows reversed so that partial pivoting has to exchange them.
    Matrix A = randomDominant(5, 1);
    A.swapRows(0, 4), A.swapRows(1, 3);
    EXPECT_LT(maxAbsDiff(calcInverseMatrixWithLUP(A) * A, getIdentityMatrix(5)), 1e-14);
    const Vec b = randomVector(5, 2);
    const Factors f(A);
    EXPECT_LT(maxAbsDiff(f.P * A, f.L * f.U), 1e-14);
    Vec x;
    logOf([&] { x = solveWithLUP(A, b); });
    EXPECT_LT(residual(A, x, b), 1e-13);
    EXPECT_LT(residual(A, solveWithLUP(f.L, f.U, f.P, b), b), 1e-13);
}

TEST(LUPsolve, CompleteLogAndWhatIsLoggedBeforeAnError) {
    Vec x;
    // P is not its own inverse here, so the P * L * U block differs from A.
    const Matrix A = fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}});
    EXPECT_EQ(logOf([&] { x = solveWithLUP(A, {1, 1, 1}); }),
              "LUP decomposition start.\n"
              "L:\n  1.000   0.000   0.000 \n  0.143   1.000   0.000 \n  0.571   0.500   1.000 \n"
              "U:\n  7.000   8.000  10.000 \n  0.000   0.857   1.571 \n  0.000   0.000  -0.500 \n"
              "P:\n  0.000   0.000   1.000 \n  1.000   0.000   0.000 \n  0.000   1.000   0.000 \n"
              "P * L * U:\n"
              "  4.000   5.000   6.000 \n  7.000   8.000  10.000 \n  1.000   2.000   3.000 \n"
              "LUP decomposition stop.\n\n");
    EXPECT_LT(norm(x - Vec{-1, 1, 0}), 1e-14);
    const std::string wrong = "MatrixWrongDimensions";
    std::string thrown;
    EXPECT_EQ(logOf([] { solveWithLUP(fromRows({{1, 2}, {2, 4}}), {1, 1}); }, &thrown) + thrown,
              "LUP decomposition start.\nMatrixIsSingular");
    // A size mismatch surfaces from the product P*b, after the whole dump.
    const std::string dump = logOf([] { solveWithLUP(getIdentityMatrix(2), {1, 1, 1}); }, &thrown);
    EXPECT_EQ(dump.substr(dump.size() - 25) + thrown, "LUP decomposition stop.\n\n" + wrong);
}

TEST(LUPsolve, GivenFactorsOfOtherSizes) {
    // L's size n decides; U is read only through its top-left n x n block.
    const Rows I2 = {{1, 0}, {0, 1}}, I3 = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    struct Case { Rows L, U, P; Vec b; const char* thrown; Vec x; };
    const Case cases[] = {
        {I2, I2, I2, {1}, "MatrixWrongDimensions", {}},
        {I2, {{2, 1, 1}, {0, 3, 1}, {0, 0, 4}}, I2, {1, 2}, "none", {1.0 / 6, 2.0 / 3}},
        {I3, {{2, 1}, {0, 3}}, I3, {1, 2, 3}, "MatrixIndexOutOfBound", {}},
        {I3, I3, I2, {1, 2}, "MatrixWrongDimensions", {}},  // P*b shorter than L
    };
    for (const Case& c : cases) {
        const Matrix L = fromRows(c.L), U = fromRows(c.U), P = fromRows(c.P);
        Vec x;
        EXPECT_EQ(thrownBy([&] { x = solveWithLUP(L, U, P, c.b); }), c.thrown) << c.b.size();
        EXPECT_LT(x.size() == c.x.size() ? norm(x - c.x) : INFINITY, 1e-16) << c.b.size();
    }
}
