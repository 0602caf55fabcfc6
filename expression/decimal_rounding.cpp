// Exact rounding of a double to 6 significant decimal digits, in integers.
//
// With a = |x| = m * 2^s (m the 53-bit significand) and E = floor(log10 a),
// the digits are the integer N nearest to t = a * 10^(5 - E), 100000 <= t <
// 1000000, ties to even. For E <= 5, t = m * 10^(5 - E) * 2^s is formed
// exactly in 128 bits (m < 2^53, 10^22 < 2^74) and split by the shift -s
// (33 to 109) into its integer part and a remainder that is compared with the
// half. For E >= 6, a division in double gives floor(t) or, just below an
// integer, that integer (never further off), and the exact comparison of
// 2 * m * 2^s with (2 * floor + 1) * 10^(E - 5) in 128 bits (at most 2^124)
// decides the rounding. E is floor(e2 * log10 2) for 2^e2 <= a < 2^(e2 + 1),
// or one more, which shows as t >= 10^6. N * 10^(E - 5) is then one
// correctly rounded operation on two exact doubles (N <= 10^6, 10^k exact for
// k <= 22), which is what strtod returns for the text "N e(E-5)".
// A t that rounds up to 10^6 gives 10^(E + 1), as the text "1e+(E+1)" does.

#include "expression/decimal_rounding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace decimal_rounding {

namespace {

using detail::uint128;

constexpr const double* kPow10 = detail::kPow10;

constexpr uint128 exactPow(uint128 base, int n)
{
    uint128 p = 1;
    for (int i = 0; i < n; ++i) {
        p *= base;
    }
    return p;
}

using detail::floorLog10Pow2;

// The binades 2^e2 <= a < 2^(e2 + 1) that 1e-17 <= a < 1e27 spans.
constexpr int kLowestBinade = detail::kLowestBinade;
constexpr int kBinades = 89 - kLowestBinade + 1;

// For each binade, the significand from which a >= 10^(floorLog10Pow2(e2) + 1),
// i.e. ceil(10^(e + 1) / 2^(e2 - 52)); 2^53 or more where no power of ten
// lies in the binade. Exact: every quantity is an integer below 2^110.
struct Thresholds {
    std::uint64_t significand[kBinades];
    constexpr Thresholds() : significand()
    {
        for (int i = 0; i < kBinades; ++i) {
            const int e2 = kLowestBinade + i, next = floorLog10Pow2(e2) + 1, s = e2 - 52;
            const uint128 num = exactPow(10, next > 0 ? next : 0) * exactPow(2, s < 0 ? -s : 0);
            const uint128 den = exactPow(10, next < 0 ? -next : 0) * exactPow(2, s > 0 ? s : 0);
            const uint128 q = (num + den - 1) / den;
            significand[i] = q >> 64 != 0 ? ~std::uint64_t{0} : static_cast<std::uint64_t>(q);
        }
    }
};
constexpr Thresholds kThresholds;

// 5^p for p <= 22, all below 2^52.
struct Fives {
    std::uint64_t value[23];
    constexpr Fives() : value()
    {
        for (int p = 0; p < 23; ++p) {
            value[p] = static_cast<std::uint64_t>(exactPow(5, p));
        }
    }
};
constexpr Fives kFives;

// The 6 digits exactly: the integer nearest to t = a * 10^(5 - e) for a =
// m * 2^(e2 - 52) with floor(log10 a) = e, ties to even; 10^6 when t rounds
// up to it.
std::int64_t exactDigits(double a, std::uint64_t m, int e2, int e)
{
    if (e <= 5) {
        // t = m * 10^p * 2^(e2 - 52) = (m * 5^p) / 2^shift, shift 33 ... 87,
        // m * 5^p < 2^105.
        const int p = 5 - e;
        const int shift = 52 - e2 - p;
        const uint128 t = static_cast<uint128>(m) * kFives.value[p];
        const uint128 half = static_cast<uint128>(1) << (shift - 1);
        // Adding half - 1, plus 1 when the integer part is odd, carries into
        // the integer part exactly when the fraction rounds it up.
        return static_cast<std::int64_t>((t + (half - 1) + ((t >> shift) & 1)) >> shift);
    }
    // t = a / 10^q, q = e - 5 (1 ... 21): the quotient in double is floor(t)
    // or, just below an integer, that integer, far from the half way where
    // the exact comparison of 2a with (2 * floor + 1) * 10^q decides.
    const int q = e - 5;
    const auto below = static_cast<std::uint64_t>(a / kPow10[q]);
    const uint128 twiceHalf = static_cast<uint128>(2 * below + 1) * exactPow(10, q);
    const int s = e2 - 52;  // -33 ... 37: both sides stay below 2^125
    const uint128 twiceA = static_cast<uint128>(m) << (s >= 0 ? s + 1 : 1);
    const uint128 scaledHalf = s >= 0 ? twiceHalf : twiceHalf << -s;
    const bool up = twiceA > scaledHalf || (twiceA == scaledHalf && (below & 1) != 0);
    return static_cast<std::int64_t>(up ? below + 1 : below);
}

}  // namespace

double detail::round_exactly(double x)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    if ((bits << 1) == 0) {
        return x;  // "0" or "-0"
    }
    const int e2 = static_cast<int>((bits >> 52) & 0x7FF) - 1023;
    const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    // |x| = m * 2^(e2 - 52), normal since |x| >= 1e-17; e = floor(log10 |x|).
    const int e = floorLog10Pow2(e2) + (m >= kThresholds.significand[e2 - kLowestBinade] ? 1 : 0);
    const std::int64_t n = exactDigits(std::fabs(x), m, e2, e);
    const int k = e - 5;  // -22 ... 21
    const double value = k >= 0 ? static_cast<double>(n) * kPow10[k] : static_cast<double>(n) / kPow10[-k];
    return bits >> 63 != 0 ? -value : value;
}

}  // namespace decimal_rounding
