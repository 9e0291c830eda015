#pragma once

#include <cstdint>

#include "zorv/export.h"

class ZoPhoto;

/// Base of the operations that turn a stored image by quarter turns: carries the photo's digital region and pre trafo
/// along. The host turns the image itself.
class ZORV_API ZoRotatePhotoBase {
  public:
    /// The photo stays the caller's and may be null.
    explicit ZoRotatePhotoBase(ZoPhoto* source) { SetPhoto(source); }
    ZoRotatePhotoBase(const ZoRotatePhotoBase&) = default;
    ZoRotatePhotoBase& operator=(const ZoRotatePhotoBase&) = default;
    virtual ~ZoRotatePhotoBase() = default;

    /// Takes the photo and its present rotation.
    void SetPhoto(ZoPhoto* source);

    std::int32_t oldRotation = 0;
    ZoPhoto* photo = nullptr;

  protected:
    /// For the host's attributes that lie on the image.
    virtual void AdjustAttributeDrawItem() {}
    /// Turns by three, two or one quarters for the indices 1, 2, 3. The pre trafo becomes a Helmert transformation that
    /// maps the turned pixels to where the former ones went. Orthophotos, inactive photos and other indices stay. The
    /// first argument has no effect.
    void AdjustReseauOrElspTrafo(int, int rotationIndex);
};
