#include <algorithm>
#include <cstring>

#include "zorv/cloud/las/point_source.h"

namespace zorv::las {

namespace {

using detail::ByteView;
using detail::LoadNumber;

// Every format begins with the three coordinates and the intensity.
template <bool kColors>
void Unpack(const std::uint8_t* record, std::size_t length, unsigned int color, std::span<LASpoint> points) {
    for (LASpoint& point : points) {
        point.X = LoadNumber<std::int32_t>(record);
        point.Y = LoadNumber<std::int32_t>(record + 4);
        point.Z = LoadNumber<std::int32_t>(record + 8);
        point.intensity = LoadNumber<std::uint16_t>(record + 12);
        if constexpr (kColors) {
            std::memcpy(point.rgb, record + color, sizeof point.rgb);
        } else {
            std::memset(point.rgb, 0, sizeof point.rgb);
        }
        record += length;
    }
}

class PlainPoints final : public PointSource {
  public:
    PlainPoints(ByteView records, std::size_t recordLength, unsigned int colorOffset)
        : rest(records), length(recordLength), color(colorOffset) {}

    std::size_t Read(std::span<LASpoint> points) override {
        points = points.first(static_cast<std::size_t>(std::min<std::uint64_t>(points.size(), Capacity())));
        color > 0 ? Unpack<true>(rest.data(), length, color, points) : Unpack<false>(rest.data(), length, 0, points);
        rest = rest.subspan(points.size() * length);
        return points.size();
    }
    std::uint64_t Capacity() const override { return rest.size() / length; }

  private:
    ByteView rest;
    std::size_t length;
    unsigned int color;
};

}  // namespace

std::unique_ptr<PointSource> OpenPlainPoints(ByteView file, const LASheader& header) {
    return std::make_unique<PlainPoints>(detail::BytesFrom(file, header.offset_to_point_data),
                                         header.point_data_record_length, ColorOffset(header.point_data_format));
}

}  // namespace zorv::las
