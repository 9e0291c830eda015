#include "zorv/math/solvers.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "zorv/math/matrix.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A few roundings of numbers of the size 1.
constexpr double kRounding = 1e-14;

ZoMatrix Square(const std::vector<double>& values) {
    const int n = static_cast<int>(std::lround(std::sqrt(static_cast<double>(values.size()))));
    return ZoMatrix(values.data(), n, n);
}

ZoMatrix RandomSquare(int n, std::mt19937& random) {
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    ZoMatrix m(n, n);
    for (int r = 1; r <= n; ++r) {
        for (int c = 1; c <= n; ++c)
            m[r][c] = uniform(random);
    }
    return m;
}

double LargestDifference(const ZoMatrix& a, const ZoMatrix& b) {
    double largest = 0.0;
    for (int r = 1; r <= a.rows; ++r) {
        for (int c = 1; c <= a.cols; ++c)
            largest = std::max(largest, std::fabs(a[r][c] - b[r][c]));
    }
    return largest;
}

// Solutions worked out in rational arithmetic outside of this program.
TEST(Solvers, SolvesForSeveralRightHandSides) {
    ZoMatrix a = Square({2, -1, 0, 3, 4, 0, 5, -2, -3, 7, 1, 1, 1, 2, -6, 4});
    const double right[] = {1, 0, 0, 2, -4, 1, 3, 5};
    const double exact[] = {223 / 355., 403 / 355., -1 / 5., 4 / 5., -40 / 71., -50 / 71., -54 / 355., -174 / 355.};
    EXPECT_NEAR(a.Det(), 710.0, 710.0 * kRounding);
    ZoMatrix b(right, 4, 2);
    EXPECT_EQ(a.GaussLoeserRelMax(b), 0);
    EXPECT_LT(LargestDifference(b, ZoMatrix(exact, 4, 2)), kRounding);

    const ZoMatrix cramer = Square({2, 5, -1, 0, 3, 4, 7, -2, 6});
    EXPECT_EQ(cramer.Sarrus(), 213.0);
    const ZoVector x = cramer.Cramer(ZoVector(3.0, -1.0, 10.0));
    EXPECT_LT((x - ZoVector(112 / 71., -5 / 71., -14 / 71.)).Abs(), kRounding);
}

TEST(Solvers, KeepsTheTriangleAndTheMultipliers) {
    // Relative sizes 1/10, 1/2, 1/2 in the first column: the second line leads, being the first of the greatest.
    ZoMatrix a = Square({1, 4, 5, -2, 1, 1, 4, 0, -4});
    ZoMatrix b(3, 1);
    EXPECT_EQ(GaussLoeserRelMax(a, b), 0);
    // Then (4.5, 5.5) with 0.45 and (2, -2) with 0.5: the third line comes next.
    const ZoMatrix expected = Square({-2, 1, 1, -2, 2, -2, -0.5, 2.25, 10});
    EXPECT_LT(LargestDifference(a, expected), kRounding);
}

TEST(Solvers, SmallSumsAreSingularWhateverTheOtherLines) {
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
    ZoMatrix none;
    EXPECT_EQ(GaussLoeserRelMax(none, none), 1);
    EXPECT_EQ(none.Det(), 0.0);
}

TEST(Solvers, DeterminantsFollowExchanges) {
    EXPECT_EQ(Det(Square({0, 1, 1, 0})), -1.0);
    EXPECT_EQ(Det(Square({5})), 5.0);
    EXPECT_EQ(Det(Square({0, 0, 2, 3, 0, 0, 0, 7, 0})), 42.0);
    EXPECT_EQ(Det(Square({0, 2, 0, 3, 0, 0, 0, 0, 7})), -42.0);
}

TEST(Solvers, InverseOfTheHilbertMatrixHasIntegers) {
    ZoMatrix hilbert(4, 4);
    for (int r = 1; r <= 4; ++r) {
        for (int c = 1; c <= 4; ++c)
            hilbert[r][c] = 1.0 / (r + c - 1);
    }
    EXPECT_NEAR(hilbert.Det() * 6048000.0, 1.0, 1e-11);
    int status = 1;
    hilbert.Invert(&status);
    EXPECT_EQ(status, 0);
    const ZoMatrix exact =
        Square({16, -120, 240, -140, -120, 1200, -2700, 1680, 240, -2700, 6480, -4200, -140, 1680, -4200, 2800});
    // Condition 1.5e4, elements up to 6480.
    EXPECT_LT(LargestDifference(hilbert, exact), 1e-8);
}

