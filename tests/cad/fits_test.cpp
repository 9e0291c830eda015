#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "zorv/cad/arc.h"
#include "zorv/cad/balanced_line.h"
#include "zorv/cad/linear_regression.h"
#include "zorv/cad/rectangle.h"
#include "zorv/math/affine_map3d.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTolerance = 1e-12;

ZoPointList Points(const std::vector<std::array<double, 3>>& coordinates) {
    ZoPointList list;
    for (const auto& [x, y, z] : coordinates)
        list.Add(ZoPoint(0, x, y, z, 0));
    return list;
}

void ExpectNear(const ZoPoint& p, double x, double y, double z, double tolerance = kTolerance) {
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
    EXPECT_NEAR(p.z, z, tolerance);
}

TEST(CadArc, HalfCircleAndItsSizes) {
    const ZoPointList list = Points({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}});
    const ZoCadArc arc(&list);
    ASSERT_TRUE(arc.IsOk());
    EXPECT_NEAR(arc.GetRadius(), 1, kTolerance);
    ExpectNear(arc.GetCenterWCS(), 0, 0, 0);
    EXPECT_NEAR(arc.GetArcLength(), kPi, kTolerance);
    EXPECT_NEAR(arc.GetArcArea(), kPi / 2, kTolerance);
    EXPECT_NEAR(arc.GetCircleLength(), 2 * kPi, kTolerance);
    EXPECT_NEAR(arc.GetCircleArea(), kPi, kTolerance);
    const ZoPointList reversed = Points({{-1, 0, 0}, {0, 1, 0}, {1, 0, 0}});
    EXPECT_NEAR(ZoCadArc(&reversed).GetNormal()[3], -arc.GetNormal()[3], kTolerance);
    const ZoPointList upright = Points({{0, 1, 0}, {0, 0, 0}, {2, 0, 0}});
    ExpectNear(ZoCadArc(&upright).GetCenterWCS(), 1, 0.5, 0);
}

TEST(CadArc, CentreIsEquidistantInAnyPosition) {
    // A circle of radius 7 about (1000, -2000, 300), turned in space.
    const ZoAffinMap3d place = ZoAffinMap3d::Translate(1000, -2000, 300) * ZoAffinMap3d::RotXYZ(0.3, -1.1, 2.5);
    for (const double turn : {0.0, 0.7, 2.9, 4.4}) {
        ZoPointList list;
        for (const double angle : {0.2, 1.0, 2.7}) {
            const ZoPoint3d p = place * ZoPoint3d(7 * std::cos(angle + turn), 7 * std::sin(angle + turn), 0);
            list.Add(ZoPoint(0, p.x(), p.y(), p.z(), 0));
        }
        const ZoCadArc arc(&list);
        ASSERT_TRUE(arc.IsOk());
        EXPECT_NEAR(arc.GetRadius(), 7, 1e-9);
        ExpectNear(arc.GetCenterWCS(), 1000, -2000, 300, 1e-9);
        const double span = arc.GetEndAngle() - arc.GetStartAngle();
        EXPECT_NEAR(span < 0 ? span + 2 * kPi : span, 2.5, 1e-9);
    }
}

