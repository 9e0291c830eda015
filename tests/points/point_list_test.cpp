#include "zorv/points/point_list.h"

#include <cmath>
#include <random>

#include "tests/support/point_ids.h"
#include <gtest/gtest.h>

namespace {

struct Spot {
    unsigned int id;
    double x, y;
};

ZoPointList ListOf(std::initializer_list<Spot> spots) {
    ZoPointList list;
    for (const Spot& spot : spots)
        list.Add(ZoPoint(spot.id, spot.x, spot.y, 0.0, 0));
    return list;
}

TEST(PointList, SortsByPhotoPlusIdAndKeepsEqualOnes) {
    ZoPointList list = ListOf({{5, 0, 0}, {3, 0, 0}, {4, 0, 0}, {4294967295U, 0, 0}});
    list.First()->photoId = 2;          // 7
    list.First()->Next()->photoId = 1;  // 4, in front of the point 4
    list.Sort();
    EXPECT_EQ(IdsOf(list), (Ids{4294967295U, 3, 4, 5}));  // the key -1 comes first
}

TEST(PointList, FindGoesForwardFromTheHintThenBack) {
    ZoPointList list = ListOf({{5, 1, 0}, {6, 2, 0}, {5, 3, 0}, {7, 4, 0}});
    list.Get(2)->photoId = 2;
    EXPECT_EQ(list.Find(5, 0, nullptr)->x, 1.0);
    EXPECT_EQ(list.Find(5, 2, nullptr)->x, 3.0);
    EXPECT_EQ(list.Find(5, 0, list.Get(1))->x, 3.0);
    EXPECT_EQ(list.Find(6, 0, list.Last())->x, 2.0);
    EXPECT_EQ(list.Find(5, 3, list.Get(1)), nullptr);
    list.Last()->name = L"Top";
    EXPECT_EQ(list.Find(L"Top"), list.Last());
    EXPECT_EQ(list.Find(L"top"), nullptr);
    const ZoPointList sorted = ListOf({{2, 0, 0}, {4, 0, 0}, {6, 0, 0}});
    EXPECT_EQ(sorted.FindInSortedList(4), sorted.Get(1));
    EXPECT_EQ(sorted.FindInSortedList(5), nullptr);
    EXPECT_EQ(sorted.FindInSortedList(7), nullptr);
}

TEST(PointList, NearestIsTheFirstOfEqualDistances) {
    double distance = -1.0;
    EXPECT_EQ(ZoPointList().FindNearest(ZoPoint(), &distance), nullptr);
    EXPECT_EQ(distance, HUGE_VAL);
    const ZoPointList list = ListOf({{1, NAN, 0}, {2, 6, 0}, {3, 3, 4}, {4, 5, 0}});
    EXPECT_EQ(list.FindNearest(ZoPoint(), &distance)->id, 3u);
    EXPECT_EQ(distance, 5.0);
}

TEST(PointList, CommonPointsAreCopiedAlsoIntoTheirOwnList) {
    ZoPointList a = ListOf({{1, 0, 0}, {2, 0, 0}, {1, 5, 0}});
    const ZoPointList b = ListOf({{1, 0, 0}, {3, 0, 0}});
    EXPECT_EQ(FindCommonZoPointById(a, b, &a), 2);
    EXPECT_EQ(IdsOf(a), (Ids{1, 2, 1, 1, 1}));
}

TEST(PointList, MergeKeepsCoordinatesAndControl) {
    ZoPointList coo = ListOf({{1, 10, 20}, {1, 11, 21}, {2, 30, 40}});
    coo.First()->controlFlags = 7;
    ZoPointList computed = ListOf({{1, 99, 99}, {5, 0, 0}});
    computed.First()->name = L"new";
    computed.First()->flags = 4;
    computed.First()->residualZ = 0.5;
    EXPECT_EQ(MergeCooCoo2(coo, computed), 1);
    const ZoPoint& merged = *coo.First();
    EXPECT_EQ(merged.name, L"new");
    EXPECT_EQ(merged.flags, 4u);
    EXPECT_EQ(merged.residualZ, 0.5);
    EXPECT_EQ(merged.x, 10.0);
    EXPECT_EQ(merged.controlFlags, 7);
    EXPECT_TRUE(coo.Get(1)->name.empty());
    unsigned long long total = 0;
    unsigned long long used = 0;
    coo.GetStat(total, used);
    EXPECT_EQ(total, 3u);
    EXPECT_EQ(used, 1u);
    EXPECT_TRUE(coo.HasControlPoints());
    coo.RemoveControlInformation();
    EXPECT_FALSE(coo.HasControlPoints());
}

TEST(PointList, CentreIsTheMeanWithSummedDifferences) {
    ZoPointList list = ListOf({{1, 1, 10}, {2, 2, 20}, {3, 6, 60}});
    for (ZoPoint* point = list.First(); point; point = point->Next())
        point->dx = 0.5;
    const ZoPoint centre = ZoCalcGravitycenter(list);
    EXPECT_DOUBLE_EQ(centre.x, 3.0);
    EXPECT_DOUBLE_EQ(centre.y, 30.0);
    EXPECT_EQ(centre.dx, 1.5);
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
    EXPECT_EQ(list.GetMask().Size(), 0);
    EXPECT_EQ(list.GetUnit(1), eZoUnitM);
    table.DelTable();
    EXPECT_EQ(table[0], eZoRWEnd);
    // A column whose pair was never added.
    table.columns.Add(eZoRWZ);
    EXPECT_EQ(table.GetUnit(eZoRWZ), eZoUnitNone);
    EXPECT_EQ(table.SetUnit(eZoRWZ, eZoUnitMm, eZoUnitM), -1);
}

double Cross(const ZoPoint& a, const ZoPoint& b, const ZoPoint& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether two sides without a common end have a point in common. Coordinates are small whole numbers: exact.
bool Meet(const ZoPoint& a, const ZoPoint& b, const ZoPoint& c, const ZoPoint& d) {
    const auto between = [](const ZoPoint& p, const ZoPoint& q, const ZoPoint& r) {
        return Cross(p, q, r) == 0.0 && std::min(p.x, q.x) <= r.x && r.x <= std::max(p.x, q.x) &&
               std::min(p.y, q.y) <= r.y && r.y <= std::max(p.y, q.y);
    };
    if (between(a, b, c) || between(a, b, d) || between(c, d, a) || between(c, d, b)) return true;
    return (Cross(a, b, c) > 0) != (Cross(a, b, d) > 0) && (Cross(c, d, a) > 0) != (Cross(c, d, b) > 0);
}

TEST(PointList, ClosedPathNeverCrossesItself) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        // A pivot below all others; no two points in one direction from it.
        std::uniform_real_distribution<double> place(0.0, 9.0);
        ZoPointList in;
        for (int i = 0; i < 12; ++i)
            in.Add(ZoPoint(static_cast<unsigned int>(i), place(random), place(random), 0, 0));
        in.Add(ZoPoint(1000, 4, -1, 0, 0));
        ZoPointList path = ListOf({{77, 0, 0}});
        ASSERT_EQ(ZoSimpleClosedPath(in, &path), in.Count());
        ASSERT_EQ(path.Count(), in.Count());
        ASSERT_EQ(path.First()->id, 1000u);
        std::vector<ZoPoint> p;
        for (const ZoPoint* point = path.First(); point; point = point->NextConst()) {
            ASSERT_TRUE(p.empty() || p.back().residualX <= point->residualX);
            p.push_back(*point);
        }
        const std::size_t n = p.size();
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = i + 2; j < n; ++j) {
                if (i == 0 && j == n - 1) continue;
                ASSERT_FALSE(Meet(p[i], p[i + 1], p[j], p[(j + 1) % n])) << round;
            }
        }
    }
}

TEST(PointList, ClosedPathAngles) {
    ZoPointList path = ListOf({{1, 0, 1}, {2, -1, 0}, {3, 0, 0}, {4, 1, 0}, {5, 1, 1}, {6, NAN, 2}});
    EXPECT_EQ(ZoSimpleClosedPath(path, &path), 6);
    EXPECT_EQ(IdsOf(path), (Ids{2, 3, 4, 5, 1, 6}));
    EXPECT_EQ(path.Get(3)->residualX, 30.0);  // 1 / (2 + 1) of a quarter turn
    EXPECT_EQ(path.Get(4)->residualX, 45.0);
    EXPECT_EQ(ZoSimpleClosedPath(ZoPointList(), &path), 0);
    EXPECT_TRUE(path.IsEmpty());
}

}  // namespace
