#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include <gtest/gtest.h>

#include "zorv/points/point_list.h"

namespace {

/// Record of one point: id 7, name "Aé", flags 4, photo 2, camera 3, control 5, the coordinates 1 to 9, the normal
/// 0.5, 1, 2, 11 images, color 0x010203.
std::string PointBytes() {
    return HexBytes(
        "07000000 4100e9000000 04000000 02000000 03000000 0500"
        "000000000000f03f 0000000000000040 0000000000000840 0000000000001040 0000000000001440 0000000000001840"
        "0000000000001c40 0000000000002040 0000000000002240 0000003f 0000803f 00000040 0000 0b00 03020100");
}

TEST(PointArchive, RecordsHaveTheirBytes) {
    ZoPoint point(7, 1.0, 2.0, 3.0, 5);
    point.name = L"A\u00E9";
    point.flags = 4;
    point.photoId = 2;
    point.cameraId = 3;
    std::tie(point.dx, point.dy, point.dz) = std::tuple(4, 5, 6);
    std::tie(point.residualX, point.residualY, point.residualZ) = std::tuple(7, 8, 9);
    std::tie(point.vx, point.vy, point.vz) = std::tuple(0.5F, 1.0F, 2.0F);
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
    delete list.Subtract(list.First());
    EXPECT_EQ(ArchiveBytes(list), bytes);
    EXPECT_EQ(list.First()->spare1, 0u);
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
