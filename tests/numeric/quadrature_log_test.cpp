// The rules write each log line with one write; checked byte for byte, result for result and
// exception for exception against the straightforward route: every field its own
// std::cerr << operation, and f evaluated through the text "x = %lg" and the postfix walk.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <locale>
#include <string>

#include "../expression/expression_test_support.h"
#include "errors/errors.h"
#include "numeric/quadrature.h"
#include "stderr_capture.h"

namespace {

double slowCall(Expression& e, double x) {
    checkValue(x);
    char text[300];
    std::snprintf(text, sizeof text, "x = %lg", x);
    e.set_variables(text);
    return e.calculate(ExpressionTestAccess::postfix(e));
}

// Rule 0 rectangles, 1 trapezoids, 2 Simpson; the log written field by field.
double referenceRule(int rule, const std::string& text, double x1, double x2, double h) {
    Expression e(text);
    const char* names[] = {"rectangles", "trapezoidal", "Simpson"};
    std::cerr << "Integration with " << names[rule] << " method..." << std::endl;
    std::cerr << "x1 = " << x1 << "   x2 = " << x2 << "   h = " << h << std::endl;
    const double s = x1 > x2 ? -h : h, count = (x2 - x1) / s + 0.999999;
    const int n = h > 0 && std::isfinite(count) && std::fabs(count) < 2147483648.0 ? int(count) : 0;
    double sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        const double l = double(i - 1) * s + x1, raw = double(i) * s + x1;
        const double r = s > 0 ? std::min(x2, raw) : std::max(x2, raw);
        const double w = r - l, m = (l + r) * 0.5;
        double logged, added;
        if (rule == 0) {
            logged = added = slowCall(e, m) * w;
        } else if (rule == 1) {
            const double fl = slowCall(e, l), fr = slowCall(e, r);
            logged = added = 0.5 * ((fr + fl) * w);
        } else {
            const double fl = slowCall(e, l), fm = slowCall(e, m), fr = slowCall(e, r);
            added = (fr + (4.0 * fm + fl)) * w;
            logged = added / 6;
        }
        sum = sum + added;
        std::cerr << "Part: " << i << "   x_left = " << l << "   x_right = " << r
                  << "   Result: " << logged << std::endl;
    }
    const double result = rule == 2 ? sum / 6 : sum;
    std::cerr << "Total: " << result << std::endl << std::endl;
    return result;
}

// The log, then the result's bits or the exception.
template <class Rule>
std::string run(Rule rule) {
    StderrCapture log;
    std::string outcome;
    try {
        const double v = rule();
        std::uint64_t bits;
        std::memcpy(&bits, &v, sizeof bits);
        outcome = std::to_string(bits);
    } catch (const ExpressionBadResult&) {
        outcome = "bad result";
    } catch (const ExpressionWrongFormat&) {
        outcome = "wrong format";
    } catch (const ExpressionUnknownVariable& e) {
        outcome = "unknown " + e.name;
    }
    return log.take() + "=> " + outcome;
}

void expectSameAsReference(const char* format) {
    const struct { const char* f; double x1, x2, h; } cases[] = {
        {"sin(2*pi*x)*exp(-x^2/100)", -99.9999, 99.9999, 0.25},
        {"x", 0, 1, 0.1}, {"x", 5, -3, 0.37}, {"x", 0, 1, 0},
        {"x", -0.0, 0, 1},                        // "x1 = -0", no subinterval
        {"1/x", -1, 1, 0.25},                     // fails at an end or the middle
        {"exp(x)", 1e-20, 1e-15, 1e-17},          // exponent notation
        {"cos(x)", -1e-5, 1e-5, 1e-7},
        {"(x/1000)^13", -1e25, 1e25, 1e23},       // infinite parts, total NaN
        {"1.7e308*sin(x*1000)", 0, 1, 0.01},      // overflow inside Simpson's sum
        {"x^2", 123456.7, 123457.9, 0.01},        // nodes rounded to 6 digits
        {"1e-300*x", 1e-300, 3e-300, 1e-302}, {"y", 0, 1, 0.5}, {"*x", 0, 1, 0.5},
    };
    using Fast = double (*)(Function, double, double, double);
    const Fast rules[] = {integrateWithRectangles, integrateWithTrapezoidalRule,
                          integrateWithSimpson};
    for (int rule = 0; rule < 3; ++rule)
        for (const auto& c : cases)
            ASSERT_EQ(run([&] { return rules[rule](Function(c.f), c.x1, c.x2, c.h); }),
                      run([&] { return referenceRule(rule, c.f, c.x1, c.x2, c.h); }))
                << format << ": rule " << rule << ", " << c.f << " over " << c.x1 << ".." << c.x2;
}

TEST(QuadratureLog, SameBytesAsFieldByFieldWriting) {
    expectSameAsReference("default format");
    // The cases do reach the unusual texts.
    const std::string sample =
        run([] { return integrateWithRectangles(Function("(x/1000)^13"), -1e25, 1e25, 1e23); });
    for (const char* text : {"Result: -inf", "Result: inf", "Total: -nan", "e+285", "x1 = -1e+25"})
        EXPECT_NE(sample.find(text), std::string::npos) << text;
}

// Even with stderr fully buffered and std::cerr not flushing per operation, file descriptor 2
// holds every finished line when a rule returns or throws, and nothing more comes later.
TEST(QuadratureLog, EveryLineReachesTheFileWhenItEnds) {
    const auto writtenSoFar = [] {
        std::ifstream file("/proc/self/fd/2", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    };
    StderrCapture log;
    static char buffer[1 << 16];
    std::setvbuf(stderr, buffer, _IOFBF, sizeof buffer);
    std::cerr.unsetf(std::ios_base::unitbuf);
    integrateWithSimpson(Function("x"), 0, 1, 0.25);
    const std::string complete = writtenSoFar();
    EXPECT_THROW(integrateWithTrapezoidalRule(Function("1/x"), -1, 1, 0.25), ExpressionBadResult);
    const std::string failed = writtenSoFar();
    std::cerr.setf(std::ios_base::unitbuf);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    EXPECT_EQ(complete.substr(complete.size() - 12), "Total: 0.5\n\n");
    // Part 4 ends at 0, where 1/x fails.
    const std::string lastPart = "Part: 3   x_left = -0.5   x_right = -0.25   Result: -0.75\n";
    EXPECT_EQ(failed.substr(failed.size() - lastPart.size()), lastPart);
    EXPECT_EQ(failed, log.take());
}

struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

// Under any other format on std::cerr the fields are written as std::cerr formats them.
TEST(QuadratureLog, OtherStreamFormatsAreFollowed) {
    const std::ios_base::fmtflags flags = std::cerr.flags();
    std::cerr.precision(10);
    expectSameAsReference("precision 10");
    std::cerr.precision(6);
    std::cerr.setf(std::ios_base::scientific | std::ios_base::showpos);
    expectSameAsReference("scientific, showpos");
    std::cerr.flags(flags);
    const std::locale old = std::cerr.imbue(std::locale(std::locale::classic(), new CommaPoint));
    expectSameAsReference("decimal comma");
    const std::string sample =
        run([] { return integrateWithRectangles(Function("x"), 0, 1, 0.5); });
    std::cerr.imbue(old);
    EXPECT_NE(sample.find("x_right = 0,5"), std::string::npos);
}

}  // namespace
