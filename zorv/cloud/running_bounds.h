#pragma once

#include "zorv/math/bounding_box3d.h"
#include "zorv/math/center_point3d.h"

namespace zorv::detail {

/// Box and mean while a loop goes over points: values of the loop's own, which the compiler can hold in registers.
struct RunningBounds {
    void Add(const ZoPoint3d& point) {
        center.Add(point.x(), point.y(), point.z());
        box.Update(point);
    }

    ZoBoundingBox3d box;
    ZoCenterPoint3d center;
};

}  // namespace zorv::detail
