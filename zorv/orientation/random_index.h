#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "zorv/export.h"

/// Draws sets of distinct indices at random. Draws of one object differ from each other as long as other ones are
/// easily found.
///
/// An index comes from the sum of three equally distributed numbers, so that those in the middle come up more often
/// than those at the ends. The generator behind them is one for the whole process, gives the same numbers on every
/// system, and may be used by several threads.
class ZORV_API ZoGenerateRandomIndex {
  public:
    ZoGenerateRandomIndex() = default;
    ZoGenerateRandomIndex(const ZoGenerateRandomIndex&) = default;
    ZoGenerateRandomIndex& operator=(const ZoGenerateRandomIndex&) = default;
    virtual ~ZoGenerateRandomIndex() = default;

    /// Starts the generator of the process anew: the same seed gives the same draws. A program that never calls this
    /// draws as after SetSeed(1).
    static void SetSeed(std::uint32_t seed);

    /// Draws k of the indices from 0 to n - 1; all of them for k of n or more, none when k or n is 0.
    void Generate(unsigned int k, unsigned int n);
    /// The last draw, ascending.
    const std::vector<unsigned int>& GetIndices() const { return indices; }

    std::vector<unsigned int> indices;
    std::set<unsigned int> draw;
    std::set<std::uint64_t> seen;  ///< checksums of the draws so far
    double combinations = 0.0;     ///< how many draws there are, from the first call of Generate on
};
