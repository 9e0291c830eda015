#include <cstdarg>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "zorv/core/wide_format.h"

namespace {

std::optional<std::wstring> Wide(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    auto text = zorv::detail::FormatText(format, arguments);
    va_end(arguments);
    return text;
}

TEST(Formatting, WideFormatsTakeWideText) {
    EXPECT_EQ(Wide(L"%s|%c|%-6s|%06.2f|%%s", L"Höhe €", L'Ω', L"ab", 3.14159), L"Höhe €|Ω|ab    |003.14|%s");
    EXPECT_EQ(Wide(L"%.3s|%*d|%lld|%ls|%hs|%S", L"abcdef", 4, 7, 1LL << 40, L"x", "\xc3\xa4", "n"),
              L"abc|   7|1099511627776|x|ä|n");
    EXPECT_EQ(Wide(L"%2$s %1$d", 1, L"b"), L"b 1");
}

TEST(Formatting, TextOfAnyLengthComesWhole) {
    for (std::size_t length : {0u, 511u, 512u, 513u, 100000u}) {
        const std::wstring text(length, L'w');
        EXPECT_EQ(Wide(L"%s", text.c_str()), text);
    }
}

TEST(Formatting, ACutKeepsRoomForTheTerminatorAndWholeCharacters) {
    std::string text = "ab\xe2\x82\xac";
    for (const auto& [size, expected] : {std::pair{6, "ab\xe2\x82\xac"}, {5, "ab"}, {4, "ab"}, {3, "ab"}, {2, "a"}}) {
        std::string cut = text;
        zorv::detail::CutToBuffer(cut, size);
        EXPECT_EQ(cut, expected) << size;
    }
    std::string noText(20, '\x80');
    zorv::detail::CutToBuffer(noText, 10);
    EXPECT_EQ(noText.size(), 9u);
    wchar_t buffer[4] = L"zzz";
    zorv::detail::CopyToBuffer(buffer, L"abcdef");
    EXPECT_STREQ(buffer, L"abc");
}

}  // namespace
