// Rectifications from any text, in the keyword form (t) and the old one (o), and from any archive item, as the first
// byte says: what was read can be used and comes back as it was written.

#include <cstddef>
#include <cstdint>

#include "record_checks.h"

#include "zorv/photo/photo.h"

namespace {

constexpr std::size_t kSmallestRecord = 42;

ZoElspTrafo Make() {
    return {};
}

void Use(ZoElspTrafo& rectification) {
    ZoPhoto photo(1);
    photo.SetActiveFlag(ZoPhoto::kActive);
    photo.SetPixelRegion(ZoRegion(-2.0, -1.0, 2.0, 1.0));
    for (const double at : {0.0, 0.37, -1e10}) {
        ZoPoint point(1, at, 1.0 - at, 0.5, 0);
        Require(rectification.Transform(&point, &point) && rectification.InvTransform(&point));
        rectification.Overlap(&point);
    }
    rectification.Area();
    rectification.Length();
    rectification.GetOriginalPixelArea(&photo);
    const ZoElspTrafo copy(rectification);
    Require(copy.GetParallelDef().GetPoints() == &copy.bikoList.Points);
    Require(ZoElspTrafo(rectification).region.Count() == rectification.region.Count());
    ZoPointList outline;
    Require(ZoGetElspBikoPoints(outline, &photo, &rectification) == outline.Count());
    rectification.GetParallelDef().CheckAndRepair();
    ZoCamera::DeleteInvAdjustTables();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string record(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] != 't' && data[0] != 'o') {
        CheckArchive<ZoElspTrafoList>(record, kSmallestRecord, Use);
        return 0;
    }
    ZoElspTrafo read;
    ReadBlock(record, [&](ZoReaderObject* object) {
        Require((data[0] == 't' ? read.Read(object) : read.ReadV50(object)) == 1);
        Require(data[0] == 't' || read.ppList.Count() == read.bikoList.Count());
    });
    RequireTextComesBack(Make, read);
    Use(read);
    return 0;
}
