#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorv/core/large_block_allocator.h"
#include "zorv/export.h"
#include "zorv/math/point3d.h"

class ZoFileBuffMemoryMap;
class ZoPoint;

/// One point of a cloud: a plain value of 72 bytes. Coordinates are in the unit of the project.
class ZORV_API ZoScanPoint3d : public ZoPoint3d {
  public:
    static constexpr std::uint8_t kSelected = 1;

    /// The origin; everything else is 0. Not defaulted: `ZoScanPoint3d()` would clear the record beforehand.
    ZoScanPoint3d() {}
    explicit ZoScanPoint3d(const ZoPoint3d& point) : ZoPoint3d(point) {}
    /// Takes everything but the false colour, which is 0 in the copy. Assignment and moves take that too, and so does
    /// all that a ZoScanPointVector does.
    ZoScanPoint3d(const ZoScanPoint3d& other) noexcept : ZoPoint3d() {
        *this = other;
        falseColor = 0;
    }
    ZoScanPoint3d(ZoScanPoint3d&& other) noexcept = default;
    /// Takes the coordinates, dx, dy and dz as `extra`, the vector as normal, the number of measurements (at most 255),
    /// the lowest 8 flags and the colour.
    explicit ZoScanPoint3d(const ZoPoint& point);
    /// The colour is `color` with the intensity in its top byte.
    ZoScanPoint3d(double px, double py, double pz, int colorAndIntensity)
        : ZoPoint3d(px, py, pz), color(static_cast<std::uint32_t>(colorAndIntensity)) {}
    ZoScanPoint3d& operator=(const ZoScanPoint3d&) noexcept = default;
    ZoScanPoint3d& operator=(ZoScanPoint3d&&) noexcept = default;

    std::uint8_t GetRed() const { return static_cast<std::uint8_t>(color); }
    std::uint8_t GetGreen() const { return static_cast<std::uint8_t>(color >> 8); }
    std::uint8_t GetBlue() const { return static_cast<std::uint8_t>(color >> 16); }
    /// Red in byte 0, green in byte 1, blue in byte 2; the top byte is 0.
    std::uint32_t GetColor() const { return color & kRgb; }
    void SetRed(std::uint8_t value) { SetByte(color, 0, value); }
    void SetGreen(std::uint8_t value) { SetByte(color, 8, value); }
    void SetBlue(std::uint8_t value) { SetByte(color, 16, value); }
    /// Leaves the intensity alone.
    void SetColor(std::uint32_t rgb) { color = (color & ~kRgb) | (rgb & kRgb); }

    /// The same of the colour for display.
    std::uint8_t GetFalseRed() const { return static_cast<std::uint8_t>(falseColor); }
    std::uint8_t GetFalseGreen() const { return static_cast<std::uint8_t>(falseColor >> 8); }
    std::uint8_t GetFalseBlue() const { return static_cast<std::uint8_t>(falseColor >> 16); }
    std::uint32_t GetFalseColor() const { return falseColor & kRgb; }
    void SetFalseRed(std::uint8_t value) { SetByte(falseColor, 0, value); }
    void SetFalseGreen(std::uint8_t value) { SetByte(falseColor, 8, value); }
    void SetFalseBlue(std::uint8_t value) { SetByte(falseColor, 16, value); }
    void SetFalseColor(std::uint32_t rgb) { falseColor = (falseColor & ~kRgb) | (rgb & kRgb); }

    /// The intensity, 0 to 255; where none is stored, the grey value of the colour.
    int GetIntensity() const;
    void SetIntensity(std::uint8_t value) { SetByte(color, 24, value); }
    /// Luminance of the colour, 0 to 255, with other weights than GetIntensity.
    int GrayIntensity() const;

    std::uint8_t GetNbrMeasurements() const { return nbrMeasurements; }
    void SetNbrMeasurements(std::uint8_t value) { nbrMeasurements = value; }
    std::uint8_t GetFlags() const { return flags; }
    void SetFlags(std::uint8_t value) { flags = value; }
    bool IsSelected() const { return (flags & kSelected) != 0; }
    /// Clears the other flags.
    void SetSelected(bool on) { flags = on ? kSelected : 0; }

    /// Whether any component of the normal is not 0; not-a-number counts as present.
    bool HasNormVector() const { return normal[0] != 0.0F || normal[1] != 0.0F || normal[2] != 0.0F; }

    /// Reads a record of a native cloud file. False, with the point as it was, when the record does not begin with its
    /// marker, which is passed over, or is cut off.
    bool Read(ZoFileBuffMemoryMap& buffer);
    /// Writes the record, 58 bytes: neither w nor the false colour are part of it. Null does nothing.
    void Write(std::FILE* file) const;
    /// Writes one line of text: with `colorOnly` x y z red green blue, else x y z intensity red green blue, in columns
    /// when `aligned`. The intensity is in the range of PTS files, -2000 to 1984.
    void WriteAscii(std::FILE* file, bool aligned, bool colorOnly) const;

    float extra[3] = {};   ///< second coordinates of the ZoPoint that the point came from; not transformed
    float normal[3] = {};  ///< all zero for none
    std::uint8_t nbrMeasurements = 0;
    std::uint8_t flags = 0;
    std::uint32_t color = 0;       ///< red, green, blue and intensity, from the lowest byte up
    std::uint32_t falseColor = 0;  ///< red, green, blue for display

  private:
    static constexpr std::uint32_t kRgb = 0xffffff;

    static void SetByte(std::uint32_t& word, int shift, std::uint8_t value) {
        word = (word & ~(0xffU << shift)) | (static_cast<std::uint32_t>(value) << shift);
    }
};

namespace zorv::detail {

/// Makes copies inside a vector by assignment, which takes all fields.
template <class T>
class ScanPointAllocator : public LargeBlockAllocator<T> {
  public:
    ScanPointAllocator() = default;
    template <class U>
    ScanPointAllocator(const ScanPointAllocator<U>&) noexcept {}
    template <class U>
    struct rebind {
        using other = ScanPointAllocator<U>;
    };

    template <class U, class... Arguments>
    void construct(U* place, Arguments&&... arguments) noexcept(std::is_nothrow_constructible_v<U, Arguments...>) {
        std::construct_at(place, std::forward<Arguments>(arguments)...);
    }
    void construct(T* place, const T& point) noexcept { *std::construct_at(place) = point; }
    void construct(T* place, T& point) noexcept { construct(place, std::as_const(point)); }
};

}  // namespace zorv::detail

/// The points of a cloud: a vector that takes large pages and keeps all fields of what is copied into it.
using ZoScanPointVector = std::vector<ZoScanPoint3d, zorv::detail::ScanPointAllocator<ZoScanPoint3d>>;
