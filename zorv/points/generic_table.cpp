#include "zorv/points/generic_table.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "zorv/core/field_splitter.h"
#include "zorv/core/text_lines.h"

bool ZoReadGenericTableFile::ReadFile(const std::wstring& fileName) {
    zorv::detail::TextLines lines(fileName, zorv::detail::LineEnd::kLineFeedOrReturn);
    if (!lines.IsOpen()) return false;
    rows.clear();
    maxLineLen = 0;
    endReached = false;

    constexpr char kNoQuote = 0;
    const zorv::detail::DelimiterSet delimiters(separators.c_str());
    for (std::span<char> line; lines.Next(line);) {
        zorv::detail::FieldSplitter cells(line.data(), line.data() + line.size(), delimiters, kNoQuote);
        Row row;
        std::uint64_t count = 0;
        for (std::string_view cell; (cell = cells.Next()).data(); ++count) {
            if (count < maxColumns) row.emplace_back(cell);
        }
        if (count == 0) continue;
        if (count >= maxColumns) {
            AddErrorRow(count);
            return true;
        }
        maxLineLen = std::max(maxLineLen, count);
        rows.push_back(std::move(row));
    }
    endReached = true;
    return true;
}

void ZoReadGenericTableFile::AddErrorRow(std::uint64_t cells) {
    rows.push_back({"Fehlerhafte oder ung\xc3\xbcltige Datei", "Incorrect or invalid file",
                    "Fichier incorrect ou invalide",
                    std::to_string(cells) + " (max " + std::to_string(maxColumns) + ")"});
}
