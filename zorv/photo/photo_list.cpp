#include "zorv/photo/photo_list.h"

#include <memory>

#include "zorv/core/archive_list.h"
#include "zorv/core/bulk_change.h"

namespace {

/// The scalars of a record and nothing of its nested ones.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 2 + 3 * 4 + 1 + 2 * 8 + 2 * 4;

}  // namespace

long ZoPhotoList::AddPhoto(ZoReaderObject* object) {
    Add(std::make_unique<ZoPhoto>(object).release());
    return 1;
}

ZoPhoto* ZoPhotoList::FindWithCameraId(unsigned int cameraId) const {
    for (ZoPhoto* photo = First(); photo; photo = photo->Next()) {
        if (photo->camera.GetId() == cameraId) return photo;
    }
    return nullptr;
}

void ZoPhotoList::ClearNeighbourPhotosMap() {
    for (ZoPhoto* photo = First(); photo; photo = photo->Next())
        photo->neighbourPhotos.clear();
}

void ZoPhotoList::ClearVWS_PhotoId_CommonImo() {
    for (ZoPhoto* photo = First(); photo; photo = photo->Next())
        photo->commonImoByPhoto.clear();
}

void ZoPhotoList::ReadV9(CZipWrapper* archive) {
    zorv::detail::BulkChange(*this, [&] { zorv::detail::ReadRecords(*this, archive, kSmallestRecord); });
}

void ZoPhotoList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
