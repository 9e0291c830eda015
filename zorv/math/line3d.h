#pragma once

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// Line in space: both the infinite line through `start` along `direction` and the segment from `start` to `end`.
///
/// The direction is kept beside the ends: only what says so brings it up to date. It is a unit vector once it has been
/// normalised; a line from a point to itself has a direction of not-a-number.
class ZORV_API ZoLine3d {
  public:
    ZoLine3d() = default;
    ZoLine3d(const ZoPoint3d& startPoint, const ZoPoint3d& endPoint)
        : start(startPoint), end(endPoint), direction(Normalized(endPoint - startPoint)) {}
    /// The end lies one unit along the direction.
    ZoLine3d(const ZoPoint3d& startPoint, const ZoVector3d& along) : start(startPoint), direction(Normalized(along)) {
        end = start + direction;
    }

    const ZoPoint3d& getStart() const { return start; }
    const ZoPoint3d& getEnd() const { return end; }
    const ZoVector3d& getDirection() const { return direction; }
    /// Neither the end nor the direction follows.
    void setStart(const ZoPoint3d& point) { start = point; }
    /// With `updateDirection` the direction becomes that from start to end.
    void setEnd(const ZoPoint3d& point, bool updateDirection) {
        end = point;
        if (updateDirection) direction = Normalized(end - start);
    }
    /// Normalises; the end stays.
    void setDirection(const ZoVector3d& along) { direction = Normalized(along); }

    /// Distance of the two ends.
    double getLength() const { return start.Distance(end); }
    /// The point at the signed distance t from the start.
    ZoPoint3d Evaluate(double t) const { return start + t * direction; }

    /// The foot of the perpendicular through a point, always written. True when the line counts as infinite or the foot
    /// lies between its ends, which are included.
    bool getClosestPointTo(const ZoPoint3d& point, ZoPoint3d& foot, bool infinite) const;
    /// The point's distance from the start; true when the point lies on the line, within 1e-10.
    bool getDistAtPoint(const ZoPoint3d& point, double& dist) const;

    /// Distance of the point from the infinite line.
    double getNormDistance(const ZoPoint3d& point) const { return ((point - start) % direction).Norm(); }
    /// Gives the foot of the perpendicular too.
    double getNormDistance(const ZoPoint3d& point, ZoPoint3d& foot) const;
    /// Tells whether the foot lies in the axis-parallel box of both ends, faces included. On a line that runs parallel
    /// to an axis one rounding of the foot can take it out of that box.
    double getNormDistance(const ZoPoint3d& point, bool& inSegment) const;

    /// The point midway between two infinite lines at their closest, and the distance of the lines there.
    ///
    /// -1.0, with the point untouched, for lines at no more than 1 degree or without a direction.
    double Intersect(const ZoLine3d& other, ZoPoint3d& point) const;

    void DbgPrintf() const;

    ZoPoint3d start;
    ZoPoint3d end;
    ZoVector3d direction;
};
