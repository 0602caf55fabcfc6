// Matrices, direct and iterative solvers, eigenvalue methods: results, failures, logs; distances are norms.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "errors/errors.h"
#include "linalg/eigenvalues.h"
#include "linalg/iterative.h"
#include "linalg/lup.h"
#include "linalg/matrix.h"
#include "linalg/tridiagonal.h"
#include "stderr_capture.h"

using Rows = std::vector<std::vector<double>>;
using Vec = std::vector<double>;
using Complexes = std::vector<std::complex<double>>;

Matrix fromRows(const Rows& rows) {
    Matrix m(static_cast<int>(rows.size()));
    for (int i = 0; i < m.dimension(); ++i) m[i] = rows[i];
    return m;
}

// Strictly diagonally dominant (well conditioned, fine for every solver, no row exchanges), the rest by the seed; a
// band keeps only the tridiagonal part.
Matrix dominant(int n, int seed, bool band = false) {
    Matrix A(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            if (!band || std::abs(i - j) < 2) A[i][j] = (i == j) * n + std::sin(seed + 7 * i + 3 * j);
    return A;
}

#define LINALG_CATCH_AS(E) catch (const E&) { thrown = #E; }
// The class the action throws ("none" if it returns), then its log: for runs to the iteration limit (`onlyCerr`) what
// std::cerr writes, kept in memory to save a system call per line.
std::string outcome(const std::function<void()>& action, bool onlyCerr = false) {
    StderrCapture log;
    std::ostringstream memory;
    std::streambuf* const cerrBuffer = onlyCerr ? std::cerr.rdbuf(memory.rdbuf()) : nullptr;
    std::string thrown = "none";
    try { action(); }
    LINALG_CATCH_AS(MatrixIsSingular) LINALG_CATCH_AS(MatrixIsNotTridiagonal) LINALG_CATCH_AS(MatrixIndexOutOfBound)
    LINALG_CATCH_AS(MatrixWrongDimensions) LINALG_CATCH_AS(VectorWrongDimensions)
    LINALG_CATCH_AS(MaxItersCountAchieved) LINALG_CATCH_AS(MatrixIsNotSymmetrical)
    if (cerrBuffer) std::cerr.rdbuf(cerrBuffer);
    return thrown + (onlyCerr ? memory.str() : log.take());
}

// Which class each failing operation throws, and which check wins when two would fail.
TEST(MatrixErrors, EveryOperationThrowsItsOwnClass) {
    Matrix m = getIdentityMatrix(3);
    const Matrix c = getIdentityMatrix(3), m2 = getIdentityMatrix(2);
    const Vec v2{1, 2}, v3{1, 2, 3};
    const std::pair<const char*, std::vector<std::function<void()>>> groups[] = {
        {"MatrixIndexOutOfBound",  // a bad index wins over the wrong size of v2
         {[&] { m[-1]; }, [&] { m[3]; }, [&] { c[-1]; }, [&] { c[3]; }, [&] { m.swapRows(-1, 0); },
          [&] { m.swapRows(0, 3); }, [&] { m.swapColumns(3, 0); }, [&] { m.swapColumns(0, -1); },
          [&] { m.insertColumn(3, v2); }, [&] { m.insertColumn(-1, v2); }}},
        {"MatrixWrongDimensions", {[&] { m.insertColumn(0, v2); }, [&] { c* v2; }, [&] { c* m2; }, [&] { c + m2; },
                                   [&] { m2 - c; }, [&] { v2 + v3; }, [&] { v3 - v2; }}},
        {"VectorWrongDimensions", {[&] { dotProduct(v2, v3); }, [&] { dotProduct(v3, v2); },
                                   [&] { tensor_product(v3, v2); }, [&] { tensor_product(v2, v3); }}},
    };
    for (const auto& g : groups)
        for (const auto& action : g.second)
            EXPECT_EQ(outcome(action), g.first) << "action " << &action - g.second.data();
}

// Tridiagonal means exact zeros outside the band (a NaN is not zero); symmetry tolerates differences up to 1e-5
// (1.00001 is 1.0000000000065512e-05 from 1 in doubles).
TEST(MatrixStructure, TridiagonalTestIsExactAndSymmetryToleratesUpTo1e5) {
    for (const auto& c : {std::make_pair(0.0, true), {-0.0, true}, {1e-300, false}, {-1e-300, false}, {NAN, false}})
        for (const bool upper : {true, false}) {
            Matrix m = fromRows({{1, 2, 0, 0}, {3, 4, 5, 0}, {0, 6, 7, 8}, {0, 0, 9, 1}});
            (upper ? m[0][2] : m[3][1]) = c.first;
            EXPECT_EQ(m.isTridiagonal(), c.second) << c.first << (upper ? " upper" : " lower");
        }
    for (const auto& c : {std::make_tuple(0.0, 1e-5, true), {1.0, 1.000005, true}, {1.0, 1.00001, false}}) {
        Matrix m = getIdentityMatrix(3);
        m[1][2] = std::get<0>(c), m[2][1] = std::get<1>(c);
        EXPECT_EQ(m.isSymmetrical(), std::get<2>(c)) << std::get<1>(c);
    }
}

// Max norms (row sums for a matrix) a NaN keeps NaN, norm2, off below the diagonal, rounding, signs, u * v^T.
TEST(MatrixValues, NormsRoundingSignsAndTensorProduct) {
    const std::pair<double, double> cases[] = {
        {norm(Vec{1, -7, 3}), 7}, {norm(Vec{}) + norm(Matrix()) + off(Matrix()), 0}, {norm2({3, 4}), 25},
        {norm(fromRows({{1, -2}, {-3, 0.5}})), 3.5}, {off(fromRows({{9, 9, 9}, {3, 9, 9}, {0, 4, 9}})), 5},
        {norm(Vec{1, NAN, 5}), NAN}, {norm(Vec{NAN, 5}), NAN}, {norm(fromRows({{NAN, 0}, {5, 5}})), NAN},
        {round(1.23456, 2), 1.23}, {round(2.5, 0), 3}, {round(-0.5, 0), -1}, {round(0.125, 2), 0.13},
        {round(1250, -2), 1300}, {sign(0.0), 1}, {sign(-0.0), 1}, {sign(-1e-300), -1}, {sign(NAN), -1},
        {tensor_product({1, 2}, {3, 4})[0][1], 4}};
    for (const auto& c : cases)
        EXPECT_TRUE(c.first == c.second || (std::isnan(c.first) && std::isnan(c.second))) << &c - cases;
    Matrix m = fromRows({{1.005, -2.345}, {0.125, 3.14159}});
    m.doRound();  // 1.005 is stored just below 1.005
    EXPECT_EQ(std::make_pair(m[0], m[1]), std::make_pair(Vec{1.0, -2.35}, Vec{0.13, 3.14}));
}

// Factors, inverse and determinant fail alike; else P * A = L * U (shapes pinned by the log), exchanges counted.
TEST(LUPdecomposition, FactorsSingularPivotsAndDeterminantSigns) {
    const struct { Rows A; std::string thrown; int swaps; double det; } cases[] = {
        {{}, "none", 0, 1.0}, {{{-1e-8}}, "none", 0, -1e-8},  // the smallest pivot taken
        {{{1e-9}}, "MatrixIsSingular", -1, 0},  // below 1e-8; then the first pivot 0, the last
        {{{0, 0}, {0, 1}}, "MatrixIsSingular", -1, 0}, {{{1, 2}, {2, 4}}, "MatrixIsSingular", -1, 0},
        {{{0, 1}, {1, 0}}, "none", 1, -1.0},
        {{{2, 1}, {2, 3}}, "none", 0, 4.0},                      // equal candidates: the topmost row stays
        {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, "none", 2, -3.0},  // two exchanges, multipliers move with their rows
    };
    for (const auto& c : cases) {
        const Matrix A = fromRows(c.A);
        Matrix L, U, P;
        int swaps = -1;
        double det = 0;
        EXPECT_EQ(outcome([&] { LUPdecomposition(A, L, U, P, swaps); }) + outcome([&] { calcInverseMatrixWithLUP(A); })
                      + outcome([&] { det = calcDeterminantWithLUP(A); }), c.thrown + c.thrown + c.thrown) << c.det;
        EXPECT_NEAR(det, c.det, 1e-12 * std::fabs(c.det));
        EXPECT_TRUE(c.swaps < 0 || (swaps == c.swaps && norm(P * A - L * U) < 1e-15)) << c.det;
    }
}

// A well-conditioned matrix whose rows partial pivoting has to exchange back; a band solved by the sweep and LUP.
TEST(DirectSolvers, InverseResidualsAndTheSweepAgreeingWithLUP) {
    Matrix A = dominant(5, 1), T = dominant(8, 2, true);
    A.swapRows(0, 4), A.swapRows(1, 3);
    const Vec b = dominant(5, 3)[0], d = dominant(8, 4)[0];
    Vec x, y, z;
    outcome([&] { x = solveWithLUP(A, b), y = solveTridiagonalMatrixAlgo(T, d), z = solveWithLUP(T, d); });
    EXPECT_LT(norm(calcInverseMatrixWithLUP(A) * A - getIdentityMatrix(5)), 1e-14);
    EXPECT_LT(norm(A * x - b) + norm(T * y - d) + norm(y - z), 1e-13);
}

// P is not its own inverse, so P * L * U differs from A; a size mismatch surfaces from P*b, after the whole dump.
TEST(LUPsolve, CompleteLogAndWhatIsLoggedBeforeAnError) {
    Vec x;
    EXPECT_EQ(outcome([&] { x = solveWithLUP(fromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}), {1, 1, 1}); }),
              "noneLUP decomposition start.\n"
              "L:\n  1.000   0.000   0.000 \n  0.143   1.000   0.000 \n  0.571   0.500   1.000 \n"
              "U:\n  7.000   8.000  10.000 \n  0.000   0.857   1.571 \n  0.000   0.000  -0.500 \n"
              "P:\n  0.000   0.000   1.000 \n  1.000   0.000   0.000 \n  0.000   1.000   0.000 \n"
              "P * L * U:\n  4.000   5.000   6.000 \n  7.000   8.000  10.000 \n  1.000   2.000   3.000 \n"
              "LUP decomposition stop.\n\n");
    EXPECT_LT(norm(x - Vec{-1, 1, 0}), 1e-14);
    const std::string dump = outcome([] { solveWithLUP(getIdentityMatrix(2), {1, 1, 1}); });
    EXPECT_EQ(dump.substr(0, 21) + dump.substr(dump.size() - 25), "MatrixWrongDimensionsLUP decomposition stop.\n\n");
}

