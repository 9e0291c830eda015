#pragma once

#include <cstdint>

#include "zorv/export.h"

class ZoPhoto;

/// Names a photo without pointing to it.
class ZORV_API ZoPhotoDesc {
  public:
    ZoPhotoDesc() = default;
    explicit ZoPhotoDesc(const ZoPhoto* photo) { Set(photo); }

    /// Null clears it.
    void Set(const ZoPhoto* photo);

    bool isOrthoPhoto = false;
    bool isVivaPanorama = false;
    std::uint32_t id = 0;
};
