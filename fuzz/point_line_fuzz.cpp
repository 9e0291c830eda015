// Point lines and point blocks under several column tables: a line gives no more columns than the table has, what was
// read is written and read back as the same, and blocks end without a hang.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "input_file.h"
#include "require.h"

#include "zorv/core/reader.h"
#include "zorv/core/text_conversion.h"
#include "zorv/points/measurement_log.h"
#include "zorv/points/point_list.h"

namespace {

using Table = TZoFormatTable<eZoPointRWMask>;

const std::vector<Table>& Tables() {
    static const std::vector<Table> tables = [] {
        constexpr eZoPointRWMask kCoordinates[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
        constexpr eZoPointRWMask kNames[] = {eZoRWIdOrName, eZoRWSkip, eZoRWX, eZoRWEnd};
        constexpr eZoPointRWMask kTexts[] = {eZoRWPP, eZoRWName, eZoRWId, eZoRWVx, eZoRWEnd};
        constexpr eZoPointRWMask kNothing[] = {eZoRWZero, eZoPointRWMask(99), eZoRWEnd};
        std::vector<Table> made{Table(kCoordinates), Table(kNames), Table(kTexts), Table(kNothing)};
        Table every;
        for (int kind = eZoRWId; kind <= eZoRWSz; ++kind)
            every.columns.Add(eZoPointRWMask(kind));
        made.push_back(every);
        return made;
    }();
    return tables;
}

std::string Written(const ZoPoint& point, const Table& table) {
    std::ostringstream stream;
    point.Write(stream, table);
    return stream.str();
}

void CheckLine(std::string line, const Table& table) {
    ZoPoint point;
    const int consumed = point.Read(line.data(), table);
    Require(consumed >= 0 && consumed <= table.Size());
    // Ids made from names are not written.
    if (table.HasEntry(eZoRWIdOrName) >= 0) return;
    const std::string once = Written(point, table);
    ZoPoint back;
    back.Read(std::string(once).data(), table);
    // A second writing may differ from the first in names alone (cut at a zero byte), never from a third.
    const std::string twice = Written(back, table);
    ZoPoint again;
    again.Read(std::string(twice).data(), table);
    Require(Written(again, table) == twice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::wstring name = file.Name();
    for (const Table& table : Tables()) {
        CheckLine(text, table);

        file.Write(text);
        ZoPointList lines;
        Require(lines.ReadFile(name, table) == lines.Count());
        for (const ZoPoint* point = lines.First(); point; point = point->NextConst())
            Require(point->id != 0);

        file.Write("P {" + text);
        ZoPointList block(table);
        ZoReader reader(name);
        reader.RegisterObject(ZoReaderObject("P", Link(&block, &ZoPointList::Read)));
        Require(reader.DoProcess(true) == 1);
        Require(block.Count() <= static_cast<int>(size));
    }
    file.Write(text);
    ZoLogItemList log;
    log.ReadFile(name);
    Require(log.IsNotifyEnabled());
    return 0;
}
