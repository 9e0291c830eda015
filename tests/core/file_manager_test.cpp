#include "zorv/core/file_manager.h"

#include <algorithm>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

class FileManager : public testing::Test {
  protected:
    std::vector<std::wstring> Find(const std::string& directory, const std::wstring& extension, bool full, bool deep) {
        std::vector<CFileNode> nodes;
        EXPECT_EQ(CFileManager::FindFiles(nodes, full, folder.Name(directory), extension, &total, deep), 0);
        CFileManager::Sort(nodes);
        std::vector<std::wstring> names;
        for (const CFileNode& node : nodes)
            names.push_back((node.type == CFileNode::kTypeFolder ? L"<" : L"") + node.name);
        return names;
    }

    /// top: a.coo (3 bytes), b.COO (5), c, .hidden, sub; sub: d.x.coo (7)
    void MakeTree() {
        std::filesystem::create_directories(folder.path / "top" / "süb €");
        folder.Write("top/a.coo", "123");
        folder.Write("top/b.COO", "12345");
        folder.Write("top/coo", "");
        folder.Write("top/.hidden", "1234");
        folder.Write("top/süb €/d.x.coo", "1234567");
    }

    const TempFolder folder;
    std::uint64_t total = 100;
};

TEST_F(FileManager, CreatesFoldersUpToTheLastSeparator) {
    EXPECT_EQ(CFileManager::CreateFolders(folder.Name("a\\Größe €/c")), 2);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path / "a" / "Größe €"));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "a" / "Größe €" / "c"));
    EXPECT_EQ(CFileManager::CreateFolders(folder.Name("a\\Größe €\\c\\")), 1);
    EXPECT_EQ(CFileManager::CreateFolders(L"none"), 0);
    EXPECT_TRUE(CFileManager::isWriteAble(folder.Name("a\\Größe €\\c")));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path / "a" / "Größe €" / "c"));
    EXPECT_FALSE(CFileManager::isWriteAble(folder.Name("missing")));
    const std::wstring base = folder.Name("");
    EXPECT_EQ(CFileManager::CreateFolders(base + std::wstring(258 - base.size(), L'n') + L"\\"), 1);
    EXPECT_EQ(CFileManager::CreateFolders(base + std::wstring(259 - base.size(), L'm') + L"\\"), 0);
}

TEST_F(FileManager, FindsByExactExtensionAndListsEveryFolder) {
    MakeTree();
    const std::wstring sub = folder.Name("top\\süb €");
    EXPECT_EQ(Find("top", L"coo", false, false), (std::vector<std::wstring>{L"<" + sub, L"a.coo", L"coo"}));
    EXPECT_EQ(total, 103u);
    EXPECT_EQ(Find("top", L"", false, true),
              (std::vector<std::wstring>{L"<" + sub, L"a.coo", L"b.COO", L"coo", L"d.x.coo"}));
    EXPECT_EQ(total, 103u + 15u);
    EXPECT_EQ(Find("top", L"coo", true, true),
              (std::vector<std::wstring>{L"<" + sub, folder.Name("top\\a.coo"), folder.Name("top\\coo"),
                                         sub + L"\\d.x.coo"}));
    EXPECT_TRUE(Find("missing", L"", true, true).empty());
    // One name that reads like a way back up.
    std::filesystem::create_directories(folder.path / "odd" / "x\\..");
    std::filesystem::create_directories(folder.path / "odd" / "x");
    EXPECT_EQ(Find("odd", L"", false, true).size(), 2u);
}

