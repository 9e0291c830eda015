#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "zorv/core/record_text.h"
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
    kNumberedName,  ///< a number without meaning, then the name in quotes
    kLength,        ///< worked out when written, passed when read
    kZero,
    kSkip,
};

/// One kind of column: its title, its width and its field.
struct PointColumn {
    eZoPointRWMask kind = eZoRWEnd;
    ColumnRole role = ColumnRole::kSkip;
    FieldWidth width{};  ///< of a written value
    const char* title = nullptr;
    FieldWidth titleWidth{};
    double ZoPoint::*real = nullptr;
    float ZoPoint::*single = nullptr;
    std::uint32_t ZoPoint::*word = nullptr;

    /// Whether the record of the tagged syntax has a token for the column.
    bool TakesToken() const { return role != ColumnRole::kZero; }
};

/// Significant digits of every real number in a column.
inline constexpr int kPointPrecision = 16;

inline constexpr int kPointKinds = eZoRWSz + 1;
/// The columns by their kinds; null where no column has the kind.
extern const std::array<const PointColumn*, kPointKinds> kPointColumns;

/// The column of a kind, or null for a kind that no column has.
inline const PointColumn* FindPointColumn(eZoPointRWMask kind) {
    return kind >= 0 && kind < kPointKinds ? kPointColumns[static_cast<std::size_t>(kind)] : nullptr;
}

/// The columns of a table, looked up once. Kinds that no column has are left out, and a 0 ends the table.
class ColumnPlan {
  public:
    explicit ColumnPlan(const TZoFormatTable<eZoPointRWMask>& table) {
        for (int i = 0; i < table.Size() && table.columns[i] != eZoRWEnd; ++i) {
            if (const PointColumn* column = FindPointColumn(table.columns[i])) Add(column);
        }
    }
    ColumnPlan(const ColumnPlan&) = delete;
    ColumnPlan& operator=(const ColumnPlan&) = delete;

    const PointColumn* const* begin() const { return many.empty() ? few.data() : many.data(); }
    const PointColumn* const* end() const { return begin() + size; }

  private:
    void Add(const PointColumn* column) {
        if (size < few.size()) {
            few[size] = column;
        } else {
            if (many.empty()) many.assign(few.begin(), few.end());
            many.push_back(column);
        }
        ++size;
    }

    std::array<const PointColumn*, 32> few;  ///< enough for any table without repetitions
    std::vector<const PointColumn*> many;
    std::size_t size = 0;
};

/// Sets the id from a text of digits only; any other text becomes the name, and the id is made from it. A 0 is a number
/// only where `zeroIsId` says so.
void SetIdOrName(ZoPoint& point, std::string_view text, bool zeroIsId);

/// Numbers beyond the range of float become infinite.
inline float ToFloat(double value) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    if (value > kLargest) return kInfinity;
    return value < -kLargest ? -kInfinity : static_cast<float>(value);
}

/// Reads the columns from a line in [begin, end), which is followed by a zero and is cut in place. Returns how many got
/// a value.
int ReadPointLine(ZoPoint& point, char* begin, char* end, const ColumnPlan& columns);

/// Appends the columns as a stream gets them, without a line end.
void AppendPoint(RecordText& text, const ZoPoint& point, const ColumnPlan& columns);
/// The same for tagged text, whose reader takes no infinity and no not-a-number and would give up everything behind
/// one: they become 0.
void AppendTaggedPoint(RecordText& text, const ZoPoint& point, const ColumnPlan& columns);

}  // namespace zorv::detail
