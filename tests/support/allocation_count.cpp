#include "tests/support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> allocations = 0;
std::atomic<std::size_t> bytes = 0;

}  // namespace

std::size_t AllocationCount() {
    return allocations;
}

std::size_t AllocatedBytes() {
    return bytes;
}

void* operator new(std::size_t size) {
    ++allocations;
    bytes += size;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

// The forms below would lead to the one above; a sanitizer brings its own, which neither count nor match the deletes.
void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    bytes += size;
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
