// The models of the library camera in both directions, on points all over the image. Beside each stands the same model
// in OpenCV where it has one, brought to at least the same residual, else a plain loop over the same formulas.

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ZORV_HAVE_OPENCV
#include <opencv2/calib3d.hpp>
#endif

#include "zorv/photo/auto/library_camera.h"

namespace {

using ZorvLibAuto::Camera;
using Points = std::vector<Camera::Coordinates>;

constexpr std::size_t kPoints = 20'000;
constexpr double kWidth = 4000.0;
constexpr double kHeight = 3000.0;
constexpr double kFocal = 3200.0;
constexpr double kWorstResidual = 1e-6;  // pixels

struct Lens {
    std::uint32_t model;
    std::vector<double> distortion;  // behind the principal point
};

const Lens kPinhole{Camera::eCamModelPinhole, {}};
const Lens kSimpleRadial{Camera::eCamModelPinholeSimpleRadial, {-0.08}};
const Lens kRadial{Camera::eCamModelPinholeRadial, {-0.08, 0.02}};
const Lens kRadialTangential{Camera::eCamModelPinholeRadialTangential, {-0.08, 0.02, 4e-4, -3e-4}};
const Lens kBlk{Camera::eCamModelPinholeBLKRadialTangential, {-0.08, 0.02, 4e-4, -3e-4, 0.01}};
const Lens kRational{Camera::eCamModelPinholeOpenCVRadialTangential, {0.2, 0.02, 4e-4, -3e-4, 0.01, 0.28, 0.03, 0.002}};
const Lens kFisheye{Camera::eCamModelFisheye, {0.01, -0.004, 0.002, -0.0005}};
const Lens kFisheyeSimple{Camera::eCamModelFisheyeSimpleRadial, {0.01}};
const Lens kFisheyeRadial{Camera::eCamModelFisheyeRadial, {0.01, -0.004}};
const Lens kFieldOfView{Camera::eCamModelPinholeFOV, {0.6}};
const Lens kThinPrism{Camera::eCamModelFisheyeThinPrism, {-0.08, 0.02, 4e-4, -3e-4, 0.01, 0.002, 2e-4, -1e-4}};

Camera MakeCamera(const Lens& lens) {
    Camera camera(lens.model, kFocal, static_cast<std::uint64_t>(kWidth), static_cast<std::uint64_t>(kHeight));
    std::copy(lens.distortion.rbegin(), lens.distortion.rend(), camera.params.rbegin());
    return camera;
}

/// A classic camera of 20 mm with 6.25 micrometre pixels.
Camera MakeClassic() {
    Camera camera(Camera::eCamModelZorv, kFocal, 4000, 3000);
    const double mm = 0.00625;
    camera.params = {kFocal, 2000, 1500, 0.02, -0.03, mm, mm, -2000 * mm, -1500 * mm, -2e-4, 3e-7, 9.0};
    return camera;
}

const Points& Pixels() {
    static const Points pixels = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> u(0.0, kWidth), v(0.0, kHeight);
        Points made(kPoints);
        for (auto& pixel : made)
            pixel = {u(random), v(random)};
        return made;
    }();
    return pixels;
}

Points PlanePoints(const Camera& camera) {
    Points points = Pixels();
    camera.PixelToPlane(points);
    return points;
}

double WorstDifference(const Points& a, const Points& b) {
    double worst = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        worst = std::max(worst, std::hypot(a[i][0] - b[i][0], a[i][1] - b[i][1]));
    return worst;
}

/// In pixels, of points of the plane that stand for Pixels().
double WorstResidual(const Camera& camera, Points plane) {
    camera.PlaneToPixel(plane);
    return WorstDifference(plane, Pixels());
}

/// Times `map(points)`, which works in place, on copies of the points.
template <class Map>
void Time(benchmark::State& state, const Points& from, Map map) {
    Points points(from.size());
    for (auto _ : state) {
        points = from;
        map(points);
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(from.size()));
}

void ToPlane(benchmark::State& state, const Camera& camera) {
    if (!(WorstResidual(camera, PlanePoints(camera)) < kWorstResidual)) return state.SkipWithError("not inverse");
    Time(state, Pixels(), [&](Points& points) { camera.PixelToPlane(points); });
    state.counters["residual"] = WorstResidual(camera, PlanePoints(camera));
}

void ToPlaneSingly(benchmark::State& state, const Camera& camera) {
    Time(state, Pixels(), [&](Points& points) {
        for (auto& point : points)
            point = camera.PixelToPlane(point[0], point[1]);
    });
}

