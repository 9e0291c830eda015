#pragma once

#include <cstddef>
#include <cstdint>

#include "zorv/points/column_table.h"
#include "zorv/points/point.h"

namespace zorv::detail {

/// What a column does with its value.
enum class ColumnRole : std::uint8_t {
    kReal,      ///< a double field
    kSingle,    ///< a float field
    kUnsigned,  ///< a field of 32 bits
    kSigned,    ///< the same, written with a sign
    kControl,   ///< control flags as a number
    kCode,      ///< control flags as 1, 2, 3
    kCount,     ///< number of image measurements
    kName,
    kIdOrName,
    kNumberedName,
    kLength,  ///< worked out when written, passed when read
    kZero,
    kSkip,
};

/// One kind of column: its title, its width and its field.
struct PointColumn {
    eZoPointRWMask kind = eZoRWEnd;
    ColumnRole role = ColumnRole::kSkip;
    int width = 0;  ///< of a written value, behind a blank
    const char* title = nullptr;
    int titleWidth = 0;
    double ZoPoint::*real = nullptr;
    float ZoPoint::*single = nullptr;
    std::uint32_t ZoPoint::*word = nullptr;

    /// Whether the record of the tagged syntax has a token for the column.
    bool TakesToken() const { return role != ColumnRole::kZero; }
};

/// The column of a kind, or null for a kind that no column has.
const PointColumn* FindPointColumn(eZoPointRWMask kind);

/// Calls `visit` with each column of the table until it returns false. Kinds that no column has are passed.
template <class Visit>
void ForEachColumn(const TZoFormatTable<eZoPointRWMask>& table, Visit visit) {
    for (int i = 0; i < table.Size() && table.columns[i] != eZoRWEnd; ++i) {
        const PointColumn* column = FindPointColumn(table.columns[i]);
        if (column && !visit(*column)) return;
    }
}

/// Reads the columns from a line in [begin, end), which is cut in place. Returns how many got a value.
int ReadPointLine(ZoPoint& point, char* begin, char* end, const TZoFormatTable<eZoPointRWMask>& table);

}  // namespace zorv::detail
