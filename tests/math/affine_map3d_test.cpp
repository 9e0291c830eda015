#include "zorv/math/affine_map3d.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRounding = 1e-12;    // a few roundings of numbers around 10
constexpr double kMapRounding = 1e-6;  // metres, at coordinates around 5,000,000

void ExpectNear(const _MVector& a, double x, double y, double z, double tol = kRounding) {
    EXPECT_NEAR(a.x(), x, tol);
    EXPECT_NEAR(a.y(), y, tol);
    EXPECT_NEAR(a.z(), z, tol);
}

double Difference(const ZoAffinMap3d& a, const ZoAffinMap3d& b) {
    double most = 0.0;
    for (int i = 0; i < 16; ++i)
        most = std::fmax(most, std::fabs(a.asDblArray()[i] - b.asDblArray()[i]));
    return most;
}

const ZoFrame3d kOblique({10, 20, 30}, {0, 2, 0}, {-1, 0, 0}, {1, 1, 1});

TEST(AffineMap3d, RotationsAreRightHandedAndActInTheOrderXyz) {
    ExpectNear(ZoAffinMap3d::RotX(kPi / 2) * ZoVector3d::YAxis, 0, 0, 1);
    ExpectNear(ZoAffinMap3d::RotY(kPi / 2) * ZoVector3d::ZAxis, 1, 0, 0);
    ExpectNear(ZoAffinMap3d::RotZ(kPi / 2) * ZoVector3d::XAxis, 0, 1, 0);
    // y goes to z about X, on to x about Y, on to y about Z.
    ExpectNear(ZoAffinMap3d::RotXYZ(kPi / 2, kPi / 2, kPi / 2) * ZoVector3d::YAxis, 0, 1, 0);
    ExpectNear(ZoAffinMap3d::Translate(1, 2, 3) * ZoAffinMap3d::Scale(2, 3, 4) * ZoPoint3d(1, 1, 1), 3, 5, 7);
}

TEST(AffineMap3d, OnlyPointsFeelTheTranslation) {
    const ZoAffinMap3d map = ZoAffinMap3d::Translate({1, 2, 3});
    const ZoPoint3d moved = map.Transform(ZoPoint3d(1, 2, 3));
    ExpectNear(moved, 2, 4, 6, 0);
    EXPECT_EQ(moved[3], 1.0);
    EXPECT_EQ(map.Transform(ZoVector3d(1, 2, 3))[3], 0.0);
    double d[] = {1, 2, 3};
    float f[] = {1, 2, 3};
    ExpectNear(map.Transform(1, 2, 3), 1, 2, 3, 0);
    ExpectNear(map.Transform(d), 1, 2, 3, 0);
    ExpectNear(map.Transform(f), 1, 2, 3, 0);

    const ZoAffinMap3d third = ZoAffinMap3d::Scale(1.0 / 3, 1, 1) * map;
    third.InplaceTransform(d);
    third.InplaceTransform(f);
    ExpectNear(ZoVector3d(d), 1.0 / 3, 2, 3, 0);
    EXPECT_EQ(f[0], static_cast<float>(1.0 / 3));
    EXPECT_EQ(ZoPoint3d(0, 0, 0).Transform(map).x(), 1.0);
    EXPECT_EQ(ZoVector3d(4, 0, 0).Transform(map).x(), 4.0);
}

TEST(AffineMap3d, FramesMapTheirCoordinatesToTheWorld) {
    // origin + 1 v1 + 2 v2 + 3 v3
    ExpectNear(ZoPoint3d(kOblique, 1, 2, 3), 11, 25, 33);
    ExpectNear(ZoVector3d(kOblique, 1, 2, 3), 1, 5, 3);
    ExpectNear(ZoAffinMap3d::Inv(ZoAffinMap3d(kOblique)) * ZoPoint3d(11, 25, 33), 1, 2, 3);

    const ZoFrame3d other({-5, 0, 1}, {0, 0, 1}, {3, 0, 0}, {0, 1, 0});
    ExpectNear(ZoAffinMap3d(kOblique, other) * ZoPoint3d(11, 25, 33), 1, 3, 2);
    const ZoFrame3d carried = ZoAffinMap3d(kOblique, other).Transform(kOblique);
    ExpectNear(carried.Origin(), -5, 0, 1);
    ExpectNear(carried.v2(), 3, 0, 0);

    ZoPoint3d origin;
    ZoVector3d v1, v2, v3;
    ZoAffinMap3d(kOblique).GetCoordSystem(origin, v1, v2, v3);
    ExpectNear(origin, 10, 20, 30, 0);
    ExpectNear(v2, -1, 0, 0, 0);
    EXPECT_EQ(ZoAffinMap3d::GetScaleMap(ZoAffinMap3d(kOblique))[2][2], std::sqrt(3.0));
}

