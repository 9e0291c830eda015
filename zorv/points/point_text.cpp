#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "zorv/core/alphanumeric_id.h"
#include "zorv/core/field_splitter.h"
#include "zorv/core/number_format.h"
#include "zorv/core/text_conversion.h"
#include "zorv/points/point_columns.h"

using zorv::detail::ColumnRole;
using zorv::detail::PointColumn;

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

constexpr char kQuote = '"';
constexpr zorv::detail::DelimiterSet kDelimiters(" \t;,");

/// Numbers beyond the range of float become infinite.
float ToFloat(double value) {
    if (std::isfinite(value) && std::abs(value) > std::numeric_limits<float>::max()) {
        value = std::copysign(std::numeric_limits<double>::infinity(), value);
    }
    return static_cast<float>(value);
}

bool IsAllDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::uint32_t ParseId(std::string_view text) {
    return static_cast<std::uint32_t>(zorv::detail::ParseInt(text));
}

short ControlFlagsFrom(std::string_view text) {
    int flags = 0;
    for (char c : text) {
        switch (c) {
            case '1':
            case 'X':
            case 'x':
                flags |= 1;
                break;
            case '2':
            case 'Y':
            case 'y':
                flags |= 2;
                break;
            case '3':
            case 'Z':
            case 'z':
                flags |= 4;
                break;
            default:
                break;
        }
    }
    return static_cast<short>(flags);
}

void SetNameAndId(ZoPoint& point, std::string_view text) {
    point.name = string2wstring(std::string(text));
    point.id = zorv::detail::IdFromName(text);
}

/// Stores the text of a field in the column's place.
void StoreText(ZoPoint& point, const PointColumn& column, std::string_view text) {
    using namespace zorv::detail;
    switch (column.role) {
        case ColumnRole::kReal:
            point.*column.real = ParseDouble(text);
            break;
        case ColumnRole::kSingle:
            point.*column.single = ToFloat(ParseDouble(text));
            break;
        case ColumnRole::kUnsigned:
        case ColumnRole::kSigned:
            point.*column.word = ParseId(text);
            break;
        case ColumnRole::kControl:
            point.controlFlags = static_cast<std::int16_t>(ParseInt(text));
            break;
        case ColumnRole::kCode:
            point.controlFlags = ControlFlagsFrom(text);
            break;
        case ColumnRole::kCount:
            point.imoCount = static_cast<std::uint16_t>(ParseInt(text));
            break;
        case ColumnRole::kName:
            point.name = string2wstring(std::string(text));
            break;
        case ColumnRole::kIdOrName:
            if (const std::uint32_t number = ParseId(text); number != 0 && IsAllDigits(text)) {
                point.id = number;
            } else {
                SetNameAndId(point, text);
            }
            break;
        case ColumnRole::kNumberedName:
        case ColumnRole::kLength:
        case ColumnRole::kZero:
        case ColumnRole::kSkip:
            break;
    }
}

/// Moves to the next field and tells whether it is a quoted one.
bool IsQuoteNext(const char* at, const char* end) {
    while (at != end && kDelimiters(*at))
        ++at;
    return at != end && *at == kQuote;
}

}  // namespace

namespace zorv::detail {

int ReadPointLine(ZoPoint& point, char* begin, char* end, const Table& table) {
    FieldSplitter fields(begin, end, kDelimiters, kQuote);
    int consumed = 0;
    ForEachColumn(table, [&](const PointColumn& column) {
        const std::string_view text = fields.Next();
        if (!text.data()) return false;
        StoreText(point, column, text);
        if (column.role == ColumnRole::kNumberedName && IsQuoteNext(fields.Position(), end)) {
            point.name = string2wstring(std::string(fields.Next()));
        }
        ++consumed;
        return true;
    });
    return consumed;
}

}  // namespace zorv::detail

short ZoPoint::SetAsControlFlag(const char* text) {
    return controlFlags = ControlFlagsFrom(text ? text : "");
}

short ZoPoint::SetAsControlFlag(int code) {
    char digits[zorv::detail::kNumberTextSize];
    return controlFlags = ControlFlagsFrom({digits, zorv::detail::FormatInt(digits, code)});
}

int ZoPoint::Read(char* line, const Table& table) {
    if (!line) return 0;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::string_view text(line);
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    while (text.ends_with('\r') || text.ends_with('\n'))
        text.remove_suffix(1);
    char* begin = line + (text.data() - line);
    return zorv::detail::ReadPointLine(*this, begin, begin + text.size(), table);
}
