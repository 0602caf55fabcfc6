#include "numeric/spline.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "errors/errors.h"
#include "linalg/matrix.h"
#include "linalg/tridiagonal.h"
#include "numeric/polynomial.h"

Spline::Spline(const std::vector<Point>& points) : points_(points) {
    const int n = static_cast<int>(points_.size());
    // Unknowns c_1 ... c_N of the inner knots. Tables of fewer than two
    // points get the empty system, like two points, and fail in the solver.
    const int N = std::max(n - 2, 0);
    Matrix M(N);
    std::vector<double> h(points_.size(), 0.0);
    std::vector<double> r(static_cast<size_t>(N), 0.0);
    auto x = [this](int i) { return points_[static_cast<size_t>(i)].x; };
    auto y = [this](int i) { return points_[static_cast<size_t>(i)].y; };

    for (int i = 1; i < n; ++i) {
        h[i] = x(i) - x(i - 1);
        std::cerr << "h[" << i << "] = " << h[i] << std::endl;
    }
    std::cerr << std::endl;

    for (int k = 0; k < N; ++k) {
        M[k][k] = 2.0 * (h[k + 1] + h[k + 2]);
        if (k < N - 1) M[k][k + 1] = h[k + 2];
        r[k] = 3.0 * ((y(k + 2) - y(k + 1)) / h[k + 2] - (y(k + 1) - y(k)) / h[k + 1]);
        if (k < N - 1) M[k + 1][k] = h[k + 2];
    }

    std::cerr << "Matrix:" << std::endl;
    for (int k = 0; k < N; ++k) {
        for (double v : M[k]) std::cerr << v << ' ';
        std::cerr << std::endl;
    }
    std::cerr << "Right part:" << std::endl;
    for (double v : r) std::cerr << v << ' ';
    std::cerr << std::endl << std::endl;

    c_ = solveTridiagonalMatrixAlgo(M, r);
    c_.insert(c_.begin(), 0.0);
    c_.push_back(0.0);

    const int intervals = std::max(n - 1, 0);
    a_.assign(static_cast<size_t>(intervals), 0.0);
    for (int i = 0; i < intervals; ++i) {
        a_[i] = y(i);
        std::cerr << "a[" << i + 1 << "] = " << a_[i] << std::endl;
    }
    std::cerr << std::endl;

    b_.assign(static_cast<size_t>(intervals), 0.0);
    for (int i = 0; i < intervals; ++i) {
        // 0.3333333333333333 is the double nearest 1/3; multiplying by it
        // rounds differently from dividing by 3.
        b_[i] = (y(i + 1) - y(i)) / h[i + 1] -
                (h[i + 1] * 0.3333333333333333) * ((c_[i] + c_[i]) + c_[i + 1]);
        std::cerr << "b[" << i + 1 << "] = " << b_[i] << std::endl;
    }
    std::cerr << std::endl;

    for (int i = 0; i < intervals; ++i) std::cerr << "c[" << i + 1 << "] = " << c_[i] << std::endl;
    std::cerr << std::endl;

    d_.assign(static_cast<size_t>(intervals), 0.0);
    for (int i = 0; i < intervals; ++i) {
        d_[i] = (c_[i + 1] - c_[i]) / (3.0 * h[i + 1]);
        std::cerr << "d[" << i + 1 << "] = " << d_[i] << std::endl;
    }
    std::cerr << std::endl;
}

double Spline::calc(double x) const {
    for (size_t i = 0; i < a_.size(); ++i) {
        if (x >= points_[i].x - 1e-7 && points_[i + 1].x + 1e-7 >= x) {
            const double t = x - points_[i].x;
            return ((t * b_[i] + a_[i]) + (t * t) * c_[i]) + (t * (t * t)) * d_[i];
        }
    }
    throw SplineUndefinedException(x);
}

std::string Spline::toString() const {
    std::ostringstream out;
    const int intervals = static_cast<int>(a_.size());
    for (int i = 0; i < intervals; ++i) {
        out << "S[" << i + 1 << "]=";
        const Polynomial a(std::vector<double>{a_[i]});
        const Polynomial b(std::vector<double>{b_[i]});
        const Polynomial c(std::vector<double>{c_[i]});
        const Polynomial d(std::vector<double>{d_[i]});
        const Polynomial t(std::vector<double>{-points_[i].x, 1.0});
        const Polynomial s = ((a + b * t) + (c * t) * t) + ((d * t) * t) * t;
        out << s.toString();
        if (i != intervals - 1) out << "; ";
    }
    return out.str();
}
