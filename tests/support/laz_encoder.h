#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/las_bytes.h"

#include "zorv/cloud/las/adaptive_model.h"
#include "zorv/cloud/las/las_point.h"
#include "zorv/cloud/las/point14_decoder.h"
#include "zorv/cloud/las/running_median.h"

/// Writes layered chunks of LAZ for the tests: coordinates, return number, channel, intensity and colours change from
/// point to point, all else stays as in the first one.
namespace laz {

using namespace zorv::las;
using las_bytes::Append;

class ArithmeticEncoder {
  public:
    template <unsigned int kRoom>
    void Symbol(AdaptiveSymbols<kRoom>& model, std::uint32_t symbol) {
        const std::uint32_t unit = length >> kSymbolPrecision;
        const std::uint32_t start = model.Start(symbol) * unit;
        const std::uint32_t end = symbol < model.Last() ? model.Start(symbol + 1) * unit : length;
        Shrink(start, end - start);
        model.Count(symbol);
    }
    void Bit(AdaptiveBit& model, bool one) {
        const std::uint32_t zero = model.ZeroShare() * (length >> AdaptiveBit::kPrecision);
        one ? Shrink(zero, length - zero) : Shrink(0, zero);
        model.Count(one);
    }
    void Bits(unsigned int count, std::uint32_t value) {
        if (count > 19) {
            Shrink((value & 0xffff) * (length >> 16), length >> 16);
            value >>= 16;
            count -= 16;
        }
        Shrink(value * (length >> count), length >> count);
    }
    /// With the four bytes that the decoder reads ahead.
    std::string Finish() {
        for (int i = 0; i < 4; ++i, base <<= 8)
            code += static_cast<char>(base >> 24);
        return code;
    }

  private:
    void Shrink(std::uint32_t start, std::uint32_t newLength) {
        const std::uint32_t before = base;
        base += start;
        length = newLength;
        if (base < before) {
            std::size_t at = code.size();
            while (static_cast<unsigned char>(code[--at]) == 0xff)
                code[at] = '\0';
            ++code[at];
        }
        for (; length < 1u << 24; length <<= 8, base <<= 8)
            code += static_cast<char>(base >> 24);
    }

    std::string code;
    std::uint32_t base = 0;
    std::uint32_t length = 0xffffffffu;
};

/// The difference, wrapped around as the format does.
inline std::int32_t Step(std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from));
}

class IntegerEncoder {
  public:
    IntegerEncoder(unsigned int numberBits, unsigned int contexts)
        : width(numberBits), lengths(contexts, AdaptiveSymbols<33>(numberBits + 1)) {}

    /// Returns the bits of the correction.
    unsigned int Encode(ArithmeticEncoder& encoder, std::int32_t prediction, std::int32_t value, unsigned int context) {
        std::int32_t c = Step(prediction, value);
        if (width == 16) c = static_cast<std::int16_t>(c);
        const std::int64_t size = c <= 0 ? -std::int64_t{c} : c - 1;
        const auto bits = static_cast<unsigned int>(std::bit_width(static_cast<std::uint32_t>(size)));
        encoder.Symbol(lengths[context], bits);
        if (bits == 0) encoder.Bit(zeroOrOne, c == 1);
        if (bits == 0 || bits == 32) return bits;
        const auto place = static_cast<std::uint32_t>(c < 0 ? c + static_cast<std::int32_t>((1u << bits) - 1) : c - 1);
        const unsigned int lower = bits > 8 ? bits - 8 : 0;
        auto& upper = uppers[bits];
        if (!upper.IsBegun()) upper.Begin(1u << (bits - lower));
        encoder.Symbol(upper, place >> lower);
        if (lower > 0) encoder.Bits(lower, place & ((1u << lower) - 1));
        return bits;
    }

  private:
    unsigned int width;
    AdaptiveBit zeroOrOne;
    std::vector<AdaptiveSymbols<33>> lengths;
    std::array<AdaptiveSymbols<256>, 32> uppers;
};

/// A record of formats 6 to 10: one of kReturns returns, all of them at the same time.
struct Record {
    static constexpr unsigned int kReturns = 9;
    LASpoint point;
    unsigned int returnNumber = 1;
    unsigned int channel = 0;
};

struct Channel {
    explicit Channel(const Record& like) : last(like) {
        heights.fill(like.point.Z);
        intensities.fill(like.point.intensity);
    }
    Record last;
    std::vector<AdaptiveSymbols<128>> changed{4, AdaptiveSymbols<128>(128)};
    AdaptiveSymbols<3> step{3};
    AdaptiveSymbols<13> numberStep{13};
    IntegerEncoder x{32, 2}, y{32, 22}, z{32, 20}, intensity{16, 4};
    std::array<RunningMedian, 6> xSteps, ySteps;
    std::array<std::int32_t, 8> heights;
    std::array<std::uint16_t, 4> intensities;
};

struct ColorChannel {
    explicit ColorChannel(const LASpoint& like) : last(like) {}
    LASpoint last;
    AdaptiveSymbols<128> changed{128};
    std::vector<AdaptiveSymbols<256>> bytes{6, AdaptiveSymbols<256>(256)};
};

/// One chunk: the layers of its records.
class ChunkEncoder {
  public:
    ChunkEncoder(unsigned int version, const Record& first)
        : exactChannels(version >= 4), current(first.channel), colorCurrent(first.channel) {
        channels.try_emplace(current, first);
        colors.try_emplace(current, first.point);
    }

