#include "zorv/math/bounding_box3d.h"
#include "zorv/points/point_list.h"

void ZoPointList::CalcBoundingBox(ZoBoundingBox3d& box, bool all) const {
    box.Reset();
    for (const ZoPoint* point = First(); point; point = point->NextConst()) {
        if (all || point->IsFlagSet(ZoPoint::kInUse)) box.Update(point->x, point->y, point->z);
    }
}
