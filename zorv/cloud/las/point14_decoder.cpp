#include "zorv/cloud/las/point14_decoder.h"

#include <algorithm>

namespace zorv::las {

namespace {

using detail::LoadNumber;

// Bits of the symbol that tells what has changed; the lowest two are about the return number.
enum Changes : std::uint32_t {
    kReturnNumber = 3,
    kNumberOfReturns = 4,
    kGpsTime = 16,
    kScannerChannel = 64,
};

std::int32_t Sum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace

struct Point14Decoder::Channel {
    // The last point of the channel.
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Z = 0;
    std::uint16_t lastIntensity = 0;
    unsigned int returnNumber = 0;
    unsigned int returns = 0;
    bool newTime = false;

    bool used = false;
    std::array<AdaptiveSymbols<128>, 8> changed;
    AdaptiveSymbols<3> channelStep;
    SymbolTable<16, 16> returnsAfter;
    SymbolTable<16, 16> returnNumberAfter;
    AdaptiveSymbols<13> returnNumberAtSameTime;
    IntegerDecoder x{32, 2};
    IntegerDecoder y{32, 22};
    IntegerDecoder z{32, 20};
    IntegerDecoder intensity{16, 4};
    std::array<RunningMedian, 12> xSteps;
    std::array<RunningMedian, 12> ySteps;
    std::array<std::int32_t, 8> heights{};
    std::array<std::uint16_t, 8> intensities{};

    void Restart() {
        used = true;
        newTime = false;
        for (auto& model : changed)
            model.Begin(128);
        channelStep.Begin(3);
        returnsAfter.Restart();
        returnNumberAfter.Restart();
        returnNumberAtSameTime.Begin(13);
        for (IntegerDecoder* number : {&x, &y, &z, &intensity})
            number->Restart();
        xSteps.fill({});
        ySteps.fill({});
        heights.fill(Z);
        intensities.fill(lastIntensity);
    }

    /// Which statistics the next point's changes follow: first, last and whether the time was new.
    unsigned int ChangeContext() const {
        return (returnNumber == 1 ? 1u : 0u) | (returnNumber >= returns ? 2u : 0u) | (newTime ? 4u : 0u);
    }
    void DecodeReturns(ArithmeticDecoder& decoder, std::uint32_t changes, bool timeIsNew);
    void DecodeXy(ArithmeticDecoder& decoder, unsigned int context, unsigned int single);
};

void Point14Decoder::Drop::operator()(Channel* channel) const {
    const std::default_delete<Channel> drop;
    drop(channel);
}

void Point14Decoder::Channel::DecodeReturns(ArithmeticDecoder& decoder, std::uint32_t changes, bool timeIsNew) {
    if (changes & kNumberOfReturns) returns = decoder.Symbol(returnsAfter[returns]);
    switch (changes & kReturnNumber) {
        case 1:
            returnNumber += 1;
            break;
        case 2:
            returnNumber += 15;
            break;
        case 3:
            if (timeIsNew) {
                returnNumber = decoder.Symbol(returnNumberAfter[returnNumber]);
            } else {
                returnNumber += decoder.Symbol(returnNumberAtSameTime) + 2;
            }
            break;
        default:
            break;
    }
    returnNumber %= 16;
}

void Point14Decoder::Channel::DecodeXy(ArithmeticDecoder& decoder, unsigned int context, unsigned int single) {
    const std::int32_t xStep = x.Decode(decoder, xSteps[context].Get(), single);
    xSteps[context].Add(xStep);
    X = Sum(X, xStep);
    const unsigned int bits = std::min(x.CorrectionBits() & ~1u, 20u);
    const std::int32_t yStep = y.Decode(decoder, ySteps[context].Get(), single + bits);
    ySteps[context].Add(yStep);
    Y = Sum(Y, yStep);
}

Point14Decoder::Channel& Point14Decoder::Begin(unsigned int channel, const Channel& like) {
    auto& begun = channels[channel];
    if (!begun) begun.reset(std::make_unique<Channel>().release());
    begun->X = like.X;
    begun->Y = like.Y;
    begun->Z = like.Z;
    begun->lastIntensity = like.lastIntensity;
    begun->returnNumber = like.returnNumber;
    begun->returns = like.returns;
    begun->Restart();
    return *begun;
}

void Point14Decoder::Start(const std::uint8_t* raw, LASpoint& point) {
    for (auto& channel : channels) {
        if (channel) channel->used = false;
    }
    current = raw[15] >> 4 & 3u;
    switched = false;
    auto& first = channels[current];
    if (!first) first.reset(std::make_unique<Channel>().release());
    first->X = LoadNumber<std::int32_t>(raw);
    first->Y = LoadNumber<std::int32_t>(raw + 4);
    first->Z = LoadNumber<std::int32_t>(raw + 8);
    first->lastIntensity = LoadNumber<std::uint16_t>(raw + 12);
    first->returnNumber = raw[14] & 15u;
    first->returns = raw[14] >> 4;
    first->Restart();
    point.X = first->X;
    point.Y = first->Y;
    point.Z = first->Z;
    point.intensity = first->lastIntensity;
}

Point14Decoder::Channel& Point14Decoder::Switch(ArithmeticDecoder& decoder) {
    Channel& before = *channels[current];
    current = (current + decoder.Symbol(before.channelStep) + 1) % kChannels;
    const auto& channel = channels[current];
    return channel && channel->used ? *channel : Begin(current, before);
}

void Point14Decoder::Next(Layers& layers, LASpoint& point) {
    Channel* channel = channels[current].get();
    ArithmeticDecoder decoder = layers.xy;
    const std::uint32_t changes = decoder.Symbol(channel->changed[channel->ChangeContext()]);
    switched = (changes & kScannerChannel) != 0;
    if (switched) channel = &Switch(decoder);
    const bool timeIsNew = (changes & kGpsTime) != 0;
    channel->DecodeReturns(decoder, changes, timeIsNew);

    const unsigned int number = channel->returnNumber;
    const unsigned int count = channel->returns;
    const unsigned int single = count == 1 ? 1 : 0;
    const unsigned int newTime = timeIsNew ? 1 : 0;
    channel->DecodeXy(decoder, 2u * kReturnContext14[count][number] + newTime, single);
    layers.xy = decoder;
    if (layers.hasZ) {
        const unsigned int bits = (channel->x.CorrectionBits() + channel->y.CorrectionBits()) / 2;
        std::int32_t& height = channel->heights[std::min(count > number ? count - number : number - count, 7u)];
        decoder = layers.z;
        height = channel->z.Decode(decoder, height, single + std::min(bits & ~1u, 18u));
        channel->Z = height;
        layers.z = decoder;
    }
    if (layers.hasIntensity) {
        const unsigned int place = (number == 1 ? 2u : 0u) + (number >= count ? 1u : 0u);
        std::uint16_t& intensity = channel->intensities[2 * place + newTime];
        decoder = layers.intensity;
        intensity = static_cast<std::uint16_t>(channel->intensity.Decode(decoder, intensity, place));
        channel->lastIntensity = intensity;
        layers.intensity = decoder;
    }
    channel->newTime = timeIsNew;
    point.X = channel->X;
    point.Y = channel->Y;
    point.Z = channel->Z;
    point.intensity = channel->lastIntensity;
}

}  // namespace zorv::las
