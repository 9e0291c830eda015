#include "zorv/math/bounding_box3d.h"

#include <cmath>
#include <limits>

#include "tests/support/archive_item.h"
#include <gtest/gtest.h>

#include "zorv/math/aligned_box3d.h"
#include "zorv/points/point_list.h"

namespace {

constexpr double kUnset = std::numeric_limits<double>::max();
constexpr double kRounding = 1e-12;  // of coordinates around 300

void ExpectBounds(const ZoBoundingBox3d& box, double x0, double y0, double z0, double x1, double y1, double z1) {
    const double bounds[] = {box.Xmin(), box.Ymin(), box.Zmin(), box.Xmax(), box.Ymax(), box.Zmax()};
    const double expected[] = {x0, y0, z0, x1, y1, z1};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(bounds[i], expected[i]) << i;
}

TEST(BoundingBox3d, ResetBoxIsInvalidAndChangesNothing) {
    ZoBoundingBox3d empty;
    empty.Move(1, 1, 1);
    ExpectBounds(empty, kUnset, kUnset, kUnset, -kUnset, -kUnset, -kUnset);
    ZoBoundingBox3d box(3, 0, 9, 1, 5, 7), other;
    box.Union(empty);
    EXPECT_EQ(box.GetCount(), 0u);
    ExpectBounds(box, 1, 0, 7, 3, 5, 9);
    other.Update(1, 2, 3);
    other.Update({-1, std::nan(""), 4});
    box.Union(other);
    EXPECT_EQ(box.GetCount(), 1u);
    ExpectBounds(box, -1, 0, 3, 3, 5, 9);
    EXPECT_EQ(std::tuple(box.GetMin(), box.GetVol(), box.Center().z()), std::tuple(4.0, 120.0, 6.0));
    EXPECT_FALSE(box.SameSize(empty, 100));
    box.SetXmin(kUnset);
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(box.Center().z(), 0.0);
}

TEST(BoundingBox3d, FacesBelongToTheBoxAndOverlapOnlyWhenTouchingCounts) {
    const ZoBoundingBox3d box(0, 0, 0, 1, 1, 1);
    EXPECT_TRUE(box.IsInBox({1, 1, 0}) && !box.IsInBox(1, 1, std::nextafter(1, 2)) && !box.IsInYZ(-0.1, 1));
    const ZoBoundingBox3d face(1, 0, 0, 2, 1, 1), inside(0.5, 0.5, 0.5, 2, 2, 2), above(0.5, 0.5, 1.5, 2, 2, 2);
    for (const bool touching : {true, false}) {
        EXPECT_EQ(box.Overlap(face, touching), touching);
        EXPECT_EQ(face.Overlap(box, touching), touching);
        EXPECT_TRUE(box.Overlap(inside, touching) && !box.Overlap(above, touching));
        EXPECT_TRUE(above.OverlapXY(box, touching));
    }
    ZoBoundingBox3d swapped = box;
    swapped.SetXmin(1);
    swapped.SetXmax(0);
    EXPECT_TRUE(swapped.Overlap(inside, false));
    EXPECT_TRUE(box.SameSize({0, 0, 0, 1, 0.9, 1}, 0.2) && !box.SameSize({0, 0, 0, 1, 0.7, 1}, 0.2));
    EXPECT_TRUE(box.CheckMax({0.1, 0.1, 0, 0.9, 0.9, 0.9}) && !box.CheckMax({0.1, 0.1, 0.1, 0.9, 0.9, 0.9}));
}

TEST(BoundingBox3d, BoundsMoveUpToTheOppositeOnes) {
    ZoBoundingBox3d box(0, 0, 0, 4, 4, 4);
    box.MoveXmax(-3);
    box.MoveYmax(-5);
    box.MoveZmin(4.5);
    box.MoveXmin(-1);
    ExpectBounds(box, -1, 0, 4, 1, 0, 4);
    box.Swell(1);
    box.AddFrame(0, 1, 2);
    box.Move(10, 0, 0);
    box.Scale(2);
    ExpectBounds(box, 16, -4, 2, 24, 4, 14);
}

TEST(BoundingBox3d, ArchiveRecordHasFiftyTwoBytes) {
    ZoBoundingBox3d box(1, 2, 3, 4, 5, 6), back;
    box.count = 0x01020304;
    const std::string bytes = ArchiveBytes(box);
    EXPECT_EQ(bytes.size(), 52u);
    EXPECT_EQ(bytes.substr(40), std::string("\0\0\0\0\0\0\x18@\4\3\2\1", 12));  // 6.0, count
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    ExpectBounds(back, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(back.count, box.count);
}

TEST(BoundingBox3d, PointListsCountTheirPointsInUse) {
    ZoPointList points;
    for (unsigned int id = 1; id <= 4; ++id) {
        ZoPoint point(id, id, 10.0 * id, -1.0 * id, 0);
        point.SetFlag(id);
        points.Add(point);
    }
    ZoBoundingBox3d box(0, 0, 0, 99, 99, 99);
    points.CalcBoundingBox(box, true);
    EXPECT_EQ(box.GetCount(), 4u);
    ExpectBounds(box, 1, 10, -4, 4, 40, -1);
    points.CalcBoundingBox(box, false);  // flags 1, 3 and 4, not 2
    EXPECT_EQ(box.GetCount(), 3u);
}

TEST(AlignedBox3d, CornersComeOutInWorldCoordinates) {
    const ZoFrame3d frame({100, 200, 300}, {0.6, 0.8, 0}, {-0.8, 0.6, 0}, ZoVector3d::ZAxis);
    ZoAlignedBoundingBox3d box(ZoAffinMap3d::Inv(ZoAffinMap3d(frame)));
    const double corners[8][3] = {{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {0, 2, 0},
                                  {0, 0, 1}, {4, 0, 1}, {4, 2, 1}, {0, 2, 1}};
    for (const auto& c : corners)
        box.Update(ZoPoint3d(frame, c[0], c[1], c[2]));
    EXPECT_NEAR(box.GetVol(), 8.0, 8 * kRounding);
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(box.GetPoint(i).IsSame(ZoPoint3d(frame, corners[i][0], corners[i][1], corners[i][2]), kRounding));
    EXPECT_TRUE(box.GetPoint(8).IsSame({100, 200, 300}, kRounding) && box.IsInBox(ZoPoint3d(frame, 3.9, 1.9, 0.9)));
    EXPECT_FALSE(box.IsInBox(ZoPoint3d(frame, 3.9, 2.1, 0.9)));
    box.SetMap(ZoAffinMap3d::Scale(0, 1, 1));
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(box.inverse[0][0], 0.0);
}

}  // namespace
