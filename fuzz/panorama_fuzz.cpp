// Panoramas from any text (t) and from any archive item, as the first byte says: what was read can be used and comes
// back as it was written.

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "record_checks.h"

#include "zorv/photo/panorama.h"
#include "zorv/photo/panorama_info.h"

namespace {

constexpr std::size_t kSmallestRecord = 48;

ZoPhotoVivaPano Make() {
    return ZoPhotoVivaPano(0u);
}

void Use(ZoPhotoVivaPano& pano) {
    const auto& table = pano.GetPhotoIdTable().table;
    for (const double at : {0.0, 17.0, 1e5, -1e300, std::nan("")}) {
        if (pano.FindPhotoAndPixelXY(at, at)) Require(pano.ContainsPhoto(pano.GetFoundPhotoId()));
    }
    ZoMatrix offset(3, 3);
    for (const int index : {0, 1, INT_MAX, INT_MIN}) {
        int bounds[4] = {};
        Require(pano.GetPixelRegion(index, bounds[0], bounds[1], bounds[2], bounds[3]) == (table.SizeX() > 0));
        Require(pano.CalcOffset(index, offset, index == 1) == (table.SizeX() > 0));
    }
    if (!table.data.empty()) Require(pano.AreSideBySide(table.data.back(), table.data.back(), 1));
    static_cast<const ZoPhotoVivaPano&>(pano).GetDigiRegion();
    const ZoVivaPanoInfo info(&pano);
    Require(!(info < info) && (info.photoId == 0 || info.IsPanoImage()));
    info.dbgprintf(nullptr);
    Require(ArchiveBytes(ZoPhotoVivaPano(pano)) == ArchiveBytes(pano));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string record(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] != 't') {
        CheckArchive<ZoVivaPanoList>(record, kSmallestRecord, Use);
        return 0;
    }
    int errors = 0;
    ZoPhotoVivaPano read = ReadFromText(Make, record, errors);
    RequireTextComesBack(Make, read);
    Use(read);
    return 0;
}
