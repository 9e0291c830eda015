#include "zorv/points/log_item.h"

#include <cstddef>
#include <ctime>
#include <ostream>

#include "zorv/core/parser.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/points/point_columns.h"

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

const Table& PointTable() {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWId, eZoRWX, eZoRWY, eZoRWZ, eZoRWDx, eZoRWDy, eZoRWDz, eZoRWEnd};
    static const Table table(kKinds);
    return table;
}

const Table& ImagePointTable() {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWPhoto, eZoRWX, eZoRWY, eZoRWEnd};
    static const Table table(kKinds);
    return table;
}

/// A line of a record is broken in front of the image point that would bring it beyond this; two of them, and what a
/// host may have put in front of the record, fit well below the reader's limit.
constexpr std::size_t kLongLine = ZoParser::kLineSize - 512;

}  // namespace

ZoLogItem::ZoLogItem() : imagePoints(ImagePointTable()) {}

ZoLogItem::ZoLogItem(const ZoPoint& measured, const ZoPointList* measurements, eZoMeasureMode mode, unsigned int value)
    : point(measured), imagePoints(ImagePointTable()), measureMode(mode), measureValue(value) {
    if (measurements) measurements->CopyTo(&imagePoints);
    TimeStamp();
}

ZoLogItem::ZoLogItem(ZoReaderObject* object) : ZoLogItem() {
    Read(object);
}

int ZoLogItem::Read(ZoReaderObject* object) {
    point.Read(object, PointTable());
    ZoStreamParser in = object->GetStreamParser();
    int mode = 0;
    in >> mode >> measureValue;
    measureMode = static_cast<eZoMeasureMode>(mode);
    in.ParseForToken();  // the `{`
    imagePoints.Read(object);
    return 1;
}

std::ostream& ZoLogItem::Write(std::ostream& stream) const {
    using zorv::detail::FieldWidth;
    zorv::detail::RecordText text;
    zorv::detail::AppendTaggedPoint(text, point, zorv::detail::ColumnPlan(PointTable()));
    text.Field(FieldWidth::w4, static_cast<int>(measureMode));
    text.Field(FieldWidth::w4, measureValue).Text(" {");
    const zorv::detail::ColumnPlan imageColumns(ImagePointTable());
    zorv::detail::RecordText each;
    std::size_t lineBegin = 0;
    for (const ZoPoint* image = imagePoints.First(); image; image = image->NextConst()) {
        each.Clear();
        zorv::detail::AppendTaggedPoint(each, *image, imageColumns);
        if (text.View().size() + each.View().size() - lineBegin > kLongLine) {
            text.Char('\n');
            lineBegin = text.View().size();
        }
        text.Text(each.View());
    }
    text.Char('}').WriteTo(stream);
    stream.precision(zorv::detail::kPointPrecision);
    return stream;
}

void ZoLogItem::TimeStamp() {
    point.id = static_cast<std::uint32_t>(std::time(nullptr));
}
