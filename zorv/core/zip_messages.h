#pragma once

#include <cstdint>

namespace zorv::detail {

/// The wide text of a ZIP result code; three blanks for an unknown one.
const wchar_t* WideZipMessage(std::uint32_t code);

}  // namespace zorv::detail
