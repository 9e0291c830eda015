#include "zorv/orientation/planar_fit.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "tests/support/allocation_count.h"
#include <gtest/gtest.h>

#include "zorv/math/matrix.h"
#include "zorv/math/region.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr eZoTrafo2DType kFitted[] = {eTrafo2DHelmert, eTrafo2DAffin, eTrafo2DProjektiv, eTrafo2DPolynomial};

/// Source x, y and target x, y.
using Pair = std::array<double, 4>;

/// Pairs with the ids 1, 2, ...
struct Survey {
    explicit Survey(const std::vector<Pair>& pairs = {}) {
        for (const Pair& pair : pairs)
            Add(pair);
    }
    void Add(const Pair& pair) {
        const unsigned int id = source.GetFreeId(0);
        source.Add(ZoPoint(id, pair[0], pair[1], 0.0, 0));
        target.Add(ZoPoint(id, pair[2], pair[3], 0.0, 0));
    }
    ZoPointList source, target;
};

bool Fit(ZoCalcTrafo2D& fit, eZoTrafo2DType type, ZoPointList* list) {
    if (type == eTrafo2DHelmert) return fit.CalcTrafoHelmert(list);
    if (type == eTrafo2DAffin) return fit.CalcTrafoAffin(list);
    return type == eTrafo2DProjektiv ? fit.CalcTrafoProjectiv(list) : fit.CalcTrafoPolynom(list);
}

// A distorted grid in sixteenths, so that the table is exact.
const std::vector<Pair> kGrid = {
    {-2.875, -3.25, 8.8125, -25.4375}, {-3.375, -0.5, 6.4375, -21.6875},  {-3.5, 1.5, 5.5, -19.875},
    {-3.375, 3.25, 5.1875, -17.625},   {-1.125, -3.375, 10.6875, -24.75}, {-1.375, -1.125, 8.5, -21.5625},
    {-1.5, 0.875, 7.375, -19.8125},    {-1.0, 3.25, 6.9375, -16.9375},    {1.0, -2.5, 12.375, -22.6875},
    {0.875, -0.875, 11.25, -21.0},     {0.5, 0.875, 10.625, -18.5},       {1.125, 3.375, 10.1875, -15.6875},
    {3.0, -3.125, 15.6875, -22.1875},  {2.625, -1.0, 14.6875, -19.625},   {3.125, 1.375, 13.875, -17.8125},
    {2.625, 3.5, 12.25, -15.5625}};

// The numbers come from the normal equations of the grid in rational arithmetic, outside of this program.
TEST(PlanarFit, AgreesWithRationalArithmetic) {
    const std::vector<double> expected[] = {
        {10.326672558624052, 1.191907885987854, -20.12618993528082, 0.4346934704552507},
        {10.344302505045922, 1.2544575942796874, -0.46971239970034967, -20.125941623756137, 0.3948441525236166,
         1.1325819892444335},
        {1.2054894304488455, -0.3352902262912567, 10.271647829684952, 0.5037829962798263, 0.8672816025655105,
         -20.051235714503747, -0.005422334823716181, 0.013326301421488567},
        {9.851549605592973,      1.5567996051886337,     -0.39298563884069193,  0.062335726909238366,
         0.01793800343033661,    0.026033884792677986,   -0.02211555159845622,  -0.0003412509219829511,
         -0.014077567943779732,  -0.009980677178670442,  -19.97726108137207,    0.41092216590467007,
         1.0494486970061132,     -0.0009452622606247983, -0.030731130317574264, -0.027594973651649052,
         -0.0036254756658641437, -0.011913145891062914,  0.0012013985464109076, 0.015043101583007302}};
    Survey survey(kGrid);
    ZoCalcTrafo2D fit(&survey.target);
    for (int k = 0; k < 4; ++k) {
        ASSERT_TRUE(Fit(fit, kFitted[k], &survey.source));
        EXPECT_EQ(fit.type, kFitted[k]);
        for (std::size_t i = 0; i < expected[k].size(); ++i)
            EXPECT_NEAR(fit.coef[i], expected[k][i], 1e-11) << kFitted[k] << " " << i;
        EXPECT_NEAR(fit.GetScale(), 0.7882076354602694, 1e-12) << "of the Helmert fit, which the others leave";
    }
}

/// The full observation rows of a pair; the last element is the right-hand side.
std::array<std::vector<double>, 2> Rows(eZoTrafo2DType type, const Pair& pair) {
    const auto& [x, y, X, Y] = pair;
    if (type == eTrafo2DHelmert) return {{{1, 0, x, -y, X}, {0, 1, y, x, Y}}};
    if (type == eTrafo2DAffin) return {{{1, x, y, 0, 0, 0, X}, {0, 0, 0, 1, x, y, Y}}};
    return {{{x, y, 1, 0, 0, 0, -x * X, -y * X, X}, {0, 0, 0, x, y, 1, -x * Y, -y * Y, Y}}};
}