// L's size n decides; U is read only through its top-left n x n block.
TEST(LUPsolve, GivenFactorsOfOtherSizes) {
    const Rows I2 = {{1, 0}, {0, 1}}, I3 = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const struct { Rows L, U, P; Vec b; const char* thrown; Vec x; } cases[] = {
        {I2, I2, I2, {1}, "MatrixWrongDimensions", {}},
        {I2, {{2, 1, 1}, {0, 3, 1}, {0, 0, 4}}, I2, {1, 2}, "none", {1.0 / 6, 2.0 / 3}},
        {I3, {{2, 1}, {0, 3}}, I3, {1, 2, 3}, "MatrixIndexOutOfBound", {}},
        {I3, I3, I2, {1, 2}, "MatrixWrongDimensions", {}},  // P*b shorter than L
    };
    for (const auto& c : cases) {
        Vec x;
        EXPECT_EQ(outcome([&] { x = solveWithLUP(fromRows(c.L), fromRows(c.U), fromRows(c.P), c.b); }), c.thrown);
        EXPECT_LT(x.size() == c.x.size() ? norm(x - c.x) : INFINITY, 1e-16) << c.b.size();
    }
}

// Complete logs, the class thrown and what is logged before it; no pivoting and no zero test: a zero pivot flows on.
TEST(TridiagonalSweep, CompleteLogsFailuresAndZeroPivot) {
    const std::string start = "Tridiagonal matrix algorithm start.\n", stop = "Tridiagonal matrix algorithm stop.\n\n";
    const struct { Rows A; Vec d; std::string thrownAndLog; } cases[] = {
        {{{2, 1, 0}, {1, 2, 1}, {0, 1, 2}}, {4, 8, 8}, "none" + start + "P[1] = -0.5     Q[1] = 2\n"
         "P[2] = -0.666667     Q[2] = 4\nQ[3] = 3\n\nresult[1] = 1\nresult[2] = 2\nresult[3] = 3\n" + stop},
        {{{4}}, {2}, "none" + start + "Q[1] = 0.5\n\nresult[1] = 0.5\n" + stop},
        {{{2, 1, 5}, {1, 2, 1}, {0, 1, 2}}, {1, 2}, "MatrixWrongDimensions"},  // checked first
        {{{2, 1, 0}, {1, 2, 1}, {7, 1, 2}}, {1, 2, 3}, "MatrixIsNotTridiagonal" + start},
        {{}, {}, "MatrixIndexOutOfBound" + start},
    };
    for (const auto& c : cases)
        EXPECT_EQ(outcome([&] { solveTridiagonalMatrixAlgo(fromRows(c.A), c.d); }), c.thrownAndLog);
    const std::string zeroPivot = outcome([] { solveTridiagonalMatrixAlgo(fromRows({{0, 1}, {1, 1}}), {1, 1}); });
    EXPECT_EQ(zeroPivot.substr(0, 4 + start.size() + 27), "none" + start + "P[1] = -inf     Q[1] = inf\n");
}

