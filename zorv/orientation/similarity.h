#pragma once

#include <cstdint>
#include <set>

#include "zorv/core/id_table.h"
#include "zorv/core/sort_helper.h"
#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/math/vector.h"
#include "zorv/orientation/local_system.h"
#include "zorv/points/point_list.h"

/// How a computation of a ZoTrafo3d ended.
enum eTrafo3DStatus : std::int32_t {
    eTrafo3DOk = 0,
    eTrafo3DTooFewPoints = 1,    ///< fewer common points than asked for, or none
    eTrafo3DPointMissing = 2,    ///< a point of a local system definition is not in the list
    eTrafo3DBadScaleDef = 3,     ///< a distance from a point to itself, no usable scale, a definition point missing
    eTrafo3DNoSolution = 4,      ///< points in one place or on a line, a point used twice, no set of points that fit
    eTrafo3DScaleDeviation = 5,  ///< the transformation stands, but a distance deviates from the mean scale
    eTrafo3DNoScaleDef = 6,      ///< a local system without a known distance
};

/// What the robust search thinks of an attempt; all but the first count alike.
enum eRobustStatus : std::int32_t {
    eRobustOk = 0,             ///< worst and RMS residual within the limit
    eRobustCalcFailed = 1,     ///< no fit
    eRobustRmsExceeded = 2,    ///< RMS above the limit, worst residual within
    eRobustBothExceeded = 3,   ///< both above the limit
    eRobustWorstExceeded = 4,  ///< worst residual above the limit, RMS within
};

/// How well a known distance agrees with a local system.
struct ZoScaleCheck {
    bool exceeded = false;    ///< its scale deviates from the mean by more than was allowed
    double difference = 0.0;  ///< distance in the local system minus the known one, in the unit of the local system
    double percent = 0.0;     ///< the same in relation to the known one
};

/// The parameters of a spatial similarity transformation:
///
///     x' = targetOrigin + scale * rotation * (x - sourceOrigin)
///
/// on column vectors. A new one has a zero rotation.
class ZORV_API ZoTrafo3dData {
  public:
    ZoTrafo3dData() = default;
    /// Moving copies.
    ZoTrafo3dData(const ZoTrafo3dData&) = default;
    ZoTrafo3dData& operator=(const ZoTrafo3dData&) = default;

    /// The same as a 4 by 4 matrix on homogeneous column vectors.
    ZoMatrix GetAsMatrix() const;
    /// Assigns it to a matrix of that shape.
    void GetAsMatrix(ZoMatrix& m) const { m = GetAsMatrix(); }

    ZoMatrix rotation{3, 3};
    ZoVector targetOrigin{0.0, 0.0, 0.0};  ///< in the target system
    ZoVector sourceOrigin{0.0, 0.0, 0.0};  ///< in the source system
    double scale = 1.0;
};

/// Finds and applies a spatial similarity transformation between two point sets by the ids they share.
///
/// Points are brought from the system of the source points to that of the control points. Every transformed point
/// carries its residual, control point minus transformed point, in dx, dy, dz, zero without a control point. The
/// object holds the results of its last run; one thread uses it at a time.
class ZORV_API ZoTrafo3d : public virtual ZoTrafo3dData {
  public:
    static constexpr int kHasResidual = 0x40;  ///< flag of points that carry a residual of a transformation
    static constexpr int kRejected = 0x800;    ///< flag of points rejected by their residual

    ZoTrafo3d() = default;
    ZoTrafo3d(const ZoTrafo3d&) = default;
    ZoTrafo3d& operator=(const ZoTrafo3d&) = default;
    virtual ~ZoTrafo3d() = default;

    eTrafo3DStatus GetStatus() const { return status; }
    int GetCommonCount() const { return commonCount; }
    double GetRmsX() const { return rmsX; }
    double GetRmsY() const { return rmsY; }
    double GetRmsZ() const { return rmsZ; }
    int GetResidualCount() const { return residualCount; }
    ZoPoint* GetWorstPoint() const { return worstPoint; }
    /// i from 0 to ZoLokalSystemDef::kNScale - 1.
    const ZoScaleCheck& GetScaleCheck(int i) const { return scaleCheck[i]; }
    int GetLastScaleCheck() const { return lastScaleCheck; }

