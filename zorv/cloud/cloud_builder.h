#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "zorv/cloud/point_cloud.h"
#include "zorv/cloud/running_bounds.h"

namespace zorv::detail {

/// A cloud that an import fills, with its box and centre.
class CloudBuilder {
  public:
    CloudBuilder() : cloud(std::make_unique<ZoPointCloud>()) {}

    bool IsEmpty() const { return cloud->points.empty(); }
    bool IsFull() const { return cloud->points.size() == cloud->points.capacity(); }
    /// Makes room for more points, as far as there is memory for them all: where there is not, fewer may come.
    void TryReserve(std::uint64_t more) {
        try {
            constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max();
            cloud->Reserve(static_cast<std::size_t>(std::min(more, kMost)));
        } catch (const std::bad_alloc&) {
            return;
        }
    }
    void Add(ZoScanPoint3d&& point) {
        bounds.Add(point);
        cloud->points.push_back(std::move(point));
    }

    ZoPointCloud& Cloud() { return *cloud; }
    std::size_t Size() const { return cloud->points.size(); }
    std::unique_ptr<ZoPointCloud> Finish() {
        cloud->box = bounds.box;
        cloud->center = bounds.center;
        return std::move(cloud);
    }

  private:
    std::unique_ptr<ZoPointCloud> cloud;
    RunningBounds bounds;
};

}  // namespace zorv::detail
