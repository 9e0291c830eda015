#include "zorv/points/point_columns.h"

#include <array>
#include <ostream>

#include "zorv/core/text_writer.h"

namespace zorv::detail {

namespace {

// Field widths of the manipulators of the same names.
constexpr int kW4 = 4;
constexpr int kW6 = 8;
constexpr int kW8 = 10;
constexpr int kW16 = 21;
constexpr int kW19 = 24;

constexpr PointColumn Real(eZoPointRWMask kind, int width, const char* title, double ZoPoint::*field) {
    return {
        .kind = kind, .role = ColumnRole::kReal, .width = width, .title = title, .titleWidth = width, .real = field};
}

constexpr PointColumn Single(eZoPointRWMask kind, const char* title, float ZoPoint::*field) {
    return {
        .kind = kind, .role = ColumnRole::kSingle, .width = kW16, .title = title, .titleWidth = kW16, .single = field};
}

constexpr PointColumn Word(eZoPointRWMask kind, ColumnRole role, int width, const char* title,
                           std::uint32_t ZoPoint::*field) {
    return {.kind = kind, .role = role, .width = width, .title = title, .titleWidth = kW8, .word = field};
}

constexpr PointColumn Other(eZoPointRWMask kind, ColumnRole role, int width = 0, const char* title = nullptr,
                            int titleWidth = 0) {
    return {.kind = kind, .role = role, .width = width, .title = title, .titleWidth = titleWidth};
}

constexpr PointColumn kColumns[] = {
    Word(eZoRWId, ColumnRole::kUnsigned, kW8, "#", &ZoPoint::id),
    Other(eZoRWName, ColumnRole::kName, kW16, "Name", kW16),
    Other(eZoRWIdOrName, ColumnRole::kIdOrName),
    Word(eZoRWFlag, ColumnRole::kUnsigned, kW16, "Flag", &ZoPoint::flags),
    Other(eZoRWCode, ColumnRole::kCode, kW4, "Code", kW4),
    Other(eZoRWCodeNumber, ColumnRole::kControl, kW4, "Code", kW4),
    Other(eZoRWPP, ColumnRole::kNumberedName, kW8, "PP", kW8),
    Word(eZoRWPhoto, ColumnRole::kUnsigned, kW8, "Photo", &ZoPoint::photoId),
    Word(eZoRWCamera, ColumnRole::kUnsigned, kW8, "Camera", &ZoPoint::cameraId),
    Real(eZoRWX, kW16, "   X", &ZoPoint::x),
    Real(eZoRWY, kW16, "   Y", &ZoPoint::y),
    Real(eZoRWZ, kW16, "   Z", &ZoPoint::z),
    Real(eZoRWDx, kW19, "  dx", &ZoPoint::dx),
    Real(eZoRWDy, kW19, "  dy", &ZoPoint::dy),
    Real(eZoRWDz, kW19, "  dz", &ZoPoint::dz),
    Other(eZoRWDs, ColumnRole::kLength, kW19, "  dS", kW19),
    Real(eZoRWRedu1, kW19, "Redu", &ZoPoint::residualX),
    Real(eZoRWRedu2, kW19, "Redu2", &ZoPoint::residualY),
    Real(eZoRWRedu3, kW19, "Redu3", &ZoPoint::residualZ),
    Word(eZoRWColor, ColumnRole::kSigned, kW16, " Color", &ZoPoint::color),
    Other(eZoRWImoCount, ColumnRole::kCount, kW8, " nImo", kW8),
    Single(eZoRWVx, " vx", &ZoPoint::vx),
    Single(eZoRWVy, " vy", &ZoPoint::vy),
    Single(eZoRWVz, " vz", &ZoPoint::vz),
    Other(eZoRWZero, ColumnRole::kZero, kW6),
    Real(eZoRWResidualX, kW19, "Residual x", &ZoPoint::residualX),
    Real(eZoRWResidualY, kW19, "Residual y", &ZoPoint::residualY),
    Real(eZoRWResidualZ, kW19, "Residual z", &ZoPoint::residualZ),
    Other(eZoRWSkip, ColumnRole::kSkip),
    Real(eZoRWSx, kW19, "  Sx", &ZoPoint::dx),
    Real(eZoRWSy, kW19, "  Sy", &ZoPoint::dy),
    Real(eZoRWSz, kW19, "  Sz", &ZoPoint::dz),
};

/// Row of each kind in kColumns, counted from 1; 0 where there is none.
constexpr auto kRows = [] {
    std::array<std::uint8_t, eZoRWSz + 1> rows{};
    std::uint8_t row = 0;
    for (const PointColumn& column : kColumns)
        rows[static_cast<std::size_t>(column.kind)] = ++row;
    return rows;
}();

}  // namespace

const PointColumn* FindPointColumn(eZoPointRWMask kind) {
    if (kind < 0 || kind > eZoRWSz) return nullptr;
    const int row = kRows[static_cast<std::size_t>(kind)];
    return row == 0 ? nullptr : &kColumns[row - 1];
}

}  // namespace zorv::detail
