#pragma once

#include "zorv/cad/calc_status.h"
#include "zorv/export.h"
#include "zorv/points/point_list.h"

/// The rectangle of three consecutive corners P0, P1, P2 of space, with the right angle at P1, calculated in the
/// constructor. The second side is made perpendicular at its own length; the corners given stay as they are.
class ZORV_API ZoCadRectangle {
  public:
    /// `tolerance` is what the cosine of the angle at P1 must stay below.
    ZoCadRectangle(const ZoPointList* list, double tolerance) { CalcRectangle(list, tolerance); }

    /// 1 on success, 0 for fewer than three points, a side without length, sides on one line or an angle too far
    /// from a right one.
    int CalcRectangle(const ZoPointList* list, double tolerance);

    bool IsOk() const { return status == eZoCadOk; }
    int GetStatus() const { return status; }
    /// The fourth corner, with the id 4.
    const ZoPoint& GetResult() const { return result; }
    double GetSideALength() const { return sideA; }
    double GetSideBLength() const { return sideB; }
    /// Angle at P1 as measured, radians.
    double GetAngle() const { return angle; }
    double GetArea() const { return sideA * sideB; }
    /// Length of all four sides.
    double GetSegmentLength() const { return 2.0 * (sideA + sideB); }
    /// The three corners given and the fourth.
    const ZoPointList& GetPoints() const { return points; }

    ZoPoint result;
    double sideA = 0.0;
    double sideB = 0.0;
    double angle = 0.0;
    ZoPointList points;
    int status = eZoCadNotCalculated;
};
