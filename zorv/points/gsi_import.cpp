#include <span>

#include "zorv/core/text_conversion.h"
#include "zorv/core/text_lines.h"
#include "zorv/points/gsi_item.h"
#include "zorv/points/point_list.h"

namespace {

using Bit = ZoGsiDataItem::Bit;

ZoPoint PointOf(const ZoGsiDataItem& item, bool asControl, eZoUnit unit) {
    ZoPoint point;
    point.SetId(item.pointNumber);
    point.SetName(string2wstring(item.pointName));
    point.x = item.GetData(Bit::kEasting, unit);
    point.y = item.GetData(Bit::kNorthing, unit);
    point.z = item.GetData(Bit::kHeight, unit);
    if (asControl) {
        const int control = (item.MaskData(Bit::kEasting) ? 1 : 0) | (item.MaskData(Bit::kNorthing) ? 2 : 0) |
                            (item.MaskData(Bit::kHeight) ? 4 : 0);
        point.SetControlFlags(static_cast<short>(control));
    }
    return point;
}

// Data loggers of some makers end lines with a carriage return alone.
constexpr auto kLineEnd = zorv::detail::LineEnd::kLineFeedOrReturn;

int AddPoints(zorv::detail::TextLines& lines, ZoPointList& list, bool asControl, eZoUnit unit) {
    int added = 0;
    for (std::span<char> line; lines.Next(line);) {
        const ZoGsiDataItem item(line.data());
        if (!item.MaskData(Bit::kEasting | Bit::kNorthing | Bit::kHeight)) continue;
        list.Add(PointOf(item, asControl, unit));
        ++added;
    }
    return added;
}

}  // namespace

int ZoPointList::ReadGsiFile(const std::wstring& fileName, bool asControl, eZoUnit unit) {
    zorv::detail::TextLines lines(fileName, kLineEnd);
    return AddPoints(lines, *this, asControl, unit);
}

int ZoPointList::ReadGsiFile(std::FILE* file, bool asControl, eZoUnit unit) {
    zorv::detail::TextLines lines(file, kLineEnd);
    return AddPoints(lines, *this, asControl, unit);
}
