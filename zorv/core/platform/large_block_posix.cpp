#include <cstdint>

#include <sys/mman.h>

#include "zorv/core/platform/large_block.h"

namespace zorv::detail {

void ExpectFullUse(void* block, std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t kLargePage = 2U << 20;
    const std::size_t lead = (kLargePage - reinterpret_cast<std::uintptr_t>(block) % kLargePage) % kLargePage;
    if (size < lead + kLargePage) return;
    ::madvise(static_cast<char*>(block) + lead, (size - lead) / kLargePage * kLargePage, MADV_HUGEPAGE);
#else
    static_cast<void>(block);
    static_cast<void>(size);
#endif
}

}  // namespace zorv::detail
