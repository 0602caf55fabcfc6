#pragma once
// Matrix: the square matrix of doubles that every linear solver works on,
// stored as a vector of rows (element (i, j) is row i, position j). Copies are
// deep. Row access is bounds-checked; element access inside a row is not.
// Precondition: every row holds dimension() elements (constructors and the
// structural operations keep it so; writing through a row reference must not
// resize the row). Vectors are plain std::vector<double>.
//
// Besides the class, this header holds the free vector and matrix functions
// (products, sums, norms) and two rounding helpers, round(x, digits) and the
// int-valued sign(x).

#include <vector>

class Matrix {
public:
    // No rows (dimension 0).
    Matrix();
    // n rows of n zeros; n = 0 gives the empty matrix. Precondition: n >= 0.
    explicit Matrix(int n);
    Matrix(const Matrix&) = default;
    Matrix& operator=(const Matrix&) = default;

    // Row i; throws MatrixIndexOutOfBound unless 0 <= i < dimension().
    std::vector<double>& operator[](int i);
    const std::vector<double>& operator[](int i) const;

    // Number of rows.
    int dimension() const;

    // Matrix-vector product; MatrixWrongDimensions unless v.size() == dimension().
    std::vector<double> operator*(const std::vector<double>& v) const;
    // Every element times k.
    Matrix operator*(const double& k) const;
    // Matrix product; MatrixWrongDimensions unless the dimensions agree.
    Matrix operator*(const Matrix& B) const;
    // Element-wise sum / difference; MatrixWrongDimensions unless the dimensions agree.
    Matrix operator+(const Matrix& B) const;
    Matrix operator-(const Matrix& B) const;

    Matrix transposed() const;

    // Exchange two rows / two columns; MatrixIndexOutOfBound for an index
    // outside [0, dimension()). i == j is allowed and changes nothing.
    void swapRows(int i, int j);
    void swapColumns(int i, int j);
    // Overwrite column j with v (the matrix does not grow).
    // MatrixIndexOutOfBound for a bad j (checked first), then
    // MatrixWrongDimensions unless v.size() == dimension().
    void insertColumn(int j, const std::vector<double>& v);

    // Round every element to 2 decimals.
    void doRound();

    // True when every element off the three central diagonals is exactly 0
    // (a NaN there counts as non-zero). True for the empty matrix.
    bool isTridiagonal() const;
    // True when |a_ij - a_ji| <= 1e-5 for every pair i < j.
    bool isSymmetrical() const;

private:
    std::vector<std::vector<double>> rows_;
};

// n x n identity.
Matrix getIdentityMatrix(int n);

// Sum of a_i * b_i in index order; VectorWrongDimensions for different sizes.
double dotProduct(const std::vector<double>& a, const std::vector<double>& b);

// Outer product u v^T (element (i, j) = u_i * v_j); VectorWrongDimensions
// for different sizes.
Matrix tensor_product(const std::vector<double>& u, const std::vector<double>& v);

// Element-wise sum / difference; MatrixWrongDimensions for different sizes.
std::vector<double> operator+(const std::vector<double>& a, const std::vector<double>& b);
std::vector<double> operator-(const std::vector<double>& a, const std::vector<double>& b);

// Maximum norm max |v_i| (0 for an empty vector). A NaN element makes it NaN.
double norm(const std::vector<double>& v);
// Sum of squares: the square of the Euclidean norm, no square root taken.
double norm2(const std::vector<double>& v);
// Row-sum norm: max over rows of sum_j |a_ij| (0 for the empty matrix).
// A NaN row sum makes it NaN.
double norm(const Matrix& A);
// sqrt of the sum of squares of the strictly lower triangle.
double off(const Matrix& A);

// x rounded to `digits` decimals, halves away from zero.
double round(double x, int digits);

// Writes each row of M to the run log (std::cerr) as one line, every element
// in the printf format `cellFormat` for one double (such as "%7.3lf "), a
// write per line.
void logRows(const Matrix& M, const char* cellFormat);
// 1 when x >= 0 (also for -0.0), -1 otherwise (also for NaN).
int sign(const double& x);
