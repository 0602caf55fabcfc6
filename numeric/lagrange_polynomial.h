#pragma once
// The interpolation polynomial through a table of points in Lagrange form.
// The table is taken as it is: the caller supplies distinct abscissas (equal
// ones give infinities or NaN, not an exception). Construction writes two
// lines and an empty line to the run log (standard error).

#include <string>
#include <utility>
#include <vector>

#include "numeric/point.h"
#include "numeric/polynomial.h"

class LagrangePolynomial {
public:
    explicit LagrangePolynomial(const std::vector<Point>& points);

    double calc(double x) const;
    // {value at x, error bound (M / n!) * |(x - x0)...(x - x(n-1))|} for
    // M >= max |f^(n)|; the bound is M for an empty table.
    std::pair<double, double> calc(double x, double M) const;
    // Expansion into powers of x: n coefficients.
    Polynomial toSimplePolynomial() const;
    // Every term, e.g. 0.5(x-1)(x-2)-3(x+0)(x-2)+1(x+0)(x-1); empty for no points.
    std::string toString() const;

private:
    // y_i divided by (x_i - x_j) term by term, j ascending, j != i.
    double weight(int i) const;

    std::vector<Point> points_;
};
