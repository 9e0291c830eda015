#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "zorv/math/affine_map3d.h"
#include "zorv/math/triangle3d.h"
#include "zorv/math/triangle_intersection.h"

// Space types against the same arithmetic on plain arrays.

namespace {

constexpr std::size_t kPoints = 10'000'000;
constexpr std::size_t kTriangles = 512;
constexpr std::size_t kRays = 512;

const ZoAffinMap3d kMotion = ZoAffinMap3d::Translate(1, -2, 3) * ZoAffinMap3d::RotXYZ(0.1, 0.2, 0.3);

void PlainTransform(const double* m, double* points, std::size_t count) {
    for (double* p = points; p != points + 4 * count; p += 4) {
        const double x = m[0] * p[0] + m[1] * p[1] + m[2] * p[2] + m[3] * p[3];
        const double y = m[4] * p[0] + m[5] * p[1] + m[6] * p[2] + m[7] * p[3];
        const double z = m[8] * p[0] + m[9] * p[1] + m[10] * p[2] + m[11] * p[3];
        p[0] = x;
        p[1] = y;
        p[2] = z;
        p[3] = 1.0;
    }
}

void TransformPoints(benchmark::State& state) {
    std::vector<ZoPoint3d> points(kPoints, ZoPoint3d(4, 5, 6));
    ZoPoint3d expected(4, 5, 6);
    PlainTransform(kMotion.asDblArray(), expected.asDblArray(), 1);
    if (!kMotion.Transform(points[0]).IsSame(expected, 1e-300)) return state.SkipWithError("wrong result");
    for (auto _ : state) {
        for (ZoPoint3d& point : points)
            point = kMotion.Transform(point);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(TransformPoints)->Unit(benchmark::kMillisecond);

void TransformFloor(benchmark::State& state) {
    std::vector<double> points(4 * kPoints, 1.0);
    for (auto _ : state) {
        PlainTransform(kMotion.asDblArray(), points.data(), kPoints);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(TransformFloor)->Unit(benchmark::kMillisecond);

struct Scene {
    std::vector<ZoTrinagle3d> triangles;
    std::vector<ZoTrinagle3d_uvn> prepared;
    std::vector<ZoLine3d> rays;

    Scene() {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> any(-10, 10);
        const auto point = [&] { return ZoPoint3d(any(random), any(random), any(random)); };
        for (std::size_t i = 0; i < kTriangles; ++i) {
            triangles.emplace_back(point(), point(), point());
            prepared.emplace_back(triangles.back());
        }
        for (std::size_t i = 0; i < kRays; ++i)
            rays.emplace_back(point(), point());
    }
};

// p0, u, v, n and start, direction.
struct PlainTriangle {
    double p0[3], u[3], v[3], n[3];
};
struct PlainRay {
    double start[3], direction[3];
};

double Dot(const double* a, const double* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

int PlainIntersect(const PlainTriangle& tri, const PlainRay& ray, double* point, double* t) {
    const double w0[3] = {ray.start[0] - tri.p0[0], ray.start[1] - tri.p0[1], ray.start[2] - tri.p0[2]};
    const double a = -Dot(tri.n, w0);
    const double b = Dot(tri.n, ray.direction);
    if (std::fabs(b) < 1e-6) return a == 0.0 ? 2 : 0;
    const double r = a / b;
    if (r < 0.0) return 0;
    double w[3];
    for (int i = 0; i < 3; ++i) {
        point[i] = ray.start[i] + r * ray.direction[i];
        w[i] = point[i] - tri.p0[i];
    }
    const double uu = Dot(tri.u, tri.u), uv = Dot(tri.u, tri.v), vv = Dot(tri.v, tri.v);
    const double wu = Dot(w, tri.u), wv = Dot(w, tri.v);
    const double d = uv * uv - uu * vv;
    const double s = (uv * wv - vv * wu) / d;
    if (s < 0.0 || s > 1.0) return 0;
    const double t2 = (uv * wu - uu * wv) / d;
    if (t2 < 0.0 || s + t2 > 1.0) return 0;
    *t = r;
    return 1;
}

void Copy(const _MVector& from, double* to) {
    for (int i = 0; i < 3; ++i)
        to[i] = from[i];
}

struct PlainScene {
    std::vector<PlainTriangle> triangles;
    std::vector<PlainRay> rays;

    explicit PlainScene(const Scene& scene) : triangles(kTriangles), rays(kRays) {
        for (std::size_t i = 0; i < kTriangles; ++i) {
            Copy(scene.prepared[i].p0, triangles[i].p0);
            Copy(scene.prepared[i].u, triangles[i].u);
            Copy(scene.prepared[i].v, triangles[i].v);
            Copy(scene.prepared[i].n, triangles[i].n);
        }
        for (std::size_t i = 0; i < kRays; ++i) {
            Copy(scene.rays[i].start, rays[i].start);
            Copy(scene.rays[i].direction, rays[i].direction);
        }
    }
};

double LibraryHits(const Scene& scene) {
    double sum = 0.0;
    ZoPoint3d point;
    for (const ZoLine3d& ray : scene.rays) {
        for (const ZoTrinagle3d_uvn& triangle : scene.prepared) {
            double t = 0.0;
            if (triangle.Intersect(ray, point, &t) == 1) sum += t;
        }
    }
    return sum;
}

double PlainHits(const PlainScene& scene) {
    double sum = 0.0;
    double point[3];
    for (const PlainRay& ray : scene.rays) {
        for (const PlainTriangle& triangle : scene.triangles) {
            double t = 0.0;
            if (PlainIntersect(triangle, ray, point, &t) == 1) sum += t;
        }
    }
    return sum;
}

void RaysOnTriangles(benchmark::State& state) {
    const Scene scene;
    const double expected = PlainHits(PlainScene(scene));
    if (expected == 0.0 || LibraryHits(scene) != expected) return state.SkipWithError("wrong result");
    for (auto _ : state)
        benchmark::DoNotOptimize(LibraryHits(scene));
    state.SetItemsProcessed(state.iterations() * kRays * kTriangles);
}
BENCHMARK(RaysOnTriangles)->Unit(benchmark::kMillisecond);

void RaysFloor(benchmark::State& state) {
    const PlainScene scene{Scene()};
    for (auto _ : state)
        benchmark::DoNotOptimize(PlainHits(scene));
    state.SetItemsProcessed(state.iterations() * kRays * kTriangles);
}
BENCHMARK(RaysFloor)->Unit(benchmark::kMillisecond);

template <int (*Test)(const double*, const double*, const double*, const double*, const double*, const double*)>
void TrianglePairs(benchmark::State& state) {
    const Scene scene;
    const auto count = [&scene] {
        int hits = 0;
        for (const ZoTrinagle3d& a : scene.triangles) {
            for (const ZoTrinagle3d& b : scene.triangles)
                hits += Test(a.P0().asDblArray(), a.P1().asDblArray(), a.P2().asDblArray(), b.P0().asDblArray(),
                             b.P1().asDblArray(), b.P2().asDblArray());
        }
        return hits;
    };
    if (count() < static_cast<int>(kTriangles)) return state.SkipWithError("a triangle meets itself");
    for (auto _ : state)
        benchmark::DoNotOptimize(count());
    state.SetItemsProcessed(state.iterations() * kTriangles * kTriangles);
}
BENCHMARK(TrianglePairs<tri_tri_intersect>)->Unit(benchmark::kMillisecond);
BENCHMARK(TrianglePairs<NoDivTriTriIsect>)->Unit(benchmark::kMillisecond);

}  // namespace
