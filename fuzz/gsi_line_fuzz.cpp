// Survey lines: every word stays inside the line, and the same bytes as a file give the points that the lines promise.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "require.h"

#include "zorv/points/gsi_item.h"
#include "zorv/points/point_list.h"

namespace {

void CheckWords(const char* line) {
    GsiLineItemizer items(line);
    const char* behind = items.line;
    while (items.NextWord()) {
        Require(items.wordStart >= behind && items.wordStart < items.wordEnd);
        Require(items.wordEnd < items.line + GsiLineItemizer::kLineSize && *items.wordEnd == 0);
        Require(std::strlen(items.wordStart) == static_cast<std::size_t>(items.wordEnd - items.wordStart));
        behind = items.wordEnd;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In a block of its own size, so that a step too far shows.
    const auto line = std::make_unique<char[]>(size + 1);
    if (size > 0) std::memcpy(line.get(), data, size);
    CheckWords(line.get());

    const ZoGsiDataItem item(line.get());
    for (int bit = 1; bit <= ZoGsiDataItem::kErrorMessage; bit *= 2) {
        Require(item.MaskData(bit) || (item.GetData(bit, eZoUnitMm) == 0 && item.GetData(bit, eZoAngleGon) == 0));
    }
    Require(item.pointName.size() <= 16);

    ZoPointList list;
    if (std::FILE* file = size > 0 ? ::fmemopen(line.get(), size, "r") : nullptr) {
        Require(list.ReadGsiFile(file, true, eZoUnitM) == list.Count());
        std::fclose(file);
    }
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        Require(point->IsControlPoint() != 0);
    return 0;
}
