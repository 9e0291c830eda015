#pragma once

#include <memory>
#include <string>

#include "zorv/core/filter.h"
#include "zorv/export.h"
#include "zorv/points/point_list.h"
#include "zorv/rectify/plane.h"

class ZoLogfile;
class ZoMatrix;

/// Computes a plane: through three points, by adjustment through many, parallel to a coordinate plane, or normal to a
/// plane through two points.
///
/// The adjustment minimises the residuals along the coordinate axis that is nearest to the normal, not those across the
/// plane. At map coordinates (5,000,000) it keeps 1e-6: the points enter relative to their extent, only the dependent
/// coordinate as it is. Which axis that is, the first points of the list that span a plane decide; when they lie nearly
/// on a line, the axis can be a poor one. A failed computation leaves the plane as it was and says why in the status.
class ZORV_API ZoCalcPlane {
  public:
    enum eStatus : int {
        StatusOk = 0,
        TooLessPoints = 1,    ///< fewer than three
        BadPointDistrib = 2,  ///< all in one place or on one line, or a coordinate that is not finite
        BadApproximate = 3,   ///< set by callers
    };

    ZoCalcPlane() = default;
    /// Copies share the filter.
    ZoCalcPlane(const ZoCalcPlane&) = default;
    ZoCalcPlane& operator=(const ZoCalcPlane&) = default;
    virtual ~ZoCalcPlane() = default;

    /// Through three points. Null points are left out; the points stay the caller's. `acceptCollinear` lets points near
    /// one line pass.
    bool CalcPlane(ZoPoint* p1, ZoPoint* p2, ZoPoint* p3, bool acceptCollinear);
    /// Through the points of the list that pass the filter. The differences dx, dy, dz of all points of the list become
    /// 0 and, with `storeResiduals`, those of the used points their residuals, by id.
    bool CalcPlaneFromFilteredPoints(ZoPointList* list, bool storeResiduals, bool acceptCollinear);
    /// Through the origin, parallel to the plane of x and y (4), y and z (5) or x and z (6). Other axes give status 1.
    bool CalcParallelPlane(int axis);
    /// The plane that holds the line from a to b and stands normal on the given plane, or on that of an axis. False for
    /// null.
    bool CalcNormalPlane(int axis, const ZoPoint& a, const ZoPoint& b);
    bool CalcNormalPlane(const ZoPlane* normalTo, const ZoPoint& a, const ZoPoint& b);

    const ZoPlane& GetPlane() const { return plane; }
    ZoPlane* GetPlanePtr() { return &plane; }
    /// Standard deviation of a point's distance from the plane: the root of the sum of squared distances by the number
    /// of points less three. 0 for three points.
    double GetZoPlaneSigma0() const { return sigma0; }
    eStatus GetZoPlaneStatus() const { return status; }
    /// "ZoCalcPlane::StatusOk" and so on.
    const char* GetZoPlaneStatusAsText() const;
    void SetZoPlaneStatus(eStatus value) { status = value; }
    /// The points of the last computation, with their residuals in dx, dy, dz; and their projections onto the plane.
    const ZoPointList& GetUsedPoints() const { return usedPoints; }
    const ZoPointList& GetPointsInZoPlane() const { return pointsInPlane; }
    /// The root of the sum of squared distances.
    double GetZoPlaneMediumPointDist() const { return mediumPointDist; }

    /// Takes the filter over; copies of this object share it. Null takes every point. Setting the filter that is set
    /// already does nothing.
    void SetCooFilter(ZoFilter* filter);

    /// Appends the used points to a log.
    void WriteLogfile(ZoLogfile& log) const;
    void WriteLogfile(const std::wstring& fileName) const;

    ZoPlane plane;
    double sigma0 = 0.0;
    eStatus status = TooLessPoints;
    ZoPointList pointsInPlane;
    double mediumPointDist = 0.0;
    std::shared_ptr<ZoFilter> cooFilter;
    ZoPointList usedPoints;
    int firstPoint = 0;  ///< columns, counted from 0, of the points of the approximation
    int secondPoint = 0;
    int thirdPoint = 0;
    bool acceptCollinear = false;

  protected:
    /// Computes the plane through the points of the list and stores their residuals there.
    bool CalcZoPlane(ZoPointList* list);
    // The matrix has a column for each point: x, y, z and its distance from the plane.
    bool Approximate(const ZoMatrix& columns);
    void Adjust(ZoMatrix& columns);
    double CalcSigma(ZoMatrix& columns) const;
    void FindEdgePoints(const ZoMatrix& columns, int a, int b, double& amin, double& amax, double& bmin,
                        double& bmax) const;
    void CalcResiduals(ZoPointList* list) const;
    /// The coordinate axis nearest to the normal: 0 for x, 1 for y, 2 for z.
    int NormComp() const;

  private:
    bool CalcUnfiltered(ZoPointList& points);
    /// Plane, quality figures and status; the distances go into the matrix.
    bool CalcColumns(ZoMatrix& columns);
    /// Gives a point its residuals.
    void TakeDistance(ZoPoint& point, double distance) const;
    /// Moves copies of points with residuals into the plane.
    void Project(const ZoPointList& list);
};
