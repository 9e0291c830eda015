#include <cstring>
#include <optional>

#include "tests/support/allocation_count.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/recorded_log.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/cloud_buffer.h"
#include "zorv/cloud/cloud_container.h"
#include "zorv/core/platform/mapping.h"

namespace {

using zorv::detail::MappingRefusal;

/// Places in a file whose first cloud has its points from kFirstPoint on.
constexpr std::size_t kFileHead = 12, kFirstInfo = 80, kFirstCount = 552, kFirstPoint = 556, kRecord = 58;

void Put(std::string& bytes, std::size_t place, const std::string& hex) {
    const std::string value = HexBytes(hex);
    bytes.replace(place, value.size(), value);
}

/// The cloud "Wall", selected and active, of one point, without the file's head.
std::string WallBytes() {
    std::string bytes(kFirstPoint + kRecord, '\0');
    Put(bytes, 12, "ebbebeba 57616c6c");
    Put(bytes, 76, "03000000");
    Put(bytes, kFirstInfo, "ffceffce 11000000");
    Put(bytes, kFirstInfo + 8, "0100000000000000 feffffffffffffff 0300000000000000 0000000001000000");
    Put(bytes, kFirstInfo + 48, "0800000000000000");
    Put(bytes, kFirstInfo + 104, "10");
    Put(bytes, kFirstInfo + 168, "000000000000f03f 000000000000f03f 000000000000f03f");
    Put(bytes, kFirstInfo + 192, "16");
    Put(bytes, kFirstInfo + 238, "54");
    Put(bytes, kFirstInfo + 298, "30");
    Put(bytes, kFirstInfo + 351, "78");
    Put(bytes, kFirstInfo + 352, "05");
    Put(bytes, kFirstInfo + 464, "ffffffffffffffff");
    Put(bytes, kFirstCount, "01000000");
    // (1, -2, 0.5), extra (1.5, 0, 0), normal (0, 0, -1), 7 measurements, selected, colour with intensity
    Put(bytes, kFirstPoint, "bebabeba");
    Put(bytes, kFirstPoint + 4, "000000000000f03f 00000000000000c0 000000000000e03f");
    Put(bytes, kFirstPoint + 28, "0000c03f 00000000 00000000 00000000 00000000 000080bf 07 01 01020304");
    return bytes.substr(kFileHead);
}

std::string Head(const std::string& count) {
    return HexBytes("0df0beba 02000000" + count);
}

/// Opens what hosts do not need.
struct Container : ZoPointCloudContainer {
    using ZoPointCloudContainer::Read;
    using ZoPointCloudContainer::Write;
};

/// A container that has read these bytes, through a view or by plain reads.
struct ReadBack {
    explicit ReadBack(const std::string& bytes, bool plainly = false) {
        std::optional<MappingRefusal> refusal;
        if (plainly) refusal.emplace(MappingRefusal::kView);
        container.dirty = 5;
        answer = container.Read(folder.Write("a.zoptc", bytes), result);
    }
    std::string Points() const {
        std::string sizes;
        for (const ZoPointCloud* cloud = container.First(); cloud; cloud = cloud->NextConst())
            sizes += std::to_string(cloud->Size()) + " ";
        return sizes;
    }

