#include "raster.h"

#include <filesystem>
#include <fstream>

#include <zorv/zorv.h>

namespace {

void AddNumber(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
}

}  // namespace

bool Raster::WriteBmp(const std::wstring& file, int scale) const {
    constexpr std::uint32_t kHeaderSize = 54;
    const auto width = static_cast<std::uint32_t>(columns * scale);
    const auto height = static_cast<std::uint32_t>(rows * scale);
    const std::uint32_t rowSize = (width * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    AddNumber(bytes, kHeaderSize + rowSize * height, 4);
    AddNumber(bytes, 0, 4);
    AddNumber(bytes, kHeaderSize, 4);
    AddNumber(bytes, 40, 4);
    AddNumber(bytes, width, 4);
    AddNumber(bytes, height, 4);
    AddNumber(bytes, 1, 2);
    AddNumber(bytes, 24, 2);
    bytes.resize(kHeaderSize);
    for (int row = rows; row-- > 0;) {
        std::string line;
        for (int column = 0; column < columns; ++column) {
            const std::uint32_t cell = cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                                             static_cast<std::size_t>(column)];
            for (int i = 0; i < scale; ++i) {
                line += static_cast<char>(cell >> 16);
                line += static_cast<char>(cell >> 8);
                line += static_cast<char>(cell);
            }
        }
        line.resize(rowSize);
        for (int i = 0; i < scale; ++i)
            bytes += line;
    }
    std::ofstream stream(std::filesystem::path(wstring2string(file)), std::ios::binary);
    stream << bytes;
    return static_cast<bool>(stream.flush());
}
