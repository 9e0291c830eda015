#pragma once

#include "zorv/export.h"
#include "zorv/math/point2d.h"

/// Two points of the plane: an infinite line through both, or the segment between them.
class ZORV_API ZoLine2d {
  public:
    ZoLine2d() = default;
    ZoLine2d(const ZoPoint2d& from, const ZoPoint2d& to) : start(from), end(to) {}
    ZoLine2d(double x1, double y1, double x2, double y2) : start(x1, y1), end(x2, y2) {}
    ZoLine2d(const ZoLine2d&) = default;
    ZoLine2d& operator=(const ZoLine2d&) = default;
    virtual ~ZoLine2d() = default;

    /// start for 0, end for every other value.
    const ZoPoint2d& operator[](int i) const { return i == 0 ? start : end; }
    ZoPoint2d& operator[](int i) { return i == 0 ? start : end; }

    void setStart(const ZoPoint2d& point) { start = point; }
    void setEnd(const ZoPoint2d& point) { end = point; }
    double length() const { return start.distanceTo(end); }

    /// Where the two infinite lines meet. False, with `out` unchanged, for exactly parallel and for degenerate lines.
    bool interSect(const ZoLine2d& other, ZoPoint2d& out) const;

    /// Signed distance along the line from start to the foot of the point. `perpendicular`, when not null, receives
    /// the signed distance from the line, positive on its left. A degenerate line gives 0 for both.
    double DistanceFromP1(const ZoPoint2d& point, double* perpendicular) const;
    double DistanceFromP1(const double& x, const double& y, double* perpendicular) const {
        return DistanceFromP1(ZoPoint2d(x, y), perpendicular);
    }

    /// Prints nothing.
    void DbgPrintf(const char*) const {}

    ZoPoint2d start;
    ZoPoint2d end;

  private:
    ZoVector2d UnitDirection() const { return (end - start).normal(); }
};
