#pragma once

#include <cstdint>

#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/math/vector.h"
#include "zorv/photo/reseau_trafo.h"

class ZoPhoto;
class ZoPoint;
class ZoPoint3d;
class ZoPointList;

/// A conversion along the chain of image coordinates:
///
///     Digi    pixels of the stored image, origin at the lower left, y up
///     Pre     what the pre trafo makes of them
///     Biko    mm in the image plane, the system of the reseau marks, with distortion
///     Image   Biko corrected by ZoCamera::Adjust: the collinearity equations hold
///     Object  object coordinates of the project
///
/// Flipped Digi counts its rows from the top of the image.
enum eConvertBikoMode : std::int32_t {
    eDigiToPre = 1,
    eDigiToBiko = 2,
    ePreToBiko = 3,
    eDigiToImage = 4,
    eBikoToImage = 5,
    eBikoToDigi = 6,
    ePreToDigi = 7,
    eBikoToPre = 8,
    eImageToBiko = 9,
    eImageToDigi = 10,
    eObjectToImage = 11,
    eObjectToBiko = 12,
    eObjectToDigi = 13,
};

/// One conversion of a photo, prepared for many points.
///
/// It holds copies of the photo's trafos as they were at Set, and reads the photo's present camera and orientation; the
/// photo must outlive it. Modes that use ZoCamera::InvAdjust write the camera's memory of the last inversion, so that
/// two threads must not run them on one photo.
class ZORV_API ZoBikoTransform {
  public:
    ZoBikoTransform() = default;
    /// Calls Set.
    ZoBikoTransform(const ZoPhoto* source, eConvertBikoMode conversion, bool flipDigi) {
        Set(source, conversion, flipDigi);
    }
    ZoBikoTransform(const ZoBikoTransform&) = default;
    /// Takes all fields.
    ZoBikoTransform& operator=(const ZoBikoTransform&) = default;
    virtual ~ZoBikoTransform() = default;

    /// Prepares a conversion; with `flipDigi` its Digi side is Flipped Digi. Null leaves a transform that gives false.
    void Set(const ZoPhoto* source, eConvertBikoMode conversion, bool flipDigi);

    /// Converts in place. Only the modes from Object read z, and set it to 0; the others take null for it. False
    /// without a photo; the modes from Object tell as well when the inverse distortion fails (x and y are then in
    /// Image) or, with flip, when the point falls outside the image or on its outermost pixel. A mode outside 1 to 13
    /// does nothing and is true.
    bool Transform(double* x, double* y, double* z) const;
    bool Transform(ZoPoint* point) const;
    bool Transform(ZoPoint3d& point) const;
    bool Transform(ZoVector& vector) const;
    /// All points of a list, whatever becomes of each. Null does nothing.
    void Transform(ZoPointList* list) const;

    /// Whether an object point lies within 120 degrees of the viewing axis, seen from the photo. The photo needs an
    /// orientation.
    bool IsInPhotoView(double x, double y, double z) const;
    bool IsPolyTrafo() const { return poly; }

    const ZoMatrix& GetMatrix() const { return matrix; }
    eConvertBikoMode GetMode() const { return mode; }
    const ZoPhoto* GetPhoto() const { return photo; }

    const ZoPhoto* photo = nullptr;
    ZoMatrix matrix{3, 3};  ///< the linear part
    bool poly = false;      ///< the main trafo is a polynomial
    ZoReseauTrafo mainTrafo;
    ZoReseauTrafo polyInvTrafo;
    eConvertBikoMode mode{};
    bool flip = false;
    double width = 0.0;  ///< of the stored image, in pixels
    double height = 0.0;
    ZoVector viewDirection{0.0, 0.0, 0.0};  ///< z axis of the camera in object space
    std::int32_t minX = INT32_MAX;          ///< a box for users of the class
    std::int32_t minY = INT32_MAX;
    std::int32_t maxX = INT32_MIN;
    std::int32_t maxY = INT32_MIN;
};
