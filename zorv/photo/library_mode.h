#pragma once

#include <cstdint>
#include <optional>

namespace zorv::detail {

/// The mode of a ZoCamera for a model number of the library camera; nothing for a number that is no model.
inline std::optional<std::uint32_t> ModeOfLibraryModel(std::int64_t model) {
    switch (model) {
        case 0:
            return 4;
        case 1:
            return 5;
        case 2:
            return 6;
        case 3:
            return 8;
        case 6:
            return 12;
        case 7:
            return 13;
        case 8:
            return 14;
        case 9:
            return 15;
        case 10:
            return 7;
        case 11:
            return 11;
        case 12:
            return 16;
        case 24:
            return 0;
        case 25:
            return 1;
        case 28:
            return 17;
        default:
            return std::nullopt;
    }
}

}  // namespace zorv::detail
