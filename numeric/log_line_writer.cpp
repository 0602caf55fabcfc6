#include "numeric/log_line_writer.h"

#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <locale>

namespace {

#ifdef __SIZEOF_INT128__
__extension__ typedef unsigned __int128 Wide;

// 5^0 ... 5^27, each below 2^63.
constexpr int kPowers = 28;
struct PowersOfFive {
    std::uint64_t value[kPowers];
    constexpr PowersOfFive() : value() {
        value[0] = 1;
        for (int k = 1; k < kPowers; ++k) value[k] = value[k - 1] * 5;
    }
};
constexpr PowersOfFive kFive;
// 10^-22 ... 10^6 as the nearest doubles.
constexpr double kTens[] = {1e-22, 1e-21, 1e-20, 1e-19, 1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12,
                            1e-11, 1e-10, 1e-9,  1e-8,  1e-7,  1e-6,  1e-5,  1e-4,  1e-3,  1e-2,
                            1e-1,  1e0,   1e1,   1e2,   1e3,   1e4,   1e5,   1e6};

// |value| rounded to 6 significant digits as digits * 10^(exponent - 5),
// digits in [100000, 999999], the way printf rounds when rounding to nearest:
// the exact binary value, ties to even. magnitude = m * 2^q exactly, so
// magnitude * 10^k = (m * 5^k) / 2^-(q + k) is split into its whole part and
// the rest without rounding. Returns false outside 1e-22 <= |value| < 1e6,
// where 5^k would not fit.
bool roundToSixDigits(double magnitude, int& digits, int& exponent) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &magnitude, sizeof bits);
    const int biased = static_cast<int>(bits >> 52);
    const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int q = biased - 1075;
    if (magnitude >= 1e6 || magnitude < 1e-22) return false;
    // magnitude lies in [2^b, 2^(b+1)), b = biased - 1023: floor(b * log10(2))
    // (78913 / 2^18 is log10(2) to 6 digits) is floor(log10(magnitude)) or one
    // less; the nearest double of a power of ten decides, but for values
    // within an ulp of it the whole part below is the judge.
    exponent = ((biased - 1023) * 78913) >> 18;
    if (magnitude >= kTens[exponent + 23]) ++exponent;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int k = 5 - exponent;
        if (k < 0 || k >= kPowers) return false;
        const Wide scaled = Wide{m} * kFive.value[k];
        // magnitude * 10^k = scaled / 2^shift. shift is at most 126 (q >= -126
        // from 1e-22 on) and positive, as scaled >= 2^52 while the quotient
        // stays below 10^7.
        const int shift = -(q + k);
        const Wide whole = scaled >> shift;
        if (whole >= 1000000 || whole < 100000) {
            exponent += whole >= 1000000 ? 1 : -1;
            continue;
        }
        const Wide rest = scaled - (whole << shift);
        const Wide half = Wide{1} << (shift - 1);
        digits = static_cast<int>(whole);
        digits += (rest > half) | ((rest == half) & (digits % 2 == 1));
        if (digits == 1000000) {
            digits = 100000;
            ++exponent;
        }
        return true;
    }
    return false;
}
#else
bool roundToSixDigits(double, int&, int&) {
    return false;
}
#endif

constexpr char kPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546474849"
    "5051525354555657585960616263646566676869707172737475767778798081828384858687888990919293949596979899";

