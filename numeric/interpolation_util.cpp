#include "numeric/interpolation_util.h"

int factorial(int n) {
    int result = 1;
    for (int k = 2; k <= n; ++k) result *= k;
    return result;
}

char sign(double v) { return v < 0 ? '-' : '+'; }
