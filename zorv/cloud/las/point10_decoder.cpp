#include <algorithm>
#include <array>
#include <cstdlib>

#include "zorv/cloud/las/integer_decoder.h"
#include "zorv/cloud/las/item_decoder.h"
#include "zorv/cloud/las/running_median.h"
#include "zorv/cloud/las/symbol_table.h"

namespace zorv::las {

namespace {

using detail::LoadNumber;

// The context of a return: which one of how many, alike ones together. Indexed by their number, then by the return's.
constexpr std::uint8_t kReturnContext[8][8] = {
    {15, 14, 13, 12, 11, 10, 9, 8},  {14, 0, 1, 3, 6, 10, 10, 9},    {13, 1, 2, 4, 7, 11, 11, 10},
    {12, 3, 4, 5, 8, 12, 12, 11},    {11, 6, 7, 8, 9, 13, 13, 12},   {10, 10, 11, 12, 13, 14, 14, 13},
    {9, 10, 11, 12, 13, 14, 15, 14}, {8, 9, 10, 11, 12, 13, 14, 15},
};

/// The fields of the group that are decoded for the sake of those behind them.
struct Attributes {
    std::uint8_t returns = 0;  // return number in the low three bits, then the number of returns, then two flags
    std::uint8_t classification = 0;
    std::uint8_t scanAngle = 0;
    std::uint8_t userData = 0;
    std::uint16_t source = 0;

    explicit Attributes(const std::uint8_t* raw)
        : returns(raw[14]),
          classification(raw[15]),
          scanAngle(raw[16]),
          userData(raw[17]),
          source(LoadNumber<std::uint16_t>(raw + 18)) {}
    Attributes() = default;
};

void TakeCoordinates(const std::uint8_t* raw, LASpoint& point) {
    point.X = LoadNumber<std::int32_t>(raw);
    point.Y = LoadNumber<std::int32_t>(raw + 4);
    point.Z = LoadNumber<std::int32_t>(raw + 8);
    point.intensity = LoadNumber<std::uint16_t>(raw + 12);
}

std::int32_t Sum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// Version 2: contexts by returns, differences against the median of five.
class Point10Decoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t* raw, LASpoint& point) override {
        TakeCoordinates(raw, point);
        last = Attributes(raw);
        changed.Begin(64);
        for (auto& model : scanAngles)
            model.Begin(256);
        returns.Restart();
        classes.Restart();
        userData.Restart();
        for (IntegerDecoder* number : {&x, &y, &z, &intensity, &source})
            number->Restart();
        xSteps.fill({});
        ySteps.fill({});
        heights.fill(0);
        intensities.fill(0);
    }

    void Next(ArithmeticDecoder& outer, LASpoint& point) override {
        ArithmeticDecoder decoder = outer;
        const std::uint32_t changes = decoder.Symbol(changed);
        if (changes & 32) last.returns = static_cast<std::uint8_t>(decoder.Symbol(returns[last.returns]));
        const unsigned int number = last.returns & 7u;
        const unsigned int count = last.returns >> 3 & 7u;
        const unsigned int context = kReturnContext[count][number];
        const unsigned int single = count == 1 ? 1 : 0;
        if (changes & 16) {
            intensities[context] =
                static_cast<std::uint16_t>(intensity.Decode(decoder, intensities[context], std::min(context, 3u)));
        }
        point.intensity = intensities[context];
        if (changes & 15) DecodeRest(decoder, changes);

        const std::int32_t xStep = x.Decode(decoder, xSteps[context].Get(), single);
        xSteps[context].Add(xStep);
        point.X = Sum(point.X, xStep);
        const unsigned int xBits = x.CorrectionBits();
        const std::int32_t yStep = y.Decode(decoder, ySteps[context].Get(), single + std::min(xBits & ~1u, 20u));
        ySteps[context].Add(yStep);
        point.Y = Sum(point.Y, yStep);
        const unsigned int bits = (xBits + y.CorrectionBits()) / 2;
        std::int32_t& height = heights[count > number ? count - number : number - count];
        height = z.Decode(decoder, height, single + std::min(bits & ~1u, 18u));
        point.Z = height;
        outer = decoder;
    }