TEST(Solvers, InvertsWellConditionedMatricesOfAnySize) {
    std::mt19937 random(7);
    for (int n = 1; n <= 40; n += n < 10 ? 1 : 10) {
        ZoMatrix m = RandomSquare(n, random);
        for (int i = 1; i <= n; ++i)
            m[i][i] += n;  // dominant diagonal
        ZoMatrix ident(n, n);
        ident.SetIdent();
        EXPECT_LT(LargestDifference(ZoMatrix(m).Invert() * m, ident), 1e-13) << n;
    }
}

/// The augmented normal equations of a fit.
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
    const double cofactors[] = {281 / 679., 93 / 1358.,   -103 / 1358., 93 / 1358., 135 / 1358.,
                                -20 / 679., -103 / 1358., -20 / 679.,   37 / 1358.};
    const double inverse[] = {m[1][5], m[1][6], m[1][7], m[2][5], m[2][6], m[2][7], m[3][5], m[3][6], m[3][7]};
    const ZoMatrix factor(inverse, 3, 3);
    EXPECT_LT(LargestDifference(factor.Transpose() * factor, ZoMatrix(cofactors, 3, 3)), kRounding);
}

TEST(Cholesky, TellsFailureAndPerfectFitsByZero) {
    // A line through two points leaves nothing over. All roots are whole numbers.
    ZoMatrix perfect = Augmented({{2, 0, 6}, {0, 4, 8}});
    ZoVector x(-1.0, -1.0);
    EXPECT_EQ(perfect.Cholesky(x), 0.0);
    EXPECT_EQ(x, ZoVector(3.0, 2.0));

    const ZoMatrix indefinite[] = {Augmented({{1, 1, 2}, {2, 2, 3}}),  // one direction only: the second pivot is 0
                                   Augmented({ZoVector(0.0, 1.0, 2.0)}), Augmented({{kNaN, 1, 2}, {1, 1, 1}})};
    for (ZoMatrix m : indefinite) {
        ZoVector untouched(-7.0, -8.0);
        EXPECT_EQ(m.Cholesky(untouched), 0.0);
        EXPECT_EQ(untouched, ZoVector(-7.0, -8.0));
    }
    ZoMatrix negative = Augmented({{1, 0, 2}, {0, 1, 2}});
    negative[2][2] = -1.0;
    EXPECT_EQ(negative.Cholesky(x), 0.0);
    EXPECT_EQ(x, ZoVector(3.0, 2.0));
}

TEST(Cholesky, AgreesWithEliminationForManyUnknowns) {
    std::mt19937 random(11);
    for (const int n : {1, 5, 8, 9, 17, 40}) {
        std::vector<ZoVector> observations(static_cast<std::size_t>(3 * n), ZoVector(n + 1));
        for (ZoVector& row : observations)
            RandomSquare(n + 1, random).GetLine(1, row);
        ZoMatrix m = Augmented(observations);
        ZoMatrix normal(n, n);
        ZoMatrix right(n, 1);
        for (int r = 1; r <= n; ++r) {
            for (int c = 1; c <= n; ++c)
                normal[r][c] = m[r][c];
            right[r][1] = m[r][n + 1];
        }
        const double squares = m[n + 1][n + 1];
        ASSERT_EQ(normal.GaussLoeserRelMax(right), 0);
        ZoVector x(n);
        const double residual = m.Cholesky(x);
        double sum = 0.0;
        for (const ZoVector& row : observations) {
            double error = row[n + 1];
            for (int i = 1; i <= n; ++i)
                error -= row[i] * right[i][1];
            sum += error * error;
        }
        EXPECT_NEAR(residual, sum, 1e-11 * squares) << n;
        for (int i = 1; i <= n; ++i)
            EXPECT_NEAR(x[i], right[i][1], 1e-11) << n;
    }
}

}  // namespace
