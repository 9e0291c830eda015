#include "tests/support/archive_item.h"
#include <gtest/gtest.h>

#include "zorv/points/point_list.h"

namespace {

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

    ZoPointList one;
    one.Add(point);
    const std::string bytes = std::string("\x01\0\0\0\0\0\0\0", 8) + PointBytes();
    EXPECT_EQ(ArchiveBytes(one), bytes);

    ZoPointList list;
    list.Add(ZoPoint(1, 0, 0, 0, 0));
    EXPECT_EQ(ReadArchiveBytes(bytes, list), 0u);
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
        ZoPointList list;
        ReadArchiveBytes(std::string("\0\0\0\0\0\0\0\x10", 8) + records.substr(0, cut), list);
        // The name takes 4 bytes more than the smallest record, so the last bytes of one may be missing.
        EXPECT_EQ(list.Count(), static_cast<int>((cut + 4) / PointBytes().size())) << cut;
    }
}

}  // namespace
