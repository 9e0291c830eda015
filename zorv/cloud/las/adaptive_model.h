#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "zorv/cloud/las/sorted_count.h"

/// Probabilities that follow what was decoded. They are renewed at growing intervals, whole numbers throughout, since
/// the encoder went through the same values. After A. Said, Introduction to Arithmetic Coding, HPL-2004-76.
namespace zorv::las {

/// Of a yes or a no.
class AdaptiveBit {
  public:
    static constexpr int kPrecision = 13;

    std::uint32_t ZeroShare() const { return zeroShare; }
    void Count(bool one) {
        if (!one) ++zeros;
        if (--untilRenewal == 0) Renew();
    }

  private:
    void Renew();

    std::uint32_t zeros = 1;
    std::uint32_t total = 2;
    std::uint32_t zeroShare = 1u << (kPrecision - 1);
    std::uint32_t interval = 4;
    std::uint32_t untilRenewal = 4;
};

inline constexpr int kSymbolPrecision = 15;

/// The parts of symbol statistics that do not depend on the room for them.
struct SymbolStatistics {
    /// Starts are kept less this much, so that a little beyond the scale is still a 16-bit number.
    static constexpr std::int32_t kShift = 1 << kSymbolPrecision;

    std::uint32_t symbols = 0;
    std::uint32_t total = 0;
    std::uint32_t interval = 0;
    std::uint32_t untilRenewal = 0;

    /// All symbols alike.
    void Begin(std::uint32_t symbolCount, std::uint16_t* counts, std::int16_t* starts);
    /// Fills the starts of the symbols' shares from their counts.
    void Renew(std::uint16_t* counts, std::int16_t* starts);
};

/// Of one among several symbols, at most kRoom of them.
template <unsigned int kRoom>
class AdaptiveSymbols {
  public:
    AdaptiveSymbols() = default;
    explicit AdaptiveSymbols(std::uint32_t symbolCount) { Begin(symbolCount); }

    bool IsBegun() const { return statistics.symbols > 0; }
    void Begin(std::uint32_t symbolCount) {
        starts.fill(kTop);
        statistics.Begin(symbolCount, counts.data(), starts.data());
        Index();
    }
    /// Makes the next use begin anew.
    void Forget() { statistics.symbols = 0; }

    std::uint32_t Last() const { return statistics.symbols - 1; }
    std::uint32_t Start(std::uint32_t symbol) const {
        return static_cast<std::uint32_t>(starts[symbol] + SymbolStatistics::kShift);
    }
    /// The symbol whose share holds a place on the scale of 2^15, what lies behind the scale being the last one's.
    std::uint32_t Find(std::uint32_t place) const {
        const auto limit = static_cast<std::int16_t>(place - SymbolStatistics::kShift);
        if constexpr (kBlocks <= 4) {
            return CountUpTo<kBlocks>(starts.data(), limit) - 1;
        } else {
            const std::uint32_t block = CountUpTo<kIndexBlocks>(index.data(), limit) - 1;
            return 16 * block + CountUpTo<1>(starts.data() + std::size_t{16} * block, limit) - 1;
        }
    }
    void Count(std::uint32_t symbol) {
        ++counts[symbol];
        if (--statistics.untilRenewal == 0) {
            statistics.Renew(counts.data(), starts.data());
            Index();
        }
    }

  private:
    static constexpr unsigned int kBlocks = (kRoom + 15) / 16;
    static constexpr unsigned int kIndexBlocks = (kBlocks + 15) / 16;
    static constexpr std::int16_t kTop = 0x7fff;  // above every place

    void Index() {
        if constexpr (kBlocks > 4) {
            for (unsigned int b = 0; b < kBlocks; ++b)
                index[b] = starts[16 * b];
        }
    }
    static constexpr std::array<std::int16_t, 16 * kIndexBlocks> Tops() {
        std::array<std::int16_t, 16 * kIndexBlocks> tops{};
        for (std::int16_t& top : tops)
            top = kTop;
        return tops;
    }

    SymbolStatistics statistics;
    std::array<std::int16_t, 16 * kIndexBlocks> index = Tops();
    std::array<std::int16_t, std::size_t{16} * kBlocks> starts;
    std::array<std::uint16_t, kRoom> counts;
};

}  // namespace zorv::las
