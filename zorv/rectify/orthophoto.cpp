#include "zorv/rectify/orthophoto.h"

#include <memory>
#include <ostream>
#include <utility>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/block_writer.h"

namespace {

/// id, an empty name, flags, an empty comment and the numbers; nothing of the regions.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 2 + 4 + 3 * 8 + 2 * 4 + 8;

}  // namespace

ZoOrthoPhoto::ZoOrthoPhoto(CZipWrapper* archive) : ZoPhoto(0u) {
    ReadV9(archive);
}

ZoOrthoPhoto::ZoOrthoPhoto(ZoReaderObject* object) : ZoPhoto(0u) {
    ZoOrthoPhoto::Read(object);
}

ZoOrthoPhoto::ZoOrthoPhoto(const ZoOrthoPhoto& other) : ZoPhoto(other) {
    *this = other;
}

ZoOrthoPhoto& ZoOrthoPhoto::operator=(const ZoOrthoPhoto& other) {
    if (this == &other) return *this;
    ZoPhoto::operator=(other);
    planeInfos.SetNotify(false);
    planeInfos.Destroy();
    other.planeInfos.CopyTo(&planeInfos);
    planeInfos.SetNotify(true);
    statPixel = other.statPixel;
    statTime = other.statTime;
    orthoRegion = other.orthoRegion;
    maxAngle = other.maxAngle;
    mirror = other.mirror;
    return *this;
}

double ZoOrthoPhoto::GetPixelSize() const {
    const double width = digiRegion.Width();
    return width / (width == 0.0 ? 1.0 : width);
}

void ZoOrthoPhoto::AdjustPixelRotation(ZoPoint* point) const {
    const double w = digiRegion.Width();
    const double h = digiRegion.Height();
    double& x = point->x;
    double& y = point->y;
    switch (digPictRot) {
        case 1:
            y = h - y + 1;
            std::swap(x, y);
            break;
        case 2:
            x = w - x + 1;
            y = h - y + 1;
            break;
        case 3:
            x = w - x + 1;
            std::swap(x, y);
            break;
        default:
            break;
    }
    if (mirror & kMirrorX) x = w - x;
    if (mirror & kMirrorY) y = h - y;
}

void ZoOrthoPhoto::AdjustPixelRotation(ZoPointList* list) const {
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next())
        AdjustPixelRotation(point);
}

void ZoOrthoPhoto::InvAdjustPixelRotation(ZoPoint* point) const {
    const double w = digiRegion.Width();
    const double h = digiRegion.Height();
    double& x = point->x;
    double& y = point->y;
    if (mirror & kMirrorX) x = w - x;
    if (mirror & kMirrorY) y = h - y;
    switch (digPictRot) {
        case 1:
            x = std::exchange(y, h - x);
            break;
        case 2:
            x = w - x;
            y = h - y;
            break;
        case 3:
            y = std::exchange(x, w - y);
            break;
        default:
            break;
    }
}

bool ZoOrthoPhoto::Transform(ZoPoint* point) const {
    if (!point) return false;
    InvAdjustPixelRotation(point);
    const ZoElspPlaneInfo* const first = planeInfos.First();
    if (first && !first->next) return first->Transform(point);
    return planeInfos.Transform(point);
}

bool ZoOrthoPhoto::GetImageCorners(ZoPoint* p1, ZoPoint* p2, ZoPoint* p3, ZoPoint* p4) const {
    const ZoElspPlaneInfo* const first = planeInfos.First();
    if (!first) return false;
    *p1 = digiRegion.GetLL();
    *p2 = *p1;
    p2->x = digiRegion.Right();
    *p3 = digiRegion.GetUR();
    *p4 = *p1;
    p4->y = digiRegion.Top();
    for (ZoPoint* corner : {p1, p2, p3, p4})
        first->Transform(corner);
    return true;
}

int ZoOrthoPhoto::Read(ZoReaderObject* object) {
    zorv::detail::BlockKeywords keywords(object);
    keywords.Record("ID", static_cast<ZoObject&>(*this))
        .Value("COMMENT", &comment)
        .Value("RECTPIXEL", &statPixel)
        .Value("TIME", &statTime)
        .Value("SCALE", &scale)
        .Value("PLANEANGLE", &maxAngle)
        .Value("DIGITALROT", &digPictRot)
        .Value("MIRROR", &mirror)
        .Record("PIXELSIZE", digiRegion)
        .Record("OBJECTSIZE", orthoRegion)
        .Call("PLANEINFO", [this](ZoReaderObject* value) { planeInfos.AddPlane(value); });
    keywords.Process();
    pixelHeight = 0;
    return 1;
}

std::ostream& ZoOrthoPhoto::Write(std::ostream& stream) const {
    zorv::detail::BlockWriter out(stream);
    out.Record("ID", static_cast<const ZoObject&>(*this));
    out.Value("COMMENT", comment);
    out.Value("RECTPIXEL", statPixel);
    out.Value("TIME", statTime);
    out.Value("SCALE", scale);
    out.Value("PLANEANGLE", maxAngle);
    out.Value("DIGITALROT", digPictRot);
    out.Value("MIRROR", mirror);
    out.Record("PIXELSIZE", digiRegion);
    out.Record("OBJECTSIZE", orthoRegion);
    for (const ZoElspPlaneInfo* part = planeInfos.First(); part; part = part->NextConst())
        out.Record("PLANEINFO", *part);
    return stream;
}

void ZoOrthoPhoto::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    archive->Read(&comment);
    archive->ReadValue(statPixel);
    archive->ReadValue(statTime);
    archive->ReadValue(scale);
    archive->ReadValue(maxAngle);
    archive->ReadValue(digPictRot);
    archive->ReadValue(mirror);
    digiRegion.ReadV9(archive);
    orthoRegion.ReadV9(archive);
    planeInfos.ReadV9(archive);
    pixelHeight = 0;
}

void ZoOrthoPhoto::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    archive->Write(comment);
    archive->WriteValue(statPixel);
    archive->WriteValue(statTime);
    archive->WriteValue(scale);
    archive->WriteValue(maxAngle);
    archive->WriteValue(digPictRot);
    archive->WriteValue(mirror);
    digiRegion.WriteV9(archive);
    orthoRegion.WriteV9(archive);
    planeInfos.WriteV9(archive);
}

ZoOrthoPhoto* ZoOrthoPhotoList::AddPhoto(ZoReaderObject* object) {
    return Add(std::make_unique<ZoOrthoPhoto>(object).release());
}

void ZoOrthoPhotoList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestRecord);
}

void ZoOrthoPhotoList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
