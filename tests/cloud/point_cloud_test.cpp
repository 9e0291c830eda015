#include "zorv/cloud/point_cloud.h"

#include <cmath>
#include <limits>
#include <new>
#include <numbers>

#include <gtest/gtest.h>

#include "zorv/math/affine_map3d.h"

namespace {

/// The corners (0, 0, 0) and (size, 2 size, 3 size), the second one selected.
ZoPointCloud Diagonal(double size) {
    ZoPointCloud cloud;
    cloud.AddPoint(ZoScanPoint3d(0, 0, 0, 0));
    ZoScanPoint3d corner(size, 2 * size, 3 * size, 0);
    corner.SetSelected(true);
    corner.falseColor = 77;
    cloud.AddPoint(corner);
    return cloud;
}

void ExpectPoint(const ZoPoint3d& point, double x, double y, double z) {
    EXPECT_NEAR(point.x(), x, 1e-9);
    EXPECT_NEAR(point.y(), y, 1e-9);
    EXPECT_NEAR(point.z(), z, 1e-9);
}

TEST(PointCloud, AddedPointsEnterBoxAndCentre) {
    ZoPointCloud cloud = Diagonal(2);
    EXPECT_EQ(cloud.Size(), 2u);
    EXPECT_EQ(cloud.points[1].falseColor, 77u);
    ExpectPoint(cloud.center.Point(), 1, 2, 3);
    EXPECT_EQ(cloud.box.GetCount(), 2u);
    ExpectPoint(cloud.box.Center(), 1, 2, 3);
    EXPECT_EQ(cloud.selectedBox.GetCount(), 1u);
    EXPECT_EQ(cloud.selectedBox.Xmin(), 2);
    EXPECT_EQ(cloud.selectedCenter.GetCount(), 0);
    EXPECT_TRUE(cloud.IsActive());
    EXPECT_TRUE(cloud.GetRebuild());
    // One that stands in the vector itself, which has to grow for it.
    cloud.points.shrink_to_fit();
    cloud.AddPoint(cloud.points[1]);
    EXPECT_EQ(cloud.center.GetCount(), 3);
    EXPECT_EQ(cloud.points[2].z(), 6);
    cloud.Reserve(100);
    EXPECT_GE(cloud.points.capacity(), 103u);
    EXPECT_THROW(cloud.Reserve(~std::size_t{0}), std::bad_alloc);
}

TEST(PointCloud, RebuildFollowsTheSizeOfTheBox) {
    ZoPointCloud cloud = Diagonal(100);
    cloud.SetRebuild(false);
    cloud.points.emplace_back(102.9, 0, 0, 0);  // 2.9 more, of the largest side 300 less than a hundredth
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(false));
    EXPECT_FALSE(cloud.GetRebuild());
    EXPECT_EQ(cloud.box.Xmax(), 102.9);
    EXPECT_NEAR(cloud.center.Point().x(), 202.9 / 3, 1e-12);
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(true));
    EXPECT_TRUE(cloud.GetRebuild());
    EXPECT_EQ(cloud.box.GetCount(), 1u);
    ExpectPoint(cloud.center.Point(), 100, 200, 300);
    EXPECT_FALSE(ZoPointCloud().CalcCenterAndBoundingBox(false));
}

TEST(PointCloud, BoundsThroughAMap) {
    // A quarter turn about z, then a step along x: (x, y, z) goes to (10 - y, x, z); scales give normals their inverse.
    const ZoAffinMap3d map =
        ZoAffinMap3d::Translate(10, 0, 0) * ZoAffinMap3d::RotZ(std::numbers::pi / 2) * ZoAffinMap3d::Scale(1, 1, 2);
    ZoPointCloud cloud = Diagonal(2);
    cloud.points[0].normal[0] = 1;
    cloud.points[1].normal[2] = 1;
    cloud.SetRebuild(false);
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(map, false));
    EXPECT_FALSE(cloud.GetRebuild());
    ExpectPoint(cloud.box.Center(), 8, 1, 6);
    ExpectPoint(cloud.center.Point(), 8, 1, 6);

    ZoBoundingBox3d sumBox;
    ZoCenterPoint3d sumCenter;
    ZoVector3d normal(9, 9, 9);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, false));
    EXPECT_EQ(sumCenter.GetCount(), 4);
    EXPECT_EQ(sumBox.GetCount(), 4u);
    ExpectPoint(sumCenter.Point(), 8, 1, 6);
    ExpectPoint(normal.AsPoint(), 0, 0.5, 0.25);
    EXPECT_EQ(normal[3], 0);
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, true));
    ExpectPoint(normal.AsPoint(), 0, 0, 0.5);
    cloud.Deselect();
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, true));
    ExpectPoint(normal.AsPoint(), 0, 0, 0);
    normal = ZoVector3d(9, 9, 9);
    EXPECT_FALSE(ZoPointCloud().CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, false));
    EXPECT_EQ(normal.x(), 9);
    EXPECT_EQ(sumCenter.GetCount(), 5);

    ZoBoundingBox3d all, selected;
    cloud = Diagonal(2);
    EXPECT_TRUE(cloud.UpdateBoundingBox(all, map, true));
    EXPECT_EQ(all.GetCount(), 1u);
    EXPECT_TRUE(cloud.UpdateBoundingBoxes(all, selected, map));
    EXPECT_EQ(all.GetCount(), 3u);
    ExpectPoint(all.Center(), 8, 1, 6);
    ExpectPoint(selected.Center(), 6, 2, 12);
    EXPECT_FALSE(ZoPointCloud().UpdateBoundingBox(all, map, false));
    EXPECT_FALSE(ZoPointCloud().UpdateBoundingBoxes(all, selected, map));
}

