#include "zorv/core/zip.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/hex_bytes.h"
#include "tests/support/temp_folder.h"
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

std::string FinishedMemory(HZIP zip) {
    void* base = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(ZipGetMemory(zip, &base, &size), 0U);
    return {static_cast<const char*>(base), size};
}

/// An item's bytes, or the result code when it does not unpack.
std::string Item(HZIP zip, const wchar_t* name) {
    int index = -1;
    ZoUnzipFind(zip, name, false, &index, nullptr);
    std::unique_ptr<char[]> block;
    std::size_t size = 0;
    const std::uint32_t result = ZoUnzipItem(zip, index, block, size);
    return result == eZoZipOk ? std::string(block.get(), size) : "result " + std::to_string(result);
}

void* SystemHandle(int descriptor) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor));
}

/// Puts a little-endian number over the bytes behind each place where the mark stands.
void Patch(std::string& bytes, const std::string& mark, std::size_t offset, std::uint32_t value) {
    for (std::size_t at = bytes.find(mark); at != bytes.npos; at = bytes.find(mark, at + 1)) {
        for (int i = 0; i < 4; ++i)
            bytes[at + offset + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
    }
}

const std::string kLocalMark = "PK\3\4";
const std::string kDirectoryMark = "PK\1\2";

}  // namespace

TEST(Zip, StoredItemHasTheBytesOfTheFormat) {
    const HZIP zip = CreateZip(nullptr, 1000, nullptr);
    EXPECT_EQ(ZipAdd(zip, L"a\\\u00e4", "abc", 3), 0U);
    std::string bytes = FinishedMemory(zip);
    CloseZipZ(zip);
    ASSERT_GT(bytes.size(), 60U);
    bytes.replace(10, 4, "TIME");
    bytes.replace(37 + 12, 4, "TIME");
    EXPECT_EQ(bytes, HexBytes("504b0304 1400 0008 0000") + "TIME" + HexBytes("c2412435 03000000 03000000 0400 0000") +
                         "a/\xc3\xa4" + "abc" + HexBytes("504b0102 1400 1400 0008 0000") + "TIME" +
                         HexBytes("c2412435 03000000 03000000 0400 0000 0000 0000 0000 20000000 00000000") +
                         "a/\xc3\xa4" + HexBytes("504b0506 0000 0000 0100 0100 32000000 25000000 0000"));
}

TEST(Zip, EveryKindOfTargetAndSourceReadsBack) {
    const TempFolder folder;
    const std::string text(200000, 'z');
    const std::wstring input = folder.Write("input", text);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const int target = ::open((folder.path / "handle.zip").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::write(target, "prefix", 6), 6);
    std::vector<char> memory(5000);

    struct Target {
        const char* name;
        HZIP zip;
    };
    const Target targets[] = {{"memory.zip", CreateZip(nullptr, 5000, nullptr)},
                              {"block.zip", CreateZip(memory.data(), 5000, nullptr)},
                              {"file.zip", CreateZip(folder.Name("file.zip").c_str(), nullptr)},
                              {"handle.zip", CreateZipHandle(SystemHandle(target), nullptr)},
                              {"pipe.zip", CreateZipHandle(SystemHandle(ends[1]), nullptr)}};
    for (const Target& t : targets) {
        ASSERT_NE(t.zip, nullptr) << t.name;
        EXPECT_TRUE(IsZipHandleZ(t.zip) && !ZoIsUnzipHandle(t.zip));
        const int source = ::open((folder.path / "input").c_str(), O_RDONLY);
        EXPECT_EQ(ZipAdd(t.zip, L"file", input.c_str()), 0U);
        EXPECT_EQ(ZipAdd(t.zip, L"memory", text.data(), 1000), 0U);
        EXPECT_EQ(ZipAdd(t.zip, L"empty", nullptr, 0), 0U);
        EXPECT_EQ(ZipAddFolder(t.zip, L"folder"), 0U);
        EXPECT_EQ(ZipAddHandle(t.zip, L"part", SystemHandle(source), 150000), 0U);
        EXPECT_EQ(ZipAddHandle(t.zip, L"rest", SystemHandle(source)), 0U);
        ::close(source);
        if (std::strstr("memory.zip block.zip", t.name)) {
            folder.Write(t.name, FinishedMemory(t.zip));
            EXPECT_EQ(ZipAdd(t.zip, L"late", "x", 1), 0x50000U);
        } else {
            void* base = memory.data();
            unsigned long size = 1;
            EXPECT_EQ(ZipGetMemory(t.zip, &base, &size), 0x20000U);
        }
        EXPECT_EQ(CloseZipZ(t.zip), 0U) << t.name;
    }
    std::string piped(5000, '\0');
    piped.resize(static_cast<std::size_t>(::read(ends[0], piped.data(), piped.size())));
    folder.Write("pipe.zip", piped);
    for (const int descriptor : {ends[0], ends[1], target})
        ::close(descriptor);

    for (const Target& t : targets) {
        const HZIP zip = ZoUnzipOpen(folder.Name(t.name).c_str());
        ASSERT_NE(zip, nullptr) << t.name;
        const std::pair<const wchar_t*, std::size_t> items[] = {{L"file", 200000}, {L"memory", 1000}, {L"empty", 0},
                                                                {L"folder/", 0},   {L"part", 150000}, {L"rest", 50000}};
        for (const auto& [name, size] : items)
            EXPECT_EQ(Item(zip, name), text.substr(0, size)) << t.name;
        ZIPENTRY entry;
        EXPECT_EQ(ZoUnzipEntry(zip, -1, &entry), 0U);
        EXPECT_EQ(entry.index, 6);
        ZoUnzipClose(zip);
    }
}

