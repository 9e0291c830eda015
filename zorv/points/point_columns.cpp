#include "zorv/points/point_columns.h"

#include <array>
#include <cstddef>
#include <ostream>

namespace zorv::detail {

namespace {

using enum FieldWidth;

constexpr PointColumn Real(eZoPointRWMask kind, FieldWidth width, const char* title, double ZoPoint::*field) {
    return {
        .kind = kind, .role = ColumnRole::kReal, .width = width, .title = title, .titleWidth = width, .real = field};
}

constexpr PointColumn Single(eZoPointRWMask kind, const char* title, float ZoPoint::*field) {
    return {
        .kind = kind, .role = ColumnRole::kSingle, .width = w16, .title = title, .titleWidth = w16, .single = field};
}

constexpr PointColumn Word(eZoPointRWMask kind, ColumnRole role, FieldWidth width, const char* title,
                           std::uint32_t ZoPoint::*field) {
    return {.kind = kind, .role = role, .width = width, .title = title, .titleWidth = w8, .word = field};
}

constexpr PointColumn Other(eZoPointRWMask kind, ColumnRole role, FieldWidth width = {}, const char* title = nullptr,
                            FieldWidth titleWidth = {}) {
    return {.kind = kind, .role = role, .width = width, .title = title, .titleWidth = titleWidth};
}

constexpr PointColumn kColumns[] = {
    Word(eZoRWId, ColumnRole::kUnsigned, w8, "#", &ZoPoint::id),
    Other(eZoRWName, ColumnRole::kName, w16, "Name", w16),
    Other(eZoRWIdOrName, ColumnRole::kIdOrName),
    Word(eZoRWFlag, ColumnRole::kUnsigned, w16, "Flag", &ZoPoint::flags),
    Other(eZoRWCode, ColumnRole::kCode, w4, "Code", w4),
    Other(eZoRWCodeNumber, ColumnRole::kControl, w4, "Code", w4),
    Other(eZoRWPP, ColumnRole::kNumberedName, w8, "PP", w8),
    Word(eZoRWPhoto, ColumnRole::kUnsigned, w8, "Photo", &ZoPoint::photoId),
    Word(eZoRWCamera, ColumnRole::kUnsigned, w8, "Camera", &ZoPoint::cameraId),
    Real(eZoRWX, w16, "   X", &ZoPoint::x),
    Real(eZoRWY, w16, "   Y", &ZoPoint::y),
    Real(eZoRWZ, w16, "   Z", &ZoPoint::z),
    Real(eZoRWDx, w19, "  dx", &ZoPoint::dx),
    Real(eZoRWDy, w19, "  dy", &ZoPoint::dy),
    Real(eZoRWDz, w19, "  dz", &ZoPoint::dz),
    Other(eZoRWDs, ColumnRole::kLength, w19, "  dS", w19),
    Real(eZoRWRedu1, w19, "Redu", &ZoPoint::residualX),
    Real(eZoRWRedu2, w19, "Redu2", &ZoPoint::residualY),
    Real(eZoRWRedu3, w19, "Redu3", &ZoPoint::residualZ),
    Word(eZoRWColor, ColumnRole::kSigned, w16, " Color", &ZoPoint::color),
    Other(eZoRWImoCount, ColumnRole::kCount, w8, " nImo", w8),
    Single(eZoRWVx, " vx", &ZoPoint::vx),
    Single(eZoRWVy, " vy", &ZoPoint::vy),
    Single(eZoRWVz, " vz", &ZoPoint::vz),
    Other(eZoRWZero, ColumnRole::kZero, w6),
    Real(eZoRWResidualX, w19, "Residual x", &ZoPoint::residualX),
    Real(eZoRWResidualY, w19, "Residual y", &ZoPoint::residualY),
    Real(eZoRWResidualZ, w19, "Residual z", &ZoPoint::residualZ),
    Other(eZoRWSkip, ColumnRole::kSkip),
    Real(eZoRWSx, w19, "  Sx", &ZoPoint::dx),
    Real(eZoRWSy, w19, "  Sy", &ZoPoint::dy),
    Real(eZoRWSz, w19, "  Sz", &ZoPoint::dz),
};

}  // namespace

constinit const std::array<const PointColumn*, kPointKinds> kPointColumns = [] {
    std::array<const PointColumn*, kPointKinds> columns{};
    for (const PointColumn& column : kColumns)
        columns[static_cast<std::size_t>(column.kind)] = &column;
    return columns;
}();

}  // namespace zorv::detail

std::ostream& operator<<(std::ostream& stream, const TZoFormatTable<eZoPointRWMask>& table) {
    zorv::detail::RecordText text;
    for (const zorv::detail::PointColumn* column : zorv::detail::ColumnPlan(table)) {
        if (column->title) text.Field(column->titleWidth, column->title);
    }
    text.WriteTo(stream);
    return stream;
}
