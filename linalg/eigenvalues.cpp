#include "linalg/eigenvalues.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <string>

#include "errors/errors.h"

namespace {

const int kMaxIterations = 100001;

// Each row with every element as printf's "%10.6lf ".
void dumpMatrix(const Matrix& M) {
    logRows(M, "%10.6lf ");
}

void logComplex(const std::complex<double>& z) {
    std::cerr << z.real() << " + i*(" << z.imag() << ")" << std::endl;
}

// Running maximum that a NaN takes over for good, so a NaN never lets the
// method stop.
void raiseTo(double& m, double a) {
    if (std::isnan(m)) return;
    if (!(a <= m)) m = a;
}

}  // namespace

void QRdecomposition(const Matrix& A, Matrix& Q, Matrix& R) {
    Matrix W = A;  // copied first: A may be one of the outputs
    const int n = W.dimension();
    Q = getIdentityMatrix(n);
    std::vector<double> v(static_cast<std::size_t>(n), 0.0);
    for (int k = 0; k < n - 1; ++k) {
        for (int i = 0; i < k; ++i) v[i] = 0.0;
        double s = 0.0;
        for (int i = k; i < n; ++i) s += W[i][k] * W[i][k];
        const double columnNorm = std::sqrt(s);
        // Adding the norm with the sign of the diagonal element avoids
        // cancellation; -0.0 counts as non-negative.
        v[k] = W[k][k] + static_cast<double>(sign(W[k][k])) * columnNorm;
        for (int i = k + 1; i < n; ++i) v[i] = W[i][k];
        const double beta = 2.0 / dotProduct(v, v);
        const Matrix H = getIdentityMatrix(n) - tensor_product(v, v) * beta;
        Q = Q * H;
        W = H * W;
    }
    R = W;
}

void getEigenvaluesWithQR(const Matrix& A, const double& eps,
                          std::vector<std::complex<double>>& values, int& iterations) {
    std::cerr << "QR algorithm start." << std::endl;

    Matrix Q, R;
    QRdecomposition(A, Q, R);
    std::cerr << "Q:" << std::endl;
    dumpMatrix(Q);
    std::cerr << "R:" << std::endl;
    dumpMatrix(R);
    std::cerr << "Q * R:" << std::endl;
    dumpMatrix(Q * R);
    std::cerr << "Q * Q^T:" << std::endl;
    dumpMatrix(Q * Q.transposed());
    std::cerr << std::endl;

    Matrix W = A;
    const int n = W.dimension();
    std::vector<std::complex<double>> roots(static_cast<std::size_t>(n));
    std::vector<std::complex<double>> previous(static_cast<std::size_t>(n));
    for (int counter = 0;; ++counter) {
        QRdecomposition(W, Q, R);
        W = R * Q;
        std::cerr << "Iteration: " << counter + 1 << std::endl;
        std::cerr << "Matrix:" << std::endl;
        dumpMatrix(W);
        std::cerr << "Roots of characteristic polynomial:" << std::endl;

        double s = 0.0;
        double ec = -1.0;
        bool realSeen = false;
        bool complexSeen = false;
        for (int i = 0; i < n;) {
            if (i < n - 1 && std::fabs(W[i + 1][i]) > 1e-8) {
                // Rows i and i+1 form a 2 x 2 block: its eigenvalues are the
                // roots of t^2 + b*t + c. Complex arithmetic from the start, so
                // the signs of zeros decide which root of D is taken first.
                const std::complex<double> b = -W[i][i] - W[i + 1][i + 1];
                const std::complex<double> c = W[i][i] * W[i + 1][i + 1] - W[i + 1][i] * W[i][i + 1];
                const std::complex<double> D = b * b - 4.0 * c;
                const std::complex<double> r = std::sqrt(D);
                roots[i] = (r - b) / 2.0;
                roots[i + 1] = (-b - r) / 2.0;
                logComplex(roots[i]);
                logComplex(roots[i + 1]);
                if (counter > 0) {
                    raiseTo(ec, std::abs(roots[i] - previous[i]));
                    raiseTo(ec, std::abs(roots[i + 1] - previous[i + 1]));
                }
                complexSeen = true;
                i += 2;
            } else {
                roots[i] = std::complex<double>(W[i][i], 0.0);
                std::cerr << W[i][i] << std::endl;
                for (int j = i + 1; j < n; ++j) s += W[j][i] * W[j][i];
                realSeen = true;
                i += 1;
            }
        }
        const double er = std::sqrt(s);

        if (realSeen) std::cerr << "Epsilon (for real roots): " << er << std::endl;
        if (complexSeen) {
            std::cerr << "Epsilon (for complex roots): ";
            if (counter == 0)
                std::cerr << "(none)" << std::endl;
            else
                std::cerr << ec << std::endl;
        }
        std::cerr << std::endl;

        // The first iteration has nothing to compare the complex roots with,
        // so it never stops. Without complex blocks ec stays -1 and only er
        // decides.
        if (counter > 0 && eps > er && eps > ec) {
            iterations = counter + 1;
            std::cerr << "QR algorithm stop (target accuracy achieved)." << std::endl << std::endl;
            values = roots;
            return;
        }
        if (counter + 1 == kMaxIterations) throw MaxItersCountAchieved();
        previous = roots;
    }
}

void getEigenvaluesWithJacobi(const Matrix& A, const double& eps, std::vector<double>& values,
                              Matrix& V, int& iterations) {
    std::cerr << "Jacobi method start." << std::endl;
    if (!A.isSymmetrical()) throw MatrixIsNotSymmetrical();

    Matrix W = A;  // copied first: A may be V
    const int n = W.dimension();
    Matrix R = getIdentityMatrix(n);
    V = getIdentityMatrix(n);
    int counter = 0;
    while (n >= 1) {
        // The first largest off-diagonal element in row order is annihilated.
        double best = -1.0;
        int p = -1;
        int q = -1;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                if (j != i && std::fabs(W[i][j]) > best) {
                    best = std::fabs(W[i][j]);
                    p = i;
                    q = j;
                }
        if (p == -1) break;

        // Equal diagonal elements give an infinite quotient and phi = +-pi/2.
        const double phi = std::atan((W[p][q] + W[p][q]) / (W[p][p] - W[q][q]));
        const double theta = phi * 0.5;
        const double c = std::cos(theta);
        const double s = std::sin(theta);
        R[p][p] = c;
        R[q][q] = c;
        R[q][p] = s;
        R[p][q] = -s;
        W = (R.transposed() * W) * R;
        V = V * R;
        R[p][p] = 1.0;
        R[q][q] = 1.0;
        R[p][q] = 0.0;
        R[q][p] = 0.0;

        const double e = off(W);
        ++counter;
        std::cerr << "Iteration: " << counter << std::endl;
        std::cerr << "Angle: " << theta << std::endl;
        std::cerr << "Epsilon: " << e << std::endl;
        std::cerr << "Matrix:" << std::endl;
        dumpMatrix(W);
        std::cerr << std::endl;

        if (eps > e) break;
        if (counter == kMaxIterations) throw MaxItersCountAchieved();
    }

    iterations = counter;
    std::cerr << "Jacobi method stop (target accuracy achieved)." << std::endl << std::endl;
    values.assign(static_cast<std::size_t>(n), 0.0);
    for (int i = 0; i < n; ++i) values[i] = W[i][i];
}
