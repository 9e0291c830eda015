#pragma once

#include <cmath>

#include "zorv/photo/camera.h"

namespace zorv::detail {

/// Adjust of modes 0 and 1 with the parameters at hand, for loops over many points. Both shift the point to a principal
/// point; the distortion is centred on the first one.
class ClassicDistortion {
  public:
    explicit ClassicDistortion(const ZoCamera& camera)
        : a1(camera.a1),
          a2(camera.a2),
          r0Pow2(camera.r0 * camera.r0),
          r0Pow4(r0Pow2 * r0Pow2),
          centreX(camera.xh),
          centreY(camera.yh),
          shiftX(camera.IsTs15() ? camera.xhViva : camera.xh),
          shiftY(camera.IsTs15() ? camera.yhViva : camera.yh) {}

    double RelativeAt(double r) const {
        if (r == 0.0) return 0.0;
        const double rPow2 = r * r;
        return a1 * (rPow2 - r0Pow2) + a2 * (rPow2 * rPow2 - r0Pow4);
    }

    void Adjust(double& x, double& y) const {
        const Line column = ColumnAt(x);
        const Line row = RowAt(y);
        const double dr = RelativeAt(column, row);
        x = column.Adjusted(dr);
        y = row.Adjusted(dr);
    }

    /// What Adjust has of x alone or of y alone.
    struct Line {
        double fromCentre2;  // square of the distance
        double shifted;

        double Adjusted(double dr) const { return shifted - dr * shifted; }
    };
    Line ColumnAt(double x) const { return {(x - centreX) * (x - centreX), x - shiftX}; }
    Line RowAt(double y) const { return {(y - centreY) * (y - centreY), y - shiftY}; }
    double RelativeAt(const Line& column, const Line& row) const {
        return RelativeAt(std::sqrt(column.fromCentre2 + row.fromCentre2));
    }

  private:
    double a1;
    double a2;
    double r0Pow2;
    double r0Pow4;
    double centreX;
    double centreY;
    double shiftX;
    double shiftY;
};

}  // namespace zorv::detail
