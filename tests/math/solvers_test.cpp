#include "zorv/math/solvers.h"

#include <cmath>
#include <limits>
#include <random>

#include "tests/math/matrix_compare.h"
#include <gtest/gtest.h>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A few roundings of numbers of the size 1.
constexpr double kRounding = 1e-14;

ZoMatrix Square(const std::vector<double>& values) {
    const int n = static_cast<int>(std::lround(std::sqrt(static_cast<double>(values.size()))));
    return ZoMatrix(values.data(), n, n);
}

// Solutions worked out in rational arithmetic outside of this program.
TEST(Solvers, SolvesForSeveralRightHandSides) {
    ZoMatrix a = Square({2, -1, 0, 3, 4, 0, 5, -2, -3, 7, 1, 1, 1, 2, -6, 4});
    const double right[] = {1, 0, 0, 2, -4, 1, 3, 5};
    const double exact[] = {223 / 355., 403 / 355., -1 / 5., 4 / 5., -40 / 71., -50 / 71., -54 / 355., -174 / 355.};
    EXPECT_NEAR(a.Det(), 710.0, 710.0 * kRounding);
    ZoMatrix b(right, 4, 2);
    int status = 1;
    EXPECT_LT(LargestDifference(ZoMatrix(a).Invert(&status) * b, ZoMatrix(exact, 4, 2)), kRounding);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(a.GaussLoeserRelMax(b), 0);
    EXPECT_LT(LargestDifference(b, ZoMatrix(exact, 4, 2)), kRounding);

    const ZoMatrix cramer = Square({2, 5, -1, 0, 3, 4, 7, -2, 6});
    EXPECT_EQ(cramer.Sarrus(), 213.0);
    const ZoVector x = cramer.Cramer(ZoVector(3.0, -1.0, 10.0));
    EXPECT_LT((x - ZoVector(112 / 71., -5 / 71., -14 / 71.)).Abs(), kRounding);
}

TEST(Solvers, KeepsTheTriangleAndTheMultipliers) {
    // Relative sizes 1/10, 1/2, 1/2 in the first column: the second line leads, being the first of the greatest. Then
    // (4.5, 5.5) with 0.45 and (2, -2) with 0.5: the third line comes next.
    ZoMatrix a = Square({1, 4, 5, -2, 1, 1, 4, 0, -4});
    ZoMatrix b(3, 1);
    EXPECT_EQ(GaussLoeserRelMax(a, b), 0);
    EXPECT_LT(LargestDifference(a, Square({-2, 1, 1, -2, 2, -2, -0.5, 2.25, 10})), kRounding);
}

TEST(Solvers, TellsSingularMatricesFromExchanges) {
    // The second line sums below the limit, though the first gives a pivot.
    ZoMatrix a = Square({1, 0, 0, 0, 9e-11, 0, 0, 0, 1});
    ZoMatrix b(3, 1);
    EXPECT_EQ(GaussLoeserRelMax(a, b), 1);
    for (const auto& values : std::vector<std::vector<double>>{{1, 2, 2, 4}, {0, 0, 3, 4}, {kNaN, 1, 1, 1}, {1e-11}}) {
        ZoMatrix m = Square(values);
        EXPECT_EQ(m.Det(), 0.0) << values[0];
        int status = 0;
        m.Invert(&status);
        EXPECT_EQ(status, 1) << values[0];
    }
    ZoMatrix infinite = Square({std::numeric_limits<double>::infinity(), 1, 1, 1});
    EXPECT_EQ(GaussLoeserRelMax(infinite, b), 1);
    EXPECT_EQ(Det(ZoMatrix()), 0.0);
    EXPECT_EQ(Det(Square({0, 1, 1, 0})), -1.0);
    EXPECT_EQ(Det(Square({5})), 5.0);
    EXPECT_EQ(Det(Square({0, 0, 2, 3, 0, 0, 0, 7, 0})), 42.0);
}

/// The augmented normal equations of a fit; the last element of each row is its right-hand side.
ZoMatrix Augmented(const std::vector<ZoVector>& observations) {
    const int n = observations.front().GetSize() - 1;
    ZoMatrix m(n + 1, 2 * n + 1);
    for (const ZoVector& row : observations)
        m.CalcNGLAN(row);
    for (int i = 1; i <= n; ++i)
        m[i][n + 1 + i] = 1.0;
    return m;
}

// A parabola through five points, adjusted in rational arithmetic outside of this program.
TEST(Cholesky, AdjustsAParabola) {
    ZoMatrix m = Augmented({{1, -2, 4, 7}, {1, -1, 1, 2}, {1, 0, 0, 1}, {1, 1, 1, 3}, {1, 3, 9, 15}});
    ZoVector x(3);
    EXPECT_NEAR(m.Cholesky(x), 208 / 679., 288 * kRounding);
    EXPECT_LT((x - ZoVector(704 / 679., 102 / 679., 1026 / 679.)).Abs(), kRounding);
    EXPECT_NEAR(m[4][4], 12209 / 13., 1e-9);
    const double inverse[] = {m[1][5], m[1][6], m[1][7], m[2][5], m[2][6], m[2][7], m[3][5], m[3][6], m[3][7]};
    const ZoMatrix factor(inverse, 3, 3);
    const ZoMatrix cofactors = Square({562, 93, -103, 93, 135, -40, -103, -40, 37}) / 1358.0;
    EXPECT_LT(LargestDifference(factor.Transpose() * factor, cofactors), kRounding);
}

TEST(Cholesky, TellsFailureAndPerfectFitsByZero) {
    ZoMatrix perfect = Augmented({{2, 0, 6}, {0, 4, 8}});
    ZoVector x(-1.0, -1.0);
    EXPECT_EQ(perfect.Cholesky(x), 0.0);
    EXPECT_EQ(x, ZoVector(3.0, 2.0));

    ZoMatrix negative = Augmented({{1, 0, 2}, {0, 1, 2}});
    negative[2][2] = -1.0;
    const ZoMatrix indefinite[] = {Augmented({{1, 1, 2}, {2, 2, 3}}),  // one direction only: the second pivot is 0
                                   Augmented({{kNaN, 1, 2}, {1, 1, 1}}), negative};
    for (ZoMatrix m : indefinite) {
        EXPECT_EQ(m.Cholesky(x), 0.0);
        EXPECT_EQ(x, ZoVector(3.0, 2.0));
    }
}

TEST(Cholesky, AgreesWithEliminationForManyUnknowns) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    for (const int n : {1, 5, 8, 9, 17, 40}) {
        std::vector<ZoVector> observations(static_cast<std::size_t>(4 * n), ZoVector(n + 1));
        for (ZoVector& row : observations) {
            for (int i = 1; i <= n + 1; ++i)
                row[i] = uniform(random);
        }
        ZoMatrix m = Augmented(observations);
        ZoMatrix normal(n, n), right(n, 1);
        for (int r = 1; r <= n; ++r) {
            std::copy_n(m[r] + 1, n, normal[r] + 1);
            right[r][1] = m[r][n + 1];
        }
        ASSERT_EQ(normal.GaussLoeserRelMax(right), 0);
        ZoVector x(n);
        const double residual = m.Cholesky(x);
        double sum = 0.0;
        for (const ZoVector& row : observations)
            sum += std::pow(row * x - row[n + 1], 2);
        EXPECT_NEAR(residual, sum, 1e-11) << n;
        for (int i = 1; i <= n; ++i)
            EXPECT_NEAR(x[i], right[i][1], 1e-11) << n;
    }
}

}  // namespace
