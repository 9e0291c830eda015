#pragma once

#include <vector>

#include "zorv/export.h"
#include "zorv/math/point3d.h"

/// The straight line y = slope * x + intercept through samples, by least squares of y; x on y where the samples stand
/// exactly above each other. Sums are taken relative to the first sample.
class ZORV_API ZoLinearRegression {
  public:
    ZoLinearRegression() = default;
    ZoLinearRegression(const ZoLinearRegression&) = default;
    ZoLinearRegression& operator=(const ZoLinearRegression&) = default;
    virtual ~ZoLinearRegression() = default;

    void Add(double x, double y, double z) { samples.emplace_back(x, y, z); }
    /// Fits the line. False for fewer than two samples and when all are in one place.
    bool Calc();

    const ZoPoint3d& GetLow() const { return low; }
    const ZoPoint3d& GetHigh() const { return high; }
    double GetSlope() const { return slope; }
    double GetIntercept() const { return intercept; }

    std::vector<ZoPoint3d> samples;
    ZoPoint3d low;   ///< the sample of the smallest x, moved onto the line along y
    ZoPoint3d high;  ///< that of the greatest x; for exchanged axes the same of y
    double slope = 0.0;
    double intercept = 0.0;

  private:
    bool Fit();
    void ExchangeAxes();
};
