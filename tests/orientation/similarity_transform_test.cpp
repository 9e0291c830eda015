#include <cmath>
#include <limits>

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

std::vector<unsigned int> Ids(const ZoPointList& list) {
    std::vector<unsigned int> ids;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        ids.push_back(point->GetId());
    return ids;
}

using IdList = std::vector<unsigned int>;

TEST(SimilarityTransform, CopiesCarryResidualsAndTakeControlCoordinates) {
    ZoPointList source;
    source.Add(ZoPoint(3, 1, 2, 3, 0))->dx = 9;
    source.Add(ZoPoint(1, 4, 5, 6, 0));
    source.Add(ZoPoint(2, 7, 8, 9, kX));
    ZoPointList controls;
    controls.Add(ZoPoint(8, 0.5, 0, 0, 0));
    controls.Add(ZoPoint(1, 107, 5, 6, 0));
    controls.Add(ZoPoint(2, 107, 8, 9, kZ));
    controls.Last()->z = 13;
    ZoTrafo3d trafo = Shift();
    ZoPointList result;
    result.Add(ZoPoint(77, 0, 0, 0, 0));
    EXPECT_TRUE(trafo.Transform(result, source, &controls, false));
    EXPECT_EQ(Ids(result), (IdList{3, 1, 2, 8})) << "a control point without a point comes last";
    EXPECT_TRUE(result.IsNotifyEnabled());

    const ZoPoint& lone = *result.Get(0);
    EXPECT_EQ(lone, ZoPoint(3, 101, 2, 3, 0));
    EXPECT_EQ(lone.dx, 0) << "the former difference goes";
    EXPECT_NE(lone.IsFlagSet(0x40), 0);
    const ZoPoint& plain = *result.Get(1);
    EXPECT_EQ(plain, ZoPoint(1, 104, 5, 6, 0));
    EXPECT_EQ(plain.dx, 3);
    const ZoPoint& height = *result.Get(2);
    EXPECT_EQ(height, ZoPoint(2, 107, 8, 13, 0));
    EXPECT_EQ(height.dz, 4) << "the residual is that of the transformed point";
    EXPECT_EQ(height.GetControlFlags(), kX);
    EXPECT_EQ(result.Last()->IsFlagSet(0x40), 0);

    EXPECT_EQ(trafo.GetResidualCount(), 3);
    EXPECT_DOUBLE_EQ(trafo.GetRmsX(), std::sqrt(3.0)) << "a point without a control point counts";
    EXPECT_DOUBLE_EQ(trafo.GetRmsZ(), std::sqrt(16.0 / 3));
    EXPECT_EQ(trafo.GetWorstPoint(), &height);

    trafo.Transform(result, source, &controls, true);
    EXPECT_EQ(Ids(result), (IdList{1, 2, 3, 8}));
}

TEST(SimilarityTransform, SortedResultHoldsThePointOfEachIdOnce) {
    ZoPointList source;
    for (const double x : {0.0, 50.0})
        source.Add(ZoPoint(2, x, 0, 0, 0));
    source.Add(ZoPoint(1, 0, 0, 0, 0));
    ZoPointList controls;
    controls.Add(ZoPoint(2, 100, 0, 0, 0));
    controls.Add(ZoPoint(2, 0, 0, 0, 0));
    ZoTrafo3d trafo = Shift();
    ZoPointList result;
    trafo.Transform(result, source, &controls, true);
    EXPECT_EQ(Ids(result), (IdList{1, 2}));
    EXPECT_EQ(result.Last()->x, 100);
    EXPECT_EQ(trafo.GetWorstPoint(), nullptr) << "the worst point was the second of its id";
    EXPECT_NEAR(trafo.GetRmsX(), 50 / std::sqrt(3.0), 1e-12);

    // Source, control points and result may be one list.
    ZoPointList& all = source;
    trafo.Transform(all, all, &all, false);
    EXPECT_EQ(Ids(all), (IdList{2, 2, 1}));
    EXPECT_EQ(all.First()->dx, -100);

    trafo.Transform(result, ZoPointList(), static_cast<const ZoPointList*>(nullptr), true);
    EXPECT_TRUE(result.IsEmpty());
    EXPECT_EQ(trafo.GetResidualCount(), 1);
    EXPECT_EQ(trafo.GetRmsX(), 0);
}

