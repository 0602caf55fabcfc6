#include "linalg/matrix.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <string>
#include <utility>

#include "errors/errors.h"

Matrix::Matrix() = default;

Matrix::Matrix(int n) : rows_(static_cast<std::size_t>(n), std::vector<double>(static_cast<std::size_t>(n), 0.0)) {}

std::vector<double>& Matrix::operator[](int i) {
    if (i < 0 || i >= dimension()) throw MatrixIndexOutOfBound();
    return rows_[static_cast<std::size_t>(i)];
}

const std::vector<double>& Matrix::operator[](int i) const {
    if (i < 0 || i >= dimension()) throw MatrixIndexOutOfBound();
    return rows_[static_cast<std::size_t>(i)];
}

int Matrix::dimension() const {
    return static_cast<int>(rows_.size());
}

std::vector<double> Matrix::operator*(const std::vector<double>& v) const {
    if (static_cast<std::size_t>(dimension()) != v.size()) throw MatrixWrongDimensions();
    const int n = dimension();
    std::vector<double> result(static_cast<std::size_t>(n), 0.0);
    for (int i = 0; i < n; ++i) {
        const std::vector<double>& row = rows_[static_cast<std::size_t>(i)];
        for (int j = 0; j < n; ++j) result[i] += row[j] * v[j];
    }
    return result;
}

Matrix Matrix::operator*(const double& k) const {
    const int n = dimension();
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) result.rows_[i][j] = rows_[i][j] * k;
    return result;
}

Matrix Matrix::operator*(const Matrix& B) const {
    if (dimension() != B.dimension()) throw MatrixWrongDimensions();
    const int n = dimension();
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k) result.rows_[i][j] += rows_[i][k] * B.rows_[k][j];
    return result;
}

Matrix Matrix::operator+(const Matrix& B) const {
    if (dimension() != B.dimension()) throw MatrixWrongDimensions();
    const int n = dimension();
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) result.rows_[i][j] = rows_[i][j] + B.rows_[i][j];
    return result;
}

Matrix Matrix::operator-(const Matrix& B) const {
    if (dimension() != B.dimension()) throw MatrixWrongDimensions();
    const int n = dimension();
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) result.rows_[i][j] = rows_[i][j] - B.rows_[i][j];
    return result;
}

Matrix Matrix::transposed() const {
    const int n = dimension();
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) result.rows_[i][j] = rows_[j][i];
    return result;
}

void Matrix::swapRows(int i, int j) {
    const int n = dimension();
    if (j < 0 || i < 0) throw MatrixIndexOutOfBound();
    if (j >= n || i >= n) throw MatrixIndexOutOfBound();
    // Element by element, so references to a row keep pointing at the same
    // row index after the exchange.
    for (int k = 0; k < n; ++k) std::swap(rows_[i][k], rows_[j][k]);
}

void Matrix::swapColumns(int i, int j) {
    const int n = dimension();
    if (j < 0 || i < 0) throw MatrixIndexOutOfBound();
    if (j >= n || i >= n) throw MatrixIndexOutOfBound();
    for (int k = 0; k < n; ++k) std::swap(rows_[k][i], rows_[k][j]);
}

void Matrix::insertColumn(int j, const std::vector<double>& v) {
    const int n = dimension();
    if (j < 0 || j >= n) throw MatrixIndexOutOfBound();
    if (v.size() != static_cast<std::size_t>(n)) throw MatrixWrongDimensions();
    for (int k = 0; k < n; ++k) rows_[k][j] = v[k];
}

void Matrix::doRound() {
    for (std::vector<double>& row : rows_)
        for (double& a : row) a = round(a, 2);
}

bool Matrix::isTridiagonal() const {
    const int n = dimension();
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            // Exact test: a NaN compares unequal and so counts as non-zero.
            if ((i - j > 1 || j - i > 1) && rows_[i][j] != 0.0) return false;
    return true;
}

bool Matrix::isSymmetrical() const {
    const int n = dimension();
    for (int i = 0; i < n; ++i)
        for (int j = i + 1; j < n; ++j)
            if (std::fabs(rows_[i][j] - rows_[j][i]) > 1e-5) return false;
    return true;
}

Matrix getIdentityMatrix(int n) {
    Matrix result(n);
    for (int i = 0; i < n; ++i) result[i][i] = 1.0;
    return result;
}

double dotProduct(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) throw VectorWrongDimensions();
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}

Matrix tensor_product(const std::vector<double>& u, const std::vector<double>& v) {
    if (u.size() != v.size()) throw VectorWrongDimensions();
    const int n = static_cast<int>(u.size());
    Matrix result(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) result[i][j] = u[i] * v[j];
    return result;
}

std::vector<double> operator+(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) throw MatrixWrongDimensions();
    std::vector<double> result(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) result[i] = a[i] + b[i];
    return result;
}

std::vector<double> operator-(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) throw MatrixWrongDimensions();
    std::vector<double> result(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) result[i] = a[i] - b[i];
    return result;
}

// A NaN element (or row sum) makes the norm NaN and keeps it NaN: the
// iterative solvers rely on a NaN estimate never passing their stop test.
// (A plain running maximum would lose the NaN again at the next element.)
namespace {

void takeMax(double& m, double a) {
    if (std::isnan(m)) return;
    if (!(a <= m)) m = a;
}

}  // namespace

double norm(const std::vector<double>& v) {
    double m = 0.0;
    for (double x : v) takeMax(m, std::fabs(x));
    return m;
}

double norm2(const std::vector<double>& v) {
    double sum = 0.0;
    for (double x : v) sum += x * x;
    return sum;
}

double norm(const Matrix& A) {
    const int n = A.dimension();
    double m = 0.0;
    for (int i = 0; i < n; ++i) {
        const std::vector<double>& row = A[i];
        double sum = 0.0;
        for (int j = 0; j < n; ++j) sum += std::fabs(row[j]);
        takeMax(m, sum);
    }
    return m;
}

double off(const Matrix& A) {
    const int n = A.dimension();
    double sum = 0.0;
    for (int i = 1; i < n; ++i) {
        const std::vector<double>& row = A[i];
        for (int j = 0; j < i; ++j) sum += row[j] * row[j];
    }
    return std::sqrt(sum);
}

double round(double x, int digits) {
    const double p = std::pow(10.0, digits);
    return std::round(x * p) / p;
}

int sign(const double& x) {
    return x >= 0.0 ? 1 : -1;
}

void logRows(const Matrix& M, const char* cellFormat) {
    const int n = M.dimension();
    std::string line;
    char field[512];  // enough for any double in a fixed-point format of the log's
    for (int i = 0; i < n; ++i) {
        const std::vector<double>& row = M[i];
        line.clear();
        for (int j = 0; j < n; ++j) {
            const int length = std::snprintf(field, sizeof field, cellFormat, row[j]);
            line.append(field, static_cast<std::size_t>(length));
        }
        line += '\n';
        std::cerr << line << std::flush;
    }
}
