// Small products and point maps beside the same arithmetic on plain arrays; elimination and Cholesky beside Eigen's
// PartialPivLU and LLT. Every run works on a fresh copy of its system, the floors too.

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <Eigen/Cholesky>
#include <Eigen/LU>
#include <benchmark/benchmark.h>

#include "zorv/zorv.h"

namespace {

constexpr int kPoints = 1000;
constexpr double kAgreement = 1e-9;

std::vector<double> RandomValues(std::size_t count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    std::vector<double> values(count);
    std::generate(values.begin(), values.end(), [&] { return uniform(random); });
    return values;
}

template <int n>
inline void MultiplyPlain(const double* a, const double* b, double* result) {
    for (int r = 0; r < n; ++r) {
        for (int c = 0; c < n; ++c) {
            double sum = 0.0;
            for (int k = 0; k < n; ++k)
                sum += a[r * n + k] * b[k * n + c];
            result[r * n + c] = sum;
        }
    }
}

template <int n>
void ProductFloor(benchmark::State& state) {
    auto a = RandomValues(n * n);
    auto b = RandomValues(2 * n * n);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(b.data());
        double result[n * n];
        MultiplyPlain<n>(a.data(), b.data(), result);
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
    }
}

template <int n>
void Product(benchmark::State& state) {
    const auto plainA = RandomValues(n * n);
    const auto plainB = RandomValues(2 * n * n);
    ZoMatrix a(plainA.data(), n, n);
    ZoMatrix b(plainB.data(), n, n);
    double expected[n * n];
    MultiplyPlain<n>(plainA.data(), plainB.data(), expected);
    const ZoMatrix product = a * b;
    if (!std::equal(expected, expected + n * n, product[1] + 1)) return state.SkipWithError("wrong product");
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        ZoMatrix result = a * b;
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
    }
}

// A perspective map whose denominator stays near 10.
std::vector<double> PerspectiveMap() {
    auto map = RandomValues(16);
    map[15] = 10.0;
    return map;
}

inline bool MapPlain(const double* m, double* p) {
    const double w = m[12] * p[0] + m[13] * p[1] + m[14] * p[2] + m[15];
    if (std::fabs(w) < 1e-10) return false;
    const double x = (m[0] * p[0] + m[1] * p[1] + m[2] * p[2] + m[3]) / w;
    const double y = (m[4] * p[0] + m[5] * p[1] + m[6] * p[2] + m[7]) / w;
    p[2] = (m[8] * p[0] + m[9] * p[1] + m[10] * p[2] + m[11]) / w;
    p[0] = x;
    p[1] = y;
    return true;
}

