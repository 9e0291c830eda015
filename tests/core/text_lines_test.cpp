#include "zorv/core/text_lines.h"

#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

using zorv::detail::LineEnd;
using zorv::detail::TextLines;
using Lines = std::vector<std::string>;

Lines All(TextLines lines) {
    Lines all;
    for (std::span<char> line; lines.Next(line);) {
        EXPECT_EQ(line.data()[line.size()], '\0');
        all.emplace_back(line.data(), line.size());
        for (char& c : line)
            c = '#';
    }
    return all;
}

/// The lines by each of the three sources, which must agree.
Lines AllWays(const std::string& bytes, LineEnd ends) {
    const TempFolder folder;
    const std::wstring name = folder.Write("lines ä.txt", bytes);
    const Lines lines = All(TextLines(name, ends));
    std::FILE* file = std::fopen((folder.path / "lines ä.txt").c_str(), "rb");
    EXPECT_EQ(All(TextLines(file, ends)), lines);
    std::fclose(file);
    EXPECT_EQ(All(TextLines::FromBytes(bytes, ends)), lines);
    return lines;
}

TEST(TextLines, CutsAtEachKindOfLineEnd) {
    const std::string bytes =
        "\xef\xbb\xbf"
        "a\r\n\r\nb\n\rc\rd\r";
    EXPECT_EQ(AllWays(bytes, LineEnd::kLineFeed), (Lines{"a", "", "b", "\rc\rd"}));
    EXPECT_EQ(AllWays(bytes, LineEnd::kLineFeedOrReturn), (Lines{"a", "", "b", "", "c", "d"}));
    EXPECT_EQ(AllWays("", LineEnd::kLineFeed), Lines{});
    EXPECT_EQ(AllWays("\xef\xbb", LineEnd::kLineFeed), (Lines{"\xef\xbb"}));
    EXPECT_EQ(AllWays("\n", LineEnd::kLineFeedOrReturn), (Lines{""}));
    EXPECT_EQ(AllWays(std::string("a\0b\n", 4), LineEnd::kLineFeed), (Lines{std::string("a\0b", 3)}));
}

TEST(TextLines, LinesAcrossBlocksComeWhole) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        std::string bytes;
        Lines expected;
        unsigned int state = 1;
        while (bytes.size() < 3'000'000) {
            state = state * 1664525u + 1013904223u;
            const std::size_t length = expected.size() == 500 ? 1'500'000 : state >> 20;
            expected.emplace_back(length, static_cast<char>('a' + expected.size() % 26));
            bytes += expected.back() + end;
        }
        expected.emplace_back("last");
        bytes += "last";
        EXPECT_EQ(AllWays(bytes, LineEnd::kLineFeedOrReturn), expected);
    }
}

TEST(TextLines, WhatCannotBeOpenedHasNoLines) {
    const TempFolder folder;
    std::span<char> line;
    TextLines missing(folder.Name("missing"));
    EXPECT_FALSE(missing.IsOpen() || missing.Next(line));
    EXPECT_FALSE(TextLines(folder.Name(".")).IsOpen());
    TextLines none(static_cast<std::FILE*>(nullptr));
    EXPECT_FALSE(none.IsOpen() || none.Next(line));
}

}  // namespace
