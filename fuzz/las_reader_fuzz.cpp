// LAS and LAZ files: never more points than the bytes can hold, and the same ones however they are asked for.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "require.h"

#include "zorv/cloud/las/las_header.h"
#include "zorv/cloud/las/point_source.h"

namespace {

using namespace zorv::las;

constexpr std::size_t kMost = 3000;

std::vector<LASpoint> Read(zorv::detail::ByteView file, const LASheader& header, std::size_t step) {
    const auto source = header.compressed ? OpenCompressedPoints(file, header) : OpenPlainPoints(file, header);
    std::vector<LASpoint> points(kMost);
    std::size_t count = 0;
    const std::uint64_t capacity = source ? source->Capacity() : 0;
    while (source && count < kMost) {
        const std::size_t wanted = std::min(step, kMost - count);
        const std::size_t got = source->Read(std::span(points).subspan(count, wanted));
        Require(got <= wanted);
        count += got;
        if (got < wanted) break;
    }
    Require(count <= capacity);
    points.resize(count);
    return points;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In a block of its own size, so that a step too far shows.
    const std::vector<std::uint8_t> file(data, data + size);
    LASheader header;
    if (!ReadHeader(file, header)) return 0;
    const auto all = Read(file, header, kMost);
    const auto single = Read(file, header, 7);
    Require(all.size() == single.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        const LASpoint& a = all[i];
        const LASpoint& b = single[i];
        Require(a.X == b.X && a.Y == b.Y && a.Z == b.Z && a.intensity == b.intensity);
        Require(std::memcmp(a.rgb, b.rgb, sizeof a.rgb) == 0);
    }
    return 0;
}
