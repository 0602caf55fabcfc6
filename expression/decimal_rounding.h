#pragma once
// The value that a double takes after a round trip through the text "%lg"
// (6 significant digits) and back, computed without the text: the decimal
// rounding is exact (round half to even on the exact binary value, as the C
// library's printf does) and the way back is one correctly rounded
// multiplication or division by an exact power of ten, as strtod gives.
//
// Both functions serve the fast evaluation paths of Expression and Function;
// where they answer false, callers take the text route.

namespace decimal_rounding {

// True when the C library formats and reads numbers the way the fast paths
// assume: "." as the decimal point of the current numeric locale and
// round-to-nearest as the floating-point rounding mode.
bool standard_environment();

// Sets `out` to the value of the "%lg" text of x read back, and returns true,
// for x = +-0 and for 1e-17 <= |x| < 1e27; returns false (out untouched) for
// every other x, NaN and infinities included. Assumes standard_environment().
bool round_like_printf(double x, double& out);

}  // namespace decimal_rounding
