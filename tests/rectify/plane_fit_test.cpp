#include "zorv/rectify/plane_fit.h"

#include <cmath>
#include <limits>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

constexpr double kRounding = 1e-14;  // of coordinates below 10

ZoPointList Points(const std::vector<std::array<double, 3>>& coordinates) {
    ZoPointList list;
    unsigned int id = 0;
    for (const auto& [x, y, z] : coordinates)
        list.Add(ZoPoint(++id, x, y, z, 0));
    return list;
}

/// Points of z = 0.25 x - 0.5 y + 3 with deviations that are normal to 1, x and y over a 3 by 3 grid, so that the least
/// squares plane is this very one: e, -2e, e by columns times the same by rows. The first three points are corners: the
/// plane through them decides along which axis the adjustment works, whatever the others say.
ZoPointList Grid(double e) {
    ZoPointList list;
    const double pattern[3] = {1, -2, 1};
    const int places[9][2] = {{0, 0}, {2, 0}, {0, 2}, {0, 1}, {1, 0}, {1, 1}, {1, 2}, {2, 1}, {2, 2}};
    unsigned int id = 0;
    for (const auto& [ix, iy] : places) {
        const double x = 2.0 * ix, y = 3.0 * iy;
        list.Add(ZoPoint(++id, x, y, 0.25 * x - 0.5 * y + 3 + e * pattern[ix] * pattern[iy], 0));
    }
    return list;
}

TEST(PlaneFit, ThreePointsGiveThePlaneThroughThem) {
    ZoPoint a(1, 1, 0, 0, 0), b(2, 0, 1, 0, 0), c(3, 0, 0, 1, 0);
    ZoCalcPlane fit;
    EXPECT_EQ(fit.GetZoPlaneStatus(), ZoCalcPlane::TooLessPoints);
    ASSERT_TRUE(fit.CalcPlane(&a, &b, &c, false));
    const double third = 1 / std::sqrt(3.0);
    EXPECT_LT((fit.GetPlane().GetNorm() - ZoVector(third, third, third)).Abs(), 1e-15);
    EXPECT_NEAR(fit.GetPlane().D(), -third, 1e-15);
    EXPECT_EQ(std::tuple(fit.GetZoPlaneSigma0(), fit.GetZoPlaneMediumPointDist()), std::tuple(0, 0));
    ASSERT_EQ(fit.GetPointsInZoPlane().Count(), 3);
    EXPECT_EQ(*fit.GetPointsInZoPlane().Last(), c);
    const TempFolder folder;
    fit.WriteLogfile(folder.Name("plane.log"));
    const std::string log = folder.Read("plane.log");
    const std::size_t points = log.find("  dS\n", log.find("3D PLANE DEFINITION\n\n\n"));
    ASSERT_NE(points, log.npos);
    EXPECT_NE(log.find("          3 \"\"", points), log.npos);
    EXPECT_TRUE(log.ends_with("0\n\n"));
    EXPECT_FALSE(fit.CalcPlane(&a, nullptr, &c, false));
    EXPECT_NEAR(fit.GetPlane().D(), -third, 1e-15) << "a failure leaves the plane";
    EXPECT_STREQ(fit.GetZoPlaneStatusAsText(), "ZoCalcPlane::TooLessPoints");
}

TEST(PlaneFit, AdjustsTheDependentCoordinateOnAllAxes) {
    ZoPointList list = Grid(0.01);
    const double length = std::sqrt(0.25 * 0.25 + 0.25 + 1);
    ZoVector normal(-0.25 / length, 0.5 / length, 1 / length);  // up to its sign, which the first three points give
    for (const int turn : {0, 1, 2}) {
        SCOPED_TRACE(turn);
        ZoCalcPlane fit;
        ASSERT_TRUE(fit.CalcPlaneFromFilteredPoints(&list, true, false));
        const ZoVector found = fit.GetPlane().GetNorm();
        EXPECT_LT(std::min((found - normal).Abs(), (found + normal).Abs()), kRounding);
        // The corner lies off by 0.01 along the dependent axis; the pattern's squares sum to 36.
        const ZoPoint& corner = *list.First();
        EXPECT_LT((ZoVector(corner.dx, corner.dy, corner.dz) - normal * (0.01 / length)).Abs(), kRounding);
        EXPECT_EQ(corner.dz, fit.GetUsedPoints().First()->dz);
        EXPECT_NEAR(fit.GetZoPlaneMediumPointDist(), 0.06 / length, kRounding);
        EXPECT_NEAR(fit.GetZoPlaneSigma0(), 0.06 / length / std::sqrt(9.0 - 3), kRounding);
        for (const ZoPoint* p = fit.GetPointsInZoPlane().First(); p; p = p->NextConst())
            EXPECT_NEAR(fit.GetPlane().Dist(*p), 0, kRounding);
        // The coordinates exchanged in a circle.
        normal = ZoVector(normal[3], normal[1], normal[2]);
        for (ZoPoint* p = list.First(); p; p = p->Next())
            std::tie(p->x, p->y, p->z) = std::make_tuple(p->z, p->x, p->y);
    }
}

