#pragma once

#include <cstddef>

/// Heap allocations of the program so far. A test program that uses it lists allocation_count.cpp among its sources.
std::size_t AllocationCount();
/// Bytes asked for in them, freed ones included.
std::size_t AllocatedBytes();
