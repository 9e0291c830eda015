#pragma once

#include "zorv/export.h"

class ZoLine2d;
class ZoMatrix2d;

/// A direction or displacement in the plane. No unit; angles are radians, counter-clockwise from the x axis, y up.
class ZORV_API ZoVector2d {
  public:
    static constexpr double kTolerance = 1e-5;

    static const ZoVector2d kIdentity;  ///< (0, 0)
    static const ZoVector2d kXAxis;
    static const ZoVector2d kYAxis;

    constexpr ZoVector2d() = default;
    constexpr ZoVector2d(double vx, double vy) : x(vx), y(vy) {}
    /// The unit vector of that direction.
    explicit ZoVector2d(double angle);

    ZoVector2d& set(double vx, double vy) { return *this = ZoVector2d(vx, vy); }

    /// Equal within kTolerance.
    bool operator==(const ZoVector2d& other) const { return isEqualTo(other); }
    bool operator!=(const ZoVector2d& other) const { return !isEqualTo(other); }
    /// x for 0, y for every other index.
    double operator[](unsigned int i) const { return i == 0 ? x : y; }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }

    ZoVector2d operator-() const { return {-x, -y}; }
    ZoVector2d operator+(const ZoVector2d& v) const { return {x + v.x, y + v.y}; }
    ZoVector2d operator-(const ZoVector2d& v) const { return {x - v.x, y - v.y}; }
    ZoVector2d operator*(double s) const { return {x * s, y * s}; }
    ZoVector2d operator/(double s) const { return {x / s, y / s}; }
    ZoVector2d& operator+=(const ZoVector2d& v) { return *this = *this + v; }
    ZoVector2d& operator-=(const ZoVector2d& v) { return *this = *this - v; }
    ZoVector2d& operator*=(double s) { return *this = *this * s; }
    ZoVector2d& operator/=(double s) { return *this = *this / s; }

    /// Direction in the range of atan2.
    double angle() const;
    /// Between 0 and pi, without sign; not-a-number for a zero vector.
    double angleTo(const ZoVector2d& other) const;
    double crossProduct(const ZoVector2d& v) const { return x * v.y - y * v.x; }
    double dotProduct(const ZoVector2d& v) const { return x * v.x + y * v.y; }
    double length() const;
    double lengthSqrd() const { return x * x + y * y; }

    /// The floor of a component; saturates at the bounds of int, 0 for not-a-number.
    int getXfloor() const;
    int getYfloor() const;

    /// Whether the distance of the two is at most the tolerance.
    bool isEqualTo(const ZoVector2d& other, double tolerance = kTolerance) const;
    /// Whether the absolute cross product, or dot product, is below the tolerance.
    bool isParallelTo(const ZoVector2d& other, double tolerance = kTolerance) const;
    bool isPerpendicularTo(const ZoVector2d& other, double tolerance = kTolerance) const;
    bool isUnitLength(double tolerance = kTolerance) const;
    bool isZeroLength(double tolerance = kTolerance) const { return length() <= tolerance; }

    /// Unit vector of the same direction; kIdentity for a zero vector.
    ZoVector2d normal() const;
    /// The same in place; a zero vector stays.
    ZoVector2d& normalize();
    ZoVector2d& negate() { return *this = -*this; }
    /// Turned by a quarter to the left: (-y, x).
    ZoVector2d perpVector() const { return {-y, x}; }

    /// Reflects the vector, taken as a position, across the infinite line. A line shorter than 1e-5 changes nothing.
    ZoVector2d& mirror(const ZoLine2d& line);
    /// Turns by the angle whose (cosine, sine) is given.
    ZoVector2d& rotateBy(const ZoVector2d& cosineSine);
    ZoVector2d& rotateBy(double angle) { return rotateBy(ZoVector2d(angle)); }

    ZoVector2d& setToProduct(const ZoVector2d& v, double s) { return *this = v * s; }
    /// Applies the upper left 2 by 2 block: a translation has no effect on a vector.
    ZoVector2d& setToProduct(const ZoMatrix2d& matrix, const ZoVector2d& v);
    ZoVector2d& setToSum(const ZoVector2d& a, const ZoVector2d& b) { return *this = a + b; }
    ZoVector2d& transformBy(const ZoMatrix2d& matrix) { return setToProduct(matrix, *this); }

    /// Prints nothing.
    void DbgPrintf(const char*) const {}

    double x = 0.0;
    double y = 0.0;
};

inline constexpr ZoVector2d ZoVector2d::kIdentity{0.0, 0.0};
inline constexpr ZoVector2d ZoVector2d::kXAxis{1.0, 0.0};
inline constexpr ZoVector2d ZoVector2d::kYAxis{0.0, 1.0};

/// Both components times s.
inline ZoVector2d operator*(double s, const ZoVector2d& v) {
    return v * s;
}
