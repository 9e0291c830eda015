// Planar transformations fitted to a million point pairs. The floors: the sums of a Helmert fit over bare arrays, and
// what it costs to come by the coordinates: with the two lists walked side by side, with partners that are known but
// lie all over the memory, and with partners looked up in a ZoSortHelper.

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "zorv/core/sort_helper.h"
#include "zorv/orientation/planar_fit.h"

namespace {

constexpr unsigned int kPairs = 1'000'000;

struct BarePair {
    double x, y, targetX, targetY;
};

/// Source points within 1000 of the origin; targets are moved by 3 + 1.2 x - 0.4 y and -5 + 0.4 x + 1.2 y with noise.
struct Survey {
    Survey() {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> place(-1000.0, 1000.0);
        std::normal_distribution<double> noise(0.0, 0.01);
        for (unsigned int id = 1; id <= kPairs; ++id) {
            const double x = place(random);
            const double y = place(random);
            source.Add(ZoPoint(id, x, y, 0.0, 0));
            target.Add(
                ZoPoint(id, 3 + 1.2 * x - 0.4 * y + noise(random), -5 + 0.4 * x + 1.2 * y + noise(random), 0.0, 0));
            bare.push_back({x, y, target.last->x, target.last->y});
        }
        std::vector<unsigned int> ids(kPairs);
        for (unsigned int i = 0; i < kPairs; ++i)
            ids[i] = i + 1;
        std::shuffle(ids.begin(), ids.end(), random);
        const std::vector<BarePair>& pairs = bare;
        const ZoSortHelper<ZoPoint> helper(&target);
        for (const unsigned int id : ids) {
            shuffled.Add(ZoPoint(id, pairs[id - 1].x, pairs[id - 1].y, 0.0, 0));
            partners.push_back(helper.Find(id));
        }
    }
    ZoPointList source;
    ZoPointList target;
    ZoPointList shuffled;                  ///< the source points in any order of ids
    std::vector<const ZoPoint*> partners;  ///< of those
    std::vector<BarePair> bare;
};

Survey& Points() {
    static Survey survey;
    return survey;
}

/// All sums that the normal equations of a Helmert transformation need.
struct HelmertSums {
    void Add(double x, double y, double targetX, double targetY) {
        sx += x;
        sy += y;
        targetSumX += targetX;
        targetSumY += targetY;
        squares += x * x;
        squares += y * y;
        squaresYX += y * y;
        squaresYX += x * x;
        along += x * targetX;
        along += y * targetY;
        across -= y * targetX;
        across += x * targetY;
        targets += targetX * targetX;
        targets += targetY * targetY;
    }
    double sx = 0, sy = 0, targetSumX = 0, targetSumY = 0;
    double squares = 0, squaresYX = 0, along = 0, across = 0, targets = 0;
};

template <class Body>
void Time(benchmark::State& state, Body body) {
    Points();
    for (auto _ : state) {
        HelmertSums sums;
        body(Points(), sums);
        benchmark::DoNotOptimize(sums);
    }
    state.SetItemsProcessed(state.iterations() * kPairs);
}

void BareSums(benchmark::State& state) {
    Time(state, [](Survey& survey, HelmertSums& sums) {
        for (const BarePair& pair : survey.bare)
            sums.Add(pair.x, pair.y, pair.targetX, pair.targetY);
    });
}
BENCHMARK(BareSums)->Unit(benchmark::kMillisecond);

void WalkBothLists(benchmark::State& state) {
    Time(state, [](Survey& survey, HelmertSums& sums) {
        const ZoPoint* to = survey.target.First();
        for (const ZoPoint* from = survey.source.First(); from; from = from->NextConst(), to = to->NextConst()) {
            if (from->GetId() == to->GetId()) sums.sx += from->x + from->y + to->x + to->y;
        }
    });
}
BENCHMARK(WalkBothLists)->Unit(benchmark::kMillisecond);

void WalkShuffledWithKnownPartners(benchmark::State& state) {
    Time(state, [](Survey& survey, HelmertSums& sums) {
        auto to = survey.partners.begin();
        for (const ZoPoint* from = survey.shuffled.First(); from; from = from->NextConst(), ++to)
            sums.Add(from->x, from->y, (*to)->x, (*to)->y);
    });
}
BENCHMARK(WalkShuffledWithKnownPartners)->Unit(benchmark::kMillisecond);

void MakeSortHelper(benchmark::State& state) {
    Time(state, [](Survey& survey, HelmertSums& sums) {
        const ZoSortHelper<ZoPoint> helper(&survey.target);
        sums.sx = helper.count;
    });
}
BENCHMARK(MakeSortHelper)->Unit(benchmark::kMillisecond);

void HelperAndSums(benchmark::State& state, bool isShuffled) {
    Time(state, [isShuffled](Survey& survey, HelmertSums& sums) {
        const ZoSortHelper<ZoPoint> helper(&survey.target);
        const ZoPointList& list = isShuffled ? survey.shuffled : survey.source;
        for (const ZoPoint* from = list.First(); from; from = from->NextConst()) {
            if (const ZoPoint* to = helper.Find(from->GetId())) sums.Add(from->x, from->y, to->x, to->y);
        }
    });
}
BENCHMARK_CAPTURE(HelperAndSums, ascending, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HelperAndSums, shuffled, true)->Unit(benchmark::kMillisecond);

bool IsRight(const ZoCalcTrafo2D& fit) {
    double x = 500.0;
    double y = -300.0;
    return fit.Transform(&x, &y) && std::fabs(x - 723.0) < 1e-3 && std::fabs(y + 165.0) < 1e-3;
}

void Fit(benchmark::State& state, bool (ZoCalcTrafo2D::*calc)(ZoPointList*), bool isShuffled) {
    Survey& survey = Points();
    ZoCalcTrafo2D fit(&survey.target);
    ZoPointList* list = isShuffled ? &survey.shuffled : &survey.source;
    if (!(fit.*calc)(list) || !IsRight(fit)) return state.SkipWithError("wrong transformation");
    for (auto _ : state) {
        (fit.*calc)(list);
        benchmark::DoNotOptimize(fit.coef);
    }
    state.SetItemsProcessed(state.iterations() * kPairs);
}

constexpr bool (ZoCalcTrafo2D::*kHelmert)(ZoPointList*) = &ZoCalcTrafo2D::CalcTrafoHelmert;
BENCHMARK_CAPTURE(Fit, Helmert, kHelmert, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, HelmertShuffled, kHelmert, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, Affin, &ZoCalcTrafo2D::CalcTrafoAffin, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, Projektiv, &ZoCalcTrafo2D::CalcTrafoProjectiv, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, Polynom, &ZoCalcTrafo2D::CalcTrafoPolynom, false)->Unit(benchmark::kMillisecond);

void Residuals(benchmark::State& state) {
    Survey& survey = Points();
    ZoCalcTrafo2D fit(&survey.target);
    if (!fit.CalcTrafoHelmert(&survey.source)) return state.SkipWithError("no transformation");
    for (auto _ : state)
        fit.CalcResiduals(&survey.source);
    if (std::fabs(fit.GetResidualX() - 0.01) > 1e-4) state.SkipWithError("wrong residuals");
    state.SetItemsProcessed(state.iterations() * kPairs);
}
BENCHMARK(Residuals)->Unit(benchmark::kMillisecond);

}  // namespace