TEST(Zip, WrongHandlesAndArgumentsAreRefused) {
    const TempFolder folder;
    const HZIP out = CreateZip(folder.Name("x.zip").c_str(), nullptr);
    void* base = &base;
    unsigned long size = 1;
    EXPECT_EQ(ZipGetMemory(nullptr, &base, &size), 0x10000U);
    EXPECT_TRUE(base == nullptr && size == 0);
    EXPECT_EQ(ZipAdd(nullptr, L"x", "y", 1), 0x10000U);
    EXPECT_EQ(ZipAdd(out, L"", "y", 1), 0x10000U);
    EXPECT_EQ(ZipAdd(out, nullptr, "y", 1), 0x10000U);
    EXPECT_EQ(ZipAdd(out, L"x", folder.Name("missing").c_str()), 0x200U);
    EXPECT_EQ(FormatZipMessageZ(1, nullptr, 0), std::strlen("Couldn't create/open file"));
    EXPECT_EQ(ZoUnzipEntry(out, -1, nullptr), 0x80000U);
    EXPECT_EQ(ZoUnzipClose(out), 0x80000U);
    EXPECT_EQ(CloseZipZ(out), 0U);
    const HZIP in = ZoUnzipOpen(folder.Name("x.zip").c_str());
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(ZipAddFolder(in, L"x"), 0x80000U);
    EXPECT_EQ(CloseZipZ(in), 0x80000U);
    EXPECT_EQ(ZoUnzipItem(in, 0, nullptr, 0), 0x10000U);
    ZoUnzipClose(in);
    EXPECT_EQ(CreateZip(nullptr, 100, "secret"), nullptr);
    EXPECT_EQ(ZoUnzipOpen(folder.Name("missing.zip").c_str()), nullptr);
    EXPECT_EQ(ZoUnzipLastResult(), 0x200U);
    EXPECT_EQ(ZoUnzipOpen(folder.Write("garbage", std::string(70000, 'P')).c_str()), nullptr);
    EXPECT_EQ(ZoUnzipLastResult(), 0x700U);
}

TEST(Zip, MessagesAreCutToTheBuffer) {
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(FormatZipMessageZ(0x500, buffer, 5), 29U);
    EXPECT_STREQ(buffer, "File");
    EXPECT_EQ(buffer[5], 'x');
    EXPECT_EQ(FormatZipMessageZ(0x1000, buffer, 8), std::strlen("unknown zip result code"));
    EXPECT_STREQ(buffer, "unknown");
}

TEST(Zip, MemoryThatIsFullKeepsWhatItHas) {
    // Two stored items of 100 bytes take 2 * (30 + 1 + 100) + 2 * (46 + 1) + 22 = 378 bytes.
    std::string noise;
    std::uint32_t state = 1;
    for (int i = 0; i < 100; ++i)
        noise += static_cast<char>((state = state * 1664525U + 1013904223U) >> 24);
    for (const unsigned int room : {377U, 378U}) {
        const HZIP zip = CreateZip(nullptr, room, nullptr);
        EXPECT_EQ(ZipAdd(zip, L"1", noise.data(), 100), 0U);
        EXPECT_EQ(ZipAdd(zip, L"2", noise.data(), 100), room == 378 ? 0U : 0x30000U);
        EXPECT_EQ(FinishedMemory(zip).size(), room == 378 ? 378U : 22U + 47U + 131U);
        EXPECT_EQ(CloseZipZ(zip), 0U);
    }
}

