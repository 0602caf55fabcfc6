#include "linalg/tridiagonal.h"

#include <cstddef>
#include <iostream>

#include "errors/errors.h"

// In the comments a_i, b_i, c_i are the sub-, main and super-diagonal
// elements of row i; P and Q are the sweep's multipliers and constants, with
// x[i] = P[i] * x[i+1] + Q[i]. The log numbers P, Q and x from 1.
std::vector<double> solveTridiagonalMatrixAlgo(const Matrix& A, const std::vector<double>& d) {
    if (d.size() != static_cast<std::size_t>(A.dimension())) throw MatrixWrongDimensions();
    std::cerr << "Tridiagonal matrix algorithm start." << std::endl;
    if (!A.isTridiagonal()) throw MatrixIsNotTridiagonal();

    const int n = A.dimension();
    std::vector<double> P(static_cast<std::size_t>(n), 0.0);
    std::vector<double> Q(static_cast<std::size_t>(n), 0.0);

    // Row 0 is read before anything else, so the empty system throws
    // MatrixIndexOutOfBound here.
    const std::vector<double>& first = A[0];
    if (n > 1) {
        P[0] = -first[1] / first[0];
        std::cerr << "P[1] = " << P[0] << "     ";
    }
    Q[0] = d[0] / first[0];
    std::cerr << "Q[1] = " << Q[0] << std::endl;

    for (int i = 1; i < n; ++i) {
        const std::vector<double>& row = A[i];
        const double den = row[i - 1] * P[i - 1] + row[i];
        if (i < n - 1) {
            P[i] = -row[i + 1] / den;
            std::cerr << "P[" << i + 1 << "] = " << P[i] << "     ";
        }
        Q[i] = (d[i] - row[i - 1] * Q[i - 1]) / den;
        std::cerr << "Q[" << i + 1 << "] = " << Q[i] << std::endl;
    }
    std::cerr << std::endl;

    std::vector<double> x(static_cast<std::size_t>(n), 0.0);
    x[n - 1] = Q[n - 1];
    for (int i = n - 2; i >= 0; --i) x[i] = P[i] * x[i + 1] + Q[i];

    for (int i = 0; i < n; ++i) std::cerr << "result[" << i + 1 << "] = " << x[i] << std::endl;
    std::cerr << "Tridiagonal matrix algorithm stop." << std::endl << std::endl;
    return x;
}
