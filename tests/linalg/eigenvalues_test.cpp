#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <string>

#include "linalg/eigenvalues.h"
#include "linalg/lup.h"
#include "linalg_test_util.h"
#include "stderr_capture.h"

namespace {

using Complex = std::complex<double>;
const double kPi = 3.14159265358979323846;

std::vector<Complex> qrValues(const Matrix& A, double eps, int* iterations = nullptr) {
    StderrCapture log;
    std::vector<Complex> values;
    int count = -1;
    getEigenvaluesWithQR(A, eps, values, count);
    if (iterations) *iterations = count;
    return values;
}

// Sorted by real part, then imaginary part, for comparison with known values.
std::vector<Complex> sorted(std::vector<Complex> v) {
    std::sort(v.begin(), v.end(), [](const Complex& a, const Complex& b) {
        return a.real() != b.real() ? a.real() < b.real() : a.imag() < b.imag();
    });
    return v;
}

// The n x n tridiagonal Toeplitz matrix with 2 on the diagonal and -1 beside
// it, and its eigenvalues 2 - 2cos(k*pi/(n+1)), ascending.
Matrix toeplitz(int n) {
    Matrix A(n);
    for (int i = 0; i < n; ++i) {
        A[i][i] = 2.0;
        if (i > 0) A[i][i - 1] = A[i - 1][i] = -1.0;
    }
    return A;
}

std::vector<double> toeplitzValues(int n) {
    std::vector<double> v;
    for (int k = 1; k <= n; ++k) v.push_back(2.0 - 2.0 * std::cos(k * kPi / (n + 1)));
    return v;
}

// S * D * S^-1 for a fixed well-conditioned S: the eigenvalues of D, hidden.
Matrix similar(const Matrix& D, unsigned seed) {
    const Matrix S = randomDominant(D.dimension(), seed);
    return S * D * calcInverseMatrixWithLUP(S);
}

TEST(QRdecomposition, QIsOrthogonalRUpperAndTheirProductA) {
    const Matrix cases[] = {randomDominant(5, 7), fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}),
                            fromRows({{0, -1}, {1, 0}}), toeplitz(4)};
    for (const Matrix& A : cases) {
        Matrix Q, R;
        QRdecomposition(A, Q, R);
        const int n = A.dimension();
        EXPECT_LT(maxAbsDiff(Q * R, A), 1e-14) << n;
        EXPECT_LT(maxAbsDiff(Q * Q.transposed(), getIdentityMatrix(n)), 1e-15) << n;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j) EXPECT_LT(std::fabs(R[i][j]), 1e-15) << n;
    }
}

TEST(QRdecomposition, TrivialSizesAndTheSignRuleForZero) {
    Matrix Q, R;
    QRdecomposition(fromRows({{-3}}), Q, R);
    EXPECT_EQ(maxAbsDiff(Q, getIdentityMatrix(1)), 0.0);
    EXPECT_EQ(R[0][0], -3.0);
    QRdecomposition(Matrix(), Q, R);
    EXPECT_EQ(Q.dimension(), 0);
    EXPECT_EQ(R.dimension(), 0);

    // The reflection adds the column norm with the sign of the diagonal
    // element, and -0.0 counts as non-negative: R[0][0] = -1 then, +1 otherwise.
    struct Case {
        double a00, r00;
    };
    for (const Case c : {Case{0.0, -1.0}, Case{-0.0, -1.0}, Case{-1e-300, 1.0}}) {
        QRdecomposition(fromRows({{c.a00, 1}, {1, 0}}), Q, R);
        EXPECT_NEAR(R[0][0], c.r00, 1e-15) << c.a00;
    }
}

TEST(QRalgorithm, DiagonalMatrixStopsAtTheSecondIteration) {
    int iterations = -1;
    const std::vector<Complex> v = qrValues(fromRows({{2, 0, 0}, {0, -5, 0}, {0, 0, 0.5}}), 1e-12, &iterations);
    EXPECT_EQ(iterations, 2);
    EXPECT_EQ(v, (std::vector<Complex>{2.0, -5.0, 0.5}));
    EXPECT_EQ(qrValues(fromRows({{5}}), 1e-3, &iterations), std::vector<Complex>{5.0});
    EXPECT_EQ(iterations, 2);
}

