#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/laz_layout.h"
#include "zorv/core/byte_view.h"

namespace zorv::las {

/// A part of the compressed points that can be decoded for itself.
struct LazChunk {
    std::uint64_t offset = 0;  ///< bytes from the beginning of the file
    std::uint64_t size = 0;    ///< bytes
    std::uint64_t points = 0;
};

/// Bytes in front of the first chunk that tell where the table of the chunks is.
inline constexpr std::uint64_t kChunkTablePointer = 8;

/// Reads the table behind the points. Nothing when there is none, as after an interrupted writer, or when it names
/// bytes that the file does not have.
std::optional<std::vector<LazChunk>> ReadChunkTable(detail::ByteView file, const LASheader& header,
                                                    const LazLayout& layout);

}  // namespace zorv::las
