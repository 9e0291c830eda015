#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "zorv/export.h"

namespace zorv::detail {

// On all processors.
ZORV_API void FillCells(unsigned char* cells, std::size_t count, unsigned char value);
ZORV_API void FillCells(unsigned int* cells, std::size_t count, unsigned int value);
ZORV_API void CopyCells(const unsigned int* from, std::size_t count, unsigned int* to);

}  // namespace zorv::detail

/// The cells of a dense array, one after the other. Bytes are filled and unsigned int filled and copied on all
/// processors.
template <class T>
class ValArray2DBase {
  public:
    ValArray2DBase() = default;
    ValArray2DBase(const ValArray2DBase&) = default;
    ValArray2DBase& operator=(const ValArray2DBase& other) {
        if (this == &other) return *this;
        if constexpr (std::is_same_v<T, unsigned int>) {
            // In fresh memory the vector's own copy is the quicker one.
            if (data.size() == other.data.size()) {
                zorv::detail::CopyCells(other.data.data(), data.size(), data.data());
                return *this;
            }
        }
        data = other.data;
        return *this;
    }
    virtual ~ValArray2DBase() = default;

    /// Gives all cells one value.
    void Fill(const T& value) {
        if constexpr (std::is_same_v<T, unsigned char> || std::is_same_v<T, unsigned int>) {
            zorv::detail::FillCells(data.data(), data.size(), value);
        } else {
            std::fill(data.begin(), data.end(), value);
        }
    }

    std::vector<T> data;
};

/// A dense array of `sizeX` columns and `sizeY` rows, row after row: cell (x, y) is data[y * sizeX + x]. Rasters know
/// the two as `width` and `height`.
template <class T>
class ValArray2DXY : public ValArray2DBase<T> {
  public:
    ValArray2DXY() = default;
    ValArray2DXY(int columns, int rows) { Set(columns, rows); }

    /// Gives the array another size and sets all cells to T(). A negative size counts as 0. Throws
    /// std::bad_alloc, with the array as it was, when memory runs out.
    void Set(int columns, int rows) {
        columns = std::max(columns, 0);
        rows = std::max(rows, 0);
        this->data.assign(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), T());
        sizeX = columns;
        sizeY = rows;
    }

    int SizeX() const { return sizeX; }
    int SizeY() const { return sizeY; }

    /// Unchecked.
    T& operator()(int x, int y) { return this->data[Index(x, y)]; }
    const T& operator()(int x, int y) const { return this->data[Index(x, y)]; }
    /// The cell's value, or T() outside the array.
    T At(int x, int y) const {
        const bool inside = x >= 0 && x < sizeX && y >= 0 && y < sizeY;
        return inside ? (*this)(x, y) : T();
    }

    union {
        std::int32_t sizeX = 0;
        std::int32_t width;
    };
    union {
        std::int32_t sizeY = 0;
        std::int32_t height;
    };

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(sizeX) + static_cast<std::size_t>(x);
    }
};