void ToPixel(benchmark::State& state, const Camera& camera) {
    Time(state, PlanePoints(camera), [&](Points& points) { camera.PlaneToPixel(points); });
}

void ToPixelSingly(benchmark::State& state, const Camera& camera) {
    Time(state, PlanePoints(camera), [&](Points& points) {
        for (auto& point : points)
            point = camera.PlaneToPixel(point[0], point[1]);
    });
}

#ifdef ZORV_HAVE_OPENCV

const cv::Matx33d kCameraMatrix(kFocal, 0, kWidth / 2, 0, kFocal, kHeight / 2, 0, 0, 1);

cv::Mat View(Points& points) {
    return cv::Mat(static_cast<int>(points.size()), 1, CV_64FC2, points.data());
}

/// OpenCV counts 4, 5 or 8 coefficients, with the tangential ones third and fourth.
cv::Mat Coefficients(const Lens& lens) {
    std::vector<double> values = lens.distortion;
    values.resize(std::max<std::size_t>(4, values.size()));
    return cv::Mat(values, true);
}

void OpenCvUndistort(Points& points, const cv::Mat& coefficients, int passes) {
    cv::undistortPoints(View(points), View(points), kCameraMatrix, coefficients, cv::noArray(), cv::noArray(),
                        cv::TermCriteria(cv::TermCriteria::COUNT, passes, 0.0));
}

/// As many passes of OpenCV's fixed-point iteration as bring it to our residual.
void OpenCvToPlane(benchmark::State& state, const Lens& lens) {
    constexpr int kMostPasses = 100;
    const cv::Mat coefficients = Coefficients(lens);
    const Camera camera = MakeCamera(lens);
    const double residual = std::max(WorstResidual(camera, PlanePoints(camera)), 1e-10);
    int passes = 0;
    Points points;
    do {
        points = Pixels();
        OpenCvUndistort(points, coefficients, ++passes);
    } while (WorstResidual(camera, points) > residual && passes < kMostPasses);
    if (WorstResidual(camera, points) > kWorstResidual) return state.SkipWithError("results differ");
    Time(state, Pixels(), [&](Points& timed) { OpenCvUndistort(timed, coefficients, passes); });
    state.counters["residual"] = WorstResidual(camera, points);
    state.counters["passes"] = passes;
}

void OpenCvToPixel(benchmark::State& state, const Lens& lens) {
    const cv::Mat coefficients = Coefficients(lens);
    const Camera camera = MakeCamera(lens);
    const Points plane = PlanePoints(camera);
    std::vector<cv::Point3d> rays;
    for (const auto& [x, y] : plane)
        rays.emplace_back(x, y, 1.0);
    Points pixels(rays.size());
    cv::Mat view = View(pixels);
    const cv::Vec3d zero(0, 0, 0);
    cv::projectPoints(rays, zero, zero, kCameraMatrix, coefficients, view);
    if (!(WorstDifference(pixels, Pixels()) < kWorstResidual)) return state.SkipWithError("results differ");
    for (auto _ : state)
        cv::projectPoints(rays, zero, zero, kCameraMatrix, coefficients, view);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoints));
}

void OpenCvFisheyeUndistort(Points& points, const cv::Mat& coefficients) {
    cv::fisheye::undistortPoints(View(points), View(points), kCameraMatrix, coefficients);
}

void OpenCvFisheyeToPlane(benchmark::State& state, const Lens& lens) {
    const cv::Mat coefficients = Coefficients(lens);
    const Camera camera = MakeCamera(lens);
    Points points = Pixels();
    OpenCvFisheyeUndistort(points, coefficients);
    if (!(WorstResidual(camera, points) < kWorstResidual)) return state.SkipWithError("results differ");
    Time(state, Pixels(), [&](Points& timed) { OpenCvFisheyeUndistort(timed, coefficients); });
    state.counters["residual"] = WorstResidual(camera, points);
}

void OpenCvFisheyeToPixel(benchmark::State& state, const Lens& lens) {
    const cv::Mat coefficients = Coefficients(lens);
    const Points plane = PlanePoints(MakeCamera(lens));
    const auto distort = [&](Points& points) {
        cv::fisheye::distortPoints(View(points), View(points), kCameraMatrix, coefficients);
    };
    Points points = plane;
    distort(points);
    if (!(WorstDifference(points, Pixels()) < kWorstResidual)) return state.SkipWithError("results differ");
    Time(state, plane, distort);
}

