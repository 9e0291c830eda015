#include "zorv/points/coordinate_update.h"

#include <utility>

#include "zorv/points/nearest_finder.h"

namespace {

std::vector<unsigned int> Ids(const ZoPointList& list) {
    std::vector<unsigned int> ids;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        ids.push_back(point->GetId());
    return ids;
}

// Hears the events of the list that is updated.
struct Listener : LinkHdl {
    long Heard(ZoNotifyEvent* event) {
        events.push_back(event->kind);
        return 0;
    }
    std::vector<int> events;
    ZoObserver observer{Link(this, &Listener::Heard)};
};

struct CoordinateUpdate : testing::Test {
    void SetUp() override {
        for (const unsigned int id : {30U, 10U, 20U})
            list.Add(ZoPoint(id, id, 0, 0, 0));
        helper.SetListToUpdate(&list);
        list.AddObserver(&listener.observer);
    }
    ZoPointList list;
    Listener listener;
    ZoCooListUpdateHelper helper;
};

TEST_F(CoordinateUpdate, WithoutAListNothingHappens) {
    ZoCooListUpdateHelper idle;
    idle.GetUpdateList()->Add(ZoPoint(1, 0, 0, 0, 0));
    EXPECT_EQ(idle.UpdateCooStep1(1, 0), -1);
    EXPECT_EQ(idle.UpdateCooStep2(), -1);
    EXPECT_EQ(idle.GetUpdateList()->Count(), 1);
    idle.SetListToUpdate(idle.GetUpdateList());
    EXPECT_EQ(idle.UpdateCooStep1(1, 0), -1) << "a list of its own";
    EXPECT_EQ(idle.GetUpdateList()->Count(), 1);
}

TEST_F(CoordinateUpdate, StepOneReplacesAddsAndHoldsBack) {
    ZoPoint near(10, 13, 4, 0, 7);
    near.SetName(L"near");
    near.dx = 1;
    helper.GetUpdateList()->Add(near);
    helper.GetUpdateList()->Add(ZoPoint(20, 26, 0, 0, 0));
    helper.GetUpdateList()->Add(ZoPoint(5, 1, 1, 1, 0));
    helper.GetUpdateList()->Add(ZoPoint(5, 2, 2, 2, 0));

    EXPECT_EQ(helper.UpdateCooStep1(5, 0), 1);
    EXPECT_TRUE(helper.GetUpdateList()->IsEmpty());
    EXPECT_EQ(Ids(list), (std::vector<unsigned int>{30, 10, 20, 5, 5}));
    const ZoPoint* replaced = list.Find(10U);
    EXPECT_EQ(*replaced, ZoPoint(0, 13, 4, 0, 0)) << "at the tolerance itself";
    EXPECT_EQ(replaced->GetName(), L"near");
    EXPECT_EQ(replaced->GetControlFlags(), 7);
    EXPECT_EQ(list.Find(20U)->x, 20.0);
    ASSERT_EQ(Ids(*helper.GetUpdateFailedList()), std::vector<unsigned int>{20});
    EXPECT_EQ(helper.GetUpdateFailedList()->First()->dx, -6.0);
    EXPECT_EQ(listener.events, std::vector<int>{eZoNotifyChanged});
}

TEST_F(CoordinateUpdate, StepOneAveragesOnDemand) {
    ZoPoint point(10, 12, 4, 6, 7);
    point.dy = 2;
    helper.GetUpdateList()->Add(point);
    EXPECT_EQ(helper.UpdateCooStep1(100, 1), 0);
    const ZoPoint* mean = list.Find(10U);
    EXPECT_EQ(*mean, ZoPoint(0, 11, 2, 3, 0));
    EXPECT_EQ(mean->dy, 1.0);
    EXPECT_EQ(mean->GetControlFlags(), 0);
}

TEST_F(CoordinateUpdate, StepTwoMergesTheDecisionsAndSorts) {
    list.First()->dx = 9;
    ZoPoint medium(30, 40, 2, 0, 7);
    medium.dx = 5;
    ZoPoint fresh(20, 1, 2, 3, 7);
    fresh.dz = 5;
    helper.GetMediumList()->Add(medium);
    helper.GetMediumList()->Add(ZoPoint(99, 1, 1, 1, 0));
    helper.GetNewValueList()->Add(fresh);
    helper.GetNewValueList()->Add(ZoPoint(98, 1, 1, 1, 0));
    helper.GetOldValueList()->Add(ZoPoint(10, 7, 7, 7, 0));
    list.Add(ZoPoint(20, 55, 0, 0, 0));
    listener.events.clear();

    EXPECT_EQ(helper.UpdateCooStep2(), 1);
    EXPECT_EQ(Ids(list), (std::vector<unsigned int>{10, 20, 30}));
    EXPECT_EQ(*list.Get(0), ZoPoint(0, 10, 0, 0, 0));
    EXPECT_EQ(*list.Get(1), ZoPoint(0, 1, 2, 3, 0));
    EXPECT_EQ(list.Get(1)->dz, 0.0);
    EXPECT_EQ(list.Get(1)->GetControlFlags(), 7);
    EXPECT_EQ(*list.Get(2), ZoPoint(0, 35, 1, 0, 0));
    EXPECT_EQ(list.Get(2)->dx, 0.0);
    EXPECT_EQ(list.Get(2)->GetControlFlags(), 0);
    EXPECT_TRUE(helper.GetMediumList()->IsEmpty());
    EXPECT_TRUE(helper.GetNewValueList()->IsEmpty());
    EXPECT_EQ(helper.GetOldValueList()->Count(), 1);
    EXPECT_EQ(listener.events, std::vector<int>{eZoNotifyChanged});
}

TEST_F(CoordinateUpdate, CopiesAndMovesCarryThePoints) {
    helper.GetOldValueList()->Add(ZoPoint(1, 0, 0, 0, 0));
    const ZoCooListUpdateHelper copy(helper);
    EXPECT_EQ(copy.oldValueList.Count(), 1);
    ZoCooListUpdateHelper moved(std::move(helper));
    EXPECT_EQ(moved.GetListToUpdate(), &list);
    EXPECT_EQ(Ids(*moved.GetOldValueList()), std::vector<unsigned int>{1});
}

TEST(NearestFinder, EachPointStandsUnderTheSmallestSquareThatHoldsIt) {
    ZoPointList list;
    list.Add(ZoPoint(1, 10.5, 20, 1000, 0));
    list.Add(ZoPoint(2, 11, 21, 0, 0));
    list.Add(ZoPoint(3, 5, 20, 0, 0));
    list.Add(ZoPoint(4, 15.1, 20, 0, 0));
    list.Add(ZoPoint(5, 9, 19, 0, 0));
    ZoNearestImoFinder finder(&list, ZoPoint(0, 10, 20, 0, 0), {5, 1});
    using Ids = std::vector<std::vector<std::uint32_t>>;
    EXPECT_EQ(finder.radii, (std::vector<double>{1, 5}));
    EXPECT_EQ(finder.idsByRadius, (Ids{{1, 2, 5}, {3}}));
    EXPECT_EQ(finder.minX, (std::vector<double>{9, 5}));
    EXPECT_EQ(finder.maxY, (std::vector<double>{21, 25}));

    finder.Calc({});
    EXPECT_EQ(finder.idsByRadius.size(), 2U);
    finder.Calc({6, NAN, -1});
    EXPECT_EQ(finder.idsByRadius, (Ids{{}, {}, {1, 2, 3, 4, 5}}));
    EXPECT_EQ(finder.maxX.size(), 3U);
    ZoNearestImoFinder idle(nullptr, ZoPoint(), {1});
    EXPECT_TRUE(idle.radii.empty());
}

}  // namespace
