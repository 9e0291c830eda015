// Any bytes as a plane file and as archive records of planes, polygons and regions: what comes in is no more than the
// bytes can hold, and what is written reads back as the same.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "input_file.h"
#include "require.h"
#include "tests/support/archive_item.h"

#include "zorv/core/reader.h"
#include "zorv/math/polygon.h"
#include "zorv/rectify/plane_list.h"

namespace {

void CheckPlanes(const ZoPlaneList& planes, std::size_t size) {
    Require(planes.IsNotifyEnabled());
    Require(planes.Count() <= static_cast<int>(size));
    for (const ZoPlane* plane = planes.First(); plane; plane = plane->NextConst()) {
        Require(plane->GetNorm().GetSize() == 3);
        plane->CalcPlaneVectorForSip();
    }
}

/// Reads every block P as a polygon of its mode and every block R as a region.
class Blocks : public LinkHdl {
  public:
    explicit Blocks(ZOPolygonMode mode) : polygon(mode) {}
    long Polygon(ZoReaderObject* object) { return polygon.Read(object); }
    long Region(ZoReaderObject* object) { return region.Read(object); }

    ZoPolygon polygon;
    ZoRegion region;
};

void CheckPlaneFile(const InputFile& file, const std::string& text) {
    file.Write(text);
    ZoPlaneList planes;
    Require(planes.ReadFile(file.Name()) == 1);
    CheckPlanes(planes, text.size());
    // A second writing may differ from the first in names alone, never from a third.
    Require(planes.WriteFile(file.Name()) == planes.Count());
    ZoPlaneList back(file.Name());
    back.WriteFile(file.Name());
    const std::string twice = file.Read();
    const ZoPlaneList again(file.Name());
    again.WriteFile(file.Name());
    Require(file.Read() == twice);
}

void CheckBlocks(const InputFile& file, const std::string& text) {
    file.Write("P {" + text + "} R {" + text);
    for (int mode = ZOPolygon2d; mode <= ZOPolygon3dId + 1; ++mode) {
        Blocks blocks(static_cast<ZOPolygonMode>(mode));
        ZoReader reader(file.Name());
        reader.RegisterObject(ZoReaderObject("P", Link(&blocks, &Blocks::Polygon)));
        reader.RegisterObject(ZoReaderObject("R", Link(&blocks, &Blocks::Region)));
        Require(reader.DoProcess(true) == 1);
        Require(blocks.polygon.Count() <= std::max(4, static_cast<int>(text.size())));
        blocks.polygon.Overlap(blocks.region.GetCenter());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckPlaneFile(file, text);
    CheckBlocks(file, text);

    ArchiveItem planeItem(data, size);
    ZoPlaneList planes;
    planes.ReadV9(&planeItem);
    CheckPlanes(planes, size);

    ArchiveItem polygonItem(data, size);
    ZoPolygon polygon;
    polygon.ReadV9(&polygonItem);
    Require(polygon.Count() <= static_cast<int>(size));
    polygon.Overlap(polygon.Min);
    ZoRegion().ReadV9(&polygonItem);
    return 0;
}
