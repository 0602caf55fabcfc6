#include "numeric/approximating_polynomial.h"

#include <cmath>
#include <iostream>
#include <sstream>

#include "linalg/lup.h"
#include "linalg/matrix.h"

namespace {

// x^e by repeated squaring; the sums of the normal equations must not go
// through a floating-point exponent. x^0 is 1 for every x, 0 included.
double ipow(double x, int e) {
    double result = 1.0;
    double base = x;
    while (e > 0) {
        if (e & 1) result = result * base;
        e >>= 1;
        if (e > 0) base = base * base;
    }
    return result;
}

}  // namespace

ApproximatingPolynomial::ApproximatingPolynomial(const std::vector<Point>& points, int m)
    : points_(points) {
    std::cerr << "Approximating polynomial of degree " << m << " construction..." << std::endl;
    Matrix A(m + 1);
    std::vector<double> B(static_cast<size_t>(m + 1), 0.0);
    for (int i = 0; i <= m; ++i) {
        for (int j = 0; j <= m; ++j)
            for (const Point& p : points_) A[i][j] = A[i][j] + ipow(p.x, i + j);
        for (const Point& p : points_) B[i] = B[i] + ipow(p.x, i) * p.y;
    }

    std::cerr << "Matrix:" << std::endl;
    for (int i = 0; i <= m; ++i) {
        for (double v : A[i]) std::cerr << v << ' ';
        std::cerr << std::endl;
    }
    std::cerr << "Right part:" << std::endl;
    for (double v : B) std::cerr << v << ' ';
    std::cerr << std::endl << std::endl;

    coefficients_ = solveWithLUP(A, B);
}

double ApproximatingPolynomial::calc(double x) const {
    double sum = 0.0;
    double power = 1.0;
    for (double c : coefficients_) {
        sum = sum + c * power;
        power = power * x;
    }
    return sum;
}

double ApproximatingPolynomial::deviation() const {
    double total = 0.0;
    for (const Point& p : points_) {
        const double r = calc(p.x) - p.y;
        total = total + r * r;
    }
    return total;
}

std::string ApproximatingPolynomial::toString() const {
    std::ostringstream out;
    out.precision(4);
    const int m = static_cast<int>(coefficients_.size()) - 1;
    for (int i = m; i >= 0; --i) {
        const double c = coefficients_[static_cast<size_t>(i)];
        if (c < 0)
            out << '-';
        else if (i != m)
            out << '+';
        out << std::fabs(c);
        if (i != 0) out << "x^" << i;
    }
    return out.str();
}
