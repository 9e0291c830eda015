#include <algorithm>
#include <memory>

#include "zorv/core/parser.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/stream_parser.h"
#include "zorv/points/point_columns.h"
#include "zorv/points/point_list.h"

using zorv::detail::ColumnPlan;
using zorv::detail::ColumnRole;
using zorv::detail::PointColumn;

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

/// The text of the token at hand, of any type that is a value. For `{`, `}` and the end of the file throws what a
/// request for an integer throws.
const char* ValueText(ZoParser& parser) {
    const ZoParserToken& token = parser.GetToken();
    switch (token.GetType()) {
        case eZoTokenBlockBegin:
        case eZoTokenBlockEnd:
        case eZoTokenEof:
            parser.GetToken(eZoTokenInt);
            break;
        default:
            break;
    }
    return token.GetString();
}

int TakeInt(ZoStreamParser& in) {
    int value = 0;
    in >> value;
    return value;
}

double TakeNumber(ZoStreamParser& in) {
    double value = 0.0;
    in >> value;
    return value;
}

void ReadValue(ZoPoint& point, const PointColumn& column, ZoStreamParser& in) {
    switch (column.role) {
        case ColumnRole::kSingle:
            point.*column.single = zorv::detail::ToFloat(TakeNumber(in));
            break;
        case ColumnRole::kUnsigned:
        case ColumnRole::kSigned:
            in >> point.*column.word;
            break;
        case ColumnRole::kControl:
            point.controlFlags = static_cast<std::int16_t>(TakeInt(in));
            break;
        case ColumnRole::kCode:
            point.SetAsControlFlag(TakeInt(in));
            break;
        case ColumnRole::kCount:
            point.imoCount = static_cast<std::uint16_t>(TakeInt(in));
            break;
        case ColumnRole::kName:
            in >> point.name;
            break;
        case ColumnRole::kIdOrName:
            zorv::detail::SetIdOrName(point, ValueText(*in.parser), true);
            in.ParseForToken();
            break;
        case ColumnRole::kNumberedName:
            TakeNumber(in);
            if (in.parser->GetToken().GetType() == eZoTokenString) in >> point.name;
            break;
        case ColumnRole::kLength:
            TakeNumber(in);
            break;
        case ColumnRole::kSkip:
            ValueText(*in.parser);
            in.ParseForToken();
            break;
        case ColumnRole::kReal:  // by far the most columns: ReadValues takes them itself
        case ColumnRole::kZero:
            break;
    }
}

void ReadValues(ZoPoint& point, const ColumnPlan& columns, ZoStreamParser& in) {
    for (const PointColumn* column : columns) {
        if (column->role == ColumnRole::kReal) {
            in >> point.*column->real;
        } else {
            ReadValue(point, *column, in);
        }
    }
}

const Table& PositionTable() {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWX, eZoRWY, eZoRWEnd};
    static const Table table(kKinds);
    return table;
}

/// Moves to the `}` of the block at hand; throws at the end of the file.
void PassValues(ZoStreamParser& in) {
    for (int depth = 0;; in.ParseForToken()) {
        const eZoTokentype type = in.parser->GetToken().GetType();
        if (type == eZoTokenBlockEnd && depth-- == 0) return;
        if (type == eZoTokenBlockBegin) ++depth;
        if (type == eZoTokenEof) in.parser->GetToken(eZoTokenBlockEnd);
    }
}

}  // namespace

int ZoPoint::Read(ZoReaderObject* object, const Table& table) {
    ZoStreamParser in = object->GetStreamParser();
    ReadValues(*this, ColumnPlan(table), in);
    return 1;
}

long ZoPointList::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    const ColumnPlan plan(GetMask());
    if (std::none_of(plan.begin(), plan.end(), [](const PointColumn* column) { return column->TakesToken(); })) {
        PassValues(in);
        return 1;
    }
    try {
        for (;;) {
            auto point = std::make_unique<ZoPoint>();
            ReadValues(*point, plan, in);
            Add(point.release());
        }
    } catch (const ZoParserStatus&) {
        if (in.parser->GetToken().GetType() != eZoTokenBlockEnd) throw;
    }
    return 1;
}

int ZoPosition::Read(ZoReaderObject* object) {
    return ZoPoint::Read(object, PositionTable());
}

std::ostream& ZoPosition::Write(std::ostream& stream) const {
    return ZoPoint::Write(stream, PositionTable());
}
