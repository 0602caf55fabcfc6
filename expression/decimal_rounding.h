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
// lies above 10^-17, so e0 = -18 is never right).
struct Scales {
    double lower[kInlineBinades];
    double upper[kInlineBinades];
    constexpr Scales() : lower(), upper()
    {
        for (int i = 0; i < kInlineBinades; ++i) {
            const int e = floorLog10Pow2(kLowestBinade + i);
            const int e0 = e < -17 ? -17 : e;
            lower[i] = kPow10[5 - e0];
            upper[i] = kPow10[4 - e0];
        }
    }
};
inline constexpr Scales kScales{};

// The whole rounding in 128-bit integers, for every argument in range.
double round_exactly(double x);

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
    // lower candidate unless that reaches 10^6. Each is rounded once, so
    // within 2^-34 of its exact value (whose unit in the last place is at
    // most 2^-33); a lower candidate rounded up to 10^6 from below gives
    // 10^6 * 10^(e0 - 5), as the upper one does. Adding and subtracting 2^52
    // rounds t to an integer, ties to even; unless t lies that close to a
    // half way, the exact t rounds to the same integer.
    const double a = std::fabs(x);
    const double lower = detail::kScales.lower[binade];
    const double upper = detail::kScales.upper[binade];
    const double t_lower = a * lower;
    const bool in_upper = t_lower >= 1e6;
    const double t = in_upper ? a * upper : t_lower;
    const double n = (t + 0x1p52) - 0x1p52;
    if (std::fabs(t - n) > 0.5 - 0x1p-30) {
        return detail::round_exactly(x);
    }
    const double value = n / (in_upper ? upper : lower);
    return bits >> 63 != 0 ? -value : value;
}

}  // namespace decimal_rounding
