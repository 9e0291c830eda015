#pragma once

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// Arc section (Bogenschlag): the points at two measured distances from two known points, calculated in the
/// constructor. Meant for centres at one height: the two points lie on both sides of their connection, at its height.
class ZORV_API ZoCadBogenschlag {
  public:
    /// `tolerance` is the length by which circles may miss being the same or touching from within.
    ZoCadBogenschlag(const ZoPoint3d& firstCenter, double firstRadius, const ZoPoint3d& secondCenter,
                     double secondRadius, double tolerance);
    ZoCadBogenschlag(const ZoCadBogenschlag&) = default;
    ZoCadBogenschlag& operator=(const ZoCadBogenschlag&) = default;
    virtual ~ZoCadBogenschlag() = default;

    /// Whether the circles meet.
    bool IsValid() const { return valid; }
    /// Whether they are the same circle.
    bool IsConcentric() const { return concentric; }
    /// The point between the two sections on the line of centres, and the sections.
    const ZoPoint3d& Base() const { return base; }
    const ZoPoint3d& P1() const { return p1; }
    const ZoPoint3d& P2() const { return p2; }

    /// The point of the first circle in a direction (radians) of the plane of x and y.
    ZoPoint3d GetConcentricPx(double angle) const;
    /// The section nearer to the point; P1 when both are as near.
    ZoPoint3d GetNearestPoint(const ZoPoint3d& point) const;

    ZoPoint3d center1;
    double radius1 = 0.0;
    ZoPoint3d center2;
    double radius2 = 0.0;
    ZoPoint3d p1, p2, base;
    bool valid = false;
    bool concentric = false;

  protected:
    bool Calc(double tolerance);
};
