#include <cstdio>
#include <memory>
#include <span>
#include <string>

#include "zorv/core/text_lines.h"
#include "zorv/points/point_columns.h"
#include "zorv/points/point_list.h"

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

/// Parses each line straight into the node that the list takes. A line that gives no point leaves its node to the next.
int ReadLines(ZoPointList& list, zorv::detail::TextLines& lines, const Table& table) {
    list.SetMask(table);
    const Table& columns = list.GetMask();
    int added = 0;
    auto point = std::make_unique<ZoPoint>();
    for (std::span<char> line; lines.Next(line);) {
        const int read = zorv::detail::ReadPointLine(*point, line.data(), line.data() + line.size(), columns);
        if (read == 0) continue;
        if (point->id != 0) {
            list.Add(point.release());
            ++added;
            point = std::make_unique<ZoPoint>();
        } else {
            *point = ZoPoint();
        }
    }
    return added;
}

}  // namespace

int ZoPointList::ReadFile(const std::wstring& fileName, const Table& table) {
    zorv::detail::TextLines lines(fileName);
    return lines.IsOpen() ? ReadLines(*this, lines, table) : 0;
}

int ZoPointList::ReadFile(const wchar_t* fileName, const Table& table) {
    return fileName ? ReadFile(std::wstring(fileName), table) : 0;
}

int ZoPointList::ReadFile(std::FILE* file, const Table& table) {
    if (!file) return 0;
    zorv::detail::TextLines lines(file);
    return ReadLines(*this, lines, table);
}
