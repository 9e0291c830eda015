#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "tests/math/matrix_compare.h"
#include <gtest/gtest.h>

namespace {

constexpr double kPi = std::numbers::pi;

/// A few roundings of numbers of the size 1.
constexpr double kRounding = 4e-15;

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
}

TEST(Rotation, AnglesComposeAndComeBack) {
    ZoMatrix r(3, 3), rx(3, 3), ry(3, 3), rz(3, 3);
    double back[3];
    for (double a = -3.0; a < 3.1; a += 0.75) {
        for (double b = -1.5; b < 1.6; b += 0.5) {
            for (double c = -3.1; c < 3.1; c += 0.62) {
                r.MakeRotMatrix(a, b, c);
                EXPECT_LT(LargestDifference(r, ry.RotYAxis(a) * rx.RotXAxis(b) * rz.RotZAxis(c)), kRounding);
                r.GetRotAngles(&back[0], &back[1], &back[2]);
                EXPECT_LT((ZoVector(b, a, c) - ZoVector(back[0], back[1], back[2])).Abs(), 1e-13);
            }
        }
    }
}

TEST(Rotation, GimbalLockGivesAnglesOfTheSameRotation) {
    double found[3];
    for (const double b : {-kPi / 2, kPi / 2}) {
        for (const double a : {-2.0, 0.0, 0.7}) {
            const ZoMatrix r = ZoMatrix(3, 3).MakeRotMatrix(a, b, 0.4);
            r.GetRotAngles(&found[0], &found[1], &found[2]);
            EXPECT_EQ(found[2], 0.0);
            EXPECT_LT(LargestDifference(ZoMatrix(3, 3).MakeRotMatrix(found[1], found[0], found[2]), r), kRounding);
        }
    }
    const double rounded[] = {1, 0, 0, 0, 0, -1 - 1e-15, 0, 1, 0};
    ZoMatrix(rounded, 3, 3).GetRotAngles(&found[0], &found[1], &found[2]);
    EXPECT_EQ(ZoVector(found[0], found[1], found[2]), ZoVector(kPi / 2, 0.0, 0.0));
}

TEST(Rotation, AlignsAnyTwoDirections) {
    std::mt19937 random(3);
    ZoMatrix r(4, 4);
    for (int i = 0; i < 100; ++i) {
        const ZoVector a = RandomUnit(random);
        const ZoVector across = (a % RandomUnit(random)).Normalize();
        for (const double angle : {0.01, 1.0, 3.0, kPi - 1e-3, kPi - 2e-5, kPi - 1e-5, kPi - 1e-9, kPi}) {
            const ZoVector b = (a * std::cos(angle) + across * std::sin(angle)).Normalize();
            EXPECT_TRUE(r.CalcRotMatAlignVector(a, b));
            // The formula loses digits towards opposite directions, as its 1 / (1 + cos) grows.
            const double rest = 1.0 + a * b;
            const double tolerance = kRounding * (rest > 1e-10 ? 1.0 + 1.0 / rest : 1.0);
            EXPECT_LT((r * a - b).Abs() + Deformation(r), 2.0 * tolerance) << angle;
        }
        r.CalcRotMatAlignVector(a, a);
        EXPECT_TRUE(r.IsIdent() && r[1][1] == 1.0);
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
    const ZoVector origin(0.3, -0.2, 0.7), first(1.3, 0.4, -0.1);
    const ZoVector bad[][2] = {{origin, first},
                               {first, origin},
                               {first, origin - (first - origin) / 3.0},
                               {first, ZoVector(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0)}};
    for (const auto& [pointX, pointXY] : bad) {
        ok = true;
        m.MakeRotMatrix(origin, pointX, pointXY, &ok);
        EXPECT_FALSE(ok);
    }
    // Collinear points leave a rounding error, whatever their direction.
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const ZoVector direction = RandomUnit(random);
        m.MakeRotMatrix(ZoVector(3), direction, direction * 4.0, &ok);
        EXPECT_FALSE(ok);
    }
    EXPECT_EQ(LargestDifference(m, before), 0.0);
}

TEST(Rotation, ViewingDirectionsAreCompared) {
    const ZoMatrix ident = ZoMatrix(3, 3).RotXAxis(0.0);
    ZoMatrix turned(3, 3);
    for (const double angle : {0.0, 0.5, 2.0, kPi})
        EXPECT_NEAR(ident.CalcAngle(turned.RotXAxis(angle)), angle, 1e-15);
    EXPECT_FALSE(ident.IsLookingInSameDirection(turned.RotXAxis(kPi / 2)));
    // |z1 + z2| = 2 cos(angle / 2) passes 1.42 at 89.53 degrees, and sqrt(2) only at 90.
    EXPECT_TRUE(ident.IsLookingInSameDirection(turned.RotXAxis(89.5 * kPi / 180)));
    EXPECT_FALSE(ident.IsLookingInSameDirection(turned.RotXAxis(89.6 * kPi / 180)));
}

}  // namespace
