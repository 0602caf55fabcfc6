#pragma once
// A real polynomial in one variable held as its coefficients, constant term
// first. Trailing zero coefficients are kept (sizes follow the operations,
// never trimmed); an empty polynomial is valid, evaluates to 0 and prints "0".

#include <string>
#include <vector>

class Polynomial {
public:
    Polynomial() = default;
    Polynomial(const std::vector<double>& c);
    // n coefficients, all 0.0.
    explicit Polynomial(int n);

    // Coefficient of x^i; requires 0 <= i < size().
    double& operator[](int i);
    const double& operator[](int i) const;
    int size() const;

    // Ascending powers with a running power (not Horner): the rounding of
    // every caller's results depends on this order.
    double calc(double x) const;
    // One coefficient fewer; a constant gives the empty polynomial. Must not
    // be called on an empty polynomial.
    Polynomial derivative() const;
    // Highest power first, 4 significant digits, terms below 1e-8 in
    // magnitude left out, e.g. 3x^3-2x^1+1.
    std::string toString() const;

private:
    std::vector<double> coefficients_;
};

// Size sa + sb - 1 (zero-filled when a is empty).
Polynomial operator*(const Polynomial& a, const Polynomial& b);
// The product with the one-coefficient polynomial {k}; keeps the size of p.
Polynomial operator*(const Polynomial& p, const double& k);
// Size max(sa, sb); missing coefficients count as 0.
Polynomial operator+(const Polynomial& a, const Polynomial& b);
