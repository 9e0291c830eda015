#include "zorv/math/affine_map3d.h"

#include <cmath>
#include <limits>
#include <numbers>

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
    const ZoAffinMap3d third = ZoAffinMap3d::Scale(1.0 / 3, 1, 1) * ZoAffinMap3d::Translate({3, 2, 3});
    const ZoPoint3d moved = third.Transform(ZoPoint3d(3, 2, 3));
    ExpectNear(moved, 2, 4, 6);
    EXPECT_EQ(moved[3], 1.0);
    EXPECT_EQ(third.Transform(ZoVector3d(1, 2, 3))[3], 0.0);
    double d[] = {1, 2, 3};
    float f[] = {1, 2, 3};
    ExpectNear(third.Transform(1, 2, 3), 1.0 / 3, 2, 3, 0);
    ExpectNear(third.Transform(f), 1.0 / 3, 2, 3, 0);
    third.InplaceTransform(d);
    third.InplaceTransform(f);
    ExpectNear(ZoVector3d(d), 1.0 / 3, 2, 3, 0);
    EXPECT_EQ(f[0], static_cast<float>(1.0 / 3));
}

TEST(AffineMap3d, FramesMapTheirCoordinatesToTheWorld) {
    // origin + 1 v1 + 2 v2 + 3 v3
    ExpectNear(ZoPoint3d(kOblique, 1, 2, 3), 11, 25, 33);
    ExpectNear(ZoVector3d(kOblique, 1, 2, 3), 1, 5, 3);
    const ZoFrame3d other({-5, 0, 1}, {0, 0, 1}, {3, 0, 0}, {0, 1, 0});
    const ZoAffinMap3d carry(kOblique, other);
    ExpectNear(carry * ZoPoint3d(11, 25, 33), 1, 3, 2);
    ExpectNear(carry.Transform(kOblique).Origin(), -5, 0, 1);
    ExpectNear(carry.Transform(kOblique).v2(), 3, 0, 0);

    ZoLine3d line(ZoPoint3d(0, 0, 0), ZoPoint3d(2, 0, 0));
    line.setDirection({0, 0, 1});
    const ZoLine3d mapped = ZoAffinMap3d(kOblique).Transform(line);
    ExpectNear(mapped.end, 10, 24, 30);
    ExpectNear(mapped.direction, 0, 1, 0);
}

TEST(AffineMap3d, InverseUndoesTheMapAndASingularMapStays) {
    ZoAffinMap3d map(kOblique);
    const ZoAffinMap3d former = map;
    EXPECT_EQ(map.Det(), 2.0);
    EXPECT_EQ(map.Invert(), 0);
    EXPECT_LT(Difference(former * map, ZoAffinMap3d()), kRounding);
    EXPECT_LT(Difference(ZoAffinMap3d::GetScaleMap(former), ZoAffinMap3d::Scale(2, 1, std::sqrt(3.0))), kRounding);
    const ZoVector3d a(1, 2, 3), b(-2, 0, 5);
    const ZoVector3d normal = former.NormalTransformMap() * (a % b);  // stays normal under shear
    EXPECT_TRUE(normal.IsPerpendicular(former * a, kRounding) && normal.IsPerpendicular(former * b, kRounding));

    ZoAffinMap3d flat = ZoAffinMap3d::Translate(1, 2, 3) * ZoAffinMap3d::Scale(1, 0, 1) * ZoAffinMap3d::RotZ(1);
    const ZoAffinMap3d before = flat;
    EXPECT_EQ(flat.Invert(), 1);
    EXPECT_EQ(Difference(flat, before), 0.0);
    EXPECT_EQ(flat.NormalTransformMap()[0][3], 0.0);
    EXPECT_EQ(flat.NormalTransformMap()[1][0], before[0][1]);

    const ZoAffinMap3d turn = ZoAffinMap3d::RotXYZ(0.1, -0.2, 2.5);
    const ZoVector3d centre(5000000, 5100000, 300), detail(12.345, -67.891, 3.003);
    const ZoAffinMap3d motion = ZoAffinMap3d::Translate(centre) * turn * ZoAffinMap3d::Translate(-centre);
    const ZoPoint3d moved = (centre + turn * detail).AsPoint();
    EXPECT_LT((motion * (centre + detail).AsPoint()).Distance(moved), kMapRounding);
    EXPECT_LT((ZoAffinMap3d::Inv(motion) * moved).Distance((centre + detail).AsPoint()), kMapRounding);
}

