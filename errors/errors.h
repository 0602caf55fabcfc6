#pragma once
// The failures of every calculation. Each is a plain value type with no base
// class and no virtual functions: thrown by value, caught by reference, and
// told apart only by its type. Two of them carry the datum their message needs.

#include <string>

// The expression text is not well formed, or uses an operator in a form
// that has no meaning (unary "*", for example).
class ExpressionWrongFormat {};

// The value of an expression, or the argument given to a function object,
// is NaN or infinite.
class ExpressionBadResult {};

// Evaluation reached a name that has no value.
class ExpressionUnknownVariable {
public:
    explicit ExpressionUnknownVariable(const std::string& name) : name(name) {}
    std::string name;
};

// Two points of an input table share (within 1e-8) the same abscissa.
class EqualPointsException {};

// A spline was evaluated outside the range of its table.
class SplineUndefinedException {
public:
    explicit SplineUndefinedException(double x) : x(x) {}
    double x;
};

// No pivot of magnitude at least 1e-8 was found during elimination.
class MatrixIsSingular {};

// A matrix handed to the tridiagonal solver has a non-zero element off its
// three central diagonals.
class MatrixIsNotTridiagonal {};

// A row index (or a column index of a structural operation) is out of range.
class MatrixIndexOutOfBound {};

// The operands of a matrix or vector operation have different sizes.
class MatrixWrongDimensions {};

// The two vectors of a dot or tensor product have different sizes.
class VectorWrongDimensions {};

// An iterative method reached its iteration limit without converging.
class MaxItersCountAchieved {};

// A matrix that must be symmetric (within 1e-5) is not.
class MatrixIsNotSymmetrical {};
