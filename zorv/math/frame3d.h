#pragma once

#include "zorv/math/point3d.h"

/// Coordinate frame: an origin and three axes. The axes are taken as they are, of any length and at any angle.
class ZoFrame3d {
  public:
    /// The world frame.
    ZoFrame3d() : axis1(ZoVector3d::XAxis), axis2(ZoVector3d::YAxis), axis3(ZoVector3d::ZAxis) {}
    ZoFrame3d(const ZoPoint3d& origin, const ZoVector3d& v1, const ZoVector3d& v2, const ZoVector3d& v3)
        : originPoint(origin), axis1(v1), axis2(v2), axis3(v3) {}

    ZoPoint3d& Origin() { return originPoint; }
    ZoVector3d& v1() { return axis1; }
    ZoVector3d& v2() { return axis2; }
    ZoVector3d& v3() { return axis3; }
    ZoPoint3d Origin() const { return originPoint; }
    ZoVector3d v1() const { return axis1; }
    ZoVector3d v2() const { return axis2; }
    ZoVector3d v3() const { return axis3; }

  private:
    ZoPoint3d originPoint;
    ZoVector3d axis1;
    ZoVector3d axis2;
    ZoVector3d axis3;
};
