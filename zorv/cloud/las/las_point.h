#pragma once

#include <cstdint>

namespace zorv::las {

/// What is taken of a point record. Colours are 0 where the format has none.
struct LASpoint {
    std::int32_t X = 0;  ///< times the header's scale plus its offset gives the coordinate
    std::int32_t Y = 0;
    std::int32_t Z = 0;
    std::uint16_t intensity = 0;
    std::uint16_t rgb[3] = {0, 0, 0};  ///< red, green, blue
};

}  // namespace zorv::las
