#pragma once

#include <string>
#include <vector>

#include "zorv/export.h"

/// Whether two texts are equal without regard to case.
ZORV_API bool StringEqualsNoCase(const std::wstring& a, const std::wstring& b);

/// Whether `part` stands in the text; an empty part stands in every text.
ZORV_API bool StringContains(const std::string& text, const std::string& part);
ZORV_API bool StringContains(const std::wstring& text, const std::wstring& part);
/// The same without regard to case.
ZORV_API bool StringContainsNoCase(const std::wstring& text, const std::wstring& part);

/// Index of the first hit, or -1.
ZORV_API int StringPos(const std::string& text, const std::string& part);
ZORV_API int StringPos(const std::wstring& text, const std::wstring& part);

/// How often the character occurs.
ZORV_API int StringFrequenzy(const std::string& text, char c);
ZORV_API int StringFrequenzy(const std::wstring& text, wchar_t c);

/// Whether the text begins with `prefix`; every text begins with an empty one.
ZORV_API bool StringStartsWith(const std::string& text, const std::string& prefix);
ZORV_API bool StringStartsWith(const std::wstring& text, const std::wstring& prefix);

/// The formatted text, of any length, by printf's rules; empty when the format is null or cannot be met. In the wide
/// form `%s` and `%c` are wide text. The process locale plays no part.
ZORV_API std::string StringPrintf(const char* format, ...);
ZORV_API std::wstring StringPrintf(const wchar_t* format, ...);

/// All occurrences replaced, from left to right and without looking into what was put in; an empty `old` replaces
/// nothing. In a copy, or in place.
ZORV_API std::string StringReplace(const std::string& text, const std::string& old, const std::string& with);
ZORV_API std::wstring StringReplace(const std::wstring& text, const std::wstring& old, const std::wstring& with);
ZORV_API void StringReplace(std::string* text, const std::string& old, const std::string& with);
ZORV_API void StringReplace(std::wstring* text, const std::wstring& old, const std::wstring& with);

/// The parts between the characters of `delimiters`, empty ones included, so that there is always at least one.
ZORV_API std::vector<std::string> StringSplit(const std::string& text, const std::string& delimiters);
ZORV_API std::vector<std::wstring> StringSplit(const std::wstring& text, const std::wstring& delimiters);

/// In lower case, in place. Wide texts know Latin, Greek and Cyrillic letters; of narrow ones, which are UTF-8, only
/// ASCII changes. The process locale plays no part. Null does nothing here and below.
ZORV_API void StringToLower(std::string* text);
ZORV_API void StringToLower(std::wstring* text);
/// The same in upper case.
ZORV_API void StringToUpper(std::string* text);
ZORV_API void StringToUpper(std::wstring* text);

/// Removes white space (blank, tab and line ends) at the beginning, in place.
ZORV_API void StringLeftTrim(std::string* text);
ZORV_API void StringLeftTrim(std::wstring* text);
/// The same at the end.
ZORV_API void StringRightTrim(std::string* text);
ZORV_API void StringRightTrim(std::wstring* text);
/// The same at both ends.
ZORV_API void StringTrim(std::string* text);
ZORV_API void StringTrim(std::wstring* text);
