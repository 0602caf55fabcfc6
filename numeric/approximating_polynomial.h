#pragma once
// The least-squares polynomial of degree m over a table of points, found from
// the normal equations by LUP decomposition. Construction writes the normal
// equations and the factors to the run log (standard error) and lets
// MatrixIsSingular through when the table cannot determine m + 1
// coefficients (for example two points and m = 2).

#include <string>
#include <vector>

#include "numeric/point.h"

class ApproximatingPolynomial {
public:
    // Requires m >= 0.
    ApproximatingPolynomial(const std::vector<Point>& points, int m);

    double calc(double x) const;
    // Plain sum of squared residuals over the table: no root, no division by n.
    double deviation() const;
    // Every term from x^m down, zeros included, e.g. -1x^2+0x^1+2.
    std::string toString() const;

private:
    std::vector<Point> points_;
    std::vector<double> coefficients_;  // constant term first, m + 1 entries
};
