#include "zorv/core/archive.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/recorded_host.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/crc32.h"
#include "zorv/core/flag.h"
#include "zorv/core/object.h"
#include "zorv/core/zip_state.h"

namespace {

/// An archive whose items are written by a function of the test.
class TestArchive : public CZipWrapper {
  public:
    using CZipWrapper::CZipWrapper;

    std::uint32_t Add(const std::wstring& item, std::function<void(CZipWrapper&)> write) {
        writer = std::move(write);
        SzAdd(item);
        return lastResult;
    }
    void WriteItem() override { writer(*this); }

    std::function<void(CZipWrapper&)> writer = [](CZipWrapper&) {};
};

/// The item's bytes with the seal.
std::string StoredBytes(TestArchive& archive, int index) {
    const void* bytes = archive.UnzipItem(index, nullptr);
    return bytes ? std::string(static_cast<const char*>(bytes), archive.ReadBytesLeft()) : std::string("(none)");
}

// Made by Python's zipfile: "Walls/List", deflated, a count of 5 and five times the id 7 and the wide text "Wall", with
// its seal; "Höhe", stored, empty but for its seal; a comment behind the directory.
const std::string kForeignArchive = HexBytes(
    "504b03041400000008005c645d581cdf442115000000520000000a00000057616c6c732f4c6973746365800076200e674864"
    "c80142f279e293788f0200504b03041400000800005c645d581cdf442104000000040000000500000048c3b6686500000000"
    "504b010214031400000008005c645d581cdf442115000000520000000a000000000000000000000080010000000057616c6c"
    "732f4c697374504b010214031400000800005c645d581cdf4421040000000400000005000000000000000000000080013d00"
    "000048c3b66865504b050600000000020002006b000000640000000e006d61646520656c73657768657265");

}  // namespace

TEST(Archive, ItemIsAFlatSealedStreamOfLittleEndianValues) {
    enum class Kind { kThird = 2 };
    const TempFolder folder;
    TestArchive archive(folder.Name("stream.zip"), true);
    archive.Add(L"item", [](CZipWrapper& out) {
        out.WriteValue(true);
        out.WriteValue('Z');
        out.WriteValue(std::int16_t{-2});
        out.WriteValue(std::uint32_t{0xfffefdfc});
        out.WriteValue(-1.5F);
        out.WriteValue(0.1);
        out.WriteCount(3);
        out.Write(std::string("ab\0cd", 5));
        out.Write(std::wstring(L"A\u00fc\u20ac\U0001d11e"));
        out.WriteValue(Kind::kThird);
    });
    archive.Add(L"records", [](CZipWrapper& out) {
        ZoFlag flag;
        flag.SetFlag(0x11);
        ZoObject(300, L"Wa").WriteV9(&out);
        flag.WriteV9(&out);
        out.Write(std::wstring());
    });
    archive.Add(L"nothing", [](CZipWrapper&) {});
    archive.SzClose();
    ASSERT_EQ(archive.GetLastResult(), 0U);

    archive.SzOpen(folder.Name("stream.zip"), false);
    // The seal 0x7c444f4e was computed by Python's zlib.crc32.
    EXPECT_EQ(StoredBytes(archive, 0), HexBytes("01 5a feff fcfdfeff 0000c0bf 9a9999999999b93f 0300000000000000"
                                                "616200 4100fc00ac2034d81edd0000 02000000 4e4f447c"));
    EXPECT_EQ(StoredBytes(archive, 1).substr(0, 16), HexBytes("2c010000 570061000000 11000000 0000"));
    EXPECT_EQ(StoredBytes(archive, 2), std::string(4, '\0'));
}

