#include "zorv/points/coordinate_update.h"

#include <cmath>
#include <utility>

#include "tests/support/point_ids.h"
#include "tests/support/points_of.h"

#include "zorv/points/nearest_finder.h"

namespace {

ZoPoint Point(unsigned int id, double x, double y, double difference) {
    ZoPoint point(id, x, y, 0, 7);
    point.dx = point.dy = point.dz = difference;
    return point;
}

// A list of the points 30, 10, 20 on the x axis, whose events are heard.
struct CoordinateUpdate : testing::Test, LinkHdl {
    CoordinateUpdate() { list.AddObserver(&observer); }
    long Heard(ZoNotifyEvent* event) {
        events.push_back(event->kind);
        return 0;
    }
    ZoPointList list = PointsOf({{30, 30, 0, 0, 0}, {10, 10, 0, 0, 0}, {20, 20, 0, 0, 0}});
    std::vector<int> events;
    ZoObserver observer{Link(static_cast<CoordinateUpdate*>(this), &CoordinateUpdate::Heard)};
    ZoCooListUpdateHelper helper{&list};
};

TEST_F(CoordinateUpdate, WithoutAListNothingHappens) {
    helper.GetUpdateList()->Add(Point(1, 0, 0, 0));
    for (ZoPointList* target : {static_cast<ZoPointList*>(nullptr), helper.GetUpdateList(), helper.GetMediumList()}) {
        helper.SetListToUpdate(target);
        EXPECT_EQ(helper.UpdateCooStep1(1, 0), -1);
        EXPECT_EQ(helper.UpdateCooStep2(), -1);
    }
    EXPECT_EQ(helper.GetUpdateList()->Count(), 1);
}

TEST_F(CoordinateUpdate, StepOneReplacesAddsAndHoldsBack) {
    for (const ZoPoint& point : {Point(10, 13, 4, 1), Point(20, 26, 0, 1), Point(5, 1, 1, 1), Point(5, 2, 2, 1)})
        helper.GetUpdateList()->Add(point);
    EXPECT_EQ(helper.UpdateCooStep1(5, 0), 1);
    EXPECT_TRUE(helper.GetUpdateList()->IsEmpty());
    EXPECT_EQ(IdsOf(list), (Ids{30, 10, 20, 5, 5}));
    EXPECT_EQ(*list.Find(10U), ZoPoint(0, 13, 4, 0, 0)) << "at the tolerance itself";
    EXPECT_EQ(std::tuple(list.Find(10U)->GetControlFlags(), list.Find(20U)->x), std::tuple(7, 20.0));
    ASSERT_EQ(IdsOf(*helper.GetUpdateFailedList()), Ids{20});
    EXPECT_EQ(helper.GetUpdateFailedList()->First()->dx, -6.0);
    EXPECT_EQ(events, std::vector<int>{eZoNotifyChanged});
}

TEST_F(CoordinateUpdate, StepOneAveragesOnDemand) {
    helper.GetUpdateList()->Add(Point(10, 12, 4, 2));
    EXPECT_EQ(helper.UpdateCooStep1(100, 1), 0);
    EXPECT_EQ(*list.Find(10U), ZoPoint(0, 11, 2, 0, 0));
    EXPECT_EQ(std::tuple(list.Find(10U)->dy, list.Find(10U)->GetControlFlags()), std::tuple(1.0, 0));
}

TEST_F(CoordinateUpdate, StepTwoMergesTheDecisionsAndSorts) {
    list.Add(Point(20, 55, 0, 0));
    helper.GetMediumList()->Add(Point(30, 40, 2, 5));
    helper.GetMediumList()->Add(Point(99, 1, 1, 0));
    helper.GetNewValueList()->Add(Point(20, 1, 2, 5));
    helper.GetNewValueList()->Add(Point(98, 1, 1, 0));
    helper.GetOldValueList()->Add(Point(10, 7, 7, 0));
    events.clear();
    EXPECT_EQ(helper.UpdateCooStep2(), 1);
    EXPECT_EQ(IdsOf(list), (Ids{10, 20, 30}));
    const ZoPoint expected[] = {ZoPoint(0, 10, 0, 0, 0), ZoPoint(0, 1, 2, 0, 7), ZoPoint(0, 35, 1, 0, 0)};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(std::tuple(*list.Get(i), list.Get(i)->GetControlFlags(), list.Get(i)->dx),
                  std::tuple(expected[i], expected[i].GetControlFlags(), 0.0));
    }
    EXPECT_TRUE(helper.GetMediumList()->IsEmpty() && helper.GetNewValueList()->IsEmpty());
    EXPECT_EQ(events, (std::vector<int>{eZoNotifyChanged, eZoNotifyChanged})) << "the new order, then the change";

    const ZoCooListUpdateHelper copy(helper), moved(std::move(helper));
    EXPECT_EQ(IdsOf(copy.oldValueList), Ids{10});
    EXPECT_EQ(IdsOf(moved.oldValueList), Ids{10});
    EXPECT_EQ(moved.GetListToUpdate(), &list);
}

TEST(NearestFinder, EachPointStandsUnderTheSmallestSquareThatHoldsIt) {
    const double z = 1000;  // only x and y matter
    ZoPointList list =
        PointsOf({{1, 10.5, 20, z, 0}, {2, 11, 21, z, 0}, {3, 5, 20, z, 0}, {4, 15.1, 20, z, 0}, {5, 9, 19, z, 0}});
    ZoNearestImoFinder finder(&list, ZoPoint(0, 10, 20, 0, 0), {5, 1});
    EXPECT_EQ(finder.radii, (std::vector<double>{1, 5}));
    EXPECT_EQ(finder.idsByRadius, (std::vector<Ids>{{1, 2, 5}, {3}}));
    EXPECT_EQ(finder.minX, (std::vector<double>{9, 5}));
    EXPECT_EQ(finder.maxY, (std::vector<double>{21, 25}));

    finder.Calc({});
    EXPECT_EQ(finder.idsByRadius.size(), 2U);
    finder.Calc({6, NAN, -1});
    EXPECT_EQ(finder.idsByRadius, (std::vector<Ids>{{}, {}, {1, 2, 3, 4, 5}}));
    EXPECT_EQ(finder.maxX.size(), 3U);
    EXPECT_TRUE(ZoNearestImoFinder(nullptr, ZoPoint(), {1}).radii.empty());
}

}  // namespace
