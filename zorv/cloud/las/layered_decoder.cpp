#include <cstring>
#include <vector>

#include "zorv/cloud/las/chunk_decoder.h"
#include "zorv/cloud/las/color14_decoder.h"
#include "zorv/cloud/las/point14_decoder.h"

namespace zorv::las {

namespace {

using detail::ByteView;
using detail::NumberAt;

// The layers of the first group: XY with returns, Z, classification, flags, intensity, scan angle, user data, source,
// time. A group of colours has one, infrared one more, a waveform one, and each extra byte its own.
constexpr std::size_t kPointLayers = 9;
constexpr std::size_t kXyLayer = 0;
constexpr std::size_t kZLayer = 1;
constexpr std::size_t kIntensityLayer = 4;

std::size_t LayersOf(const LazItem& item) {
    switch (item.type) {
        case LazItem::kPoint14:
            return kPointLayers;
        case LazItem::kRgbNir14:
            return 2;
        case LazItem::kBytes14:
            return item.size;
        default:
            return 1;
    }
}

/// Reads the first record, the number of points, the sizes of the layers, and then the few layers that are needed.
class LayeredDecoder final : public ChunkDecoder {
  public:
    explicit LayeredDecoder(const LazLayout& layout) {
        for (const LazItem& item : layout.items) {
            if (!colors && (item.type == LazItem::kRgb14 || item.type == LazItem::kRgbNir14)) {
                colors = std::make_unique<Color14Decoder>(item.version);
                colorOffset = recordLength;
                colorLayer = layerCount;
            }
            recordLength += item.size;
            layerCount += LayersOf(item);
        }
    }

    bool Begin(ByteView chunk) override {
        const std::uint64_t sizesAt = recordLength + sizeof(std::uint32_t);
        std::uint64_t at = sizesAt + sizeof(std::uint32_t) * layerCount;
        if (chunk.size() < at) return false;
        announced = NumberAt<std::uint32_t>(chunk, recordLength);
        layers = {};
        colorCode = {};
        hasColor = false;
        for (std::size_t layer = 0; layer < layerCount; ++layer) {
            const auto size = NumberAt<std::uint32_t>(chunk, sizesAt + sizeof(std::uint32_t) * layer);
            if (size > chunk.size() - at) return false;
            Open(layer, chunk.subspan(static_cast<std::size_t>(at), size));
            at += size;
        }
        used = static_cast<std::size_t>(at);

        last = {};
        points14.Start(chunk.data(), last);
        if (colors) {
            std::memcpy(last.rgb, chunk.data() + colorOffset, sizeof last.rgb);
            colors->Start(chunk.data() + colorOffset, points14.ScannerChannel());
        }
        atFirst = true;
        return true;
    }

    std::size_t Next(std::span<LASpoint> points) override {
        std::size_t count = 0;
        if (atFirst && !points.empty()) {
            points[count++] = last;
            atFirst = false;
        }
        for (; count < points.size(); ++count) {
            points14.Next(layers, last);
            if (hasColor) colors->Next(colorCode, points14.ScannerChannel(), points14.HasSwitched(), last.rgb);
            if (layers.IsExhausted() || (hasColor && colorCode.IsExhausted())) break;
            points[count] = last;
        }
        return count;
    }

    std::optional<std::uint32_t> Announced() const override { return announced; }
    std::size_t Used() const override { return used; }

  private:
    /// A layer without bytes has the value of the first record throughout.
    void Open(std::size_t layer, ByteView code) {
        if (layer == kXyLayer) layers.xy = ArithmeticDecoder(code);
        if (code.empty()) return;
        if (layer == kZLayer) {
            layers.z = ArithmeticDecoder(code);
            layers.hasZ = true;
        } else if (layer == kIntensityLayer) {
            layers.intensity = ArithmeticDecoder(code);
            layers.hasIntensity = true;
        } else if (colors && layer == colorLayer) {
            colorCode = ArithmeticDecoder(code);
            hasColor = true;
        }
    }

    std::size_t recordLength = 0;
    std::size_t layerCount = 0;
    std::size_t colorOffset = 0;
    std::size_t colorLayer = 0;
    std::unique_ptr<Color14Decoder> colors;
    Point14Decoder points14;
    Point14Decoder::Layers layers;
    ArithmeticDecoder colorCode;
    bool hasColor = false;
    std::uint32_t announced = 0;
    std::size_t used = 0;
    LASpoint last;
    bool atFirst = false;
};

}  // namespace

std::unique_ptr<ChunkDecoder> MakeLayeredDecoder(const LazLayout& layout) {
    return std::make_unique<LayeredDecoder>(layout);
}

}  // namespace zorv::las
