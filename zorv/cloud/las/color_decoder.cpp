#include <cstring>

#include "zorv/cloud/las/color_models.h"
#include "zorv/cloud/las/integer_decoder.h"
#include "zorv/cloud/las/item_decoder.h"

namespace zorv::las {

namespace {

/// Version 2.
class ColorDecoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t* raw, LASpoint& point) override {
        std::memcpy(point.rgb, raw, sizeof point.rgb);
        models.Restart();
    }
    void Next(ArithmeticDecoder& decoder, LASpoint& point) override { models.Decode(decoder, point.rgb); }

  private:
    ColorModels models;
};

/// Version 1: each byte against the same byte before.
class EarlyColorDecoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t* raw, LASpoint& point) override {
        std::memcpy(point.rgb, raw, sizeof point.rgb);
        changed.Begin(64);
        bytes.Restart();
    }
    void Next(ArithmeticDecoder& decoder, LASpoint& point) override {
        const std::uint32_t changes = decoder.Symbol(changed);
        for (unsigned int i = 0; i < 6; ++i) {
            if ((changes & 1u << i) == 0) continue;
            std::uint16_t& channel = point.rgb[i / 2];
            const unsigned int shift = 8 * (i % 2);
            const auto byte = static_cast<unsigned int>(bytes.Decode(decoder, channel >> shift & 0xff, i));
            channel = static_cast<std::uint16_t>((channel & ~(0xffu << shift)) | byte << shift);
        }
    }

  private:
    AdaptiveSymbols<64> changed;
    IntegerDecoder bytes{8, 6};
};

}  // namespace

std::unique_ptr<ItemDecoder> MakeColorDecoder(unsigned int version) {
    if (version == 1) return std::make_unique<EarlyColorDecoder>();
    return std::make_unique<ColorDecoder>();
}

}  // namespace zorv::las
