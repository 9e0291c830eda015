#pragma once

#include <cmath>

#include "zorv/export.h"
#include "zorv/math/vector3d.h"

/// Position in space: four doubles of which w is 1. Coordinates are in the unit of the project, usually metres.
class ZoPoint3d : public _MVector {
  public:
    constexpr ZoPoint3d() : _MVector(1.0, 0.0, 0.0, 0.0) {}
    constexpr ZoPoint3d(double x, double y, double z) : _MVector(1.0, x, y, z) {}
    /// The world position of the point with these coordinates in the frame.
    ZORV_API ZoPoint3d(const ZoFrame3d& frame, double x, double y, double z);

    /// The coordinate origin, (0, 0, 0, 1).
    static const ZoPoint3d origin;

    ZoPoint3d operator+(const ZoVector3d& v) const { return {x() + v.x(), y() + v.y(), z() + v.z()}; }
    ZoPoint3d operator-(const ZoVector3d& v) const { return {x() - v.x(), y() - v.y(), z() - v.z()}; }
    ZoVector3d operator-(const ZoPoint3d& b) const { return {x() - b.x(), y() - b.y(), z() - b.z()}; }
    ZoPoint3d& operator+=(const ZoVector3d& v) { return *this = *this + v; }
    ZoPoint3d& operator-=(const ZoVector3d& v) { return *this = *this - v; }

    /// The vector from the coordinate origin to the point.
    ZoVector3d AsVector() const { return {x(), y(), z()}; }

    /// Half of the sum of both positions.
    ZoPoint3d MiddlePoint(const ZoPoint3d& b) const {
        return {(x() + b.x()) / 2.0, (y() + b.y()) / 2.0, (z() + b.z()) / 2.0};
    }
    double Distance(const ZoPoint3d& b) const { return (*this - b).Norm(); }
    /// Square of the distance.
    double Distance2(const ZoPoint3d& b) const {
        const ZoVector3d d = *this - b;
        return d.dot(d);
    }
    /// Moves the point through the map, in place.
    inline ZoPoint3d& Transform(const ZoAffinMap3d& map);

    /// Whether each coordinate differs by strictly less than the tolerance.
    bool IsSame(const ZoPoint3d& b, double tol) const { return (*this - b).IsDegenerate(tol); }
};

inline const ZoPoint3d ZoPoint3d::origin{0.0, 0.0, 0.0};

inline ZoPoint3d ZoVector3d::operator+(const ZoPoint3d& point) const {
    return point + *this;
}
inline ZoPoint3d ZoVector3d::AsPoint() const {
    return {x(), y(), z()};
}

/// The weighted mean of two positions, a + wb / (wa + wb) (b - a).
inline ZoPoint3d AffinCombination(const ZoPoint3d& a, const ZoPoint3d& b, double wa, double wb) {
    return a + (wb / (wa + wb)) * (b - a);
}

/// The turn from p0 to p1 to p2 as seen from above; z plays no part.
///
/// 1 for a left turn, -1 for a right turn. For collinear points: -1 when p0 lies between the others, 0 when p2 lies
/// between p0 and p1, 1 when p1 lies between p0 and p2.
ZORV_API int CounterClockwise(const ZoPoint3d& p0, const ZoPoint3d& p1, const ZoPoint3d& p2);
