#pragma once
// The interpolation polynomial through a table of points in Newton form,
// with divided differences as coefficients. The table is taken as it is: the
// caller supplies distinct abscissas (equal ones give infinities or NaN, not
// an exception). Construction logs the differences to the run log (standard
// error).

#include <string>
#include <utility>
#include <vector>

#include "numeric/point.h"
#include "numeric/polynomial.h"

class NewtonPolynomial {
public:
    explicit NewtonPolynomial(const std::vector<Point>& points);

    // Divided difference f[x_i, ..., x_j]; requires 0 <= i <= j < n.
    double calcDelta(int i, int j) const;
    double calc(double x) const;
    // {value at x, error bound (M / n!) * |(x - x0)...(x - x(n-1))|} for
    // M >= max |f^(n)|; the bound is M for an empty table.
    std::pair<double, double> calc(double x, double M) const;
    // Expansion into powers of x: n coefficients.
    Polynomial toSimplePolynomial() const;
    // Every term, e.g. 1+2(x+0)-1.5(x+0)(x-1); empty for no points.
    std::string toString() const;

private:
    std::vector<Point> points_;
    std::vector<double> deltas_;  // deltas_[k] = f[x_0, ..., x_k]
};
