#include "zorv/cad/arc.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "zorv/math/affine_map3d.h"
#include "zorv/points/point_list.h"

namespace {

constexpr double kSmallestDivisor = 1e-10;

ZoPoint3d Position(const ZoPoint& p) {
    return {p.x, p.y, p.z};
}

}  // namespace

// The centre has the same distance from all three points: two linear equations in the plane, relative to the middle
// point.
int ZoCadArc::CalcArc(const ZoPointList* list) {
    status = eZoCadNotCalculated;
    if (!list || !list->CountMoreThan(2)) return 0;
    const ZoPoint* first = list->First();
    const ZoPoint* second = first->NextConst();
    const ZoPoint3d w0 = Position(*first);
    const ZoPoint3d w1 = Position(*second);
    const ZoPoint3d w2 = Position(*second->NextConst());

    const ZoVector3d n = Normalized((w0 - w1) % (w2 - w1));
    const ZoAffinMap3d toWorld = MapEcsToWcs(n);
    const ZoAffinMap3d toPlane = ZoAffinMap3d::Inv(toWorld);
    const ZoPoint3d p0 = toPlane * w0;
    const ZoPoint3d p1 = toPlane * w1;
    const ZoPoint3d p2 = toPlane * w2;

    double ax = p0.x() - p1.x(), ay = p0.y() - p1.y();
    double bx = p2.x() - p1.x(), by = p2.y() - p1.y();
    double c1 = (ax * ax + ay * ay) / 2.0;
    double c2 = (bx * bx + by * by) / 2.0;
    if (std::isnan(ax)) {
        status = eZoCadFailed;
        return 0;
    }
    if (std::fabs(ax) < kSmallestDivisor) {
        std::swap(ax, bx);
        std::swap(ay, by);
        std::swap(c1, c2);
    }
    const double cy = (c2 - c1 * bx / ax) / (by - bx * ay / ax);
    const double cx = (c1 - cy * ay) / ax;
    const double distance = std::sqrt(cx * cx + cy * cy);
    if (!std::isfinite(distance)) {
        status = eZoCadFailed;
        return 0;
    }

    const double x = p1.x() + cx;
    const double y = p1.y() + cy;
    const auto seen = [x, y](const ZoPoint3d& p) { return NormAngle(std::atan2(p.y() - y, p.x() - x)); };
    startAngle = seen(p0);
    endAngle = seen(p2);
    const double mid = seen(p1);
    if (mid > endAngle || startAngle > mid) std::swap(startAngle, endAngle);

    radius = distance;
    const ZoPoint3d centre = toWorld * ZoPoint3d(x, y, p1.z());
    centerUCS = ZoPoint(0, x, y, p1.z(), 0);
    centerWCS = ZoPoint(0, centre.x(), centre.y(), centre.z(), 0);
    normal = ZoVector(n.x(), n.y(), n.z());
    status = eZoCadOk;
    return 1;
}

double ZoCadArc::GetArcLength() const {
    return IsOk() ? (endAngle - startAngle) * radius : 0.0;
}

double ZoCadArc::GetArcArea() const {
    return IsOk() ? (endAngle - startAngle) * radius * radius / 2.0 : 0.0;
}

double ZoCadArc::GetCircleLength() const {
    return IsOk() ? 2.0 * std::numbers::pi * radius : 0.0;
}

double ZoCadArc::GetCircleArea() const {
    return IsOk() ? std::numbers::pi * radius * radius : 0.0;
}
