#pragma once

#include "zorv/export.h"
#include "zorv/math/matrix.h"

/// The way of a digital camera between raw and corrected image coordinates: from mm to pixels, through the library
/// camera and an ideal one, back to mm. Belongs to one ZoCamera, whose copies get copies of it.
class ZORV_API ZoCamPair {
  public:
    /// In place, in mm of the image plane.
    void Adjust(double* x, double* y) const;
    void InvAdjust(double* x, double* y) const;

    ZoMatrix mmToPixel{3, 3};
    ZoMatrix pixelToMm{3, 3};
};
