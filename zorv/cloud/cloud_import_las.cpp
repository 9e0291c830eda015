// Clouds of LAS and LAZ files.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <new>
#include <span>
#include <system_error>
#include <utility>

#include "zorv/cloud/cloud_builder.h"
#include "zorv/cloud/cloud_container.h"
#include "zorv/cloud/las/las_backend.h"
#include "zorv/cloud/read_progress.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

using zorv::las::LASpoint;

namespace {

constexpr int kCannotRead = 3;
constexpr int kNothingToOpen = 4;

/// Points that are asked for at a time; they stay in the innermost cache.
constexpr std::size_t kBlock = 512;

std::uint32_t HighByte(std::uint16_t value) {
    return value >> 8;
}

/// How the whole numbers of a file become coordinates.
struct Scaling {
    template <class Header>
    explicit Scaling(const Header& header)
        : xScale(header.x_scale_factor),
          yScale(header.y_scale_factor),
          zScale(header.z_scale_factor),
          xOffset(header.x_offset),
          yOffset(header.y_offset),
          zOffset(header.z_offset) {}

    double xScale, yScale, zScale;
    double xOffset, yOffset, zOffset;
};

ZoScanPoint3d Convert(const LASpoint& point, const Scaling& scaling) {
    const std::uint32_t color = HighByte(point.rgb[0]) | HighByte(point.rgb[1]) << 8 | HighByte(point.rgb[2]) << 16 |
                                HighByte(point.intensity) << 24;
    return {point.X * scaling.xScale + scaling.xOffset, point.Y * scaling.yScale + scaling.yOffset,
            point.Z * scaling.zScale + scaling.zOffset, static_cast<int>(color)};
}

/// The cloud of a file; null, with the reason, when it cannot be read.
std::unique_ptr<ZoPointCloud> ImportLas(const std::wstring& path, int& error) {
    const std::filesystem::path native = zorv::detail::NativePath(path);
    zorv::detail::LasOpener opener;
    opener.set_file_name(wstring2string(zorv::detail::WidePath(native)).c_str());
    if (!opener.active()) {
        error = kNothingToOpen;
        return nullptr;
    }
    const auto reader = zorv::detail::OpenLas(opener);
    if (!reader) {
        error = kCannotRead;
        return nullptr;
    }
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(native, failure);
    zorv::detail::CloudBuilder builder;
    builder.TryReserve(zorv::detail::LasPointsToReserve(*reader, failure ? 0 : size));
    zorv::detail::ReadProgress progress(ZoGetFilename(path), static_cast<std::uint64_t>(reader->npoints));
    const Scaling scaling(reader->header);
    const auto block = std::make_unique<LASpoint[]>(kBlock);
    for (std::size_t count = kBlock; count == kBlock;) {
        count = zorv::detail::ReadLasPoints(*reader, {block.get(), kBlock});
        for (const LASpoint& point : std::span(block.get(), count))
            builder.Add(Convert(point, scaling));
        progress.Reach(builder.Size());
    }
    reader->close();
    return builder.Finish();
}

}  // namespace

bool ZoPointCloudContainer::ReadLasLazFile(const std::wstring& path, ZoPointCloudReadResult& result) {
    std::unique_ptr<ZoPointCloud> cloud;
    try {
        cloud = ImportLas(path, result.error);
    } catch (const std::bad_alloc&) {
        result.error = static_cast<int>(std::errc::not_enough_memory);
    }
    return TakeImport(std::move(cloud), path, result);
}
