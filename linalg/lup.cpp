#include "linalg/lup.h"

#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>

#include "errors/errors.h"

namespace {

// The title, then each row with every element as printf's "%7.3lf ".
void dumpMatrix(const char* title, const Matrix& M) {
    std::cerr << title << std::flush;
    logRows(M, "%7.3lf ");
}

}  // namespace

void LUPdecomposition(const Matrix& A, Matrix& L, Matrix& U, Matrix& P, int& swaps) {
    // Copy first: A may be one of the output arguments.
    Matrix source = A;
    const int n = source.dimension();
    L = getIdentityMatrix(n);
    P = getIdentityMatrix(n);
    U = source;
    swaps = 0;
    if (n < 1) return;

    for (int k = 0;; ++k) {
        // Strict comparison: among equal magnitudes the topmost row wins.
        double best = -1.0;
        int p = -1;
        for (int i = k; i < n; ++i) {
            const double a = std::fabs(U[i][k]);
            if (a > best) {
                best = a;
                p = i;
            }
        }
        // Made for the last column too, so a singular matrix is always caught.
        // NaN magnitudes are never chosen; a column of them ends here.
        if (best < 1e-8) throw MatrixIsSingular();

        // The row exchange in L moves the multipliers already computed with
        // their rows; the column exchange puts the unit diagonal back.
        U.swapRows(k, p);
        P.swapRows(k, p);
        L.swapRows(k, p);
        L.swapColumns(k, p);
        if (p != k) ++swaps;
        if (k == n - 1) return;

        const std::vector<double>& pivotRow = U[k];
        for (int i = k + 1; i < n; ++i) {
            std::vector<double>& row = U[i];
            const double m = row[k] / pivotRow[k];
            L[i][k] = m;
            for (int j = k; j < n; ++j) row[j] = row[j] - m * pivotRow[j];
        }
    }
}

std::vector<double> solveWithLUP(const Matrix& L, const Matrix& U, const Matrix& P,
                                 const std::vector<double>& b) {
    // No size check of its own: L sets n, P*b and the row accesses of L and U
    // throw where the sizes fail them. U may be larger than L (only its
    // top-left n x n block is read); a smaller U throws MatrixIndexOutOfBound
    // at its row n-1, before any element of U is read.
    const int n = L.dimension();
    const std::vector<double> c = P * b;
    // A P smaller than L leaves c too short for the forward substitution.
    if (c.size() < static_cast<std::size_t>(n)) throw MatrixWrongDimensions();

    std::vector<double> y(static_cast<std::size_t>(n), 0.0);
    for (int i = 0; i < n; ++i) {
        const std::vector<double>& row = L[i];
        y[i] = c[i];
        for (int j = 0; j < i; ++j) y[i] = y[i] - row[j] * y[j];
    }

    std::vector<double> x(static_cast<std::size_t>(n), 0.0);
    for (int i = n - 1; i >= 0; --i) {
        const std::vector<double>& row = U[i];
        double s = y[i];
        for (int j = i + 1; j < n; ++j) s = s - row[j] * x[j];
        x[i] = s / row[i];
    }
    return x;
}

std::vector<double> solveWithLUP(const Matrix& A, const std::vector<double>& b) {
    std::cerr << "LUP decomposition start." << std::endl;
    Matrix L, U, P;
    int swaps = 0;
    LUPdecomposition(A, L, U, P, swaps);

    dumpMatrix("L:\n", L);
    dumpMatrix("U:\n", U);
    dumpMatrix("P:\n", P);
    dumpMatrix("P * L * U:\n", (P * L) * U);
    std::cerr << "LUP decomposition stop." << std::endl << std::endl;

    return solveWithLUP(L, U, P, b);
}

double calcDeterminantWithLUP(const Matrix& A) {
    Matrix L, U, P;
    int swaps = 0;
    LUPdecomposition(A, L, U, P, swaps);
    double det = 1.0;
    const int n = U.dimension();
    for (int i = 0; i < n; ++i) det *= U[i][i];
    return swaps % 2 == 0 ? det : -det;
}

Matrix calcInverseMatrixWithLUP(const Matrix& A) {
    Matrix L, U, P;
    int swaps = 0;
    LUPdecomposition(A, L, U, P, swaps);
    const int n = L.dimension();
    Matrix R(n);
    std::vector<double> e(static_cast<std::size_t>(n), 0.0);
    for (int j = 0; j < n; ++j) {
        e[j] = 1.0;
        R.insertColumn(j, solveWithLUP(L, U, P, e));
        e[j] = 0.0;
    }
    return R;
}
