#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "zorv/cloud/las/arithmetic_decoder.h"

namespace zorv::las {

/// Decodes whole numbers as corrections to a prediction: first how many bits the correction has, in the caller's
/// context, then its upper eight bits by their own statistics for each number of bits, and the bits below as they are.
class IntegerDecoder {
  public:
    /// Numbers of 8, 16 or 32 bits.
    explicit IntegerDecoder(unsigned int bits, unsigned int contexts = 1) : width(bits), lengths(contexts) {}

    /// Back to where no number has been seen.
    void Restart();

    /// Numbers of less than 32 bits are unsigned and wrap around.
    std::int32_t Decode(ArithmeticDecoder& decoder, std::int32_t prediction, unsigned int context = 0) {
        const auto sum = static_cast<std::uint32_t>(prediction) + Correction(decoder, context);
        return static_cast<std::int32_t>(width < 32 ? sum & ((1u << width) - 1) : sum);
    }
    /// Bits of the last correction.
    unsigned int CorrectionBits() const { return lastBits; }

  private:
    static constexpr unsigned int kUpperBits = 8;

    std::uint32_t Correction(ArithmeticDecoder& outer, unsigned int context) {
        ArithmeticDecoder decoder = outer;  // a copy lives in registers
        const std::uint32_t correction = CorrectionFrom(decoder, context);
        outer = decoder;
        return correction;
    }
    std::uint32_t CorrectionFrom(ArithmeticDecoder& decoder, unsigned int context) {
        AdaptiveSymbols<33>& length = lengths[context];
        if (!length.IsBegun()) length.Begin(width + 1);
        const std::uint32_t bits = decoder.Symbol(length);
        lastBits = bits;
        if (bits == 0) return decoder.Bit(zeroOrOne) ? 1 : 0;
        if (bits == 32) return 0x80000000u;
        AdaptiveSymbols<256>& upper = uppers[bits - 1];
        if (!upper.IsBegun()) upper.Begin(1u << std::min(bits, kUpperBits));
        std::uint32_t value = decoder.Symbol(upper);
        if (bits > kUpperBits) {
            const unsigned int lower = bits - kUpperBits;
            value = value << lower | decoder.Bits(lower);
        }
        // The upper half of the values stands for 2^(bits-1)+1 to 2^bits, the lower one for what lies as far below 0.
        return value >> (bits - 1) != 0 ? value + 1 : value - ((1u << bits) - 1);
    }

    unsigned int width;
    unsigned int lastBits = 0;
    AdaptiveBit zeroOrOne;
    std::vector<AdaptiveSymbols<33>> lengths;
    std::array<AdaptiveSymbols<256>, 31> uppers;
};

}  // namespace zorv::las
