#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "zorv/export.h"

namespace zorv::detail {

/// Axis-parallel box of the plane; an empty one has its minima above its maxima.
template <class T>
class BoundingBox2d {
  public:
    BoundingBox2d() = default;
    /// Two corners in any order.
    BoundingBox2d(T x1, T y1, T x2, T y2)
        : xmin(std::min(x1, x2)), ymin(std::min(y1, y2)), xmax(std::max(x1, x2)), ymax(std::max(y1, y2)) {}

    /// Adds to xmin, xmax, ymin, ymax, in this order.
    void Adjust(T dxmin, T dxmax, T dymin, T dymax) {
        xmin = Sum(xmin, dxmin);
        xmax = Sum(xmax, dxmax);
        ymin = Sum(ymin, dymin);
        ymax = Sum(ymax, dymax);
    }

    /// False while any bound still has its initial value.
    bool IsValid() const { return xmin != kHighest && ymin != kHighest && xmax != kLowest && ymax != kLowest; }

    /// Widens the box to hold the point.
    void Update(T x, T y) {
        xmin = std::min(xmin, x);
        ymin = std::min(ymin, y);
        xmax = std::max(xmax, x);
        ymax = std::max(ymax, y);
    }

    /// Whether the point lies in the box; the border counts when `inclusive`.
    bool Overlap(T x, T y, bool inclusive) const {
        return inclusive ? x >= xmin && x <= xmax && y >= ymin && y <= ymax
                         : x > xmin && x < xmax && y > ymin && y < ymax;
    }

    T Xmin() const { return xmin; }
    T Xmax() const { return xmax; }
    T Ymin() const { return ymin; }
    T Ymax() const { return ymax; }
    T GetWidth() const { return Difference(xmax, xmin); }
    T GetXSize() const { return GetWidth(); }
    T GetHeight() const { return Difference(ymax, ymin); }
    T GetYSize() const { return GetHeight(); }

    static constexpr T kHighest = std::numeric_limits<T>::max();
    static constexpr T kLowest = std::numeric_limits<T>::lowest();

    T xmin = kHighest;
    T ymin = kHighest;
    T xmax = kLowest;
    T ymax = kLowest;

  protected:
    /// Whether the boxes overlap on both axes; touching counts when `inclusive`.
    bool Overlaps(const BoundingBox2d& box, bool inclusive) const {
        return AxisOverlaps(xmin, xmax, box.xmin, box.xmax, inclusive) &&
               AxisOverlaps(ymin, ymax, box.ymin, box.ymax, inclusive);
    }

  private:
    static bool AxisOverlaps(T low, T high, T otherLow, T otherHigh, bool inclusive) {
        const T reach = low <= otherLow ? high : otherHigh;
        const T bound = low <= otherLow ? otherLow : low;
        return inclusive ? reach >= bound : reach > bound;
    }

    // Integers wrap around, so that an empty box has a defined size.
    static T Sum(T a, T b) {
        if constexpr (std::numeric_limits<T>::is_integer) {
            return static_cast<T>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
        } else {
            return a + b;
        }
    }
    static T Difference(T a, T b) {
        if constexpr (std::numeric_limits<T>::is_integer) {
            return static_cast<T>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
        } else {
            return a - b;
        }
    }
};

}  // namespace zorv::detail

/// Box of doubles.
class ZORV_API ZoBoundingBox2d : public zorv::detail::BoundingBox2d<double> {
  public:
    using BoundingBox2d::BoundingBox2d;
    using BoundingBox2d::Overlap;

    /// Back to the empty box.
    void Init() { *this = ZoBoundingBox2d(); }
    bool Overlap(const ZoBoundingBox2d& box, bool inclusive) const { return Overlaps(box, inclusive); }
};

/// Box of 32-bit integers, pixels for example.
class ZORV_API ZoIntBoundingBox2d : public zorv::detail::BoundingBox2d<std::int32_t> {
  public:
    using BoundingBox2d::BoundingBox2d;
    using BoundingBox2d::Overlap;

    /// Back to the empty box.
    void Reset() { *this = ZoIntBoundingBox2d(); }
    bool Overlap(const ZoIntBoundingBox2d& box, bool inclusive) const { return Overlaps(box, inclusive); }
};