TEST(CadArc, DegeneratePointsAreTold) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ZoCadArc(nullptr).GetStatus(), 1);
    const ZoPointList two = Points({{1, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(ZoCadArc(&two).GetStatus(), 1);
    for (const ZoPointList& bad :
         {Points({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}), Points({{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}),
          Points({{nan, 0, 0}, {1, 0, 0}, {0, 1, 0}}), Points({{infinity, 0, 0}, {1, 0, 0}, {0, 1, 0}})}) {
        const ZoCadArc arc(&bad);
        EXPECT_EQ(std::tuple(arc.GetStatus(), arc.GetArcLength()), std::tuple(2, 0));
    }
}

TEST(LinearRegression, LeastSquaresAndVerticalLines) {
    ZoLinearRegression line;
    EXPECT_FALSE(line.Calc());
    for (const auto& [x, y] : {std::pair{1.0, 1.0}, {2.0, 3.0}, {3.0, 2.0}, {4.0, 5.0}})
        line.Add(5e6 + x, y, 9);
    ASSERT_TRUE(line.Calc());
    // By hand: mean (2.5, 2.75), sum of products 5.5, of squares 5.
    EXPECT_NEAR(line.GetSlope(), 1.1, 1e-12);
    EXPECT_NEAR(line.GetLow().y(), 1.1, 1e-9);
    EXPECT_NEAR(line.GetHigh().y(), 4.4, 1e-9);
    EXPECT_EQ(line.GetHigh().z(), 9);

    ZoLinearRegression vertical;
    for (const double y : {3.0, -1.0, 8.0})
        vertical.Add(1e6 + 0.1, y, 0);
    ASSERT_TRUE(vertical.Calc());
    EXPECT_EQ(std::tuple(vertical.GetLow().y(), vertical.GetHigh().y(), vertical.GetHigh().x()),
              std::tuple(-1, 8, 1e6 + 0.1));
    ZoLinearRegression place;
    place.Add(1, 2, 3);
    place.Add(1, 2, 3);
    EXPECT_FALSE(place.Calc());
}

TEST(CadBalancedLine, EndsAndDeviations) {
    ZoCadBalancedLine line;
    EXPECT_TRUE(!line.IsValid() && !line.AddPoint(0, 0, 0) && line.AddPoint(4, 0, 0));
    ExpectNear(line.GetEnd(), 4, 0, 0);
    // In the plane z = 0 the line through (0,0) (4,0) (2,3) is y = 1.
    EXPECT_TRUE(line.AddPoint(2, 3, 0));
    EXPECT_NEAR(std::fabs(line.GetStart().x - line.GetEnd().x), 4, kTolerance);
    EXPECT_NEAR(line.GetStart().y, 1, kTolerance);
    EXPECT_NEAR(line.GetMaxDeviation(), 2, kTolerance);
    EXPECT_NEAR(line.GetMeanDeviation(), 4.0 / 3, kTolerance);

    const ZoPointList straight = Points({{1, 0, 0}, {0, 0, 0}, {2, 0, 0}});
    const ZoCadBalancedLine fallback(&straight);
    EXPECT_TRUE(fallback.IsValid());
    EXPECT_EQ(std::fabs(fallback.GetStart().x - fallback.GetEnd().x), 2);
    EXPECT_EQ(fallback.GetMaxDeviation(), 0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const ZoPointList wild = Points({{nan, 0, 0}, {0, nan, 1}, {2, 0, nan}, {1, 1, 1}});
    EXPECT_TRUE(ZoCadBalancedLine(&wild).IsValid());
}

TEST(CadRectangle, FourthCornerCompletesTheRightAngle) {
    ZoPointList list = Points({{0, 1, 0}, {0, 0, 0}, {2, 0, 0}});
    ZoCadRectangle rectangle(&list, 0.01);
    ASSERT_TRUE(rectangle.IsOk());
    ExpectNear(rectangle.GetResult(), 2, 1, 0);
    EXPECT_EQ(std::tuple(rectangle.GetResult().GetId(), rectangle.GetPoints().Count()), std::tuple(4u, 4));
    EXPECT_NEAR(rectangle.GetArea(), 2, kTolerance);
    EXPECT_NEAR(rectangle.GetSegmentLength(), 6, kTolerance);
    EXPECT_NEAR(rectangle.GetAngle(), kPi / 2, kTolerance);

    // A second side that leans is turned to a right angle at its own length; the corner given stays.
    list = Points({{0, 10, 0}, {0, 0, 0}, {3, 4, 0}});
    ASSERT_EQ(rectangle.CalcRectangle(&list, 0.9), 1);
    ExpectNear(rectangle.GetResult(), 5, 10, 0);
    ExpectNear(*rectangle.GetPoints().Get(2), 3, 4, 0);
    EXPECT_EQ(rectangle.GetPoints().Count(), 4);
    EXPECT_EQ(rectangle.CalcRectangle(&list, 0.8), 0) << "the cosine is 0.8";
    EXPECT_EQ(rectangle.GetStatus(), 2);
    EXPECT_FALSE(ZoCadRectangle(&list, 0.0).IsOk());
    const ZoPointList degenerate = Points({{1, 1, 1}, {1, 1, 1}, {2, 0, 0}});
    EXPECT_EQ(ZoCadRectangle(&degenerate, 0.5).GetStatus(), 2);
    const ZoPointList straight = Points({{1, 0, 0}, {0, 0, 0}, {-2, 0, 0}});
    EXPECT_EQ(ZoCadRectangle(&straight, 2.0).GetStatus(), 2);
    EXPECT_EQ(ZoCadRectangle(nullptr, 0.5).GetStatus(), 1);
}

}  // namespace
