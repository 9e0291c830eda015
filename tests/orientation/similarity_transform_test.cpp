#include <cmath>

#include "tests/support/point_ids.h"
#include "tests/support/points_of.h"
#include <gtest/gtest.h>

#include "zorv/orientation/similarity.h"

namespace {

constexpr short kX = 1;
constexpr short kZ = 4;

/// x' = x + (100, 0, 0): what a point misses of its control point is easy to see.
ZoTrafo3d Shift() {
    ZoTrafo3d trafo;
    trafo.rotation.SetIdent();
    trafo.targetOrigin = ZoVector(100.0, 0.0, 0.0);
    return trafo;
}

TEST(SimilarityTransform, CopiesCarryResidualsAndTakeControlCoordinates) {
    ZoPointList source = PointsOf({{3, 1, 2, 3, 0}, {1, 4, 5, 6, 0}, {2, 7, 8, 9, kX}});
    source.First()->dx = 9;
    const ZoPointList controls = PointsOf({{8, 0.5, 0, 0, 0}, {1, 107, 5, 6, 0}, {2, 107, 8, 13, kZ}});
    ZoTrafo3d trafo = Shift();
    ZoPointList result = PointsOf({{77, 0, 0, 0, 0}});
    EXPECT_TRUE(trafo.Transform(result, source, &controls, false));
    EXPECT_EQ(IdsOf(result), (Ids{3, 1, 2, 8})) << "a control point without a point comes last";
    EXPECT_TRUE(result.IsNotifyEnabled());
    EXPECT_EQ(result.First()->dx, 0) << "the former difference goes";
    EXPECT_EQ(*result.Get(1), ZoPoint(1, 104, 5, 6, 0));
    EXPECT_EQ(result.Get(1)->dx, 3);
    const ZoPoint& height = *result.Get(2);
    EXPECT_EQ(height, ZoPoint(2, 107, 8, 13, 0));
    EXPECT_EQ(height.dz, 4) << "the residual is that of the transformed point";
    EXPECT_EQ(std::tuple(height.GetControlFlags(), height.GetFlag()), std::tuple(kX, 0x40));
    EXPECT_EQ(result.Last()->GetFlag(), 0);
    EXPECT_DOUBLE_EQ(trafo.GetRmsX(), std::sqrt(9.0 / 3)) << "a point without a control point counts";
    EXPECT_EQ(trafo.GetWorstPoint(), &height);
    trafo.Transform(result, source, &controls, true);
    EXPECT_EQ(IdsOf(result), (Ids{1, 2, 3, 8}));
}

TEST(SimilarityTransform, SortedResultHoldsThePointOfEachIdOnce) {
    ZoPointList source = PointsOf({{2, 0, 0, 0, 0}, {2, 50, 0, 0, 0}, {1, 0, 0, 0, 0}});
    const ZoPointList controls = PointsOf({{2, 100, 0, 0, 0}, {2, 0, 0, 0, 0}});
    ZoTrafo3d trafo = Shift();
    ZoPointList result;
    trafo.Transform(result, source, &controls, true);
    EXPECT_EQ(IdsOf(result), (Ids{1, 2}));
    EXPECT_EQ(result.Last()->x, 100);
    EXPECT_EQ(trafo.GetWorstPoint(), nullptr) << "the worst point was the second of its id";
    trafo.Transform(source, source, &source, false);
    EXPECT_EQ(IdsOf(source), (Ids{2, 2, 1})) << "source, control points and result may be one list";
    EXPECT_EQ(source.First()->dx, -100);
    trafo.Transform(result, ZoPointList(), static_cast<const ZoPointList*>(nullptr), true);
    EXPECT_TRUE(result.IsEmpty());
    EXPECT_EQ(trafo.GetResidualCount(), 1);
}

/// Three points, of which Shift leaves the first one just within 5 of its control point, the second one just beyond;
/// the third one has none.
struct Sorting {
    ZoPointList source = PointsOf({{1, 0, 0, 0, kX}, {2, 0, 0, 0, 0}, {3, 0, 0, 0, kX}});
    ZoPointList controls = PointsOf({{1, 103, 4, 0, kZ}, {2, 103, 4, 1, kX}});
    ZoPointList accepted, rejected, rejectedControls;
    ZoTrafo3d trafo = Shift();
};

TEST(SimilarityTransform, PointsBeyondTheLimitAreRejected) {
    Sorting s;
    const ZoPoint* first = s.source.First();
    const ZoPoint* second = first->NextConst();
    EXPECT_TRUE(s.trafo.Transform(&s.accepted, &s.rejected, &s.rejectedControls, &s.source, 5.0,
                                  ZoSortHelper(&s.controls), 0.25));
    EXPECT_TRUE(s.source.IsEmpty());
    EXPECT_EQ(IdsOf(s.accepted), (Ids{1, 3}));
    EXPECT_EQ(s.rejected.First(), second) << "the points themselves move";
    EXPECT_EQ(*first, ZoPoint(1, 100.75, 1, 0, 0));
    EXPECT_EQ(std::tuple(first->dy, first->GetControlFlags()), std::tuple(4, kZ));
    EXPECT_EQ(s.accepted.Last()->GetControlFlags(), 0);
    EXPECT_EQ(*second, ZoPoint(2, 103, 1, 0.25, 0)) << "x is a control coordinate";
    EXPECT_EQ(first->GetFlag(), 0x40);
    EXPECT_EQ(second->GetFlag(), 0x840);
    EXPECT_EQ(IdsOf(s.rejectedControls), (Ids{2}));
    EXPECT_DOUBLE_EQ(s.trafo.GetRmsX(), std::sqrt(9.0 / 2)) << "over the accepted points";
    EXPECT_EQ(s.trafo.GetWorstPoint(), second) << "of all points";
}

TEST(SimilarityTransform, BlendIsAShareAndListsMayBeMissing) {
    for (const auto& [blend, x] :
         std::vector<std::pair<double, double>>{{-3, 100}, {0.5, 101.5}, {7, 103}, {std::nan(""), 100}}) {
        Sorting s;
        s.trafo.Transform(&s.source, nullptr, nullptr, &s.source, 5.0, ZoSortHelper(&s.controls), blend);
        EXPECT_EQ(IdsOf(s.source), (Ids{1, 3}));
        EXPECT_EQ(s.source.First()->x, x) << blend;
        EXPECT_EQ(s.trafo.GetWorstPoint(), nullptr) << "it is in no list";
    }
}

TEST(SimilarityTransform, InPlaceResidualsAndNormalsTurnWithThePoints) {
    ZoTrafo3d trafo;
    trafo.rotation.RotZAxis(std::acos(0.0));
    trafo.scale = 2.0;
    ZoPointList list;
    ZoPoint& point = *list.Add(ZoPoint(1, 1, 0, 5, 7));
    point.dx = 3;
    point.vx = 1;
    point.SetFlag(0x841);
    EXPECT_TRUE(trafo.InPlaceTransform(&list));
    EXPECT_NEAR(point.Distance(ZoPoint(0, 0, 2, 10, 0)), 0.0, 1e-14);
    EXPECT_EQ(std::tuple(point.GetControlFlags(), point.GetFlag()), std::tuple(0, 1));
    EXPECT_NEAR(point.dy, 3.0, 1e-14) << "the map of normals divides by the scale";
    EXPECT_NEAR(point.vy, 0.5, 1e-7);
    EXPECT_FALSE(trafo.InPlaceTransform(nullptr));
}

}  // namespace
