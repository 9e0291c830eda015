#include <cstring>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/core/archive.h"
#include "zorv/points/point_list.h"

namespace {

struct PointArchive : CZipWrapper {
    using CZipWrapper::CZipWrapper;
    ~PointArchive() override { SzClose(); }
    void WriteItem() override { points.WriteV9(this); }

    /// Makes the bytes the item at hand, as if they had been unpacked.
    void Take(const std::string& bytes) {
        writing = false;
        buffer = std::make_unique<char[]>(bytes.size());
        std::memcpy(buffer.get(), bytes.data(), bytes.size());
        bufferSize = bytes.size();
        position = 0;
    }
    ZoPointList points;
};

/// Record of one point, byte by byte: id 7, name "Aé", flags 4, photo 2, camera 3, control 5, x 1.0, color 0x010203.
std::string PointBytes() {
    const auto zeros = [](int n) { return std::string(static_cast<std::size_t>(n), '\0'); };
    std::string bytes(
        "\x07\0\0\0"
        "A\0"
        "\xE9\0"
        "\0\0",
        10);
    bytes += std::string(
        "\x04\0\0\0"
        "\x02\0\0\0"
        "\x03\0\0\0"
        "\x05\0",
        14);
    bytes += zeros(6) + "\xF0\x3F" + zeros(8 * 8);
    bytes += zeros(12 + 2) + std::string("\x0B\0", 2);
    return bytes + std::string("\x03\x02\x01\0", 4);
}

TEST(PointArchive, RecordsHaveTheirBytes) {
    ZoPoint point(7, 1.0, 0.0, 0.0, 5);
    point.name = L"A\u00E9";
    point.flags = 4;
    point.photoId = 2;
    point.cameraId = 3;
    point.imoCount = 11;
    point.color = 0x010203;
    point.spare1 = 99;

    const TempFolder folder;
    {
        PointArchive archive(folder.Name("a.zip"), true);
        archive.points.Add(point);
        archive.SzAdd(L"points");
    }
    PointArchive archive(folder.Name("a.zip"), false);
    const char* item = static_cast<const char*>(archive.UnzipItem(L"points", nullptr));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(std::string(item, archive.bufferSize), std::string("\x01\0\0\0\0\0\0\0", 8) + PointBytes());

    ZoPointList list;
    list.Add(ZoPoint(1, 0, 0, 0, 0));
    list.ReadV9(&archive);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Last()->name, point.name);
    EXPECT_EQ(list.Last()->x, 1.0);
    EXPECT_EQ(list.Last()->imoCount, 11);
    EXPECT_EQ(list.Last()->color, point.color);
    EXPECT_EQ(list.Last()->spare1, 0u);
}

TEST(PointArchive, LyingCountsAndCutRecordsEndTheList) {
    const std::string records = PointBytes() + PointBytes();
    for (std::size_t cut = 0; cut <= records.size(); ++cut) {
        PointArchive archive;
        archive.Take(std::string("\0\0\0\0\0\0\0\x10", 8) + records.substr(0, cut));
        ZoPointList list;
        list.ReadV9(&archive);
        // The name takes 4 bytes more than the smallest record, so the last bytes of one may be missing.
        EXPECT_EQ(list.Count(), static_cast<int>((cut + 4) / PointBytes().size())) << cut;
    }
}

}  // namespace
