#include "zorv/cad/distance_section.h"

#include <cmath>

ZoCadBogenschlag::ZoCadBogenschlag(const ZoPoint3d& firstCenter, double firstRadius, const ZoPoint3d& secondCenter,
                                   double secondRadius, double tolerance)
    : center1(firstCenter), radius1(firstRadius), center2(secondCenter), radius2(secondRadius) {
    valid = Calc(tolerance);
}

bool ZoCadBogenschlag::Calc(double tolerance) {
    const double distance = center1.Distance(center2);
    const double difference = std::fabs(radius1 - radius2);
    if (tolerance >= distance && tolerance >= difference) {
        concentric = true;
        return false;
    }
    // One circle touches the other from within.
    if (radius1 > distance && radius2 > distance && tolerance > std::fabs(distance - difference)) return false;
    if (radius1 + radius2 < distance) return false;
    const double along = (distance * distance + radius1 * radius1 - radius2 * radius2) / (2.0 * distance);
    const double heightSquared = radius1 * radius1 - along * along;
    // Not-a-number, for centres in one place, is no height either.
    if (!(heightSquared >= 0.0)) return false;

    const double height = std::sqrt(heightSquared);
    const ZoVector3d u = Normalized(center2 - center1);
    const ZoVector3d across = Normalized(ZoVector3d(u.y(), -u.x(), u.z()));
    base = center1 + along * u;
    p1 = base + height * across;
    p2 = base - height * across;
    return true;
}

ZoPoint3d ZoCadBogenschlag::GetConcentricPx(double angle) const {
    return {center1.x() + radius1 * std::cos(angle), center1.y() + radius1 * std::sin(angle), center1.z()};
}

ZoPoint3d ZoCadBogenschlag::GetNearestPoint(const ZoPoint3d& point) const {
    return p1.Distance(point) <= p2.Distance(point) ? p1 : p2;
}
