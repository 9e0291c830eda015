#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "zorv/cloud/las/las_point.h"
#include "zorv/cloud/las/laz_layout.h"
#include "zorv/core/byte_view.h"

namespace zorv::las {

/// Decodes one chunk after the other.
class ChunkDecoder {
  public:
    virtual ~ChunkDecoder() = default;

    /// Begins a chunk at the first of these bytes, which may go on behind it. False when they are too few.
    virtual bool Begin(detail::ByteView chunk) = 0;
    /// Decodes the next points and returns how many the bytes held.
    virtual std::size_t Next(std::span<LASpoint> points) = 0;
    /// Points that the chunk says to have, where it does.
    virtual std::optional<std::uint32_t> Announced() const { return std::nullopt; }
    /// Bytes of the chunk up to the last decoded point.
    virtual std::size_t Used() const = 0;
};

/// For formats 0 to 5: all of a record in one stream.
std::unique_ptr<ChunkDecoder> MakePointWiseDecoder(const LazLayout& layout);
/// For formats 6 to 10: a stream for each kind of attribute.
std::unique_ptr<ChunkDecoder> MakeLayeredDecoder(const LazLayout& layout);

}  // namespace zorv::las
