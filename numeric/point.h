#pragma once
// One point of a table of a function: an abscissa and its value.
// Tables handed to the numerical methods are std::vector<Point> sorted
// ascending by x with neighbouring abscissas at least 1e-8 apart.

#include <cmath>

struct Point {
    double x = 0.0;
    double y = 0.0;

    // Orders by x; abscissas closer than 1e-8 count as equal and fall back to y.
    bool operator<(const Point& other) const {
        if (std::fabs(x - other.x) > 1e-8) return x < other.x;
        return y < other.y;
    }
};
