// The robust transformation of 10,000 common points of which 40 % are wrong, beside the least that a search of as many
// attempts would do in plain arrays: one pass each that maps all points and compares them with their control points.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "zorv/orientation/random_index.h"
#include "zorv/orientation/similarity.h"

namespace {

constexpr unsigned int kPoints = 10'000;
constexpr int kAttempts = 50;  // no set of agreeing points is large enough to end the search early
constexpr double kLimit = 0.02;

struct Surveys {
    Surveys() {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(0.0, 200.0);
        std::uniform_real_distribution<double> noise(-0.003, 0.003);
        std::uniform_real_distribution<double> blunder(0.5, 50.0);
        for (unsigned int id = 1; id <= kPoints; ++id) {
            const double x = across(random), y = across(random), z = across(random);
            const double off = id % 5 < 2 ? blunder(random) : 0.0;
            controls.Add(ZoPoint(id, 4.5e6 + x + noise(random), 5.4e6 + y + noise(random), z + off, 0));
            source.Add(ZoPoint(id, y, -x, z, 0));
        }
    }
    ZoPointList controls;
    ZoPointList source;
};

const Surveys& Data() {
    static const Surveys surveys;
    return surveys;
}

using Position = std::array<double, 3>;

std::vector<Position> Positions(const ZoPointList& list) {
    std::vector<Position> positions;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        positions.push_back({point->x, point->y, point->z});
    return positions;
}

void PassesFloor(benchmark::State& state) {
    const std::vector<Position> controls = Positions(Data().controls);
    const std::vector<Position> source = Positions(Data().source);
    double m[3][4] = {{0, -1, 0, 4.5e6}, {1, 0, 0, 5.4e6}, {0, 0, 1, 0}};
    for (auto _ : state) {
        std::size_t good = 0;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            benchmark::DoNotOptimize(m);
            for (std::size_t i = 0; i < source.size(); ++i) {
                double squared = 0.0;
                for (std::size_t k = 0; k < 3; ++k) {
                    const Position& p = source[i];
                    const double d = controls[i][k] - (m[k][0] * p[0] + m[k][1] * p[1] + m[k][2] * p[2] + m[k][3]);
                    squared += d * d;
                }
                good += squared <= kLimit * kLimit ? 1 : 0;
            }
        }
        if (good != std::size_t{kAttempts} * kPoints / 5 * 3) state.SkipWithError("wrong count");
    }
}
BENCHMARK(PassesFloor)->Unit(benchmark::kMillisecond);

void CopyFloor(benchmark::State& state) {
    // What goes in is copied once, whatever the search.
    for (auto _ : state) {
        const ZoPointList controls(Data().controls);
        const ZoPointList source(Data().source);
        benchmark::DoNotOptimize(source.Last());
        benchmark::DoNotOptimize(controls.Last());
    }
}
BENCHMARK(CopyFloor)->Unit(benchmark::kMillisecond);

void Robust(benchmark::State& state) {
    constexpr std::uint32_t kSeeds = 8;  // a known few searches, whatever the number of runs
    std::uint32_t run = 0;
    for (auto _ : state) {
        ZoGenerateRandomIndex::SetSeed(run++ % kSeeds);
        ZoPointList result, rejected;
        ZoTrafo3d trafo;
        const eTrafo3DStatus status = trafo.RobustCalcByControlPointsAndTransform(
            &result, &rejected, nullptr, Data().controls, Data().source, kLimit, true, 0.0, 4, false, 0, 0);
        if (status != eTrafo3DOk || rejected.Count() != int{kPoints} / 5 * 2) state.SkipWithError("wrong points");
    }
}
BENCHMARK(Robust)->Unit(benchmark::kMillisecond);

}  // namespace
