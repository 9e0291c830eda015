#include <cmath>
#include <cstddef>
#include <ostream>

#include "zorv/core/record_text.h"
#include "zorv/points/point_columns.h"

namespace zorv::detail {

namespace {

/// A quoted name, left-aligned in the column.
void AppendName(RecordText& text, FieldWidth width, const std::wstring& name) {
    text.Char(' ');
    const std::size_t begin = text.View().size();
    text.Quoted(name);
    for (auto length = text.View().size() - begin; length < static_cast<std::size_t>(width); ++length)
        text.Char(' ');
}

/// `real` makes of a real number what is written.
template <class Real>
void AppendColumn(RecordText& text, const ZoPoint& point, const PointColumn& column, Real real) {
    switch (column.role) {
        case ColumnRole::kReal:
            text.Field(column.width, real(point.*column.real), kPointPrecision);
            break;
        case ColumnRole::kSingle:
            text.Field(column.width, real(point.*column.single), kPointPrecision);
            break;
        case ColumnRole::kUnsigned:
            text.Field(column.width, point.*column.word);
            break;
        case ColumnRole::kSigned:
            text.Field(column.width, static_cast<int>(point.*column.word));
            break;
        case ColumnRole::kControl:
            text.Field(column.width, int{point.controlFlags});
            break;
        case ColumnRole::kCode:
            text.Field(column.width, point.GetControlFlagsAs123());
            break;
        case ColumnRole::kCount:
            text.Field(column.width, unsigned{point.imoCount});
            break;
        case ColumnRole::kName:
            AppendName(text, column.width, point.name);
            break;
        case ColumnRole::kNumberedName:
            // The blank of the column's own field, then the record of an object without a number.
            text.Char(' ').Field(FieldWidth::w4, 0).Char(' ').Quoted(point.name);
            break;
        case ColumnRole::kLength:
            text.Field(column.width, real(std::sqrt(point.dx * point.dx + point.dy * point.dy + point.dz * point.dz)),
                       kPointPrecision);
            break;
        case ColumnRole::kZero:
            text.Field(column.width, 0);
            break;
        case ColumnRole::kIdOrName:
        case ColumnRole::kSkip:
            break;
    }
}

}  // namespace

void AppendPoint(RecordText& text, const ZoPoint& point, const ColumnPlan& columns) {
    for (const PointColumn* column : columns)
        AppendColumn(text, point, *column, [](double value) { return value; });
}

void AppendTaggedPoint(RecordText& text, const ZoPoint& point, const ColumnPlan& columns) {
    for (const PointColumn* column : columns)
        AppendColumn(text, point, *column, FiniteOrZero);
}

}  // namespace zorv::detail

std::ostream& ZoPoint::Write(std::ostream& stream, const TZoFormatTable<eZoPointRWMask>& table) const {
    zorv::detail::RecordText text;
    zorv::detail::AppendTaggedPoint(text, *this, zorv::detail::ColumnPlan(table));
    stream.precision(zorv::detail::kPointPrecision);
    text.WriteTo(stream);
    return stream;
}
