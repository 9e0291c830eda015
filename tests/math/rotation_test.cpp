#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "zorv/math/matrix.h"

namespace {

constexpr double kPi = std::numbers::pi;

/// A few roundings of numbers of the size 1.
constexpr double kRounding = 4e-15;

double LargestDifference(const ZoMatrix& a, const ZoMatrix& b) {
    double largest = 0.0;
    for (int r = 1; r <= 3; ++r) {
        for (int c = 1; c <= 3; ++c)
            largest = std::max(largest, std::fabs(a[r][c] - b[r][c]));
    }
    return largest;
}

/// How far R is from a rotation: from R * transposed R = I and determinant 1.
double Deformation(const ZoMatrix& r) {
    ZoMatrix ident(3, 3);
    ident.SetIdent();
    return std::max(LargestDifference(r * r.Transpose(), ident), std::fabs(r.Sarrus() - 1.0));
}

ZoVector RandomUnit(std::mt19937& random) {
    std::normal_distribution<double> normal;
    return ZoVector(normal(random), normal(random), normal(random)).Normalize();
}

TEST(Rotation, QuarterTurnsAreRightHanded) {
    ZoMatrix m(3, 3);
    const ZoVector& x = ZoVector::kXaxis3D;
    const ZoVector& y = ZoVector::kYaxis3D;
    const ZoVector& z = ZoVector::kZaxis3D;
    EXPECT_LT((m.RotXAxis(kPi / 2) * y - z).Abs() + (m * x - x).Abs(), kRounding);
    EXPECT_LT((m.RotYAxis(kPi / 2) * z - x).Abs() + (m * y - y).Abs(), kRounding);
    EXPECT_LT((m.RotZAxis(kPi / 2) * x - y).Abs() + (m * z - z).Abs(), kRounding);
    ZoMatrix four(4, 4);
    EXPECT_EQ(four.RotXAxis(0.3)[4][4], 1.0);
}

TEST(Rotation, AnglesComposeAndComeBack) {
    ZoMatrix rx(3, 3);
    ZoMatrix ry(3, 3);
    ZoMatrix rz(3, 3);
    for (double a = -3.0; a < 3.1; a += 0.75) {
        for (double b = -1.5; b < 1.6; b += 0.5) {
            for (double c = -3.1; c < 3.1; c += 0.62) {
                ZoMatrix r(3, 3);
                r.MakeRotMatrix(a, b, c);
                EXPECT_LT(LargestDifference(r, ry.RotYAxis(a) * rx.RotXAxis(b) * rz.RotZAxis(c)), kRounding);
                EXPECT_LT(Deformation(r), kRounding);
                double back[3];
                r.GetRotAngles(&back[0], &back[1], &back[2]);
                EXPECT_NEAR(back[0], b, 1e-13);
                EXPECT_NEAR(back[1], a, 1e-13);
                EXPECT_NEAR(back[2], c, 1e-13);
            }
        }
    }
}

TEST(Rotation, GimbalLockGivesAnglesOfTheSameRotation) {
    for (const double b : {-kPi / 2, kPi / 2}) {
        for (const double a : {-2.0, 0.0, 0.7}) {
            ZoMatrix r(3, 3);
            r.MakeRotMatrix(a, b, 0.4);
            double found[3];
            r.GetRotAngles(&found[0], &found[1], &found[2]);
            EXPECT_EQ(found[2], 0.0);
            EXPECT_LT(LargestDifference(ZoMatrix(3, 3).MakeRotMatrix(found[1], found[0], found[2]), r), kRounding);
        }
    }
    ZoMatrix rounded(3, 3);
    rounded[2][3] = -1.0 - 1e-15;
    rounded[1][1] = 1.0;
    double b = 0.0;
    double a = 1.0;
    double c = 1.0;
    rounded.GetRotAngles(&b, &a, &c);
    EXPECT_EQ(b, kPi / 2);
    EXPECT_EQ(a + c, 0.0);
}

TEST(Rotation, AlignsAnyTwoDirections) {
    std::mt19937 random(3);
    ZoMatrix r(4, 4);
    for (int i = 0; i < 100; ++i) {
        const ZoVector a = RandomUnit(random);
        const ZoVector across = (a % RandomUnit(random)).Normalize();
        // Nearly opposite directions cost digits: the relative error of 1 + cos grows as its reciprocal.
        for (const double angle : {0.01, 1.0, 3.0, kPi - 1e-3, kPi - 2e-5, kPi - 1e-5, kPi - 1e-9, kPi}) {
            const ZoVector b = (a * std::cos(angle) + across * std::sin(angle)).Normalize();
            EXPECT_TRUE(r.CalcRotMatAlignVector(a, b));
            EXPECT_EQ(r.GetSpalten(), 3);
            const bool formula = 1.0 + a * b > 1e-10;
            const double tolerance = kRounding * (formula ? 1.0 + 1.0 / (1.0 + a * b) : 1.0);
            EXPECT_LT((r * a - b).Abs(), tolerance) << angle;
            EXPECT_LT(Deformation(r), tolerance) << angle;
        }
        r.CalcRotMatAlignVector(a, a);
        EXPECT_TRUE(r.IsIdent() && r[1][1] == 1.0);
        r.CalcRotMatAlignVector(a, a * -1.0);
        EXPECT_LT((r * a + a).Abs() + Deformation(r), kRounding);
    }
    // A quarter turn moves nothing but its own plane.
    r.CalcRotMatAlignVector(ZoVector::kXaxis3D, ZoVector::kYaxis3D);
    EXPECT_LT(LargestDifference(r, ZoMatrix(3, 3).RotZAxis(kPi / 2)), kRounding);
}

TEST(Rotation, ThreePointsMakeAFrame) {
    ZoMatrix m(4, 4);
    m.SetElem(1, 4, 77.0);
    bool ok = false;
    m.MakeRotMatrix(ZoVector(1.0, 1.0, 1.0), ZoVector(1.0, 4.0, 1.0), ZoVector(1.0, 9.0, 6.0), &ok);
    EXPECT_TRUE(ok);
    const double columns[] = {0, 0, 1, 1, 0, 0, 0, 1, 0};  // x along y, y along z, z along x
    EXPECT_LT(LargestDifference(m, ZoMatrix(columns, 3, 3)), kRounding);
    EXPECT_EQ(m[1][4], 77.0);

    const ZoMatrix before(m);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const ZoVector origin(0.3, -0.2, 0.7);
    const ZoVector first(1.3, 0.4, -0.1);
    const ZoVector bad[][2] = {{origin, first},
                               {first, origin},
                               {first, origin + (first - origin) * 3.7},
                               {first, origin - (first - origin) / 3.0},
                               {first, ZoVector(nan, 0.0, 0.0)}};
    for (const auto& [pointX, pointXY] : bad) {
        ok = true;
        m.MakeRotMatrix(origin, pointX, pointXY, &ok);
        EXPECT_FALSE(ok);
        EXPECT_EQ(LargestDifference(m, before), 0.0);
    }
    m.MakeRotMatrix(origin, origin, first);
    EXPECT_EQ(LargestDifference(m, before), 0.0);
    // Exactly collinear points leave a rounding error, whatever their direction.
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const ZoVector d = RandomUnit(random);
        m.MakeRotMatrix(ZoVector(3), d, d * 4.0, &ok);
        EXPECT_FALSE(ok);
        m.MakeRotMatrix(ZoVector(3), d, RandomUnit(random), &ok);
        EXPECT_TRUE(ok);
    }
}

