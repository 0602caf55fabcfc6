#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "linalg/lup.h"
#include "linalg/tridiagonal.h"
#include "linalg_test_util.h"
#include "stderr_capture.h"

namespace {

const char kStart[] = "Tridiagonal matrix algorithm start.\n";

TEST(TridiagonalSweep, ThreeByThreeExampleAndItsCompleteLog) {
    StderrCapture log;
    const std::vector<double> x =
        solveTridiagonalMatrixAlgo(fromRows({{2, 1, 0}, {1, 2, 1}, {0, 1, 2}}), {4, 8, 8});
    // 1, 2, 3 up to the rounding of the sweep; the log's 6 digits hide it.
    EXPECT_EQ(x, (std::vector<double>{0.99999999999999978, 2.0000000000000004, 2.9999999999999996}));
    EXPECT_EQ(log.take(),
              "Tridiagonal matrix algorithm start.\n"
              "P[1] = -0.5     Q[1] = 2\n"
              "P[2] = -0.666667     Q[2] = 4\n"
              "Q[3] = 3\n"
              "\n"
              "result[1] = 1\n"
              "result[2] = 2\n"
              "result[3] = 3\n"
              "Tridiagonal matrix algorithm stop.\n"
              "\n");
}

TEST(TridiagonalSweep, OneByOneHasNoP) {
    StderrCapture log;
    EXPECT_EQ(solveTridiagonalMatrixAlgo(fromRows({{4}}), {2}), std::vector<double>{0.5});
    EXPECT_EQ(log.take(), std::string(kStart) +
                              "Q[1] = 0.5\n\nresult[1] = 0.5\nTridiagonal matrix algorithm stop.\n\n");
}

TEST(TridiagonalSweep, FailuresAndWhatIsLoggedBeforeThem) {
    struct Case {
        const char* what;
        Rows A;
        std::vector<double> d;
        const char* expected;
        std::string logged;
    };
    const Case cases[] = {
        {"d too short", {{2, 1, 0}, {1, 2, 1}, {0, 1, 2}}, {1, 2}, "MatrixWrongDimensions", ""},
        {"d too short, not tridiagonal", {{2, 1, 5}, {1, 2, 1}, {0, 1, 2}}, {1, 2}, "MatrixWrongDimensions", ""},
        {"corner A[0][2]", {{2, 1, 1e-300}, {1, 2, 1}, {0, 1, 2}}, {1, 2, 3}, "MatrixIsNotTridiagonal", kStart},
        {"corner A[3][0]", {{2, 1, 0, 0}, {1, 2, 1, 0}, {0, 1, 2, 1}, {7, 0, 1, 2}}, {1, 2, 3, 4},
         "MatrixIsNotTridiagonal", kStart},
        {"empty system", {}, {}, "MatrixIndexOutOfBound", kStart},
    };
    for (const Case& c : cases) {
        StderrCapture log;
        const Matrix A = fromRows(c.A);
        EXPECT_EQ(thrownBy([&] { solveTridiagonalMatrixAlgo(A, c.d); }), c.expected) << c.what;
        EXPECT_EQ(log.take(), c.logged) << c.what;
    }
}

TEST(TridiagonalSweep, ZeroPivotFlowsOnWithoutAnError) {
    StderrCapture log;
    const std::vector<double> x = solveTridiagonalMatrixAlgo(fromRows({{0, 1}, {1, 1}}), {1, 1});
    EXPECT_FALSE(std::isfinite(x[0]) && std::isfinite(x[1]));
    EXPECT_NE(log.take().find("P[1] = -inf     Q[1] = inf\n"), std::string::npos);
}

TEST(TridiagonalSweep, AgreesWithLUPOnTheSameSystem) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        const int n = 8;
        const Matrix full = randomDominant(n, seed);
        Matrix A(n);
        for (int i = 0; i < n; ++i)
            for (int j = std::max(0, i - 1); j <= std::min(n - 1, i + 1); ++j) A[i][j] = full[i][j];
        const std::vector<double> d = randomVector(n, seed + 50);
        StderrCapture log;
        const std::vector<double> x = solveTridiagonalMatrixAlgo(A, d);
        EXPECT_LT(residual(A, x, d), 1e-13) << seed;
        EXPECT_LT(norm(x - solveWithLUP(A, d)), 1e-13) << seed;
    }
}

}  // namespace
