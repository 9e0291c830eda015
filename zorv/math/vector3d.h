#pragma once

#include <algorithm>
#include <cmath>

#include "zorv/export.h"
#include "zorv/math/plain_matrix.h"

class ZoAffinMap3d;
class ZoFrame3d;
class ZoPoint3d;

/// Direction in space: four doubles of which w is 0, so that a map's translation does not move it.
///
/// Lengths are in the unit of the coordinates, angles in radians. Nothing guards a null vector: what divides by its
/// length gives not-a-number.
class ZoVector3d : public _MVector {
  public:
    constexpr ZoVector3d() : _MVector(0.0, 0.0, 0.0, 0.0) {}
    constexpr ZoVector3d(double x, double y, double z) : _MVector(0.0, x, y, z) {}
    /// From three doubles.
    explicit constexpr ZoVector3d(const double* xyz) : _MVector(0.0, xyz[0], xyz[1], xyz[2]) {}
    /// The direction with these components along the axes of the frame, whose origin plays no part.
    ZORV_API ZoVector3d(const ZoFrame3d& frame, double x, double y, double z);

    static const ZoVector3d Null;
    static const ZoVector3d XAxis;
    static const ZoVector3d YAxis;
    static const ZoVector3d ZAxis;

    ZoVector3d operator-() const { return {-x(), -y(), -z()}; }
    ZoVector3d operator+(const ZoVector3d& b) const { return {x() + b.x(), y() + b.y(), z() + b.z()}; }
    ZoVector3d operator-(const ZoVector3d& b) const { return {x() - b.x(), y() - b.y(), z() - b.z()}; }
    inline ZoPoint3d operator+(const ZoPoint3d& point) const;
    ZoVector3d operator/(double divisor) const { return {x() / divisor, y() / divisor, z() / divisor}; }
    /// Cross product.
    ZoVector3d operator%(const ZoVector3d& b) const { return cross(b); }
    ZoVector3d& operator+=(const ZoVector3d& b) { return *this = *this + b; }
    ZoVector3d& operator-=(const ZoVector3d& b) { return *this = *this - b; }
    ZoVector3d& operator*=(double factor) { return *this = {x() * factor, y() * factor, z() * factor}; }
    ZoVector3d& operator/=(double divisor) { return *this = *this / divisor; }
    ZoVector3d& operator%=(const ZoVector3d& b) { return *this = cross(b); }

    /// The point that the vector reaches from the coordinate origin.
    inline ZoPoint3d AsPoint() const;

    double dot(const ZoVector3d& b) const { return x() * b.x() + y() * b.y() + z() * b.z(); }
    ZoVector3d cross(const ZoVector3d& b) const {
        return {y() * b.z() - z() * b.y(), z() * b.x() - x() * b.z(), x() * b.y() - y() * b.x()};
    }
    double Norm() const { return std::sqrt(dot(*this)); }
    ZoVector3d& Normalize() { return *this /= Norm(); }
    /// The angle between two directions, 0 to pi.
    double Angle(const ZoVector3d& b) const { return std::acos(std::clamp(dot(b) / (Norm() * b.Norm()), -1.0, 1.0)); }
    /// Applies the linear part of the map in place.
    inline ZoVector3d& Transform(const ZoAffinMap3d& map);

    /// Whether every component stays strictly below the tolerance.
    bool IsDegenerate(double tol) const { return std::fabs(x()) < tol && std::fabs(y()) < tol && std::fabs(z()) < tol; }
    /// Whether the length is at most 1e-10. The limit is fixed, the argument has no effect.
    bool IsNull(double = 0.0) const { return Norm() <= 1e-10; }
    /// Whether the length lies in [1 - tol, 1 + tol].
    bool IsNormalized(double tol) const { return Norm() >= 1.0 - tol && Norm() <= 1.0 + tol; }
    /// Whether the dot product stays strictly below the tolerance; it grows with the lengths.
    bool IsPerpendicular(const ZoVector3d& b, double tol) const { return std::fabs(dot(b)) < tol; }
    /// Whether both lengths and the angle between the vectors reach the tolerance. Opposite vectors count as
    /// independent.
    bool IsLinearIndependent(const ZoVector3d& b, double tol) const {
        return !(Norm() < tol || b.Norm() < tol || Angle(b) < tol);
    }
};

inline const ZoVector3d ZoVector3d::Null{0.0, 0.0, 0.0};
inline const ZoVector3d ZoVector3d::XAxis{1.0, 0.0, 0.0};
inline const ZoVector3d ZoVector3d::YAxis{0.0, 1.0, 0.0};
inline const ZoVector3d ZoVector3d::ZAxis{0.0, 0.0, 1.0};

/// Three components times the factor; w of the result is 0.
inline ZoVector3d operator*(const ZoVector3d& v, double factor) {
    return {v.x() * factor, v.y() * factor, v.z() * factor};
}
/// The same.
inline ZoVector3d operator*(double factor, const ZoVector3d& v) {
    return v * factor;
}
/// Dot product.
inline double operator*(const ZoVector3d& a, const ZoVector3d& b) {
    return a.dot(b);
}

/// The angle between two directions, 0 to pi.
inline double Angle(const ZoVector3d& a, const ZoVector3d& b) {
    return a.Angle(b);
}

/// The unit vector of that direction; not-a-number for the null vector.
inline ZoVector3d Normalized(const ZoVector3d& v) {
    return v / v.Norm();
}