    /// The direct least-squares fit of the source points to the control points of the same ids, with equal weights.
    ///
    /// Points in a plane, as of a facade, give a proper rotation too; so do mirrored ones. The scale minimises the
    /// distances in the target system, so that noise in the source coordinates makes it smaller. With `unitScale` the
    /// rotation is computed for the scale 1, which is right only for sets that have the same one; `scale` still tells
    /// the fitted one.
    ///
    /// False with eTrafo3DTooFewPoints for fewer than `minPoints` common points, or none; with eTrafo3DNoSolution for
    /// points in one place or on a line, for coordinates that are not finite, for mirrored sets of which no rotation
    /// is clearly the best, and where `unitScale` leaves no rotation. Origins and scale may have changed then.
    ///
    /// B. K. P. Horn, H. M. Hilden, S. Negahdaripour: Closed-form solution of absolute orientation using orthonormal
    /// matrices, J. Opt. Soc. Am. A 5 (1988) 1127-1135, where the square root of the 3 by 3 matrix is found by its
    /// trace.
    bool CalcByControlPoints(const ZoSortHelper<ZoPoint>& controls, const ZoPointList* source, int minPoints,
                             bool unitScale);
    bool CalcByControlPoints(const ZoPointList* controls, const ZoPointList* source, int minPoints, bool unitScale);

    /// Puts transformed copies of the source points into `result` in the place of what it held, and behind them copies
    /// of the control points that the source lacks. A point takes the coordinates of its control point on the axes
    /// that the control flags name. With `sortById` the result is ordered by id and holds the first point of each.
    ///
    /// The RMS values go over all points, those without a control point with residual 0. `result` may be one of the
    /// other lists. Always true.
    bool Transform(ZoPointList& result, const ZoPointList& source, const ZoSortHelper<ZoPoint>& controls,
                   bool sortById);
    bool Transform(ZoPointList& result, const ZoPointList& source, const ZoPointList* controls, bool sortById);

    /// Transforms the points of `source` themselves and moves them to `accepted`, or, flagged as rejected, to
    /// `rejected` when their residual is longer than maxResidual; then `rejectedControls`, unless null, gets a copy of
    /// the control point.
    ///
    /// A point takes the control flags of its control point, and its coordinates on the axes that they name; on the
    /// others it goes to it by the share `blend`, from 0 to 1. Without a control point it has no control flags. The RMS
    /// values go over the accepted points. Points whose list is null are deleted. Always true.
    bool Transform(ZoPointList* accepted, ZoPointList* rejected, ZoPointList* rejectedControls, ZoPointList* source,
                   double maxResidual, const ZoSortHelper<ZoPoint>& controls, double blend);

    /// Transforms the points of the list with their residuals and normals. Control flags and both flags of this class
    /// are cleared. False for null.
    bool InPlaceTransform(ZoPointList* list);

    /// The robust fit: as CalcByControlPoints and the sorting Transform, but also where some control points are wrong.
    ///
    /// `threshold` is the longest residual allowed, in the target unit when `thresholdIsAbsolute`, else as a factor of
    /// the longest side of the box around the common control points. Where the fit of all common points exceeds it,
    /// random samples of 4 + extraSample points are fitted and all points that agree with one join it; the largest set
    /// found gives the transformation. That search needs minPoints + extraPoints common points.
    ///
    /// `controls` and `source` stay unchanged; the first points of an id in both are a pair, further ones have no
    /// partner. The three output lists may be null; they are appended to: rejected points (to `result` when `rejected`
    /// is null), control points of rejected points, accepted points (in the order of `controls` unless there was a
    /// search), points without a control point, control points without a point. The unnamed bool has no effect. Returns
    /// the status; for any but eTrafo3DOk the lists stay as they were. The samples follow from
    /// ZoGenerateRandomIndex::SetSeed.
    eTrafo3DStatus RobustCalcByControlPointsAndTransform(ZoPointList* result, ZoPointList* rejected,
                                                         ZoPointList* rejectedControls, const ZoPointList& controls,
                                                         const ZoPointList& source, double threshold,
                                                         bool thresholdIsAbsolute, double blend, int minPoints, bool,
                                                         int extraPoints, int extraSample);

