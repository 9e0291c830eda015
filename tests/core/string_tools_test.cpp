#include "zorv/core/string_tools.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(StringTools, Searches) {
    EXPECT_TRUE(StringContains(L"Point", L"") && !StringContains("Point", "NT"));
    EXPECT_TRUE(StringContainsNoCase(L"Straßenhöhe", L"HÖHE") && !StringEqualsNoCase(L"ab", L"abc"));
    EXPECT_TRUE(StringStartsWith("abc", "ab") && !StringStartsWith(L"a", L"ab"));
    EXPECT_EQ(StringPos("abcabc", "ca"), 2);
    EXPECT_EQ(StringPos(L"abc", L"x"), -1);
    EXPECT_EQ(StringFrequenzy(L"äbä", L'ä'), 2);
}

TEST(StringTools, ReplacesFromLeftToRight) {
    EXPECT_EQ(StringReplace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(StringReplace("a.b", ".", "..."), "a...b");
    EXPECT_EQ(StringReplace("abc", "", "x"), "abc");
    std::wstring text = L"1;2;3";
    StringReplace(&text, L";", L"");
    EXPECT_EQ(text, L"123");
}

TEST(StringTools, SplitKeepsEmptyParts) {
    EXPECT_EQ(StringSplit("a_b.c", "_."), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(StringSplit("._a_", "_."), (std::vector<std::string>{"", "", "a", ""}));
    EXPECT_EQ(StringSplit(L"", L","), (std::vector<std::wstring>{L""}));
    EXPECT_EQ(StringSplit("a,b", ""), (std::vector<std::string>{"a,b"}));
}

TEST(StringTools, CasePairsUp) {
    std::wstring lower = L"ABZ ÄÞ ĦŐŸŽ ΆΈΌΏΑΩΣ ЀЯҐ ×÷ßı";
    const std::wstring original = lower;
    StringToLower(&lower);
    EXPECT_EQ(lower, L"abz äþ ħőÿž άέόώαωσ ѐяґ ×÷ßı");
    std::wstring upper = lower;
    StringToUpper(&upper);
    EXPECT_EQ(upper, original);
    std::string narrow = "aÄz";
    StringToUpper(&narrow);
    EXPECT_EQ(narrow, "AÄZ");
}

TEST(StringTools, Trims) {
    std::string text = " \t a b \r\n";
    StringTrim(&text);
    EXPECT_EQ(text, "a b");
    std::wstring wide = L"  x ";
    StringLeftTrim(&wide);
    EXPECT_EQ(wide, L"x ");
}

TEST(StringTools, PrintsAnyLength) {
    const std::string wide(3000, 'x');
    EXPECT_EQ(StringPrintf("%s=%03d", wide.c_str(), 7), wide + "=007");
    EXPECT_EQ(StringPrintf(L"%s %.1f", L"Höhe", 1.25), L"Höhe 1.2");
    EXPECT_EQ(StringPrintf(static_cast<const char*>(nullptr)), "");
}

}  // namespace
