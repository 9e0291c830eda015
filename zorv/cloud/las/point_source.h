#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/las_point.h"
#include "zorv/core/byte_view.h"

namespace zorv::las {

/// Where the points of one file come from, one after the other.
class PointSource {
  public:
    virtual ~PointSource() = default;

    /// Fills from the front and returns how many; fewer than asked only when the bytes hold no more.
    virtual std::size_t Read(std::span<LASpoint> points) = 0;
    /// Points that the bytes can hold at most.
    virtual std::uint64_t Capacity() const = 0;
};

/// Records as they are. The bytes stay with the caller.
std::unique_ptr<PointSource> OpenPlainPoints(detail::ByteView file, const LASheader& header);

/// Compressed records; null when the file does not say how, or in a way that nobody writes.
std::unique_ptr<PointSource> OpenCompressedPoints(detail::ByteView file, const LASheader& header);

}  // namespace zorv::las
