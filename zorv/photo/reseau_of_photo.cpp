// What a reseau takes from a photo.

#include "zorv/core/number_cast.h"
#include "zorv/core/path_tools.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/reseau_file_list.h"

ZoReseauFile::ZoReseauFile(const ZoPhoto* photo) {
    if (!photo) return;
    valid = true;
    comment = ZoGetFilenameNoExt(photo->GetName());
    photoRegion = photo->GetBikoRegion();
    exifPixelWidth = zorv::detail::SaturatedInt(photo->GetDigiRegion().Width());
    exifPixelHeight = zorv::detail::SaturatedInt(photo->GetDigiRegion().Height());
}

ZoReseauFile* ZoReseaufileList::FindReseauFile(const ZoPhoto* photo) const {
    return photo ? FindReseauFile(photo->GetReseauData()) : nullptr;
}
