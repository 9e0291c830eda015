// The direct similarity fit of a million common points beside a centred covariance accumulated over the same lookups,
// and beside Eigen's umeyama and a bare covariance on plain arrays, which do without lookups; the transformation of a
// list beside its copy.

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include <Eigen/Geometry>
#include <benchmark/benchmark.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "zorv/orientation/similarity.h"

namespace {

constexpr unsigned int kPoints = 1'000'000;
constexpr unsigned int kFewControls = 1000;
constexpr double kScale = 1.25;
const Eigen::Vector3d kShift(4.5e6, 5.4e6, 300.0);

Eigen::Matrix3d Rotation() {
    return Eigen::AngleAxisd(1.1, Eigen::Vector3d(1.0, -2.0, 0.5).normalized()).toRotationMatrix();
}

/// Keeps freed memory in the process: whether the heap happens to shrink between two runs would else decide which of
/// them pays for fresh pages.
void KeepHeap() {
#if defined(__GLIBC__)
    mallopt(M_TRIM_THRESHOLD, 2'000'000'000);
    mallopt(M_MMAP_MAX, 0);
#endif
}

/// A survey and its control points within a centimetre at map coordinates, in the order of their ids and, as another
/// list, in no order.
struct Survey {
    Survey() {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(0.0, 500.0);
        std::normal_distribution<double> noise(0.0, 0.01);
        KeepHeap();
        const Eigen::Matrix3d r = Rotation();
        for (unsigned int id = 1; id <= kPoints; ++id) {
            const Eigen::Vector3d a(across(random), across(random), 0.2 * across(random));
            const Eigen::Vector3d off(noise(random), noise(random), noise(random));
            const Eigen::Vector3d b = kShift + kScale * (r * a) + off;
            source.Add(ZoPoint(id, a.x(), a.y(), a.z(), 0));
            control.Add(ZoPoint(id, b.x(), b.y(), b.z(), 0));
        }
        std::vector<const ZoPoint*> order;
        for (const ZoPoint* point = source.First(); point; point = point->NextConst())
            order.push_back(point);
        std::shuffle(order.begin(), order.end(), random);
        for (const ZoPoint* point : order)
            shuffled.Add(*point);
        helper = std::make_unique<ZoSortHelper<ZoPoint>>(&control);

        const ZoPoint* point = control.First();
        for (unsigned int i = 0; i < kFewControls; ++i, point = point->NextConst())
            few.Add(*point);
        fewHelper = std::make_unique<ZoSortHelper<ZoPoint>>(&few);
        for (unsigned int i = 0; i < kPoints / kFewControls; ++i) {
            point = source.First();
            for (unsigned int k = 0; k < kFewControls; ++k, point = point->NextConst())
                repeated.Add(*point);
        }
    }

    ZoPointList source;
    ZoPointList shuffled;
    ZoPointList control;
    std::unique_ptr<ZoSortHelper<ZoPoint>> helper;
    /// As many points with the ids of a few control points, so that lookups take next to nothing.
    ZoPointList repeated;
    ZoPointList few;
    std::unique_ptr<ZoSortHelper<ZoPoint>> fewHelper;
};

Survey& Data() {
    static Survey survey;
    return survey;
}

const ZoPointList& Source(bool inOrder) {
    return inOrder ? Data().source : Data().shuffled;
}

bool IsRight(const ZoTrafo3d& trafo) {
    const Eigen::Matrix3d expected = Rotation();
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            if (std::fabs(trafo.rotation.GetElemZeroIndex(r, c) - expected(r, c)) > 1e-6) return false;
        }
    }
    return trafo.GetCommonCount() == static_cast<int>(kPoints) && std::fabs(trafo.scale - kScale) < 1e-6;
}

/// Means and products of flat coordinates, six a point: source, then control.
double Covariance(const std::vector<double>& flat) {
    const std::size_t count = flat.size() / 6;
    double mean[6] = {};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < 6; ++k)
            mean[k] += flat[6 * i + k];
    }
    for (double& m : mean)
        m /= static_cast<double>(count);
    double products[9] = {};
    double squares = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        double p[6];
        for (std::size_t k = 0; k < 6; ++k)
            p[k] = flat[6 * i + k] - mean[k];
        for (std::size_t k = 0; k < 9; ++k)
            products[k] += p[3 + k / 3] * p[k % 3];
        squares += p[0] * p[0] + p[1] * p[1] + p[2] * p[2];
    }
    benchmark::DoNotOptimize(products);
    return products[0] / squares;
}

