#include <algorithm>
#include <climits>
#include <limits>
#include <random>

#include "tests/support/point_ids.h"
#include <gtest/gtest.h>

#include "zorv/orientation/random_index.h"
#include "zorv/orientation/similarity.h"

namespace {

/// A survey at map coordinates, 50 by 500 by 50 m, and one of the same points in a system of its own: half the size, a
/// quarter turn about z, the origin elsewhere.
struct Surveys {
    explicit Surveys(unsigned int count, double noise) {
        std::mt19937 random(count);
        std::uniform_real_distribution<double> across(0.0, 50.0), off(-noise, noise);
        for (unsigned int id = 1; id <= count; ++id) {
            const double x = across(random), y = 10 * across(random), z = across(random);
            controls.Add(ZoPoint(id, 4.5e6 + x + off(random), 5.4e6 + y + off(random), 300 + z + off(random), 0));
            source.Add(ZoPoint(id, y / 2 + 7, -x / 2, z / 2 - 3, 0));
        }
        ZoGenerateRandomIndex::SetSeed(11);
    }
    eTrafo3DStatus Run(ZoPointList* to, ZoPointList* bad, double threshold, bool isAbsolute = true, int minPoints = 3,
                       int extraPoints = 0, int extraSample = 0) {
        return trafo.RobustCalcByControlPointsAndTransform(to, bad, &badControls, controls, source, threshold,
                                                           isAbsolute, 0.0, minPoints, false, extraPoints, extraSample);
    }
    ZoPointList controls, source, result, rejected, badControls;
    ZoTrafo3d trafo;
};

TEST(RobustSimilarity, PlantedBlundersAreFoundExactly) {
    Surveys surveys(500, 0.002);
    Ids planted;
    for (ZoPoint* point = surveys.source.First(); point; point = point->Next()) {
        if (point->GetId() % 5 != 1 && point->GetId() % 5 != 3) continue;
        planted.push_back(point->GetId());
        point->x += 0.1 + point->GetId() % 17;
    }
    // 4e-5 of the 500 m are 2 cm.
    ASSERT_EQ(surveys.Run(&surveys.result, &surveys.rejected, 4e-5, false), eTrafo3DOk);
    EXPECT_EQ(IdsOf(surveys.badControls), IdsOf(surveys.rejected));
    EXPECT_EQ(surveys.rejected.First()->GetFlag(), ZoTrafo3d::kHasResidual | ZoTrafo3d::kRejected);
    EXPECT_TRUE(surveys.rejected.IsPtrInList(surveys.trafo.GetWorstPoint()));
    surveys.rejected.SortById();
    EXPECT_EQ(IdsOf(surveys.rejected), planted);
    EXPECT_EQ(surveys.trafo.GetCommonCount(), 300);
    // Noise of 2 mm an axis, and the fit's own error.
    for (const ZoPoint* point = surveys.result.First(); point; point = point->NextConst())
        EXPECT_LT(point->Distance(surveys.controls.Find(point->GetId())), 0.005);
}

TEST(RobustSimilarity, SearchesOnlyAsLongAsNeeded) {
    // points, wrong ones, threshold, fewest and most samples; with a threshold of 0 none agrees
    const std::tuple<unsigned int, Ids, double, int, int> cases[] = {
        {10, {}, 1e-3, 0, 0},  {5, {}, 0.0, 12, 12},       {10, {}, 0.0, 20, 20},
        {30, {}, 0.0, 50, 50}, {10, {2, 5}, 1e-3, 20, 20}, {10, {2}, 1e-3, 1, 19},
    };
    for (const auto& [count, wrong, threshold, fewest, most] : cases) {
        SCOPED_TRACE(testing::Message() << wrong.size() << " of " << count);
        Surveys surveys(count, 1e-5);
        for (const unsigned int id : wrong)
            surveys.source.Find(id)->x += 3.0 + id;
        EXPECT_EQ(surveys.Run(nullptr, &surveys.rejected, threshold),
                  threshold == 0.0 ? eTrafo3DNoSolution : eTrafo3DOk);
        EXPECT_EQ(surveys.rejected.Count(), static_cast<int>(wrong.size()));

        // What the generator gives next tells how many samples were drawn.
        const auto draw = [n = count] {
            ZoGenerateRandomIndex random;
            random.Generate(4, n);
            return random.GetIndices();
        };
        std::vector<Ids> next(20), all(80);
        std::generate(next.begin(), next.end(), draw);
        ZoGenerateRandomIndex::SetSeed(11);
        std::generate(all.begin(), all.end(), draw);
        const auto drawn = std::search(all.begin(), all.end(), next.begin(), next.end()) - all.begin();
        EXPECT_GE(drawn, fewest);
        EXPECT_LE(drawn, most);
    }
}

TEST(RobustSimilarity, ListsAreDeliveredInOrder) {
    Surveys surveys(5, 0.0);
    ZoPointList& result = surveys.result;
    surveys.controls.Add(ZoPoint(21, 1, 2, 3, 7));
    surveys.controls.Add(ZoPoint(1, 4, 5, 6, 0));  // a second one of an id has no partner
    surveys.source.Add(ZoPoint(2, 9, 9, 9, 0));
    surveys.source.InsertFirst(std::make_unique<ZoPoint>(31, 7.0, 0.0, -3.0, short{7}).release())->SetFlag(0x841);
    ASSERT_EQ(surveys.Run(&result, nullptr, 1e-6), eTrafo3DOk);
    EXPECT_EQ(IdsOf(result), (Ids{1, 2, 3, 4, 5, 31, 2, 21, 1}));
    EXPECT_NEAR(result.Get(5)->Distance(ZoPoint(0, 4.5e6, 5.4e6, 300, 0)), 0, 1e-6);
    EXPECT_EQ(result.Get(5)->GetFlag(), 1);
    EXPECT_EQ(surveys.source.First()->GetFlag(), 0x841) << "the input stays";

    // Samples seldom hold the ends of the list: a blunder there is found among few points too.
    surveys.source.Find(5)->x += 3;
    ASSERT_EQ(surveys.Run(&result, nullptr, 1e-6), eTrafo3DOk);
    EXPECT_EQ(result.Count(), 18);
    EXPECT_EQ(result.Get(9)->GetId(), 5U) << "rejected points come before the accepted ones";
    EXPECT_EQ(surveys.trafo.GetWorstPoint(), result.Get(9));
    ASSERT_EQ(surveys.Run(nullptr, nullptr, 1e-6), eTrafo3DOk);
    EXPECT_EQ(surveys.trafo.GetWorstPoint(), nullptr) << "its list is gone";
}

TEST(RobustSimilarity, BadInputHasItsStatus) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    // threshold, minPoints, extraPoints, extraSample; one of 10 points is not a number
    const std::tuple<double, int, int, int, eTrafo3DStatus> cases[] = {
        {1e-3, 9, 1, 5, eTrafo3DOk},           {1e-3, 11, 0, 0, eTrafo3DTooFewPoints},
        {1e-3, 3, 8, 0, eTrafo3DTooFewPoints}, {1e-3, 3, INT_MAX, 0, eTrafo3DTooFewPoints},
        {-1e-3, INT_MIN, 0, 0, eTrafo3DOk},    {1e-3, 3, 0, INT_MAX, eTrafo3DNoSolution},
        {0.0, 3, 0, 0, eTrafo3DNoSolution},    {1e-3, 3, 0, INT_MIN, eTrafo3DNoSolution},
        {kNan, 3, 0, 0, eTrafo3DNoSolution},
    };
    for (const auto& [threshold, minPoints, extraPoints, extraSample, expected] : cases) {
        SCOPED_TRACE(testing::Message() << threshold << ' ' << minPoints << ' ' << extraPoints << ' ' << extraSample);
        Surveys surveys(10, 1e-5);
        surveys.source.First()->x = kNan;
        EXPECT_EQ(surveys.Run(&surveys.result, &surveys.rejected, threshold, true, minPoints, extraPoints, extraSample),
                  expected);
        EXPECT_EQ(surveys.trafo.GetStatus(), expected);
        EXPECT_EQ(IdsOf(surveys.rejected), expected == eTrafo3DOk ? Ids{1} : Ids{});
        EXPECT_EQ(surveys.result.IsEmpty(), expected != eTrafo3DOk);
    }
    EXPECT_EQ(Surveys(0, 0).Run(nullptr, nullptr, 1.0, true, 0), eTrafo3DNoSolution);
}

}  // namespace
