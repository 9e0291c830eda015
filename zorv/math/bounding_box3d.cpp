#include "zorv/math/bounding_box3d.h"

#include <cmath>

#include "zorv/core/archive.h"
#include "zorv/core/debug_output.h"

namespace {

struct Axis {
    double low, high;
    Axis(double a, double b) : low(std::min(a, b)), high(std::max(a, b)) {}
};

bool Overlaps(const Axis& a, const Axis& b, bool touching) {
    const auto reaches = [touching](double upper, double lower) { return touching ? upper >= lower : upper > lower; };
    return b.low >= a.low ? reaches(a.high, b.low) : reaches(b.high, a.low);
}

Axis X(const ZoBoundingBox3d& box) {
    return {box.xmin, box.xmax};
}
Axis Y(const ZoBoundingBox3d& box) {
    return {box.ymin, box.ymax};
}
Axis Z(const ZoBoundingBox3d& box) {
    return {box.zmin, box.zmax};
}

}  // namespace

void ZoBoundingBox3d::Union(const ZoBoundingBox3d& other) {
    if (!other.IsValid()) return;
    xmin = std::min(xmin, other.xmin);
    ymin = std::min(ymin, other.ymin);
    zmin = std::min(zmin, other.zmin);
    xmax = std::max(xmax, other.xmax);
    ymax = std::max(ymax, other.ymax);
    zmax = std::max(zmax, other.zmax);
    ++count;
}

ZoPoint3d ZoBoundingBox3d::Center() const {
    if (!IsValid()) return {};
    return {(xmin + xmax) / 2.0, (ymin + ymax) / 2.0, (zmin + zmax) / 2.0};
}

void ZoBoundingBox3d::GetMinMaxPoints(ZoPoint3d& min, ZoPoint3d& max) const {
    min = {xmin, ymin, zmin};
    max = {xmax, ymax, zmax};
}

bool ZoBoundingBox3d::OverlapXY(const ZoBoundingBox3d& other, bool touching) const {
    return Overlaps(X(*this), X(other), touching) && Overlaps(Y(*this), Y(other), touching);
}

bool ZoBoundingBox3d::OverlapXZ(const ZoBoundingBox3d& other, bool touching) const {
    return Overlaps(X(*this), X(other), touching) && Overlaps(Z(*this), Z(other), touching);
}

bool ZoBoundingBox3d::OverlapYZ(const ZoBoundingBox3d& other, bool touching) const {
    return Overlaps(Y(*this), Y(other), touching) && Overlaps(Z(*this), Z(other), touching);
}

bool ZoBoundingBox3d::Overlap(const ZoBoundingBox3d& other, bool touching) const {
    return OverlapXY(other, touching) && OverlapXZ(other, touching);
}

bool ZoBoundingBox3d::CheckMax(const ZoBoundingBox3d& other) const {
    return xmin >= other.xmin || ymin >= other.ymin || zmin >= other.zmin || other.xmax >= xmax || other.ymax >= ymax ||
           other.zmax >= zmax;
}

bool ZoBoundingBox3d::SameSize(const ZoBoundingBox3d& other, double part) const {
    if (!IsValid() || !other.IsValid()) return false;
    const double t = part * std::max(GetMax(), other.GetMax());
    return std::fabs(GetXSize() - other.GetXSize()) <= t && std::fabs(GetYSize() - other.GetYSize()) <= t &&
           std::fabs(GetZSize() - other.GetZSize()) <= t;
}

void ZoBoundingBox3d::Move(double dx, double dy, double dz) {
    if (!IsValid()) return;
    xmin += dx;
    xmax += dx;
    ymin += dy;
    ymax += dy;
    zmin += dz;
    zmax += dz;
}

void ZoBoundingBox3d::Scale(double factor) {
    for (double* bound : {&xmin, &ymin, &zmin, &xmax, &ymax, &zmax})
        *bound *= factor;
}

void ZoBoundingBox3d::AddFrame(double dx, double dy, double dz) {
    xmin -= dx;
    xmax += dx;
    ymin -= dy;
    ymax += dy;
    zmin -= dz;
    zmax += dz;
}

void ZoBoundingBox3d::ReadV9(CZipWrapper* archive) {
    for (double* bound : {&xmin, &ymin, &zmin, &xmax, &ymax, &zmax})
        archive->ReadValue(*bound);
    archive->ReadValue(count);
}

void ZoBoundingBox3d::WriteV9(CZipWrapper* archive) const {
    for (const double bound : {xmin, ymin, zmin, xmax, ymax, zmax})
        archive->WriteValue(bound);
    archive->WriteValue(count);
}

void ZoBoundingBox3d::DbgPrintf() const {
    dbgprintf("ZoBoundingBox3d min: %f %f %f max: %f %f %f count: %u", xmin, ymin, zmin, xmax, ymax, zmax,
              static_cast<unsigned int>(count));
}
