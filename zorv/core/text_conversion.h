#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "zorv/export.h"

/// Wide text from UTF-8. Bytes that are no UTF-8 become U+FFFD; a null pointer gives the empty text.
ZORV_API std::wstring string2wstring(const std::string& text);
ZORV_API std::wstring string2wstring(const char* text);

/// UTF-8 from wide text; what is no character becomes U+FFFD. `ansi` asks for the system's own narrow encoding, which
/// is Windows-1252 on Windows and UTF-8 elsewhere.
ZORV_API std::string wstring2string(const std::wstring& text, bool ansi = false);
ZORV_API std::string wstring2string(const wchar_t* text, bool ansi = false);

namespace zorv::detail {

/// What some editors put in front of UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

/// Appends the text as UTF-16LE bytes, surrogate pairs included and without a terminator.
void AppendUtf16Le(std::string& bytes, std::wstring_view text);

/// Wide text from 16-bit code units; lone surrogates become U+FFFD.
std::wstring WideFromUtf16(std::u16string_view units);

/// Appends UTF-8 to a text that exists.
void AppendUtf8(std::string& bytes, std::wstring_view text);

/// Bytes of a quoted field at most: the tagged text reader gives up at a longer line, and all behind it would be lost.
inline constexpr std::size_t kLongestQuotable = 8000;

/// Text as a quoted field of a text file holds it: UTF-8 with `'` for quotes and a blank for line ends, cut at a whole
/// character where it is longer than such a field may be.
std::string QuotableUtf8(std::wstring_view text);

}  // namespace zorv::detail
