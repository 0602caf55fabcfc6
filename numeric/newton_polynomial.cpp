#include "numeric/newton_polynomial.h"

#include <cmath>
#include <iostream>
#include <sstream>

#include "numeric/interpolation_util.h"

NewtonPolynomial::NewtonPolynomial(const std::vector<Point>& points) : points_(points) {
    std::cerr << "Newton polynomial constructed." << std::endl;
    const int n = static_cast<int>(points_.size());
    deltas_.assign(points_.size(), 0.0);
    if (n > 0) deltas_[0] = calcDelta(0, 0);
    for (int k = 1; k < n; ++k) {
        deltas_[k] = calcDelta(0, k);
        std::cerr << "delta[" << k << "] = " << deltas_[k] << std::endl;
    }
    std::cerr << std::endl;
}

double NewtonPolynomial::calcDelta(int i, int j) const {
    // Bottom-up table instead of the two-way recursion
    // f[i..j] = (f[i..j-1] - f[i+1..j]) / (x_i - x_j): same operations in the
    // same order, without recomputing shared sub-differences. Ascending p
    // reads level[p + 1] before it is overwritten.
    std::vector<double> level;
    for (int p = i; p <= j; ++p) level.push_back(points_[p].y);
    for (int len = 1; len <= j - i; ++len)
        for (int p = 0; p + len <= j - i; ++p)
            level[p] = (level[p] - level[p + 1]) / (points_[i + p].x - points_[i + p + len].x);
    return level[0];
}

double NewtonPolynomial::calc(double x) const {
    const int n = static_cast<int>(points_.size());
    if (n < 1) return 0.0;
    double sum = 0.0 + deltas_[0];
    for (int k = 1; k < n; ++k) {
        double t = deltas_[k];
        for (int m = 0; m < k; ++m) t = t * (x - points_[m].x);
        sum = sum + t;
    }
    return sum;
}

std::pair<double, double> NewtonPolynomial::calc(double x, double M) const {
    double product = 1.0;
    for (const Point& p : points_) product = product * (x - p.x);
    const double bound = (M / static_cast<double>(factorial(static_cast<int>(points_.size())))) *
                         std::fabs(product);
    return {calc(x), bound};
}

Polynomial NewtonPolynomial::toSimplePolynomial() const {
    const int n = static_cast<int>(points_.size());
    Polynomial result;
    for (int k = 0; k < n; ++k) {
        Polynomial term(std::vector<double>{deltas_[k]});
        for (int m = 0; m < k; ++m) term = term * Polynomial(std::vector<double>{-points_[m].x, 1.0});
        result = result + term;
    }
    return result;
}

std::string NewtonPolynomial::toString() const {
    const int n = static_cast<int>(points_.size());
    std::ostringstream out;
    out.precision(4);
    for (int k = 0; k < n; ++k) {
        const double d = deltas_[k];
        if (k > 0)
            out << sign(d);
        else if (d < 0)
            out << '-';
        out << std::fabs(d);
        for (int m = 0; m < k; ++m)
            out << "(x" << sign(-points_[m].x) << std::fabs(points_[m].x) << ')';
    }
    return out.str();
}