TEST(AffineMap3d, RotationAnglesGiveTheRotationBack) {
    for (double x = 0.0; x < 6.2; x += 0.7) {
        for (const double y : {-kPi / 2, -1.5707, -0.8, 0.0, 1e-9, 1.2, kPi / 2 - 5e-7, kPi / 2, 2.5}) {
            const ZoAffinMap3d rotation = ZoAffinMap3d::RotXYZ(x, y, 5.0 - x);
            const ZoAffinMap3d mirrored = ZoAffinMap3d::Scale(-2, -3, -0.5) * rotation;
            // Within the limit of 1e-6 around gimbal lock z is held at 0.
            const double tol = std::fabs(std::cos(y)) < 1e-6 ? 1e-6 : kRounding;
            for (const ZoAffinMap3d& map : {rotation, mirrored}) {
                double a = -1, b = -1, c = -1;
                ZoAffinMap3d::GetRotAngles(map, &a, &b, &c);
                EXPECT_LT(Difference(ZoAffinMap3d::RotXYZ(a, b, c), rotation), tol) << x << ' ' << y;
                EXPECT_TRUE(std::fmin(a, std::fmin(b, c)) >= 0 && std::fmax(a, std::fmax(b, c)) <= 2 * kPi);
            }
        }
    }
}

TEST(AffineMap3d, NormAngleKeepsAFullTurn) {
    EXPECT_EQ(NormAngle(2 * kPi), 2 * kPi);
    EXPECT_EQ(NormAngle(-2 * kPi), 0.0);
    EXPECT_EQ(NormAngle(-kPi / 2), 1.5 * kPi);
    EXPECT_NEAR(NormAngle(7 * kPi), kPi, kRounding);
    EXPECT_NEAR(std::sin(NormAngle(1e6)), std::sin(1e6), 1e-9);  // 2 pi is short by 2e-16 in each turn
    for (const double angle : {1e300, -1e300, 1e6 * 2 * kPi, -1e6 * 2 * kPi, -5e-324})
        EXPECT_TRUE(NormAngle(angle) >= 0.0 && NormAngle(angle) <= 2 * kPi) << angle;
    EXPECT_TRUE(std::isnan(NormAngle(std::nan(""))) && std::isinf(NormAngle(-std::numeric_limits<double>::infinity())));
}

TEST(AffineMap3d, ArbitraryAxesChangeAtOneSixtyFourth) {
    ZoVector3d ax, ay;
    ArbAxisAlg({0, 0, -1}, ax, ay);
    ExpectNear(ax, -1, 0, 0, 0);
    ExpectNear(ay, 0, 1, 0, 0);
    ArbAxisAlg({std::nextafter(1.0 / 64, 0.0), 0, 1}, ax, ay);
    EXPECT_NEAR(ax.x(), 1, 1e-3);
    ArbAxisAlg({1.0 / 64, 0, 1}, ax, ay);
    ExpectNear(ax, 0, 1, 0);
    const ZoAffinMap3d wcs = MapEcsToWcs(Normalized({0.6, -0.3, 0.2}));
    EXPECT_NEAR(wcs.Det(), 1.0, kRounding);
    EXPECT_EQ(wcs[2][0], 0.0);  // the entity's x axis is level
    ExpectNear(wcs * ZoVector3d::ZAxis, 6.0 / 7, -3.0 / 7, 2.0 / 7);
}

TEST(Vector3d, AnglesOfParallelVectorsAreNumbersAndNullVectorsHaveNone) {
    for (int i = 1; i < 1000; ++i) {
        const ZoVector3d v(1.0 / i, 0.3 * i, 7.7);
        ASSERT_NEAR(v.Angle(v * 3.1), 0.0, 1e-7);  // the arc cosine is flat there
        ASSERT_NEAR(Angle(v, -0.7 * v), kPi, 1e-7);
    }
    EXPECT_TRUE(std::isnan(Angle(ZoVector3d::Null, ZoVector3d::XAxis)));
    EXPECT_TRUE(ZoVector3d::XAxis.IsLinearIndependent({-1, 0, 0}, 0.1));
    EXPECT_FALSE(ZoVector3d(1, 0, 0).IsPerpendicular({0.5, 7, 0}, 0.5));
    EXPECT_FALSE(ZoPoint3d(1, 2, 3).IsSame({1, 2, 3.5}, 0.5));
    EXPECT_FALSE(ZoVector3d(1.1e-10, 0, 0).IsNull(1.0));
}

TEST(Point3d, TurnsOfThreePointsAreSeenFromAbove) {
    const ZoPoint3d o(1, 1, 5), right(3, 1, -7), far(5, 1, 0), up(1, 2, 9);
    EXPECT_EQ(CounterClockwise(o, right, up), 1);
    EXPECT_EQ(CounterClockwise(o, up, right), -1);
    EXPECT_EQ(CounterClockwise(right, o, far), -1);
    EXPECT_EQ(CounterClockwise(o, far, right), 0);
    EXPECT_EQ(CounterClockwise(o, right, far), 1);
}

}  // namespace
