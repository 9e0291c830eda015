#pragma once

#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/photo/photo.h"

/// The photos of a project.
class ZORV_API ZoPhotoList : public TZoListHeader<ZoPhoto>, public LinkHdl {
  public:
    /// Reads a photo from its block and appends it. Returns 1; throws ZoParserStatus, then nothing is added.
    long AddPhoto(ZoReaderObject* object);
    /// The first photo taken with that camera, or null.
    ZoPhoto* FindWithCameraId(unsigned int cameraId) const;

    void ClearNeighbourPhotosMap();
    void ClearVWS_PhotoId_CommonImo();

    /// Archive record: the number of photos (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};
