#pragma once

#include <cstdint>
#include <utility>

#include "zorv/export.h"

/// Two ids that belong together.
class ZORV_API ZoIdPair {
  public:
    ZoIdPair() = default;
    ZoIdPair(unsigned int firstId, unsigned int secondId) : first(firstId), second(secondId) {}
    ZoIdPair(const ZoIdPair&) = default;
    ZoIdPair& operator=(const ZoIdPair&) = default;
    virtual ~ZoIdPair() = default;

    bool operator==(const ZoIdPair& other) const { return first == other.first && second == other.second; }
    /// By the first id, then by the second.
    bool operator<(const ZoIdPair& other) const {
        return first < other.first || (first == other.first && second < other.second);
    }
    bool operator<=(const ZoIdPair& other) const { return !(other < *this); }

    bool HasId(unsigned int id) const { return first == id || second == id; }
    /// The partner of `id`; the first id for one that is not in the pair.
    unsigned int OtherId(unsigned int id) const { return id == first ? second : first; }

    /// Swaps so that the first id is not above the second; true when it swapped.
    bool Sort() {
        if (first <= second) return false;
        std::swap(first, second);
        return true;
    }
    void Clear() { first = second = 0; }

    std::uint32_t first = 0;
    std::uint32_t second = 0;
};
