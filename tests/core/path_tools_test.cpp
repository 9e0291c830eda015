#include "zorv/core/path_tools.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <sstream>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/platform/folders.h"

namespace {

TEST(PathTools, BothSeparatorsDivideAPath) {
    struct Row {
        std::wstring path, parent, name, stem, extension;
    };
    for (const Row& row : {
             Row{L"C:\\Bilder/Süd\\foto.01.JPG", L"C:\\Bilder/Süd", L"foto.01.JPG", L"foto.01", L".JPG"},
             Row{L"/a.b/c", L"/a.b", L"c", L"c", L""},
             Row{L"C:\\a.txt", L"C:\\", L"a.txt", L"a", L".txt"},
             Row{L"\\a", L"\\", L"a", L"a", L""},
             Row{L"x\\\\a.", L"x", L"a.", L"a", L"."},
             Row{L".coo", L"", L".coo", L".coo", L""},
             Row{L"a/..", L"a", L"..", L"..", L""},
             Row{L"a/b\\", L"a/b", L"", L"", L""},
             Row{L"", L"", L"", L"", L""},
         }) {
        EXPECT_EQ(std::tuple(ZoGetPath(row.path), ZoGetFilename(row.path), ZoGetFilenameNoExt(row.path),
                             ZoGetExtension(row.path)),
                  std::tuple(row.parent, row.name, row.stem, row.extension));
    }
}

TEST(PathTools, ExtensionsChangeInPlace) {
    const auto changed = [](std::wstring path, const std::wstring& extension) {
        ZoChangeFileExtension(path, extension);
        return path;
    };
    EXPECT_EQ(changed(L"a.b\\c.coo", L".imo"), L"a.b\\c.imo");
    EXPECT_EQ(changed(L"a.b\\c", L"imo"), L"a.b\\c.imo");
    EXPECT_EQ(changed(L"a.b\\c.coo", L""), L"a.b\\c");
}

TEST(PathTools, JoiningGivesOneSeparator) {
    EXPECT_EQ(ZoMakeFilename(L"a\\", L"b"), L"a\\b");
    EXPECT_EQ(ZoMakeFilename(L"a/", L"\\b"), L"a/b");
    EXPECT_EQ(ZoMakeFilename(L"", L"b"), L"b");
    EXPECT_EQ(ZoMakeFilename(L"a", L"b"), std::wstring(L"a") + zorv::detail::kPathSeparator + L"b");
}

TEST(PathTools, FoldersHaveAChecksum) {
    // CRC-32 of "C:BilderSüd" and of "homea😀" in UTF-16LE, by another tool.
    EXPECT_EQ(GetPathCRC(L"C:\\Bilder/Süd\\foto.jpg"), L"BEAF9182");
    EXPECT_EQ(GetPathCRC(L"/home/a\\\U0001F600/b"), L"ABF35D66");
    EXPECT_EQ(GetPathCRC(L"foto.jpg"), L"00000000");
    EXPECT_EQ(MakePathCrcDir(L"out", L"C:/Bilder/Süd/x"), L"out_BEAF9182");
    EXPECT_EQ(MakeOutputPathCRCFilename(L"R\\", L"out", L"foto.jpg"), ZoMakeFilename(L"R\\out_00000000", L"foto.jpg"));
}

TEST(PathTools, FileTimesAreLocalText) {
    const TempFolder folder;
    const std::wstring name = folder.Write("Größe €.txt", "x");
    EXPECT_TRUE(ZoExistFile(name));
    std::tm june{};
    std::istringstream("2021-06-04 03:02:01") >> std::get_time(&june, "%Y-%m-%d %H:%M:%S");
    june.tm_isdst = -1;
    const auto moment = std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(std::mktime(&june)));
    std::filesystem::last_write_time(folder.path / "Größe €.txt", moment);
    EXPECT_EQ(ZoGetFileTimeAsString(name, 2), L"2021-06-04  03:02:01");
    for (int which : {0, 1, 7}) {
        std::wstring text = ZoGetFileTimeAsString(name, which);
        EXPECT_GT(text, L"2022");
        std::replace_if(
            text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; }, L'0');
        EXPECT_EQ(text, L"0000-00-00  00:00:00") << which;
    }
    EXPECT_EQ(ZoGetFileTimeAsString(folder.Name("missing"), 0), L"");
    EXPECT_FALSE(ZoExistFile(folder.Name("missing")));
}

}  // namespace
