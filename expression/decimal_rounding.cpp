// Exact rounding of a double to 6 significant decimal digits.
//
// With a = |x| and E = floor(log10 a), the digits are the integer N nearest
// to t = a * 10^(5 - E), 100000 <= t < 1000000, ties to even. t is never
// formed with a rounding that could move it across a half: for E <= 5 the
// product a * 10^(5 - E) is split exactly into hi + lo (10^(5 - E) is an
// exact double up to 10^22, and fma gives the low part of the product), and
// for E >= 6 the half-way point (M + 1/2) * 10^(E - 5) is compared with a
// exactly. The result N * 10^(E - 5) is then one correctly rounded operation
// on two exact doubles (N < 2^53, 10^k exact for k <= 22).

#include "expression/decimal_rounding.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <langinfo.h>

namespace decimal_rounding {

namespace {

constexpr double kPow10[23] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                               1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                               1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMaxPow = 22;

// N, or N + 1 when `above` is positive, or the even one of the two on a tie.
double nearest(double n, double above)
{
    if (above > 0) {
        return n + 1;
    }
    if (above < 0) {
        return n;
    }
    return (static_cast<long long>(n) & 1) != 0 ? n + 1 : n;
}

// The 6 digits of a > 0 as an integer-valued double (100000 ... 1000000) for
// the decimal exponent e, or a negative value when t falls outside the
// range for this e (then e is too small by one) or e is out of the tables.
double digits(double a, int e)
{
    if (e <= 5) {
        const int p = 5 - e;
        if (p > kMaxPow) {
            return -2;
        }
        const double hi = a * kPow10[p];
        if (hi >= 1e6) {
            return -1;
        }
        const double lo = std::fma(a, kPow10[p], -hi);  // exact: a * 10^p = hi + lo
        const double n = std::floor(hi);
        // hi < 2^20, so hi - n and the difference with 0.5 are exact; the sign
        // of the sum with lo is the sign of the exact fraction minus 1/2.
        return nearest(n, (hi - n - 0.5) + lo);
    }
    const int q = e - 5;
    if (q > kMaxPow) {
        return -2;
    }
    const double d = kPow10[q];
    const double quotient = a / d;
    if (quotient >= 1e6) {
        return -1;
    }
    // floor(quotient) may be off by one only next to an integer, far from
    // the half-way point, where the comparison below still decides right.
    const double m = std::floor(quotient);
    const double half = m + 0.5;
    const double ph = half * d;
    const double pl = std::fma(half, d, -ph);  // exact: (m + 1/2) * 10^q = ph + pl
    // a and ph are within a factor 1 +- 1e-5 of each other: a - ph is exact.
    return nearest(m, (a - ph) - pl);
}

}  // namespace

bool standard_environment()
{
    const char* point = nl_langinfo(RADIXCHAR);
    return point[0] == '.' && point[1] == '\0' && std::fegetround() == FE_TONEAREST;
}

bool round_like_printf(double x, double& out)
{
    if (x == 0) {
        out = x;  // "0" or "-0"
        return true;
    }
    const double a = std::fabs(x);
    if (!(a >= 1e-17 && a < 1e27)) {
        return false;
    }
    int e2 = 0;
    std::frexp(a, &e2);
    // 2^(e2 - 1) <= a < 2^e2, so floor(log10 a) is e or e + 1; and it is at
    // least -17 (the double 1e-17 is above 10^-17) and at most 26, so both
    // candidates stay within the tables.
    int e = std::max(-17, static_cast<int>(std::floor((e2 - 1) * 0.30102999566398120)));
    double n = digits(a, e);
    if (n == -1) {
        ++e;
        n = digits(a, e);
    }
    if (n < 0) {
        return false;
    }
    const int k = e - 5;
    const double value = k >= 0 ? n * kPow10[k] : n / kPow10[-k];
    out = x < 0 ? -value : value;
    return true;
}

}  // namespace decimal_rounding