// Iterations of Seidel's method and simple iterations (0: not run); the estimate bounds the error, so norm(A) * eps
// the residual. A size mismatch throws before anything is logged.
TEST(IterativeSolvers, IterationCountsResidualsAndSizeErrors) {
    const struct { Rows A; Vec b; double eps; int seidel, simple; } cases[] = {
        {{{2, 0, 0}, {0, -4, 0}, {0, 0, 8}}, {1, 2, 4}, 1e-9, 1, 1},  // B is zero: so are the factor and estimate
        // B = [[0, -0.5], [0, 0]]: factors 1, first change 3; an estimate equal to eps does not stop, one above does.
        {{{2, 1}, {0, 2}}, {2, 4}, 3.0, 2, 2},
        {{{2, 1}, {0, 2}}, {2, 4}, std::nextafter(3.0, 4.0), 1, 1},
        // norm(B) = 1.2 >= 1: the factor is 1, the estimate the plain change; simple iterations diverge.
        {{{1, 0.6, 0.6}, {0.6, 1, 0.6}, {0.6, 0.6, 1}}, {1, 2, 3}, 1e-10, 31, 0},
        // norm(B) = 2 and B nilpotent: the plain change 2, then 0, stops simple iterations at the second step.
        {{{1, 2}, {0, 1}}, {3, 1}, 1.5, 0, 2},
        // norm(B) = 0.6: the factor 1.5 makes the first change 0.6 an estimate of 0.9, above eps.
        {{{1, 0.6}, {0, 1}}, {3, 1}, 0.75, 0, 2},
    };
    for (const auto& c : cases)
        for (const auto& [solve, count] : {std::make_pair(solveSiedel, c.seidel), {solveSimpleIterations, c.simple}}) {
            const Matrix A = fromRows(c.A);
            Vec x;
            int iterations = -1;
            if (count > 0) outcome([&] { x = solve(A, c.b, c.eps, iterations); });
            EXPECT_TRUE(count == 0 || (iterations == count && norm(A * x - c.b) < norm(A) * c.eps)) << &c - cases;
        }
    for (const auto solve : {solveSiedel, solveSimpleIterations})
        for (const Rows& bad : {Rows{{1}}, Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}})
            EXPECT_EQ(outcome([&] { int k; solve(fromRows(bad), {1, 2}, 1e-6, k); }), "MatrixWrongDimensions");
}

