#pragma once

#include "zorv/export.h"
#include "zorv/math/vector2d.h"

class ZoLine2d;
class ZoMatrix2d;

/// A position in the plane. No unit; y up.
class ZORV_API ZoPoint2d {
  public:
    static const ZoPoint2d kOrigin;

    constexpr ZoPoint2d() = default;
    constexpr ZoPoint2d(double px, double py) : x(px), y(py) {}

    ZoPoint2d& set(double px, double py) { return *this = ZoPoint2d(px, py); }

    /// Equal within ZoVector2d::kTolerance.
    bool operator==(const ZoPoint2d& other) const { return isEqualTo(other); }
    bool operator!=(const ZoPoint2d& other) const { return !isEqualTo(other); }
    /// x for 0, y for every other index.
    double operator[](unsigned int i) const { return i == 0 ? x : y; }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }

    ZoPoint2d operator+(const ZoVector2d& v) const { return {x + v.x, y + v.y}; }
    ZoPoint2d operator-(const ZoVector2d& v) const { return {x - v.x, y - v.y}; }
    ZoVector2d operator-(const ZoPoint2d& p) const { return {x - p.x, y - p.y}; }
    ZoPoint2d operator*(double s) const { return {x * s, y * s}; }
    ZoPoint2d operator/(double s) const { return {x / s, y / s}; }
    ZoPoint2d& operator+=(const ZoVector2d& v) { return *this = *this + v; }
    ZoPoint2d& operator-=(const ZoVector2d& v) { return *this = *this - v; }
    ZoPoint2d& operator*=(double s) { return *this = *this * s; }
    ZoPoint2d& operator/=(double s) { return *this = *this / s; }

    double distanceTo(const ZoPoint2d& other) const { return (*this - other).length(); }
    double distanceToSq(const ZoPoint2d& other) const { return (*this - other).lengthSqrd(); }
    /// Whether the distance is at most the tolerance.
    bool isEqualTo(const ZoPoint2d& other, double tolerance = ZoVector2d::kTolerance) const {
        return distanceTo(other) <= tolerance;
    }

    /// These change the point in place and return it.
    ZoPoint2d& rotateBy(double angle, const ZoPoint2d& center = kOrigin);
    ZoPoint2d& scaleBy(double factor, const ZoPoint2d& center = kOrigin);
    /// Across the infinite line; one shorter than 1e-5 changes nothing.
    ZoPoint2d& mirror(const ZoLine2d& line);
    /// The homogeneous map of the plane, divided by its third row; a point that it sends to infinity stays.
    ZoPoint2d& transformBy(const ZoMatrix2d& matrix) { return setToProduct(matrix, *this); }
    ZoPoint2d& setToProduct(const ZoMatrix2d& matrix, const ZoPoint2d& point);
    ZoPoint2d& setToProduct(const ZoPoint2d& point, double s) { return *this = point * s; }
    ZoPoint2d& setToSum(const ZoPoint2d& point, const ZoVector2d& v) { return *this = point + v; }

    /// Prints nothing.
    void DbgPrintf(const char*) const {}

    double x = 0.0;
    double y = 0.0;
};

inline constexpr ZoPoint2d ZoPoint2d::kOrigin{0.0, 0.0};

/// Both coordinates times s.
inline ZoPoint2d operator*(double s, const ZoPoint2d& p) {
    return p * s;
}
