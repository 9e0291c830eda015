// The inverse table of a camera: its making on one core and on all, its look-ups beside a bare bilinear look-up in a
// table of the same size and beside OpenCV's iteration to the same residual; and Adjust over a list beside the same
// arithmetic on arrays.

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#if defined(__linux__)
#include <sched.h>
#endif

#ifdef ZORV_HAVE_OPENCV
#include <opencv2/calib3d.hpp>
#endif

#include "zorv/photo/camera.h"
#include "zorv/points/point_list.h"

namespace {

constexpr int kNodes = 781;
constexpr double kReach = 21.0;  // mm
constexpr double kImage = 17.0;  // mm, half a side
constexpr int kLookups = 1 << 20;

/// A wide angle lens of a small format camera, 3 % distortion in the corners.
ZoCamera WideAngle() {
    ZoCamera camera(7, 18.2, 0.11, -0.07, -1.4e-4, 1.1e-7, 9.0, "wide angle");
    camera.rmax = kReach;
    return camera;
}

/// Image points, at random or row by row.
struct Points {
    std::vector<double> x;
    std::vector<double> y;
};

Points RandomPoints(int count) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> across(-kImage, kImage);
    Points points;
    for (int i = 0; i < count; ++i) {
        points.x.push_back(across(random));
        points.y.push_back(across(random));
    }
    return points;
}

Points ScannedPoints(int side) {
    Points points;
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            points.x.push_back(-kImage + 2.0 * kImage * j / side);
            points.y.push_back(-kImage + 2.0 * kImage * i / side);
        }
    }
    return points;
}

constexpr double kTolerance = 2 * kReach / (kNodes - 1) / 20;  // mm

/// The table interpolates each axis by itself, which leaves a small part of its step where the distortion bends.
bool IsInverse(const ZoCamera& camera, double x, double y) {
    double rawX = x;
    double rawY = y;
    return camera.InvAdjust(&rawX, &rawY) && camera.Adjust(&rawX, &rawY) && std::hypot(rawX - x, rawY - y) < kTolerance;
}

/// Binds the thread to the first of its processors for a while, so that a parallel loop finds no other.
class OneCore {
  public:
#if defined(__linux__)
    OneCore() {
        sched_getaffinity(0, sizeof all, &all);
        cpu_set_t one;
        CPU_ZERO(&one);
        for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
            if (!CPU_ISSET(cpu, &all)) continue;
            CPU_SET(cpu, &one);
            break;
        }
        sched_setaffinity(0, sizeof one, &one);
    }
    ~OneCore() {
        sched_setaffinity(0, sizeof all, &all);
    }

  private:
    cpu_set_t all;
#endif
};

void MakeTable(benchmark::State& state) {
    const ZoCamera camera = WideAngle();
    if (!IsInverse(camera, 10.0, -8.0)) state.SkipWithError("wrong inverse");
    for (auto _ : state) {
        state.PauseTiming();
        ZoCamera::DeleteInvAdjustTables();
        state.ResumeTiming();
        double x = 1.0;
        double y = 2.0;
        camera.InvAdjust(&x, &y);
        benchmark::DoNotOptimize(x);
    }
}

void MakeTableOnAllCores(benchmark::State& state) {
    MakeTable(state);
}
BENCHMARK(MakeTableOnAllCores)->Unit(benchmark::kMillisecond)->UseRealTime();

void MakeTableOnOneCore(benchmark::State& state) {
    const OneCore core;
    MakeTable(state);
}
BENCHMARK(MakeTableOnOneCore)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What the table would cost if it could be entered by the corrected point itself: four nodes and a bilinear mean.
void BilinearFloor(benchmark::State& state, const Points& points) {
    struct Node {
        double x;
        double y;
    };
    static const std::vector<Node> nodes = [] {
        std::vector<Node> made;
        for (int i = 0; i < kNodes; ++i) {
            for (int j = 0; j < kNodes; ++j)
                made.push_back({2 * kReach * i / (kNodes - 1) - kReach, 2 * kReach * j / (kNodes - 1) - kReach});
        }
        return made;
    }();
    constexpr double kScale = (kNodes - 1) / (2 * kReach);
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t k = 0; k < points.x.size(); ++k) {
            const double u = (points.x[k] + kReach) * kScale;
            const double v = (points.y[k] + kReach) * kScale;
            const int i = static_cast<int>(u);
            const int j = static_cast<int>(v);
            const double fu = u - i;
            const double fv = v - j;
            const Node* low = &nodes[static_cast<std::size_t>(i) * kNodes + static_cast<std::size_t>(j)];
            const Node* high = low + kNodes;
            sum += (1 - fu) * ((1 - fv) * low[0].x + fv * low[1].x) + fu * ((1 - fv) * high[0].x + fv * high[1].x);
            sum += (1 - fu) * ((1 - fv) * low[0].y + fv * low[1].y) + fu * ((1 - fv) * high[0].y + fv * high[1].y);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.x.size()));
}