// Seidel: q = 1/3, factor = norm(Bu) / (1 - q) = 0.25 / (2/3) = 0.375; simple iterations: q / (1 - q) = 0.5.
TEST(IterativeSolvers, CompleteLogs) {
    EXPECT_EQ(outcome([] { int k; solveSiedel(fromRows({{4, 1}, {1, 3}}), {1, 2}, 0.2, k); }),
              "noneSeidel method start.\nIteration: 1\nResult: -0.25 0.75\nEpsilon: 0.46875\n\n"
              "Iteration: 2\nResult: 0.0625 0.645833\nEpsilon: 0.117187\n\n"
              "Seidel method stop (target accuracy achieved).\n\n");
    EXPECT_EQ(outcome([] { int k; solveSimpleIterations(fromRows({{4, 1}, {1, 3}}), {1, 2}, 0.3, k); }),
              "noneSimple iterations method start.\nIteration: 1\nResult: -0.25 0.333333\nEpsilon: 0.833333\n\n"
              "Iteration: 2\nResult: 0.166667 0.75\nEpsilon: 0.208333\n\n"
              "Simple iterations method stop (target accuracy achieved).\n\n");
}

// One run of the QR algorithm (roots) or of the Jacobi method (values, V), the class it throws and its log.
struct EigenRun {
    Complexes roots;
    Vec values{42};  // stays as it is when a method fails
    Matrix V;
    int iterations = -1;
    std::string log;
    EigenRun(bool jacobi, const Matrix& A, double eps, bool toTheLimit = false)
        : log(outcome([&] { jacobi ? getEigenvaluesWithJacobi(A, eps, values, V, iterations)
                                     : getEigenvaluesWithQR(A, eps, roots, iterations); }, toTheLimit)) {}
};
enum { kQR = false, kJacobi = true };