// printf's "%g" from the rounded digits: exponent notation below 1e-4 and
// from 1e6 on, trailing zeros and a bare point dropped. Pieces are copied in
// fixed sizes (the text is composed in a 16-byte scratch) to keep the work
// free of data-dependent branches and calls.
char* writeDigits(char* out, bool negative, int digits, int exponent) {
    char text[16] = {};
    std::memcpy(text, kPairs + 2 * (digits / 10000), 2);
    std::memcpy(text + 2, kPairs + 2 * (digits / 100 % 100), 2);
    std::memcpy(text + 4, kPairs + 2 * (digits % 100), 2);
    const int kept = 6 - (digits % 10 == 0) - (digits % 100 == 0) - (digits % 1000 == 0) -
                     (digits % 10000 == 0) - (digits % 100000 == 0);

    char scratch[16] = {};
    int length = 0;
    if (exponent >= 0 && exponent < 6) {  // "123.456", "1234.5", "12"
        const int whole = exponent + 1;
        std::memcpy(scratch, text, 8);
        std::memcpy(scratch + whole + 1, text + whole, 8);
        scratch[whole] = '.';
        length = kept > whole ? kept + 1 : whole;
    } else if (exponent < 0 && exponent >= -4) {  // "0.00123456"
        std::memcpy(scratch, "0.000000", 8);
        std::memcpy(scratch + 1 - exponent, text, 8);
        length = 1 - exponent + kept;
    } else {  // "1.23456e-05", "1e+06"
        scratch[0] = text[0];
        scratch[1] = '.';
        std::memcpy(scratch + 2, text + 1, 8);
        length = kept > 1 ? kept + 1 : 1;
        scratch[length] = 'e';
        scratch[length + 1] = exponent < 0 ? '-' : '+';
        std::memcpy(scratch + length + 2, kPairs + 2 * (exponent < 0 ? -exponent : exponent), 2);  // below 100
        length += 4;
    }
    *out = '-';
    out += negative;
    std::memcpy(out, scratch, 16);
    return out + length;
}

}  // namespace

LogLineWriter::LogLineWriter() : line_(128, '\0') {
    const std::ios_base::fmtflags ignored = std::ios_base::skipws | std::ios_base::unitbuf;
    assembling_ = (std::cerr.flags() & ~ignored) == std::ios_base::dec && std::cerr.precision() == 6 &&
                  std::cerr.width() == 0 && std::cerr.getloc() == std::locale::classic() &&
                  std::cerr.exceptions() == std::ios_base::goodbit && std::fegetround() == FE_TONEAREST;
    if (assembling_ && std::cerr.good() && std::cerr.tie()) std::cerr.tie()->flush();
}

char* LogLineWriter::room(std::size_t count) {
    if (line_.size() < used_ + count) line_.resize(2 * (used_ + count));
    return &line_[used_];
}

LogLineWriter& LogLineWriter::operator<<(const char* text) {
    if (assembling_) {
        const std::size_t length = std::strlen(text);
        std::memcpy(room(length), text, length);
        used_ += length;
    } else {
        std::cerr << text;
    }
    return *this;
}

LogLineWriter& LogLineWriter::operator<<(int value) {
    if (assembling_) {
        char* at = room(16);
        used_ += static_cast<std::size_t>(std::to_chars(at, at + 16, value).ptr - at);
    } else {
        std::cerr << value;
    }
    return *this;
}

LogLineWriter& LogLineWriter::operator<<(double value) {
    if (assembling_) {
        char* at = room(24);
        used_ += static_cast<std::size_t>(formatDouble(at, value) - at);
    } else {
        std::cerr << value;
    }
    return *this;
}

void LogLineWriter::endLine() {
    if (!assembling_) {
        std::cerr << std::endl;
        return;
    }
    *room(1) = '\n';
    ++used_;
    // What std::cerr.write(line) and std::endl's flush do, but for flushing
    // the tied stream, which the constructor did.
    if (std::cerr.good()) {
        std::streambuf* buffer = std::cerr.rdbuf();
        const std::streamsize length = static_cast<std::streamsize>(used_);
        if (buffer->sputn(line_.data(), length) != length || buffer->pubsync() == -1)
            std::cerr.setstate(std::ios_base::badbit);
    } else {
        std::cerr.setstate(std::ios_base::failbit);
    }
    used_ = 0;
}

char* LogLineWriter::formatDouble(char* out, double value) {
    if (!std::isfinite(value)) {
        // "inf", "-inf", "nan", "-nan": what the stream itself asks printf for.
        char text[16];
        const int length = std::snprintf(text, sizeof text, "%g", value);
        for (int i = 0; i < length; ++i) *out++ = text[i];
        return out;
    }
    if (value == 0) {
        if (std::signbit(value)) *out++ = '-';
        *out++ = '0';
        return out;
    }
    int digits = 0;
    int exponent = 0;
    if (roundToSixDigits(std::fabs(value), digits, exponent)) return writeDigits(out, value < 0, digits, exponent);
    // to_chars with a precision is specified as printf in the C locale.
    return std::to_chars(out, out + 24, value, std::chars_format::general, 6).ptr;
}
