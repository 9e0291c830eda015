#include "zorv/core/log_file.h"

#include <cstdio>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

/// Puts a word in the place of the time that follows each rule of slashes.
std::string WithoutTime(std::string text) {
    const std::string lead = std::string(132, '/') + "\n//  ";
    for (std::size_t at = text.find(lead); at != std::string::npos; at = text.find(lead, at + 1)) {
        int hour = -1, minute = -1, second = -1, year = 0;
        std::sscanf(text.c_str() + at + lead.size(), "%*s %*s %*d %2d:%2d:%2d %4d", &hour, &minute, &second, &year);
        EXPECT_TRUE(hour >= 0 && minute >= 0 && second >= 0 && year > 2000);
        text.replace(at + lead.size(), 24, "<time>");
    }
    return text;
}

TEST(LogFile, EachOpeningAppendsAHeaderWithTheTime) {
    const TempFolder folder;
    std::filesystem::create_directory(folder.path / "Süd");
    const std::wstring name = folder.Name("Süd\\Ebene €.log");
    {
        ZoLogfile file(name, 1);
        ASSERT_TRUE(file.good());
        file << "first " << 1234.5 << '\n';
        file.OpenFile(folder.Name("other.log"));
        file << "elsewhere\n";
    }
    ZoLogfile(name) << "second\n";
    const std::string header = std::string(132, '/') + "\n//  <time>\n//  ";
    EXPECT_EQ(WithoutTime(folder.Read("Süd/Ebene €.log")), header + "first 1234.5\n" + header + "second\n");
    EXPECT_EQ(WithoutTime(folder.Read("other.log")), header + "elsewhere\n");
}

TEST(LogFile, WhatCannotBeOpenedSwallowsTheOutput) {
    const TempFolder folder;
    ZoLogfile file(folder.Name("missing/a.log"));
    EXPECT_TRUE(file.fail());
    file << "lost";
    file.OpenFile(folder.Name("a.log"));
    EXPECT_TRUE(file.good());
}

}  // namespace
