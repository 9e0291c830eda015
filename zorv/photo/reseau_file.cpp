#include "zorv/photo/reseau_file.h"

#include <algorithm>

#include "zorv/core/number_cast.h"
#include "zorv/core/string_tools.h"

namespace {

constexpr double kSmallestStart = 10000.0;  // mm, beyond any photo
constexpr double kUnknownPixelSize = 1e-6;  // mm
constexpr int kSelected = 1;
constexpr unsigned int kCornerIds[ZoReseauFile::kDigitalMarks] = {11, 12, 21, 22};

double Extent(const ZoPointList& marks, double ZoPoint::*axis) {
    double low = kSmallestStart;
    double high = -kSmallestStart;
    for (const ZoPoint* mark = marks.First(); mark; mark = mark->NextConst()) {
        low = std::min(low, mark->*axis);
        high = std::max(high, mark->*axis);
    }
    return high - low;
}

}  // namespace

ZoPoint* ZoReseauFile::AddCorners(double left, double bottom, double right, double top) {
    ZoPoint* const upperLeft = crossList.Add(ZoPoint(0, left, top, 0.0, 0));
    crossList.Add(ZoPoint(0, right, top, 0.0, 0));
    crossList.Add(ZoPoint(0, left, bottom, 0.0, 0));
    crossList.Add(ZoPoint(0, right, bottom, 0.0, 0));
    return upperLeft;
}

void ZoReseauFile::NumberCorners(ZoPoint* upperLeft) {
    ZoPoint* mark = upperLeft;
    for (const unsigned int cornerId : kCornerIds) {
        mark->SetId(cornerId);
        mark->SetControlFlags(kCorner);
        mark = mark->Next();
    }
}

void ZoReseauFile::CreateDigitalFormat(int pixelWidth, int pixelHeight, double width, double height) {
    exifPixelWidth = pixelWidth;
    exifPixelHeight = pixelHeight;
    const double halfWidth = width / 2;
    const double halfHeight = height / 2;
    const double right = halfWidth + halfWidth / 20;
    const double top = halfHeight + halfHeight / 20;
    photoRegion = ZoRegion(-right, -top, right, top);
    boxRegion = ZoRegion(right / 6, -top, right, top / 6 - top);
    NumberCorners(AddCorners(-halfWidth, -halfHeight, halfWidth, halfHeight));
    valid = true;
}

void ZoReseauFile::CreateDigitalFormat(const ZoRegion& pixelRegion, const ZoRegion& bikoRegion) {
    exifPixelWidth = zorv::detail::SaturatedInt(pixelRegion.Width());
    exifPixelHeight = zorv::detail::SaturatedInt(pixelRegion.Height());
    photoRegion = bikoRegion;
    AddCorners(bikoRegion.Left(), bikoRegion.Bottom(), bikoRegion.Right(), bikoRegion.Top());
    NumberCorners(crossList.First());
    valid = true;
}

void ZoReseauFile::GenerateDummyData() {
    if (valid) return;
    valid = true;
    name = comment = L">>DUMMY DATA<<";
    photoRegion = ZoRegion(-20.0, -14.0, 20.0, 14.0);
    boxRegion = ZoRegion(2.0, -14.0, 20.0, -12.0);
    unsigned int row = 11;
    for (const double y : {10.0, 0.0, -10.0}) {
        unsigned int mark = row;
        for (const double x : {-15.0, 0.0, 15.0}) {
            crossList.Add(ZoPoint(mark, x, y, 0.0, kSmallCross));
            mark += 3;
        }
        row += 20;
    }
}

ZoPoint* ZoReseauFile::FindNearest(const ZoPoint& point, double* distance) const {
    return crossList.FindNearest(point, distance);
}

bool ZoReseauFile::FindCrossId(unsigned int& id1, unsigned int& id2) const {
    const ZoPoint* const first = FindNearest(photoRegion.LL, nullptr);
    if (first) id1 = first->GetId();
    const ZoPoint* const second = FindNearest(photoRegion.UR, nullptr);
    if (second) id2 = second->GetId();
    return second != nullptr;
}

int ZoReseauFile::SelectCross(const unsigned int* ids, int count) {
    if (!ids || count <= 0) return 0;
    for (ZoPoint* mark = crossList.First(); mark; mark = mark->Next())
        mark->ClearFlag(kSelected);
    int selected = 0;
    for (int i = 0; i < count; ++i) {
        ZoPoint* const mark = crossList.Find(ids[i]);
        if (!mark) continue;
        mark->SetFlag(kSelected);
        ++selected;
    }
    return selected;
}

int ZoReseauFile::FindUserSelectedCrosses(unsigned int* ids, int max) const {
    int found = 0;
    for (const ZoPoint* mark = crossList.First(); ids && mark && found < max; mark = mark->NextConst()) {
        if (mark->IsFlagSet(kSelected)) ids[found++] = mark->GetId();
    }
    return found;
}

double ZoReseauFile::GetReseauWidth() const {
    return Extent(crossList, &ZoPoint::x);
}

double ZoReseauFile::GetReseauHeight() const {
    return Extent(crossList, &ZoPoint::y);
}

double ZoReseauFile::GetCCDMPixel() const {
    const auto product = static_cast<std::uint32_t>(exifPixelWidth) * static_cast<std::uint32_t>(exifPixelHeight);
    return static_cast<std::int32_t>(product);
}

double ZoReseauFile::GetCCDPixelSize() const {
    if (exifPixelWidth == 0 || exifPixelHeight == 0) return kUnknownPixelSize;
    return (GetReseauWidth() / exifPixelWidth + GetReseauHeight() / exifPixelHeight) / 2;
}

std::wstring ZoReseauFile::GetDescName() const {
    if (exifPixelWidth == 0 || exifPixelHeight == 0) return name;
    std::wstring text = name;
    if (subId != 0) text += StringPrintf(L" %d", static_cast<int>(subId));
    return text + StringPrintf(L" %d * %d Pixel", exifPixelWidth, exifPixelHeight);
}