    TempFolder folder;
    RecordedLog log;
    Container container;
    ZoPointCloudReadResult result;
    bool answer;
};

TEST(CloudFile, HasTheBytesOfItsRecords) {
    const std::string bytes = Head("02000000") + WallBytes() + WallBytes();
    for (const bool plainly : {false, true}) {
        ReadBack read(bytes, plainly);
        EXPECT_TRUE(read.answer);
        EXPECT_EQ(read.log.lines, std::vector<std::wstring>(plainly ? 1 : 0, L"1 ZoFileBuff: Memory Map Error"));
        ASSERT_EQ(read.result.clouds.size(), 2u);
        const ZoPointCloud& cloud = *read.result.clouds[1];
        EXPECT_EQ(std::tuple(cloud.GetId(), cloud.GetFlag()), std::tuple(2u, 3));
        const ScanDataInfo& info = cloud.scanInfo;
        EXPECT_TRUE(info.firstWord == 0x11 && info.timeStart == 1 && info.timeEnd == -2 && info.timeStart2 == 3);
        EXPECT_TRUE(info.words[1] == 8 && info.blocks[3][0] == 0x10 && info.triple3[0] == 1);
        EXPECT_TRUE(info.lastBlock[0] == 0x16 && info.texts[1][0] == 'T' && info.middleWords[0] == 0x30);
        EXPECT_TRUE(info.lastText[29] == 'x' && info.fiveWords[0] == 5 && ~info.tenWords[9] == 0);
        const ZoScanPoint3d& point = cloud.points[0];
        EXPECT_TRUE(point.x() == 1 && point.y() == -2 && point.z() == 0.5 && point[3] == 1);
        EXPECT_TRUE(point.extra[0] == 1.5F && point.normal[2] == -1 && point.nbrMeasurements == 7 && point.flags == 1);
        EXPECT_EQ(std::tuple(point.color, point.falseColor), std::tuple(0x04030201u, 0x04030201u));
        EXPECT_EQ(cloud.selectedBox.GetCount(), 1u);
        EXPECT_EQ(read.container.center.GetCount(), 2);
        EXPECT_EQ(read.container.Write(read.folder.Name("b")), 1);
        EXPECT_EQ(read.folder.Read("b"), bytes);

        std::FILE* file = std::fopen((read.folder.path / "parts").c_str(), "wb");
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(read.container.Write(file), 1);
        EXPECT_EQ(cloud.Write(file), 1);
        info.Write(file);
        point.Write(file);
        std::fclose(file);
        EXPECT_EQ(cloud.Write(nullptr), 0);
        EXPECT_EQ(read.folder.Read("parts"),
                  bytes + WallBytes() + WallBytes().substr(68, 472) + WallBytes().substr(544));
    }
}

TEST(CloudFile, PlainReadsGoAcrossTheEndsOfTheirWindow) {
    Container container, back;
    for (int i = 0; i < 20000; ++i)
        (i == 0 ? container.AddCloud() : container.First())->AddPoint(ZoScanPoint3d(i, 0.1 * i, -i, i));
    const TempFolder folder;
    const std::wstring name = folder.Name("big.zoptc");
    ASSERT_EQ(container.Write(name), 1);
    const MappingRefusal refusal(MappingRefusal::kMapping);
    ZoPointCloudReadResult result;
    EXPECT_TRUE(back.Read(name.c_str(), result));
    ASSERT_EQ(back.Size(), 20000u);
    EXPECT_EQ(back.First()->points.back().x(), 19999);
    EXPECT_EQ(std::memcmp(&back.First()->center, &container.First()->center, 3 * sizeof(double)), 0);

    // A read that does not fit changes nothing, whatever its size.
    ZoFileBuffMemoryMap buffer(name.c_str());
    std::string bytes(static_cast<std::size_t>(buffer.size), 'x');
    EXPECT_FALSE(buffer.Read(bytes.data(), bytes.size() + 1));
    EXPECT_EQ(bytes[0], 'x');
    EXPECT_TRUE(buffer.Read(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes, folder.Read("big.zoptc"));
    EXPECT_FALSE(buffer.Read(bytes.data(), 1));
}

TEST(CloudFile, CutAnywhereItKeepsTheWholePoints) {
    std::string whole = Head("01000000") + WallBytes();
    Put(whole, kFirstCount, "03000000");
    for (int i = 0; i < 2; ++i)
        whole += whole.substr(kFirstPoint, kRecord);
    // Every size but most of those inside the name and the scanner's record.
    for (std::size_t size = 0; size <= whole.size(); size += size > 17 && size < 545 ? 11 : 1) {
        SCOPED_TRACE(size);
        const std::size_t points = size < kFirstPoint ? 0 : (size - kFirstPoint) / kRecord;
        for (const bool plainly : {false, true}) {
            const ReadBack read(whole.substr(0, size), plainly);
            EXPECT_EQ(std::tuple(read.container.Size(), read.answer, read.container.GetDirty()),
                      std::tuple(points, size >= kFirstPoint, size < 8 ? 5u : 0u));
            EXPECT_EQ(read.result.error, size == 0 ? ZoFileBuffMemoryMap::kFileEmpty : 0);
        }
    }
}

TEST(CloudFile, DamageCostsWhatStandsBehindIt) {
    const std::string wall = WallBytes();
    const std::string junk = HexBytes("01020304");
    std::string twoPoints = wall, noPoints = wall.substr(0, 544), liar = wall, noInfo = wall;
    Put(twoPoints, 540, "02000000");
    Put(noPoints, 540, "00000000");
    Put(liar, 540, "ffffffff");
    Put(noInfo, 68, "00000000");
    std::string manyWords;
    for (int i = 0; i < 5000; ++i)
        manyWords += junk;
    struct Case {
        const char* name;
        std::string bytes, points;
        std::size_t lines;
    };
    const Case cases[] = {
        {"no clouds", Head("00000000"), "", 0},
        {"a cloud without points", Head("02000000") + noPoints + wall, "1 ", 0},
        {"a wrong point marker", Head("02000000") + twoPoints + junk + wall, "1 1 ", 0},
        {"a wrong cloud marker", Head("03000000") + wall + junk + wall, "1 1 ", 1},
        {"as many words as clouds", Head("89130000") + manyWords + wall, "1 ", 100},
        {"more words than clouds", Head("88130000") + manyWords + wall, "", 100},
        {"more points than bytes", Head("01000000") + liar, "1 ", 0},
        {"more clouds than bytes", Head("ffffffff") + wall + junk + wall, "1 1 ", 2},
        {"the count in the place of the record", Head("01000000") + noInfo, "0 ", 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        for (const bool plainly : {false, true}) {
            const ReadBack read(each.bytes, plainly);
            EXPECT_EQ(read.Points(), each.points);
            EXPECT_EQ(std::tuple(read.answer, read.log.lines.size(), read.container.GetDirty()),
                      std::tuple(!each.points.empty(), each.lines + (plainly ? 1 : 0), 0u));
        }
    }
    const ReadBack read(Head("01000000") + junk + wall);
    const std::wstring name = read.folder.Name("a.zoptc");
    EXPECT_EQ(read.log.lines[0], L"1 Pointcloud file " + name + L" corrupt, file position 16, size 618, 2.59 %");
}

TEST(CloudFile, WhatIsNoSuchFileChangesNothing) {
    ReadBack read(Head("01000000") + WallBytes());
    read.container.dirty = 7;
    const TempFolder& folder = read.folder;
    for (const char* head : {"0df0beba 01000000 01000000", "0df0bebb 02000000 01000000"})
        EXPECT_FALSE(read.container.Read(folder.Write("b", HexBytes(head) + WallBytes()), read.result));
    EXPECT_TRUE(read.log.lines.empty() && !read.container.Read(folder.Name("missing"), read.result));
    EXPECT_EQ(read.result.error, ZoFileBuffMemoryMap::kCannotOpen);
    EXPECT_FALSE(read.container.Read(folder.Name(""), read.result)) << "a folder";
    EXPECT_EQ(read.container.Write(folder.Name("no/such/folder")), 0);
    EXPECT_EQ(read.container.GetDirty(), 7u);
    EXPECT_TRUE(read.container.Read(folder.Name("a.zoptc"), read.result));
    EXPECT_EQ(read.container.clouds.Last()->GetId(), 2u) << "behind what is there";
    EXPECT_EQ(read.container.box.GetCount(), 2u);
}

TEST(CloudFile, LyingCountsCostNoMemory) {
    std::string bytes = Head("ffffffff") + WallBytes();
    Put(bytes, kFirstCount, "ffffffff");
    bytes.resize(700);
    const std::size_t before = AllocatedBytes();
    const ReadBack read(bytes);
    EXPECT_LE(read.container.First()->points.capacity(), (bytes.size() - kFirstPoint) / kRecord);
    // 82 bytes are left for twenty words in the place of clouds, each of which costs a table of observers.
    EXPECT_LT(AllocatedBytes() - before, 200'000u);
}

TEST(CloudFile, NamesAreCutAtACharacter) {
    struct Case {
        std::wstring name, expected;
    };
    const std::wstring a(58, L'a');
    for (const Case& each : {Case{a + L"bc", a + L"b"}, Case{a + L"\u00e4", a}, Case{a + L"b", a + L"b"},
                             Case{std::wstring(100, L'\u20ac'), std::wstring(19, L'\u20ac')}}) {
        ReadBack read(Head("01000000") + WallBytes());
        read.container.First()->SetName(each.name);
        read.container.Write(read.folder.Name("b"));
        read.container.Read(read.folder.Name("b"), read.result);
        EXPECT_EQ(read.container.clouds.Last()->GetName(), each.expected);
    }
    std::string bytes = Head("01000000") + WallBytes();
    bytes.replace(16, 60, std::string(60, 'n'));
    EXPECT_EQ(ReadBack(bytes).container.First()->GetName(), std::wstring(60, L'n'));
}

}  // namespace
