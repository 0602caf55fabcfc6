#pragma once
// Small helpers of the interpolation polynomials. linalg/matrix.h declares an
// int sign(const double&) of its own: never include both headers in one
// translation unit, or calls to sign become ambiguous.

// n! in a 32-bit int: 1 for n <= 1, exact up to 12!.
int factorial(int n);

// '-' for negative v, '+' otherwise (also for -0.0 and NaN).
char sign(double v);
