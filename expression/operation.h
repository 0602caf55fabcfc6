#pragma once
// Operation: the operators and functions of the expression language and
// their formulas. The formulas are written once, here, for calculate and for
// the compiled program alike, so that both compute every value with the same
// code; inline, so that where the operation is a constant each reduces to its
// one instruction or library call.

#include <cmath>
#include <cstdint>
#include <string>

struct Operation {
    enum Code : std::uint8_t {
        invalid,   // no such operator or function
        identity,  // unary +
        negate,    // unary -
        add,
        subtract,
        multiply,
        divide,
        power,
        sin,
        cos,
        tg,
        ctg,
        arcsin,
        arccos,
        arctg,
        arcctg,
        exp,
        ln,
        log10,
        log2,
        abs,
        sqrt,
        sinh,
        cosh
    };

    // The operation of an operator or function text; invalid if none.
    static Code binary(const std::string& text);
    static Code unary(const std::string& text);
    static Code function(const std::string& name);

    // op one of add ... power.
    [[gnu::always_inline]] static double apply(Code op, double a, double b)
    {
        switch (op) {
        case add:
            return a + b;
        case subtract:
            return a - b;
        case multiply:
            return a * b;
        case divide:
            return a / b;
        default:  // power
            return std::pow(a, b);
        }
    }

    // op one of identity, negate, sin ... cosh.
    [[gnu::always_inline]] static double apply(Code op, double a)
    {
        switch (op) {
        case identity:
            return a;
        case negate:
            return -a;
        case sin:
            return std::sin(a);
        case cos:
            return std::cos(a);
        case tg:
            return std::tan(a);
        case ctg:
            return 1.0 / std::tan(a);
        case arcsin:
            return std::asin(a);
        case arccos:
            return std::acos(a);
        case arctg:
            return std::atan(a);
        case arcctg:
            return 1.5707963267948966 - std::atan(a);
        case exp:
            return std::exp(a);
        case ln:
            return std::log(a);
        case log10:
            return std::log10(a);
        case log2:
            // A division by ln 2, not a product with its reciprocal: log2(8) is exactly 3.
            return std::log(a) / 0.6931471805599453;
        case abs:
            return std::fabs(a);
        case sqrt:
            return std::sqrt(a);
        case sinh:
            return std::sinh(a);
        default:  // cosh
            return std::cosh(a);
        }
    }
};
