#include "zorv/rectify/select_volume3d.h"

#include <gtest/gtest.h>

#include "zorv/math/plane3d.h"

namespace {

TEST(SelectVolume3d, HoldsWhatIsInsideAllFourPlanes) {
    // A pyramid that opens upwards from the offset, its sides at 45 degrees.
    const ZoPoint3d apex(5000000, 5100000, 300);
    Zo3dSelectVolume volume;
    int side = 0;
    for (const auto& [x, y] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
        ZoPlane plane;
        plane.A() = x;
        plane.B() = y;
        plane.C() = 1;
        volume.SetPlane(side++, plane);
    }
    volume.SetOffset(apex);
    const ZoPoint3d inside = apex + ZoVector3d(1, -1.999, 2), face = apex + ZoVector3d(-2, 0, 2);
    EXPECT_FALSE(volume.IsInSelectRange(inside));
    volume.StartPyramid();
    EXPECT_TRUE(volume.IsInSelectRange(inside) && volume.IsInSelectRange(face));
    EXPECT_FALSE(volume.IsInSelectRange(face + ZoVector3d(-0.001, 0, 0)));
    EXPECT_FALSE(volume.IsInSelectRange(apex.x(), apex.y(), apex.z() - 1));
    volume.mode = 2;
    EXPECT_TRUE(volume.IsRunning() && !volume.IsInSelectRange(inside));
}

TEST(Plane3d, GoesThroughThreePointsOrHasNoNormal) {
    const ZoPlane3d plane(ZoPoint3d(1, 0, 5), ZoPoint3d(3, 0, 5), ZoPoint3d(1, 7, 5));
    EXPECT_EQ(plane.norm.z(), 1.0);  // left turn as seen from above, not turned towards the origin
    EXPECT_EQ(plane.dist, -5.0);
    const ZoPlane3d none(ZoPoint3d(1, 1, 1), ZoPoint3d(2, 2, 2), ZoPoint3d(3, 3, 3));
    EXPECT_TRUE(none.norm.IsNull());
    EXPECT_EQ(none.dist, 0.0);
}

}  // namespace
