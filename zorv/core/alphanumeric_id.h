#pragma once

#include <string_view>

#include "zorv/export.h"

/// Maps a point name with letters to a number that is stable for the life of the process.
///
/// The digits of the name, wherever they stand, make the number; all other characters make a prefix. Without a prefix
/// the number is the id. Each new prefix gets the next base, 1000, 2000 and so on, which is added: in a fresh process
/// "A1" is 1001, "A2" 1002, "B1" 2001 and "12" 12. A number beyond 32 bits counts as 4294967295, and the sum wraps
/// around. Narrow and wide names have separate bases. Null counts as empty, which gives 0.
ZORV_API unsigned int GetIdFromAlphaNumericString(const char* text);
ZORV_API unsigned int GetIdFromAlphaNumericString(const wchar_t* text);

namespace zorv::detail {

/// The same, with the same bases, for a name without terminator.
unsigned int IdFromName(std::string_view name);

}  // namespace zorv::detail
