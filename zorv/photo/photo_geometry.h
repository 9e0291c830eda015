#pragma once

#include <functional>
#include <optional>

#include "zorv/math/matrix.h"

class ZoPhoto;

namespace zorv::detail {

/// What a camera needs to know of its photo.
struct PhotoGeometry {
    double width = 0.0;  ///< of the digital image, in pixels
    double height = 0.0;
    ZoMatrix digiToBiko{3, 3};  ///< pixels, with the rows upwards, to mm of the image plane
    /// Asked only when needed, since it settles the extent of a photo that has none yet.
    std::function<double()> pixelsPerMm = [] { return 1.0; };
    /// Pixels with the rows downwards to mm, in place, with all that the photo's way has beyond the matrix.
    std::function<void(double* x, double* y)> flippedDigiToBiko;
};

/// Nothing for null.
std::optional<PhotoGeometry> GeometryOf(ZoPhoto* photo);

/// Gives the photo's camera a reach where it has none: as far as the image goes.
void GiveReach(ZoPhoto& photo);

}  // namespace zorv::detail
