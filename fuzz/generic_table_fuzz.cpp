// Delimited tables: rows stay below the limit, cells are never empty and hold neither separators nor line ends.

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

#include "input_file.h"
#include "require.h"

#include "zorv/core/text_conversion.h"
#include "zorv/points/generic_table.h"

namespace {}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    file.Write({reinterpret_cast<const char*>(data), size});
    const ZoReadGenericTableFile table(file.Name());
    const std::size_t rows = table.NumberLines() - (table.IsEndReached() ? 0 : 1);
    std::uint64_t longest = 0;
    for (std::size_t i = 0; i < rows; ++i) {
        const auto& row = table.GetRows()[i];
        Require(!row.empty() && row.size() < table.maxColumns);
        longest = row.size() > longest ? row.size() : longest;
        for (const std::string& cell : row)
            Require(!cell.empty() && cell.find_first_of(table.separators + "\r\n") == std::string::npos);
    }
    Require(longest == table.MaxLineLen());
    Require(table.IsEndReached() || table.GetRows().back().size() == 4);
    return 0;
}