TEST(QRalgorithm, RotationGivesMinusIThenIAndItsCompleteLog) {
    StderrCapture log;
    std::vector<Complex> values;
    int iterations = -1;
    getEigenvaluesWithQR(fromRows({{0, -1}, {1, 0}}), 1e-6, values, iterations);
    EXPECT_EQ(iterations, 2);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0], Complex(0, -1));
    EXPECT_EQ(values[1], Complex(0, 1));
    EXPECT_EQ(log.take(),
              "QR algorithm start.\n"
              "Q:\n  0.000000  -1.000000 \n -1.000000   0.000000 \n"
              "R:\n -1.000000   0.000000 \n  0.000000   1.000000 \n"
              "Q * R:\n  0.000000  -1.000000 \n  1.000000   0.000000 \n"
              "Q * Q^T:\n  1.000000   0.000000 \n  0.000000   1.000000 \n"
              "\n"
              "Iteration: 1\n"
              "Matrix:\n  0.000000   1.000000 \n -1.000000   0.000000 \n"
              "Roots of characteristic polynomial:\n"
              "0 + i*(-1)\n0 + i*(1)\n"
              "Epsilon (for complex roots): (none)\n"
              "\n"
              "Iteration: 2\n"
              "Matrix:\n  0.000000  -1.000000 \n  1.000000   0.000000 \n"
              "Roots of characteristic polynomial:\n"
              "0 + i*(-1)\n0 + i*(1)\n"
              "Epsilon (for complex roots): 0\n"
              "\n"
              "QR algorithm stop (target accuracy achieved).\n\n");
}

TEST(QRalgorithm, AgreesWithClosedForms) {
    struct Case {
        const char* what;
        Matrix A;
        std::vector<Complex> expected;
    };
    const double s33 = std::sqrt(33.0);
    const Case cases[] = {
        {"2x2 real", fromRows({{1, 2}, {3, 4}}), {(5 - s33) / 2, (5 + s33) / 2}},
        {"2x2 complex", fromRows({{1, -5}, {1, 1}}), {Complex(1, -std::sqrt(5.0)), Complex(1, std::sqrt(5.0))}},
        {"5x5 S*D*S^-1", similar(fromRows({{1, 0, 0, 0, 0}, {0, -2, 0, 0, 0}, {0, 0, 4, 0, 0},
                                           {0, 0, 0, 8, 0}, {0, 0, 0, 0, 16}}), 99),
         {-2.0, 1.0, 4.0, 8.0, 16.0}},
        {"4x4 S*D*S^-1 with a complex pair", similar(fromRows({{1, -2, 0, 0}, {2, 1, 0, 0},
                                                               {0, 0, 6, 0}, {0, 0, 0, 0.5}}), 5),
         {0.5, Complex(1, -2), Complex(1, 2), 6.0}},
    };
    for (const Case& c : cases) {
        int iterations = -1;
        const std::vector<Complex> got = sorted(qrValues(c.A, 1e-10, &iterations));
        ASSERT_EQ(got.size(), c.expected.size()) << c.what;
        for (std::size_t i = 0; i < got.size(); ++i) EXPECT_LT(std::abs(got[i] - c.expected[i]), 1e-8) << c.what;
        EXPECT_GE(iterations, 2) << c.what;
    }
    const std::vector<double> expected = toeplitzValues(5);
    const std::vector<Complex> got = sorted(qrValues(toeplitz(5), 1e-12));
    for (int k = 0; k < 5; ++k) EXPECT_NEAR(got[k].real(), expected[k], 1e-10);
}

TEST(QRalgorithm, IterationLimit) {
    // eps = 0 can never exceed the real-root estimate 0.
    StderrCapture log;
    std::vector<Complex> values;
    int iterations = -1;
    EXPECT_EQ(thrownBy([&] { getEigenvaluesWithQR(fromRows({{2}}), 0.0, values, iterations); }),
              "MaxItersCountAchieved");
    const std::string text = log.take();
    EXPECT_NE(text.find("\nIteration: 100001\n"), std::string::npos);
    EXPECT_EQ(text.find("Iteration: 100002"), std::string::npos);
    EXPECT_EQ(iterations, -1);
    EXPECT_TRUE(values.empty());
}

TEST(JacobiMethod, SmallCases) {
    struct Case {
        Rows A;
        int iterations;
        std::vector<double> values;
    };
    const Case cases[] = {
        {{}, 0, {}},
        {{{5}}, 0, {5}},
        {{{2, 1}, {1, 2}}, 1, {3, 1}},  // equal diagonal: theta = pi/4
        {{{1, 0}, {0, 3}}, 1, {1, 3}},  // nothing to annihilate, but one rotation by 0 is made
    };
    for (const Case& c : cases) {
        StderrCapture log;
        std::vector<double> values;
        Matrix V;
        int iterations = -1;
        getEigenvaluesWithJacobi(fromRows(c.A), 1e-9, values, V, iterations);
        EXPECT_EQ(iterations, c.iterations) << c.A.size();
        ASSERT_EQ(values.size(), c.values.size());
        for (std::size_t i = 0; i < values.size(); ++i) EXPECT_NEAR(values[i], c.values[i], 1e-15);
        EXPECT_EQ(V.dimension(), static_cast<int>(c.A.size()));
    }
}

