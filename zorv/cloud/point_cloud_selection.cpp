#include <algorithm>
#include <iterator>

#include "zorv/cloud/point_cloud.h"
#include "zorv/cloud/running_bounds.h"
#include "zorv/rectify/select_volume3d.h"

namespace {

bool IsSelected(const ZoScanPoint3d& point) {
    return point.IsSelected();
}

}  // namespace

std::uint32_t ZoPointCloud::SelectPoints(const Zo3dSelectVolume& volume) {
    zorv::detail::RunningBounds bounds;
    for (ZoScanPoint3d& point : points) {
        if (volume.IsInSelectRange(point)) point.SetSelected(true);
        if (point.IsSelected()) bounds.Add(point);
    }
    selectedBox = bounds.box;
    selectedCenter = bounds.center;
    return selectedBox.GetCount();
}

void ZoPointCloud::Deselect() {
    for (ZoScanPoint3d& point : points)
        point.SetSelected(false);
    selectedBox.Reset();
}

void ZoPointCloud::InvertSelection() {
    ZoBoundingBox3d bounds;
    for (ZoScanPoint3d& point : points) {
        point.SetSelected(!point.IsSelected());
        if (point.IsSelected()) bounds.Update(point);
    }
    selectedBox = bounds;
}

bool ZoPointCloud::HasSelectedPoints() const {
    return std::any_of(points.begin(), points.end(), IsSelected);
}

std::size_t ZoPointCloud::DeleteSelectedPoints() {
    if (points.empty()) return 0;
    const auto selected = static_cast<std::size_t>(std::count_if(points.begin(), points.end(), IsSelected));
    if (selected > 0) {
        ZoScanPointVector deleted;
        deleted.reserve(selected);
        std::copy_if(points.begin(), points.end(), std::back_inserter(deleted), IsSelected);
        undoStack.push_back(std::move(deleted));
        std::erase_if(points, IsSelected);
    }
    selectedBox.Reset();
    selectedCenter.Reset();
    CalcCenterAndBoundingBox(false);
    return selected;
}

bool ZoPointCloud::UndoDelete() {
    if (undoStack.empty()) return false;
    // By copy, so that no room for the points leaves everything as it was.
    const ZoScanPointVector& deleted = undoStack.back();
    const std::size_t before = points.size();
    points.insert(points.end(), deleted.begin(), deleted.end());
    std::for_each(points.begin() + static_cast<std::ptrdiff_t>(before), points.end(),
                  [](ZoScanPoint3d& point) { point.SetFlags(0); });
    undoStack.pop_back();
    CalcCenterAndBoundingBox(false);
    return true;
}
