#pragma once
// The value that a double takes after a round trip through the text "%lg"
// (6 significant digits) and back, computed without the text: the decimal
// rounding is exact (round half to even on the exact binary value, as the C
// library's printf does) and the way back is one correctly rounded
// multiplication or division by an exact power of ten, as strtod gives.
//
// Serves the fast evaluation of Function, which runs only where
// number_environment::standard_rounding_and_point() holds: there printf and
// strtod round to nearest with "." as decimal point, and so does the
// arithmetic used here (on normal numbers only, so that flush-to-zero and
// denormals-are-zero cannot change it).
//
// Inline for the usual arguments (1e-17 <= |x| < 2^17 away from a tie), so
// that its latency overlaps whatever the caller does next.

#include <cmath>
#include <cstdint>
#include <cstring>

namespace decimal_rounding {

// True for x = +-0 and for 1e-17 <= |x| < 1e27, the arguments that
// round_like_printf takes. On the bits, which order non-negative doubles as
// their values: a comparison in double would take a subnormal x for 0 where
// denormals-are-zero is set.
inline bool in_rounding_range(double x)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    const std::uint64_t magnitude = bits & 0x7FFFFFFFFFFFFFFFu;
    return magnitude == 0 || (magnitude >= 0x3C670EF54646D497u && magnitude < 0x4589D971E4FE8402u);
}

namespace detail {

inline constexpr double kPow10[23] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// floor(e2 * log10 2), exact for |e2| < 1650 (78913 / 2^18 is log10 2 to
// that precision); GCC shifts a negative number arithmetically.
constexpr int floorLog10Pow2(int e2)
{
    return (e2 * 78913) >> 18;
}

// The binades 2^e2 <= |x| < 2^(e2 + 1) of the inline route: e2 = -57 (the
// binade of 1e-17) to 16.
constexpr int kLowestBinade = -57;
constexpr int kInlineBinades = 16 - kLowestBinade + 1;

// For each of those binades, with e0 = max(floorLog10Pow2(e2), -17), the
// scales 10^(5 - e0) and 10^(4 - e0) that bring |x| into [10^5, 10^6) when
// floor(log10 |x|) is e0 or e0 + 1, the only two candidates (|x| >= 1e-17
// lies above 10^-17, so e0 = -18 is never right), and 5 - e0.
struct Scales {
    double lower[kInlineBinades];
    double upper[kInlineBinades];
    int lower_exponent[kInlineBinades];
    constexpr Scales() : lower(), upper(), lower_exponent()
    {
        for (int i = 0; i < kInlineBinades; ++i) {
            const int e = floorLog10Pow2(kLowestBinade + i);
            const int e0 = e < -17 ? -17 : e;
            lower[i] = kPow10[5 - e0];
            upper[i] = kPow10[4 - e0];
            lower_exponent[i] = 5 - e0;
        }
    }
};
inline constexpr Scales kScales{};

__extension__ typedef unsigned __int128 uint128;

// 10^-j = head + tail + less than 2^-84 head, for j <= 22: head keeps the
// first 33 significant bits, so that n * head is exact for n <= 2^20; tail,
// below 2^-32 head, is rounded. Computed in integers (2^(32 + s) / 10^j with
// 2^(s - 1) < 10^j <= 2^s) and scaled by exact powers of two.
struct Reciprocals {
    double head[23];
    double tail[23];
    constexpr Reciprocals() : head(), tail()
    {
        uint128 power = 1;
        for (int j = 0; j < 23; ++j, power *= 10) {
            int s = 0;
            while ((static_cast<uint128>(1) << s) < power) {
                ++s;
            }
            const uint128 numerator = static_cast<uint128>(1) << (32 + s);
            const uint128 quotient = numerator / power;
            double scale = 1.0;  // 2^-(32 + s)
            for (int k = 0; k < 32 + s; ++k) {
                scale *= 0.5;
            }
            head[j] = static_cast<double>(quotient) * scale;
            tail[j] = static_cast<double>(numerator - quotient * power) / static_cast<double>(power) * scale;
        }
    }
};
inline constexpr Reciprocals kReciprocals{};

// The whole rounding in 128-bit integers, for every argument in range.
double round_exactly(double x);

}  // namespace detail

namespace detail {

// The value of the text of x (with the bits `bits`) from t = |x| * 10^j in
// [10^5, 10^6]. Rounded once, t is within 2^-34 of its exact value (whose
// unit in the last place is at most 2^-33). Adding and subtracting 2^52
// rounds t to an integer n, ties to even; unless t lies that close to a half
// way, the exact t rounds to the same n. Then n / 10^j, without a division:
// n * head is exact and n * tail errs by less than 2^-85 of it, so h + l is
// within 2^-83 |sum| (under 2^-29 of half an ulp of sum) of n / 10^j, and e
// is the exact error of their sum. Unless h + l lies that close to a half
// way (or sum is a power of two, with a narrower half ulp below it),
// n / 10^j rounds to sum.
inline double text_value(double x, std::uint64_t bits, double t, int j)
{
    const double n = (t + 0x1p52) - 0x1p52;
    const double h = n * kReciprocals.head[j];
    const double l = n * kReciprocals.tail[j];
    const double sum = h + l;
    const double e = l - (sum - h);
    std::uint64_t sum_bits = 0;
    std::memcpy(&sum_bits, &sum, sizeof sum_bits);
    const std::uint64_t half_ulp_bits = (sum_bits & 0x7FF0000000000000u) - (std::uint64_t{53} << 52);
    double half_ulp = 0;
    std::memcpy(&half_ulp, &half_ulp_bits, sizeof half_ulp);
    if (!(std::fabs(t - n) < 0.5 - 0x1p-30) || !(std::fabs(e) < half_ulp - half_ulp * 0x1p-20) ||
        (sum_bits & 0x000FFFFFFFFFFFFFu) == 0) {
        return round_exactly(x);
    }
    return bits >> 63 != 0 ? -sum : sum;
}

}  // namespace detail

// The value of the "%lg" text of x read back. Requires in_rounding_range(x)
// and double arithmetic rounding to nearest.
inline double round_like_printf(double x)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    // Wraps around for 0 and binades below, which go the exact way too.
    // Tests on the bits alone, like in_rounding_range.
    const unsigned binade = static_cast<unsigned>((bits >> 52) & 0x7FF) - (1023u + detail::kLowestBinade);
    if (binade >= static_cast<unsigned>(detail::kInlineBinades)) {
        return detail::round_exactly(x);
    }
    // t = |x| * 10^(5 - e) in [10^5, 10^6) for e = floor(log10 |x|): the
    // lower candidate unless that reaches 10^6; a lower candidate rounded up
    // to 10^6 from below gives 10^6 * 10^(e0 - 5), as the upper one does. A
    // branch, not a selection, so that nothing waits for the comparison.
    const double a = std::fabs(x);
    const double t_lower = a * detail::kScales.lower[binade];
    const int j = detail::kScales.lower_exponent[binade];
    if (__builtin_expect(t_lower >= 1e6, 0)) {
        return detail::text_value(x, bits, a * detail::kScales.upper[binade], j - 1);
    }
    return detail::text_value(x, bits, t_lower, j);
}

}  // namespace decimal_rounding
