// The three measurement lists of a photo and the statistics over them.

#include <algorithm>
#include <cmath>
#include <memory>

#include "zorv/core/bulk_change.h"
#include "zorv/photo/photo.h"

namespace {

std::uint64_t AddressOf(const void* record) {
    return reinterpret_cast<std::uintptr_t>(record);
}

/// A measurement on its way into a list of the photo.
ZoPoint* Taken(const ZoPhoto& photo, ZoPoint* point, eConvertBikoMode mode) {
    if (!point) return nullptr;
    photo.ConvertBiko(point, mode);
    point->photoId = photo.GetId();
    return point;
}

ZoPoint* CopyOf(const ZoPoint& point) {
    return std::make_unique<ZoPoint>(point).release();
}

void SetPhoto(ZoPointList& list, const ZoPhoto& photo) {
    for (ZoPoint* point = list.First(); point; point = point->Next()) {
        point->photoId = photo.GetId();
        point->spare1 = AddressOf(&photo);
    }
}

}  // namespace

ZoPoint* ZoPhoto::AddImo(ZoPoint* point, eConvertBikoMode mode) {
    return point ? imoList.Replace(Taken(*this, point, mode)) : nullptr;
}

ZoPoint* ZoPhoto::AddImoFast(ZoPoint* point, eConvertBikoMode mode) {
    return point ? imoList.Add(Taken(*this, point, mode)) : nullptr;
}

ZoPoint* ZoPhoto::AddMeasure(ZoPoint* point, eConvertBikoMode mode) {
    return point ? measureList.Replace(Taken(*this, point, mode)) : nullptr;
}

ZoPoint* ZoPhoto::AddImo(const ZoPoint& point, eConvertBikoMode mode) {
    return AddImo(CopyOf(point), mode);
}

ZoPoint* ZoPhoto::AddImoFast(const ZoPoint& point, eConvertBikoMode mode) {
    return AddImoFast(CopyOf(point), mode);
}

ZoPoint* ZoPhoto::AddMeasure(const ZoPoint& point, eConvertBikoMode mode) {
    return AddMeasure(CopyOf(point), mode);
}

void ZoPhoto::SetPhotoIdToImoList() {
    SetPhoto(imoList, *this);
}

void ZoPhoto::SetPhotoIdToMeasureList() {
    SetPhoto(measureList, *this);
}

int ZoPhoto::CopyImoToMeasure(bool clear, const std::set<unsigned int>* ids) {
    if (clear) measureList.Destroy();
    int copied = 0;
    zorv::detail::BulkChange(measureList, [&] {
        for (const ZoPoint* point = imoList.First(); point; point = point->NextConst()) {
            if (ids && !ids->contains(point->GetId())) continue;
            ZoPoint* const copy = measureList.Add(*point);
            if (clear) copy->spare2 = AddressOf(point);
            ++copied;
        }
    });
    return copied;
}

void ZoPhoto::CopyImoToMeasure(unsigned int number, eConvertBikoMode mode) {
    if (const ZoPoint* point = FindImo(number)) AddMeasure(*point, mode);
}

void ZoPhoto::CopyMeasureToImo(unsigned int number, eConvertBikoMode mode) {
    if (const ZoPoint* point = FindMeasure(number)) AddImo(*point, mode);
}

void ZoPhoto::MoveImoToMeasure(unsigned int number, eConvertBikoMode mode) {
    if (ZoPoint* point = FindImo(number)) AddMeasure(imoList.Subtract(point), mode);
}

void ZoPhoto::MoveMeasureToImo(unsigned int number, eConvertBikoMode mode) {
    if (ZoPoint* point = FindMeasure(number)) AddImo(measureList.Subtract(point), mode);
}

void ZoPhoto::ResetImoStat() {
    imoStatInside = imoStatOutside = 0;
    imoStatMax = imoStatSum = 0.0;
}

void ZoPhoto::UpdateImoStat(double dx, double dy, double tolerance) {
    const double r = std::sqrt(dx * dx + dy * dy);
    GetPixelSize() * tolerance > r ? ++imoStatInside : ++imoStatOutside;
    imoStatSum += r;
    imoStatMax = std::max(imoStatMax, r);
}

void ZoPhoto::UpdateImoStatFromList(const ZoPointList* list, double tolerance) {
    ResetImoStat();
    for (const ZoPoint* point = list ? list->First() : nullptr; point; point = point->NextConst())
        UpdateImoStat(point->residualX, point->residualY, tolerance);
}

void ZoPhoto::CreateNeighbourPhotosMapFromCommonImo() {
    neighbourPhotos.clear();
    for (const auto& [photo, common] : commonImoByPhoto)
        neighbourPhotos.emplace(common, photo);
}