/// The fit as it is defined: row by row into one matrix.
ZoVector PlainFit(eZoTrafo2DType type, const std::vector<Pair>& pairs) {
    const int unknowns = 2 + 2 * type;
    ZoMatrix normal(unknowns + 1, 2 * unknowns + 1);
    for (int i = 1; i <= unknowns; ++i)
        normal[i][unknowns + 1 + i] = 1.0;
    for (const Pair& pair : pairs) {
        for (const std::vector<double>& row : Rows(type, pair)) {
            ZoVector v(unknowns + 1);
            std::copy(row.begin(), row.end(), &v[1]);
            normal.CalcNGLAN(v);
        }
    }
    ZoVector solution(unknowns);
    normal.Cholesky(solution);
    if (type == eTrafo2DHelmert) std::swap(solution[2], solution[3]);
    return solution;
}

TEST(PlanarFit, GivesTheNumbersOfFullRowsToTheLastBit) {
    std::mt19937 random(5);
    std::normal_distribution<double> value(0.0, 1.0);
    for (int round = 0; round < 216; ++round) {
        const double origin = std::array{0.0, 300.0, 5e6}[round / 72];
        std::vector<Pair> pairs(40);
        for (Pair& pair : pairs)
            pair = {origin + value(random), value(random), origin + value(random), -value(random)};
        pairs[17][round % 4] = std::array{0.0, -0.0, kNaN, kInfinity, -kInfinity, 1e200}[round / 4 % 6];
        const eZoTrafo2DType type = kFitted[round / 24 % 3];
        Survey survey(pairs);
        ZoCalcTrafo2D fit(&survey.target);
        Fit(fit, type, &survey.source);
        const ZoVector plain = PlainFit(type, pairs);
        for (int i = 0; i < plain.GetSize(); ++i) {
            const double expected = plain[i + 1];
            EXPECT_TRUE(std::memcmp(&fit.coef[i], &expected, sizeof expected) == 0 ||
                        (std::isnan(fit.coef[i]) && std::isnan(expected)))
                << round << ", type " << type << " " << i;
        }
    }
}

TEST(PlanarFit, ScaleAndDirectForm) {
    Survey doubled({{1, 2, 2, 4}, {4, 3, 8, 6}});
    ZoCalcTrafo2D fit(&doubled.target);
    ASSERT_TRUE(fit.CalcTrafoHelmert(&doubled.source));
    EXPECT_NEAR(fit.GetScale(), 0.5, 1e-13);
    EXPECT_TRUE(fit.CalcTrafoHelmert(-4.0, 2, 6.0, 4));
    EXPECT_TRUE(fit.coef[0] == 2.0 && fit.coef[1] == -2.0 && fit.coef[2] == -3.0 && fit.coef[3] == 1.5);
    EXPECT_TRUE(fit.CalcTrafoHelmert(-4.0, 0, 6.0, 0));
    EXPECT_TRUE(fit.coef[1] == 0.0 && fit.coef[3] == 0.0);
}

TEST(PlanarFit, TooFewPointsLeaveTheObjectAndUndeterminedOnesGiveZeros) {
    constexpr std::ptrdiff_t kNeeded[] = {2, 3, 4, 10};
    Survey apart(kGrid);
    apart.source.Renumber(100, nullptr, 1);  // no pair
    for (int k = 0; k < 4; ++k) {
        Survey survey(std::vector<Pair>(kGrid.begin(), kGrid.begin() + kNeeded[k] - 1));
        ZoCalcTrafo2D fit(&survey.target);
        fit.coef[0] = 7.0;
        EXPECT_FALSE(Fit(fit, kFitted[k], &survey.source)) << k;
        EXPECT_FALSE(Fit(fit, kFitted[k], nullptr)) << k;
        EXPECT_TRUE(fit.type == eTrafo2DNone && fit.coef[0] == 7.0 && fit.scale == 1.0) << k;
        survey.Add(kGrid.back());
        EXPECT_TRUE(Fit(fit, kFitted[k], &survey.source)) << k;
        for (Survey undetermined : {Survey(std::vector<Pair>(12, Pair{3, 4, 5, 6})), apart}) {
            fit.SetPPList(&undetermined.target);
            fit.scale = 1.0;
            EXPECT_EQ(Fit(fit, kFitted[k], &undetermined.source), k > 0);
            EXPECT_TRUE(fit.type == kFitted[k] && fit.coef[0] == 0.0 && fit.scale == (k > 0 ? 1.0 : 0.0)) << k;
        }
    }
}

