#include "zorv/core/string_tools.h"

#include <algorithm>
#include <cstdarg>
#include <cstddef>

#include "zorv/core/case_folding.h"
#include "zorv/core/wide_format.h"

namespace {

using zorv::detail::ToLower;
using zorv::detail::ToUpper;

// UTF-8 keeps its other bytes.
char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
char ToUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

template <class Char>
void Lower(std::basic_string<Char>* text) {
    if (!text) return;
    for (Char& c : *text)
        c = ToLower(c);
}

template <class Char>
void Upper(std::basic_string<Char>* text) {
    if (!text) return;
    for (Char& c : *text)
        c = ToUpper(c);
}

template <class String>
int Position(const String& text, const String& part) {
    const std::size_t found = text.find(part);
    return found == String::npos ? -1 : static_cast<int>(found);
}

template <class String>
String Replaced(const String& text, const String& old, const String& with) {
    if (old.empty()) return text;
    String result;
    std::size_t at = 0;
    for (std::size_t hit; (hit = text.find(old, at)) != String::npos; at = hit + old.size())
        result.append(text, at, hit - at).append(with);
    return result.append(text, at);
}

template <class String>
std::vector<String> Split(const String& text, const String& delimiters) {
    std::vector<String> parts;
    std::size_t at = 0;
    for (std::size_t hit; (hit = text.find_first_of(delimiters, at)) != String::npos; at = hit + 1)
        parts.push_back(text.substr(at, hit - at));
    parts.push_back(text.substr(at));
    return parts;
}

template <class Char>
bool IsSpace(Char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

template <class Char>
void TrimLeft(std::basic_string<Char>* text) {
    if (text) text->erase(text->begin(), std::find_if_not(text->begin(), text->end(), IsSpace<Char>));
}

template <class Char>
void TrimRight(std::basic_string<Char>* text) {
    if (text) text->erase(std::find_if_not(text->rbegin(), text->rend(), IsSpace<Char>).base(), text->end());
}

}  // namespace

bool StringEqualsNoCase(const std::wstring& a, const std::wstring& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return x == y || ToLower(x) == ToLower(y); });
}

bool StringContains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}
bool StringContains(const std::wstring& text, const std::wstring& part) {
    return text.find(part) != std::wstring::npos;
}
bool StringContainsNoCase(const std::wstring& text, const std::wstring& part) {
    std::wstring lowText = text;
    std::wstring lowPart = part;
    Lower(&lowText);
    Lower(&lowPart);
    return StringContains(lowText, lowPart);
}

int StringPos(const std::string& text, const std::string& part) {
    return Position(text, part);
}
int StringPos(const std::wstring& text, const std::wstring& part) {
    return Position(text, part);
}

int StringFrequenzy(const std::string& text, char c) {
    return static_cast<int>(std::count(text.begin(), text.end(), c));
}
int StringFrequenzy(const std::wstring& text, wchar_t c) {
    return static_cast<int>(std::count(text.begin(), text.end(), c));
}

bool StringStartsWith(const std::string& text, const std::string& prefix) {
    return text.starts_with(prefix);
}
bool StringStartsWith(const std::wstring& text, const std::wstring& prefix) {
    return text.starts_with(prefix);
}

std::string StringPrintf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const auto text = zorv::detail::FormatText(format, arguments);
    va_end(arguments);
    return text.value_or(std::string());
}
std::wstring StringPrintf(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const auto text = zorv::detail::FormatText(format, arguments);
    va_end(arguments);
    return text.value_or(std::wstring());
}

std::string StringReplace(const std::string& text, const std::string& old, const std::string& with) {
    return Replaced(text, old, with);
}
std::wstring StringReplace(const std::wstring& text, const std::wstring& old, const std::wstring& with) {
    return Replaced(text, old, with);
}
void StringReplace(std::string* text, const std::string& old, const std::string& with) {
    if (text) *text = Replaced(*text, old, with);
}
void StringReplace(std::wstring* text, const std::wstring& old, const std::wstring& with) {
    if (text) *text = Replaced(*text, old, with);
}

std::vector<std::string> StringSplit(const std::string& text, const std::string& delimiters) {
    return Split(text, delimiters);
}
std::vector<std::wstring> StringSplit(const std::wstring& text, const std::wstring& delimiters) {
    return Split(text, delimiters);
}

void StringToLower(std::string* text) {
    Lower(text);
}
void StringToLower(std::wstring* text) {
    Lower(text);
}
void StringToUpper(std::string* text) {
    Upper(text);
}
void StringToUpper(std::wstring* text) {
    Upper(text);
}

void StringLeftTrim(std::string* text) {
    TrimLeft(text);
}
void StringLeftTrim(std::wstring* text) {
    TrimLeft(text);
}
void StringRightTrim(std::string* text) {
    TrimRight(text);
}
void StringRightTrim(std::wstring* text) {
    TrimRight(text);
}
void StringTrim(std::string* text) {
    TrimRight(text);
    TrimLeft(text);
}
void StringTrim(std::wstring* text) {
    TrimRight(text);
    TrimLeft(text);
}
