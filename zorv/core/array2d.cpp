#include "zorv/core/array2d.h"

namespace zorv::detail {

namespace {

/// From so many bytes on other processors are worth their waking up.
constexpr std::size_t kWorthSharing = std::size_t{1} << 18;

template <class T, class CellValue>
void SetCells(T* cells, std::size_t count, CellValue cellValue) {
    const auto end = static_cast<std::ptrdiff_t>(count);
#pragma omp parallel for schedule(static) if (count * sizeof(T) >= kWorthSharing)
    for (std::ptrdiff_t i = 0; i < end; ++i)
        cells[i] = cellValue(i);
}

}  // namespace

void FillCells(unsigned char* cells, std::size_t count, unsigned char value) {
    SetCells(cells, count, [value](std::ptrdiff_t) { return value; });
}

void FillCells(unsigned int* cells, std::size_t count, unsigned int value) {
    SetCells(cells, count, [value](std::ptrdiff_t) { return value; });
}

void CopyCells(const unsigned int* from, std::size_t count, unsigned int* to) {
    SetCells(to, count, [from](std::ptrdiff_t i) { return from[i]; });
}

}  // namespace zorv::detail