// Q orthogonal, R upper, Q * R = A; the column norm gets the sign of the diagonal element, -0.0 counting as +.
TEST(QRdecomposition, QIsOrthogonalRUpperAndTheirProductA) {
    for (const auto& c : {std::make_pair(0.0, -1.0), {-0.0, -1.0}, {-1e-300, 1.0}}) {
        const Matrix A = fromRows({{c.first, 1}, {1, 0}});
        Matrix Q, R;
        QRdecomposition(A, Q, R);
        EXPECT_NEAR(R[0][0], c.second, 1e-15) << c.first;
        EXPECT_LT(norm(Q * R - A) + norm(Q * Q.transposed() - getIdentityMatrix(2)) + std::fabs(R[1][0]), 1e-15);
    }
}

// Unshifted QR: eigenvalues by decreasing modulus; it stops when both estimates are below eps, the earliest at the
// second iteration (the first has no earlier roots to compare with).
TEST(QRalgorithm, AgreesWithKnownEigenvalues) {
    const double s33 = std::sqrt(33.0), s7 = std::sqrt(7.0) / 2;
    const struct { Rows A; double eps; Complexes roots; int iterations; } cases[] = {
        {{{2, 0, 0}, {0, -5, 0}, {0, 0, 0.5}}, 1e-12, {2.0, -5.0, 0.5}, 2},
        {{{1, 2}, {3, 4}}, 1e-10, {(5 + s33) / 2, (5 - s33) / 2}, 0},  // a block with real roots
        // Both roots of a complex block must have settled before the run stops.
        {{{-1, -3, 3}, {-2, -1, 4}, {4, -1, -4}}, 1e-3, {-7.0, {0.5, -s7}, {0.5, s7}}, 0},
    };
    for (const auto& c : cases) {
        const EigenRun r(kQR, fromRows(c.A), c.eps);
        ASSERT_EQ(r.roots.size(), c.roots.size());
        for (std::size_t i = 0; i < c.roots.size(); ++i)
            EXPECT_LT(std::abs(r.roots[i] - c.roots[i]), 100 * c.eps) << c.roots.size() << ": " << i;
        EXPECT_TRUE(c.iterations == 0 || r.iterations == c.iterations) << r.iterations;
    }
}

