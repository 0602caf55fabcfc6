#include "linalg/iterative.h"
#include "linalg_test_util.h"

using Solver = Vec (*)(const Matrix&, const Vec&, const double&, int&);
static const Solver kSolvers[] = {solveSiedel, solveSimpleIterations};

// One solve with its log; `iterations` stays -1 unless the solver succeeds.
struct Outcome {
    Vec x;
    int iterations = -1;
    std::string thrown, log;
    Outcome(Solver solve, const Rows& A, const Vec& b, double eps) {
        log = logOf([&] { x = solve(fromRows(A), b, eps, iterations); }, &thrown);
    }
    bool logs(const std::string& text) const { return log.find(text) != std::string::npos; }
};

TEST(IterativeSolvers, IterationCountsAndLogLines) {
    const Rows D = {{2, 0, 0}, {0, -4, 0}, {0, 0, 8}}, F = {{2, -1}, {-1, 2}}, S = {{2, 1}, {0, 2}};
    const Rows K = {{4, 1}, {1, 3}}, W = {{1, 0.6, 0.6}, {0.6, 1, 0.6}, {0.6, 0.6, 1}};
    const Solver seidel = solveSiedel, simple = solveSimpleIterations;
    const double above3 = std::nextafter(3.0, 4.0);
    struct Case { Solver solve; Rows A; Vec b; double eps; int iterations; std::string logged; };
    const Case cases[] = {
        // B is zero, so the error factor and the first estimate are 0.
        {seidel, D, {1, 2, 4}, 1e-9, 1, "Iteration: 1\nResult: 0.5 -0.5 0.5\nEpsilon: 0\n\n"},
        {simple, D, {1, 2, 4}, 1e-9, 1, "Iteration: 1\nResult: 0.5 -0.5 0.5\nEpsilon: 0\n\n"},
        // A*b = b: the starting vector is already the solution.
        {seidel, F, {1, 1}, 1e-12, 1, "Iteration: 1\nResult: 1 1\nEpsilon: 0\n\n"},
        {simple, F, {1, 1}, 1e-12, 1, "Iteration: 1\nResult: 1 1\nEpsilon: 0\n\n"},
        // B = [[0, -0.5], [0, 0]]: both factors are 1 and the first change is exactly 3, so an
        // estimate equal to eps does not stop, one just above it does.
        {seidel, S, {2, 4}, 3.0, 2, "Iteration: 1\nResult: -1 2\nEpsilon: 3\n"},
        {seidel, S, {2, 4}, above3, 1, "Iteration: 1\nResult: -1 2\nEpsilon: 3\n"},
        {simple, S, {2, 4}, 3.0, 2, "Iteration: 1\nResult: -1 2\nEpsilon: 3\n"},
        {simple, S, {2, 4}, above3, 1, "Iteration: 1\nResult: -1 2\nEpsilon: 3\n"},
        {seidel, K, {1, 2}, 1e-6, 7, "Iteration: 7\nResult: 0.090909 0.636364\n"},
        {simple, K, {1, 2}, 1e-6, 12, "Iteration: 12\nResult: 0.0909094 0.636364\n"},
        // norm(B) = 1.2 >= 1, so the factor is 1 and the estimate the plain change |-2 - 1|.
        {seidel, W, {1, 2, 3}, 1e-10, 31, "Iteration: 1\nResult: -2 1.4 3.36\nEpsilon: 3\n\n"},
    };
    for (const Case& c : cases) {
        const Outcome r(c.solve, c.A, c.b, c.eps);
        EXPECT_EQ(r.iterations, c.iterations) << &c - cases;
        EXPECT_TRUE(r.logs(c.logged)) << &c - cases << "\n" << r.log.substr(0, 500);
        // The estimate bounds the error of x, so norm(A) * eps bounds the residual.
        EXPECT_LT(residual(fromRows(c.A), r.x, c.b), norm(fromRows(c.A)) * c.eps) << &c - cases;
    }
}

TEST(IterativeSolvers, SizeErrorsAndTheIterationLimit) {
    for (const Solver solve : kSolvers) {
        for (const Rows& bad : {Rows{{1}}, Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}) {
            const Outcome r(solve, bad, {1, 2}, 1e-6);
            EXPECT_EQ(r.thrown + r.log, "MatrixWrongDimensions") << bad.size();  // nothing logged
        }
        // A zero diagonal element makes every estimate NaN, so the limit is reached.
        const Outcome r(solve, {{0, 1}, {1, 2}}, {1, 1}, 1e-6);
        EXPECT_EQ(r.thrown, "MaxItersCountAchieved");
        EXPECT_EQ(r.iterations, -1);
        EXPECT_TRUE(r.logs("\nIteration: 100001\nResult: "));
        EXPECT_EQ(r.log.substr(r.log.size() - 15), "\nEpsilon: nan\n\n");
        EXPECT_FALSE(r.logs("Iteration: 100002") || r.logs("stop"));
    }
}

TEST(IterativeSolvers, CompleteLogs) {
    // Seidel: q = 1/3, factor = norm(Bu) / (1 - q) = 0.25 / (2/3) = 0.375.
    EXPECT_EQ(Outcome(solveSiedel, {{4, 1}, {1, 3}}, {1, 2}, 1e-3).log,
              "Seidel method start.\n"
              "Iteration: 1\nResult: -0.25 0.75\nEpsilon: 0.46875\n\n"
              "Iteration: 2\nResult: 0.0625 0.645833\nEpsilon: 0.117187\n\n"
              "Iteration: 3\nResult: 0.0885417 0.637153\nEpsilon: 0.00976563\n\n"
              "Iteration: 4\nResult: 0.0907118 0.636429\nEpsilon: 0.000813802\n\n"
              "Seidel method stop (target accuracy achieved).\n\n");
    // Simple iterations: factor = q / (1 - q) = 0.5.
    EXPECT_EQ(Outcome(solveSimpleIterations, {{4, 1}, {1, 3}}, {1, 2}, 0.1).log,
              "Simple iterations method start.\n"
              "Iteration: 1\nResult: -0.25 0.333333\nEpsilon: 0.833333\n\n"
              "Iteration: 2\nResult: 0.166667 0.75\nEpsilon: 0.208333\n\n"
              "Iteration: 3\nResult: 0.0625 0.611111\nEpsilon: 0.0694444\n\n"
              "Simple iterations method stop (target accuracy achieved).\n\n");
}
