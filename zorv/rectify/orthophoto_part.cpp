#include "zorv/rectify/orthophoto_part.h"

#include <memory>
#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/block_writer.h"
#include "zorv/core/shaped_value.h"
#include "zorv/photo/photo.h"
#include "zorv/rectify/polygon_block.h"
#include "zorv/rectify/rectified_plane.h"

namespace {

/// Three times id and an empty name, the shape of a matrix, mode, extremes and count of a polygon.
constexpr std::size_t kSmallestRecord = 3 * (4 + 2) + 8 + 4 + 8;

/// The affine map of a plane as one of space that leaves z alone.
ZoMatrix Lifted(const ZoMatrix& m) {
    ZoMatrix lifted(4, 4);
    lifted.SetIdent();
    for (int row = 1; row <= 2; ++row) {
        lifted[row][1] = m[row][1];
        lifted[row][2] = m[row][2];
        lifted[row][4] = m[row][3];
    }
    return lifted;
}

}  // namespace

ZoElspPlaneInfo::ZoElspPlaneInfo() {
    transformation.SetIdent();
}

ZoElspPlaneInfo::ZoElspPlaneInfo(CZipWrapper* archive) : ZoElspPlaneInfo() {
    ReadV9(archive);
}

ZoElspPlaneInfo::ZoElspPlaneInfo(ZoReaderObject* object) : ZoElspPlaneInfo() {
    Read(object);
}

ZoElspPlaneInfo::ZoElspPlaneInfo(ZoMatrix& m, ZoRectPlane* part) : ZoElspPlaneInfo() {
    if (!part) return;
    if (part->GetPhoto()) photoObject = *part->GetPhoto();
    range = static_cast<const ZoPolygon&>(*part);
    range.UpdateMinMax();
    ZoMatrix toPlane = Lifted(part->PlaneMatrix());
    toPlane.Invert();
    transformation = toPlane * Lifted(m);
    if (!part->GetElspTrafo()) return;
    elspObject = *part->GetElspTrafo();
    transformation = part->GetElspTrafo()->GetTransMat() * toPlane * Lifted(m);
}

bool ZoElspPlaneInfo::Transform(ZoPoint* point) const {
    transformation.PTrans3D(point);
    return true;
}

int ZoElspPlaneInfo::Read(ZoReaderObject* object) {
    range.mode = ZOPolygon2d;
    zorv::detail::BlockKeywords keywords(object);
    keywords.Record("PHOTOID", photoObject)
        .Record("ELSPID", elspObject)
        .Shaped("TRANSFORMATION", transformation)
        .Record("ELSPRANGE", range);
    keywords.Process();
    return 1;
}

std::ostream& ZoElspPlaneInfo::Write(std::ostream& stream) const {
    zorv::detail::BlockWriter block(stream);
    block.Record("PHOTOID", photoObject);
    block.Record("ELSPID", elspObject);
    block.Record("TRANSFORMATION", transformation);
    zorv::detail::WritePolygon(block, "ELSPRANGE", range, ZOPolygon2d);
    return stream;
}

void ZoElspPlaneInfo::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    photoObject.ReadV9(archive);
    elspObject.ReadV9(archive);
    zorv::detail::ReadShaped(transformation, archive);
    range.ReadV9(archive);
}

void ZoElspPlaneInfo::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    photoObject.WriteV9(archive);
    elspObject.WriteV9(archive);
    transformation.WriteV9(archive);
    range.WriteV9(archive);
}

ZoElspPlaneInfo* ZoElspPlaneInfoList::AddPlane(ZoReaderObject* object) {
    return Add(std::make_unique<ZoElspPlaneInfo>(object).release());
}

ZoElspPlaneInfo* ZoElspPlaneInfoList::FindPlane(const ZoPoint& pixel) const {
    for (ZoElspPlaneInfo* part = First(); part; part = part->Next()) {
        if (part->Overlap(pixel)) return part;
    }
    return nullptr;
}

ZoElspPlaneInfo* ZoElspPlaneInfoList::FindPlane(unsigned int photoId, unsigned int elspId) const {
    for (ZoElspPlaneInfo* part = First(); part; part = part->Next()) {
        if (part->GetPhotoId() == photoId && (elspId == 0 || part->GetElspId() == elspId)) return part;
    }
    return nullptr;
}

bool ZoElspPlaneInfoList::Transform(ZoPoint* point) const {
    const ZoElspPlaneInfo* const part = point ? FindPlane(*point) : nullptr;
    return part && part->Transform(point);
}

void ZoElspPlaneInfoList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestRecord);
}

void ZoElspPlaneInfoList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
