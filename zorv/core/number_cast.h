#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace zorv::detail {

/// Truncates toward zero to 32 bits; saturates at the bounds, not-a-number gives 0.
inline std::int32_t SaturatedInt(double value) {
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(value)) return 0;
    if (value <= kLowest) return std::numeric_limits<std::int32_t>::min();
    if (value >= kHighest) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value);
}

}  // namespace zorv::detail
