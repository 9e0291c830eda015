#include "zorv/points/point.h"

#include <gtest/gtest.h>

namespace {

TEST(Point, ControlCodesCountThreeBitsOnly) {
    EXPECT_STREQ(ZoPoint::GetControlCodeAs123(8), ZoPoint::GetControlCodeAs123(0));
    EXPECT_STREQ(ZoPoint::GetControlCodeAs123(3), " 12");
    EXPECT_STREQ(ZoPoint::GetControlCodeAsXYZ(6), " YZ");
    ZoPoint point;
    EXPECT_EQ(point.SetAsControlFlag("XZ"), 5);
    EXPECT_EQ(point.SetAsControlFlag(" N "), 0);
    EXPECT_EQ(point.SetAsControlFlag(13), 5);
    EXPECT_EQ(point.SetAsControlFlag(-321), 7);
}

TEST(Point, ScalingLeavesTheDifferences) {
    ZoPoint a(1, 2.0, 4.0, 6.0, 0);
    a.dx = 8.0;
    ZoPoint b(9, 1.0, 1.0, 2.0, 3);
    b.dx = 0.5;
    EXPECT_EQ((a * 2.0).dx, 8.0);
    EXPECT_EQ((a / 2.0).z, 3.0);
    EXPECT_EQ((a + b).dx, 8.5);
    EXPECT_EQ((a - b).x, 1.0);
    const ZoPoint mean = a % b;
    EXPECT_EQ(std::tuple(mean.z, mean.dx, mean.id), std::tuple(4.0, 4.25, 1u));
    EXPECT_EQ(ZoPoint(0, 3.0, 4.0, 12.0, 0).Distance(ZoPoint()), 13.0);
    EXPECT_EQ(a.Distance(nullptr), 0.0);
}

TEST(Point, UnitsScaleCoordinatesAndDifferences) {
    ZoPoint point(1, 1500.0, -20.0, 3.0, 0);
    point.dy = 250.0;
    point.residualX = 7.0;
    ConvertUnit(&point, eZoUnitMm, eZoUnitM);
    EXPECT_DOUBLE_EQ(point.x, 1.5);
    EXPECT_DOUBLE_EQ(point.dy, 0.25);
    EXPECT_EQ(point.residualX, 7.0);
}

TEST(Point, GrayIntensityOfRed) {
    ZoPoint point;
    point.color = 0x000000ff;  // 13933 * 255 / 65536 = 54.2
    EXPECT_EQ(point.GrayIntensity(), 54);
}

}  // namespace
