#include "zorv/cloud/point_cloud.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <new>
#include <utility>

#include "zorv/cloud/running_bounds.h"
#include "zorv/math/affine_map3d.h"

using zorv::detail::RunningBounds;

namespace {

/// Part of its size by which a box may change before the display lists have to be built anew.
constexpr double kSameSize = 0.01;

template <class Visit>
void ForEach(const ZoScanPointVector& points, bool onlySelected, Visit visit) {
    for (const ZoScanPoint3d& point : points) {
        if (!onlySelected || point.IsSelected()) visit(point);
    }
}

void MapPoint(ZoScanPoint3d& point, const ZoAffinMap3d& map, const ZoAffinMap3d& normals) {
    point.Transform(map);
    normals.InplaceTransform(point.normal);
}

}  // namespace

const char* const ZoPointCloud::gpDesc = "ZoPointCloud";

ZoPointCloud::ZoPointCloud() {
    SetActive(true);
    scanInfo.timeStart = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

ZoPointCloud& ZoPointCloud::operator=(const ZoPointCloud& other) {
    if (this == &other) return *this;
    TZoFlagNode<ZoPointCloud>::operator=(other);
    points = other.points;
    undoStack = other.undoStack;
    box = other.box;
    center = other.center;
    selectedBox = other.selectedBox;
    selectedCenter = other.selectedCenter;
    displayLists = other.displayLists;
    viewpoint = other.viewpoint;
    scanInfo = other.scanInfo;
    noColors = other.noColors;
    rebuild = other.rebuild;
    hostValue = other.hostValue;
    return *this;
}

void ZoPointCloud::NotifyChanged(void* hint, ZoObserver* skip) {
    ZoNotifyEvent event{eZoNotifyChanged, this, hint};
    NotifyObservers(&event, skip);
}

ZoPointCloud* ZoPointCloud::cast(const ZoObject* object) {
    return static_cast<ZoPointCloud*>(const_cast<ZoObject*>(object));
}

void ZoPointCloud::Reserve(std::size_t more) {
    if (more > points.max_size() - points.size()) throw std::bad_alloc();
    points.reserve(points.size() + more);
}

void ZoPointCloud::CopyFrom(const ZoPointCloud* cloud) {
    if (!cloud || cloud == this) return;
    points = cloud->points;
    box = cloud->box;
    center = cloud->center;
}

void ZoPointCloud::Insert(const ZoPointCloud* cloud) {
    if (!cloud) return;
    // By index and with the room made before, since the cloud may be this one.
    const std::size_t added = cloud->points.size();
    if (added > points.capacity() - points.size()) Reserve(std::max(added, points.size()));
    for (std::size_t i = 0; i < added; ++i)
        points.push_back(cloud->points[i]);
    if (cloud->center.GetCount() != 0) center.Add(cloud->center);
    box.Union(cloud->box);
    selectedBox.Union(cloud->selectedBox);
}

bool ZoPointCloud::CalcCenterAndBoundingBox(bool onlySelected) {
    RunningBounds bounds;
    ForEach(points, onlySelected, [&bounds](const ZoScanPoint3d& point) { bounds.Add(point); });
    if (!box.SameSize(bounds.box, kSameSize)) rebuild = 1;
    box = bounds.box;
    center = bounds.center;
    return !points.empty();
}

bool ZoPointCloud::CalcCenterAndBoundingBox(const ZoAffinMap3d& map, bool onlySelected) {
    RunningBounds bounds;
    ForEach(points, onlySelected, [&](const ZoScanPoint3d& point) { bounds.Add(map.Transform(point)); });
    box = bounds.box;
    center = bounds.center;
    return !points.empty();
}

bool ZoPointCloud::CalcCenterAndBoundingBox(ZoBoundingBox3d& sumBox, ZoCenterPoint3d& sumCenter, ZoVector3d& meanNormal,
                                            const ZoAffinMap3d& map, bool onlySelected) const {
    if (points.empty()) return false;
    const ZoAffinMap3d normals = map.NormalTransformMap();
    RunningBounds bounds{sumBox, sumCenter};
    ZoVector3d sum;
    std::size_t used = 0;
    ForEach(points, onlySelected, [&](const ZoScanPoint3d& point) {
        bounds.Add(map.Transform(point));
        sum += normals.Transform(point.normal);
        ++used;
    });
    sumBox = bounds.box;
    sumCenter = bounds.center;
    meanNormal = sum / static_cast<double>(std::max<std::size_t>(used, 1));
    return true;
}

bool ZoPointCloud::UpdateBoundingBox(ZoBoundingBox3d& widened, const ZoAffinMap3d& map, bool onlySelected) const {
    ZoBoundingBox3d sum = widened;
    ForEach(points, onlySelected, [&](const ZoScanPoint3d& point) { sum.Update(map.Transform(point)); });
    widened = sum;
    return !points.empty();
}

bool ZoPointCloud::UpdateBoundingBoxes(ZoBoundingBox3d& all, ZoBoundingBox3d& selected, const ZoAffinMap3d& map) const {
    for (const ZoScanPoint3d& point : points) {
        const ZoPoint3d mapped = map.Transform(point);
        all.Update(mapped);
        if (point.IsSelected()) selected.Update(mapped);
    }
    return !points.empty();
}

void ZoPointCloud::ZSort(bool ascending) {
    const auto numbers =
        std::partition(points.begin(), points.end(), [](const ZoScanPoint3d& point) { return !std::isnan(point.z()); });
    if (ascending) {
        std::sort(points.begin(), numbers,
                  [](const ZoScanPoint3d& a, const ZoScanPoint3d& b) { return a.z() < b.z(); });
    } else {
        std::sort(points.begin(), numbers,
                  [](const ZoScanPoint3d& a, const ZoScanPoint3d& b) { return a.z() > b.z(); });
    }
}

bool ZoPointCloud::Transform(const ZoAffinMap3d& map) {
    const ZoAffinMap3d normals = map.NormalTransformMap();
    RunningBounds bounds;
    for (ZoScanPoint3d& point : points) {
        MapPoint(point, map, normals);
        bounds.Add(point);
    }
    box = bounds.box;
    center = bounds.center;
    for (ZoScanPointVector& deleted : undoStack) {
        for (ZoScanPoint3d& point : deleted)
            MapPoint(point, map, normals);
    }
    rebuild = 1;
    return true;
}
