#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#ifdef ZORV_HAVE_LASLIB
#include <lasreader.hpp>
#else
#include "zorv/cloud/las/las_reader.h"
#endif
#include "zorv/cloud/las/las_point.h"

/// LAS and LAZ through LASlib where the build found one, else through the reader of our own.
namespace zorv::detail {

#ifdef ZORV_HAVE_LASLIB

using LasOpener = ::LASreadOpener;
using LasReader = ::LASreader;

inline std::unique_ptr<LasReader> OpenLas(LasOpener& opener) {
    return std::unique_ptr<LasReader>(opener.open());
}

/// Reads the next points and returns how many; fewer than asked only at the end.
inline std::size_t ReadLasPoints(LasReader& reader, std::span<las::LASpoint> points) {
    std::size_t count = 0;
    while (count < points.size() && reader.read_point()) {
        las::LASpoint& to = points[count++];
        to.X = reader.point.get_X();
        to.Y = reader.point.get_Y();
        to.Z = reader.point.get_Z();
        to.intensity = reader.point.get_intensity();
        std::copy_n(reader.point.rgb, 3, to.rgb);
    }
    return count;
}

#else

using LasOpener = las::LASreadOpener;
using LasReader = las::LASreader;

inline std::unique_ptr<LasReader> OpenLas(LasOpener& opener) {
    return opener.open();
}

/// Reads the next points and returns how many; fewer than asked only at the end.
inline std::size_t ReadLasPoints(LasReader& reader, std::span<las::LASpoint> points) {
    return reader.read_points(points);
}

#endif

/// How many points to make room for before reading. A compressed point takes a byte or more in all but the dullest
/// clouds, so a count beyond that is rather a lie, and harmless where it is not.
inline std::size_t LasPointsToReserve(const LasReader& reader, std::uint64_t fileSize) {
    const std::int64_t count = std::max<std::int64_t>(0, static_cast<std::int64_t>(reader.npoints));
    return static_cast<std::size_t>(std::min(static_cast<std::uint64_t>(count), fileSize));
}

}  // namespace zorv::detail
