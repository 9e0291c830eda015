// The examples on the pages of docs/formats are what the library writes.

#include <filesystem>
#include <fstream>
#include <sstream>

#include "examples/format_samples/pages.h"
#include "examples/format_samples/samples.h"
#include <gtest/gtest.h>

TEST(FormatSamples, AreWhatTheLibraryWrites) {
    std::set<std::string> shown;
    for (const auto& entry : std::filesystem::directory_iterator(ZORV_FORMAT_PAGES)) {
        std::stringstream page;
        page << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        EXPECT_EQ(page.str(), RenewedPage(page.str(), shown)) << entry.path();
    }
    for (const auto& [name, writer] : GetFormatWriters())
        EXPECT_TRUE(shown.contains(name)) << name << " is on no page";
}