    void Add(const Record& record) {
        Channel& before = channels.at(current);
        Channel& channel = channels.try_emplace(record.channel, before.last).first->second;
        const bool switches = record.channel != current;
        const unsigned int difference = (record.returnNumber + 16 - channel.last.returnNumber) % 16;
        const std::uint32_t numberChange = difference == 15 ? 2 : (difference < 2 ? difference : 3);
        xy.Symbol(before.changed[Place(before.last)], numberChange | (switches ? 64u : 0u));
        if (switches) xy.Symbol(before.step, (record.channel + 3 - current) % 4);
        if (numberChange == 3) xy.Symbol(channel.numberStep, difference - 2);
        current = record.channel;
        AddPoint(channel, record);
        AddColor(record.point, exactChannels || switches ? current : 0);
        channel.last = record;
    }

    ArithmeticEncoder xy, z, intensity, rgb;

  private:
    /// First, last, or between.
    static unsigned int Place(const Record& record) {
        return (record.returnNumber == 1 ? 1u : 0u) | (record.returnNumber >= Record::kReturns ? 2u : 0u);
    }

    void AddPoint(Channel& to, const Record& record) {
        const LASpoint& point = record.point;
        const std::size_t context = kReturnContext14[Record::kReturns][record.returnNumber];
        const std::int32_t xStep = Step(to.last.point.X, point.X);
        const unsigned int xBits = to.x.Encode(xy, to.xSteps[context].Get(), xStep, 0);
        to.xSteps[context].Add(xStep);
        const std::int32_t yStep = Step(to.last.point.Y, point.Y);
        const unsigned int yBits = to.y.Encode(xy, to.ySteps[context].Get(), yStep, std::min(xBits / 2 * 2, 20u));
        to.ySteps[context].Add(yStep);
        const int behind = static_cast<int>(Record::kReturns) - static_cast<int>(record.returnNumber);
        std::int32_t& height = to.heights[static_cast<std::size_t>(std::min(std::abs(behind), 7))];
        to.z.Encode(z, std::exchange(height, point.Z), point.Z, std::min((xBits + yBits) / 2 / 2 * 2, 18u));
        const unsigned int place = record.returnNumber == 1 ? 2 : (behind <= 0 ? 1 : 0);
        std::uint16_t& before = to.intensities[place];
        to.intensity.Encode(intensity, std::exchange(before, point.intensity), point.intensity, place);
    }

    /// All six bytes, whether changed or not, against what the decoder will have seen before.
    void AddColor(const LASpoint& point, unsigned int channel) {
        LASpoint* last = &colors.at(colorCurrent).last;
        if (channel != colorCurrent) {
            const auto [entry, isNew] = colors.try_emplace(channel, *last);
            if (isNew || exactChannels) last = &entry->second.last;
            colorCurrent = channel;
        }
        ColorChannel& models = colors.at(colorCurrent);
        rgb.Symbol(models.changed, 127);
        const auto add = [&](unsigned int color, unsigned int half, int expectedChange) {
            const int before = last->rgb[color] >> (8 * half) & 0xff;
            const int now = point.rgb[color] >> (8 * half) & 0xff;
            const int expected = std::clamp(before + expectedChange, 0, 255);
            rgb.Symbol(models.bytes[2 * color + half], static_cast<std::uint32_t>(now - expected) & 0xff);
            return now - before;
        };
        const int red[] = {add(0, 0, 0), add(0, 1, 0)};
        for (const unsigned int half : {0u, 1u}) {
            const int green = add(1, half, red[half]);
            add(2, half, (red[half] + green) / 2);
        }
        *last = point;
    }

    bool exactChannels;
    unsigned int current;
    unsigned int colorCurrent;
    std::map<unsigned int, Channel> channels;
    std::map<unsigned int, ColorChannel> colors;
};

/// The groups of a record: the points, with colours the colours, and others that stay as they are.
struct Groups {
    las_bytes::Items items;
    std::size_t layers;
    bool hasColors;
};

/// The bytes of a chunk: first record, number of points, sizes of the layers, layers.
inline std::string Chunk(const Groups& groups, const std::vector<Record>& records) {
    const Record& first = records.front();
    std::string bytes;
    for (const std::int32_t number : {first.point.X, first.point.Y, first.point.Z})
        Append(bytes, number);
    Append(bytes, first.point.intensity);
    bytes += static_cast<char>(first.returnNumber | Record::kReturns << 4);
    bytes += static_cast<char>(first.channel << 4);
    bytes.append(14, '\x22');
    if (groups.hasColors) Append(bytes, first.point.rgb);
    bytes.resize(las_bytes::RecordLength(groups.items), '\x33');

    ChunkEncoder encoder(groups.items.front().version, first);
    std::for_each(records.begin() + 1, records.end(), [&](const Record& record) { encoder.Add(record); });
    std::vector<std::string> layers(groups.layers);
    layers[0] = encoder.xy.Finish();
    layers[1] = encoder.z.Finish();
    layers[4] = encoder.intensity.Finish();
    if (groups.hasColors) layers[9] = encoder.rgb.Finish();
    Append(bytes, static_cast<std::uint32_t>(records.size()));
    for (const std::string& layer : layers)
        Append(bytes, static_cast<std::uint32_t>(layer.size()));
    for (const std::string& layer : layers)
        bytes += layer;
    return bytes;
}

/// The table behind chunks of any number of points.
inline std::string ChunkTable(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& pointsAndBytes) {
    std::string bytes;
    Append(bytes, std::uint32_t{0});
    Append(bytes, static_cast<std::uint32_t>(pointsAndBytes.size()));
    ArithmeticEncoder encoder;
    IntegerEncoder numbers(32, 2);
    std::pair<std::int32_t, std::int32_t> last{0, 0};
    for (const std::pair<std::int32_t, std::int32_t> chunk : pointsAndBytes) {
        numbers.Encode(encoder, last.first, chunk.first, 0);
        numbers.Encode(encoder, last.second, chunk.second, 1);
        last = chunk;
    }
    return bytes + encoder.Finish();
}

}  // namespace laz
