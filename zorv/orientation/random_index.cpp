#include "zorv/orientation/random_index.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numeric>

#include "zorv/core/crc32.h"

namespace {

constexpr std::uint32_t kLargestRandom = 32767;
constexpr std::uint64_t kLargestSum = 3 * kLargestRandom;
constexpr int kTries = 40;
constexpr double kExhausted = 0.8;  // share of all draws behind which a repeated one is taken
// Numbers in vain until a draw is filled up in ascending order. Only draws of nearly all of thousands of indices get
// there; of more than kLargestSum + 1 indices some never come up at all.
constexpr int kMostInVain = 1'000'000;

std::atomic<std::uint64_t> state{1};

/// SplitMix64 (G. L. Steele, D. Lea, C. H. Flood: Fast splittable pseudorandom number generators, OOPSLA 2014), of
/// which the top 15 bits are taken.
std::uint32_t NextRandom() {
    constexpr std::uint64_t kStep = 0x9e3779b97f4a7c15;
    std::uint64_t z = state.fetch_add(kStep, std::memory_order_relaxed) + kStep;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return static_cast<std::uint32_t>((z ^ (z >> 31)) >> 49);
}

unsigned int NextIndex(unsigned int n) {
    const std::uint64_t sum = std::uint64_t{NextRandom()} + NextRandom() + NextRandom();
    return static_cast<unsigned int>(std::min<std::uint64_t>(n * sum / kLargestSum, n - 1));
}

double CountDraws(unsigned int k, unsigned int n) {
    if (k > n) return 0.0;
    const unsigned int m = std::min(k, n - k);
    double binomial = 1.0;
    for (unsigned int i = 1; i <= m && std::isfinite(binomial); ++i)
        binomial *= (static_cast<double>(n - m) + i) / i;
    return std::ceil(binomial + 0.5);
}

void Draw(std::set<unsigned int>& draw, unsigned int k, unsigned int n) {
    draw.clear();
    for (int inVain = 0; draw.size() < k && inVain < kMostInVain;) {
        if (!draw.insert(NextIndex(n)).second) ++inVain;
    }
    for (unsigned int index = 0; draw.size() < k; ++index)
        draw.insert(index);
}

std::uint32_t Checksum(const std::set<unsigned int>& draw) {
    ZoCalcCRC32 crc;
    crc.StartSingleCrc();
    for (const unsigned int index : draw)
        crc.AddCrc(index);
    crc.StopSingleCrc();
    return crc.GetCrc();
}

}  // namespace

void ZoGenerateRandomIndex::SetSeed(std::uint32_t seed) {
    state = seed;
}

void ZoGenerateRandomIndex::Generate(unsigned int k, unsigned int n) {
    if (combinations == 0.0 && k > 0 && n > 0) combinations = CountDraws(k, n);
    indices.clear();
    if (k == 0 || n == 0) return;
    if (k >= n) {
        indices.resize(n);
        std::iota(indices.begin(), indices.end(), 0U);
        draw = std::set<unsigned int>(indices.begin(), indices.end());
        seen.insert(Checksum(draw));
        return;
    }
    for (int tries = kTries;; --tries) {
        Draw(draw, k, n);
        const bool isNew = seen.insert(Checksum(draw)).second;
        if (isNew || tries < 1 || static_cast<double>(seen.size()) > kExhausted * combinations) break;
    }
    indices.assign(draw.begin(), draw.end());
}
