#include "linalg/lup.h"
#include "linalg/tridiagonal.h"
#include "linalg_test_util.h"

static const std::string kStart = "Tridiagonal matrix algorithm start.\n";
static const std::string kStop = "Tridiagonal matrix algorithm stop.\n\n";

TEST(TridiagonalSweep, ExampleAndOneByOneWithTheirCompleteLogs) {
    const Matrix A = fromRows({{2, 1, 0}, {1, 2, 1}, {0, 1, 2}});
    Vec x, y;
    EXPECT_EQ(logOf([&] { x = solveTridiagonalMatrixAlgo(A, {4, 8, 8}); }),
              kStart + "P[1] = -0.5     Q[1] = 2\nP[2] = -0.666667     Q[2] = 4\nQ[3] = 3\n\n" +
                  "result[1] = 1\nresult[2] = 2\nresult[3] = 3\n" + kStop);
    // 1, 2, 3 up to the rounding of the sweep; the log's 6 digits hide it.
    EXPECT_EQ(x, (Vec{0.99999999999999978, 2.0000000000000004, 2.9999999999999996}));
    EXPECT_EQ(logOf([&] { y = solveTridiagonalMatrixAlgo(fromRows({{4}}), {2}); }),
              kStart + "Q[1] = 0.5\n\nresult[1] = 0.5\n" + kStop);
    EXPECT_EQ(y, Vec{0.5});
}

TEST(TridiagonalSweep, FailuresAndWhatIsLoggedBeforeThem) {
    struct Case { Rows A; Vec d; const char* thrown; std::string logged; };
    const Case cases[] = {
        {{{2, 1, 0}, {1, 2, 1}, {0, 1, 2}}, {1, 2}, "MatrixWrongDimensions", ""},
        {{{2, 1, 5}, {1, 2, 1}, {0, 1, 2}}, {1, 2}, "MatrixWrongDimensions", ""},  // checked first
        {{{2, 1, 1e-300}, {1, 2, 1}, {0, 1, 2}}, {1, 2, 3}, "MatrixIsNotTridiagonal", kStart},
        {{{2, 1, 0}, {1, 2, 1}, {7, 1, 2}}, {1, 2, 3}, "MatrixIsNotTridiagonal", kStart},
        {{}, {}, "MatrixIndexOutOfBound", kStart},
    };
    for (const Case& c : cases) {
        std::string thrown;
        const Matrix A = fromRows(c.A);
        const std::string log = logOf([&] { solveTridiagonalMatrixAlgo(A, c.d); }, &thrown);
        EXPECT_EQ(thrown + "; " + log, std::string(c.thrown) + "; " + c.logged);
    }
    // No pivoting and no zero test: a zero pivot flows on as infinities.
    const Matrix Z = fromRows({{0, 1}, {1, 1}});
    const std::string log = logOf([&] { solveTridiagonalMatrixAlgo(Z, {1, 1}); });
    EXPECT_EQ(log.substr(kStart.size(), 27), "P[1] = -inf     Q[1] = inf\n");
}

TEST(TridiagonalSweep, AgreesWithLUPOnTheSameSystem) {
    Matrix A = randomDominant(8, 1);
    for (int i = 0; i < 8; ++i)
        for (int j = 0; j < 8; ++j) A[i][j] = std::abs(i - j) > 1 ? 0.0 : A[i][j];
    const Vec d = randomVector(8, 1);
    Vec x, y;
    logOf([&] { x = solveTridiagonalMatrixAlgo(A, d), y = solveWithLUP(A, d); });
    EXPECT_LT(residual(A, x, d), 1e-13);
    EXPECT_LT(norm(x - y), 1e-13);
}
