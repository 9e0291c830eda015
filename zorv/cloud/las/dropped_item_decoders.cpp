#include <array>
#include <vector>

#include "zorv/cloud/las/integer_decoder.h"
#include "zorv/cloud/las/item_decoder.h"

namespace zorv::las {

namespace {

// Nothing of these groups is kept but what the way through the stream depends on.

class WavePacketDecoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t*, LASpoint&) override {
        descriptor.Begin(256);
        for (auto& model : offsetKinds)
            model.Begin(4);
        for (IntegerDecoder* number : {&offset, &size, &returnPoint, &direction})
            number->Restart();
        lastKind = 0;
    }
    void Next(ArithmeticDecoder& decoder, LASpoint&) override {
        decoder.Symbol(descriptor);
        lastKind = decoder.Symbol(offsetKinds[lastKind]);
        if (lastKind == kByDifference) offset.Decode(decoder, 0);
        if (lastKind == kWhole) decoder.SkipLong();
        size.Decode(decoder, 0);
        returnPoint.Decode(decoder, 0);
        for (unsigned int axis = 0; axis < 3; ++axis)
            direction.Decode(decoder, 0, axis);
    }

  private:
    static constexpr std::uint32_t kByDifference = 2;
    static constexpr std::uint32_t kWhole = 3;

    AdaptiveSymbols<256> descriptor;
    std::array<AdaptiveSymbols<4>, 4> offsetKinds;
    IntegerDecoder offset{32};
    IntegerDecoder size{32};
    IntegerDecoder returnPoint{32};
    IntegerDecoder direction{32, 3};
    std::uint32_t lastKind = 0;
};

/// Version 2: each byte has its own statistics, made when the stream comes to it.
class ExtraByteDecoder final : public ItemDecoder {
  public:
    explicit ExtraByteDecoder(std::size_t bytes) : models(bytes) {}

    void Start(const std::uint8_t*, LASpoint&) override {
        for (auto& model : models) {
            if (model) model->Begin(256);
        }
    }
    void Next(ArithmeticDecoder& decoder, LASpoint&) override {
        for (auto& model : models) {
            if (decoder.IsExhausted()) return;
            if (!model) model = std::make_unique<AdaptiveSymbols<256>>(256);
            decoder.Symbol(*model);
        }
    }

  private:
    std::vector<std::unique_ptr<AdaptiveSymbols<256>>> models;
};

class EarlyExtraByteDecoder final : public ItemDecoder {
  public:
    explicit EarlyExtraByteDecoder(std::size_t bytes) : count(static_cast<unsigned int>(bytes)), numbers(8, count) {}

    void Start(const std::uint8_t*, LASpoint&) override { numbers.Restart(); }
    void Next(ArithmeticDecoder& decoder, LASpoint&) override {
        for (unsigned int i = 0; i < count; ++i)
            numbers.Decode(decoder, 0, i);
    }

  private:
    unsigned int count;
    IntegerDecoder numbers;
};

}  // namespace

std::unique_ptr<ItemDecoder> MakeWavePacketDecoder() {
    return std::make_unique<WavePacketDecoder>();
}

std::unique_ptr<ItemDecoder> MakeExtraByteDecoder(unsigned int version, std::size_t bytes) {
    if (version == 1) return std::make_unique<EarlyExtraByteDecoder>(bytes);
    return std::make_unique<ExtraByteDecoder>(bytes);
}

}  // namespace zorv::las
