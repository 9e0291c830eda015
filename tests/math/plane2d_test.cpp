#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "zorv/math/bounding_box2d.h"
#include "zorv/math/face2d.h"
#include "zorv/math/line2d.h"
#include "zorv/math/matrix2d.h"
#include "zorv/points/point_list.h"

namespace {

constexpr double kTolerance = 1e-12;
constexpr double kPi = std::numbers::pi;

void ExpectNear(const ZoPoint2d& point, double x, double y) {
    EXPECT_NEAR(point.x, x, kTolerance);
    EXPECT_NEAR(point.y, y, kTolerance);
}

TEST(Vector2d, AngleConstructorGivesTheUnitVector) {
    EXPECT_EQ(ZoVector2d(kPi / 6), ZoVector2d(std::sqrt(3.0) / 2, 0.5));
    EXPECT_NEAR(ZoVector2d(0, -2).angle(), -kPi / 2, kTolerance);
    EXPECT_NEAR(ZoVector2d(1, 0).angleTo({-1, 1e-300}), kPi, kTolerance);
    EXPECT_EQ(ZoVector2d().normal(), ZoVector2d::kIdentity);
    EXPECT_EQ(ZoVector2d(-1.5, 3e10).getXfloor(), -2);
    EXPECT_EQ(ZoVector2d(-1.5, 3e10).getYfloor(), 2147483647);
    ZoVector2d v(3, 4);
    EXPECT_TRUE(v.isParallelTo({-6, -8}, 1e-9) && v.isPerpendicularTo({8, -6}, 1e-9) && !v.isUnitLength(3.9));
    v.rotateBy(v);  // by itself as (cosine, sine)
    EXPECT_EQ(v, ZoVector2d(-7, 24));
}

TEST(Vector2d, MirrorsAcrossTheInfiniteLine) {
    ZoVector2d v(5, 1);
    EXPECT_EQ(v.mirror(ZoLine2d(0, 2, 1, 3)), ZoVector2d(-1, 7));
    EXPECT_EQ(v.mirror(ZoLine2d(0, 0, 1e-6, 0)), ZoVector2d(-1, 7));
}

TEST(Line2d, IntersectsBeyondItsEnds) {
    ZoPoint2d out(9, 9);
    EXPECT_TRUE(ZoLine2d(0, 0, 1, 1).interSect(ZoLine2d(10, 0, 10, 1), out));
    ExpectNear(out, 10, 10);
    EXPECT_FALSE(ZoLine2d(0, 0, 1, 0).interSect(ZoLine2d(0, 1, 5, 1), out));
    EXPECT_FALSE(ZoLine2d(0, 0, 0, 0).interSect(ZoLine2d(0, 1, 5, 7), out));
    ExpectNear(out, 10, 10);
    double across = 0;
    EXPECT_NEAR(ZoLine2d(1, 1, 4, 5).DistanceFromP1(0.0, 0.0, &across), -7.0 / 5, kTolerance);
    EXPECT_NEAR(across, 1.0 / 5, kTolerance);
}

TEST(Face2d, HoldsItsBorder) {
    EXPECT_FALSE(ZoFace2d().isInside({0, 0}));
    const ZoFace2d triangle({0, 0}, {4, 0}, {0, 4});
    EXPECT_TRUE(triangle.isInside({2, 2}) && !triangle.isInside({2.001, 2}));
    // An arrow that is not convex: the union of the two triangles at its first and third vertex.
    const ZoFace2d arrow({0, 0}, {4, 4}, {0, 2}, {-4, 4});
    EXPECT_TRUE(arrow.isInside({0, 1}) && !arrow.isInside({0, 3}));
    EXPECT_FALSE(ZoFace2d({1, 1}, {1, 1}, {1, 1}).isInside({1, 1}));

    ZoFace2dContainer faces;
    ZoPointList list;
    for (int i = 0; i < 2; ++i)
        list.Add(ZoPoint(1, 4.0 * i, 0, 0, 0));
    EXPECT_FALSE(faces.AddFace(list));
    list.Add(ZoPoint(1, 0, 4, 0, 0));
    EXPECT_TRUE(faces.AddFace(list) && faces.isInside(ZoPoint(1, 1, 1, 99, 0)));
    for (const bool fits : {true, false}) {
        list.Add(ZoPoint(1, 9, 9, 0, 0));
        EXPECT_EQ(faces.AddFace(list), fits);
    }
    EXPECT_EQ(faces.faces.size(), 2u);
}

TEST(BoundingBox2d, TouchingBoxesOverlapOnlyInclusively) {
    ZoBoundingBox2d box;
    EXPECT_FALSE(box.IsValid());
    box.Update(1, 2);
    EXPECT_TRUE(box.IsValid());
    box.Adjust(-1, 2, -3, 4);
    EXPECT_EQ(std::tuple(box.Xmin(), box.Xmax(), box.Ymin(), box.Ymax()), std::tuple(0, 3, -1, 6));
    EXPECT_TRUE(box.Overlap(ZoBoundingBox2d(9, 9, 3, 6), true) && !box.Overlap(ZoBoundingBox2d(9, 9, 3, 6), false));
    EXPECT_TRUE(box.Overlap(0, 0, true) && !box.Overlap(0, 0, false));
    EXPECT_EQ(ZoIntBoundingBox2d(5, 6, 1, 9).GetHeight(), 3);
    ZoIntBoundingBox2d().GetWidth();  // defined for an empty box
}

TEST(Matrix2d, MapsOfThePlane) {
    ZoPoint2d p(3, 1);
    ExpectNear(p.transformBy(ZoMatrix2d::rotation(kPi / 2, {1, 1})), 1, 3);
    ExpectNear(p.transformBy(ZoMatrix2d::scaling(2, {0, 3})), 2, 3);
    ExpectNear(p.transformBy(ZoMatrix2d::mirroring(ZoLine2d(0, 0, 5, 5))), 3, 2);
    ExpectNear(p.transformBy(ZoMatrix2d::mirroring(ZoPoint2d(1, 1))), -1, 0);
    ExpectNear(p.transformBy(ZoMatrix2d::translation({4, 5})), 3, 5);
    // The right-hand map acts first.
    ZoPoint2d q(1, 0);
    ExpectNear(q.transformBy(ZoMatrix2d::translation({1, 0}) * ZoMatrix2d::rotation(kPi / 2)), 1, 1);
    ExpectNear(q.scaleBy(3, {0, 1}), 3, 1);
    ExpectNear(q.mirror(ZoLine2d(0, 0, 5, 5)), 1, 3);
}

TEST(Matrix2d, InverseAndConformalParts) {
    ZoMatrix2d projective;
    projective.m = {2, 1, 5, -1, 3, 7, 0.1, 0.2, 1};
    EXPECT_TRUE((projective * projective.inverse()).isEqualTo(ZoMatrix2d(), kTolerance));
    EXPECT_NEAR(projective.det(), 2 * (3 - 1.4) - 1 * (-1 - 0.7) + 5 * (-0.2 - 0.3), kTolerance);
    ZoMatrix2d singular;
    singular.m = {1, 2, 3, 2, 4, 6, 0, 0, 1};
    const ZoMatrix2d before = singular;
    EXPECT_FALSE(singular.invert());
    EXPECT_EQ(singular.transpose().m, (std::array<double, 9>{1, 2, 0, 2, 4, 0, 3, 6, 1}));
    EXPECT_EQ(singular.m, before.m);

    double scale = 0, angle = 0;
    bool mirrored = true;
    EXPECT_TRUE((ZoMatrix2d::rotation(0.3) * ZoMatrix2d::scaling(4)).isConformal(scale, angle, mirrored));
    EXPECT_NEAR(scale, 4, kTolerance);
    EXPECT_NEAR(angle, 0.3, kTolerance);
    EXPECT_FALSE(mirrored);
    EXPECT_FALSE(projective.isConformal(scale, angle, mirrored));
    const ZoMatrix2d align = ZoMatrix2d::alignCoordSys({1, 2}, {0, 1}, {-1, 0}, {5, 5}, {2, 0}, {0, 2});
    ZoPoint2d tip(1, 3);  // one unit along the first system's x axis
    ExpectNear(tip.transformBy(align), 7, 5);
}

}  // namespace
