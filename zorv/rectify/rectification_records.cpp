// Text and archive forms of rectifications and their list.

#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/block_writer.h"
#include "zorv/rectify/polygon_block.h"
#include "zorv/rectify/rectification.h"

namespace {

using zorv::detail::ReadInBraces;
using zorv::detail::WritePolygon;

/// id, an empty name and flags, four shapes of matrices, and the fixed parts of three polygons, definition and camera.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 4 * 8;

const TZoFormatTable<eZoPointRWMask>& OldPointColumns() {
    static const eZoPointRWMask kinds[] = {eZoRWX, eZoRWY, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kinds);
    return table;
}

}  // namespace

int ZoElspTrafo::Read(ZoReaderObject* object) {
    bool distortion = false;
    bool active = false;
    bool regionActive = false;
    bikoList.mode = ZOPolygon2dId;
    ppList.mode = ZOPolygon3dId;
    region.mode = ZOPolygon2d;
    zorv::detail::BlockKeywords keywords(object);
    keywords.Call("ELSPID", [this](ZoReaderObject* value) { ZoObject::Read(value); })
        .Value("KAMERA", &distortion)
        .Value("ACTIV", &active)
        .Record("DISTORTION", distortCamera)
        .Value("REGIONACTIV", &regionActive)
        .Shaped("ELSPTRAFO", elspMat)
        .Shaped("TRAFO3D", transMat)
        .Record("DEFPOINTS", ppList)
        .Record("MEASPOINTS", bikoList)
        .Record("VALIDREGION", region)
        .Record("PARALLELDEF", parallelDef);
    keywords.Process();
    SetDistortCameraFlag(distortion);
    SetActive(active);
    SetRegionActive(regionActive);
    region.Points.Renumber(1, nullptr, 1);
    invValid = false;
    return 1;
}

int ZoElspTrafo::ReadV50(ZoReaderObject* object) {
    // Row and column of the matrix elements, in the order of the file.
    constexpr int kElements[][2] = {{1, 3}, {2, 3}, {1, 2}, {2, 2}, {3, 2}, {1, 1}, {2, 1}, {3, 1}};
    constexpr int kPoints = 4;
    ZoStreamParser in = object->GetStreamParser();
    int active = 0;
    in >> id >> name >> active;
    SetActive(active != 0);
    for (const auto& [row, column] : kElements)
        in >> elspMat[row][column];
    elspMat[3][3] = 1.0;
    ReadInBraces(object, [&] { zorv::detail::ReadShaped(transMat, object); });
    ReadInBraces(object, [&] { region.Read(object); });
    for (int i = 0; i < kPoints; ++i)
        bikoList.AddPoint(ZoPoint(object, OldPointColumns()));
    bikoList.Points.Renumber(1, nullptr, 1);
    bikoList.mode = ZOPolygon2dId;

    ppList = bikoList;
    Transform(&ppList.Points);
    ppList.UpdateMinMax();
    ppList.Points.Renumber(1, nullptr, 1);
    ppList.mode = ZOPolygon3dId;
    invValid = false;
    return 1;
}

std::ostream& ZoElspTrafo::Write(std::ostream& stream) const {
    zorv::detail::BlockWriter out(stream);
    out.Record("ELSPID", static_cast<const ZoObject&>(*this));
    out.Value("KAMERA", GetDistortCameraFlag());
    out.Value("ACTIV", IsActive());
    out.Value("REGIONACTIV", IsRegionActive());
    out.Record("DISTORTION", distortCamera);
    out.Record("ELSPTRAFO", elspMat);
    out.Record("TRAFO3D", transMat);
    WritePolygon(out, "DEFPOINTS", ppList, ZOPolygon3dId);
    WritePolygon(out, "MEASPOINTS", bikoList, ZOPolygon2dId);
    WritePolygon(out, "VALIDREGION", region, ZOPolygon2d);
    if (parallelDef.HasData()) out.Record("PARALLELDEF", parallelDef);
    return stream;
}

void ZoElspTrafo::ReadV9(CZipWrapper* archive) {
    using zorv::detail::ReadShaped;
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    ReadShaped(elspMat, archive);
    ReadShaped(transMat, archive);
    ppList.ReadV9(archive);
    bikoList.ReadV9(archive);
    parallelDef.ReadV9(archive);
    region.ReadV9(archive);
    ReadShaped(invElspMat, archive);
    ReadShaped(invTransMat, archive);
    archive->ReadValue(invValid);
    archive->ReadValue(autoConnect);
    distortCamera.ReadV9(archive);
}

void ZoElspTrafo::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    elspMat.WriteV9(archive);
    transMat.WriteV9(archive);
    ppList.WriteV9(archive);
    bikoList.WriteV9(archive);
    parallelDef.WriteV9(archive);
    region.WriteV9(archive);
    invElspMat.WriteV9(archive);
    invTransMat.WriteV9(archive);
    archive->WriteValue(invValid);
    archive->WriteValue(autoConnect);
    distortCamera.WriteV9(archive);
}

long ZoElspTrafoList::AddTrafo(ZoReaderObject* object) {
    Add(std::make_unique<ZoElspTrafo>(object, false).release());
    return 1;
}

long ZoElspTrafoList::AddTrafoV50(ZoReaderObject* object) {
    Add(std::make_unique<ZoElspTrafo>(object, true).release());
    return 1;
}

void ZoElspTrafoList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestRecord);
}

void ZoElspTrafoList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
