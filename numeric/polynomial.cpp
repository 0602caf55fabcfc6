#include "numeric/polynomial.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <sstream>

Polynomial::Polynomial(const std::vector<double>& c) : coefficients_(c) {}

Polynomial::Polynomial(int n) : coefficients_(static_cast<size_t>(std::max(n, 0)), 0.0) {}

double& Polynomial::operator[](int i) {
    assert(i >= 0 && i < size());
    return coefficients_[static_cast<size_t>(i)];
}

const double& Polynomial::operator[](int i) const {
    assert(i >= 0 && i < size());
    return coefficients_[static_cast<size_t>(i)];
}

int Polynomial::size() const { return static_cast<int>(coefficients_.size()); }

double Polynomial::calc(double x) const {
    double sum = 0.0;
    double power = 1.0;
    for (double c : coefficients_) {
        sum = sum + c * power;
        power = power * x;
    }
    return sum;
}

Polynomial Polynomial::derivative() const {
    assert(size() >= 1);
    Polynomial r(size() - 1);
    for (int i = 0; i + 1 < size(); ++i) r[i] = (i + 1) * (*this)[i + 1];
    return r;
}

std::string Polynomial::toString() const {
    std::ostringstream out;
    out.precision(4);
    bool first = true;
    for (int i = size() - 1; i >= 0; --i) {
        const double c = (*this)[i];
        if (std::fabs(c) < 1e-8) continue;
        if (c < 0)
            out << '-';
        else if (!first)
            out << '+';
        out << std::fabs(c);
        if (i == 0) break;
        out << "x^" << i;
        first = false;
    }
    const std::string text = out.str();
    return text.empty() ? "0" : text;
}

Polynomial operator*(const Polynomial& a, const Polynomial& b) {
    const int sa = a.size();
    const int sb = b.size();
    Polynomial r(sa + sb - 1);
    for (int i = 0; i < sa; ++i)
        for (int j = 0; j < sb; ++j) r[i + j] = a[i] * b[j] + r[i + j];
    return r;
}

Polynomial operator*(const Polynomial& p, const double& k) {
    return p * Polynomial(std::vector<double>{k});
}

Polynomial operator+(const Polynomial& a, const Polynomial& b) {
    const int sa = a.size();
    const int sb = b.size();
    Polynomial r(std::max(sa, sb));
    for (int i = 0; i < r.size(); ++i) r[i] = (i < sa ? a[i] : 0.0) + (i < sb ? b[i] : 0.0);
    return r;
}
