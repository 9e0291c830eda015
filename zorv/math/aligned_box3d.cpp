#include "zorv/math/aligned_box3d.h"

#include "zorv/core/debug_output.h"

void ZoAlignedBoundingBox3d::SetMap(const ZoAffinMap3d& worldToBox) {
    map = worldToBox;
    inverse = ZoAffinMap3d::Inv(map);
    box.Reset();
}

ZoPoint3d ZoAlignedBoundingBox3d::GetPoint(int index) const {
    ZoPoint3d corner;
    if (index >= 0 && index < 8) {
        const int side = index % 4;
        corner = {side == 1 || side == 2 ? box.xmax : box.xmin, side >= 2 ? box.ymax : box.ymin,
                  index >= 4 ? box.zmax : box.zmin};
    }
    return inverse.Transform(corner);
}

void ZoAlignedBoundingBox3d::Dbgprintf() const {
    ZoPoint3d min, max;
    box.GetMinMaxPoints(min, max);
    min.Transform(inverse);
    max.Transform(inverse);
    dbgprintf("ZoAlignedBoundingBox3d min: %f %f %f", min.x(), min.y(), min.z());
    dbgprintf("ZoAlignedBoundingBox3d max: %f %f %f", max.x(), max.y(), max.z());
    dbgprintf("  dx: %f, dy: %f, dz: %f", box.GetXSize(), box.GetYSize(), box.GetZSize());
}
