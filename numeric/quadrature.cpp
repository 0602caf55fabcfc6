#include "numeric/quadrature.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numeric/log_line_writer.h"

namespace {

enum class Rule { Rectangles, Trapezoidal, Simpson };

// The shared frame of the three rules: log header, subinterval ends computed
// afresh from i (never accumulated), the contribution of each, the total.
double integrate(Rule rule, Function& f, double x1, double x2, double h) {
    LogLineWriter log;
    switch (rule) {
    case Rule::Rectangles: log << "Integration with rectangles method..."; break;
    case Rule::Trapezoidal: log << "Integration with trapezoidal method..."; break;
    case Rule::Simpson: log << "Integration with Simpson method..."; break;
    }
    log.endLine();
    log << "x1 = " << x1 << "   x2 = " << x2 << "   h = " << h;
    log.endLine();

    const double s = x1 > x2 ? -h : h;
    // The 0.999999 makes this a ceiling that ignores a sliver below 1e-6 of a step.
    const double count = (x2 - x1) / s + 0.999999;
    int n = 0;
    // Guards against inputs the form never produces; (int) of a value out of
    // range is undefined, and a zero step would never end.
    if (h > 0 && std::isfinite(count) && count > -2147483648.0 && count < 2147483648.0)
        n = static_cast<int>(count);

    double sum = 0.0;
    for (int i = 1; i <= n; ++i) {
        const double l = static_cast<double>(i - 1) * s + x1;
        const double rawRight = static_cast<double>(i) * s + x1;
        const double r = s > 0 ? std::min(x2, rawRight) : std::max(x2, rawRight);
        const double w = r - l;
        const double m = (l + r) * 0.5;
        double logged = 0.0;
        switch (rule) {
        case Rule::Rectangles: {
            logged = f(m) * w;
            sum = sum + logged;
            break;
        }
        case Rule::Trapezoidal: {
            const double fl = f(l);
            const double fr = f(r);
            logged = 0.5 * ((fr + fl) * w);
            sum = sum + logged;
            break;
        }
        case Rule::Simpson: {
            const double fl = f(l);
            const double fm = f(m);
            const double fr = f(r);
            const double t = (fr + (4.0 * fm + fl)) * w;
            logged = t / 6;
            // Sum the undivided parts and divide once at the end: rounding
            // differs from summing the logged values.
            sum = sum + t;
            break;
        }
        }
        log << "Part: " << i << "   x_left = " << l << "   x_right = " << r << "   Result: " << logged;
        log.endLine();
    }

    const double result = rule == Rule::Simpson ? sum / 6 : sum;
    log << "Total: " << result;
    log.endLine();
    log.endLine();  // the empty line after a run
    return result;
}

double rungeRomberg(double I1, double I2, double h1, double h2, int order) {
    const double k = h1 / h2;
    if (std::fabs(k - 1) < 1e-8) return std::numeric_limits<double>::quiet_NaN();
    const double k2 = k * k;
    return (I1 - I2) / ((order == 4 ? k2 * k2 : k2) - 1);
}

}  // namespace

double integrateWithRectangles(Function f, double x1, double x2, double h) {
    return integrate(Rule::Rectangles, f, x1, x2, h);
}

double integrateWithTrapezoidalRule(Function f, double x1, double x2, double h) {
    return integrate(Rule::Trapezoidal, f, x1, x2, h);
}

double integrateWithSimpson(Function f, double x1, double x2, double h) {
    return integrate(Rule::Simpson, f, x1, x2, h);
}

double calcRectanglesError(double I1, double I2, double h1, double h2) {
    return rungeRomberg(I1, I2, h1, h2, 2);
}

double calcTrapezoidalRuleError(double I1, double I2, double h1, double h2) {
    return rungeRomberg(I1, I2, h1, h2, 2);
}

double calcSimpsonError(double I1, double I2, double h1, double h2) {
    return rungeRomberg(I1, I2, h1, h2, 4);
}
