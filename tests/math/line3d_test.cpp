#include "zorv/math/line3d.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "zorv/math/center_point3d.h"
#include "zorv/math/plane3d.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kRounding = 1e-12;    // a few roundings of numbers around 10
constexpr double kMapRounding = 1e-6;  // metres, at coordinates around 5,000,000
const ZoPoint3d kOnMap(5000000.123, 5100000.456, 287.654);

void ExpectNear(const _MVector& a, double x, double y, double z, double tol = kRounding) {
    EXPECT_NEAR(a.x(), x, tol);
    EXPECT_NEAR(a.y(), y, tol);
    EXPECT_NEAR(a.z(), z, tol);
}

TEST(Line3d, FootOfThePerpendicularAndItsPlaceOnTheSegment) {
    const ZoLine3d line(ZoPoint3d(1, 2, 3), ZoPoint3d(5, 2, 3));
    ZoPoint3d foot;
    for (const double x : {0.5, 1.0, 5.0, 5.5}) {
        const bool onSegment = x >= 1 && x <= 5;
        EXPECT_EQ(line.getClosestPointTo({x, 5, 7}, foot, false), onSegment) << x;
        EXPECT_TRUE(line.getClosestPointTo({x, 5, 7}, foot, true));
        ExpectNear(foot, x, 2, 3);
        bool inSegment = !onSegment;
        EXPECT_EQ(line.getNormDistance({x, 5, 7}, inSegment), 5.0);
        EXPECT_EQ(inSegment, onSegment) << x;
    }
    double dist = 0;
    EXPECT_TRUE(!line.getDistAtPoint({-2, 2, 3 + 2e-10}, dist) && line.getDistAtPoint({-2, 2, 3}, dist));
    EXPECT_EQ(dist, 3.0);
    ZoLine3d moved(ZoPoint3d(1, 1, 1), ZoVector3d(0, 0, 5));
    ExpectNear(moved.end, 1, 1, 2, 0);
    moved.setEnd({1, 5, 1}, false);
    ExpectNear(moved.Evaluate(2), 1, 1, 3, 0);
    moved.setEnd({1, 5, 1}, true);
    ExpectNear(moved.Evaluate(2), 1, 3, 1, 0);
}

TEST(Line3d, LinesBeyondOneDegreeMeetMidway) {
    const ZoLine3d along(ZoPoint3d(-7, 0, 0), ZoVector3d(1, 0, 0));
    for (const double degrees : {0.0, 0.999, 1.001, 90.0, 178.9, 179.1, 180.0}) {
        ZoPoint3d point(1, 1, 1);
        ZoLine3d other(ZoPoint3d(40, 0, 1000), ZoPoint3d(40, 0, 1001));
        // Of any length: it is normalised.
        other.direction = 1e-4 * ZoVector3d(std::cos(degrees * kDegree), std::sin(degrees * kDegree), 0);
        const double distance = along.Intersect(other, point);
        if (degrees < 1 || degrees > 179) {
            EXPECT_EQ(distance, -1.0) << degrees;
            ExpectNear(point, 1, 1, 1, 0);
        } else {
            EXPECT_NEAR(distance, 1000.0, 1e-9) << degrees;
            ExpectNear(point, 40, 0, 500, 1e-9);
        }
    }
    ZoPoint3d point;
    EXPECT_EQ(along.Intersect(ZoLine3d(), point), -1.0);

    const ZoLine3d a(kOnMap - 30 * ZoVector3d(1, 2, 0.5), kOnMap), b(kOnMap + 20 * ZoVector3d(-2, 1, 0.25), kOnMap);
    EXPECT_LT(std::fabs(a.Intersect(b, point)), kMapRounding);
    EXPECT_LT(point.Distance(kOnMap), kMapRounding);
}

