#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "numeric/approximating_polynomial.h"
#include "numeric/spline.h"
#include "stderr_capture.h"

using Table = std::vector<Point>;

// The normal equations in the log (the LUP part is pinned with the solver); hand-computed fits, and a line and a
// parabola reproduced exactly from uneven abscissas.
TEST(LeastSquares, LogSingularSystemAndFits) {
    StderrCapture log;
    ApproximatingPolynomial({{0, 1}, {1, 3}, {2, 2}}, 1);
    const std::string head = "Approximating polynomial of degree 1 construction...\n"
                             "Matrix:\n3 3 \n3 5 \nRight part:\n6 7 \n\nLUP decomposition start.\n";
    EXPECT_EQ(log.take().substr(0, head.size()), head);
    EXPECT_THROW(ApproximatingPolynomial({{0, 0}, {1, 1}}, 2), MatrixIsSingular);  // two points, a parabola
    EXPECT_EQ(log.take(), "Approximating polynomial of degree 2 construction...\nMatrix:\n2 1 1 \n1 1 1 \n1 1 1 \n"
                          "Right part:\n1 1 1 \n\nLUP decomposition start.\n");
    const struct { Table points; int m; std::string text; double at1, deviation; } cases[] = {
        {{{0, 1}, {1, 3}, {2, 2}}, 1, "0.5x^1+1.5", 2.0, 1.5},
        {{{0, 1}, {1, 3}, {2, 2}}, 0, "2", 2.0, 2.0},
        {{{-1, 1}, {0, 2}, {1, 1}}, 2, "-1x^2+0x^1+2", 1.0, 0.0},
        {{{0, 0}, {1, 1}, {2, 1}}, 1, "0.5x^1+0.1667", 2.0 / 3, 1.0 / 6},  // intercept 1/6 from the centred sums
        {{{-1.5, 6}, {-0.2, 3.4}, {0.4, 2.2}, {2.3, -1.6}, {3.1, -3.2}}, 1, "-2x^1+3", 1, 0},
        {{{-1.5, 9.475}, {-0.2, 0.96}, {0.4, -1.26}, {2.3, -1.165}, {3.1, 2.115}}, 2, "1.5x^2-4x^1+0.1", -2.4, 0},
    };
    for (const auto& c : cases) {
        const ApproximatingPolynomial p(c.points, c.m);
        EXPECT_EQ(p.toString(), c.text);
        EXPECT_NEAR(p.calc(1), c.at1, 1e-12) << c.text;
        EXPECT_NEAR(p.deviation(), c.deviation, 1e-12) << c.text;
    }
}

TEST(Spline, LogTextsKnownValuesAndRangeTolerance) {
    StderrCapture log;
    const Spline s({{0, 0}, {1, 1}, {2, 0}});
    EXPECT_EQ(log.take(), "h[1] = 1\nh[2] = 1\n\nMatrix:\n4 \nRight part:\n-6 \n\n"
                          "Tridiagonal matrix algorithm start.\nQ[1] = -1.5\n\nresult[1] = -1.5\n"
                          "Tridiagonal matrix algorithm stop.\n\na[1] = 0\na[2] = 1\n\nb[1] = 1.5\nb[2] = 0\n\n"
                          "c[1] = 0\nc[2] = -1.5\n\nd[1] = -0.5\nd[2] = 0.5\n\n");
    EXPECT_EQ(s.toString(), "S[1]=-0.5x^3+1.5x^1; S[2]=0.5x^3-3x^2+4.5x^1-1");
    // A line with uneven steps: the cubic terms vanish below 1e-8.
    EXPECT_EQ(Spline({{0, 1}, {0.5, 2}, {2, 5}, {3, 7}, {4.7, 10.4}}).toString(),
              "S[1]=2x^1+1; S[2]=2x^1+1; S[3]=2x^1+1; S[4]=2x^1+1");
    // 1.5x - 0.5x^3 on [0, 1], 0.5x^3 - 3x^2 + 4.5x - 1 on [1, 2], each reaching 1e-7 beyond the table.
    const struct { double x, expected; } values[] = {
        {0.5, 0.6875}, {1.5, 0.6875}, {-1e-7, -1.5e-7}, {2.0000001, -1.5e-7}};
    for (const auto& c : values) EXPECT_NEAR(s.calc(c.x), c.expected, 1e-12) << c.x;
    const auto thrownFor = [&s](double x) {
        try { s.calc(x); } catch (const SplineUndefinedException& e) { return e.x; }
        return 0.0;
    };
    EXPECT_TRUE(thrownFor(2.001) == 2.001 && thrownFor(-2e-7) == -2e-7 && std::isnan(thrownFor(NAN)));
    // b uses h * 0.3333333333333333; h / 3 would give 2.891097618552074 here.
    EXPECT_EQ(Spline({{-3.5, -6}, {-2.25, 1}, {-0.5, 7}, {1.5, 4}, {3.75, 7}}).calc(-1.875), 2.8910976185520734);
}

// Natural spline through uneven knots: it interpolates, S' and S'' agree on both sides of each inner knot, and S''
// vanishes at both ends (one-sided second-order differences: h = -e looks left of x, h = +e right of it).
TEST(Spline, InterpolatesWithContinuousDerivatives) {
    StderrCapture quiet;
    const Table points{{-1, 2}, {0.3, -1}, {1, 0.5}, {2.5, 4}, {3, 1}};
    const Spline s(points);
    for (const Point& p : points) EXPECT_NEAR(s.calc(p.x), p.y, 1e-12);
    const auto f = [&](double x) { return s.calc(x); };
    const auto d1 = [&](double x, double h) { return (4 * f(x + h) - 3 * f(x) - f(x + 2 * h)) / h / 2; };
    const auto d2 = [&](double x, double h) {
        return (2 * f(x) - 5 * f(x + h) + 4 * f(x + 2 * h) - f(x + 3 * h)) / (h * h);
    };
    const double e = 1e-3;
    for (size_t k = 1; k + 1 < points.size(); ++k) {
        EXPECT_NEAR(d1(points[k].x, -e), d1(points[k].x, e), 1e-4) << points[k].x;
        EXPECT_NEAR(d2(points[k].x, -e), d2(points[k].x, e), 1e-3) << points[k].x;
    }
    EXPECT_NEAR(d2(points.front().x, e), 0, 1e-3);
    EXPECT_NEAR(d2(points.back().x, -e), 0, 1e-3);
}
