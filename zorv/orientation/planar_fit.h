#pragma once

#include <cstdint>

#include "zorv/export.h"
#include "zorv/orientation/planar_trafo.h"
#include "zorv/points/point_list.h"

class ZoRegion;

/// Fits a planar transformation to point pairs by least squares and tells what remains.
///
/// Source points are those of the list that is passed; the partner of a point is the first target point of its id.
/// Only x and y count. All pairs have weight 1. The lists stay with the caller.
class ZORV_API ZoCalcTrafo2D : public ZoTrafo2d {
  public:
    /// Flag of a point that took part in CalcResiduals. No form of it clears the flag.
    static constexpr int kHasResidual = 0x20;

    ZoCalcTrafo2D() = default;
    /// With a list of target points.
    explicit ZoCalcTrafo2D(ZoPointList* targets) { SetPPList(targets); }
    /// Copies refer to the same lists; one that refers to its own list has a copy of that.
    ZoCalcTrafo2D(const ZoCalcTrafo2D& other);
    ZoCalcTrafo2D& operator=(const ZoCalcTrafo2D& other);

    /// Residuals 0 and scale 1; transformation, lists and worst point stay.
    void Init();

    /// The target points. Null stands for the object's own list.
    ZoPointList* GetPPList() const { return ppList; }
    void SetPPList(ZoPointList* list) { ppList = list ? list : &ownList; }
    /// The source points where none are passed. Null stands for the object's own list.
    ZoPointList* GetActList() const { return actList; }
    void SetActList(ZoPointList* list) { actList = list ? list : &ownList; }

    /// Fits. False, and the object stays, for null or when the list (not the pairs) has too few points: fewer than 2,
    /// 3, 4 and 10. Where the pairs do not determine the transformation, its coefficients become 0. The projective fit
    /// is the linear one, which minimises the residuals times the denominators.
    ///
    /// The Helmert fit sets the scale, too, and is false when it finds none. For the polynomial null stands for the
    /// source points of the object.
    bool CalcTrafoHelmert(ZoPointList* list);
    bool CalcTrafoAffin(ZoPointList* list);
    bool CalcTrafoProjectiv(ZoPointList* list);
    bool CalcTrafoPolynom(ZoPointList* list);
    /// A Helmert transformation from sums: a0 = -a / 2, a1 = a / na, b0 = -b / 2, b1 = b / nb, where 0 in place of a
    /// divisor gives 0. Always true.
    bool CalcTrafoHelmert(double a, int na, double b, int nb);

    /// Gives each point that has a partner its residuals (transformed less target) and kHasResidual, other points
    /// residuals 0, and sets the RMS residuals and the worst point. Null stands for the source points of the object.
    /// Always true.
    bool CalcResiduals(ZoPointList* list);
    /// Sets the RMS residuals and tells the greatest residual (0, 0 when there is none) and the number of residuals
    /// shorter than the limit. The worst point stays. Although the list is const, the residuals in its points become 0
    /// and those that have a partner get kHasResidual. Null stands for the source points of the object.
    void CalcResiduals(double& maxX, double& maxY, int& countWithin, double limit, const ZoPointList* list);

    /// The transformation that suits the number of points. Null stands for the source points of the object.
    eZoTrafo2DType SuggestTrafoByPointsNbr(ZoPointList* list);
    /// The same, where a projective or polynomial transformation also asks for points in all four quarters of the
    /// region and in its centre; else it is affine. A polynomial wants 13 of them.
    eZoTrafo2DType SuggestTrafoByDistrib(const ZoRegion& region, ZoPointList* list);

    /// The id of the point with the greatest residual; 0 when no residual is above 0.
    unsigned int GetMaxError() const { return maxError; }
    /// RMS residuals, in units of the target points.
    double GetResidualX() const { return residualX; }
    double GetResidualY() const { return residualY; }
    /// Source units in a target unit, of the last Helmert fit.
    double GetScale() const { return scale; }

    ZoPointList* ppList = &ownList;
    ZoPointList* actList = &ownList;
    ZoPointList ownList;
    std::uint32_t maxError = 0;
    double residualX = 0.0;
    double residualY = 0.0;
    double scale = 1.0;

  private:
    template <class Model>
    bool Fit(ZoPointList* list);
};
