#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include "zorv/export.h"

namespace zorv::detail {

/// Memory that is about to be filled whole, in large pages where the system has them. Throws std::bad_alloc.
ZORV_API void* AllocateLargeBlock(std::size_t size);
ZORV_API void FreeLargeBlock(void* block) noexcept;

/// Allocator of arrays of millions of values: the first touch of fresh memory costs a fraction in large pages.
template <class T>
class LargeBlockAllocator {
  public:
    using value_type = T;

    LargeBlockAllocator() = default;
    template <class U>
    LargeBlockAllocator(const LargeBlockAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_array_new_length();
        return static_cast<T*>(AllocateLargeBlock(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t) noexcept { FreeLargeBlock(block); }

    template <class U>
    bool operator==(const LargeBlockAllocator<U>&) const noexcept {
        return true;
    }
};

}  // namespace zorv::detail