TEST(Archive, ReadsWhatAnotherToolPacked) {
    const TempFolder folder;
    TestArchive archive(folder.Write("foreign.zip", kForeignArchive), false);
    ZIPENTRY entry;
    ASSERT_NE(archive.UnzipItem(L"WALLS\\list", &entry), nullptr);
    EXPECT_EQ(std::tuple(entry.unc_size, entry.comp_size), std::tuple(82U, 21U));
    EXPECT_EQ(archive.ReadBytesLeft(), 78U);
    const std::uint64_t count = archive.ReadCount(6);
    EXPECT_EQ(count, 5U);
    for (std::uint64_t i = 0; i < count; ++i) {
        ZoObject wall;
        wall.ReadV9(&archive);
        EXPECT_EQ(std::tuple(wall.GetId(), wall.GetName()), std::tuple(7U, L"Wall"));
    }
    EXPECT_TRUE(archive.Eof());

    EXPECT_TRUE(archive.HasItem(L"H\u00d6HE"));
    EXPECT_EQ(archive.GetLastResult(), 0U);
    EXPECT_FALSE(archive.HasItem(L"Tiefe"));
    EXPECT_EQ(archive.GetLastResult(), 0x500U);
    EXPECT_FALSE(archive.SzOpen(folder.Name("other.zip"), true));
    EXPECT_NE(archive.UnzipItem(L"h\u00f6he", nullptr), nullptr);
    EXPECT_EQ(archive.UnzipItem(L"Tiefe", nullptr), nullptr);
    EXPECT_TRUE(archive.GetFailedItems().empty());
}

TEST(Archive, ShortReadsStopAtTheEndOfTheItem) {
    ArchiveItem item("abcde");
    char bytes[8] = {};
    EXPECT_EQ(item.Read(nullptr, 2), 0U);
    EXPECT_EQ(item.Read(bytes, 3), 3U);
    EXPECT_EQ(item.Read(bytes, 8), 2U);
    EXPECT_STREQ(bytes, "dec");
    std::uint32_t number = 77;
    EXPECT_FALSE(item.ReadValue(number));
    EXPECT_EQ(number, 77U);
    std::string text = "x";
    EXPECT_EQ(ArchiveItem("abcde").Read(&text), 6U);
    EXPECT_EQ(text, "xabcde");

    // A pair, a lone surrogate, a letter, half a unit and no terminator.
    ArchiveItem archive(std::string("\x34\xd8\x1e\xdd\x34\xd8x\0y", 9));
    std::wstring wide = L"old";
    EXPECT_EQ(archive.Read(&wide), 3U);
    EXPECT_EQ(wide, L"\U0001d11e\ufffdx");
    EXPECT_TRUE(archive.Eof());
    EXPECT_EQ(archive.Read(&wide), 0U);
    EXPECT_EQ(wide, L"");
}

TEST(Archive, ReadingWhileWritingBeeps) {
    const RecordedHost host;
    TestArchive archive(L"never-closed-by-name/x.zip", true);
    char byte = 0;
    EXPECT_EQ(archive.Read(&byte, 1), 0U);
    EXPECT_EQ(host.beeps, (std::vector<std::pair<int, int>>{{1000, 100}}));
    archive.SzClose();
    EXPECT_EQ(archive.GetLastResult(), 0x200U);
    EXPECT_EQ(archive.ErrorMsg(), L"Error: Couldn't create/open file");
}

TEST(Archive, WrongSealIsRefusedByNameAndTakenByIndex) {
    const TempFolder folder;
    const HZIP zip = CreateZip(folder.Name("seal.zip").c_str(), nullptr);
    ZipAdd(zip, L"bad", "abcd0000", 8);
    ZipAdd(zip, L"tiny", "abc", 3);
    CloseZipZ(zip);
    TestArchive archive(folder.Name("seal.zip"), false);
    for (const wchar_t* name : {L"bad", L"tiny"}) {
        EXPECT_EQ(archive.UnzipItem(name, nullptr), nullptr);
        EXPECT_EQ(archive.GetLastResult(), 0x700U);
        EXPECT_EQ(archive.ReadBytesLeft(), 0U);
    }
    ASSERT_EQ(archive.GetFailedItems().size(), 2U);
    EXPECT_EQ(archive.GetFailedItems()[1].result, 0x700U);
    EXPECT_EQ(archive.GetFailedItems()[1].itemName, L"tiny");
    EXPECT_EQ(StoredBytes(archive, 0), "abcd0000");
    EXPECT_EQ(archive.UnzipItem(2, nullptr), nullptr);
    EXPECT_EQ(archive.GetLastResult(), 0x10000U);
}

