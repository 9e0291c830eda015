#pragma once

#include "zorv/export.h"
#include "zorv/points/point.h"
#include "zorv/rectify/plane.h"

/// What an oriented photo sees: a pyramid from the projection centre, in object coordinates. ZoPhoto computes it.
class ZORV_API ZoPhotoFieldOfView {
  public:
    static constexpr int kSides = 4;

    bool IsValid() const { return valid; }
    /// Sides, corners and far points are counted from 0, around the image; an index outside takes the nearest.
    const ZoPlane& GetSidePlane(int i) const { return sidePlanes[Clamped(i)]; }
    const ZoPlane& GetBasePlane() const { return basePlane; }
    const ZoPoint& GetCorner(int i) const { return corners[Clamped(i)]; }
    const ZoPoint& GetApex() const { return apex; }
    const ZoPoint& GetFarPoint(int i) const { return farPoints[Clamped(i)]; }

    /// Whether the two pyramids, each cut off at its far points, touch with their sides; `ifUnknown` when either is not
    /// valid, false when a depth is unknown.
    bool Intersect(const ZoPhotoFieldOfView& other, bool ifUnknown) const;
    /// Writes apex, far points and sides as an ASCII PLY file (name in UTF-8). False when it is not valid or the file
    /// cannot be written; an old file then stays.
    bool WriteAsPly(const char* fileName) const;

    bool valid = false;
    ZoPlane sidePlanes[kSides];  ///< through the apex and two neighbouring corners
    ZoPlane basePlane;           ///< through the corners
    ZoPoint corners[kSides];     ///< of the image, in the distance of the image plane; ids 1 to 4
    ZoPoint apex;                ///< the projection centre; id 5
    ZoPoint farPoints[kSides];   ///< of the image in the far depth; all zero when no depth is known

  private:
    static int Clamped(int i) { return i < 0 ? 0 : i < kSides ? i : kSides - 1; }
};
