#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zorv/cloud/las/color_models.h"

namespace zorv::las {

/// Decodes the colours of formats 7, 8 and 10, each scanner channel by its own statistics.
class Color14Decoder {
  public:
    /// Whether a colour follows the last one of its own channel. In version 3 of the group it follows the one of
    /// whatever channel was in use before, and the channel counts as 0 unless it has just been switched to.
    explicit Color14Decoder(unsigned int version) : exactChannels(version >= 4) {}

    void Start(const std::uint8_t* raw, unsigned int channel) {
        channels = {};
        current = channel;
        std::memcpy(channels[current].last, raw, sizeof channels[current].last);
        Use(current);
    }

    void Next(ArithmeticDecoder& decoder, unsigned int channel, bool switched, std::uint16_t rgb[3]) {
        std::uint16_t* last = channels[current].last;
        const unsigned int next = exactChannels || switched ? channel : 0;
        if (next != current) {
            current = next;
            if (!channels[current].models) {
                std::memcpy(channels[current].last, last, sizeof channels[current].last);
                Use(current);
                last = channels[current].last;
            } else if (exactChannels) {
                last = channels[current].last;
            }
        }
        channels[current].models->Decode(decoder, last);
        std::memcpy(rgb, last, sizeof channels[current].last);
    }

  private:
    struct Channel {
        std::uint16_t last[3] = {0, 0, 0};
        std::unique_ptr<ColorModels> models;
    };

    void Use(unsigned int channel) {
        channels[channel].models = std::make_unique<ColorModels>();
        channels[channel].models->Restart();
    }

    std::array<Channel, 4> channels;
    unsigned int current = 0;
    bool exactChannels;
};

}  // namespace zorv::las
