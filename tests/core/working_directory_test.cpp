#include "zorv/core/working_directory.h"

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/text_conversion.h"

namespace {

class WorkingDirectory : public testing::Test {
  protected:
    ~WorkingDirectory() override { std::filesystem::current_path(former); }

    const std::filesystem::path former = std::filesystem::current_path();
    const TempFolder folder;
};

TEST_F(WorkingDirectory, AWritableFolderIsEnteredAndLeftClean) {
    std::filesystem::create_directory(folder.path / "Süd €");
    SetCurrentPathTo(folder.Name("Süd €").c_str());
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), folder.path / "Süd €"));
    EXPECT_TRUE(IsCurrentPathWriteable());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path / "Süd €"));
    SetCurrentPathTo(wstring2string(folder.Name("")).c_str());
    SetCurrentPathTo("missing");
    SetCurrentPathTo(static_cast<const wchar_t*>(nullptr));
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), folder.path));
}

TEST_F(WorkingDirectory, AFolderThatTakesNoFilesIsLeftForTheTemporaryOne) {
    if (!std::filesystem::exists("/proc/self")) GTEST_SKIP() << "no folder that refuses files to everybody";
    std::filesystem::current_path("/proc/self");
    EXPECT_FALSE(IsCurrentPathWriteable());
    SetCurrentPathTo("/proc/self");
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), std::filesystem::temp_directory_path()));
}

}  // namespace
