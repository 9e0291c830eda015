#include "zorv/cloud/las/adaptive_model.h"

namespace zorv::las {

namespace {

constexpr std::uint32_t kMostBits = 1u << AdaptiveBit::kPrecision;
constexpr std::uint32_t kMostSymbols = 1u << kSymbolPrecision;
constexpr std::uint32_t kWhole = 1u << 31;  // the scale on which counts become shares

std::uint32_t Longer(std::uint32_t interval, std::uint32_t longest) {
    return std::min(5 * interval / 4, longest);
}

}  // namespace

void AdaptiveBit::Renew() {
    total += interval;
    if (total > kMostBits) {
        total = (total + 1) / 2;
        zeros = (zeros + 1) / 2;
        if (zeros == total) ++total;
    }
    zeroShare = zeros * (kWhole / total) >> (31 - kPrecision);
    interval = Longer(interval, 64);
    untilRenewal = interval;
}

void SymbolStatistics::Begin(std::uint32_t symbolCount, std::uint16_t* counts, std::int16_t* starts) {
    symbols = symbolCount;
    std::fill_n(counts, symbols, std::uint16_t{1});
    total = 0;
    interval = symbols;
    Renew(counts, starts);
    interval = (symbols + 6) / 2;
    untilRenewal = interval;
}

void SymbolStatistics::Renew(std::uint16_t* counts, std::int16_t* starts) {
    total += interval;
    if (total > kMostSymbols) {
        total = 0;
        for (std::uint32_t s = 0; s < symbols; ++s) {
            counts[s] = static_cast<std::uint16_t>((counts[s] + 1u) / 2);
            total += counts[s];
        }
    }
    const std::uint32_t scale = kWhole / total;
    std::uint32_t before = 0;
    for (std::uint32_t s = 0; s < symbols; ++s) {
        starts[s] = static_cast<std::int16_t>((scale * before >> (31 - kSymbolPrecision)) - kShift);
        before += counts[s];
    }
    interval = Longer(interval, (symbols + 6) * 8);
    untilRenewal = interval;
}

}  // namespace zorv::las
