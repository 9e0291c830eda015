#pragma once

#include <cstddef>

namespace zorv::detail {

/// Tells the system that a block is about to be filled whole, so that it may give large pages. Changes nothing else.
void ExpectFullUse(void* block, std::size_t size);

}  // namespace zorv::detail
