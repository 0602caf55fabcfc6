#pragma once
// Helpers shared by the linear-algebra tests: matrices from row lists, reproducible random
// matrices, distances between results, the exception class an action throws, and its run log.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "linalg/matrix.h"
#include "stderr_capture.h"

using Rows = std::vector<std::vector<double>>;
using Vec = std::vector<double>;

inline Matrix fromRows(const Rows& rows) {
    Matrix m(static_cast<int>(rows.size()));
    for (int i = 0; i < m.dimension(); ++i) m[i] = rows[i];
    return m;
}

#define LINALG_CATCH_AS(E) catch (const E&) { return #E; }
// The name of the class the action throws, "none" when it returns normally.
inline std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    }
    LINALG_CATCH_AS(MatrixIsSingular) LINALG_CATCH_AS(MatrixIsNotTridiagonal)
    LINALG_CATCH_AS(MatrixIndexOutOfBound) LINALG_CATCH_AS(MatrixWrongDimensions)
    LINALG_CATCH_AS(VectorWrongDimensions) LINALG_CATCH_AS(MaxItersCountAchieved)
    LINALG_CATCH_AS(MatrixIsNotSymmetrical)
    return "none";
}

// The run log the action writes; the class it throws goes to `thrown`, or must be "none".
inline std::string logOf(const std::function<void()>& action, std::string* thrown = nullptr) {
    StderrCapture log;
    const std::string t = thrownBy(action);
    if (thrown) *thrown = t; else EXPECT_EQ(t, "none");
    return log.take();
}

inline Vec randomVector(int n, unsigned seed, double scale = 10.0) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> dist(-scale, scale);
    Vec v(static_cast<std::size_t>(n));
    for (double& x : v) x = dist(gen);
    return v;
}

// Strictly diagonally dominant: well conditioned, fine for every solver, no row exchanges.
inline Matrix randomDominant(int n, unsigned seed) {
    Matrix A(n);
    for (int i = 0; i < n; ++i) A[i] = randomVector(n, seed * 1000 + i, 1.0), A[i][i] += n;
    return A;
}

// Largest element-wise distance: infinite for different sizes, NaN when either holds a NaN.
inline double maxAbsDiff(const Matrix& A, const Matrix& B) {
    if (A.dimension() != B.dimension()) return INFINITY;
    double m = 0.0;
    for (int i = 0; i < A.dimension(); ++i)
        for (int j = 0; j < A.dimension(); ++j) {
            const double d = std::fabs(A[i][j] - B[i][j]);
            if (std::isnan(d)) return d;
            m = std::fmax(m, d);
        }
    return m;
}

inline double residual(const Matrix& A, const Vec& x, const Vec& b) { return norm(A * x - b); }
