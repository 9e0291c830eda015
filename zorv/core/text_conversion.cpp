#include "zorv/core/text_conversion.h"

#include <cstdint>

namespace zorv::detail {

namespace {

constexpr char32_t kReplacement = 0xfffd;
constexpr char32_t kLastCharacter = 0x10ffff;

constexpr bool IsHighSurrogate(char32_t c) {
    return c >= 0xd800 && c < 0xdc00;
}
constexpr bool IsLowSurrogate(char32_t c) {
    return c >= 0xdc00 && c < 0xe000;
}
constexpr bool IsCharacter(char32_t c) {
    return c <= kLastCharacter && !IsHighSurrogate(c) && !IsLowSurrogate(c);
}

/// Takes the next character of a text of 16-bit or 32-bit units; a lone surrogate gives the replacement character.
template <class Unit>
char32_t Next(std::basic_string_view<Unit> text, std::size_t& at) {
    const auto unit = [&text](std::size_t i) {
        return sizeof(Unit) == 2 ? static_cast<char32_t>(static_cast<std::uint16_t>(text[i]))
                                 : static_cast<char32_t>(text[i]);
    };
    const char32_t first = unit(at++);
    if (IsHighSurrogate(first) && at < text.size() && IsLowSurrogate(unit(at))) {
        return 0x10000 + ((first - 0xd800) << 10) + (unit(at++) - 0xdc00);
    }
    return IsCharacter(first) ? first : kReplacement;
}

void AppendWide(std::wstring& text, char32_t c) {
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
        text += static_cast<wchar_t>(0xd800 + ((c - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xdc00 + ((c - 0x10000) & 0x3ff));
    } else {
        text += static_cast<wchar_t>(c);
    }
}

void AppendUtf8(std::string& bytes, char32_t c) {
    const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x80) {
        bytes += static_cast<char>(c);
    } else if (c < 0x800) {
        bytes += static_cast<char>(0xc0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        bytes += static_cast<char>(0xe0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xf0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Takes one UTF-8 sequence; overlong, cut and stray bytes give one replacement character each.
char32_t NextUtf8(std::string_view text, std::size_t& at) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at++);
    if (lead < 0x80) return lead;
    const int tails = lead >= 0xf0 ? 3 : lead >= 0xe0 ? 2 : 1;
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (lead < 0xc2 || lead > 0xf4) return kReplacement;
    char32_t c = lead & (0x3f >> tails);
    std::size_t end = at;
    for (int i = 0; i < tails; ++i, ++end) {
        if (end >= text.size() || (byte(end) & 0xc0) != 0x80) return kReplacement;
        c = (c << 6) | (byte(end) & 0x3f);
    }
    if (c < kSmallest[tails] || !IsCharacter(c)) return kReplacement;
    at = end;
    return c;
}

std::wstring WideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        AppendWide(wide, NextUtf8(text, at));
    return wide;
}

}  // namespace

void AppendUtf16Le(std::string& bytes, std::wstring_view text) {
    const auto append = [&bytes](char32_t unit) {
        bytes += static_cast<char>(unit & 0xff);
        bytes += static_cast<char>(unit >> 8);
    };
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = Next(text, at);
        if (c >= 0x10000) {
            append(0xd800 + ((c - 0x10000) >> 10));
            append(0xdc00 + ((c - 0x10000) & 0x3ff));
        } else {
            append(c);
        }
    }
}

std::wstring WideFromUtf16(std::u16string_view units) {
    std::wstring wide;
    wide.reserve(units.size());
    for (std::size_t at = 0; at < units.size();)
        AppendWide(wide, Next(units, at));
    return wide;
}

void AppendUtf8(std::string& bytes, std::wstring_view text) {
    for (std::size_t at = 0; at < text.size();)
        AppendUtf8(bytes, Next(text, at));
}

std::string QuotableUtf8(std::wstring_view text) {
    std::string bytes;
    AppendUtf8(bytes, text.substr(0, kLongestQuotable));
    if (bytes.size() > kLongestQuotable) {
        const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
        std::size_t end = kLongestQuotable;
        while (end > 0 && continues(bytes[end]))
            --end;
        bytes.resize(end);
    }
    for (char& c : bytes) {
        if (c == '"') c = '\'';
        if (c == '\n' || c == '\r' || c == '\0') c = ' ';
    }
    return bytes;
}

}  // namespace zorv::detail

std::wstring string2wstring(const std::string& text) {
    return zorv::detail::WideFromUtf8(text);
}

std::wstring string2wstring(const char* text) {
    return text ? zorv::detail::WideFromUtf8(text) : std::wstring();
}

std::string wstring2string(const std::wstring& text, bool /*ansi*/) {
    std::string bytes;
    bytes.reserve(text.size());
    zorv::detail::AppendUtf8(bytes, text);
    return bytes;
}

std::string wstring2string(const wchar_t* text, bool ansi) {
    return text ? wstring2string(std::wstring(text), ansi) : std::string();
}
