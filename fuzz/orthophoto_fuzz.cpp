// Orthophotos from any text (t) and from any archive item, as the first byte says: what was read can be used and comes
// back as it was written.

#include <cstddef>
#include <cstdint>

#include "record_checks.h"

#include "zorv/rectify/orthophoto.h"

namespace {

constexpr std::size_t kSmallestRecord = 56;

ZoOrthoPhoto Make() {
    return ZoOrthoPhoto(0u);
}

void Use(ZoOrthoPhoto& ortho) {
    const ZoElspPlaneInfoList& parts = ortho.ElspPlaneList();
    for (const double at : {0.0, 5.5, -1e300}) {
        ZoPoint point(1, at, 2.0 * at, 0.0, 0);
        ortho.AdjustPixelRotation(&point);
        if (!ortho.Transform(&point)) Require(parts.Count() != 1);
    }
    ZoPoint corners[4];
    Require(ortho.GetImageCorners(&corners[0], &corners[1], &corners[2], &corners[3]) == !parts.IsEmpty());
    const ZoElspPlaneInfo* const first = parts.First();
    Require(!first || parts.FindPlane(first->GetPhotoId(), 0) == first);
    ortho.GetPixelSize();
    const ZoOrthoPhoto copy(ortho);
    Require(ArchiveBytes(copy) == ArchiveBytes(ortho));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string record(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] != 't') {
        CheckArchive<ZoOrthoPhotoList>(record, kSmallestRecord, Use);
        return 0;
    }
    int errors = 0;
    ZoOrthoPhoto read = ReadFromText(Make, record, errors);
    RequireTextComesBack(Make, read);
    Use(read);
    return 0;
}
