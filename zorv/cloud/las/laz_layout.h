#pragma once

#include <cstdint>
#include <vector>

#include "zorv/cloud/las/las_header.h"
#include "zorv/core/byte_view.h"

namespace zorv::las {

/// A group of fields of a record and how it is compressed.
struct LazItem {
    enum Type : std::uint16_t {
        kBytes = 0,
        kPoint10 = 6,
        kGpsTime11 = 7,
        kRgb12 = 8,
        kWavePacket13 = 9,
        kPoint14 = 10,
        kRgb14 = 11,
        kRgbNir14 = 12,
        kWavePacket14 = 13,
        kBytes14 = 14,
    };

    std::uint16_t type = kBytes;
    std::uint16_t size = 0;  ///< bytes
    std::uint16_t version = 0;
};

/// What the record of the compressor says.
struct LazLayout {
    enum Compressor : std::uint16_t { kNone = 0, kPointWise = 1, kChunked = 2, kLayered = 3 };
    static constexpr std::uint32_t kVariable = 0xffffffffu;

    bool IsLayered() const { return compressor == kLayered; }
    bool HasVariableChunks() const { return compressor != kPointWise && chunkSize == kVariable; }

    std::uint16_t compressor = kNone;
    std::uint32_t chunkSize = 0;  ///< points, or kVariable
    std::vector<LazItem> items;   ///< as they follow each other in a record
};

/// Finds and reads the record of the compressor among the variable length records. False when it is missing or names
/// compressors, groups, versions or sizes that do not go together or do not fit the record length. Each group occurs
/// once.
bool ReadLazLayout(detail::ByteView file, const LASheader& header, LazLayout& layout);

}  // namespace zorv::las
