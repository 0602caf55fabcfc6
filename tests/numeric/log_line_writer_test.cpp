#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "numeric/log_line_writer.h"

namespace {

std::string formatted(double value) {
    char text[24];
    return std::string(text, LogLineWriter::formatDouble(text, value));
}

std::string printed(double value) {
    char text[32];
    return std::string(text, static_cast<size_t>(std::snprintf(text, sizeof text, "%g", value)));
}

// printf's "%g" byte for byte: the constructed values with two neighbours either side and their negatives (exact
// ties at the 7th digit, the carry into a new decade, the ends of the integer path 1e-22 and 1e6, exponent notation
// from 1e-5 on, zeros, infinities, NaN, denormals), then random bit patterns and magnitudes.
TEST(LogLineWriter, DoublesAsPrintfG) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    std::vector<double> values = {
        0.0,      nan,      inf,      DBL_MAX, DBL_MIN, DBL_TRUE_MIN, 1e300,  // the ends
        123456.5, 123457.5, 2.5,      3.5,     1234565,                       // exact ties, to even
        999999.5, 99999.95, 9.999995, 100000,  123456,  1e6,  1e-22,  1e-21,  // carries, the integer path's ends
        0.5,      0.1,      0.01,     99.9999, 1e-4,    0.0001234565, 9.9999e-5, 1e-5, 1e-7};  // both notations
    for (int k = -25; k < 10; ++k) {
        if (k >= 0 && k <= 6) values.push_back(0.1171875 * std::pow(10.0, k));  // exact, a tie at the 7th digit
        values.push_back(std::pow(10.0, k));
        values.push_back(999999.5 * std::pow(10.0, k - 5));
    }
    const size_t constructed = values.size();
    for (size_t i = 0; i < constructed; ++i) {
        double below = values[i], above = values[i];
        for (int step = 0; step < 2; ++step) {
            below = std::nextafter(below, -inf);
            above = std::nextafter(above, inf);
            values.push_back(below);
            values.push_back(above);
        }
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = random();
        double raw;
        std::memcpy(&raw, &bits, sizeof raw);
        values.push_back(raw);
        values.push_back(std::ldexp(double(random() >> 11), -53) * std::pow(10.0, double(random() % 36) - 26));
        values.push_back((double(random() % 900000 + 100000) + 0.5) * std::pow(2.0, double(random() % 40) - 30));
    }
    int failures = 0;
    for (const double value : values)
        for (const double signed_value : {value, -value}) {
            if (formatted(signed_value) == printed(signed_value)) continue;
            ADD_FAILURE() << std::hexfloat << signed_value << ": " << formatted(signed_value) << ", printf "
                          << printed(signed_value);
            if (++failures == 10) return;
        }
}

}  // namespace
