#include "numeric/lagrange_polynomial.h"

#include <cmath>
#include <iostream>
#include <sstream>

#include "numeric/interpolation_util.h"

LagrangePolynomial::LagrangePolynomial(const std::vector<Point>& points) : points_(points) {
    std::cerr << "Lagrange polynomial constructed." << std::endl;
    std::cerr << "(There is no significant information about this process.)" << std::endl;
    std::cerr << std::endl;
}

double LagrangePolynomial::weight(int i) const {
    const int n = static_cast<int>(points_.size());
    double w = points_[i].y;
    for (int j = 0; j < n; ++j)
        if (j != i) w = w / (points_[i].x - points_[j].x);
    return w;
}

double LagrangePolynomial::calc(double x) const {
    const int n = static_cast<int>(points_.size());
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        double t = weight(i);
        for (int j = 0; j < n; ++j)
            if (j != i) t = t * (x - points_[j].x);
        sum = sum + t;
    }
    return sum;
}

std::pair<double, double> LagrangePolynomial::calc(double x, double M) const {
    double product = 1.0;
    for (const Point& p : points_) product = product * (x - p.x);
    const double bound = (M / static_cast<double>(factorial(static_cast<int>(points_.size())))) *
                         std::fabs(product);
    return {calc(x), bound};
}

Polynomial LagrangePolynomial::toSimplePolynomial() const {
    const int n = static_cast<int>(points_.size());
    Polynomial result;
    for (int i = 0; i < n; ++i) {
        Polynomial term(std::vector<double>{weight(i)});
        for (int j = 0; j < n; ++j)
            if (j != i) term = term * Polynomial(std::vector<double>{-points_[j].x, 1.0});
        result = result + term;
    }
    return result;
}

std::string LagrangePolynomial::toString() const {
    const int n = static_cast<int>(points_.size());
    std::ostringstream out;
    out.precision(4);
    for (int i = 0; i < n; ++i) {
        const double w = weight(i);
        if (i > 0)
            out << sign(w);
        else if (w < 0)
            out << '-';
        out << std::fabs(w);
        for (int j = 0; j < n; ++j)
            if (j != i) out << "(x" << sign(-points_[j].x) << std::fabs(points_[j].x) << ')';
    }
    return out.str();
}
