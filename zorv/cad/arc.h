#pragma once

#include "zorv/cad/calc_status.h"
#include "zorv/export.h"
#include "zorv/math/vector.h"
#include "zorv/points/point.h"

class ZoPointList;

/// A circular arc through three points of space, calculated in the constructor.
///
/// Angles are radians in [0, 2 pi], in the coordinates of the arc's own plane (MapEcsToWcs of the normal). The arc runs
/// counter-clockwise from the start to the end angle through the second point; the order of the points decides the sign
/// of the normal.
class ZORV_API ZoCadArc {
  public:
    /// Through the first three points of the list; further ones do not count.
    explicit ZoCadArc(const ZoPointList* list) { CalcArc(list); }
    ZoCadArc(const ZoCadArc&) = default;
    ZoCadArc& operator=(const ZoCadArc&) = default;
    virtual ~ZoCadArc() = default;

    /// 1 on success, 0 for fewer than three points or points on a line; see the status.
    int CalcArc(const ZoPointList* list);

    bool IsOk() const { return status == eZoCadOk; }
    int GetStatus() const { return status; }
    /// Centre in world coordinates, and in the plane's, with z as the plane's height.
    const ZoPoint& GetCenterWCS() const { return centerWCS; }
    const ZoPoint& GetCenterUCS() const { return centerUCS; }
    const ZoVector& GetNormal() const { return normal; }
    double GetRadius() const { return radius; }
    double GetStartAngle() const { return startAngle; }
    double GetEndAngle() const { return endAngle; }

    /// All 0 unless the calculation succeeded. For an arc that runs through the angle 0 length and area are negative:
    /// those of the rest of the circle.
    double GetArcLength() const;
    double GetArcArea() const;
    double GetCircleLength() const;
    double GetCircleArea() const;

    int status = eZoCadNotCalculated;
    ZoPoint centerWCS;
    ZoPoint centerUCS;
    ZoVector normal{0.0, 0.0, 0.0};
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
};