#endif

// Plain loops. The Newton iteration has the same formulas and end.

template <class Distort>
void PlainNewton(double& x, double& y, Distort distort) {
    const double qx = x, qy = y;
    for (int pass = 0; pass < 100; ++pass) {
        const double hx = std::max(std::fabs(x) * 1e-6, 2.220446049250313e-16);
        const double hy = std::max(std::fabs(y) * 1e-6, 2.220446049250313e-16);
        double d[2], right[2], left[2], above[2], below[2];
        distort(x, y, d);
        distort(x + hx, y, right);
        distort(x - hx, y, left);
        distort(x, y + hy, above);
        distort(x, y - hy, below);
        const double j11 = 1 + (right[0] - left[0]) / (2 * hx), j12 = (above[0] - below[0]) / (2 * hy);
        const double j21 = (right[1] - left[1]) / (2 * hx), j22 = 1 + (above[1] - below[1]) / (2 * hy);
        const double gx = x + d[0] - qx, gy = y + d[1] - qy, det = j11 * j22 - j12 * j21;
        const double sx = (j22 * gx - j12 * gy) / det, sy = (j11 * gy - j21 * gx) / det;
        x -= sx;
        y -= sy;
        if (sx * sx + sy * sy < 1e-10) break;
    }
}

/// Times the loop after a look whether it gives what the camera gives.
template <class Map>
void Plain(benchmark::State& state, const Points& from, const Points& expected, Map map) {
    Points points = from;
    map(points);
    if (!(WorstDifference(points, expected) < kWorstResidual)) return state.SkipWithError("results differ");
    Time(state, from, map);
}

void PlainFieldOfViewToPlane(benchmark::State& state) {
    const Camera camera = MakeCamera(kFieldOfView);
    const double* p = camera.params.data();
    const double fx = p[0], fy = p[1], cx = p[2], cy = p[3], omega = p[4], t = std::tan(omega / 2);
    Plain(state, Pixels(), PlanePoints(camera), [=](Points& points) {
        for (auto& [u, v] : points) {
            u = (u - cx) / fx;
            v = (v - cy) / fy;
            const double r = std::sqrt(u * u + v * v), s = r > 0 ? std::tan(r * omega) / (2 * r * t) : 1.0;
            u *= s;
            v *= s;
        }
    });
}

void PlainFieldOfViewToPixel(benchmark::State& state) {
    const Camera camera = MakeCamera(kFieldOfView);
    const double* p = camera.params.data();
    const double fx = p[0], fy = p[1], cx = p[2], cy = p[3], omega = p[4], t = std::tan(omega / 2);
    Plain(state, PlanePoints(camera), Pixels(), [=](Points& points) {
        for (auto& [x, y] : points) {
            const double r = std::sqrt(x * x + y * y), s = r > 0 ? std::atan(2 * r * t) / (r * omega) : 1.0;
            x = fx * x * s + cx;
            y = fy * y * s + cy;
        }
    });
}

void PlainThinPrismDistort(double x, double y, double* d) {
    const double* k = kThinPrism.distortion.data();
    const double r2 = x * x + y * y;
    const double q = r2 * (k[0] + r2 * (k[1] + r2 * (k[4] + r2 * k[5])));
    d[0] = 2 * k[2] * x * y + q * x + k[3] * (r2 + 2 * x * x) + k[6] * r2;
    d[1] = 2 * k[3] * x * y + q * y + k[2] * (r2 + 2 * y * y) + k[7] * r2;
}

void PlainThinPrismToPlane(benchmark::State& state) {
    Plain(state, Pixels(), PlanePoints(MakeCamera(kThinPrism)), [](Points& points) {
        for (auto& [u, v] : points) {
            u = (u - kWidth / 2) / kFocal;
            v = (v - kHeight / 2) / kFocal;
            PlainNewton(u, v, PlainThinPrismDistort);
            const double r = std::sqrt(u * u + v * v), s = r > 0 ? std::tan(r) / r : 1.0;
            u *= s;
            v *= s;
        }
    });
}

void PlainThinPrismToPixel(benchmark::State& state) {
    Plain(state, PlanePoints(MakeCamera(kThinPrism)), Pixels(), [](Points& points) {
        for (auto& [x, y] : points) {
            const double r = std::sqrt(x * x + y * y), s = r > 0 ? std::atan(r) / r : 1.0;
            double d[2];
            PlainThinPrismDistort(x * s, y * s, d);
            x = kFocal * (x * s + d[0]) + kWidth / 2;
            y = kFocal * (y * s + d[1]) + kHeight / 2;
        }
    });
}

