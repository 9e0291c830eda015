// Delimited tables: rows stay below the limit, cells are never empty and hold neither separators nor line ends.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "zorv/core/text_conversion.h"
#include "zorv/points/generic_table.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

struct InputFile {
    InputFile() : path(std::filesystem::temp_directory_path() / ("zorv-table-" + std::to_string(::getpid()))) {}
    ~InputFile() { std::filesystem::remove(path); }
    std::filesystem::path path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    std::ofstream(file.path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    const ZoReadGenericTableFile table(string2wstring(file.path.native()));
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
