#include "zorv/math/plane3d.h"

#include <cmath>

#include "zorv/core/debug_output.h"

namespace {

constexpr double kParallelLine = 1e-6;
constexpr double kParallelPlanes = 1e-10;  // radians

}  // namespace

ZoPlane3d::ZoPlane3d(const ZoPoint3d& point, const ZoVector3d& normal) {
    const bool turned = normal * (ZoPoint3d::origin - point) < 0.0;
    norm = Normalized(turned ? -normal : normal);
    dist = 0.0 - norm * point.AsVector();
}

int ZoPlane3d::Intersect(const ZoLine3d& line, ZoPoint3d& point) const {
    const double b = norm * line.direction;
    if (std::fabs(b) < kParallelLine) return 1;
    const double t = (-dist - norm * line.start.AsVector()) / b;
    point = line.Evaluate(t);
    return 0;
}

int ZoPlane3d::Intersect(const ZoPlane3d& plane, ZoLine3d& line) const {
    if (Angle(norm, plane.norm) < kParallelPlanes) return -1;
    const double det = norm.x() * plane.norm.y() - norm.y() * plane.norm.x();
    if (det == 0.0) return -1;
    line.direction = Normalized(norm % plane.norm);
    line.start = {(norm.y() * plane.dist - plane.norm.y() * dist) / det,
                  (plane.norm.x() * dist - norm.x() * plane.dist) / det, 0.0};
    return 0;
}

void ZoPlane3d::DbgPrintf() const {
    dbgprintf("ZoPlane3d norm: %f %f %f dist: %f", norm.x(), norm.y(), norm.z(), dist);
}
