#pragma once
// Gaussian elimination with partial (row) pivoting: P*A = L*U with L unit
// lower triangular, U upper triangular and P a permutation, and the direct
// solver, determinant and inverse built on the factors.
// A pivot below 1e-8 in magnitude throws MatrixIsSingular; the output
// arguments are then partly written and must not be used.

#include <vector>

#include "linalg/matrix.h"

// Factors A. L, U, P and swaps (the number of row exchanges that actually
// moved a row) are overwritten. Writes nothing to the run log.
void LUPdecomposition(const Matrix& A, Matrix& L, Matrix& U, Matrix& P, int& swaps);

// Solves L*U*x = P*b on factors from LUPdecomposition. Writes nothing to the
// run log and does not test the diagonal of U. n is the dimension of L; only
// the top-left n x n block of U is read, so a larger U is accepted.
// MatrixWrongDimensions when b does not fit P (from P*b) or P is smaller than
// L; MatrixIndexOutOfBound when U is smaller than L (from its row access).
std::vector<double> solveWithLUP(const Matrix& L, const Matrix& U, const Matrix& P,
                                 const std::vector<double>& b);

// Factors A, dumps L, U, P and P*L*U to the run log, and solves A*x = b.
// A size mismatch of A and b surfaces as MatrixWrongDimensions after the dump.
std::vector<double> solveWithLUP(const Matrix& A, const std::vector<double>& b);

// Determinant from the diagonal of U and the parity of the row exchanges;
// 1.0 for the empty matrix. A singular A throws instead of returning 0.
double calcDeterminantWithLUP(const Matrix& A);

// Inverse of A, column by column. Writes nothing to the run log.
Matrix calcInverseMatrixWithLUP(const Matrix& A);