TEST(Archive, ItemsThatGoWrongLeaveTheRestWhole) {
    const TempFolder folder;
    TestArchive archive(folder.Name("rest.zip"), true);
    EXPECT_EQ(archive.Add(L"first", [](CZipWrapper& out) { out.WriteValue(1); }), 0U);
    // The two passes differ: one value more, one less, and a wrong one that happens to end at the right place.
    for (const std::vector<std::size_t>& written : {std::vector<std::size_t>{8}, {0}, {5, 4}}) {
        const std::uint32_t result = archive.Add(L"uneven", [&](CZipWrapper& out) {
            for (const std::size_t size : out.sizing ? std::vector<std::size_t>{4} : written)
                out.AddZipData("xxxxxxxx", size);
        });
        EXPECT_EQ(result, 0x60000U);
    }
    EXPECT_EQ(archive.Add(L"huge",
                          [](CZipWrapper& out) {
                              if (out.sizing) out.AddZipData("", std::size_t{1} << 40);
                          }),
              0x30000U);
    EXPECT_EQ(archive.Add(L"last", [](CZipWrapper& out) { out.WriteValue(2); }), 0U);
    archive.SetThumbnailFile(folder.Write("picture", "PNG bytes"));
    archive.SzClose();

    archive.SzOpen(folder.Name("rest.zip"), false);
    EXPECT_TRUE(archive.HasItem(L"first") && !archive.HasItem(L"uneven") && !archive.HasItem(L"huge"));
    EXPECT_EQ(StoredBytes(archive, 2), "PNG bytes");
    ASSERT_NE(archive.UnzipItem(L"last", nullptr), nullptr);
    int value = 0;
    archive.ReadValue(value);
    EXPECT_EQ(value, 2);
}

TEST(Archive, LyingCountsAreBroughtDownToTheBytesThatAreThere) {
    EXPECT_EQ(ArchiveItem(HexBytes("0000000000000010") + "0123456789").ReadCount(4), 2U);
    EXPECT_EQ(ArchiveItem(HexBytes("ffffffffffffffff") + "0123456789").ReadCount(4), 0U);
}

TEST(Archive, AnyDamagedByteIsNoticedOrHarmless) {
    const auto open = [](CZipWrapper& archive, const std::string& bytes) {
        archive.zipHandle = zorv::detail::OpenZip(std::make_unique<std::istringstream>(bytes));
    };
    const wchar_t* const names[] = {L"Walls/List", L"H\u00f6he"};
    std::string content[2];
    TestArchive whole;
    open(whole, kForeignArchive);
    for (int i = 0; i < 2; ++i)
        content[i] = StoredBytes(whole, i);
    int readable = 0;
    for (std::size_t at = 0; at < 2 * kForeignArchive.size(); ++at) {
        // Each byte damaged, then each length cut off.
        std::string damaged = kForeignArchive;
        if (at < damaged.size()) {
            damaged[at] = static_cast<char>(damaged[at] ^ 0xff);
        } else {
            damaged.resize(at - damaged.size());
        }
        TestArchive archive;
        open(archive, damaged);
        for (int i = 0; i < 2; ++i) {
            const void* bytes = archive.UnzipItem(names[i], nullptr);
            if (!bytes) continue;
            ++readable;
            EXPECT_EQ(std::string(static_cast<const char*>(bytes), archive.ReadBytesLeft()),
                      content[i].substr(0, content[i].size() - 4))
                << at;
        }
    }
    EXPECT_GT(readable, 0);
}

TEST(Crc32, AgreesWithTheStandardInOneAndInSeveralParts) {
    EXPECT_EQ(ZoCalcCRC32().Crc("abc", 3), 0x352441c2U);
    EXPECT_EQ(ZoCalcCRC32().Crc("123456789", 9), 0xcbf43926U);  // the usual check value
    EXPECT_EQ(ZoCalcCRC32().Crc("", 0), 0U);
    ZoCalcCRC32 parts;
    parts.StartSingleCrc();
    parts.AddCrc("12", 2);
    parts.AddCrc(0x36353433);
    parts.AddCrc("789", 3);
    parts.StopSingleCrc();
    EXPECT_EQ(parts.GetCrc(), 0xcbf43926U);
    EXPECT_EQ(parts.Crc(nullptr, 3), 0U);
    EXPECT_EQ(parts.GetCrc(), 0U);
    // Crc keeps the running value, which is the inverse of its result.
    EXPECT_EQ(parts.Crc("abc", 3), 0x352441c2U);
    EXPECT_EQ(parts.GetCrc(), ~0x352441c2U);
    parts.Reset();
    EXPECT_EQ(parts.Crc("abc", 3), 0x352441c2U);
}