TEST(PointCloud, InsertedIntoItselfDoublesThePoints) {
    ZoPointCloud cloud = Diagonal(2);
    cloud.Insert(&cloud);
    ASSERT_EQ(cloud.Size(), 4u);
    EXPECT_EQ(cloud.points[3].falseColor, 77u);
    EXPECT_EQ(cloud.center.GetCount(), 4);
    ExpectPoint(cloud.center.Point(), 1, 2, 3);
    EXPECT_EQ(cloud.box.GetCount(), 3u);
    EXPECT_EQ(cloud.selectedBox.GetCount(), 2u);

    ZoPointCloud other;
    other.Insert(nullptr);
    other.Insert(&other);
    EXPECT_EQ(other.center.GetCount(), 0) << "nothing is no point";
    other.Insert(&cloud);
    EXPECT_EQ(other.center.GetCount(), 4);
    EXPECT_EQ(other.box.Ymax(), 4);
}

TEST(PointCloud, CopiesHaveEverythingButTheObservers) {
    struct Heard : ZoObserver {
        using ZoObserver::ZoObserver;
        void Notify(ZoNotifyEvent* event) override { hint = event->object; }
        void* hint = nullptr;
    };
    ZoPointCloud cloud = Diagonal(2);
    Heard first(&cloud), second(&cloud);
    cloud.SetName(L"Wall");
    cloud.SetActive(false);
    cloud.DeleteSelectedPoints();
    cloud.displayLists = {5, 6};
    cloud.scanInfo.tenWords[9] = 8;
    cloud.noColors = cloud.hostValue = 1;
    cloud.NotifyChanged(&cloud, &second);
    EXPECT_EQ(first.hint, &cloud);
    EXPECT_EQ(second.hint, nullptr);

    ZoPointCloud assigned;
    Heard third(&assigned);
    assigned = cloud;
    for (ZoPointCloud copy : {cloud, assigned}) {
        EXPECT_EQ(copy.GetName(), L"Wall");
        EXPECT_FALSE(copy.IsActive());
        EXPECT_EQ(copy.displayLists, cloud.displayLists);
        EXPECT_EQ(copy.scanInfo.tenWords[9], 8u);
        EXPECT_TRUE(copy.HasNoColors() && copy.hostValue == 1);
        ASSERT_TRUE(copy.UndoDelete());
        EXPECT_EQ(copy.points[1].falseColor, 77u);
        EXPECT_EQ(copy.NotifyObservers(nullptr, nullptr), 0);
    }
    assigned.NotifyChanged(nullptr, nullptr);
    EXPECT_EQ(first.hint, &cloud);
    EXPECT_EQ(third.parent, &assigned);

    ZoPointCloud taken = Diagonal(1);
    taken.CopyFrom(&cloud);
    taken.CopyFrom(&taken);
    EXPECT_EQ(taken.Size(), 1u);
    EXPECT_EQ(taken.center.GetCount(), 1);
    EXPECT_EQ(taken.selectedBox.GetCount(), 1u) << "stays";
    EXPECT_TRUE(taken.IsActive());
    EXPECT_FALSE(taken.HasUndoData());
    const ZoObject* object = &cloud;
    EXPECT_EQ(ZoPointCloud::cast(object), &cloud);
    EXPECT_EQ(ZoPointCloud::cast(nullptr), nullptr);
    EXPECT_STREQ(ZoPointCloud::desc(), "ZoPointCloud");
}

TEST(PointCloud, SortPutsWhatIsNoNumberLast) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ZoPointCloud cloud;
    for (const double z : {nan, 3.0, -1.0, nan, HUGE_VAL, 2.0}) {
        cloud.AddPoint(ZoScanPoint3d(0, 0, z, 0));
        cloud.points.back().falseColor = static_cast<std::uint32_t>(std::lround(std::fmin(z, 9)));
    }
    cloud.ZSort(true);
    EXPECT_EQ(cloud.points[0].z(), -1);
    EXPECT_EQ(cloud.points[2].z(), 3);
    EXPECT_EQ(cloud.points[2].falseColor, 3u);
    EXPECT_EQ(cloud.points[3].z(), HUGE_VAL);
    EXPECT_TRUE(std::isnan(cloud.points[4].z()));
    cloud.ZSort(false);
    EXPECT_EQ(cloud.points[0].z(), HUGE_VAL);
    EXPECT_EQ(cloud.points[3].z(), -1);
    EXPECT_TRUE(std::isnan(cloud.points[5].z()));
}

}  // namespace