  private:
    void DecodeRest(ArithmeticDecoder& decoder, std::uint32_t changes) {
        if (changes & 8) last.classification = static_cast<std::uint8_t>(decoder.Symbol(classes[last.classification]));
        if (changes & 4) {
            const unsigned int direction = last.returns >> 6 & 1u;
            last.scanAngle = static_cast<std::uint8_t>(last.scanAngle + decoder.Symbol(scanAngles[direction]));
        }
        if (changes & 2) last.userData = static_cast<std::uint8_t>(decoder.Symbol(userData[last.userData]));
        if (changes & 1) last.source = static_cast<std::uint16_t>(source.Decode(decoder, last.source));
    }

    Attributes last;
    AdaptiveSymbols<64> changed;
    std::array<AdaptiveSymbols<256>, 2> scanAngles;
    SymbolTable<256, 256> returns;
    SymbolTable<256, 256> classes;
    SymbolTable<256, 256> userData;
    IntegerDecoder x{32, 2};
    IntegerDecoder y{32, 22};
    IntegerDecoder z{32, 20};
    IntegerDecoder intensity{16, 4};
    IntegerDecoder source{16};
    std::array<RunningMedian, 16> xSteps;
    std::array<RunningMedian, 16> ySteps;
    std::array<std::int32_t, 8> heights{};
    std::array<std::uint16_t, 16> intensities{};
};

/// Version 1: no contexts by returns, differences against the median of the last three.
class EarlyPoint10Decoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t* raw, LASpoint& point) override {
        TakeCoordinates(raw, point);
        last = Attributes(raw);
        changed.Begin(64);
        returns.Restart();
        classes.Restart();
        userData.Restart();
        for (IntegerDecoder* number : {&x, &y, &z, &intensity, &scanAngle, &source})
            number->Restart();
        xSteps.fill(0);
        ySteps.fill(0);
        oldest = 0;
    }

    void Next(ArithmeticDecoder& decoder, LASpoint& point) override {
        const std::int32_t xStep = x.Decode(decoder, Median(xSteps));
        point.X = Sum(point.X, xStep);
        const std::int32_t yStep = y.Decode(decoder, Median(ySteps), std::min(x.CorrectionBits(), 19u));
        point.Y = Sum(point.Y, yStep);
        const unsigned int bits = (x.CorrectionBits() + y.CorrectionBits()) / 2;
        point.Z = z.Decode(decoder, point.Z, std::min(bits, 19u));
        xSteps[oldest] = xStep;
        ySteps[oldest] = yStep;
        oldest = oldest < 2 ? oldest + 1 : 0;

        const std::uint32_t changes = decoder.Symbol(changed);
        if (changes & 32) point.intensity = static_cast<std::uint16_t>(intensity.Decode(decoder, point.intensity));
        if (changes & 16) last.returns = static_cast<std::uint8_t>(decoder.Symbol(returns[last.returns]));
        if (changes & 8) last.classification = static_cast<std::uint8_t>(decoder.Symbol(classes[last.classification]));
        if (changes & 4) {
            last.scanAngle = static_cast<std::uint8_t>(scanAngle.Decode(decoder, last.scanAngle, bits < 3 ? 1 : 0));
        }
        if (changes & 2) last.userData = static_cast<std::uint8_t>(decoder.Symbol(userData[last.userData]));
        if (changes & 1) last.source = static_cast<std::uint16_t>(source.Decode(decoder, last.source));
    }

  private:
    static std::int32_t Median(const std::array<std::int32_t, 3>& three) {
        return std::max(std::min(three[0], three[1]), std::min(std::max(three[0], three[1]), three[2]));
    }

    Attributes last;
    AdaptiveSymbols<64> changed;
    SymbolTable<256, 256> returns;
    SymbolTable<256, 256> classes;
    SymbolTable<256, 256> userData;
    IntegerDecoder x{32};
    IntegerDecoder y{32, 20};
    IntegerDecoder z{32, 20};
    IntegerDecoder intensity{16};
    IntegerDecoder scanAngle{8, 2};
    IntegerDecoder source{16};
    std::array<std::int32_t, 3> xSteps{};
    std::array<std::int32_t, 3> ySteps{};
    unsigned int oldest = 0;
};

}  // namespace

std::unique_ptr<ItemDecoder> MakePoint10Decoder(unsigned int version) {
    if (version == 1) return std::make_unique<EarlyPoint10Decoder>();
    return std::make_unique<Point10Decoder>();
}

}  // namespace zorv::las
