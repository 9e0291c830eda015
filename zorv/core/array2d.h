#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The cells of a dense array, one after the other.
template <class T>
class ValArray2DBase {
  public:
    ValArray2DBase() = default;
    ValArray2DBase(const ValArray2DBase&) = default;
    ValArray2DBase& operator=(const ValArray2DBase&) = default;
    virtual ~ValArray2DBase() = default;

    /// Gives all cells one value.
    void Fill(const T& value) { std::fill(data.begin(), data.end(), value); }

    std::vector<T> data;
};

/// A dense array of `sizeX` columns and `sizeY` rows, row after row: cell (x, y) is data[y * sizeX + x].
template <class T>
class ValArray2DXY : public ValArray2DBase<T> {
  public:
    ValArray2DXY() = default;
    ValArray2DXY(int width, int height) { Set(width, height); }

    /// Gives the array another size and sets all cells to T(). A negative size counts as 0.
    void Set(int width, int height) {
        sizeX = std::max(width, 0);
        sizeY = std::max(height, 0);
        this->data.assign(static_cast<std::size_t>(sizeX) * static_cast<std::size_t>(sizeY), T());
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

    std::int32_t sizeX = 0;
    std::int32_t sizeY = 0;

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(sizeX) + static_cast<std::size_t>(x);
    }
};