void InvAdjust(benchmark::State& state, const Points& points) {
    const ZoCamera camera = WideAngle();
    for (std::size_t k = 0; k < points.x.size(); k += 1009) {
        if (!IsInverse(camera, points.x[k], points.y[k])) state.SkipWithError("wrong inverse");
    }
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t k = 0; k < points.x.size(); ++k) {
            double x = points.x[k];
            double y = points.y[k];
            camera.InvAdjust(&x, &y);
            sum += x + y;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.x.size()));
}

const Points& Random() {
    static const Points points = RandomPoints(kLookups);
    return points;
}

const Points& Scanned() {
    static const Points points = ScannedPoints(1024);
    return points;
}

void RandomLookupFloor(benchmark::State& state) {
    BilinearFloor(state, Random());
}
BENCHMARK(RandomLookupFloor)->Unit(benchmark::kMillisecond);

void RandomInvAdjust(benchmark::State& state) {
    InvAdjust(state, Random());
}
BENCHMARK(RandomInvAdjust)->Unit(benchmark::kMillisecond);

void ScanLookupFloor(benchmark::State& state) {
    BilinearFloor(state, Scanned());
}
BENCHMARK(ScanLookupFloor)->Unit(benchmark::kMillisecond);

void ScanInvAdjust(benchmark::State& state) {
    InvAdjust(state, Scanned());
}
BENCHMARK(ScanInvAdjust)->Unit(benchmark::kMillisecond);

#ifdef ZORV_HAVE_OPENCV
/// With s = 1 + a1 r0^2 + a2 r0^4 the formula is s x (1 - a1/s r^2 - a2/s r^4): a lens of OpenCV with focal length s.
void RandomOpenCv(benchmark::State& state) {
    constexpr int kPart = 20000;
    const ZoCamera camera = WideAngle();
    const double r02 = camera.r0 * camera.r0;
    const double s = 1.0 + camera.a1 * r02 + camera.a2 * r02 * r02;
    const cv::Matx33d matrix(s, 0, 0, 0, s, 0, 0, 0, 1);
    const cv::Vec4d distortion(-camera.a1 / s, -camera.a2 / s, 0, 0);
    const cv::TermCriteria untilConverged(cv::TermCriteria::COUNT | cv::TermCriteria::EPS, 50, kTolerance);
    std::vector<cv::Point2d> points;
    for (std::size_t k = 0; k < kPart; ++k)
        points.emplace_back(Random().x[k], Random().y[k]);
    std::vector<cv::Point2d> raw;
    for (auto _ : state) {
        cv::undistortPoints(points, raw, matrix, distortion, cv::noArray(), cv::noArray(), untilConverged);
        benchmark::DoNotOptimize(raw.data());
    }
    for (std::size_t k = 0; k < kPart; k += 101) {
        double x = raw[k].x + camera.xh;
        double y = raw[k].y + camera.yh;
        camera.Adjust(&x, &y);
        if (std::hypot(x - points[k].x, y - points[k].y) > kTolerance) state.SkipWithError("another lens");
    }
    state.SetItemsProcessed(state.iterations() * kPart);
}
BENCHMARK(RandomOpenCv)->Unit(benchmark::kMillisecond);
#endif

/// The formula of a classic camera on arrays.
void AdjustArrayFloor(benchmark::State& state) {
    const ZoCamera camera = WideAngle();
    const Points points = RandomPoints(static_cast<int>(state.range(0)));
    std::vector<double> x(points.x.size());
    std::vector<double> y(points.x.size());
    const double r02 = camera.r0 * camera.r0;
    for (auto _ : state) {
        for (std::size_t k = 0; k < points.x.size(); ++k) {
            const double u = points.x[k] - camera.xh;
            const double v = points.y[k] - camera.yh;
            const double r = std::sqrt(u * u + v * v);
            const double r2 = r * r;
            const double dr = r == 0.0 ? 0.0 : camera.a1 * (r2 - r02) + camera.a2 * (r2 * r2 - r02 * r02);
            x[k] = u - dr * u;
            y[k] = v - dr * v;
        }
        benchmark::DoNotOptimize(x.data());
        benchmark::DoNotOptimize(y.data());
        benchmark::ClobberMemory();
    }
    double atX = points.x[0];
    double atY = points.y[0];
    if (!camera.Adjust(&atX, &atY) || atX != x[0] || atY != y[0]) state.SkipWithError("not the same arithmetic");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(AdjustArrayFloor)->Arg(1000)->Arg(10000)->Arg(1000000);

/// A camera without distortion, so that the list can be adjusted over and over at the same cost.
void AdjustList(benchmark::State& state) {
    ZoCamera camera = WideAngle();
    camera.xh = camera.yh = camera.a1 = camera.a2 = 0.0;
    const Points points = RandomPoints(static_cast<int>(state.range(0)));
    ZoPointList list;
    for (std::size_t k = 0; k < points.x.size(); ++k)
        list.Add(ZoPoint(static_cast<unsigned int>(k), points.x[k], points.y[k], 0.0, 0));
    for (auto _ : state) {
        camera.Adjust(&list);
        benchmark::ClobberMemory();
    }
    if (list.First()->x != points.x[0]) state.SkipWithError("a camera without distortion moved a point");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(AdjustList)->Arg(1000)->Arg(10000)->Arg(1000000);

}  // namespace
