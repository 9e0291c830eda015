#include "zorv/rectify/point_projection.h"

#include "tests/support/points_of.h"
#include <gtest/gtest.h>

#include "zorv/math/affine_map3d.h"

namespace {

TEST(PointProjection, KeepsShapeAndFieldsAtOneHeight) {
    const ZoAffinMap3d tilt = ZoAffinMap3d::Translate(100, 50, 20) * ZoAffinMap3d::RotXYZ(0.8, 0.3, -0.5);
    ZoPointList list;
    unsigned int id = 10;
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {4.0, 3.0}, {0.0, 3.0}, {1.0, 2.0}}) {
        const ZoPoint3d p = tilt * ZoPoint3d(x, y, 0);
        list.Add(ZoPoint(id++, p.x(), p.y(), p.z(), 7));
    }
    ZoPointList out = PointsOf({{1, 0, 0, 0, 0}});
    ASSERT_TRUE(ZoProjectPointListTo2d(&out, list));
    ASSERT_EQ(out.Count(), 5);
    EXPECT_EQ(std::tuple(out.First()->GetId(), out.Last()->GetControlFlags()), std::tuple(10u, 7));
    for (const ZoPoint* p = out.First(); p; p = p->NextConst()) {
        EXPECT_NEAR(p->z, out.First()->z, 1e-12);
        EXPECT_NEAR(p->Distance(out.First()), list.Find(p->GetId())->Distance(list.First()), 1e-12);
    }
    // Onto itself, and what spans no plane.
    ASSERT_TRUE(ZoProjectPointListTo2d(&list, list));
    EXPECT_EQ(list.Count(), 5);
    const ZoPointList line = PointsOf({{1, 0, 0, 0, 0}, {1, 1, 1, 1, 0}, {1, 2, 2, 2, 0}});
    EXPECT_FALSE(ZoProjectPointListTo2d(&out, line) || ZoProjectPointListTo2d(nullptr, list));
    EXPECT_EQ(out.Count(), 5);
}

}  // namespace
