#include "zorv/rectify/plane_fit.h"

#include <cmath>
#include <limits>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

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
ZoPointList Grid(double shiftX, double shiftY, double e) {
    ZoPointList list;
    const double pattern[3] = {1, -2, 1};
    const int places[9][2] = {{0, 0}, {2, 0}, {0, 2}, {0, 1}, {1, 0}, {1, 1}, {1, 2}, {2, 1}, {2, 2}};
    unsigned int id = 0;
    for (const auto& [ix, iy] : places) {
        const double x = 2.0 * ix, y = 3.0 * iy;
        list.Add(ZoPoint(++id, x + shiftX, y + shiftY, 0.25 * x - 0.5 * y + 3 + e * pattern[ix] * pattern[iy], 0));
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

TEST(PlaneFit, AdjustsTheDependentCoordinate) {
    for (const double shift : {0.0, 5e6}) {
        ZoPointList list = Grid(shift, shift, 0.01);
        ZoCalcPlane fit;
        ASSERT_TRUE(fit.CalcPlaneFromFilteredPoints(&list, true, false));
        // Unit normal of (-0.25, 0.5, 1) up to its sign, which the first three points give.
        const double length = std::sqrt(0.25 * 0.25 + 0.25 + 1);
        const double sign = fit.GetPlane().C() > 0 ? 1 : -1;
        const double tolerance = shift == 0 ? 1e-14 : 1e-9;
        EXPECT_NEAR(sign * fit.GetPlane().A(), -0.25 / length, tolerance);
        EXPECT_NEAR(sign * fit.GetPlane().B(), 0.5 / length, tolerance);
        // Where the true plane goes through (shift, shift, 3) the fit stays within a micrometre.
        EXPECT_NEAR(fit.GetPlane().Dist(shift, shift, 3.0), 0, 1e-6);
        // Residual of the corner: 0.01 along z is 0.01 / length across the plane; the pattern's squares sum to 36.
        EXPECT_NEAR(fit.GetUsedPoints().First()->dz, 0.01 / (length * length), 1e-6);
        EXPECT_NEAR(fit.GetZoPlaneMediumPointDist(), 0.06 / length, 1e-6);
        EXPECT_NEAR(fit.GetZoPlaneSigma0(), 0.06 / length / std::sqrt(9.0 - 3), 1e-6);
        for (const ZoPoint* p = fit.GetPointsInZoPlane().First(); p; p = p->NextConst())
            EXPECT_NEAR(fit.GetPlane().Dist(*p), 0, 1e-6);
        EXPECT_EQ(list.First()->dz, fit.GetUsedPoints().First()->dz);
    }
}

TEST(PlaneFit, AgreesOnAllAxes) {
    // The same points with the coordinates exchanged in a circle give the normal exchanged likewise.
    ZoPointList list = Grid(10, 20, 0.02);
    ZoVector normal(0.0, 0.0, 0.0);
    for (int turn = 0; turn < 3; ++turn) {
        ZoCalcPlane fit;
        ASSERT_TRUE(fit.CalcPlaneFromFilteredPoints(&list, false, false));
        const ZoVector found = fit.GetPlane().GetNorm();
        if (turn > 0) {
            EXPECT_NEAR(std::fabs(found * ZoVector(normal[3], normal[1], normal[2])), 1, 1e-12);
        }
        normal = found;
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
