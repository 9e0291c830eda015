#pragma once

#include <cstdint>
#include <vector>

#include "zorv/export.h"
#include "zorv/math/point2d.h"

/// The rectangle around a set of points whose sides run along and across the diameter of the set's convex hull.
/// It is not the rectangle of least area over all directions.
class ZORV_API ZoSmallestAlignedRectangle2d {
  public:
    /// The points must outlive the constructor only. Without points the rectangle is empty: no hull, no corners, all
    /// sizes 0.
    explicit ZoSmallestAlignedRectangle2d(const std::vector<ZoPoint2d>& points);

    /// Direction from p to q, in the range of atan2.
    static double Angle(const ZoPoint2d& p, const ZoPoint2d& q);
    /// The two vertices that are farthest apart, by squared distance truncated to 32 bits; the first such pair, {0, 0}
    /// when no distance reaches 1.
    static std::vector<std::uint64_t> PoligonDiameter(const std::vector<ZoPoint2d>& polygon);

    const std::vector<ZoPoint2d>& GetHull() const { return hull; }
    const std::vector<std::uint64_t>& GetDiameter() const { return diameter; }
    double GetAngle() const { return angle; }
    const std::vector<ZoPoint2d>& GetCorners() const { return corners; }
    double GetLength() const { return length; }
    double GetWidth() const { return width; }

    const std::vector<ZoPoint2d>* input = nullptr;  ///< not owned
    std::vector<ZoPoint2d> hull;
    std::vector<std::uint64_t> diameter;  ///< two indices into hull
    double angle = 0.0;                   ///< of the first side, radians
    std::vector<ZoPoint2d> corners;       ///< (xmin, ymin), (xmax, ymin), (xmax, ymax), (xmin, ymax), turned by angle
    double length = 0.0;                  ///< the larger side
    double width = 0.0;
};
