#include "zorv/points/point_list.h"

#include <cmath>

#include "tests/support/point_ids.h"
#include "tests/support/points_of.h"
#include <gtest/gtest.h>

namespace {

TEST(PointList, SortsByPhotoPlusIdAndKeepsEqualOnes) {
    ZoPointList list = PointsOf({{5, 0, 0, 0, 0}, {3, 0, 0, 0, 0}, {4, 0, 0, 0, 0}, {4294967295U, 0, 0, 0, 0}});
    list.First()->photoId = 2;          // 7
    list.First()->Next()->photoId = 1;  // 4, in front of the point 4
    list.Sort();
    EXPECT_EQ(IdsOf(list), (Ids{4294967295U, 3, 4, 5}));  // the key -1 comes first
}

TEST(PointList, FindGoesForwardFromTheHintThenBack) {
    ZoPointList list = PointsOf({{5, 1, 0, 0, 0}, {6, 2, 0, 0, 0}, {5, 3, 0, 0, 0}, {7, 4, 0, 0, 0}});
    list.Get(2)->photoId = 2;
    EXPECT_EQ(std::tuple(list.Find(5, 0, nullptr)->x, list.Find(5, 2, nullptr)->x, list.Find(5, 0, list.Get(1))->x),
              std::tuple(1.0, 3.0, 3.0));
    EXPECT_EQ(std::tuple(list.Find(6, 0, list.Last())->x, list.Find(5, 3, list.Get(1))), std::tuple(2.0, nullptr));
    list.Last()->name = L"Top";
    EXPECT_EQ(std::tuple(list.Find(L"Top"), list.Find(L"top")), std::tuple(list.Last(), nullptr));
    const ZoPointList sorted = PointsOf({{2, 0, 0, 0, 0}, {4, 0, 0, 0, 0}, {6, 0, 0, 0, 0}});
    EXPECT_EQ(sorted.FindInSortedList(4), sorted.Get(1));
    EXPECT_EQ(sorted.FindInSortedList(5), nullptr);
    EXPECT_EQ(sorted.FindInSortedList(7), nullptr);
}

TEST(PointList, NearestIsTheFirstOfEqualDistances) {
    double distance = -1.0;
    EXPECT_EQ(ZoPointList().FindNearest(ZoPoint(), &distance), nullptr);
    EXPECT_EQ(distance, HUGE_VAL);
    const ZoPointList list = PointsOf({{1, NAN, 0, 0, 0}, {2, 6, 0, 0, 0}, {3, 3, 4, 0, 0}, {4, 5, 0, 0, 0}});
    EXPECT_EQ(list.FindNearest(ZoPoint(), &distance)->id, 3u);
    EXPECT_EQ(distance, 5.0);
}

TEST(PointList, CommonPointsAreCopiedAlsoIntoTheirOwnList) {
    ZoPointList a = PointsOf({{1, 0, 0, 0, 0}, {2, 0, 0, 0, 0}, {1, 5, 0, 0, 0}});
    const ZoPointList b = PointsOf({{1, 0, 0, 0, 0}, {3, 0, 0, 0, 0}});
    EXPECT_EQ(FindCommonZoPointById(a, b, &a), 2);
    EXPECT_EQ(IdsOf(a), (Ids{1, 2, 1, 1, 1}));
}

TEST(PointList, MergeKeepsCoordinatesAndControl) {
    ZoPointList coo = PointsOf({{1, 10, 20, 0, 0}, {1, 11, 21, 0, 0}, {2, 30, 40, 0, 0}});
    coo.First()->controlFlags = 7;
    ZoPointList computed = PointsOf({{1, 99, 99, 0, 0}, {5, 0, 0, 0, 0}});
    computed.First()->name = L"new";
    computed.First()->flags = 4;
    computed.First()->residualZ = 0.5;
    EXPECT_EQ(MergeCooCoo2(coo, computed), 1);
    const ZoPoint& merged = *coo.First();
    EXPECT_EQ(std::tuple(merged.name, merged.flags, merged.residualZ, merged.x, merged.controlFlags),
              std::tuple(L"new", 4u, 0.5, 10.0, 7));
    EXPECT_TRUE(coo.Get(1)->name.empty());
    unsigned long long total = 0, used = 0;
    coo.GetStat(total, used);
    EXPECT_EQ(std::tuple(total, used), std::tuple(3u, 1u));
    EXPECT_TRUE(coo.HasControlPoints());
    coo.RemoveControlInformation();
    EXPECT_FALSE(coo.HasControlPoints());
}

TEST(PointList, CentreIsTheMeanWithSummedDifferences) {
    ZoPointList list = PointsOf({{1, 1, 10, 0, 0}, {2, 2, 20, 0, 0}, {3, 6, 60, 0, 0}});
    for (ZoPoint* point = list.First(); point; point = point->Next())
        point->dx = 0.5;
    const ZoPoint centre = ZoCalcGravitycenter(list);
    EXPECT_EQ(std::tuple(centre.x, centre.y, centre.dx), std::tuple(3.0, 30.0, 1.5));
    EXPECT_TRUE(ZoCalcGravitycenter(ZoPointList()).IsOrigin());
}

TEST(PointList, TheTableTravelsWithTheListWithoutItsUnits) {
    const eZoPointRWMask kinds[] = {eZoRWId, eZoRWX, eZoRWEnd};
    ZoPointList::Table table(kinds);
    EXPECT_EQ(table.SetUnit(eZoRWX, eZoUnitMm, eZoUnitM), 1);
    EXPECT_EQ(table.SetUnit(eZoRWY, eZoUnitMm, eZoUnitM), -1);
    EXPECT_EQ(table.GetDisplayValue(eZoRWX, 1500.0), 1.5);
    EXPECT_EQ(table.GetDisplayValue(7, 1500.0), 1500.0);
    ZoPointList list(table);
    list.SetMask(ZoPointList::Table());
    EXPECT_EQ(std::tuple(list.GetMask().Size(), list.GetUnit(1)), std::tuple(0, eZoUnitM));
    table.DelTable();
    EXPECT_EQ(table[0], eZoRWEnd);
    // A column whose pair was never added.
    table.columns.Add(eZoRWZ);
    EXPECT_EQ(table.GetUnit(eZoRWZ), eZoUnitNone);
    EXPECT_EQ(table.SetUnit(eZoRWZ, eZoUnitMm, eZoUnitM), -1);
}

TEST(PointList, ClosedPathAngles) {
    ZoPointList path = PointsOf({{1, 0, 1, 0, 0},
                                 {2, -1, 0, 0, 0},
                                 {3, 0, 0, 0, 0},
                                 {7, -3, 2, 0, 0},
                                 {4, 1, 0, 0, 0},
                                 {5, 1, 1, 0, 0},
                                 {6, NAN, 2, 0, 0}});
    EXPECT_EQ(ZoSimpleClosedPath(path, &path), 7);
    EXPECT_EQ(IdsOf(path), (Ids{2, 3, 4, 5, 1, 7, 6}));
    EXPECT_EQ(path.Get(3)->residualX, 30.0);  // 1 / (2 + 1) of a quarter turn
    EXPECT_EQ(std::tuple(path.Get(4)->residualX, path.Get(5)->residualX), std::tuple(45.0, 135.0));
    EXPECT_EQ(ZoSimpleClosedPath(ZoPointList(), &path), 0);
    EXPECT_TRUE(path.IsEmpty());
}

}  // namespace
