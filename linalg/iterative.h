#pragma once
// Two iterative solvers for A*x = b: Seidel and simple iterations. Both bring
// the system into the form x = B*x + c by Jacobi scaling (B = I - D^-1*A,
// c = D^-1*b, D the diagonal of A), start from b itself, and stop when the
// a-posteriori error estimate factor*|x_k - x_(k-1)| falls strictly below
// eps. Every iteration is traced in the run log.
//
// Throws MatrixWrongDimensions (before any log line) when b.size() differs
// from A.dimension(), and MaxItersCountAchieved after the 100001st iteration
// without convergence; `iterations` is written only on success. A zero
// diagonal element is not tested: it makes the estimate NaN, so the solver
// runs into the iteration limit. When norm(B) >= 1 the factor is 1 and the
// plain change between iterates decides.

#include <vector>

#include "linalg/matrix.h"

std::vector<double> solveSiedel(const Matrix& A, const std::vector<double>& b, const double& eps,
                                int& iterations);

std::vector<double> solveSimpleIterations(const Matrix& A, const std::vector<double>& b,
                                          const double& eps, int& iterations);
