#pragma once
// Helpers shared by the linear-algebra tests: matrices from row lists,
// reproducible random matrices, distances between results, and the name of
// the exception class an action throws (so must-fail table rows can name it).

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "linalg/matrix.h"

using Rows = std::vector<std::vector<double>>;

inline Matrix fromRows(const Rows& rows) {
    Matrix m(static_cast<int>(rows.size()));
    for (int i = 0; i < m.dimension(); ++i) m[i] = rows[i];
    return m;
}

// "none" when the action returns normally.
inline std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const MatrixIsSingular&) {
        return "MatrixIsSingular";
    } catch (const MatrixIsNotTridiagonal&) {
        return "MatrixIsNotTridiagonal";
    } catch (const MatrixIndexOutOfBound&) {
        return "MatrixIndexOutOfBound";
    } catch (const MatrixWrongDimensions&) {
        return "MatrixWrongDimensions";
    } catch (const VectorWrongDimensions&) {
        return "VectorWrongDimensions";
    } catch (const MaxItersCountAchieved&) {
        return "MaxItersCountAchieved";
    } catch (const MatrixIsNotSymmetrical&) {
        return "MatrixIsNotSymmetrical";
    }
    return "none";
}

// Strictly diagonally dominant, so well conditioned and safe for every solver.
inline Matrix randomDominant(int n, unsigned seed) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> dist(-1.0, 1.0);
    Matrix A(n);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) A[i][j] = dist(gen);
        A[i][i] = (A[i][i] < 0 ? -1.0 : 1.0) * (n + 1.0);
    }
    return A;
}

inline std::vector<double> randomVector(int n, unsigned seed) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> dist(-10.0, 10.0);
    std::vector<double> v(static_cast<std::size_t>(n));
    for (double& x : v) x = dist(gen);
    return v;
}

inline double maxAbsDiff(const Matrix& A, const Matrix& B) {
    double m = 0.0;
    for (int i = 0; i < A.dimension(); ++i)
        for (int j = 0; j < A.dimension(); ++j) m = std::fmax(m, std::fabs(A[i][j] - B[i][j]));
    return m;
}

inline double residual(const Matrix& A, const std::vector<double>& x, const std::vector<double>& b) {
    return norm(A * x - b);
}
