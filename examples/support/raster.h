#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A picture of coloured cells, row 0 at the top.
class Raster {
  public:
    Raster(int width, int height) : columns(width), rows(height), cells(CellCount(), kWhite) {}

    int Width() const { return columns; }
    int Height() const { return rows; }
    /// Red in the lowest byte, then green, then blue.
    std::uint32_t& At(int column, int row) { return cells[Place(column, row)]; }
    std::uint32_t At(int column, int row) const { return cells[Place(column, row)]; }

    /// `scale` by `scale` cells for each, with colours that change evenly from one centre to the next.
    Raster Enlarged(int scale) const;

    /// A file that every browser shows, a pixel a cell.
    bool WriteBmp(const std::wstring& file) const;

  private:
    static constexpr std::uint32_t kWhite = 0xffffff;

    std::size_t Place(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column);
    }
    std::size_t CellCount() const { return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows); }

    int columns;
    int rows;
    std::vector<std::uint32_t> cells;
};