    /// The transformation from the coordinates of the list to a local system. Where fixedScale is not 0 it is the
    /// scale, else the mean over the known distances. A distance whose own scale deviates from the mean by more than
    /// the share `maxDeviation` sets the status eTrafo3DScaleDeviation, and the result is true all the same. The checks
    /// of the distances tell how well each agrees.
    ///
    /// False with the status of ZoLokalSystemDef::IsValid, but for eTrafo3DNoScaleDef, with which the computation goes
    /// on; with eTrafo3DBadScaleDef when there is neither a distance nor a fixed scale, or no finite scale, or no list;
    /// with eTrafo3DNoSolution when the three points lie on a line, when axisMode is no axis, and for coordinates that
    /// are not finite. Then the parameters stay as they were. The status of a run before is not cleared.
    bool CalcByLocalSystem(const ZoLokalSystemDef& def, const ZoPointList* list, double fixedScale,
                           double maxDeviation);

    /// Clears the table and adds the id of every point of b that a also holds, in the order of b.
    static void GetCommonIds(ZoIdTable& ids, ZoPointList* a, ZoPointList* b);
    /// The distance in relation to that of the two points; 1e-10 when they coincide.
    static double CalcScale(const ZoVector& a, const ZoVector& b, double distance);
    /// The columns of the upper left 3 by 3 block become the axes of the frame with u from a to b, v across it in the
    /// plane of the three points on the side of c, and w = u x v. Points on a line leave the matrix as it is.
    static void unvect(const ZoVector& a, const ZoVector& b, const ZoVector& c, ZoMatrix* frame);

    eTrafo3DStatus status = eTrafo3DOk;
    int commonCount = 0;  ///< control points used by the last fit
    ZoScaleCheck scaleCheck[ZoLokalSystemDef::kNScale];
    int lastScaleCheck = 0;  ///< the last distance found to deviate
    double rmsX = 0.0;       ///< root mean square residuals of the last run that transformed
    double rmsY = 0.0;
    double rmsZ = 0.0;
    int residualCount = 0;          ///< how many points stand behind them
    ZoPoint* worstPoint = nullptr;  ///< that with the longest residual of that run, in its result list, or null
    ZoIdTable ids;                  ///< for the host

  private:
    eRobustStatus RobustCalcAndCheckByControlPoints(const ZoSortHelper<ZoPoint>& controls, ZoPointList* list,
                                                    double limitSq, int minPoints);
    eRobustStatus RobustCheckTransformQuality(const ZoSortHelper<ZoPoint>& controls, ZoPointList* list, double limitSq);
    /// Random sample search. Leaves the points in another order; false with the status when nothing was found.
    bool RobustSearch(const ZoSortHelper<ZoPoint>& controls, ZoPointList& sources, const ZoIdTable& commonIds,
                      double limitSq, int minPoints, int extraSample);
    void RobustTryAndAddPoints(std::set<unsigned int>& good, std::set<unsigned int>& bad, double limitSq,
                               const ZoSortHelper<ZoPoint>& controls, const ZoPointList& list);
    /// Copies of the points with and without a partner in the other list; the table gets the common ids, the box takes
    /// in the common control points.
    static void RobustSplitLists(const ZoPointList& controls, const ZoPointList& source, ZoPointList& commonControls,
                                 ZoPointList& commonSources, ZoPointList& loneControls, ZoPointList& loneSources,
                                 ZoIdTable& commonIds, ZoBoundingBox3d& box);

    void ClearResiduals();
    void AddResidual(const ZoPoint& point);
    void FinishResiduals();
};
