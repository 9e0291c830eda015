#pragma once

#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/photo/auto/library_camera.h"

/// The way of a digital camera between raw and corrected image coordinates: from mm to pixels, through the library
/// camera and an ideal one, back to mm. Belongs to one ZoCamera, whose copies get copies of it.
///
/// The pixels of the matrices have their rows upwards, with the origin in the lower left corner; those of the library
/// cameras have them downwards.
class ZORV_API ZoCamPair {
  public:
    /// Without a photo: pixels stand for mm, both matrices are the identity. These two throw std::domain_error for a
    /// library camera without a model.
    explicit ZoCamPair(const ZorvLibAuto::Camera& camera);
    /// A matrix without an inverse counts as the identity.
    ZoCamPair(const ZorvLibAuto::Camera& camera, const ZoMatrix& pixelToMm);

    /// In place, in mm of the image plane: takes the distortion off, or puts it on. False, with x and y as they were,
    /// where that gives no finite point, as with a focal length of 0. Both throw std::domain_error when `first` or
    /// `second` has lost its model.
    bool Adjust(double* x, double* y) const;
    bool InvAdjust(double* x, double* y) const;

    ZorvLibAuto::Camera first;   ///< the camera with its distortion
    ZorvLibAuto::Camera second;  ///< a Pinhole of the same focal length, with the principal point in the image centre
    ZoMatrix mmToPixel{3, 3};
    ZoMatrix pixelToMm{3, 3};

  private:
    bool Map(double* x, double* y, const ZorvLibAuto::Camera& from, const ZorvLibAuto::Camera& to) const;
};
