#pragma once

#include "zorv/photo/auto/library_camera.h"
#include "zorv/photo/camera.h"
#include "zorv/photo/photo_geometry.h"

// The operations of ZoCamera on library cameras, on what they need to know of the photo. Null: there is no photo.

namespace zorv::detail {

void CreateLibraryCamera(ZoCamera& camera, const PhotoGeometry* photo, bool fromClassic);
bool CreateLibraryCameraFromClassic(ZoCamera& camera, const PhotoGeometry* photo);
void TakeLibraryCamera(ZoCamera& camera, const ZorvLibAuto::Camera& library, const PhotoGeometry* photo);

}  // namespace zorv::detail
