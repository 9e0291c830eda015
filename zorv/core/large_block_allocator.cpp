#include "zorv/core/large_block_allocator.h"

#include "zorv/core/platform/large_block.h"

namespace zorv::detail {

void* AllocateLargeBlock(std::size_t size) {
    void* const block = ::operator new(size);
    ExpectFullUse(block, size);
    return block;
}

void FreeLargeBlock(void* block) noexcept {
    ::operator delete(block);
}

}  // namespace zorv::detail