TEST(PlaneFit, BadDistributionsAreTold) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::tuple<const char*, ZoPointList, bool, ZoCalcPlane::eStatus> cases[] = {
        {"two points", Points({{0, 0, 0}, {1, 0, 0}}), false, ZoCalcPlane::TooLessPoints},
        {"one place", Points({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}), true, ZoCalcPlane::BadPointDistrib},
        {"a line", Points({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}), false, ZoCalcPlane::BadPointDistrib},
        {"an exact line, accepted", Points({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}), true, ZoCalcPlane::BadPointDistrib},
        {"nearly a line", Points({{0, 0, 0}, {1, 0, 0}, {2, 1e-4, 0}}), false, ZoCalcPlane::BadPointDistrib},
        {"nearly a line, accepted", Points({{0, 0, 0}, {1, 0, 0}, {2, 1e-4, 0}}), true, ZoCalcPlane::StatusOk},
        {"only the last is off", Points({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 5}}), false, ZoCalcPlane::StatusOk},
        {"not a number", Points({{nan, 0, 0}, {1, nan, 0}, {0, 1, nan}, {1, 1, 1}}), false,
         ZoCalcPlane::BadPointDistrib},
        {"not a number in the last", Points({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, nan}}), true,
         ZoCalcPlane::BadPointDistrib},
        {"no extent in b", Points({{0, 0, 0}, {0, 0, 1}, {0, 0, 2}, {0, 1e-9, 0}}), true, ZoCalcPlane::StatusOk},
    };
    for (auto& [name, points, acceptCollinear, expected] : cases) {
        SCOPED_TRACE(name);
        const bool isGood = expected == ZoCalcPlane::StatusOk;
        ZoCalcPlane fit;
        EXPECT_EQ(fit.CalcPlaneFromFilteredPoints(&points, true, acceptCollinear), isGood);
        EXPECT_EQ(std::tuple(fit.GetZoPlaneStatus(), fit.GetPlane().IsValid()), std::tuple(expected, isGood));
    }
    EXPECT_FALSE(ZoCalcPlane().CalcPlaneFromFilteredPoints(nullptr, true, false));
}

unsigned int HasEvenId(const ZoObject* object) {
    return object->GetId() % 2 == 0 ? 1 : 0;
}

TEST(PlaneFit, FilterIsSharedByCopies) {
    ZoPointList list = Points({{0, 0, 50}, {0, 0, 0}, {0, 0, -90}, {1, 0, 0}, {9, 9, 9}, {0, 1, 0}, {7, 7, 7}});
    ZoCalcPlane fit;
    auto* filter = new ZoTestFilter(&HasEvenId);
    fit.SetCooFilter(filter);
    fit.SetCooFilter(filter);
    ZoCalcPlane copy(fit);
    fit.SetCooFilter(nullptr);
    ASSERT_TRUE(copy.CalcPlaneFromFilteredPoints(&list, true, false));
    EXPECT_EQ(copy.GetUsedPoints().Count(), 3);
    EXPECT_EQ(std::fabs(copy.GetPlane().C()), 1);
    // The filter is set aside for these and back afterwards.
    ASSERT_TRUE(copy.CalcParallelPlane(4));
    EXPECT_TRUE(copy.GetPlane().GetNorm() == ZoVector::kZaxis3D);
    ASSERT_TRUE(copy.CalcParallelPlane(6));
    EXPECT_TRUE(copy.GetPlane().GetNorm() == ZoVector(0.0, -1.0, 0.0));
    EXPECT_FALSE(copy.CalcParallelPlane(7));
    EXPECT_EQ(copy.GetZoPlaneStatus(), ZoCalcPlane::TooLessPoints);
    EXPECT_TRUE(copy.CalcPlaneFromFilteredPoints(&list, false, false));
    EXPECT_EQ(copy.GetUsedPoints().Count(), 3);
}

TEST(PlaneFit, NormalPlaneHoldsTheLine) {
    const ZoPoint a(1, 1, 2, 3, 0), b(2, 4, 6, 3, 0);
    ZoCalcPlane fit;
    ASSERT_TRUE(fit.CalcNormalPlane(4, a, b));
    EXPECT_NEAR(fit.GetPlane().Dist(a), 0, 1e-12);
    EXPECT_NEAR(fit.GetPlane().Dist(b), 0, 1e-12);
    EXPECT_NEAR(fit.GetPlane().C(), 0, 1e-15);
    EXPECT_FALSE(fit.CalcNormalPlane(nullptr, a, b));
}

}  // namespace
