#include "zorv/cloud/point_cloud.h"

#include <cmath>
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
    ExpectPoint(cloud.center.Point(), 1, 2, 3);
    ExpectPoint(cloud.box.Center(), 1, 2, 3);
    EXPECT_EQ(std::tuple(cloud.selectedBox.GetCount(), cloud.selectedBox.Xmin(), cloud.selectedCenter.GetCount()),
              std::tuple(1u, 2, 0));
    // One that stands in the vector itself, which has to grow for it.
    cloud.points.shrink_to_fit();
    cloud.AddPoint(cloud.points[1]);
    EXPECT_EQ(std::tuple(cloud.center.GetCount(), cloud.points[2].z()), std::tuple(3, 6));
    EXPECT_THROW(cloud.Reserve(~std::size_t{0}), std::bad_alloc);
}

TEST(PointCloud, RebuildFollowsTheSizeOfTheBox) {
    ZoPointCloud cloud = Diagonal(100);
    cloud.SetRebuild(false);
    cloud.points.emplace_back(102.9, 0, 0, 0);  // 2.9 more, of the largest side 300 less than a hundredth
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(false) && !cloud.GetRebuild() && cloud.CalcCenterAndBoundingBox(true));
    EXPECT_TRUE(cloud.GetRebuild());
    ExpectPoint(cloud.center.Point(), 100, 200, 300);
}

TEST(PointCloud, BoundsThroughAMap) {
    // A quarter turn about z, then a step along x: (x, y, z) goes to (10 - y, x, z); scales give normals their inverse.
    const ZoAffinMap3d map =
        ZoAffinMap3d::Translate(10, 0, 0) * ZoAffinMap3d::RotZ(std::numbers::pi / 2) * ZoAffinMap3d::Scale(1, 1, 2);
    ZoPointCloud cloud = Diagonal(2);
    cloud.points[0].normal[0] = 1;
    cloud.points[1].normal[2] = 1;
    cloud.SetRebuild(false);
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(map, false) && !cloud.GetRebuild());
    ExpectPoint(cloud.center.Point(), 8, 1, 6);

    ZoBoundingBox3d sumBox;
    ZoCenterPoint3d sumCenter;
    ZoVector3d normal(9, 9, 9);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, false));
    EXPECT_EQ(sumCenter.GetCount(), 4);
    ExpectPoint(sumBox.Center(), 8, 1, 6);
    ExpectPoint(normal.AsPoint(), 0, 0.5, 0.25);
    EXPECT_EQ(normal[3], 0);
    EXPECT_TRUE(cloud.CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, true));
    ExpectPoint(normal.AsPoint(), 0, 0, 0.5);
    EXPECT_FALSE(ZoPointCloud().CalcCenterAndBoundingBox(sumBox, sumCenter, normal, map, false));
    EXPECT_NEAR(normal.z(), 0.5, 1e-9) << "left alone";

    ZoBoundingBox3d all, selected;
    EXPECT_TRUE(cloud.UpdateBoundingBox(all, map, true));
    ExpectPoint(all.Center(), 6, 2, 12);
    EXPECT_TRUE(cloud.UpdateBoundingBoxes(all, selected, map));
    ExpectPoint(all.Center(), 8, 1, 6);
    ExpectPoint(selected.Center(), 6, 2, 12);
    EXPECT_FALSE(ZoPointCloud().UpdateBoundingBoxes(all, selected, map));
}

TEST(PointCloud, InsertedIntoItselfDoublesThePoints) {
    ZoPointCloud cloud = Diagonal(2);
    cloud.Insert(&cloud);
    ASSERT_EQ(cloud.Size(), 4u);
    ExpectPoint(cloud.center.Point(), 1, 2, 3);
    EXPECT_EQ(std::tuple(cloud.points[3].falseColor, cloud.center.GetCount(), cloud.selectedBox.GetCount()),
              std::tuple(77u, 4, 2u));
    ZoPointCloud other;
    other.Insert(&other);
    EXPECT_EQ(other.center.GetCount(), 0) << "nothing is no point";
    other.Insert(&cloud);
    EXPECT_EQ(other.center.GetCount(), 4);
}

TEST(PointCloud, CopiesHaveEverythingButTheObservers) {
    struct Heard : ZoObserver {
        using ZoObserver::ZoObserver;
        void Notify(ZoNotifyEvent* event) override { hint = event->object; }
        void* hint = nullptr;
    };
    ZoPointCloud cloud = Diagonal(2);
    Heard first(&cloud), second(&cloud);
    cloud.NotifyChanged(&cloud, &second);
    EXPECT_TRUE(first.hint == &cloud && second.hint == nullptr);
    cloud.SetName(L"Wall");
    cloud.SetActive(false);
    cloud.DeleteSelectedPoints();
    cloud.displayLists = {5, 6};
    cloud.hostValue = 1;

    ZoPointCloud assigned;
    Heard third(&assigned);
    assigned = cloud;
    for (ZoPointCloud copy : {cloud, assigned}) {
        EXPECT_EQ(std::tuple(copy.GetName(), copy.IsActive(), copy.hostValue), std::tuple(L"Wall", false, 1u));
        EXPECT_EQ(copy.displayLists, cloud.displayLists);
        ASSERT_TRUE(copy.UndoDelete());
        EXPECT_EQ(copy.points[1].falseColor, 77u);
        EXPECT_EQ(copy.NotifyObservers(nullptr, nullptr), 0);
    }
    EXPECT_EQ(third.parent, &assigned);

    ZoPointCloud taken = Diagonal(1);
    taken.CopyFrom(&cloud);
    taken.CopyFrom(&taken);
    EXPECT_EQ(std::tuple(taken.center.GetCount(), taken.selectedBox.GetCount()), std::tuple(1, 1u))
        << "the latter stays";
    EXPECT_FALSE(taken.HasUndoData());
    EXPECT_EQ(ZoPointCloud::cast(static_cast<const ZoObject*>(&cloud)), &cloud);
}

TEST(PointCloud, SortPutsWhatIsNoNumberLast) {
    ZoPointCloud cloud;
    for (const double z : {std::nan(""), 3.0, -1.0, std::nan(""), HUGE_VAL, 2.0})
        cloud.AddPoint(ZoScanPoint3d(z, 0, z, 0));
    cloud.ZSort(true);
    EXPECT_EQ(std::tuple(cloud.points[0].z(), cloud.points[2].x()), std::tuple(-1, 3));
    EXPECT_TRUE(std::isnan(cloud.points[4].z()));
    cloud.ZSort(false);
    EXPECT_EQ(cloud.points[3].z(), -1);
    EXPECT_TRUE(std::isnan(cloud.points[5].z()));
}

}  // namespace
