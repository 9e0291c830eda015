// Text and archive forms of rectifications and their list.

#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/rectify/rectification.h"

namespace {

using zorv::detail::ReadInBraces;

/// id, an empty name and flags, four shapes of matrices, and the fixed parts of three polygons, definition and camera.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 4 * 8;

const TZoFormatTable<eZoPointRWMask>& OldPointColumns() {
    static const eZoPointRWMask kinds[] = {eZoRWX, eZoRWY, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kinds);
    return table;
}

/// Reads a matrix by either form; one of another shape is dropped.
template <class Read>
void TakeMatrix(ZoMatrix& m, Read read) {
    ZoMatrix taken(m);
    read(taken);
    if (taken.rows == m.rows && taken.cols == m.cols) m = taken;
}

void ReadMatrix(ZoReaderObject* object, ZoMatrix& m) {
    TakeMatrix(m, [object](ZoMatrix& taken) { taken.Read(object); });
}

std::ostream& WriteBool(std::ostream& stream, const char* keyword, bool value) {
    return stream << s12 << keyword << w4 << (value ? 1 : 0) << Zoendl;
}

template <class Record>
std::ostream& WriteBlock(std::ostream& stream, const char* keyword, const Record& record) {
    stream << s12 << keyword << w4 << ZoBeginBlockNL;
    record.Write(stream);
    return stream << ZoEndBlockNL << Zoendl;
}

}  // namespace

int ZoElspTrafo::Read(ZoReaderObject* object) {
    bool distortion = false;
    bool active = false;
    bool regionActive = false;
    bikoList.mode = ZOPolygon2dId;
    ppList.mode = ZOPolygon3dId;
    zorv::detail::BlockKeywords keywords(object);
    keywords.Call("ELSPID", [this](ZoReaderObject* value) { ZoObject::Read(value); })
        .Value("KAMERA", &distortion)
        .Value("ACTIV", &active)
        .Record("DISTORTION", distortCamera)
        .Value("REGIONACTIV", &regionActive)
        .Call("ELSPTRAFO", [this](ZoReaderObject* value) { ReadMatrix(value, elspMat); })
        .Call("TRAFO3D", [this](ZoReaderObject* value) { ReadMatrix(value, transMat); })
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
    ReadInBraces(object, [&] { ReadMatrix(object, transMat); });
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
    stream << s12 << "ELSPID" << w4 << ZoBeginBlock;
    ZoObject::Write(stream) << ZoEndBlock << Zoendl;
    WriteBool(stream, "KAMERA", GetDistortCameraFlag());
    WriteBool(stream, "ACTIV", IsActive());
    WriteBool(stream, "REGIONACTIV", IsRegionActive());
    stream << s12 << "DISTORTION" << w4 << ZoBeginBlock;
    distortCamera.Write(stream) << ZoEndBlock << Zoendl;
    WriteBlock(stream, "ELSPTRAFO", elspMat);
    WriteBlock(stream, "TRAFO3D", transMat);
    if (ppList.First()) WriteBlock(stream, "DEFPOINTS", ppList);
    if (bikoList.First()) WriteBlock(stream, "MEASPOINTS", bikoList);
    if (region.First()) WriteBlock(stream, "VALIDREGION", region);
    if (parallelDef.HasData()) WriteBlock(stream, "PARALLELDEF", parallelDef);
    return stream;
}

void ZoElspTrafo::ReadV9(CZipWrapper* archive) {
    const auto readMatrix = [archive](ZoMatrix& m) {
        TakeMatrix(m, [archive](ZoMatrix& taken) { taken.ReadV9(archive); });
    };
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    readMatrix(elspMat);
    readMatrix(transMat);
    ppList.ReadV9(archive);
    bikoList.ReadV9(archive);
    parallelDef.ReadV9(archive);
    region.ReadV9(archive);
    readMatrix(invElspMat);
    readMatrix(invTransMat);
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
