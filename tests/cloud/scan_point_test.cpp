#include "zorv/cloud/scan_point.h"

#include <limits>

#include <gtest/gtest.h>

#include "zorv/points/point.h"

namespace {

TEST(ScanPoint, ColourBytesKeepEachOther) {
    ZoScanPoint3d point(1, 2, 3, static_cast<int>(0xfe030201));
    EXPECT_EQ(point[3], 1.0);
    EXPECT_EQ(point.GetIntensity(), 0xfe);
    point.SetColor(0xff998877);
    EXPECT_EQ(point.color, 0xfe998877u);
    point.SetRed(1);
    point.SetGreen(2);
    point.SetBlue(3);
    point.SetIntensity(4);
    EXPECT_EQ(point.color, 0x04030201u);
    EXPECT_EQ(point.GetColor(), 0x030201u);
    EXPECT_EQ(point.GetRed() << 8 | point.GetGreen() << 4 | point.GetBlue(), 0x123);
    EXPECT_EQ(point.falseColor, 0u);
    point.falseColor = 0x55000000;
    point.SetFalseColor(0xff0a0b0c);
    EXPECT_EQ(point.falseColor, 0x550a0b0cu);
    point.SetFalseRed(1);
    point.SetFalseGreen(2);
    point.SetFalseBlue(3);
    EXPECT_EQ(point.GetFalseColor(), 0x030201u);
    EXPECT_EQ(point.GetFalseRed() << 8 | point.GetFalseGreen() << 4 | point.GetFalseBlue(), 0x123);
}

TEST(ScanPoint, IntensityFallsBackOnTheGreyValue) {
    EXPECT_EQ(ZoScanPoint3d(0, 0, 0, 0x646464).GetIntensity(), 100);
    EXPECT_EQ(ZoScanPoint3d(0, 0, 0, 0x07646464).GetIntensity(), 7);
    // 0.21 * 255 = 53.55, 0.72 * 255 = 183.6, 0.07 * 255 = 17.85; the other weights give 54.2, 182.4 and 18.4, rounded.
    const int colours[] = {0xff, 0xff00, 0xff0000};
    const int truncated[] = {53, 183, 17};
    const int rounded[] = {54, 182, 18};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ZoScanPoint3d(0, 0, 0, colours[i]).GetIntensity(), truncated[i]);
        EXPECT_EQ(ZoScanPoint3d(0, 0, 0, colours[i]).GrayIntensity(), rounded[i]);
    }
}

TEST(ScanPoint, SelectionClearsTheOtherFlags) {
    ZoScanPoint3d point;
    point.SetFlags(0xfe);
    EXPECT_FALSE(point.IsSelected());
    point.SetSelected(true);
    EXPECT_EQ(point.GetFlags(), 1);
    point.SetFlags(0xff);
    point.SetSelected(false);
    EXPECT_EQ(point.GetFlags(), 0);
    EXPECT_FALSE(point.HasNormVector());
    point.normal[2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(point.HasNormVector());
}

TEST(ScanPoint, TakesTheFieldsOfAPoint) {
    ZoPoint point(7, 1, 2, 3, 0);
    point.dx = 0.1;
    point.dz = -4;
    point.vy = 0.5F;
    point.imoCount = 300;
    point.flags = 0x105;
    point.color = 0xff112233;
    ZoScanPoint3d taken(point);
    EXPECT_TRUE(taken.x() == 1 && taken.y() == 2 && taken.z() == 3 && taken[3] == 1);
    EXPECT_TRUE(taken.extra[0] == 0.1F && taken.extra[1] == 0 && taken.extra[2] == -4);
    EXPECT_TRUE(taken.normal[0] == 0 && taken.normal[1] == 0.5F);
    EXPECT_EQ(taken.GetNbrMeasurements(), 255);
    EXPECT_EQ(taken.flags, 5);
    EXPECT_EQ(taken.color, 0xff112233u);
    EXPECT_EQ(taken.falseColor, 0u);
    EXPECT_EQ(ZoScanPoint3d(ZoPoint3d(4, 5, 6)).z(), 6);
}

TEST(ScanPoint, OnlyTheCopyConstructorDropsTheFalseColour) {
    ZoScanPoint3d point(1, 2, 3, 4);
    point.extra[1] = 5;
    point.falseColor = 6;
    const ZoScanPoint3d copy(point);
    EXPECT_EQ(copy.falseColor, 0u);
    EXPECT_TRUE(copy.z() == 3 && copy.color == 4 && copy.extra[1] == 5);
    ZoScanPoint3d assigned;
    assigned = point;
    EXPECT_EQ(assigned.falseColor, 6u);

    ZoScanPointVector points(3, point);
    for (int i = 0; i < 100; ++i)
        points.push_back(point);
    points.insert(points.begin() + 1, point);
    points.insert(points.begin(), assigned);
    points.erase(points.begin() + 3);
    const ZoScanPointVector copies = points;
    ASSERT_EQ(copies.size(), 104u);
    for (const ZoScanPoint3d& each : copies)
        EXPECT_EQ(each.falseColor, 6u);
}

}  // namespace