TEST(PlanarFit, MemoryDoesNotGrowWithThePoints) {
    Survey survey(kGrid);
    std::size_t needed[2] = {};
    for (std::size_t& allocations : needed) {
        ZoCalcTrafo2D fit(&survey.target);
        const std::size_t before = AllocationCount();
        for (const eZoTrafo2DType type : kFitted)
            EXPECT_TRUE(Fit(fit, type, &survey.source));
        fit.CalcResiduals(&survey.source);
        allocations = AllocationCount() - before;
        for (int i = 0; i < 1000; ++i)
            survey.Add({i % 31 + 0.5, i % 7 - 3.0, i % 31 * 2.0, i % 7 * 2.0});
    }
    EXPECT_EQ(needed[0], needed[1]);
}

TEST(PlanarFit, CopiesReferToTheirOwnList) {
    ZoPointList other;
    ZoCalcTrafo2D fit;
    fit.ownList.Add(ZoPoint(4, 1, 2, 3, 0));
    fit.SetActList(&other);
    ZoCalcTrafo2D assigned(&other);
    assigned = fit;
    for (const ZoCalcTrafo2D& copy : {fit, assigned})
        EXPECT_TRUE(copy.GetPPList() == &copy.ownList && copy.GetActList() == &other && copy.ownList.Count() == 1);
}

// Residuals of the Helmert fit from the same source.
TEST(PlanarResiduals, AreStoredAndSummed) {
    Survey survey(kGrid);
    survey.target.Add(ZoPoint(2, 500, 500, 0, 0));  // the first of an id is the partner
    ZoPoint* single = survey.source.Add(ZoPoint(99, 1, 1, 0, 0));
    single->residualX = 8.0;
    ZoCalcTrafo2D fit(&survey.target);
    fit.SetActList(&survey.source);
    ASSERT_TRUE(fit.CalcTrafoHelmert(&survey.source));
    ASSERT_TRUE(fit.CalcResiduals(nullptr));
    EXPECT_NEAR(fit.GetResidualX(), 0.46719030092064184, 1e-12);
    EXPECT_NEAR(fit.GetResidualY(), 0.3771647026544954, 1e-12);
    EXPECT_EQ(fit.GetMaxError(), 14u);
    ZoPoint* first = survey.source.First();
    EXPECT_NEAR(first->residualX, -0.49980883461146325, 1e-12);
    EXPECT_TRUE(first->x == kGrid[0][0] && first->IsFlagSet(0x20) != 0);
    EXPECT_TRUE(single->residualX == 0.0 && single->IsFlagSet(0x20) == 0);

    first->x = kNaN;  // exceeds nothing and lies within nothing
    first->ClearFlag(0x20);
    double maxX = 9.0, maxY = 9.0;
    int within = 9;
    fit.maxError = 3;
    fit.CalcResiduals(maxX, maxY, within, -0.5, nullptr);
    EXPECT_NEAR(maxX, -0.7973757702025799, 1e-12);
    EXPECT_NEAR(maxY, -0.5520274613236402, 1e-12);
    EXPECT_TRUE(within == 6 && first->residualY == 0.0 && first->IsFlagSet(0x20) != 0 && fit.GetMaxError() == 3);
    const ZoPointList none;
    fit.CalcResiduals(maxX, maxY, within, 1.0, &none);
    EXPECT_TRUE(maxX == 0.0 && maxY == 0.0 && within == 0 && fit.GetResidualY() == 0.0);
}

TEST(PlanarSuggestion, ByNumberAndDistribution) {
    const ZoRegion region(0, 0, 12, 12);  // its centre is 4 to 8
    const std::vector<Pair> spread = {{6, 6}, {9, 3}, {3, 9}, {9, 9}, {3, 3}};
    ZoCalcTrafo2D fit;
    const int byNumber[] = {0, 0, 1, 2, 3, 3, 3, 3, 3, 3, 4, 4, 4, 4};
    const int byPlace[] = {0, 0, 1, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 4};
    for (std::size_t count = 0; count < std::size(byNumber); ++count) {
        EXPECT_EQ(fit.SuggestTrafoByPointsNbr(nullptr), byNumber[count]) << count;
        EXPECT_EQ(fit.SuggestTrafoByDistrib(region, nullptr), byPlace[count]) << count;
        fit.ownList.Add(ZoPoint(1, spread[count % 5][0], spread[count % 5][1], 0, 0));
    }
    const auto suggest = [&](const std::vector<Pair>& places) {
        Survey survey(places);
        return fit.SuggestTrafoByDistrib(region, &survey.source);
    };
    EXPECT_EQ(suggest({{3.9, 6}, {9, 3}, {3, 9}, {9, 9}, {3, 3}}), eTrafo2DAffin);
    // On a border a point counts for the part that comes first: (6, 3) for the right lower, not the left lower one.
    EXPECT_EQ(suggest({{8, 8}, {6, 3}, {3, 9}, {12, 12}, {3, 3}}), eTrafo2DProjektiv);
    EXPECT_EQ(suggest({{8, 8}, {9, 3}, {3, 9}, {9, 9}, {6, 3}}), eTrafo2DAffin);
}

}  // namespace
