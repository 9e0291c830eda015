#pragma once

#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Formatting by printf's rules with one meaning on every system: in a wide format `%s` and `%c` are wide text, `%hs`
/// and `%S` narrow (UTF-8); in a narrow format `%s` is narrow. The process locale plays no part.
namespace zorv::detail {

/// A wide format in the form that the C library takes.
std::wstring NativeWideFormat(std::wstring_view format);

/// The whole text, of any length; nothing when it cannot be formatted (an argument that is no text of its encoding,
/// a length beyond int) or the format is null.
std::optional<std::wstring> FormatText(const wchar_t* format, std::va_list arguments);
std::optional<std::string> FormatText(const char* format, std::va_list arguments);

/// Cuts a text to what a buffer of that size holds with its terminator. No character is cut in half.
void CutToBuffer(std::string& text, std::size_t bufferSize);
void CutToBuffer(std::wstring& text, std::size_t bufferSize);

/// Copies text into a fixed buffer, cut where it is too long and always terminated. The text may lie in the buffer.
template <std::size_t size>
void CopyToBuffer(wchar_t (&buffer)[size], std::wstring_view text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::char_traits<wchar_t>::move(buffer, text.data(), length);
    buffer[length] = L'\0';
}

}  // namespace zorv::detail
