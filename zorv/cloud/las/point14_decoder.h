#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "zorv/cloud/las/integer_decoder.h"
#include "zorv/cloud/las/las_point.h"
#include "zorv/cloud/las/running_median.h"
#include "zorv/cloud/las/symbol_table.h"

namespace zorv::las {

/// The context of a return: which one of how many, alike ones together. Indexed by their number, then by the return's.
inline constexpr std::uint8_t kReturnContext14[16][16] = {
    {0, 1, 2, 3, 4, 5, 3, 4, 4, 5, 5, 5, 5, 5, 5, 5}, {1, 0, 1, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3},
    {2, 1, 2, 4, 4, 4, 4, 4, 4, 4, 4, 3, 3, 3, 3, 3}, {3, 3, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4},
    {4, 3, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4}, {5, 3, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4},
    {3, 3, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4, 4}, {4, 3, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4, 4},
    {4, 3, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4, 4}, {5, 3, 4, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4, 4},
    {5, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 4, 4, 4, 4, 4}, {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 4, 4, 4},
    {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 4, 4}, {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 4},
    {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5}, {5, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5},
};

/// Decodes coordinates and intensity of formats 6 to 10, each scanner channel by its own statistics.
class Point14Decoder {
  public:
    struct Layers {
        ArithmeticDecoder xy;
        ArithmeticDecoder z;
        ArithmeticDecoder intensity;
        bool hasZ = false;
        bool hasIntensity = false;

        bool IsExhausted() const {
            return xy.IsExhausted() || (hasZ && z.IsExhausted()) || (hasIntensity && intensity.IsExhausted());
        }
    };

    static constexpr unsigned int kChannels = 4;

    /// Begins anew with the group's bytes in the first record.
    void Start(const std::uint8_t* raw, LASpoint& point);
    void Next(Layers& layers, LASpoint& point);

    unsigned int ScannerChannel() const { return current; }
    /// Whether the last point came from another channel than the one before.
    bool HasSwitched() const { return switched; }

  private:
    struct Channel;
    struct Drop {
        void operator()(Channel* channel) const;
    };

    Channel& Begin(unsigned int channel, const Channel& like);
    Channel& Switch(ArithmeticDecoder& decoder);

    std::array<std::unique_ptr<Channel, Drop>, kChannels> channels;
    unsigned int current = 0;
    bool switched = false;
};

}  // namespace zorv::las
