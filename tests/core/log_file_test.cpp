#include "zorv/core/log_file.h"

#include <regex>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

/// Puts a word in the place of each time.
std::string WithoutTime(const std::string& text) {
    static const std::regex time(R"(\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d 20\d\d)");
    return std::regex_replace(text, time, "<time>");
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
