#include "zorv/rectify/select_volume3d.h"

#include <algorithm>

#include "zorv/core/debug_output.h"

void Zo3dSelectVolume::SetPlane(int index, const ZoPlane& plane) {
    if (index >= 0 && index < static_cast<int>(planes.size())) planes[index] = plane;
}

bool Zo3dSelectVolume::IsInSelectRange(double x, double y, double z) const {
    if (!IsModePyramid()) return false;
    const ZoVector3d p = ZoPoint3d(x, y, z) - offset;
    return std::all_of(planes.begin(), planes.end(),
                       [&p](const ZoPlane& plane) { return plane.FastDist(p.x(), p.y(), p.z()) >= 0.0; });
}

void Zo3dSelectVolume::DbgPrintf() const {
    dbgprintf("Zo3dSelectVolume mode: %u offset: %f %f %f", static_cast<unsigned int>(mode), offset.x(), offset.y(),
              offset.z());
    for (const ZoPlane& plane : planes)
        dbgprintf("  plane: %f %f %f %f", plane.A(), plane.B(), plane.C(), plane.D());
}
