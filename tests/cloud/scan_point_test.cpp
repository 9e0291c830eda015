#include "zorv/cloud/scan_point.h"

#include <gtest/gtest.h>

#include "zorv/points/point.h"

namespace {

TEST(ScanPoint, ColourBytesKeepEachOther) {
    ZoScanPoint3d point(1, 2, 3, static_cast<int>(0xfe030201));
    point.falseColor = 0x55000000;
    point.SetColor(0xff998877);
    point.SetFalseColor(0xff0a0b0c);
    point.SetGreen(2);
    point.SetFalseRed(1);
    point.SetFalseBlue(3);
    EXPECT_EQ(std::tuple(point.color, point.falseColor), std::tuple(0xfe990277u, 0x55030b01u));
    EXPECT_EQ(std::tuple(point.GetColor(), point.GetFalseColor(), point.GetFalseGreen()),
              std::tuple(0x990277u, 0x030b01u, 0x0b));
}

TEST(ScanPoint, IntensityFallsBackOnTheGreyValue) {
    EXPECT_EQ(ZoScanPoint3d(0, 0, 0, 0x07646464).GetIntensity(), 7);
    // 0.21 * 255 = 53.55, 0.72 * 255 = 183.6, 0.07 * 255 = 17.85; the other weights give 54.2, 182.4 and 18.4, rounded.
    struct Case {
        int color, truncated, rounded;
    };
    for (const Case& each : {Case{0xff, 53, 54}, {0xff00, 183, 182}, {0xff0000, 17, 18}, {0x646464, 100, 100}}) {
        const ZoScanPoint3d point(0, 0, 0, each.color);
        EXPECT_EQ(std::tuple(point.GetIntensity(), point.GrayIntensity()), std::tuple(each.truncated, each.rounded));
    }
}

TEST(ScanPoint, TakesTheFieldsOfAPoint) {
    ZoPoint point(7, 1, 2, 3, 0);
    point.dx = 0.1;
    point.dz = -4;
    point.vy = 0.5F;
    point.imoCount = 300;
    point.flags = 0x105;
    point.color = 0xff112233;
    const ZoScanPoint3d taken(point);
    EXPECT_TRUE(taken.x() == 1 && taken.y() == 2 && taken.z() == 3 && taken[3] == 1);
    EXPECT_TRUE(taken.extra[0] == 0.1F && taken.extra[2] == -4 && taken.normal[0] == 0 && taken.normal[1] == 0.5F);
    EXPECT_EQ(std::tuple(taken.GetNbrMeasurements(), taken.flags, taken.color), std::tuple(255, 5, 0xff112233u));
}

TEST(ScanPoint, OnlyTheCopyConstructorDropsTheFalseColour) {
    ZoScanPoint3d point(1, 2, 3, 4);
    point.extra[1] = 5;
    point.falseColor = 6;
    const ZoScanPoint3d copy(point);
    EXPECT_EQ(copy.falseColor, 0u);
    EXPECT_TRUE(copy.z() == 3 && copy.color == 4 && copy.extra[1] == 5);

    ZoScanPointVector points(3, point);
    for (int i = 0; i < 100; ++i)
        points.push_back(point);
    points.insert(points.begin() + 1, point);
    points.erase(points.begin() + 3);
    const ZoScanPointVector copies = points;
    ASSERT_EQ(copies.size(), 103u);
    for (const ZoScanPoint3d& each : copies)
        EXPECT_EQ(each.falseColor, 6u);
}

}  // namespace
