#include <algorithm>

#include "linalg/eigenvalues.h"
#include "linalg/lup.h"
#include "linalg_test_util.h"

using Complexes = std::vector<std::complex<double>>;

// One run of the QR algorithm (roots) or of the Jacobi method (values, V), with its log.
struct EigenRun {
    Complexes roots;
    Vec values{42};  // stays as it is when a method fails
    Matrix V;
    int iterations = -1;
    std::string thrown, log;
    EigenRun(bool jacobi, const Matrix& A, double eps) {
        log = logOf([&] { jacobi ? getEigenvaluesWithJacobi(A, eps, values, V, iterations)
                                 : getEigenvaluesWithQR(A, eps, roots, iterations); }, &thrown);
    }
};
enum { kQR = false, kJacobi = true };

TEST(QRdecomposition, QIsOrthogonalRUpperAndTheirProductA) {
    for (const Rows& rows : {Rows{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, Rows{{-3}}}) {
        const Matrix A = fromRows(rows);
        const int n = A.dimension();
        Matrix Q, R;
        QRdecomposition(A, Q, R);
        EXPECT_LT(maxAbsDiff(Q * R, A), 1e-14) << n;
        EXPECT_LT(maxAbsDiff(Q * Q.transposed(), getIdentityMatrix(n)), 1e-15) << n;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j) EXPECT_LT(std::fabs(R[i][j]), 1e-15) << n;
        EXPECT_TRUE(n > 1 || R[0][0] == -3.0);  // no reflection for a single column
    }
    // The norm is added with the sign of the diagonal element, -0.0 counting as non-negative.
    for (const auto& c : {std::make_pair(0.0, -1.0), {-0.0, -1.0}, {-1e-300, 1.0}}) {
        Matrix Q, R;
        QRdecomposition(fromRows({{c.first, 1}, {1, 0}}), Q, R);
        EXPECT_NEAR(R[0][0], c.second, 1e-15) << c.first;
    }
}

TEST(QRalgorithm, DiagonalMatricesAndTheRotationWithItsCompleteLog) {
    const EigenRun diagonal(kQR, fromRows({{2, 0, 0}, {0, -5, 0}, {0, 0, 0.5}}), 1e-12);
    const EigenRun one(kQR, fromRows({{5}}), 1e-3), r(kQR, fromRows({{0, -1}, {1, 0}}), 1e-6);
    EXPECT_EQ(diagonal.roots, (Complexes{2.0, -5.0, 0.5}));
    EXPECT_EQ(one.roots, Complexes{5.0});
    EXPECT_EQ(r.roots, (Complexes{{0, -1}, {0, 1}}));
    // Each stops at the second iteration: the first has no earlier roots to compare with.
    EXPECT_EQ(std::make_tuple(diagonal.iterations, one.iterations, r.iterations),
              std::make_tuple(2, 2, 2));
    const std::string realIteration = "Matrix:\n  5.000000 \nRoots of characteristic polynomial:\n5\n"
                                      "Epsilon (for real roots): 0\n\n";
    EXPECT_EQ(one.log, "QR algorithm start.\nQ:\n  1.000000 \nR:\n  5.000000 \nQ * R:\n  5.000000 \n"
                       "Q * Q^T:\n  1.000000 \n\nIteration: 1\n" + realIteration + "Iteration: 2\n" + realIteration +
                       "QR algorithm stop (target accuracy achieved).\n\n");
    EXPECT_EQ(r.log,
              "QR algorithm start.\n"
              "Q:\n  0.000000  -1.000000 \n -1.000000   0.000000 \n"
              "R:\n -1.000000   0.000000 \n  0.000000   1.000000 \n"
              "Q * R:\n  0.000000  -1.000000 \n  1.000000   0.000000 \n"
              "Q * Q^T:\n  1.000000   0.000000 \n  0.000000   1.000000 \n\n"
              "Iteration: 1\nMatrix:\n  0.000000   1.000000 \n -1.000000   0.000000 \n"
              "Roots of characteristic polynomial:\n0 + i*(-1)\n0 + i*(1)\n"
              "Epsilon (for complex roots): (none)\n\n"
              "Iteration: 2\nMatrix:\n  0.000000  -1.000000 \n  1.000000   0.000000 \n"
              "Roots of characteristic polynomial:\n0 + i*(-1)\n0 + i*(1)\n"
              "Epsilon (for complex roots): 0\n\n"
              "QR algorithm stop (target accuracy achieved).\n\n");
}

