#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "zorv/cloud/las/adaptive_model.h"
#include "zorv/core/byte_view.h"

namespace zorv::las {

/// Decodes an arithmetic code. The state is an interval length of 24 to 32 bits and the code's place in it; whole
/// bytes move in as the interval shrinks. Behind the end of its bytes it sees zeros; IsExhausted tells of that.
class ArithmeticDecoder {
  public:
    ArithmeticDecoder() = default;
    explicit ArithmeticDecoder(detail::ByteView code) : bytes(code.data()), size(code.size()), next(4) {
        for (std::size_t i = 0; i < 4; ++i)
            place = place << 8 | (i < size ? bytes[i] : 0u);
        StayInside();
    }

    /// Whether a byte was missing: what has been decoded since the end then means nothing.
    bool IsExhausted() const { return next > size; }
    /// Bytes used, the look-ahead among them.
    std::size_t Position() const { return next; }

    bool Bit(AdaptiveBit& model) {
        const std::uint32_t zero = model.ZeroShare() * (length >> AdaptiveBit::kPrecision);
        const bool one = place >= zero;
        place -= one ? zero : 0;
        length = one ? length - zero : zero;
        Refill();
        model.Count(one);
        return one;
    }

    template <unsigned int kRoom>
    std::uint32_t Symbol(AdaptiveSymbols<kRoom>& model) {
        const std::uint32_t unit = length >> kSymbolPrecision;
        const std::uint32_t symbol = model.Find(place / unit);
        const std::uint32_t start = model.Start(symbol) * unit;
        // What the division leaves over belongs to the last symbol.
        const std::uint32_t end = symbol < model.Last() ? model.Start(symbol + 1) * unit : length;
        place -= start;
        length = end - start;
        Refill();
        model.Count(symbol);
        return symbol;
    }

    /// An unsigned number of 1 to 32 bits, all values being alike.
    std::uint32_t Bits(unsigned int count) {
        if (count <= kBitsAtOnce) return Alike(count);
        const std::uint32_t low = Alike(16);
        return Alike(count - 16) << 16 | low;
    }
    std::uint32_t Word() { return Bits(32); }
    void SkipLong() {
        Word();
        Word();
    }

  private:
    static constexpr unsigned int kBitsAtOnce = 19;

    /// Only a damaged code lies outside its interval. Inside, no place is above the last symbol's share.
    void StayInside() { place = std::min(place, length - 1); }

    std::uint32_t Alike(unsigned int count) {
        length >>= count;
        const std::uint32_t most = (1u << count) - 1;
        const std::uint32_t value = std::min(place / length, most);
        place -= value * length;
        StayInside();
        Refill();
        return value;
    }

    std::uint32_t Ahead() const {
        if (size >= 4 && next <= size - 4) {
            const auto four = detail::LoadNumber<std::uint32_t>(bytes + next);
            return __builtin_bswap32(four);
        }
        return AheadAtEnd(bytes, size, next);
    }
    // Takes values, so that a decoder may live in registers.
    static std::uint32_t AheadAtEnd(const std::uint8_t* bytes, std::size_t size, std::size_t next);

    void Refill() {
        // Without a branch, since none could be foreseen.
        const auto missingBits = static_cast<unsigned int>(std::countl_zero(length)) & 24u;
        place = static_cast<std::uint32_t>((std::uint64_t{place} << 32 | Ahead()) << missingBits >> 32);
        length <<= missingBits;
        next += missingBits / 8;
    }

    const std::uint8_t* bytes = nullptr;
    std::size_t size = 0;
    std::size_t next = 0;
    std::uint32_t place = 0;
    std::uint32_t length = 0xffffffffu;
};

}  // namespace zorv::las
