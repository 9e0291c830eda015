#include "zorv/math/solvers.h"

#include <algorithm>
#include <cmath>

#include "zorv/math/matrix.h"

namespace {

constexpr double kSingular = 1e-10;

/// The line below or at j whose element in column j is greatest in relation to the sum of its line from column j on;
/// the first of equals. 0 when there is none, or when the rest of any line vanishes.
int FindPivotLine(const ZoMatrix& a, int j) {
    constexpr int kLinesAtOnce = 4;
    const int n = a.rows;
    double greatest = 0.0;
    int pivot = 0;
    const auto take = [&](int r, double sum) {
        if (sum < kSingular) return false;
        const double quotient = std::fabs(a[r][j]) / sum;
        if (quotient > greatest) {
            greatest = quotient;
            pivot = r;
        }
        return true;
    };
    int r = j;
    // Four independent sums hide the latency of the additions; each keeps its own order.
    for (; r + kLinesAtOnce - 1 <= n; r += kLinesAtOnce) {
        const double* line[kLinesAtOnce] = {a[r], a[r + 1], a[r + 2], a[r + 3]};
        double sum[kLinesAtOnce] = {};
        for (int c = j; c <= n; ++c) {
            for (int i = 0; i < kLinesAtOnce; ++i)
                sum[i] += std::fabs(line[i][c]);
        }
        for (int i = 0; i < kLinesAtOnce; ++i) {
            if (!take(r + i, sum[i])) return 0;
        }
    }
    for (; r <= n; ++r) {
        double sum = 0.0;
        for (int c = j; c <= n; ++c)
            sum += std::fabs(a[r][c]);
        if (!take(r, sum)) return 0;
    }
    return greatest < kSingular ? 0 : pivot;
}

/// Clears column j below the diagonal, keeps the multipliers there and does the same to the right-hand sides, if any.
void EliminateColumn(ZoMatrix& a, ZoMatrix* b, int j) {
    const double pivot = a[j][j];
    for (int r = j + 1; r <= a.rows; ++r) {
        const double factor = -a[r][j] / pivot;
        a.AddLines(r, j, j, factor);
        if (b) b->AddLines(r, j, 1, factor);
        a[r][j] = -factor;
    }
}

}  // namespace

int GaussLoeserRelMax(ZoMatrix& a, ZoMatrix& b) {
    const int n = a.rows;
    for (int j = 1; j <= n; ++j) {
        const int pivot = FindPivotLine(a, j);
        if (pivot == 0) return 1;
        if (pivot != j) {
            a.SwapLines(j, pivot);
            b.SwapLines(j, pivot);
        }
        EliminateColumn(a, &b, j);
    }
    if (n < 1 || std::fabs(a[n][n]) < kSingular) return 1;
    return DreieckLoeserOben(a, b);
}

int DreieckLoeserOben(ZoMatrix& u, ZoMatrix& b) {
    constexpr int kColumnsAtOnce = 8;
    const int n = u.rows;
    for (int i = n; i >= 1; --i) {
        double* line = b[i];
        for (int first = 1; first <= b.cols; first += kColumnsAtOnce) {
            const int count = std::min(kColumnsAtOnce, b.cols - first + 1);
            double sum[kColumnsAtOnce] = {};
            for (int k = i + 1; k <= n; ++k) {
                const double factor = u[i][k];
                const double* solved = b[k] + first;
                for (int c = 0; c < count; ++c)
                    sum[c] += factor * solved[c];
            }
            for (int c = 0; c < count; ++c)
                line[first + c] = (line[first + c] - sum[c]) / u[i][i];
        }
    }
    return 0;
}

double Det(const ZoMatrix& matrix) {
    ZoMatrix a(matrix);
    const int n = a.rows;
    double product = 1.0;
    double sign = 1.0;
    for (int j = 1; j < n; ++j) {
        const int pivot = FindPivotLine(a, j);
        if (pivot == 0) return 0.0;
        if (pivot != j) {
            a.SwapLines(j, pivot);
            sign = -sign;
        }
        product *= a[j][j];
        EliminateColumn(a, nullptr, j);
    }
    return n >= 1 && std::fabs(a[n][n]) >= kSingular ? sign * product * a[n][n] : 0.0;
}

int ZoMatrix::GaussLoeserRelMax(ZoMatrix& b) {
    return ::GaussLoeserRelMax(*this, b);
}

int ZoMatrix::DreieckLoeserOben(ZoMatrix& b) {
    return ::DreieckLoeserOben(*this, b);
}

double ZoMatrix::Det() const {
    return ::Det(*this);
}

ZoMatrix& ZoMatrix::Invert(int* status) {
    ZoMatrix copy(*this);
    SetIdent();
    const int result = ::GaussLoeserRelMax(copy, *this);
    if (status) *status = result;
    return *this;
}

double ZoMatrix::Cholesky(ZoVector& x) {
    constexpr int kColumnsAtOnce = 8;
    ZoMatrix& a = *this;
    const int n = (cols - 1) / 2;
    for (int i = 1; i <= n; ++i) {
        double squares = 0.0;
        for (int k = 1; k < i; ++k)
            squares += a[k][i] * a[k][i];
        const double rest = a[i][i] - squares;
        if (!(rest > 0.0)) return 0.0;
        const double diagonal = std::sqrt(rest);
        a[i][i] = diagonal;
        for (int first = i + 1; first <= cols; first += kColumnsAtOnce) {
            const int count = std::min(kColumnsAtOnce, cols - first + 1);
            double sum[kColumnsAtOnce] = {};
            for (int k = 1; k < i; ++k) {
                const double factor = a[k][i];
                const double* line = a[k] + first;
                for (int j = 0; j < count; ++j)
                    sum[j] += factor * line[j];
            }
            double* line = a[i] + first;
            for (int j = 0; j < count; ++j)
                line[j] = (line[j] - sum[j]) / diagonal;
        }
    }

    double explained = 0.0;
    for (int i = 1; i <= n; ++i) {
        double sum = 0.0;
        for (int k = 1; k <= n; ++k)
            sum += a[k][n + 1 + i] * a[k][n + 1];
        x[i] = sum;
        explained += a[i][n + 1] * a[i][n + 1];
    }
    const double residual = a[n + 1][n + 1] - explained;
    if (!(residual > 0.0)) return 0.0;
    a[n + 1][n + 1] = explained / residual;
    return residual;
}

double ZoMatrix::Sarrus() const {
    const double* a = data;
    return a[0] * a[4] * a[8] + a[1] * a[5] * a[6] + a[2] * a[3] * a[7] - a[2] * a[4] * a[6] - a[0] * a[5] * a[7] -
           a[1] * a[3] * a[8];
}

ZoVector ZoMatrix::Cramer(const ZoVector& b) const {
    const double determinant = Sarrus();
    ZoVector x(3);
    for (int i = 1; i <= 3; ++i) {
        ZoMatrix replaced(*this);
        replaced.SetRow(i, b);
        x[i] = replaced.Sarrus() / determinant;
    }
    return x;
}
