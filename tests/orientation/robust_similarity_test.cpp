#include <algorithm>
#include <climits>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "zorv/orientation/random_index.h"
#include "zorv/orientation/similarity.h"

namespace {

using Ids = std::vector<unsigned int>;

Ids IdsOf(const ZoPointList& list) {
    Ids ids;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        ids.push_back(point->GetId());
    return ids;
}

Ids Sorted(Ids ids) {
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// A survey at map coordinates and one of the same points in a system of its own: half the size, a quarter turn about
/// z, the origin elsewhere.
struct Surveys {
    explicit Surveys(unsigned int count, double noise = 0.0) {
        std::mt19937 random(count);
        std::uniform_real_distribution<double> across(0.0, 50.0);
        std::uniform_real_distribution<double> off(-noise, noise);
        for (unsigned int id = 1; id <= count; ++id) {
            const double x = across(random), y = across(random), z = across(random);
            controls.Add(ZoPoint(id, 4.5e6 + x + off(random), 5.4e6 + y + off(random), 300 + z + off(random), 0));
            source.Add(ZoPoint(id, y / 2 + 7, -x / 2, z / 2 - 3, 0));
        }
        ZoGenerateRandomIndex::SetSeed(11);
    }
    void Shift(unsigned int id, double d) {
        ZoPoint* point = source.Find(id);
        point->x += d;
        point->y -= d;
    }
    eTrafo3DStatus Run(double threshold, int minPoints = 3, int extraPoints = 0, int extraSample = 0) {
        return trafo.RobustCalcByControlPointsAndTransform(&result, &rejected, &rejectedControls, controls, source,
                                                           threshold, true, 0.0, minPoints, false, extraPoints,
                                                           extraSample);
    }

    ZoPointList controls, source, result, rejected, rejectedControls;
    ZoTrafo3d trafo;
};

TEST(RobustSimilarity, PlantedBlundersAreFoundExactly) {
    Ids order;
    for (int run = 0; run < 2; ++run) {
        Surveys surveys(500, 0.002);
        Ids planted;
        for (unsigned int id = 1; id <= 500; ++id) {
            if (id % 5 != 1 && id % 5 != 3) continue;
            planted.push_back(id);
            surveys.Shift(id, 0.1 + id % 17);
        }
        ASSERT_EQ(surveys.Run(0.02), eTrafo3DOk);
        EXPECT_EQ(Sorted(IdsOf(surveys.rejected)), planted);
        EXPECT_EQ(IdsOf(surveys.rejectedControls), IdsOf(surveys.rejected));
        EXPECT_EQ(surveys.rejected.First()->GetFlag(), ZoTrafo3d::kHasResidual | ZoTrafo3d::kRejected);
        EXPECT_TRUE(surveys.rejected.IsPtrInList(surveys.trafo.GetWorstPoint()));
        EXPECT_EQ(surveys.trafo.GetCommonCount(), 300);
        EXPECT_NEAR(surveys.trafo.scale, 2.0, 1e-4);
        EXPECT_NEAR(surveys.trafo.rotation[1][2], -1.0, 1e-4);
        // Noise of 2 mm an axis, and the fit's own error.
        for (const ZoPoint* point = surveys.result.First(); point; point = point->NextConst())
            EXPECT_LT(point->Distance(surveys.controls.Find(point->GetId())), 0.005);
        if (run > 0) {
            EXPECT_EQ(IdsOf(surveys.result), order) << "the seed repeats the search";
        }
        order = IdsOf(surveys.result);
    }
}

TEST(RobustSimilarity, SearchesOnlyAsLongAsNeeded) {
    struct Case {
        const char* name;
        unsigned int count;
        Ids blunders;
        double threshold;
        int fewest, most;
    };
    for (const Case& each : {Case{"all agree", 10, {}, 1e-3, 0, 0}, Case{"none of 5", 5, {}, 0.0, 12, 12},
                             Case{"none of 10", 10, {}, 0.0, 20, 20}, Case{"none of 30", 30, {}, 0.0, 50, 50},
                             Case{"80 %", 10, {2, 5}, 1e-3, 20, 20}, Case{"90 %", 10, {2}, 1e-3, 1, 19}}) {
        SCOPED_TRACE(each.name);
        Surveys surveys(each.count, 1e-5);
        for (const unsigned int id : each.blunders)
            surveys.Shift(id, 3.0 + id);
        EXPECT_EQ(surveys.Run(each.threshold), each.threshold == 0.0 ? eTrafo3DNoSolution : eTrafo3DOk);
        EXPECT_EQ(Sorted(IdsOf(surveys.rejected)), each.blunders);

        // What the generator gives next tells how many samples were drawn.
        const auto draw = [&] {
            ZoGenerateRandomIndex random;
            random.Generate(4, each.count);
            return random.GetIndices();
        };
        std::vector<Ids> next(20), all(80);
        std::generate(next.begin(), next.end(), draw);
        ZoGenerateRandomIndex::SetSeed(11);
        std::generate(all.begin(), all.end(), draw);
        const auto drawn = std::search(all.begin(), all.end(), next.begin(), next.end()) - all.begin();
        EXPECT_GE(drawn, each.fewest);
        EXPECT_LE(drawn, each.most);
    }
}

TEST(RobustSimilarity, ListsAreDeliveredInOrder) {
    Surveys surveys(5);
    surveys.controls.Add(ZoPoint(21, 1, 2, 3, 7));
    surveys.controls.Add(ZoPoint(1, 4, 5, 6, 0));  // a second one of an id has no partner
    surveys.source.InsertFirst(std::make_unique<ZoPoint>(31, 7.0, 0.0, -3.0, short{7}).release());
    surveys.source.Add(ZoPoint(2, 9, 9, 9, 0));
    for (ZoPoint* point = surveys.source.First(); point; point = point->Next())
        point->SetFlag(0x841);
    ASSERT_EQ(surveys.Run(1e-6), eTrafo3DOk);
    EXPECT_EQ(IdsOf(surveys.result), (Ids{1, 2, 3, 4, 5, 31, 2, 21, 1}));
    EXPECT_EQ(surveys.result.First()->GetFlag(), 0x41);
    const ZoPoint* lone = surveys.result.Get(5);
    EXPECT_NEAR(lone->Distance(ZoPoint(0, 4.5e6, 5.4e6, 300, 0)), 0, 1e-6);
    EXPECT_EQ(lone->GetFlag(), 1);
    EXPECT_EQ(surveys.source.First()->GetFlag(), 0x841) << "the input stays";

    // Samples seldom hold the ends of the list: a blunder there is found among few points too.
    surveys.Shift(5, 3);
    const auto run = [&](ZoPointList* result, ZoPointList* rejected) {
        return surveys.trafo.RobustCalcByControlPointsAndTransform(result, rejected, nullptr, surveys.controls,
                                                                   surveys.source, 1e-6, true, 0.0, 3, true, 0, 0);
    };
    surveys.result.Destroy();
    surveys.result.Add(ZoPoint(99, 0, 0, 0, 0));
    ASSERT_EQ(run(&surveys.result, nullptr), eTrafo3DOk);
    EXPECT_EQ(surveys.result.Count(), 10);
    EXPECT_EQ(surveys.result.Get(1)->GetId(), 5U) << "rejected points come before the accepted ones";
    EXPECT_EQ(surveys.trafo.GetWorstPoint(), surveys.result.Get(1));
    ASSERT_EQ(run(nullptr, &surveys.rejected), eTrafo3DOk);
    EXPECT_EQ(IdsOf(surveys.rejected), Ids{5});
    ASSERT_EQ(run(nullptr, nullptr), eTrafo3DOk);
    EXPECT_EQ(surveys.trafo.GetWorstPoint(), nullptr) << "its list is gone";
}

TEST(RobustSimilarity, ThresholdMayBeAPartOfTheExtent) {
    // In a box of 10 by 50 by 20, 0.01 of the longest side is 0.5.
    for (const auto& [off, count] : {std::pair{0.4, 0}, std::pair{0.6, 1}}) {
        ZoPointList controls, rejected;
        for (unsigned int id = 1; id <= 40; ++id)
            controls.Add(ZoPoint(id, id % 2 * 10.0, id / 2 % 3 * 25.0, id / 6 % 2 * 20.0, 0));
        ZoPointList source(controls);
        source.Find(20)->z += off;
        ZoTrafo3d().RobustCalcByControlPointsAndTransform(nullptr, &rejected, nullptr, controls, source, 0.01, false,
                                                          0.0, 4, false, 0, 0);
        EXPECT_EQ(rejected.Count(), count);
    }
}

TEST(RobustSimilarity, BadInputHasItsStatus) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char* name;
        double threshold;
        int minPoints, extraPoints, extraSample;
        eTrafo3DStatus expected;
    };
    for (const Case& each : {Case{"just enough points", 1e-3, 9, 1, 5, eTrafo3DOk},
                             Case{"too few common points", 1e-3, 11, 0, 0, eTrafo3DTooFewPoints},
                             Case{"too few for a search", 1e-3, 3, 8, 0, eTrafo3DTooFewPoints},
                             Case{"far too few for a search", 1e-3, 3, INT_MAX, 0, eTrafo3DTooFewPoints},
                             Case{"samples of all points", 1e-3, 3, 0, INT_MAX, eTrafo3DNoSolution},
                             Case{"samples of no point", 1e-3, 3, 0, INT_MIN, eTrafo3DNoSolution},
                             Case{"no minimum, a negative limit", -1e-3, INT_MIN, 0, 0, eTrafo3DOk},
                             Case{"limit 0", 0.0, 3, 0, 0, eTrafo3DNoSolution},
                             Case{"a limit that is no number", kNan, 3, 0, 0, eTrafo3DNoSolution}}) {
        SCOPED_TRACE(each.name);
        Surveys surveys(10, 1e-5);
        surveys.Shift(1, kNan);
        EXPECT_EQ(surveys.Run(each.threshold, each.minPoints, each.extraPoints, each.extraSample), each.expected);
        EXPECT_EQ(surveys.trafo.GetStatus(), each.expected);
        EXPECT_EQ(IdsOf(surveys.rejected), each.expected == eTrafo3DOk ? Ids{1} : Ids{});
        EXPECT_EQ(surveys.result.IsEmpty(), each.expected != eTrafo3DOk);
    }
    EXPECT_EQ(Surveys(0).Run(1.0, 0), eTrafo3DNoSolution);
}

}  // namespace
