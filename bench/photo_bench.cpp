// The chain of image coordinates, point by point, for a classic camera: pixel to image, object to pixel, pixel to ray
// and to a plane. Beside them the same arithmetic on arrays, and OpenCV's projection where it is at hand.

#include <cmath>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ZORV_HAVE_OPENCV
#include <opencv2/calib3d.hpp>
#endif

#include "zorv/math/line3d.h"
#include "zorv/photo/photo.h"

namespace {

constexpr int kSide = 512;
constexpr int kPoints = kSide * kSide;
constexpr double kWidth = 6000;  // pixels
constexpr double kHeight = 4000;
constexpr double kPixel = 0.006;    // mm
constexpr double kDistance = 10;    // to the plane z = 0
constexpr double kTolerance = 0.1;  // pixels; the inverse table interpolates each axis by itself

/// A camera of 36 by 24 mm on an airframe that flies north, nearly straight down.
struct Scene {
    explicit Scene(bool scanned) : photo(1) {
        photo.SetPixelRegion(ZoRegion(0, 0, kWidth, kHeight));
        photo.preTrafo.Set(-18.0, kPixel, -12.0, 0.0);
        photo.SetCamera(ZoCamera(7, 24.35, 0.052, -0.031, -4e-5, 3e-8, 12.0, "bench"), false);
        photo.SetPosAOR(100, 200, kDistance);
        photo.SetRotAOR(0.03, -0.02, 0.4);
        photo.SetHasAOR(true);
        plane.C() = 1.0;
        photo.SetBikoTransform(eDigiToImage, true);

        std::mt19937 random(1);
        std::uniform_real_distribution<double> part(0.001, 0.999);
        for (int i = 0; i < kPoints; ++i) {
            const double u = scanned ? (i % kSide + 0.5) / kSide : part(random);
            const double v = scanned ? (i / kSide + 0.5) / kSide : part(random);
            Add(u * kWidth, v * kHeight);
        }
    }

    void Add(double x, double y) {
        pixels.emplace_back(0, x, y, 0.0, 0);
        images.push_back(pixels.back());
        photo.GetBikoTransform().Transform(&images.back());
        objects.push_back(OnPlane(x, y));
    }
    ZoPoint OnPlane(double x, double y) const {
        ZoLine3d ray;
        photo.CalcRayDirection(ray, x, y);
        const double t = -kDistance / ray.direction.z();
        return {0, 100 + t * ray.direction.x(), 200 + t * ray.direction.y(), 0.0, 0};
    }

    ZoPhoto photo;
    ZoPlane plane;
    std::vector<ZoPoint> pixels;
    std::vector<ZoPoint> images;
    std::vector<ZoPoint> objects;
};

/// With points at random, of which most look up the inverse table at a place that no cache holds, or row by row.
const Scene& RandomScene() {
    static const Scene scene(false);
    return scene;
}
const Scene& ScannedScene() {
    static const Scene scene(true);
    return scene;
}

void Count(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * kPoints);
}

/// The parameters of the scene as plain numbers.
struct Numbers {
    explicit Numbers(const ZoPhoto& photo)
        : c(photo.camera.c),
          xh(photo.camera.xh),
          yh(photo.camera.yh),
          a1(photo.camera.a1),
          a2(photo.camera.a2),
          r02(photo.camera.r0 * photo.camera.r0) {
        for (int i = 0; i < 3; ++i) {
            centre[i] = photo.posAOR[i + 1];
            for (int j = 0; j < 3; ++j)
                r[i][j] = photo.rotAOR[i + 1][j + 1];
        }
    }

    void PixelToImage(double& x, double& y) const {
        const double u = x * kPixel - 18.0 - xh;
        const double v = (kHeight - y) * kPixel - 12.0 - yh;
        const double rho = u * u + v * v;
        const double dr = a1 * (rho - r02) + a2 * (rho * rho - r02 * r02);
        x = u - dr * u;
        y = v - dr * v;
    }
    void ObjectToImage(double& x, double& y, double z) const {
        const double dx = x - centre[0];
        const double dy = y - centre[1];
        const double dz = z - centre[2];
        const double n = r[0][2] * dx + r[1][2] * dy + r[2][2] * dz;
        x = -c * (r[0][0] * dx + r[1][0] * dy + r[2][0] * dz) / n;
        y = -c * (r[0][1] * dx + r[1][1] * dy + r[2][1] * dz) / n;
    }

