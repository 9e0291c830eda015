#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zorv::detail {

/// Sorts (key, value) pairs ascending by key, equal keys in the order in which they came.
///
/// Distributes by one byte of the key at a time, the lowest first, and leaves out bytes in which all keys agree. Short
/// tables go to a merge sort.
template <class Value>
void StableSortByKey(std::vector<std::pair<std::uint32_t, Value>>& items) {
    constexpr std::size_t kShort = 256;
    constexpr int kBitsPerDigit = 8;
    constexpr std::size_t kDigits = std::size_t{1} << kBitsPerDigit;
    if (items.size() < kShort) {
        std::stable_sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        return;
    }
    std::vector<std::pair<std::uint32_t, Value>> sorted(items.size());
    for (int shift = 0; shift < 32; shift += kBitsPerDigit) {
        const auto digit = [shift](std::uint32_t key) { return (key >> shift) & (kDigits - 1); };
        std::array<std::size_t, kDigits> places{};
        for (const auto& item : items)
            ++places[digit(item.first)];
        if (places[digit(items.front().first)] == items.size()) continue;
        std::size_t next = 0;
        for (std::size_t& place : places)
            next += std::exchange(place, next);
        for (const auto& item : items)
            sorted[places[digit(item.first)]++] = item;
        items.swap(sorted);
    }
}

}  // namespace zorv::detail
