#pragma once

#include <cstdarg>
#include <optional>
#include <string>

/// The printf family of the C library, apart from the process locale: a point marks decimals, narrow text is UTF-8.
namespace zorv::detail {

/// Text of any length; nothing when the arguments cannot be formatted.
std::optional<std::string> PrintText(const char* format, std::va_list arguments);
/// The format is in the C library's own form, where `%ls` means wide text on every system.
std::optional<std::wstring> PrintText(const wchar_t* format, std::va_list arguments);

}  // namespace zorv::detail
