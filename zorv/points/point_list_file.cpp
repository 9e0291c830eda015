#include <cstddef>
#include <cstdio>
#include <memory>
#include <ostream>
#include <span>
#include <sstream>
#include <string>

#include "zorv/core/platform/files.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_lines.h"
#include "zorv/core/text_writer.h"
#include "zorv/points/point_columns.h"
#include "zorv/points/point_list.h"

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

/// Bytes of text that go to a stream at once.
constexpr std::size_t kWriteBlock = 64 * 1024;

/// Parses each line straight into the node that the list takes. A line that gives no point leaves its node to the next.
int ReadLines(ZoPointList& list, zorv::detail::TextLines& lines, const Table& table) {
    list.SetMask(table);
    const zorv::detail::ColumnPlan columns(list.GetMask());
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

namespace {

template <class Append>
std::ostream& WritePoints(std::ostream& stream, const ZoPointList& points, Append append) {
    // The line end and the indentation that Zoendl writes now; it would flush at every line.
    std::ostringstream ended;
    ended << Zoendl;
    const std::string lineEnd = ended.str();

    const zorv::detail::ColumnPlan plan(points.GetMask());
    zorv::detail::RecordText text;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst()) {
        append(text, *point, plan);
        if (point->NextConst()) text.Text(lineEnd);
        if (text.View().size() >= kWriteBlock) {
            text.WriteTo(stream);
            text.Clear();
        }
    }
    text.WriteTo(stream);
    stream.precision(zorv::detail::kPointPrecision);
    return stream.flush();
}

}  // namespace

std::ostream& ZoPointList::Write(std::ostream& stream) const {
    return WritePoints(stream, *this, zorv::detail::AppendTaggedPoint);
}

int ZoPointList::WriteFile(const std::wstring& fileName) const {
    zorv::detail::FileReplacement file(fileName);
    WritePoints(file.Stream(), *this, zorv::detail::AppendPoint);
    return file.Commit() ? 1 : 0;
}

int ZoPointList::WriteFile(const wchar_t* fileName) const {
    return fileName ? WriteFile(std::wstring(fileName)) : 0;
}

int ZoPointList::WriteFile(const std::wstring& fileName, const Table& table) {
    SetMask(table);
    return WriteFile(fileName);
}