void PointMapFloor(benchmark::State& state) {
    const auto map = PerspectiveMap();
    const auto start = RandomValues(3 * kPoints);
    auto points = start;
    for (auto _ : state) {
        points = start;
        for (int i = 0; i < kPoints; ++i)
            MapPlain(map.data(), &points[3 * i]);
        benchmark::DoNotOptimize(points.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void PointMap(benchmark::State& state) {
    const auto map = PerspectiveMap();
    const auto start = RandomValues(3 * kPoints);
    const ZoMatrix m(map.data(), 4, 4);
    auto expected = start;
    auto points = start;
    MapPlain(map.data(), expected.data());
    m.PTrans3D(&points[0], &points[1], &points[2]);
    if (points != expected) return state.SkipWithError("wrong map");
    for (auto _ : state) {
        points = start;
        for (int i = 0; i < kPoints; ++i)
            m.PTrans3D(&points[3 * i], &points[3 * i + 1], &points[3 * i + 2]);
        benchmark::DoNotOptimize(points.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void AccumulateFloor(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto row = RandomValues(n);
    const int cols = 2 * n - 1;
    std::vector<double> sums(static_cast<std::size_t>(n * cols));
    for (auto _ : state) {
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                sums[i * cols + j] += row[i] * row[j];
        }
        benchmark::ClobberMemory();
    }
}

void Accumulate(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto row = RandomValues(n);
    ZoVector v(n);
    std::copy(row.begin(), row.end(), &v[1]);
    ZoMatrix sums(n, 2 * n - 1);
    for (auto _ : state) {
        sums.CalcNGLAN(v);
        benchmark::ClobberMemory();
    }
}

using Dense = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

struct System {
    explicit System(int n) : matrix(n, n), right(n) {
        const auto values = RandomValues(static_cast<std::size_t>(n) * (n + 1));
        for (int r = 0; r < n; ++r) {
            for (int c = 0; c < n; ++c)
                matrix(r, c) = values[static_cast<std::size_t>(r * n + c)];
            matrix(r, r) += 4.0;
            right(r) = values[static_cast<std::size_t>(n * n + r)];
        }
    }
    /// A positive definite matrix of the same size.
    Eigen::MatrixXd Normal() const { return matrix.transpose() * matrix; }

    Dense matrix;
    Eigen::VectorXd right;
};

void EliminationEigen(benchmark::State& state) {
    const System system(static_cast<int>(state.range(0)));
    const Eigen::MatrixXd a = system.matrix;
    for (auto _ : state) {
        Eigen::VectorXd x = a.partialPivLu().solve(system.right);
        benchmark::DoNotOptimize(x.data());
        benchmark::ClobberMemory();
    }
}

void Elimination(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const System system(n);
    const ZoMatrix a(system.matrix.data(), n, n);
    const ZoMatrix b(system.right.data(), n, 1);
    const Eigen::VectorXd expected = system.matrix.partialPivLu().solve(system.right);
    ZoMatrix solved(b);
    ZoMatrix(a).GaussLoeserRelMax(solved);
    for (int i = 1; i <= n; ++i) {
        if (std::fabs(solved[i][1] - expected(i - 1)) > kAgreement) return state.SkipWithError("wrong solution");
    }
    for (auto _ : state) {
        ZoMatrix left(a);
        ZoMatrix x(b);
        left.GaussLoeserRelMax(x);
        benchmark::DoNotOptimize(x);
        benchmark::ClobberMemory();
    }
}

void CholeskyEigen(benchmark::State& state) {
    const System system(static_cast<int>(state.range(0)));
    const Eigen::MatrixXd a = system.Normal();
    for (auto _ : state) {
        Eigen::VectorXd x = a.llt().solve(system.right);
        benchmark::DoNotOptimize(x.data());
        benchmark::ClobberMemory();
    }
}

// What ZoMatrix::Cholesky leaves behind as well: the inverse of the factor.
void CholeskyEigenWithInverse(benchmark::State& state) {
    const System system(static_cast<int>(state.range(0)));
    const auto n = system.matrix.rows();
    const Eigen::MatrixXd a = system.Normal();
    for (auto _ : state) {
        const Eigen::LLT<Eigen::MatrixXd> llt(a);
        Eigen::VectorXd x = llt.solve(system.right);
        Eigen::MatrixXd inverse = llt.matrixL().solve(Eigen::MatrixXd::Identity(n, n));
        benchmark::DoNotOptimize(x.data());
        benchmark::DoNotOptimize(inverse.data());
        benchmark::ClobberMemory();
    }
}

void Cholesky(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const System system(n);
    const Eigen::MatrixXd normal = system.Normal();
    const Eigen::VectorXd expected = normal.llt().solve(system.right);
    ZoMatrix augmented(n + 1, 2 * n + 1);
    for (int r = 1; r <= n; ++r) {
        for (int c = 1; c <= n; ++c)
            augmented[r][c] = normal(r - 1, c - 1);
        augmented[r][n + 1] = system.right(r - 1);
        augmented[r][n + 1 + r] = 1.0;
    }
    augmented[n + 1][n + 1] = 1e6;
    ZoVector x(n);
    ZoMatrix(augmented).Cholesky(x);
    for (int i = 1; i <= n; ++i) {
        if (std::fabs(x[i] - expected(i - 1)) > kAgreement) return state.SkipWithError("wrong solution");
    }
    for (auto _ : state) {
        ZoMatrix a(augmented);
        double residual = a.Cholesky(x);
        benchmark::DoNotOptimize(residual);
        benchmark::DoNotOptimize(x);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(ProductFloor<3>);
BENCHMARK(Product<3>);
BENCHMARK(ProductFloor<4>);
BENCHMARK(Product<4>);
BENCHMARK(PointMapFloor);
BENCHMARK(PointMap);
BENCHMARK(AccumulateFloor)->Arg(4)->Arg(9)->Arg(20);
BENCHMARK(Accumulate)->Arg(4)->Arg(9)->Arg(20);
BENCHMARK(EliminationEigen)->Arg(3)->Arg(6)->Arg(12)->Arg(20)->Arg(40);
BENCHMARK(Elimination)->Arg(3)->Arg(6)->Arg(12)->Arg(20)->Arg(40);
BENCHMARK(CholeskyEigen)->Arg(3)->Arg(6)->Arg(12)->Arg(20)->Arg(40);
BENCHMARK(CholeskyEigenWithInverse)->Arg(3)->Arg(6)->Arg(12)->Arg(20)->Arg(40);
BENCHMARK(Cholesky)->Arg(3)->Arg(6)->Arg(12)->Arg(20)->Arg(40);

}  // namespace
