#include "linalg/iterative.h"

#include <cstddef>
#include <iostream>

#include "errors/errors.h"

namespace {

const int kMaxIterations = 100001;

// The fixed-point form x = B*x + c of A*x = b, with q = norm(B).
struct FixedPointForm {
    Matrix B;
    std::vector<double> c;
    double q;
};

FixedPointForm scale(const Matrix& A, const std::vector<double>& b) {
    const int n = A.dimension();
    Matrix Dinv(n);
    // A zero diagonal element gives an infinity here on purpose: the NaN it
    // produces later keeps the estimate from ever passing the stop test.
    for (int i = 0; i < n; ++i) Dinv[i][i] = 1.0 / A[i][i];
    FixedPointForm form;
    form.B = getIdentityMatrix(n) - Dinv * A;
    form.c = Dinv * b;
    form.q = norm(form.B);
    return form;
}

void logIteration(int k, const std::vector<double>& x, double estimate) {
    std::cerr << "Iteration: " << k << std::endl;
    std::cerr << "Result: ";
    const std::size_t n = x.size();
    for (std::size_t i = 0; i < n; ++i) {
        std::cerr << x[i];
        if (i + 1 < n)
            std::cerr << " ";
        else
            std::cerr << std::endl;
    }
    std::cerr << "Epsilon: " << estimate << std::endl;
    std::cerr << std::endl;
}

}  // namespace

std::vector<double> solveSiedel(const Matrix& A, const std::vector<double>& b, const double& eps,
                                int& iterations) {
    if (b.size() != static_cast<std::size_t>(A.dimension())) throw MatrixWrongDimensions();
    const int n = A.dimension();
    const FixedPointForm form = scale(A, b);
    const Matrix& B = form.B;

    // Seidel's error bound uses only the part of B applied to components not
    // yet updated in the current sweep: the upper triangle with the diagonal.
    Matrix Bu(n);
    for (int i = 0; i < n; ++i)
        for (int j = i; j < n; ++j) Bu[i][j] = B[i][j];
    const double factor = form.q < 1.0 ? norm(Bu) / (1.0 - form.q) : 1.0;

    std::vector<double> x = b;
    std::vector<double> prev = b;
    std::cerr << "Seidel method start." << std::endl;
    for (int k = 1;; ++k) {
        // In place: components j < i already hold this sweep's values.
        for (int i = 0; i < n; ++i) {
            const std::vector<double>& row = B[i];
            double s = 0.0;
            for (int j = 0; j < n; ++j) s = row[j] * x[j] + s;
            x[i] = s + form.c[i];
        }
        const double estimate = factor * norm(x - prev);
        logIteration(k, x, estimate);
        if (estimate < eps) {
            iterations = k;
            std::cerr << "Seidel method stop (target accuracy achieved)." << std::endl << std::endl;
            return x;
        }
        if (k == kMaxIterations) throw MaxItersCountAchieved();
        prev = x;
    }
}

std::vector<double> solveSimpleIterations(const Matrix& A, const std::vector<double>& b,
                                          const double& eps, int& iterations) {
    if (b.size() != static_cast<std::size_t>(A.dimension())) throw MatrixWrongDimensions();
    const FixedPointForm form = scale(A, b);
    const double factor = form.q < 1.0 ? form.q / (1.0 - form.q) : 1.0;

    std::vector<double> prev = b;
    std::cerr << "Simple iterations method start." << std::endl;
    for (int k = 1;; ++k) {
        const std::vector<double> x = form.B * prev + form.c;
        const double estimate = factor * norm(x - prev);
        logIteration(k, x, estimate);
        if (estimate < eps) {
            iterations = k;
            std::cerr << "Simple iterations method stop (target accuracy achieved)." << std::endl
                      << std::endl;
            return x;
        }
        if (k == kMaxIterations) throw MaxItersCountAchieved();
        prev = x;
    }
}