TEST(AffineMap3d, LinesAreMappedByTheirEnds) {
    ZoLine3d line(ZoPoint3d(0, 0, 0), ZoPoint3d(2, 0, 0));
    line.setDirection({0, 0, 1});
    const ZoLine3d mapped = ZoAffinMap3d(kOblique).Transform(line);
    ExpectNear(mapped.end, 10, 24, 30);
    ExpectNear(mapped.direction, 0, 1, 0);
}

TEST(AffineMap3d, InverseUndoesTheMapAndASingularMapStays) {
    ZoAffinMap3d map(kOblique);
    EXPECT_EQ(map.Det(), 2.0);
    const ZoAffinMap3d former = map;
    EXPECT_EQ(map.Invert(), 0);
    EXPECT_LT(Difference(former * map, ZoAffinMap3d()), kRounding);
    EXPECT_LT(Difference(map * former, ZoAffinMap3d()), kRounding);

    ZoAffinMap3d flat = ZoAffinMap3d::Translate(1, 2, 3) * ZoAffinMap3d::Scale(1, 0, 1) * ZoAffinMap3d::RotZ(1);
    const ZoAffinMap3d before = flat;
    EXPECT_EQ(flat.Invert(), 1);
    EXPECT_EQ(Difference(flat, before), 0.0);
    const ZoAffinMap3d normals = flat.NormalTransformMap();
    EXPECT_EQ(normals[0][3], 0.0);
    EXPECT_EQ(normals[1][0], before[0][1]);
}

TEST(AffineMap3d, NormalsStayNormalUnderShear) {
    const ZoAffinMap3d map(kOblique);
    const ZoVector3d a(1, 2, 3), b(-2, 0, 5);
    const ZoVector3d normal = map.NormalTransformMap() * (a % b);
    EXPECT_TRUE(normal.IsPerpendicular(map * a, kRounding));
    EXPECT_TRUE(normal.IsPerpendicular(map * b, kRounding));
    EXPECT_FALSE(normal.IsPerpendicular(map * (a % b), kRounding));
}

TEST(AffineMap3d, RigidMotionsKeepMillimetresAtMapCoordinates) {
    const ZoAffinMap3d turn = ZoAffinMap3d::RotXYZ(0.1, -0.2, 2.5);
    const ZoVector3d centre(5000000, 5100000, 300);
    const ZoAffinMap3d motion = ZoAffinMap3d::Translate(centre) * turn * ZoAffinMap3d::Translate(-centre);
    const ZoVector3d detail(12.345, -67.891, 3.003);
    const ZoPoint3d point = centre.AsPoint() + detail;
    const ZoPoint3d expected = (centre + turn * detail).AsPoint();
    EXPECT_LT((motion * point).Distance(expected), kMapRounding);
    EXPECT_LT((ZoAffinMap3d::Inv(motion) * expected).Distance(point), kMapRounding);
}

TEST(AffineMap3d, RotationAnglesGiveTheRotationBack) {
    for (double x = 0.0; x < 6.2; x += 0.7) {
        for (const double y : {-kPi / 2, -1.5707, -0.8, 0.0, 1e-9, 1.2, kPi / 2, 2.5}) {
            for (double z = 0.3; z < 6.2; z += 0.9) {
                const ZoAffinMap3d rotation = ZoAffinMap3d::RotXYZ(x, y, z);
                const ZoAffinMap3d mirrored = ZoAffinMap3d::Scale(-2, -3, -0.5) * rotation;
                for (const ZoAffinMap3d& map : {rotation, mirrored}) {
                    double a = 0, b = 0, c = 0;
                    ZoAffinMap3d::GetRotAngles(map, &a, &b, &c);
                    // Next to gimbal lock the angles stand for the rotation within the limit of 1e-6.
                    ASSERT_LT(Difference(ZoAffinMap3d::RotXYZ(a, b, c), rotation),
                              std::fabs(std::cos(y)) < 1e-6 ? 1e-6 : kRounding)
                        << x << ' ' << y << ' ' << z;
                    ASSERT_TRUE(a >= 0 && a <= 2 * kPi && b >= 0 && b <= 2 * kPi && c >= 0 && c <= 2 * kPi);
                }
            }
        }
    }
}

