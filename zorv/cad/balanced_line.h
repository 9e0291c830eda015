#pragma once

#include "zorv/export.h"
#include "zorv/points/point_list.h"

class ZoVector3d;

/// The line of best fit through any number of points of space, from end to end: in the plane fitted to the points, by
/// regression. Points on one line, which define no plane, give the line between the two ends.
class ZORV_API ZoCadBalancedLine {
  public:
    ZoCadBalancedLine() = default;
    /// Copies the points and fits; null copies nothing.
    explicit ZoCadBalancedLine(const ZoPointList* list);
    ZoCadBalancedLine(const ZoCadBalancedLine&) = default;
    ZoCadBalancedLine& operator=(const ZoCadBalancedLine&) = default;
    virtual ~ZoCadBalancedLine() = default;

    /// Adds a copy and fits anew; whether there is a line.
    bool AddPoint(const ZoPoint& point);
    bool AddPoint(double x, double y, double z);

    /// False with fewer than two points, and where the regression has none.
    bool IsValid() const { return valid; }
    const ZoPointList& GetPoints() const { return points; }
    const ZoPoint& GetStart() const { return start; }
    const ZoPoint& GetEnd() const { return end; }
    /// Greatest and mean distance of the points from the line; 0 for two points and for points on one line.
    double GetMaxDeviation() const { return maxDeviation; }
    double GetMeanDeviation() const { return meanDeviation; }

    ZoPointList points;
    ZoPoint start;
    ZoPoint end;
    double maxDeviation = 0.0;
    double meanDeviation = 0.0;
    bool valid = false;

  protected:
    bool CalcBalancedLine();

  private:
    void TakeFarthestPoints();
    bool FitInPlane(const ZoVector3d& normal);
    void CalcDeviations();
};