std::vector<double> Gather(const ZoPointList& source) {
    std::vector<double> flat;
    flat.reserve(6 * static_cast<std::size_t>(kPoints));
    for (const ZoPoint* point = source.First(); point; point = point->NextConst()) {
        const ZoPoint* control = Data().helper->Find(point->GetId());
        if (control) flat.insert(flat.end(), {point->x, point->y, point->z, control->x, control->y, control->z});
    }
    return flat;
}

void LookupCovarianceFloor(benchmark::State& state, bool inOrder) {
    const ZoPointList& source = Source(inOrder);
    for (auto _ : state)
        benchmark::DoNotOptimize(Covariance(Gather(source)));
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void Fit(benchmark::State& state, bool inOrder) {
    const ZoPointList& source = Source(inOrder);
    const ZoSortHelper<ZoPoint>& helper = *Data().helper;
    ZoTrafo3d check;
    if (!check.CalcByControlPoints(helper, &source, 4, false) || !IsRight(check)) state.SkipWithError("wrong fit");
    for (auto _ : state) {
        ZoTrafo3d trafo;
        benchmark::DoNotOptimize(trafo.CalcByControlPoints(helper, &source, 4, false));
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

/// The coordinates of the repeated points and of their control points, without a fit.
void RepeatedWalkFloor(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<double> flat;
        flat.reserve(6 * static_cast<std::size_t>(kPoints));
        const ZoPoint* control = nullptr;
        for (const ZoPoint* point = Data().repeated.First(); point; point = point->NextConst()) {
            control = control ? control->NextConst() : nullptr;
            if (!control) control = Data().few.First();
            flat.insert(flat.end(), {point->x, point->y, point->z, control->x, control->y, control->z});
        }
        benchmark::DoNotOptimize(flat.data());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

/// Less the walk this is the arithmetic of the fit.
void RepeatedFit(benchmark::State& state) {
    ZoTrafo3d trafo;
    for (auto _ : state)
        benchmark::DoNotOptimize(trafo.CalcByControlPoints(*Data().fewHelper, &Data().repeated, 4, false));
    if (trafo.GetCommonCount() != static_cast<int>(kPoints) || std::fabs(trafo.scale - kScale) > 1e-5)
        state.SkipWithError("wrong fit");
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void BareCovariance(benchmark::State& state) {
    const std::vector<double> flat = Gather(Data().source);
    for (auto _ : state)
        benchmark::DoNotOptimize(Covariance(flat));
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void BareUmeyama(benchmark::State& state) {
    const std::vector<double> flat = Gather(Data().source);
    Eigen::Matrix3Xd a(3, kPoints);
    Eigen::Matrix3Xd b(3, kPoints);
    for (Eigen::Index i = 0; i < a.cols(); ++i) {
        a.col(i) = Eigen::Map<const Eigen::Vector3d>(flat.data() + 6 * i);
        b.col(i) = Eigen::Map<const Eigen::Vector3d>(flat.data() + 6 * i + 3);
    }
    for (auto _ : state) {
        Eigen::Matrix4d m = Eigen::umeyama(a, b);
        benchmark::DoNotOptimize(m.data());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

/// As a transformation into an old list, which has to go too.
void CopyFloor(benchmark::State& state, bool inOrder) {
    const ZoPointList& source = Source(inOrder);
    ZoPointList result;
    for (auto _ : state) {
        ZoPointList copy(source);
        result.Destroy();
        copy.MoveTo(&result);
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}

void TransformCopies(benchmark::State& state, bool inOrder) {
    const ZoPointList& source = Source(inOrder);
    ZoTrafo3d trafo;
    if (!trafo.CalcByControlPoints(*Data().helper, &source, 4, false)) state.SkipWithError("no fit");
    ZoPointList result;
    for (auto _ : state)
        trafo.Transform(result, source, *Data().helper, false);
    if (result.Count() != static_cast<int>(kPoints) || std::fabs(trafo.GetRmsX() - 0.01) > 1e-4)
        state.SkipWithError("wrong points");
    state.SetItemsProcessed(state.iterations() * kPoints);
}

BENCHMARK_CAPTURE(LookupCovarianceFloor, InOrder, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, InOrder, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LookupCovarianceFloor, Shuffled, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Fit, Shuffled, false)->Unit(benchmark::kMillisecond);
BENCHMARK(RepeatedWalkFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(RepeatedFit)->Unit(benchmark::kMillisecond);
BENCHMARK(BareCovariance)->Unit(benchmark::kMillisecond);
BENCHMARK(BareUmeyama)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CopyFloor, InOrder, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TransformCopies, InOrder, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CopyFloor, Shuffled, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TransformCopies, Shuffled, false)->Unit(benchmark::kMillisecond);

}  // namespace