TEST(Plane3d, NormalLooksTowardsTheOrigin) {
    const ZoPlane3d above({0, 0, 2}, {0, 0, 5});
    ExpectNear(above.norm, 0, 0, -1, 0);
    EXPECT_EQ(above.dist, 2.0);
    EXPECT_EQ(above.Dist({9, 9, 3}), -1.0);
    ExpectNear(above.Projection({9, 8, 5}), 9, 8, 2, 0);
    const ZoPlane3d through(ZoPoint3d::origin, {0, 0, 5});
    ExpectNear(through.norm, 0, 0, 1, 0);
    EXPECT_EQ(through.dist, 0.0);
    ExpectNear(ZoPlane3d({0, 0, -2}, ZoVector3d::XAxis, ZoVector3d::YAxis).norm, 0, 0, 1, 0);
    // In a plane through the origin nothing turns v2 x v1.
    ExpectNear(ZoPlane3d({0, 7, 0}, ZoVector3d::XAxis, ZoVector3d::YAxis).norm, 0, 0, -1, 0);
    EXPECT_EQ(ZoPlane3d({0, 0, 4}, -2).Dist({0, 0, 3}), 1.0);

    const ZoVector3d u(3, -4, 1), v(0.2, 0.1, 5);
    const ZoPlane3d plane(kOnMap, u, v);
    const ZoPoint3d in = kOnMap + 7 * u - 3 * v;
    EXPECT_NEAR(plane.Dist(in + 0.001 * plane.norm), 0.001, kMapRounding);
    EXPECT_LT(plane.Projection(in + 0.001 * plane.norm).Distance(in), kMapRounding);
}

TEST(Plane3d, LinesAreInfiniteAndParallelOnesHaveNoPoint) {
    const ZoPlane3d plane({0, 0, 1}, -2);
    ZoPoint3d point;
    ZoLine3d line(ZoPoint3d(0, 0, 5), ZoVector3d(1, 0, 1));
    EXPECT_EQ(plane.Intersect(line, point), 0);
    ExpectNear(point, -3, 0, 2);
    line.direction = {1, 0, 0.99e-6};
    EXPECT_EQ(plane.Intersect(line, point), 1);
    ExpectNear(point, -3, 0, 2);
    line.direction = {1, 0, -1e-6};
    EXPECT_EQ(plane.Intersect(line, point), 0);
}

TEST(Plane3d, PlanesMeetInTheLineThroughItsPointAtZeroHeight) {
    const ZoPlane3d a({3, 0, 0}, {1, 0, 1}), b({0, 4, 0}, {0, 1, -2});
    ZoLine3d line(ZoPoint3d(1, 1, 1), ZoPoint3d(2, 2, 2));
    ASSERT_EQ(a.Intersect(b, line), 0);
    ExpectNear(line.start, 3, 4, 0);
    ExpectNear(line.end, 2, 2, 2, 0);
    EXPECT_NEAR(a.Dist(line.Evaluate(10)), 0, kRounding);
    EXPECT_NEAR(b.Dist(line.Evaluate(10)), 0, kRounding);
    EXPECT_GT(line.direction * (a.norm % b.norm), 0);
    for (const ZoPlane3d& none : {a, ZoPlane3d(-a.norm, 9), ZoPlane3d({3, 0, 1}, {1, 0, 2})}) {
        EXPECT_EQ(a.Intersect(none, line), -1);
        ExpectNear(line.start, 3, 4, 0);
    }
}

TEST(CenterPoint3d, CountsWhatItStandsFor) {
    ZoCenterPoint3d mean, other;
    mean.Add(7, 7, 7, 0);
    mean.Move(1, 1, 1);
    EXPECT_EQ(mean.GetCount(), 0);
    ExpectNear(mean.Point(), 0, 0, 0, 0);
    mean.Add({2, 4, 6}, 3);
    mean.Add(6, 0, 6);
    other.Add(-3, 0, 0, 2);
    mean.Add(other);
    EXPECT_EQ(mean.GetCount(), 6);
    ExpectNear(mean.Point(), 1, 2, 4);
    mean.Subtract({1, 2, -1});
    ExpectNear(mean.Point(), 1, 2, 5);
    mean.Add(1, 2, 6, -5);
    EXPECT_EQ(mean.GetCount(), 0);
    mean.Add(ZoCenterPoint3d());
    EXPECT_EQ(mean.GetCount(), 1);
    mean.Subtract(5, 5, 5);
    EXPECT_EQ(mean.GetCount(), 0);
    ExpectNear(mean.Point(), 0, 0, 0, 0);
}

TEST(CenterPoint3d, KeepsMicrometresForAHundredThousandPointsOnTheMap) {
    ZoCenterPoint3d mean;
    const int n = 100000;
    const ZoVector3d step(0.001, -0.001, 0.0001);
    for (int i = 0; i < n; ++i)
        mean.Add(kOnMap + i * step);
    EXPECT_LT(mean.Point().Distance(kOnMap + (n - 1) / 2.0 * step), kMapRounding);
}

}  // namespace
