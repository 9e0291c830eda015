#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zorv/cloud/las/adaptive_model.h"
#include "zorv/cloud/las/las_point.h"
#include "zorv/cloud/las/point14_decoder.h"
#include "zorv/cloud/las/running_median.h"

/// Writes layered chunks of LAZ for the tests: coordinates, returns, intensity and colours change from point to point,
/// all else stays as in the first one.
namespace laz {

using namespace zorv::las;

template <class Number>
void Append(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

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
    /// As many bytes as the decoder takes.
    std::string Finish() {
        const bool oneByte = length > 2u << 24;
        oneByte ? Shrink(1u << 24, 1u << 23) : Shrink(1u << 23, 1u << 15);
        return code + std::string(oneByte ? 3 : 2, '\0');
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

    void Encode(ArithmeticEncoder& encoder, std::int32_t prediction, std::int32_t value, unsigned int context) {
        std::int32_t c = Step(prediction, value);
        if (width == 16) c = static_cast<std::int16_t>(c);
        bits = static_cast<unsigned int>(std::bit_width(static_cast<std::uint32_t>(c <= 0 ? -std::int64_t{c} : c - 1)));
        encoder.Symbol(lengths[context], bits);
        if (bits == 0) encoder.Bit(zeroOrOne, c == 1);
        if (bits == 0 || bits == 32) return;
        const auto place = static_cast<std::uint32_t>(c < 0 ? c + static_cast<std::int32_t>((1u << bits) - 1) : c - 1);
        const unsigned int lower = bits > 8 ? bits - 8 : 0;
        auto& upper = uppers[bits];
        if (!upper.IsBegun()) upper.Begin(1u << (bits - lower));
        encoder.Symbol(upper, place >> lower);
        if (lower > 0) encoder.Bits(lower, place & ((1u << lower) - 1));
    }

    unsigned int bits = 0;  ///< of the last correction

  private:
    unsigned int width;
    AdaptiveBit zeroOrOne;
    std::vector<AdaptiveSymbols<33>> lengths;
    std::array<AdaptiveSymbols<256>, 32> uppers;
};

/// A record of formats 6 to 10 as far as it varies here.
struct Record {
    LASpoint point;
    unsigned int returnNumber = 1;
    unsigned int returns = 1;
    unsigned int channel = 0;
    bool newTime = false;
};

struct Channel {
    explicit Channel(const Record& like) : last(like) {
        last.newTime = false;
        heights.fill(like.point.Z);
        intensities.fill(like.point.intensity);
    }
    Record last;
    std::vector<AdaptiveSymbols<128>> changed{8, AdaptiveSymbols<128>(128)};
    AdaptiveSymbols<3> step{3};
    std::map<unsigned int, AdaptiveSymbols<16>> returnsAfter, numberAfter;
    AdaptiveSymbols<13> numberAtSameTime{13};
    IntegerEncoder x{32, 2}, y{32, 22}, z{32, 20}, intensity{16, 4};
    std::array<RunningMedian, 12> xSteps, ySteps;
    std::array<std::int32_t, 8> heights{};
    std::array<std::uint16_t, 8> intensities{};
};

struct ColorChannel {
    std::array<std::uint16_t, 3> last{};
    AdaptiveSymbols<128> changed{128};
    std::vector<AdaptiveSymbols<256>> bytes{6, AdaptiveSymbols<256>(256)};
};

/// One chunk: the layers of its records.
class ChunkEncoder {
  public:
    ChunkEncoder(unsigned int version, const Record& first) : exactChannels(version >= 4), current(first.channel) {
        channels[current] = std::make_unique<Channel>(first);
        colorCurrent = current;
        colors[current] = std::make_unique<ColorChannel>();
        std::copy_n(first.point.rgb, 3, colors[current]->last.begin());
    }

    void Add(const Record& record) {
        Channel& before = *channels[current];
        const bool switches = record.channel != current;
        const bool isNew = !channels[record.channel];
        const Record& last = isNew ? before.last : channels[record.channel]->last;
        const unsigned int difference = (record.returnNumber + 16 - last.returnNumber) % 16;
        const std::uint32_t numberChange = difference == 15 ? 2 : (difference < 2 ? difference : 3);
        const std::uint32_t changes = numberChange | (record.returns != last.returns ? 4u : 0u) |
                                      (record.newTime ? 16u : 0u) | (switches ? 64u : 0u);
        const unsigned int context = (before.last.returnNumber == 1 ? 1u : 0u) |
                                     (before.last.returnNumber >= before.last.returns ? 2u : 0u) |
                                     (before.last.newTime ? 4u : 0u);
        xy.Symbol(before.changed[context], changes);
        if (switches) xy.Symbol(before.step, (record.channel + 3 - current) % 4);
        if (isNew) channels[record.channel] = std::make_unique<Channel>(before.last);
        current = record.channel;
        Channel& channel = *channels[current];
        if (changes & 4) xy.Symbol(Table(channel.returnsAfter, channel.last.returns), record.returns);
        if (numberChange == 3) {
            record.newTime ? xy.Symbol(Table(channel.numberAfter, channel.last.returnNumber), record.returnNumber)
                           : xy.Symbol(channel.numberAtSameTime, difference - 2);
        }
        AddPoint(channel, record);
        AddColor(record, switches);
        channel.last = record;
    }

    ArithmeticEncoder xy, z, intensity, rgb;

  private:
    static AdaptiveSymbols<16>& Table(std::map<unsigned int, AdaptiveSymbols<16>>& table, unsigned int key) {
        return table.try_emplace(key, 16u).first->second;
    }

    void AddPoint(Channel& to, const Record& record) {
        const LASpoint& point = record.point;
        const unsigned int n = record.returns;
        const unsigned int r = record.returnNumber;
        const unsigned int single = n == 1 ? 1 : 0;
        const unsigned int time = record.newTime ? 1 : 0;
        const unsigned int returnContext = 2u * kReturnContext14[n][r] + time;
        const std::int32_t xStep = Step(to.last.point.X, point.X);
        to.x.Encode(xy, to.xSteps[returnContext].Get(), xStep, single);
        to.xSteps[returnContext].Add(xStep);
        const std::int32_t yStep = Step(to.last.point.Y, point.Y);
        to.y.Encode(xy, to.ySteps[returnContext].Get(), yStep, single + std::min(to.x.bits / 2 * 2, 20u));
        to.ySteps[returnContext].Add(yStep);
        std::int32_t& height = to.heights[std::min(n > r ? n - r : r - n, 7u)];
        to.z.Encode(z, height, point.Z, single + std::min((to.x.bits + to.y.bits) / 2 / 2 * 2, 18u));
        height = point.Z;
        const unsigned int place = (r == 1 ? 2u : 0u) + (r >= n ? 1u : 0u);
        std::uint16_t& before = to.intensities[2 * place + time];
        to.intensity.Encode(intensity, before, point.intensity, place);
        before = point.intensity;
    }

    /// All six bytes, whether changed or not, against what the decoder will have seen before.
    void AddColor(const Record& record, bool switched) {
        std::array<std::uint16_t, 3>* last = &colors[colorCurrent]->last;
        const unsigned int next = exactChannels || switched ? record.channel : 0;
        if (next != colorCurrent) {
            const bool isNew = !colors[next];
            if (isNew) {
                colors[next] = std::make_unique<ColorChannel>();
                colors[next]->last = *last;
            }
            if (isNew || exactChannels) last = &colors[next]->last;
            colorCurrent = next;
        }
        ColorChannel& models = *colors[colorCurrent];
        rgb.Symbol(models.changed, 127);
        int change[2] = {0, 0};
        for (unsigned int c = 0; c < 3; ++c) {
            for (unsigned int half = 0; half < 2; ++half) {
                const int old = (*last)[c] >> (8 * half) & 0xff;
                const int now = record.point.rgb[c] >> (8 * half) & 0xff;
                const int expected = std::min(std::max(old + change[half], 0), 255);
                rgbDeferred[c][half] = {2 * c + half, static_cast<std::uint32_t>(now - expected) & 0xff};
                change[half] = c == 0 ? now - old : (change[half] + now - old) / 2;
            }
        }
        // Red's halves, then green and blue of the lower half, then of the upper one.
        for (const auto& [c, half] : {std::pair{0, 0}, {0, 1}, {1, 0}, {2, 0}, {1, 1}, {2, 1}})
            rgb.Symbol(models.bytes[rgbDeferred[c][half].first], rgbDeferred[c][half].second);
        std::copy_n(record.point.rgb, 3, last->begin());
    }

    bool exactChannels;
    unsigned int current;
    unsigned int colorCurrent;
    std::array<std::unique_ptr<Channel>, 4> channels;
    std::array<std::unique_ptr<ColorChannel>, 4> colors;
    std::pair<unsigned int, std::uint32_t> rgbDeferred[3][2];
};

/// The groups of fields behind the first one.
struct Groups {
    std::size_t colorBytes = 0;  ///< 6, or 8 with infrared, which has one more layer
    std::size_t restBytes = 0;   ///< of groups that stay as they are
    std::size_t restLayers = 0;
};

/// The bytes of a chunk: first record, number of points, sizes of the layers, layers.
inline std::string Chunk(unsigned int version, const Groups& groups, const std::vector<Record>& records) {
    const Record& first = records.front();
    std::string bytes;
    for (const std::int32_t number : {first.point.X, first.point.Y, first.point.Z})
        Append(bytes, number);
    Append(bytes, first.point.intensity);
    bytes += static_cast<char>(first.returnNumber | first.returns << 4);
    bytes += static_cast<char>(first.channel << 4);
    bytes.append(14, '\x11');
    std::string color(reinterpret_cast<const char*>(first.point.rgb), sizeof first.point.rgb);
    color.resize(groups.colorBytes, '\x22');
    bytes += color + std::string(groups.restBytes, '\x33');

    ChunkEncoder encoder(version, first);
    for (std::size_t i = 1; i < records.size(); ++i)
        encoder.Add(records[i]);
    const std::size_t colorLayers = groups.colorBytes > 0 ? groups.colorBytes / 2 - 2 : 0;
    std::vector<std::string> layers(9 + colorLayers + groups.restLayers);
    layers[0] = encoder.xy.Finish();
    layers[1] = encoder.z.Finish();
    layers[4] = encoder.intensity.Finish();
    if (colorLayers > 0) layers[9] = encoder.rgb.Finish();
    Append(bytes, static_cast<std::uint32_t>(records.size()));
    for (const std::string& layer : layers)
        Append(bytes, static_cast<std::uint32_t>(layer.size()));
    for (const std::string& layer : layers)
        bytes += layer;
    return bytes;
}

/// The table behind the chunks; points per chunk only where they vary.
inline std::string ChunkTable(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& pointsAndBytes, bool vary) {
    std::string bytes;
    Append(bytes, std::uint32_t{0});
    Append(bytes, static_cast<std::uint32_t>(pointsAndBytes.size()));
    ArithmeticEncoder encoder;
    IntegerEncoder numbers(32, 2);
    std::pair<std::uint32_t, std::uint32_t> last{0, 0};
    for (const auto& chunk : pointsAndBytes) {
        if (vary) {
            numbers.Encode(encoder, static_cast<std::int32_t>(last.first), static_cast<std::int32_t>(chunk.first), 0);
        }
        numbers.Encode(encoder, static_cast<std::int32_t>(last.second), static_cast<std::int32_t>(chunk.second), 1);
        last = chunk;
    }
    return bytes + encoder.Finish();
}

}  // namespace laz