    void ImageToObject(double (&d)[3], double x, double y) const {
        for (int i = 0; i < 3; ++i)
            d[i] = r[i][0] * x + r[i][1] * y - r[i][2] * c;
    }

    double c, xh, yh, a1, a2, r02;
    double centre[3];
    double r[3][3];
};

void PixelToImage(benchmark::State& state) {
    const Scene& scene = RandomScene();
    const ZoBikoTransform transform(&scene.photo, eDigiToImage, true);
    for (auto _ : state) {
        double sum = 0.0;
        for (const ZoPoint& pixel : scene.pixels) {
            double x = pixel.x;
            double y = pixel.y;
            transform.Transform(&x, &y, nullptr);
            sum += x + y;
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}
BENCHMARK(PixelToImage);

void PixelToImageFloor(benchmark::State& state) {
    const Scene& scene = RandomScene();
    const Numbers numbers(scene.photo);
    const ZoBikoTransform transform(&scene.photo, eDigiToImage, true);
    for (const ZoPoint& pixel : scene.pixels) {
        double x = pixel.x;
        double y = pixel.y;
        double floorX = x;
        double floorY = y;
        transform.Transform(&x, &y, nullptr);
        numbers.PixelToImage(floorX, floorY);
        if (std::hypot(x - floorX, y - floorY) > 1e-9) state.SkipWithError("not the same");
    }
    for (auto _ : state) {
        double sum = 0.0;
        for (const ZoPoint& pixel : scene.pixels) {
            double x = pixel.x;
            double y = pixel.y;
            numbers.PixelToImage(x, y);
            sum += x + y;
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}
BENCHMARK(PixelToImageFloor);

void ObjectToPixel(benchmark::State& state, const Scene& (*which)()) {
    const Scene& scene = which();
    const ZoBikoTransform transform(&scene.photo, eObjectToDigi, true);
    for (std::size_t i = 0; i < scene.objects.size(); ++i) {
        ZoPoint point = scene.objects[i];
        if (!transform.Transform(&point) || point.Distance(scene.pixels[i]) > kTolerance)
            state.SkipWithError("not back at the pixel");
    }
    for (auto _ : state) {
        double sum = 0.0;
        for (const ZoPoint& object : scene.objects) {
            double x = object.x;
            double y = object.y;
            double z = object.z;
            transform.Transform(&x, &y, &z);
            sum += x + y;
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}

/// The projection, and a bilinear look-up in a bare table of the same size in the place of the distortion.
void ObjectToPixelFloor(benchmark::State& state, const Scene& (*which)()) {
    const Scene& scene = which();
    constexpr int kNodes = 781;
    struct Node {
        double x;
        double y;
    };
    const Numbers numbers(scene.photo);
    const double reach = scene.photo.camera.rmax;
    const double step = 2 * reach / (kNodes - 1);
    std::vector<Node> nodes;
    for (int i = 0; i < kNodes; ++i) {
        for (int j = 0; j < kNodes; ++j)
            nodes.push_back({i * step - reach, j * step - reach});
    }
    for (auto _ : state) {
        double sum = 0.0;
        for (const ZoPoint& object : scene.objects) {
            double x = object.x;
            double y = object.y;
            numbers.ObjectToImage(x, y, object.z);
            const double u = (x + reach) / step;
            const double v = (y + reach) / step;
            const int i = static_cast<int>(u);
            const int j = static_cast<int>(v);
            const double fu = u - i;
            const double fv = v - j;
            const Node* low = &nodes[static_cast<std::size_t>(i) * kNodes + static_cast<std::size_t>(j)];
            const Node* high = low + kNodes;
            x = (1 - fu) * ((1 - fv) * low[0].x + fv * low[1].x) + fu * ((1 - fv) * high[0].x + fv * high[1].x);
            y = (1 - fu) * ((1 - fv) * low[0].y + fv * low[1].y) + fu * ((1 - fv) * high[0].y + fv * high[1].y);
            sum += (x + 18.0) / kPixel + kHeight - (y + 12.0) / kPixel;
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}

BENCHMARK_CAPTURE(ObjectToPixel, random, RandomScene);
BENCHMARK_CAPTURE(ObjectToPixelFloor, random, RandomScene);
BENCHMARK_CAPTURE(ObjectToPixel, rows, ScannedScene);
BENCHMARK_CAPTURE(ObjectToPixelFloor, rows, ScannedScene);

#ifdef ZORV_HAVE_OPENCV
/// Its radial terms lead from the object to the pixel, so that nothing needs inverting.
void ObjectToPixelOpenCv(benchmark::State& state) {
    const Scene& scene = RandomScene();
    const ZoMatrix& r = scene.photo.rotAOR;
    // x right, y down, z forwards.
    cv::Matx33d rotation;
    for (int i = 0; i < 3; ++i) {
        rotation(0, i) = r[i + 1][1];
        rotation(1, i) = -r[i + 1][2];
        rotation(2, i) = -r[i + 1][3];
    }
    const cv::Vec3d centre(scene.photo.posAOR[1], scene.photo.posAOR[2], scene.photo.posAOR[3]);
    const cv::Vec3d translation = -(rotation * centre);
    cv::Vec3d turn;
    cv::Rodrigues(rotation, turn);
    const double focal = scene.photo.camera.c / kPixel;
    const cv::Matx33d interior(focal, 0, kWidth / 2, 0, focal, kHeight / 2, 0, 0, 1);
    const cv::Vec4d distortion(-0.03, 0.01, 0, 0);
    std::vector<cv::Point3d> objects;
    for (const ZoPoint& object : scene.objects)
        objects.emplace_back(object.x, object.y, object.z);
    std::vector<cv::Point2d> pixels;
    cv::setNumThreads(1);
    for (auto _ : state) {
        cv::projectPoints(objects, turn, translation, interior, distortion, pixels);
        benchmark::DoNotOptimize(pixels.data());
    }
    if (std::hypot(pixels[0].x - scene.pixels[0].x, pixels[0].y - scene.pixels[0].y) > 200)
        state.SkipWithError("not near the pixel");
    Count(state);
}
BENCHMARK(ObjectToPixelOpenCv);
#endif

/// A direction from the pixel and a point on the plane from the image point.
void RayAndPlane(benchmark::State& state) {
    const Scene& scene = RandomScene();
    for (std::size_t i = 0; i < scene.images.size(); ++i) {
        ZoPoint point;
        scene.photo.CalcSipNoErrorCheck(&point, scene.plane, &scene.images[i]);
        if (point.Distance(scene.objects[i]) > 1e-9) state.SkipWithError("not the same point");
    }
    for (auto _ : state) {
        double sum = 0.0;
        ZoLine3d ray;
        ZoPoint point;
        for (std::size_t i = 0; i < scene.images.size(); ++i) {
            scene.photo.CalcRayDirection(ray, scene.pixels[i].x, scene.pixels[i].y);
            scene.photo.CalcSipNoErrorCheck(&point, scene.plane, &scene.images[i]);
            sum += ray.direction.x() + point.x;
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}
BENCHMARK(RayAndPlane);

void RayAndPlaneFloor(benchmark::State& state) {
    const Scene& scene = RandomScene();
    const Numbers numbers(scene.photo);
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t i = 0; i < scene.images.size(); ++i) {
            double x = scene.pixels[i].x;
            double y = scene.pixels[i].y;
            numbers.PixelToImage(x, y);
            double d[3];
            numbers.ImageToObject(d, x, y);
            sum += d[0] / std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
            numbers.ImageToObject(d, scene.images[i].x, scene.images[i].y);
            sum += numbers.centre[0] - numbers.centre[2] / d[2] * d[0];
        }
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}
BENCHMARK(RayAndPlaneFloor);

}  // namespace
