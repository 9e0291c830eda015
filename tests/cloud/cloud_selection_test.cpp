#include <numbers>

#include <gtest/gtest.h>

#include "zorv/cloud/point_cloud.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/rectify/select_volume3d.h"

namespace {

/// Points (0, 0, 0) to (9, 0, 0), numbered in the false colour.
ZoPointCloud Row() {
    ZoPointCloud cloud;
    for (int i = 0; i < 10; ++i) {
        ZoScanPoint3d point(i, 0, 0, 0);
        point.falseColor = static_cast<std::uint32_t>(i);
        point.normal[0] = 1;
        cloud.AddPoint(point);
    }
    cloud.SetRebuild(false);
    return cloud;
}

/// The points with low <= x <= high.
Zo3dSelectVolume Between(double low, double high) {
    Zo3dSelectVolume volume;
    ZoPlane plane;
    plane.A() = 1;
    plane.D() = -low;
    volume.SetPlane(0, plane);
    plane.A() = -1;
    plane.D() = high;
    for (int i = 1; i < 4; ++i)
        volume.SetPlane(i, plane);
    volume.StartPyramid();
    return volume;
}

std::string Numbers(const ZoPointCloud& cloud) {
    std::string numbers;
    for (const ZoScanPoint3d& point : cloud.points)
        numbers += std::to_string(point.falseColor) + (point.IsSelected() ? "*" : "");
    return numbers;
}

TEST(CloudSelection, GrowsUntilItIsLifted) {
    ZoPointCloud cloud = Row();
    EXPECT_EQ(cloud.SelectPoints(Between(2, 3)), 2u);
    EXPECT_EQ(cloud.SelectPoints(Between(6, 20)), 6u);
    EXPECT_EQ(Numbers(cloud), "012*3*456*7*8*9*");
    EXPECT_EQ(cloud.selectedBox.Xmin(), 2);
    EXPECT_NEAR(cloud.selectedCenter.Point().x(), 35.0 / 6, 1e-12);
    Zo3dSelectVolume stopped = Between(0, 9);
    stopped.Stop();
    cloud.points[2].SetSelected(false);
    EXPECT_EQ(cloud.SelectPoints(stopped), 5u);
    EXPECT_EQ(cloud.selectedBox.Xmin(), 3);

    cloud.InvertSelection();
    EXPECT_EQ(Numbers(cloud), "0*1*2*34*5*6789");
    EXPECT_EQ(cloud.selectedBox.Xmax(), 5);
    EXPECT_NEAR(cloud.selectedCenter.Point().x(), 33.0 / 5, 1e-12) << "stays";
    cloud.Deselect();
    EXPECT_FALSE(cloud.HasSelectedPoints() || cloud.selectedBox.IsValid());
    EXPECT_EQ(cloud.selectedCenter.GetCount(), 5) << "stays";
}

TEST(CloudSelection, DeletionsAreUndoneInReverseOrder) {
    ZoPointCloud cloud = Row();
    cloud.SelectPoints(Between(0, 1));
    EXPECT_EQ(cloud.DeleteSelectedPoints(), 2u);
    EXPECT_EQ(cloud.box.Xmin(), 2);
    EXPECT_EQ(cloud.selectedBox.GetCount() + static_cast<unsigned>(cloud.selectedCenter.GetCount()), 0u);
    EXPECT_TRUE(cloud.GetRebuild());
    cloud.SelectPoints(Between(4, 5));
    EXPECT_EQ(cloud.DeleteSelectedPoints(), 2u);
    EXPECT_TRUE(cloud.UndoDelete());
    EXPECT_EQ(Numbers(cloud), "23678945");
    EXPECT_TRUE(cloud.UndoDelete());
    EXPECT_EQ(Numbers(cloud), "2367894501");
    EXPECT_EQ(cloud.center.Point().x(), 4.5);
    EXPECT_FALSE(cloud.UndoDelete());
}

TEST(CloudSelection, DeletingNothingMakesTheBoundsAnew) {
    ZoPointCloud cloud = Row();
    cloud.points.resize(5);
    EXPECT_EQ(cloud.DeleteSelectedPoints(), 0u);
    EXPECT_TRUE(cloud.box.Xmax() == 4 && cloud.GetRebuild() && !cloud.HasUndoData());
    cloud.points.clear();
    EXPECT_EQ(cloud.DeleteSelectedPoints(), 0u);
    EXPECT_EQ(cloud.box.Xmax(), 4) << "an empty cloud is left alone";
}

TEST(CloudSelection, DeletedPointsGoThroughTransformations) {
    ZoPointCloud cloud = Row();
    const ZoAffinMap3d maps[] = {ZoAffinMap3d::RotZ(std::numbers::pi / 2) * ZoAffinMap3d::Scale(2, 1, 1),
                                 ZoAffinMap3d::Translate(100, 0, -7)};
    for (const ZoAffinMap3d& map : maps) {
        cloud.points[3].SetSelected(true);
        EXPECT_EQ(cloud.DeleteSelectedPoints(), 1u);
        EXPECT_TRUE(cloud.Transform(map));
    }
    while (cloud.UndoDelete()) {
    }
    ASSERT_EQ(cloud.Size(), 10u);
    for (const ZoScanPoint3d& point : cloud.points) {
        // (x, 0, 0) was stretched to (2 x, 0, 0), turned to (0, 2 x, 0) and shifted; its normal shrank.
        EXPECT_NEAR(point.y(), 2.0 * point.falseColor, 1e-12);
        EXPECT_NEAR(point.x(), 100, 1e-12);
        EXPECT_NEAR(point.z(), -7, 1e-12);
        EXPECT_NEAR(point.normal[1], 0.5, 1e-7);
    }
    EXPECT_NEAR(cloud.box.Ymax(), 18, 1e-12);
}

}  // namespace
