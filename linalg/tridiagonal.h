#pragma once
// The tridiagonal matrix algorithm (forward sweep and back substitution,
// no pivoting) for A*x = d, tracing every sweep coefficient and every
// component of x in the run log.
//
// Throws MatrixWrongDimensions (before any log line) when d.size() differs
// from A.dimension(), MatrixIsNotTridiagonal (after the start line) when an
// element off the three central diagonals is not exactly 0, and
// MatrixIndexOutOfBound for the empty system. Zero denominators are not
// tested: they give infinities or NaN in the log and in the result.

#include <vector>

#include "linalg/matrix.h"

std::vector<double> solveTridiagonalMatrixAlgo(const Matrix& A, const std::vector<double>& d);
