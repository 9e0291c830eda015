#include "zorv/math/region.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "zorv/core/debug_output.h"
#include "zorv/core/units.h"
#include "zorv/math/line.h"
#include "zorv/math/point_text.h"

namespace {

const TZoFormatTable<eZoPointRWMask>& CornerColumns() {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWX, eZoRWY, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kKinds);
    return table;
}

/// Whether two closed intervals share a value.
bool Meets(double low, double high, double otherLow, double otherHigh) {
    return otherLow >= low ? high >= otherLow : otherHigh >= low;
}

bool IsBetween(double value, double a, double b) {
    return value >= std::min(a, b) && value <= std::max(a, b);
}

}  // namespace

void ZoRegion::Set(double left, double bottom, double right, double top) {
    Left() = left;
    Bottom() = bottom;
    Right() = right;
    Top() = top;
    Sort();
}

void ZoRegion::Get(double& left, double& bottom, double& right, double& top) const {
    left = Left();
    bottom = Bottom();
    right = Right();
    top = Top();
}

void ZoRegion::Sort() {
    if (Left() > Right()) std::swap(Left(), Right());
    if (Bottom() > Top()) std::swap(Bottom(), Top());
}

bool ZoRegion::Overlap(const ZoRegion& region) const {
    return Meets(Left(), Right(), region.Left(), region.Right()) &&
           Meets(Bottom(), Top(), region.Bottom(), region.Top());
}

bool ZoRegion::Overlap(const ZoPoint& point) const {
    return IsBetween(point.x, Left(), Right()) && IsBetween(point.y, Bottom(), Top());
}

ZoRegion ZoRegion::Intersect(const ZoRegion& region) const {
    ZoRegion common;
    ZoIntervall(common.Bottom(), common.Top(), Bottom(), Top(), region.Bottom(), region.Top());
    ZoIntervall(common.Left(), common.Right(), Left(), Right(), region.Left(), region.Right());
    common.Sort();
    return common;
}

ZoRegion ZoRegion::Union(const ZoRegion& region) const {
    return {std::min(Left(), region.Left()), std::min(Bottom(), region.Bottom()), std::max(Right(), region.Right()),
            std::max(Top(), region.Top())};
}

bool ZoRegion::operator==(const ZoRegion& region) const {
    return Left() == region.Left() && Bottom() == region.Bottom() && Right() == region.Right() && Top() == region.Top();
}

ZoRegion ZoRegion::operator+(const ZoRegion& region) const {
    return {Left() + region.Left(), Bottom() + region.Bottom(), Right() + region.Right(), Top() + region.Top()};
}

ZoRegion ZoRegion::operator-(const ZoRegion& region) const {
    return {Left() - region.Left(), Bottom() - region.Bottom(), Right() - region.Right(), Top() - region.Top()};
}

ZoRegion& ZoRegion::operator+=(double d) {
    Left() -= d;
    Bottom() -= d;
    Right() += d;
    Top() += d;
    return *this;
}

int ZoRegion::Read(ZoReaderObject* object) {
    LL.Read(object, CornerColumns());
    UR.Read(object, CornerColumns());
    return 1;
}

std::ostream& ZoRegion::Write(std::ostream& stream) const {
    for (const ZoPoint* corner : {&LL, &UR})
        zorv::detail::WriteExactly(stream, *corner, CornerColumns());
    return stream;
}

void ZoRegion::ReadV9(CZipWrapper* archive) {
    LL.ReadV9(archive);
    UR.ReadV9(archive);
}

void ZoRegion::WriteV9(CZipWrapper* archive) const {
    LL.WriteV9(archive);
    UR.WriteV9(archive);
}

void ZoRegion::DbgPrintf(const char* text) const {
    dbgprintf("%s: %f %f %f %f\n", text ? text : "", Left(), Bottom(), Right(), Top());
}

void ConvertUnit(ZoRegion* region, eZoUnit from, eZoUnit to) {
    if (!region) return;
    ConvertUnit(&region->LL, from, to);
    ConvertUnit(&region->UR, from, to);
}
