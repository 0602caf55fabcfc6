#pragma once
// Eigenvalue methods: the Householder QR decomposition, the QR algorithm
// (all eigenvalues of a real matrix, complex-conjugate pairs from 2 x 2
// diagonal blocks) and the Jacobi rotation method (eigenvalues and
// eigenvectors of a symmetric matrix). The two iterative methods trace every
// iteration in the run log, matrices in "%10.6lf " columns, and throw
// MaxItersCountAchieved after 100001 iterations without reaching eps; their
// outputs are then not written. NaN and infinities (a zero Householder
// vector, for example) are not guarded against: they flow into the log and
// the results.

#include <complex>
#include <vector>

#include "linalg/matrix.h"

// Q orthogonal, R upper triangular, Q*R = A. Writes nothing to the log.
// An empty or 1 x 1 matrix gives Q = identity and R = A.
void QRdecomposition(const Matrix& A, Matrix& Q, Matrix& R);

// All n eigenvalues of A, in the order of the diagonal of the final iterate;
// iterations = the number of QR steps made (at least 2).
void getEigenvaluesWithQR(const Matrix& A, const double& eps,
                          std::vector<std::complex<double>>& values, int& iterations);

// Eigenvalues of a symmetric A (in the order of the diagonal of the final
// iterate) and V, whose columns are the matching eigenvectors (the product
// of the rotations). MatrixIsNotSymmetrical, after the start line, when A is
// not symmetric within 1e-5. iterations = the number of rotations made.
void getEigenvaluesWithJacobi(const Matrix& A, const double& eps, std::vector<double>& values,
                              Matrix& V, int& iterations);
