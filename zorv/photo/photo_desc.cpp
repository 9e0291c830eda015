#include "zorv/photo/photo_desc.h"

#include "zorv/photo/photo.h"

void ZoPhotoDesc::Set(const ZoPhoto* photo) {
    isOrthoPhoto = photo && photo->IsOrthoPhoto();
    isVivaPanorama = photo && photo->IsVivaPanorama();
    id = photo ? photo->GetId() : 0;
}
