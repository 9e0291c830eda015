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
        const double dr = RelativeAt(ZoCamera::Calc_r(x - centreX, y - centreY));
        x -= shiftX;
        y -= shiftY;
        x -= dr * x;
        y -= dr * y;
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