// Unshifted QR finds the eigenvalues in order of decreasing modulus.
TEST(QRalgorithm, AgreesWithKnownEigenvalues) {
    const auto similar = [](const Rows& D) {  // S * D * S^-1 has the eigenvalues of D
        const Matrix S = randomDominant(static_cast<int>(D.size()), 9);
        return S * fromRows(D) * calcInverseMatrixWithLUP(S);
    };
    const double s33 = std::sqrt(33.0), s7 = std::sqrt(7.0) / 2;
    const struct { Matrix A; double eps; Complexes roots; } cases[] = {
        {fromRows({{1, 2}, {3, 4}}), 1e-10, {(5 + s33) / 2, (5 - s33) / 2}},  // a block with real roots
        {similar({{1, 0, 0, 0, 0}, {0, -2, 0, 0, 0}, {0, 0, 4, 0, 0}, {0, 0, 0, 8, 0}, {0, 0, 0, 0, 16}}), 1e-10,
         {16.0, 8.0, 4.0, -2.0, 1.0}},
        {similar({{1, -2, 0, 0}, {2, 1, 0, 0}, {0, 0, 6, 0}, {0, 0, 0, 0.5}}), 1e-10,  // a complex pair
         {6.0, {1, -2}, {1, 2}, 0.5}},
        // Both roots of a complex block must have settled before the run stops.
        {fromRows({{-1, -3, 3}, {-2, -1, 4}, {4, -1, -4}}), 1e-3, {-7.0, {0.5, -s7}, {0.5, s7}}},
    };
    for (const auto& c : cases) {
        const Complexes roots = EigenRun(kQR, c.A, c.eps).roots;
        ASSERT_EQ(roots.size(), c.roots.size());
        for (std::size_t i = 0; i < roots.size(); ++i)
            EXPECT_LT(std::abs(roots[i] - c.roots[i]), 100 * c.eps) << c.roots.size() << ": " << i;
    }
}

TEST(JacobiMethod, SmallCasesCompleteLogsAndTheSymmetryCheck) {
    const EigenRun one(kJacobi, fromRows({{5}}), 1e-9);
    const EigenRun diagonal(kJacobi, fromRows({{1, 0}, {0, 3}}), 1e-9);
    EXPECT_EQ(one.log, "Jacobi method start.\nJacobi method stop (target accuracy achieved).\n\n");
    EXPECT_EQ(std::make_pair(one.values, one.iterations), std::make_pair(Vec{5}, 0));
    // Nothing to annihilate, but one rotation by 0 is made.
    EXPECT_EQ(std::make_pair(diagonal.values, diagonal.iterations), std::make_pair(Vec{1, 3}, 1));
    // Equal diagonal elements: an infinite quotient and a quarter turn.
    EXPECT_EQ(EigenRun(kJacobi, fromRows({{2, 1}, {1, 2}}), 1e-9).log,
              "Jacobi method start.\nIteration: 1\nAngle: 0.785398\nEpsilon: 2.22045e-16\n"
              "Matrix:\n  3.000000   0.000000 \n  0.000000   1.000000 \n\n"
              "Jacobi method stop (target accuracy achieved).\n\n");
    const EigenRun r(kJacobi, fromRows({{1, 2}, {2.001, 1}}), 1e-6);
    EXPECT_EQ(r.thrown + r.log, "MatrixIsNotSymmetricalJacobi method start.\n");
    EXPECT_TRUE(r.values == Vec{42} && r.iterations == -1);
}

TEST(JacobiMethod, EigenvectorsAndEigenvaluesAgreeWithKnownValues) {
    const Matrix B = randomDominant(5, 1), A = B + B.transposed();  // positive definite
    const EigenRun r(kJacobi, A, 1e-12);
    EXPECT_LT(maxAbsDiff(r.V * r.V.transposed(), getIdentityMatrix(5)), 1e-14);
    Matrix lambda(5);
    for (int k = 0; k < 5; ++k) lambda[k][k] = r.values[k];
    EXPECT_LT(maxAbsDiff(A * r.V, r.V * lambda), 1e-11);  // A * v = lambda * v, column by column
    Vec values = r.values;
    std::sort(values.rbegin(), values.rend());
    const Complexes roots = EigenRun(kQR, A, 1e-12).roots;
    for (int k = 0; k < 5; ++k) EXPECT_NEAR(values[k], roots[k].real(), 1e-9) << k;
    // 2 on the diagonal, -1 beside it: eigenvalues 2 - 2 cos(k pi / 5).
    const Rows T = {{2, -1, 0, 0}, {-1, 2, -1, 0}, {0, -1, 2, -1}, {0, 0, -1, 2}};
    values = EigenRun(kJacobi, fromRows(T), 1e-12).values;
    std::sort(values.begin(), values.end());
    for (int k = 1; k <= 4; ++k)
        EXPECT_NEAR(values[k - 1], 2 - 2 * std::cos(k * std::acos(-1.0) / 5), 1e-12) << k;
}

TEST(EigenvalueMethods, StopAfter100001IterationsWithoutWritingResults) {
    // eps = 0 is never above the real-root estimate 0; a negative eps never above off(A).
    for (const EigenRun& r : {EigenRun(kQR, fromRows({{2}}), 0.0),
                              EigenRun(kJacobi, fromRows({{2, 1}, {1, 2}}), -1.0)}) {
        EXPECT_EQ(r.thrown, "MaxItersCountAchieved");
        EXPECT_NE(r.log.find("\nIteration: 100001\n"), std::string::npos);
        EXPECT_EQ(r.log.find("Iteration: 100002"), std::string::npos);
        EXPECT_TRUE(r.roots.empty() && r.values == Vec{42} && r.iterations == -1);
    }
}