TEST(AffineMap3d, NormAngleKeepsAFullTurn) {
    EXPECT_EQ(NormAngle(2 * kPi), 2 * kPi);
    EXPECT_EQ(NormAngle(-2 * kPi), 0.0);
    EXPECT_EQ(NormAngle(-kPi / 2), 1.5 * kPi);
    EXPECT_NEAR(NormAngle(7 * kPi), kPi, kRounding);
    EXPECT_NEAR(NormAngle(1e15), std::atan2(std::sin(1e15), std::cos(1e15)) + 2 * kPi, 1.0);
    for (const double angle : {1e300, -1e300, 1e6 * 2 * kPi, -1e6 * 2 * kPi, -5e-324}) {
        EXPECT_GE(NormAngle(angle), 0.0) << angle;
        EXPECT_LE(NormAngle(angle), 2 * kPi) << angle;
    }
    EXPECT_TRUE(std::isnan(NormAngle(std::nan(""))));
    EXPECT_EQ(NormAngle(-std::numeric_limits<double>::infinity()), -std::numeric_limits<double>::infinity());
}

TEST(AffineMap3d, ArbitraryAxesChangeAtOneSixtyFourth) {
    const double limit = 1.0 / 64;
    ZoVector3d ax, ay;
    ArbAxisAlg({0, 0, 1}, ax, ay);
    ExpectNear(ax, 1, 0, 0, 0);
    ExpectNear(ay, 0, 1, 0, 0);
    ArbAxisAlg({0, 0, -1}, ax, ay);
    ExpectNear(ax, -1, 0, 0, 0);
    ArbAxisAlg({std::nextafter(limit, 0.0), 0, 1}, ax, ay);
    EXPECT_NEAR(ax.x(), 1, 1e-3);
    ArbAxisAlg({limit, 0, 1}, ax, ay);
    ExpectNear(ax, 0, 1, 0);
    const ZoAffinMap3d wcs = MapEcsToWcs(Normalized({0.6, -0.3, 0.2}));
    EXPECT_NEAR(wcs.Det(), 1.0, kRounding);
    EXPECT_EQ(wcs[2][0], 0.0);  // the entity's x axis is level
    ExpectNear(wcs * ZoVector3d::ZAxis, 6.0 / 7, -3.0 / 7, 2.0 / 7);
}

TEST(Vector3d, AnglesOfParallelVectorsAreNumbersAndNullVectorsAreNot) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-10, 10);
    for (int i = 0; i < 1000; ++i) {
        const ZoVector3d v(any(random), any(random), any(random));
        ASSERT_NEAR(v.Angle(v * 3.1), 0.0, 1e-7);
        ASSERT_NEAR(Angle(v, -0.7 * v), kPi, 1e-7);
    }
    EXPECT_TRUE(std::isnan(Angle(ZoVector3d::Null, ZoVector3d::XAxis)));
    EXPECT_TRUE(std::isnan(Normalized(ZoVector3d::Null).x()));
}

TEST(Vector3d, TestsKeepTheirStrictness) {
    const ZoVector3d v(0.5, 0, 0);
    EXPECT_FALSE(v.IsDegenerate(0.5));
    EXPECT_TRUE(v.IsDegenerate(0.6));
    EXPECT_TRUE(ZoVector3d(1e-10, 0, 0).IsNull(0.0));
    EXPECT_FALSE(ZoVector3d(1.1e-10, 0, 0).IsNull(1.0));
    EXPECT_TRUE(ZoVector3d(1.25, 0, 0).IsNormalized(0.25));
    EXPECT_FALSE(v.IsPerpendicular({1, 7, 0}, 0.5));
    EXPECT_TRUE(v.IsLinearIndependent(-v, 0.1));
    EXPECT_FALSE(v.IsLinearIndependent({9, 0.1, 0}, 0.1));
    EXPECT_FALSE(v.IsLinearIndependent({0, 0.05, 0}, 0.1));
    EXPECT_FALSE(ZoPoint3d(1, 2, 3).IsSame({1, 2, 3.5}, 0.5));
    ExpectNear(AffinCombination({0, 0, 0}, {4, 8, -4}, 3, 1), 1, 2, -1, 0);
    ExpectNear((ZoVector3d::XAxis % ZoVector3d::YAxis) + ZoPoint3d::origin, 0, 0, 1, 0);
}

TEST(Point3d, TurnsOfThreePointsAreSeenFromAbove) {
    const ZoPoint3d o(1, 1, 5), right(3, 1, -7), far(5, 1, 0), up(1, 2, 9);
    EXPECT_EQ(CounterClockwise(o, right, up), 1);
    EXPECT_EQ(CounterClockwise(o, up, right), -1);
    EXPECT_EQ(CounterClockwise(right, o, far), -1);  // p0 between
    EXPECT_EQ(CounterClockwise(o, far, right), 0);
    EXPECT_EQ(CounterClockwise(o, right, right), 0);
    EXPECT_EQ(CounterClockwise(o, right, far), 1);
}

}  // namespace