struct PlainClassic {
    explicit PlainClassic(const double* p)
        : f(p[0]), x0(p[1]), y0(p[2]), xh(p[3]), yh(p[4]), mm(p[5]), a1(p[9]), a2(p[10]), r0(p[11]) {}
    void operator()(double x, double y, double* d) const {
        const double r2 = x * x + y * y;
        const double dr = a2 * (r2 * r2 - r0 * r0 * r0 * r0) + a1 * (r2 - r0 * r0);
        d[0] = dr * x;
        d[1] = dr * y;
    }
    double f, x0, y0, xh, yh, mm, a1, a2, r0;
};

void PlainClassicToPlane(benchmark::State& state) {
    const Camera camera = MakeClassic();
    const PlainClassic plain(camera.params.data());
    Plain(state, Pixels(), PlanePoints(camera), [plain](Points& points) {
        for (auto& [u, v] : points) {
            double x = (u - plain.x0) * plain.mm - plain.xh, y = (plain.y0 - v) * plain.mm - plain.yh;
            PlainNewton(x, y, plain);
            u = x / plain.mm / plain.f;
            v = -y / plain.mm / plain.f;
        }
    });
}

void PlainClassicToPixel(benchmark::State& state) {
    const Camera camera = MakeClassic();
    const PlainClassic plain(camera.params.data());
    Plain(state, PlanePoints(camera), Pixels(), [plain](Points& points) {
        for (auto& [x, y] : points) {
            const double mmX = plain.f * x * plain.mm, mmY = -plain.f * y * plain.mm;
            double d[2];
            plain(mmX, mmY, d);
            x = (mmX + d[0] + plain.xh) / plain.mm + plain.x0;
            y = plain.y0 - (mmY + d[1] + plain.yh) / plain.mm;
        }
    });
}

void Register(const Camera& camera) {
    const std::string name = Camera::GetModelName(camera.model);
    benchmark::RegisterBenchmark((name + "/ToPlane").c_str(), ToPlane, camera);
    benchmark::RegisterBenchmark((name + "/ToPlaneSingly").c_str(), ToPlaneSingly, camera);
    benchmark::RegisterBenchmark((name + "/ToPixel").c_str(), ToPixel, camera);
    benchmark::RegisterBenchmark((name + "/ToPixelSingly").c_str(), ToPixelSingly, camera);
}

const bool kRegistered = [] {
    for (const Lens& lens : {kPinhole, kSimpleRadial, kRadial, kRadialTangential, kBlk, kRational}) {
        Register(MakeCamera(lens));
#ifdef ZORV_HAVE_OPENCV
        const std::string name = Camera::GetModelName(lens.model);
        benchmark::RegisterBenchmark((name + "/ToPlaneOpenCv").c_str(), OpenCvToPlane, lens);
        benchmark::RegisterBenchmark((name + "/ToPixelOpenCv").c_str(), OpenCvToPixel, lens);
#endif
    }
    for (const Lens& lens : {kFisheye, kFisheyeSimple, kFisheyeRadial}) {
        Register(MakeCamera(lens));
#ifdef ZORV_HAVE_OPENCV
        const std::string name = Camera::GetModelName(lens.model);
        benchmark::RegisterBenchmark((name + "/ToPlaneOpenCv").c_str(), OpenCvFisheyeToPlane, lens);
        benchmark::RegisterBenchmark((name + "/ToPixelOpenCv").c_str(), OpenCvFisheyeToPixel, lens);
#endif
    }
    Register(MakeCamera(kFieldOfView));
    benchmark::RegisterBenchmark("Pinhole_FOV/ToPlanePlain", PlainFieldOfViewToPlane);
    benchmark::RegisterBenchmark("Pinhole_FOV/ToPixelPlain", PlainFieldOfViewToPixel);
    Register(MakeCamera(kThinPrism));
    benchmark::RegisterBenchmark("Fisheye_ThinPrism/ToPlanePlain", PlainThinPrismToPlane);
    benchmark::RegisterBenchmark("Fisheye_ThinPrism/ToPixelPlain", PlainThinPrismToPixel);
    Register(MakeClassic());
    benchmark::RegisterBenchmark("Zorv/ToPlanePlain", PlainClassicToPlane);
    benchmark::RegisterBenchmark("Zorv/ToPixelPlain", PlainClassicToPixel);
    return true;
}();

}  // namespace
