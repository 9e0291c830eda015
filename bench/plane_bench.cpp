// A plane fitted to a million points beside the copying of their list, on which the fit has to spend two list nodes a
// point: one for the point used and one for its projection.

#include <cmath>
#include <random>

#include <benchmark/benchmark.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "zorv/rectify/plane_fit.h"

namespace {

constexpr unsigned int kPoints = 1'000'000;

/// Keeps freed memory in the process: whether the heap happens to shrink between two runs would else decide which of
/// them pays for fresh pages.
void KeepHeap() {
#if defined(__GLIBC__)
    mallopt(M_TRIM_THRESHOLD, 2'000'000'000);
    mallopt(M_MMAP_MAX, 0);
#endif
}

/// Points of 0.25 x - 0.5 y + 300 within a centimetre, 500 m across at map coordinates.
ZoPointList& Facade() {
    static ZoPointList points = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(0.0, 500.0);
        std::uniform_real_distribution<double> off(-0.01, 0.01);
        KeepHeap();
        ZoPointList made;
        for (unsigned int id = 1; id <= kPoints; ++id) {
            const double x = across(random);
            const double y = across(random);
            made.Add(ZoPoint(id, 5e6 + x, 5e6 + y, 0.25 * x - 0.5 * y + 300.0 + off(random), 0));
        }
        return made;
    }();
    return points;
}

bool IsRight(const ZoCalcPlane& fit) {
    const ZoPlane& plane = fit.GetPlane();
    return fit.GetPointsInZoPlane().Count() == static_cast<int>(kPoints) &&
           std::fabs(plane.A() / plane.C() + 0.25) < 1e-6 && std::fabs(plane.B() / plane.C() - 0.5) < 1e-6;
}

void CopyFloor(benchmark::State& state) {
    const ZoPointList& points = Facade();
    for (auto _ : state) {
        const ZoPointList copy(points);
        benchmark::DoNotOptimize(copy.Last());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(CopyFloor)->Unit(benchmark::kMillisecond);

void Fit(benchmark::State& state, bool storeResiduals) {
    ZoPointList& points = Facade();
    for (auto _ : state) {
        ZoCalcPlane fit;
        if (!fit.CalcPlaneFromFilteredPoints(&points, storeResiduals, false)) state.SkipWithError("no plane");
        benchmark::DoNotOptimize(fit.GetPlane().D());
        state.PauseTiming();
        if (!IsRight(fit)) state.SkipWithError("wrong plane");
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void FitPlane(benchmark::State& state) {
    Fit(state, false);
}
BENCHMARK(FitPlane)->Unit(benchmark::kMillisecond);

void FitPlaneWithResiduals(benchmark::State& state) {
    Fit(state, true);
}
BENCHMARK(FitPlaneWithResiduals)->Unit(benchmark::kMillisecond);

}  // namespace
