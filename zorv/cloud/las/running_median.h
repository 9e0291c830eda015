#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace zorv::las {

/// The middle one of five numbers that follow a series. A new one takes the place of the largest or the smallest,
/// which changes sides whenever the new one falls on the side of the one that it replaces.
class RunningMedian {
  public:
    std::int32_t Get() const { return sorted[2]; }

    void Add(std::int32_t value) {
        const bool below = value < sorted[2];
        const bool above = value > sorted[2];
        if (dropLargest) {
            Insert(sorted[0], sorted[1], sorted[2], sorted[3], value);
            dropLargest = below;
        } else {
            Insert(sorted[1], sorted[2], sorted[3], sorted[4], value);
            dropLargest = !above;
        }
    }

  private:
    void Insert(std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d, std::int32_t value) {
        sorted = {std::min(a, value), std::max(a, std::min(b, value)), std::max(b, std::min(c, value)),
                  std::max(c, std::min(d, value)), std::max(d, value)};
    }

    std::array<std::int32_t, 5> sorted{};
    bool dropLargest = true;
};

}  // namespace zorv::las