TEST(JacobiMethod, CompleteLogOfOneRotation) {
    StderrCapture log;
    std::vector<double> values;
    Matrix V;
    int iterations = -1;
    getEigenvaluesWithJacobi(fromRows({{2, 1}, {1, 2}}), 1e-9, values, V, iterations);
    EXPECT_EQ(log.take(),
              "Jacobi method start.\n"
              "Iteration: 1\n"
              "Angle: 0.785398\n"
              "Epsilon: 2.22045e-16\n"
              "Matrix:\n  3.000000   0.000000 \n  0.000000   1.000000 \n"
              "\n"
              "Jacobi method stop (target accuracy achieved).\n\n");
    StderrCapture one;
    getEigenvaluesWithJacobi(fromRows({{5}}), 1e-9, values, V, iterations);
    EXPECT_EQ(one.take(), "Jacobi method start.\nJacobi method stop (target accuracy achieved).\n\n");
}

TEST(JacobiMethod, NonSymmetricMatrixIsRejectedAfterTheStartLine) {
    StderrCapture log;
    std::vector<double> values{42};
    Matrix V;
    int iterations = -1;
    EXPECT_EQ(thrownBy([&] { getEigenvaluesWithJacobi(fromRows({{1, 2}, {2.001, 1}}), 1e-6, values, V, iterations); }),
              "MatrixIsNotSymmetrical");
    EXPECT_EQ(log.take(), "Jacobi method start.\n");
    EXPECT_EQ(values, std::vector<double>{42});
    EXPECT_EQ(iterations, -1);
    EXPECT_EQ(V.dimension(), 0);
}

TEST(JacobiMethod, ColumnsOfVAreEigenvectors) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const Matrix B = randomDominant(5, seed);
        const Matrix A = B + B.transposed();
        std::vector<double> values;
        Matrix V;
        int iterations = -1;
        StderrCapture log;
        getEigenvaluesWithJacobi(A, 1e-12, values, V, iterations);
        EXPECT_LT(maxAbsDiff(V * V.transposed(), getIdentityMatrix(5)), 1e-14) << seed;
        for (int k = 0; k < 5; ++k) {
            std::vector<double> v(5);
            for (int i = 0; i < 5; ++i) v[i] = V[i][k];
            std::vector<double> lv(5);
            for (int i = 0; i < 5; ++i) lv[i] = values[k] * v[i];
            EXPECT_LT(norm(A * v - lv), 1e-11) << seed << " column " << k;
        }
    }
}

TEST(JacobiMethod, AgreesWithClosedFormsAndWithQR) {
    for (int n : {3, 6}) {
        std::vector<double> values;
        Matrix V;
        int iterations = -1;
        StderrCapture log;
        getEigenvaluesWithJacobi(toeplitz(n), 1e-12, values, V, iterations);
        std::sort(values.begin(), values.end());
        const std::vector<double> expected = toeplitzValues(n);
        for (int k = 0; k < n; ++k) EXPECT_NEAR(values[k], expected[k], 1e-12) << n;
    }
    const Matrix B = randomDominant(4, 31);
    const Matrix A = B + B.transposed();
    std::vector<double> values;
    Matrix V;
    int iterations = -1;
    {
        StderrCapture log;
        getEigenvaluesWithJacobi(A, 1e-12, values, V, iterations);
    }
    std::sort(values.begin(), values.end());
    const std::vector<Complex> qr = sorted(qrValues(A, 1e-12));
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(values[k], qr[k].real(), 1e-9);
}

TEST(JacobiMethod, IterationLimit) {
    // A negative eps is never exceeded, so the rotations go on to the limit.
    StderrCapture log;
    std::vector<double> values;
    Matrix V;
    int iterations = -1;
    EXPECT_EQ(thrownBy([&] { getEigenvaluesWithJacobi(fromRows({{2, 1}, {1, 2}}), -1.0, values, V, iterations); }),
              "MaxItersCountAchieved");
    const std::string text = log.take();
    EXPECT_NE(text.find("\nIteration: 100001\n"), std::string::npos);
    EXPECT_EQ(text.find("Iteration: 100002"), std::string::npos);
    EXPECT_EQ(iterations, -1);
    EXPECT_TRUE(values.empty());
}

}  // namespace