struct Sorted {
    ZoPointList accepted;
    ZoPointList rejected;
    ZoPointList controls;
};

void FillBlend(ZoPointList& source, ZoPointList& controls) {
    source.Add(ZoPoint(1, 0, 0, 0, kX));  // residual 3, 4, 0: just within 5
    source.Add(ZoPoint(2, 0, 0, 0, 0));   // residual 3, 4, 1
    source.Add(ZoPoint(3, 0, 0, 0, kX));  // no control point
    controls.Add(ZoPoint(1, 103, 4, 0, kZ));
    controls.Add(ZoPoint(2, 103, 4, 1, kX));
}

TEST(SimilarityTransform, PointsBeyondTheLimitAreRejected) {
    ZoPointList source;
    ZoPointList controls;
    FillBlend(source, controls);
    ZoTrafo3d trafo = Shift();
    Sorted out;
    const ZoPoint* first = source.First();
    const ZoPoint* second = first->NextConst();
    EXPECT_TRUE(
        trafo.Transform(&out.accepted, &out.rejected, &out.controls, &source, 5.0, ZoSortHelper(&controls), 0.25));
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_EQ(Ids(out.accepted), (IdList{1, 3}));
    EXPECT_EQ(Ids(out.rejected), (IdList{2}));
    EXPECT_EQ(out.accepted.First(), first) << "the points themselves move";
    EXPECT_EQ(*first, ZoPoint(1, 100.75, 1, 0, 0));
    EXPECT_EQ(first->GetControlFlags(), kZ);
    EXPECT_EQ(first->dy, 4);
    EXPECT_EQ(out.accepted.Last()->GetControlFlags(), 0);
    EXPECT_EQ(*second, ZoPoint(2, 103, 1, 0.25, 0)) << "x is a control coordinate";
    EXPECT_NE(second->IsFlagSet(0x800), 0);
    EXPECT_EQ(first->IsFlagSet(0x800), 0);
    EXPECT_NE(first->IsFlagSet(0x40) & second->IsFlagSet(0x40), 0);
    EXPECT_EQ(Ids(out.controls), (IdList{2}));
    EXPECT_EQ(out.controls.First()->IsFlagSet(0x840), 0);
    EXPECT_EQ(trafo.GetResidualCount(), 2);
    EXPECT_DOUBLE_EQ(trafo.GetRmsX(), std::sqrt(9.0 / 2));
    EXPECT_EQ(trafo.GetWorstPoint(), second) << "the worst of all";
}

TEST(SimilarityTransform, BlendIsAShare) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double blend;
        double x;
    } kCases[] = {{0.0, 100}, {-3.0, 100}, {1.0, 103}, {7.0, 103}, {0.5, 101.5}, {nan, 100}};
    for (const auto& [blend, x] : kCases) {
        ZoPointList source;
        ZoPointList controls;
        FillBlend(source, controls);
        Sorted out;
        Shift().Transform(&out.accepted, &out.rejected, nullptr, &source, 10.0, ZoSortHelper(&controls), blend);
        EXPECT_EQ(out.accepted.First()->x, x) << blend;
    }
}

TEST(SimilarityTransform, OutputListsMayBeMissingOrTheSource) {
    ZoPointList source;
    ZoPointList controls;
    FillBlend(source, controls);
    ZoTrafo3d trafo = Shift();
    trafo.Transform(&source, nullptr, nullptr, &source, 5.0, ZoSortHelper(&controls), 0.0);
    EXPECT_EQ(Ids(source), (IdList{1, 3}));
    EXPECT_EQ(trafo.GetWorstPoint(), nullptr) << "it is in no list";
    EXPECT_TRUE(trafo.Transform(nullptr, nullptr, nullptr, nullptr, 5.0, ZoSortHelper(&controls), 0.0));
    EXPECT_EQ(trafo.GetResidualCount(), 1);
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
    EXPECT_EQ(point.GetControlFlags(), 0);
    EXPECT_EQ(point.GetFlag(), 1);
    // The map of normals turns and divides by the scale.
    EXPECT_NEAR(point.dx, 0.0, 1e-14);
    EXPECT_NEAR(point.dy, 3.0, 1e-14);
    EXPECT_NEAR(point.vy, 0.5, 1e-7);
    EXPECT_FALSE(trafo.InPlaceTransform(nullptr));
}

}  // namespace