TEST(Rotation, ViewingDirectionsAreCompared) {
    ZoMatrix ident(3, 3);
    ident.SetIdent();
    ZoMatrix turned(3, 3);
    for (const double angle : {0.0, 0.5, 2.0, kPi}) {
        turned.RotXAxis(angle);
        EXPECT_NEAR(ident.CalcAngle(turned), angle, 1e-15);
        EXPECT_NEAR(turned.CalcAngle(ident), angle, 1e-15);
    }
    for (double angle = 0.0; angle < 6.0; angle += 0.1)
        EXPECT_LT(turned.RotYAxis(angle).CalcAngle(turned), 3e-8);
    EXPECT_EQ(ident.CalcAngle(ident), 0.0);
    EXPECT_TRUE(turned.RotXAxis(1.0).IsLookingInSameDirection(turned));
    EXPECT_FALSE(ident.IsLookingInSameDirection(turned.RotXAxis(kPi / 2)));
    // |z1 + z2| = 2 cos(angle / 2) passes 1.42 at 89.53 degrees, and sqrt(2) only at 90.
    EXPECT_TRUE(ident.IsLookingInSameDirection(turned.RotXAxis(89.5 * kPi / 180)));
    EXPECT_FALSE(ident.IsLookingInSameDirection(turned.RotXAxis(89.6 * kPi / 180)));
}

}  // namespace