TEST(Zip, AFailedFileKeepsTheOldOne) {
    const TempFolder folder;
    const std::wstring file = folder.Write("x.zip", "old");
    const HZIP zip = CreateZip(file.c_str(), nullptr);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "abc", 3), 3);
    ::close(ends[1]);
    EXPECT_EQ(ZipAddHandle(zip, L"short", SystemHandle(ends[0]), 10), 0x60000U);
    ::close(ends[0]);
    EXPECT_EQ(ZipAdd(zip, L"more", "x", 1), 0x40000U);
    EXPECT_EQ(CloseZipZ(zip), 0x40000U);
    EXPECT_EQ(folder.Read("x.zip"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 1);
}

TEST(Zip, LyingSizesAreRefused) {
    const TempFolder folder;
    const std::string text(3000, 'a');
    const HZIP made = CreateZip(nullptr, 5000, nullptr);
    ZipAdd(made, L"item", text.data(), 3000);
    const std::string honest = FinishedMemory(made);
    CloseZipZ(made);

    struct Lie {
        const char* name;
        std::size_t local, directory;
        std::uint32_t value;
    };
    const Lie lies[] = {{"unpacked too large to be", 22, 24, 0xf0000000},
                        {"unpacked larger than it is", 22, 24, 3001},
                        {"unpacked smaller than it is", 22, 24, 2999},
                        {"unpacked nothing", 22, 24, 0},
                        {"packed larger than the file", 18, 20, 0x7fffffff},
                        {"packed smaller than it is", 18, 20, 3},
                        {"wrong checksum", 14, 16, 5}};
    for (const Lie& lie : lies) {
        std::string bytes = honest;
        Patch(bytes, kLocalMark, lie.local, lie.value);
        Patch(bytes, kDirectoryMark, lie.directory, lie.value);
        const HZIP zip = ZoUnzipOpen(folder.Write("lie.zip", bytes).c_str());
        ASSERT_NE(zip, nullptr) << lie.name;
        EXPECT_EQ(Item(zip, L"item"), "result " + std::to_string(0x700)) << lie.name;
        // The way piece by piece into a file refuses as well and leaves no file.
        EXPECT_EQ(ZoUnzipItem(zip, 0, folder.Name("out/item").c_str()), 0x700U) << lie.name;
        EXPECT_FALSE(std::filesystem::exists(folder.path / "out" / "item")) << lie.name;
        ZoUnzipClose(zip);
    }

    const HZIP zip = ZoUnzipOpen(folder.Write("honest.zip", honest).c_str());
    char part[10];
    EXPECT_EQ(ZoUnzipItem(zip, 0, part, sizeof part), 0x600U);
    EXPECT_EQ(std::string(part, sizeof part), "aaaaaaaaaa");
    EXPECT_EQ(ZoUnzipItem(zip, 0, folder.Name("out/deep/item").c_str()), 0U);
    EXPECT_EQ(folder.Read("out/deep/item"), text);
    ZoUnzipClose(zip);
}

TEST(Zip, ManyItemsAreFoundByName) {
    constexpr int kItems = 100000;
    const TempFolder folder;
    const HZIP made = CreateZip(nullptr, 100 * kItems, nullptr);
    for (int i = 0; i < kItems; ++i)
        ASSERT_EQ(ZipAdd(made, (L"Item" + std::to_wstring(i)).c_str(), &i, sizeof i), 0U);
    const std::string bytes = FinishedMemory(made);
    // More than 65534 items need the end records with 64-bit counts, 98 bytes in all.
    const std::string end = bytes.substr(bytes.size() - 98);
    EXPECT_EQ(end.substr(0, 40), HexBytes("504b0606 2c00000000000000 2d002d00 0000000000000000"
                                          "a086010000000000 a086010000000000"));
    EXPECT_EQ(end.substr(56, 8), HexBytes("504b0607 00000000"));
    EXPECT_EQ(end.substr(76, 12), HexBytes("504b0506 00000000 ffffffff"));
    folder.Write("many.zip", bytes);
    CloseZipZ(made);
    const HZIP zip = ZoUnzipOpen(folder.Name("many.zip").c_str());
    ASSERT_NE(zip, nullptr);
    int wrong = 0;
    for (int i = 0; i < kItems; ++i) {
        int index = -1;
        ZoUnzipFind(zip, (L"iTEM" + std::to_wstring(i)).c_str(), true, &index, nullptr);
        wrong += index != i;
    }
    EXPECT_EQ(wrong, 0);
    int value = 0;
    EXPECT_EQ(ZoUnzipItem(zip, kItems - 1, &value, sizeof value), 0U);
    EXPECT_EQ(value, kItems - 1);
    EXPECT_EQ(ZoUnzipFind(zip, L"item5", false, &value, nullptr), 0x500U);
    ZoUnzipClose(zip);
}
