#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "linalg/iterative.h"
#include "linalg_test_util.h"
#include "stderr_capture.h"

namespace {

using Solver = std::vector<double> (*)(const Matrix&, const std::vector<double>&, const double&, int&);

struct Method {
    const char* name;
    Solver solve;
    const char* start;
    const char* stop;
};

const Method kMethods[] = {
    {"Seidel", solveSiedel, "Seidel method start.\n", "Seidel method stop (target accuracy achieved).\n\n"},
    {"simple iterations", solveSimpleIterations, "Simple iterations method start.\n",
     "Simple iterations method stop (target accuracy achieved).\n\n"},
};

std::string lastLineStartingWith(const std::string& log, const std::string& prefix) {
    const std::size_t at = log.rfind("\n" + prefix);
    if (at == std::string::npos) return "";
    return log.substr(at + 1, log.find('\n', at + 1) - at - 1);
}

TEST(IterativeSolvers, DiagonalSystemStopsAfterTheFirstIteration) {
    // B is zero, so the error factor and the first estimate are 0.
    for (const Method& m : kMethods) {
        StderrCapture log;
        int iterations = -1;
        const std::vector<double> x = m.solve(fromRows({{2, 0, 0}, {0, -4, 0}, {0, 0, 8}}), {1, 2, 4}, 1e-9, iterations);
        EXPECT_EQ(iterations, 1) << m.name;
        EXPECT_EQ(x, (std::vector<double>{0.5, -0.5, 0.5})) << m.name;
        EXPECT_EQ(log.take(), std::string(m.start) + "Iteration: 1\nResult: 0.5 -0.5 0.5\nEpsilon: 0\n\n" + m.stop)
            << m.name;
    }
}

TEST(IterativeSolvers, IterationCountsAndLastResultLine) {
    struct Case {
        Solver solve;
        double eps;
        int iterations;
        const char* result;
    };
    const Case cases[] = {
        {solveSiedel, 1e-6, 7, "Result: 0.090909 0.636364"},
        {solveSimpleIterations, 1e-6, 12, "Result: 0.0909094 0.636364"},
        {solveSiedel, 1e-7, 8, "Result: 0.0909091 0.636364"},
        {solveSimpleIterations, 1e-7, 14, "Result: 0.0909091 0.636364"},
    };
    const Matrix A = fromRows({{4, 1}, {1, 3}});
    const std::vector<double> b{1, 2};
    for (const Case& c : cases) {
        StderrCapture log;
        int iterations = -1;
        const std::vector<double> x = c.solve(A, b, c.eps, iterations);
        const std::string text = log.take();
        EXPECT_EQ(iterations, c.iterations) << c.eps;
        EXPECT_EQ(lastLineStartingWith(text, "Result: "), c.result) << c.eps;
        // The estimate bounds the true error from above: x* = (1/11, 7/11).
        EXPECT_LT(std::fabs(x[0] - 1.0 / 11), c.eps);
        EXPECT_LT(std::fabs(x[1] - 7.0 / 11), c.eps);
    }
}

TEST(IterativeSolvers, StopTestIsStrict) {
    // B = [[0, -0.5], [0, 0]], c = [1, 2]: both factors are exactly 1 and the
    // first change from b = [2, 4] to [-1, 2] is exactly 3.
    struct Case {
        double eps;
        int iterations;
    };
    const Case cases[] = {{3.0, 2}, {3.0000000000000004, 1}};
    for (const Method& m : kMethods) {
        for (const Case& c : cases) {
            StderrCapture log;
            int iterations = -1;
            m.solve(fromRows({{2, 1}, {0, 2}}), {2, 4}, c.eps, iterations);
            EXPECT_EQ(iterations, c.iterations) << m.name << " " << c.eps;
            EXPECT_NE(log.take().find("Iteration: 1\nResult: -1 2\nEpsilon: 3\n"), std::string::npos) << m.name;
        }
    }
}

TEST(IterativeSolvers, StartingAtTheFixedPointStopsAtOnce) {
    // A*b = b, so b is already the solution.
    for (const Method& m : kMethods) {
        StderrCapture log;
        int iterations = -1;
        EXPECT_EQ(m.solve(fromRows({{2, -1}, {-1, 2}}), {1, 1}, 1e-12, iterations), (std::vector<double>{1, 1}));
        EXPECT_EQ(iterations, 1) << m.name;
    }
}

TEST(IterativeSolvers, SizeMismatchThrowsBeforeAnyLogLine) {
    for (const Method& m : kMethods) {
        StderrCapture log;
        int iterations = -1;
        EXPECT_EQ(thrownBy([&] { m.solve(getIdentityMatrix(2), {1, 2, 3}, 1e-6, iterations); }),
                  "MatrixWrongDimensions") << m.name;
        EXPECT_EQ(thrownBy([&] { m.solve(getIdentityMatrix(3), {1, 2}, 1e-6, iterations); }),
                  "MatrixWrongDimensions") << m.name;
        EXPECT_EQ(log.take(), "") << m.name;
        EXPECT_EQ(iterations, -1);
    }
}

TEST(IterativeSolvers, ResidualIsSmallOnRandomDominantSystems) {
    for (const Method& m : kMethods) {
        for (unsigned seed = 1; seed <= 3; ++seed) {
            const Matrix A = randomDominant(6, seed);
            const std::vector<double> b = randomVector(6, seed + 7);
            StderrCapture log;
            int iterations = -1;
            const std::vector<double> x = m.solve(A, b, 1e-12, iterations);
            EXPECT_LT(residual(A, x, b), 1e-10) << m.name << " " << seed;
            EXPECT_GT(iterations, 1);
        }
    }
}

TEST(IterativeSolvers, WeakRowDominanceFallsBackToThePlainChange) {
    // norm(B) = 1.2 >= 1: the factor is 1 and the first estimate is the
    // maximum change from b. Seidel still converges (A is positive definite).
    const Matrix A = fromRows({{1, 0.6, 0.6}, {0.6, 1, 0.6}, {0.6, 0.6, 1}});
    const std::vector<double> b{1, 2, 3};
    StderrCapture log;
    int iterations = -1;
    const std::vector<double> x = solveSiedel(A, b, 1e-10, iterations);
    EXPECT_LT(residual(A, x, b), 1e-9);
    // First sweep: x0 = 1 - 0.6*2 - 0.6*3 = -2, x1 = 2 - 0.6*(-2) - 0.6*3 = 1.4,
    // x2 = 3 - 0.6*(-2) - 0.6*1.4 = 3.36; the largest change is |-2 - 1| = 3.
    EXPECT_NE(log.take().find("Iteration: 1\nResult: -2 1.4 3.36\nEpsilon: 3\n\n"), std::string::npos);
}

TEST(IterativeSolvers, ZeroDiagonalRunsIntoTheIterationLimit) {
    for (const Method& m : kMethods) {
        StderrCapture log;
        int iterations = -1;
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(thrownBy([&] { m.solve(fromRows({{0, 1}, {1, 2}}), {1, 1}, 1e-6, iterations); }),
                  "MaxItersCountAchieved") << m.name;
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        const std::string text = log.take();
        EXPECT_EQ(iterations, -1) << m.name;
        // The sign printed for a NaN result is the platform's; the estimate is |NaN|.
        const std::size_t last = text.rfind("\nIteration: 100001\nResult: ");
        ASSERT_NE(last, std::string::npos) << m.name;
        EXPECT_EQ(text.substr(text.size() - 15), "\nEpsilon: nan\n\n") << m.name;
        EXPECT_EQ(text.find("Iteration: 100002"), std::string::npos);
        EXPECT_EQ(text.find("stop"), std::string::npos);
        RecordProperty(std::string(m.name) == "Seidel" ? "seidel_seconds" : "simple_seconds",
                       std::to_string(seconds));
    }
}

TEST(IterativeSolvers, CompleteSeidelLog) {
    StderrCapture log;
    int iterations = -1;
    solveSiedel(fromRows({{4, 1}, {1, 3}}), {1, 2}, 1e-3, iterations);
    // x0 = 0.25 - 0.25*2 = -0.25, x1 = 2/3 + 0.25/3 = 0.75; q = 1/3,
    // factor = norm(Bu) / (1 - q) = 0.25 / (2/3) = 0.375; 0.375 * 1.25 = 0.46875.
    EXPECT_EQ(log.take(),
              "Seidel method start.\n"
              "Iteration: 1\nResult: -0.25 0.75\nEpsilon: 0.46875\n\n"
              "Iteration: 2\nResult: 0.0625 0.645833\nEpsilon: 0.117187\n\n"
              "Iteration: 3\nResult: 0.0885417 0.637153\nEpsilon: 0.00976563\n\n"
              "Iteration: 4\nResult: 0.0907118 0.636429\nEpsilon: 0.000813802\n\n"
              "Seidel method stop (target accuracy achieved).\n\n");
}

TEST(IterativeSolvers, CompleteSimpleIterationsLog) {
    StderrCapture log;
    int iterations = -1;
    solveSimpleIterations(fromRows({{4, 1}, {1, 3}}), {1, 2}, 0.1, iterations);
    // factor = q / (1 - q) = 0.5; the first change is max(1.25, 1.66667).
    EXPECT_EQ(log.take(),
              "Simple iterations method start.\n"
              "Iteration: 1\nResult: -0.25 0.333333\nEpsilon: 0.833333\n\n"
              "Iteration: 2\nResult: 0.166667 0.75\nEpsilon: 0.208333\n\n"
              "Iteration: 3\nResult: 0.0625 0.611111\nEpsilon: 0.0694444\n\n"
              "Simple iterations method stop (target accuracy achieved).\n\n");
}

}  // namespace
