#include <algorithm>
#include <charconv>
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

bool IsAllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
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
            SetIdOrName(point, text, false);
            break;
        case ColumnRole::kNumberedName:
        case ColumnRole::kLength:
        case ColumnRole::kZero:
        case ColumnRole::kSkip:
            break;
    }
}

/// The fields of a line that ends with a zero.
class LineFields {
  public:
    LineFields(char* begin, char* lineEnd) : at(begin), end(lineEnd) {}

    /// Moves to the next field; false when there is none.
    bool Advance() {
        while (kDelimiters(*at))
            ++at;
        return *at != 0;
    }
    bool IsQuoted() const { return *at == kQuote; }

    /// Takes the field when the whole of it is a plain number of that type, without looking for its end first.
    template <class Number>
    bool TakeNumber(Number& value) {
        const auto [behind, error] = std::from_chars(at, end, value);
        if (error != std::errc() || (*behind != 0 && !kDelimiters(*behind))) return false;
        at += behind - at;
        return true;
    }

    std::string_view TakeText() {
        zorv::detail::FieldSplitter splitter(at, kDelimiters, kQuote);
        const std::string_view text = splitter.Next();
        at = splitter.Position();
        return text;
    }

  private:
    char* at;
    char* end;
};

void ReadField(ZoPoint& point, const PointColumn& column, LineFields& fields) {
    if (column.role == ColumnRole::kReal && fields.TakeNumber(point.*column.real)) return;
    if (column.role == ColumnRole::kUnsigned && fields.TakeNumber(point.*column.word)) return;
    StoreText(point, column, fields.TakeText());
    // The name stands directly behind its number.
    if (column.role == ColumnRole::kNumberedName && fields.Advance() && fields.IsQuoted()) {
        point.name = string2wstring(std::string(fields.TakeText()));
    }
}

}  // namespace

namespace zorv::detail {

void SetIdOrName(ZoPoint& point, std::string_view text, bool zeroIsId) {
    const std::uint32_t number = ParseId(text);
    if (IsAllDigits(text) && (number != 0 || zeroIsId)) {
        point.id = number;
    } else {
        point.name = string2wstring(std::string(text));
        point.id = IdFromName(text);
    }
}

int ReadPointLine(ZoPoint& point, char* begin, char* end, const ColumnPlan& columns) {
    LineFields fields(begin, end);
    int consumed = 0;
    for (const PointColumn* column : columns) {
        if (!fields.Advance()) break;
        ReadField(point, *column, fields);
        ++consumed;
    }
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
    using zorv::detail::kByteOrderMark;
    std::string_view text(line);
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    while (text.ends_with('\r') || text.ends_with('\n'))
        text.remove_suffix(1);
    char* begin = line + (text.data() - line);
    char* end = begin + text.size();
    *end = 0;
    return zorv::detail::ReadPointLine(*this, begin, end, zorv::detail::ColumnPlan(table));
}
