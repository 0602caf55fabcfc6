#pragma once
// The natural cubic interpolating spline through a table of points sorted by
// x with distinct abscissas: on interval i,
// S_i(x) = a_i + b_i (x - x_i) + c_i (x - x_i)^2 + d_i (x - x_i)^3, with
// S'' = 0 at both ends. Construction logs every intermediate quantity to the
// run log (standard error). It needs at least three points: fewer end in
// MatrixIndexOutOfBound from the tridiagonal solver.

#include <string>
#include <vector>

#include "numeric/point.h"

class Spline {
public:
    explicit Spline(const std::vector<Point>& points);

    // Value at x. The end cubics reach 1e-7 beyond the table; at an inner
    // knot the left interval is used. Throws SplineUndefinedException
    // carrying x outside that range (and for NaN).
    double calc(double x) const;
    // "S[1]=...; S[2]=..." with each cubic expanded into powers of x.
    std::string toString() const;

private:
    std::vector<Point> points_;
    std::vector<double> a_, b_, d_;  // one per interval
    std::vector<double> c_;          // one per point, 0 at both ends
};
