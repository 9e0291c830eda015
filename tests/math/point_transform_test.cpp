#include <cmath>

#include <gtest/gtest.h>

#include "zorv/math/matrix.h"
#include "zorv/math/vector3d.h"
#include "zorv/points/point_list.h"

namespace {

// Images worked out by hand.
const double kPlaneMap[] = {1, 2, 3, -1, 1, 0, 1, 0, 1};
const double kSpaceMap[] = {1, 0, 0, 5, 0, 2, 0, 6, 0, 0, 3, 7, 0, 0, 1, 1};

TEST(PointTransform, MapsThePlane) {
    const ZoMatrix m(kPlaneMap, 3, 3);
    ZoPoint point(1, 3.0, 4.0, 9.0, 0);
    EXPECT_TRUE(m.PTrans2D(&point));
    EXPECT_EQ(point.GetAsVector(), ZoVector(3.5, 0.25, 9.0));
    ZoVector3d v(3.0, 4.0, 9.0);
    EXPECT_TRUE(m.PTrans2D(&v));
    EXPECT_EQ(ZoVector(v.x(), v.y(), v.z()), ZoVector(3.5, 0.25, 9.0));
    double x = -1.0 + 9e-11;
    double y = 4.0;
    EXPECT_FALSE(m.PTrans2D(&x, &y));
    EXPECT_EQ(ZoVector(x, y), ZoVector(-1.0 + 9e-11, 4.0));
}

TEST(PointTransform, MapsListsAndCountsWhatFails) {
    ZoPointList list;
    list.Add(ZoPoint(1, 3.0, 4.0, 1.0, 0));
    list.Add(ZoPoint(2, -1.0, 4.0, -1.0, 0));
    list.Add(ZoPoint(3, 0.0, 0.0, 0.0, 0));
    ZoPointList space(list);
    EXPECT_EQ(Transform2D(&list, ZoMatrix(kPlaneMap, 3, 3)), 3);
    EXPECT_EQ(list.First()->GetAsVector(), ZoVector(3.5, 0.25, 1.0));
    EXPECT_EQ(list.Get(1)->GetAsVector(), ZoVector(-1.0, 4.0, -1.0));
    EXPECT_EQ(list.Get(2)->GetAsVector(), ZoVector(3.0, 0.0, 0.0));
    EXPECT_EQ(Transform3D(&space, ZoMatrix(kSpaceMap, 4, 4)), 3);
    EXPECT_EQ(space.First()->GetAsVector(), ZoVector(4.0, 7.0, 5.0));
    EXPECT_EQ(space.Get(1)->GetAsVector(), ZoVector(-1.0, 4.0, -1.0));
    EXPECT_EQ(space.Get(2)->GetAsVector(), ZoVector(5.0, 6.0, 7.0));
    ZoPointList empty;
    EXPECT_EQ(Transform2D(&empty, ZoMatrix(3, 3)) + Transform3D(nullptr, ZoMatrix(4, 4)), 0);
}

TEST(PointTransform, FindsTheNormalOfAMappedPlane) {
    // The plane z = 0 goes to x = 2 w: the origin to (2, 0, 0), the axes to y and z.
    double map[] = {0, 0, 1, 2, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1};
    ZoVector normal(3);
    EXPECT_TRUE(CalcNormVect(&normal, ZoMatrix(map, 4, 4)));
    EXPECT_EQ(normal, ZoVector(1.0, 0.0, 0.0));
    map[12] = -1.0;  // (1, 0, 0) goes to infinity
    EXPECT_FALSE(CalcNormVect(&normal, ZoMatrix(map, 4, 4)));
    EXPECT_EQ(normal, ZoVector(1.0, 0.0, 0.0));
}

TEST(PointTransform, AxesOfANormalSwitchAtOneSixtyFourth) {
    ZoVector x(3);
    ZoVector y(3);
    EXPECT_TRUE(CalcArbitaryAlg(&x, &y, ZoVector(0.0, 0.0, 1.0)));
    EXPECT_EQ(x, ZoVector(1.0, 0.0, 0.0));
    EXPECT_EQ(y, ZoVector(0.0, 1.0, 0.0));
    CalcArbitaryAlg(&x, &y, ZoVector(0.0, 0.0, -1.0));
    EXPECT_EQ(x, ZoVector(-1.0, 0.0, 0.0));
    const double limit = 1.0 / 64.0;
    for (const bool atPole : {true, false}) {
        const double slope = atPole ? limit - 1e-12 : limit;
        const ZoVector normal(slope, 0.0, std::sqrt(1.0 - slope * slope));
        CalcArbitaryAlg(&x, &y, normal);
        EXPECT_EQ(std::fabs(x[1]) > 0.5, atPole);  // near the pole x runs along x, else along z x normal = y
        EXPECT_LT(std::fabs(x * y) + std::fabs(x * normal) + (x % y - normal).Abs(), 1e-15);
    }
}

}  // namespace
