#include "raster.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include <zorv/zorv.h>

namespace {

void AddNumber(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
}

}  // namespace

Raster Raster::Enlarged(int scale) const {
    Raster large(columns * scale, rows * scale);
    // The cells before and behind a place, and how far it lies towards the latter.
    struct Between {
        Between(int place, int scale, int count) {
            const double position = std::clamp((place + 0.5) / scale - 0.5, 0.0, count - 1.0);
            before = static_cast<int>(position);
            behind = std::min(before + 1, count - 1);
            share = position - before;
        }
        int before;
        int behind;
        double share;
    };
    for (int row = 0; row < large.rows; ++row) {
        const Between y(row, scale, rows);
        for (int column = 0; column < large.columns; ++column) {
            const Between x(column, scale, columns);
            std::uint32_t mixed = 0;
            for (int shift = 0; shift < 24; shift += 8) {
                const auto channel = [&](int c, int r) { return static_cast<double>(At(c, r) >> shift & 0xff); };
                const double above = std::lerp(channel(x.before, y.before), channel(x.behind, y.before), x.share);
                const double below = std::lerp(channel(x.before, y.behind), channel(x.behind, y.behind), x.share);
                mixed |= static_cast<std::uint32_t>(std::lround(std::lerp(above, below, y.share))) << shift;
            }
            large.At(column, row) = mixed;
        }
    }
    return large;
}

bool Raster::WriteBmp(const std::wstring& file) const {
    constexpr std::uint32_t kHeaderSize = 54;
    const auto width = static_cast<std::uint32_t>(columns);
    const auto height = static_cast<std::uint32_t>(rows);
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
        for (int column = 0; column < columns; ++column) {
            for (const int shift : {16, 8, 0})
                bytes += static_cast<char>(At(column, row) >> shift);
        }
        bytes.resize((bytes.size() - kHeaderSize + rowSize - 1) / rowSize * rowSize + kHeaderSize);
    }
    std::ofstream stream(std::filesystem::path(wstring2string(file)), std::ios::binary);
    stream << bytes;
    return static_cast<bool>(stream.flush());
}
