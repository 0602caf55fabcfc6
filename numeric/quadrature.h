#pragma once
// Composite quadrature of f over [x1, x2] with step h (given positive; the
// integral is oriented, so x1 > x2 gives the negated value), and the
// Runge-Romberg error estimates from two results I1, I2 obtained with steps
// h1, h2. The rules trace every subinterval to the run log (standard error);
// the estimates write nothing.
//
// The subinterval count is the ceiling of (x2 - x1) / h, except that an
// excess below 1e-6 of a step is dropped; only the last subinterval is
// shortened, to end exactly at x2. A step that is not positive, or a count
// that is not finite or does not fit an int, gives 0 with no subintervals.
// Exceptions from f leave the rule at once.

#include "expression/function.h"

// Midpoint rectangles.
double integrateWithRectangles(Function f, double x1, double x2, double h);
double integrateWithTrapezoidalRule(Function f, double x1, double x2, double h);
// One parabola per subinterval through its ends and midpoint.
double integrateWithSimpson(Function f, double x1, double x2, double h);

// (I1 - I2) / (k^2 - 1) with k = h1 / h2; quiet NaN when |k - 1| < 1e-8.
double calcRectanglesError(double I1, double I2, double h1, double h2);
double calcTrapezoidalRuleError(double I1, double I2, double h1, double h2);
// (I1 - I2) / (k^4 - 1) with k = h1 / h2; quiet NaN when |k - 1| < 1e-8.
double calcSimpsonError(double I1, double I2, double h1, double h2);
