#pragma once
// The floating-point and locale settings on which the results of Expression
// depend, and the check that its fast evaluation makes before every run.
//
// The text route (calculate, set_variables, Function's "x = %lg") depends on
// - the decimal point of the thread's numeric locale, which printf, strtod
//   and sscanf take from nl_langinfo's item RADIXCHAR (a "," makes sscanf
//   stop at the "." of "0.5");
// - the rounding mode of the C library's conversions: glibc's printf, strtod
//   and sscanf round as fegetround says, and on x86-64 fegetround reads the
//   x87 control word;
// - on x86-64, the SSE control register MXCSR for every operation on doubles
//   and the mathematics library: its rounding mode, flush-to-zero,
//   denormals-are-zero and exception masks.
// fesetround and feenableexcept set both registers; _mm_setcsr, fesetenv
// and a library built with -ffast-math may set MXCSR alone.
//
// The compiled program folds only steps whose result no MXCSR setting but
// the rounding mode can change (see CompiledProgram::fold), and runs every
// other step as the text route would, so that flush-to-zero,
// denormals-are-zero and the masks apply to both alike. What is left to
// check is standard_rounding_and_point(): exactly, at every run and at the
// cost of a few instructions, the decimal point, the whole x87 control word
// and the SSE rounding mode, the last by two additions that round
// differently in each mode (reading MXCSR itself takes some 13 cycles on
// recent AMD processors, more than a short evaluation). One difference is
// left: with the inexact exception unmasked in MXCSR alone, those additions
// trap where the text route might not.

#include <langinfo.h>

#include <cstdint>
#include <cstring>

#if !defined(__x86_64__)
#include <cfenv>
#endif

namespace number_environment {

inline bool decimal_point_is_dot()
{
    const char* point = nl_langinfo(RADIXCHAR);
    return point[0] == '.' && point[1] == '\0';
}

#if defined(__x86_64__)

// The x87 control word as at process start: round to nearest, extended
// precision, every exception masked.
inline bool x87_default()
{
    unsigned short word = 0;
    __asm__ __volatile__("fnstcw %0" : "=m"(word));
    return word == 0x037F;
}

// Round to nearest in SSE arithmetic: 1 + 0.75 ulp and -1 - 0.75 ulp both
// round away from 1 only to nearest (upward moves the second towards zero,
// downward and towards zero the first). The operands are hidden from the
// compiler so that the additions happen here, in the current mode.
inline bool sse_rounds_to_nearest()
{
    double one = 1.0;
    double three_quarters_ulp = 0x1.8p-53;
    __asm__("" : "+x"(one), "+x"(three_quarters_ulp));
    const double up = one + three_quarters_ulp;
    const double down = -one - three_quarters_ulp;
    std::uint64_t up_bits = 0;
    std::uint64_t down_bits = 0;
    std::memcpy(&up_bits, &up, sizeof up_bits);
    std::memcpy(&down_bits, &down, sizeof down_bits);
    // The bits of 1 + 2^-52 and of its negative.
    return ((up_bits ^ 0x3FF0000000000001u) | (down_bits ^ 0xBFF0000000000001u)) == 0;
}

#else

inline bool x87_default()
{
    return true;
}

inline bool sse_rounds_to_nearest()
{
    return std::fegetround() == FE_TONEAREST;
}

#endif

// The x87 word first: feenableexcept unmasks exceptions there too, and then
// the additions are not made.
inline bool standard_rounding_and_point()
{
    return x87_default() && sse_rounds_to_nearest() && decimal_point_is_dot();
}

}  // namespace number_environment
