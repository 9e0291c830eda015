#pragma once

#include "zorv/export.h"
#include "zorv/points/point.h"

/// A segment between two points.
class ZORV_API ZoLine {
  public:
    ZoLine() = default;
    ZoLine(double x1, double y1, double z1, double x2, double y2, double z2)
        : start(0, x1, y1, z1, 0), end(0, x2, y2, z2, 0) {}

    /// Exchanges the points when the start lies behind the end in x or in y.
    void Adjust();

    ZoPoint start;
    ZoPoint end;
};

/// Whether two segments meet in the plane of x and y, ends included; by the signs of the turns of their ends.
ZORV_API bool ZoIntersect(const ZoLine& l1, const ZoLine& l2);

/// What the intervals a1..a2 and b1..b2 have in common; 0 and 0 when they do not meet. Intervals that only touch have
/// their common value when b ends where a begins, and do not meet when a ends where b begins.
ZORV_API void ZoIntervall(double& lo, double& hi, double a1, double a2, double b1, double b2);

/// Turn of three points by x and y: +1 counter-clockwise, -1 clockwise or p2 behind p0; on one line 0 when p2 lies
/// between p0 and p1, +1 when it lies beyond p1.
ZORV_API int ZoCounterClockwise(const ZoPoint& p0, const ZoPoint& p1, const ZoPoint& p2);