// A 1 x 1 matrix in full; a rotation's complex pair has no estimate at the first iteration.
TEST(QRalgorithm, CompleteLogs) {
    const std::string iteration = "Matrix:\n  5.000000 \nRoots of characteristic polynomial:\n5\n"
                                  "Epsilon (for real roots): 0\n\n";
    EXPECT_EQ(EigenRun(kQR, fromRows({{5}}), 1e-3).log,
              "noneQR algorithm start.\nQ:\n  1.000000 \nR:\n  5.000000 \nQ * R:\n  5.000000 \n"
              "Q * Q^T:\n  1.000000 \n\nIteration: 1\n" + iteration + "Iteration: 2\n" + iteration +
              "QR algorithm stop (target accuracy achieved).\n\n");
    const std::string rotation = EigenRun(kQR, fromRows({{0, -1}, {1, 0}}), 1e-6).log;
    EXPECT_NE(rotation.find("0 + i*(-1)\n0 + i*(1)\nEpsilon (for complex roots): (none)\n\nIteration: 2\n"),
              std::string::npos);
    EXPECT_EQ(rotation.substr(rotation.size() - 89),
              "0 + i*(1)\nEpsilon (for complex roots): 0\n\nQR algorithm stop (target accuracy achieved).\n\n");
}

// Small cases in full, the symmetry check, and A * V = V * diag(values) with V orthogonal.
TEST(JacobiMethod, CompleteLogsSymmetryCheckAndEigenvectors) {
    const EigenRun one(kJacobi, fromRows({{5}}), 1e-9), diagonal(kJacobi, fromRows({{1, 0}, {0, 3}}), 1e-9);
    EXPECT_EQ(one.log, "noneJacobi method start.\nJacobi method stop (target accuracy achieved).\n\n");
    // Nothing to annihilate in the diagonal matrix, but one rotation by 0 is made.
    EXPECT_EQ(std::make_tuple(one.values, one.iterations, diagonal.values, diagonal.iterations),
              std::make_tuple(Vec{5}, 0, Vec{1, 3}, 1));
    // Equal diagonal elements: an infinite quotient and a quarter turn.
    EXPECT_EQ(EigenRun(kJacobi, fromRows({{2, 1}, {1, 2}}), 1e-9).log,
              "noneJacobi method start.\nIteration: 1\nAngle: 0.785398\nEpsilon: 2.22045e-16\n"
              "Matrix:\n  3.000000   0.000000 \n  0.000000   1.000000 \n\n"
              "Jacobi method stop (target accuracy achieved).\n\n");
    const EigenRun r(kJacobi, fromRows({{1, 2}, {2.001, 1}}), 1e-6);
    EXPECT_TRUE(r.log == "MatrixIsNotSymmetricalJacobi method start.\n" && r.values == Vec{42} && r.iterations == -1);
    const Matrix B = dominant(5, 1), A = B + B.transposed();
    const EigenRun s(kJacobi, A, 1e-12);
    Matrix lambda(5);
    for (int k = 0; k < 5; ++k) lambda[k][k] = s.values[k];
    EXPECT_LT(norm(A * s.V - s.V * lambda) + norm(s.V * s.V.transposed() - getIdentityMatrix(5)), 1e-11);
}

// Every iterative method gives up after 100001 iterations without writing results: a zero diagonal element makes the
// solvers' estimates NaN, eps = 0 is never above QR's real-root estimate 0, a negative eps never above off(A).
TEST(IterationLimit, EveryMethodStopsAfter100001Iterations) {
    const Matrix Z = fromRows({{0, 1}, {1, 2}});
    const EigenRun qr(kQR, fromRows({{2}}), 0.0, true), jacobi(kJacobi, fromRows({{2, 1}, {1, 2}}), -1.0, true);
    int iterations = -1;
    for (const std::string& log : {outcome([&] { solveSiedel(Z, {1, 1}, 1e-6, iterations); }, true),
                                   outcome([&] { solveSimpleIterations(Z, {1, 1}, 1e-6, iterations); }, true),
                                   qr.log, jacobi.log})
        EXPECT_EQ(log.substr(0, 21) + log.substr(log.rfind("Iteration: "), 18),
                  "MaxItersCountAchievedIteration: 100001\n");
    EXPECT_TRUE(iterations == -1 && qr.roots.empty() && qr.iterations == -1 && jacobi.values == Vec{42} &&
                jacobi.iterations == -1);
}
