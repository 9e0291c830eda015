#pragma once

#include <bit>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zorv::las {

/// How many of `16 * kBlocks` ascending numbers are not above the limit. Looks at all of them at once, since the
/// branches of a search could not be foreseen. At most 64 numbers.
template <int kBlocks>
inline unsigned int CountUpTo(const std::int16_t* sorted, std::int16_t limit) {
    static_assert(kBlocks >= 1 && kBlocks <= 4);
#ifdef __SSE2__
    const __m128i limits = _mm_set1_epi16(limit);
    std::uint64_t above = 0;
    for (int b = 0; b < kBlocks; ++b) {
        const auto* eight = reinterpret_cast<const __m128i*>(sorted + 16 * b);
        const __m128i low = _mm_cmpgt_epi16(_mm_loadu_si128(eight), limits);
        const __m128i high = _mm_cmpgt_epi16(_mm_loadu_si128(eight + 1), limits);
        const auto bits = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
        above |= std::uint64_t{bits} << (16 * b);
    }
    if constexpr (kBlocks < 4) above |= std::uint64_t{1} << (16 * kBlocks);
    return static_cast<unsigned int>(std::countr_zero(above));
#else
    unsigned int count = 0;
    for (int i = 0; i < 16 * kBlocks; ++i)
        count += sorted[i] <= limit ? 1 : 0;
    return count;
#endif
}

}  // namespace zorv::las
