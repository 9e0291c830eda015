#include <cmath>

#include <gtest/gtest.h>

#include "zorv/math/matrix.h"
#include "zorv/math/vector3d.h"
#include "zorv/points/point_list.h"

namespace {

// The images are worked out by hand.
TEST(PointTransform, MapsListsAndCountsWhatFails) {
    const double plane[] = {1, 2, 3, -1, 1, 0, 1, 0, 1};
    const double space[] = {1, 0, 0, 5, 0, 2, 0, 6, 0, 0, 3, 7, 0, 0, 1, 1};
    ZoPointList list;
    list.Add(ZoPoint(1, 3.0, 4.0, 1.0, 0));
    list.Add(ZoPoint(2, -1.0 + 9e-11, 4.0, -1.0, 0));  // both denominators are below the limit
    ZoPointList other(list);
    EXPECT_EQ(Transform2D(&list, ZoMatrix(plane, 3, 3)), 2);
    EXPECT_EQ(list.First()->GetAsVector(), ZoVector(3.5, 0.25, 1.0));
    EXPECT_EQ(list.Last()->GetAsVector(), ZoVector(-1.0 + 9e-11, 4.0, -1.0));
    EXPECT_EQ(Transform3D(&other, ZoMatrix(space, 4, 4)), 2);
    EXPECT_EQ(other.First()->GetAsVector(), ZoVector(4.0, 7.0, 5.0));
    EXPECT_EQ(other.Last()->GetAsVector(), ZoVector(-1.0 + 9e-11, 4.0, -1.0));
    EXPECT_FALSE(ZoMatrix(plane, 3, 3).PTrans2D(other.Last()));
    ZoVector3d v(3.0, 4.0, 9.0);
    EXPECT_TRUE(ZoMatrix(plane, 3, 3).PTrans2D(&v));
    EXPECT_EQ(ZoVector(v.x(), v.y(), v.z()), ZoVector(3.5, 0.25, 9.0));
    EXPECT_EQ(Transform2D(nullptr, ZoMatrix(3, 3)) + Transform3D(nullptr, ZoMatrix(4, 4)), 0);
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
    ZoVector x(3), y(3);
    for (const double slope : {0.0, 1.0 / 64.0 - 1e-12, 1.0 / 64.0}) {
        const ZoVector normal(slope, 0.0, std::sqrt(1.0 - slope * slope));
        EXPECT_TRUE(CalcArbitaryAlg(&x, &y, normal));
        EXPECT_EQ(x[1] > 0.5, slope < 1.0 / 64.0);  // near the pole x runs along x, else along z x normal = y
        EXPECT_LT(std::fabs(x * y) + std::fabs(x * normal) + (x % y - normal).Abs(), 1e-15);
    }
}

}  // namespace