TEST_F(FileManager, NodesTellSizeAndTime) {
    folder.Write("a", "123");
    folder.Write("b", "");
    const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(2);
    std::filesystem::last_write_time(folder.path / "a", later);
    std::filesystem::last_write_time(folder.path / "b", later - std::chrono::hours(1));
    std::vector<CFileNode> nodes;
    CFileManager::FindFiles(nodes, false, folder.Name(""), L"", nullptr, false);
    CFileManager::Sort(nodes);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0].size, 3u);
    EXPECT_EQ(nodes[0].time.Steps() - nodes[1].time.Steps(), 3600u * std::uint64_t{10'000'000});
    // 2020-01-01 in steps of 100 ns since 1601.
    EXPECT_GT(nodes[0].time.Steps(), 132223104000000000u);
    CFileNode up;
    up.SetUpFolder();
    EXPECT_TRUE(up < nodes[0]);
}

TEST_F(FileManager, DeletesAFolderAndWhatIsAllowed) {
    MakeTree();
    EXPECT_EQ(CFileManager::DeleteFolder(folder.Name("top"), false), 0);
    EXPECT_EQ(folder.Read("top/süb €/d.x.coo"), "1234567");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "top" / "a.coo"));
    // The hidden file stays, so the folder cannot go.
    EXPECT_NE(CFileManager::DeleteFolder(folder.Name("top"), true), 0);
    EXPECT_EQ(folder.Read("top/.hidden"), "1234");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "top" / "süb €"));
    std::filesystem::remove(folder.path / "top" / ".hidden");
    EXPECT_EQ(CFileManager::DeleteFolder(folder.Name("top"), true), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "top"));
    const std::wstring file = folder.Write("file", "x");
    EXPECT_EQ(CFileManager::DeleteFolder(file, true), 0);
    EXPECT_EQ(CFileManager::DeleteFolder(L"", true), 0);
    EXPECT_EQ(folder.Read("file"), "x");
}

TEST_F(FileManager, LinksAreNeitherFollowedNorCounted) {
    std::filesystem::create_directories(folder.path / "top");
    std::filesystem::create_directories(folder.path / "kept");
    folder.Write("kept/file", "x");
    std::filesystem::create_directory_symlink(folder.path / "kept", folder.path / "top" / "link");
    std::filesystem::create_directory_symlink(folder.path / "top", folder.path / "top" / "cycle");
    EXPECT_EQ(Find("top", L"", false, true).size(), 2u);
    EXPECT_EQ(CFileManager::DeleteFolder(folder.Name("top"), false), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path / "top" / "link"));
    EXPECT_EQ(CFileManager::DeleteFolder(folder.Name("top"), true), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "top"));
    EXPECT_EQ(folder.Read("kept/file"), "x");
}

TEST(FileManagerText, SizesAreNice) {
    for (const auto& [bytes, text] : {
             std::pair<std::uint64_t, std::wstring>{0, L"0 Byte"},
             {1024, L"1024 Byte"},
             {1025, L"1,025 Byte (1.00 KB)"},
             {1048576, L"1,048,576 Byte (1024.00 KB)"},
             {1572864, L"1,572,864 Byte (1.50 MB)"},
             {1073741824, L"1,073,741,824 Byte (1024.00 MB)"},
             {2684354560, L"2,684,354,560 Byte (2.50 GB)"},
         })
        EXPECT_EQ(CFileManager::GetAsNiceString(bytes), text);
}

TEST(FileManagerText, RootsAndParents) {
    for (const wchar_t* root : {L"\\", L"/", L"\\\\", L"C:", L"C:\\", L"name"})
        EXPECT_TRUE(CFileManager::isRoot(root)) << testing::PrintToString(std::wstring(root));
    for (const wchar_t* other : {L"", L"\\a", L"/home", L"C:\\a", L"C:\\a\\"})
        EXPECT_FALSE(CFileManager::isRoot(other)) << testing::PrintToString(std::wstring(other));
    EXPECT_EQ(CFileManager::oneFolderUp(L"C:\\a\\b"), L"C:\\a");
    EXPECT_EQ(CFileManager::oneFolderUp(L"C:\\a\\"), L"C:\\a");
    EXPECT_EQ(CFileManager::oneFolderUp(L"a"), L"a");
    EXPECT_EQ(CFileManager::oneFolderUp(L"/a/b"), L"\\a");
}

}  // namespace
