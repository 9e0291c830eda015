#include "zorv/cloud/cloud_container.h"

#include <ctime>

#include "tests/support/recorded_host.h"
#include <gtest/gtest.h>

#include "zorv/math/affine_map3d.h"
#include "zorv/points/point_list.h"

namespace {

/// A cloud of one point at (x, 0, 0).
ZoPointCloud* AddAt(ZoPointCloudContainer& container, double x) {
    ZoPointCloud* cloud = container.AddCloud();
    cloud->AddPoint(ZoScanPoint3d(x, 0, 0, 0));
    return cloud;
}

/// Counts what the observers of a container's list hear.
struct Ear : ZoObserver {
    explicit Ear(ZoPointCloudContainer& container) : ZoObserver(&container.clouds) {}
    void Notify(ZoNotifyEvent* event) override { changes += event->kind == eZoNotifyChanged ? 1 : 0; }
    int changes = 0;
};

TEST(CloudContainer, NewCloudsGetFreeIds) {
    const std::time_t before = std::time(nullptr);
    ZoPointCloudContainer container;
    ZoPointCloud* first = container.AddCloud();
    EXPECT_GE(first->scanInfo.timeStart, before);
    first->SetRebuild(false);
    container.firstId = 40;
    ZoPointCloud* named = container.AddCloud(10, L"Wall");
    EXPECT_GE(named->points.capacity(), 10u);
    EXPECT_TRUE(first->GetRebuild());
    ZoPointCloud* own = container.AddCloud(std::make_unique<ZoPointCloud>().release());
    EXPECT_EQ(std::tuple(first->GetId(), named->GetId(), own->GetId()), std::tuple(1u, 40u, 41u));

    RecordedHost host;
    EXPECT_EQ(container.AddCloud(~std::size_t{0} / 100, L"Huge"), nullptr);
    EXPECT_EQ(container.AddCloud(static_cast<ZoPointList*>(nullptr)), nullptr);
    EXPECT_EQ(std::tuple(container.clouds.Count(), container.GetDirty()), std::tuple(3, 3u));
    EXPECT_EQ(host.narrow, std::vector{"Error Create Pointcloud: " + std::to_string(~std::size_t{0} / 100)});
}

TEST(CloudContainer, APointListBecomesACloud) {
    ZoPointList list;
    list.Add(ZoPoint(1, 3, 4, 5, 0));
    list.Add(ZoPoint(2, 5, 4, 5, 0));
    list.First()->flags = 5;
    ZoPointCloudContainer container;
    AddAt(container, 1);
    const ZoPointCloud* cloud = container.AddCloud(&list);
    EXPECT_EQ(std::tuple(cloud->GetName(), container.Size()), std::tuple(L"Coo Cloud", 3u));
    EXPECT_FALSE(cloud->HasSelectedPoints());
    EXPECT_EQ(container.box.Xmin(), 3) << "only what was taken in";
    EXPECT_EQ(container.center.Point().x(), 4);
    EXPECT_TRUE(cloud->scanInfo.timeStart2 > 0 && cloud->scanInfo.timeEnd2 >= cloud->scanInfo.timeStart2);
}

TEST(CloudContainer, BoundsShrinkOnlyWhenMadeAnew) {
    ZoPointCloudContainer container;
    container.AddCloud();
    AddAt(container, 1);
    ZoPointCloud* far = AddAt(container, 100);
    container.UpdateCenterAndBox(nullptr);
    EXPECT_EQ(container.center.GetCount(), 2) << "the empty cloud is no point";
    EXPECT_EQ(container.center.Point().x(), 50.5);
    EXPECT_TRUE(container.Delete(far));
    EXPECT_EQ(std::tuple(container.box.Xmax(), container.GetDirty()), std::tuple(100, 4u));
    ZoPointCloud stranger;
    EXPECT_FALSE(container.Delete(&stranger));
    container.UpdateCenterAndBox(nullptr);
    EXPECT_EQ(container.box.Xmax(), 1);
    container.Destroy();
    EXPECT_FALSE(container.box.IsValid());
}

TEST(CloudContainer, CopiesAndMoves) {
    ZoPointCloudContainer container, other;
    AddAt(container, 1)->SetName(L"Wall");
    AddAt(container, 2);
    EXPECT_EQ(container.CopyTo(&other), 2);
    EXPECT_EQ(other.First()->GetName(), L"Copy Wall");
    EXPECT_EQ(container.CopyTo(&container), 2);
    EXPECT_EQ(container.MoveTo(&container), 0);
    EXPECT_EQ(container.MoveTo(&other), 4);
    EXPECT_EQ(other.clouds.Last()->GetId(), 6u);

    other.hostValue = 9;
    other.UpdateCenterAndBox(nullptr);
    container = other;
    const ZoPointCloudContainer copy(container);
    EXPECT_EQ(std::tuple(copy.clouds.Count(), copy.hostValue, copy.center.GetCount()), std::tuple(6, 9u, 6));
}

TEST(CloudContainer, HearsTheCloudsThatItMade) {
    auto container = std::make_unique<ZoPointCloudContainer>();
    ZoPointCloudContainer other;
    ZoPointCloud* made = container->AddCloud();
    ZoPointCloud* taken = container->AddCloud(std::make_unique<ZoPointCloud>().release());
    container->Delete(container->AddCloud());
    // A cloud that is taken out or has moved is heard as before, and may outlive the container.
    const std::unique_ptr<ZoPointCloud> kept(container->clouds.Subtract(made));
    ZoPointCloud* moved = container->AddCloud();
    container->MoveTo(&other);
    Ear ear(*container), otherEar(other);
    for (ZoPointCloud* cloud : {moved, made, taken})
        cloud->NotifyChanged(nullptr, nullptr);
    EXPECT_EQ(ear.changes, 2);
    container.reset();
    for (ZoPointCloud* cloud : {moved, made, taken})
        cloud->NotifyChanged(nullptr, nullptr);
    EXPECT_EQ(otherEar.changes, 0);
}

TEST(CloudContainer, OperationsGoThroughAllOrTheActiveClouds) {
    ZoPointCloudContainer container;
    for (const double x : {1.0, 2.0, 3.0}) {
        ZoPointCloud* cloud = AddAt(container, x);
        cloud->AddPoint(ZoScanPoint3d(x, 0, -1, 0));
        cloud->points[1].SetSelected(true);
    }
    ZoPointCloud* resting = container.First();
    resting->SetActive(false);
    container.ZSort(true);
    EXPECT_EQ(resting->points[0].z(), 0);
    EXPECT_EQ(container.clouds.Last()->points[0].z(), -1);

    EXPECT_EQ(container.Transform(ZoAffinMap3d::Translate(10, 0, 0), false), 2);
    EXPECT_EQ(std::tuple(container.GetDirty(), container.box.GetXSize(), container.center.GetCount()),
              std::tuple(1u, 12, 6));
    EXPECT_EQ(container.Transform(ZoAffinMap3d::Translate(10, 0, 0), true), 3);
    resting->SetRebuild(false);
    EXPECT_EQ(container.DeleteSelectedPoints(true), 2u);
    EXPECT_TRUE(resting->GetRebuild()) << "as all others";
    EXPECT_EQ(std::tuple(container.GetDirty(), container.center.GetCount()), std::tuple(3u, 4));
    container.Deselect(true);
    EXPECT_TRUE(container.HasSelectedPoints(true));
    container.Deselect(false);
    EXPECT_FALSE(container.HasSelectedPoints(true));
    EXPECT_TRUE(container.HasSelectedPoints(false)) << "a cloud";
}

}  // namespace
