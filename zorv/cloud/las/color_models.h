#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "zorv/cloud/las/arithmetic_decoder.h"

namespace zorv::las {

/// Decodes a colour against the one before. One symbol tells which of the six bytes have changed and whether the
/// colour is a grey; green and blue are expected to have changed as red has.
class ColorModels {
  public:
    void Restart() {
        changed.Begin(128);
        for (auto& model : bytes)
            model.Begin(256);
    }

    void Decode(ArithmeticDecoder& outer, std::uint16_t rgb[3]) {
        ArithmeticDecoder decoder = outer;
        const std::uint32_t changes = decoder.Symbol(changed);
        int red[2] = {rgb[0] & 0xff, rgb[0] >> 8};
        const int redBefore[2] = {red[0], red[1]};
        for (unsigned int half = 0; half < 2; ++half) {
            if (changes & 1u << half) red[half] = Next(decoder, half, red[half]);
        }
        rgb[0] = Join(red);
        if (changes & kNoGrey) {
            int green[2] = {rgb[1] & 0xff, rgb[1] >> 8};
            int blue[2] = {rgb[2] & 0xff, rgb[2] >> 8};
            for (unsigned int half = 0; half < 2; ++half) {
                const int greenBefore = green[half];
                int change = red[half] - redBefore[half];
                if (changes & 4u << half) green[half] = Next(decoder, 2 + half, Clamp(green[half] + change));
                if (changes & 16u << half) {
                    change = (change + green[half] - greenBefore) / 2;
                    blue[half] = Next(decoder, 4 + half, Clamp(blue[half] + change));
                }
            }
            rgb[1] = Join(green);
            rgb[2] = Join(blue);
        } else {
            rgb[1] = rgb[0];
            rgb[2] = rgb[0];
        }
        outer = decoder;
    }

  private:
    static constexpr std::uint32_t kNoGrey = 64;

    static int Clamp(int value) { return std::clamp(value, 0, 255); }
    static std::uint16_t Join(const int halves[2]) { return static_cast<std::uint16_t>(halves[1] << 8 | halves[0]); }
    int Next(ArithmeticDecoder& decoder, unsigned int model, int expected) {
        return (expected + static_cast<int>(decoder.Symbol(bytes[model]))) & 0xff;
    }

    AdaptiveSymbols<128> changed;
    std::array<AdaptiveSymbols<256>, 6> bytes;
};

}  // namespace zorv::las
