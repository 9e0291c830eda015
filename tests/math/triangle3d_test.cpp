#include "zorv/math/triangle3d.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/math/triangle_intersection.h"

namespace {

// Exact geometry on small integers, by ways other than those of the library.
using Vec = std::array<std::int64_t, 3>;
using Tri = std::array<Vec, 3>;

Vec operator-(const Vec& a, const Vec& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
std::int64_t Dot(const Vec& a, const Vec& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Vec Cross(const Vec& a, const Vec& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
bool IsZero(const Vec& a) {
    return a == Vec{0, 0, 0};
}
Vec Normal(const Tri& t) {
    return Cross(t[1] - t[0], t[2] - t[0]);
}
ZoPoint3d Point(const Vec& a) {
    return {static_cast<double>(a[0]), static_cast<double>(a[1]), static_cast<double>(a[2])};
}

Tri RandomTriangle(std::mt19937& random, int low, int high) {
    std::uniform_int_distribution<int> any(low, high);
    Tri t;
    do {
        for (Vec& vertex : t)
            vertex = {any(random), any(random), any(random)};
    } while (IsZero(Normal(t)));
    return t;
}

enum class Contact { kApart, kTouching, kCrossing, kCoplanar };

/// Separating axes: two convex bodies are apart exactly when the face normals or edge products of their difference
/// show a gap.
Contact Classify(const Tri& a, const Tri& b) {
    std::vector<Vec> axes{Normal(a), Normal(b)};
    const bool coplanar = IsZero(Cross(axes[0], axes[1])) && Dot(axes[0], b[0] - a[0]) == 0;
    for (int i = 0; i < 3; ++i) {
        const Vec edge = a[(i + 1) % 3] - a[i];
        for (int k = 0; k < 3; ++k)
            axes.push_back(Cross(edge, b[(k + 1) % 3] - b[k]));
        axes.push_back(Cross(Normal(a), edge));
        axes.push_back(Cross(Normal(b), b[(i + 1) % 3] - b[i]));
    }
    bool touching = false;
    for (const Vec& axis : axes) {
        if (IsZero(axis)) continue;
        const auto [aLow, aHigh] = std::minmax({Dot(axis, a[0]), Dot(axis, a[1]), Dot(axis, a[2])});
        const auto [bLow, bHigh] = std::minmax({Dot(axis, b[0]), Dot(axis, b[1]), Dot(axis, b[2])});
        if (aHigh < bLow || bHigh < aLow) return Contact::kApart;
        if (aHigh == bLow || bHigh == aLow) touching = true;
    }
    return coplanar ? Contact::kCoplanar : touching ? Contact::kTouching : Contact::kCrossing;
}

/// Both triangles as the library takes them, moved by an offset.
struct Pair {
    ZoPoint3d v[3], u[3];
    int coplanar = -1;
    ZoPoint3d first, last;

    Pair(const Tri& a, const Tri& b, const ZoVector3d& offset) {
        for (int i = 0; i < 3; ++i) {
            v[i] = Point(a[i]) + offset;
            u[i] = Point(b[i]) + offset;
        }
    }
    template <class Test, class... More>
    int Run(Test test, More... more) const {
        return test(v[0].asDblArray(), v[1].asDblArray(), v[2].asDblArray(), u[0].asDblArray(), u[1].asDblArray(),
                    u[2].asDblArray(), more...);
    }
    int Plain() const { return Run(tri_tri_intersect); }
    int NoDivision() const { return Run(NoDivTriTriIsect); }
    int WithLine() { return Run(tri_tri_intersect_with_isectline, &coplanar, first.asDblArray(), last.asDblArray()); }
};

/// How far a point lies outside a triangle; below 0 inside, within its plane.
double Outside(const ZoPoint3d& p, const ZoPoint3d (&t)[3]) {
    const ZoVector3d n = Normalized((t[1] - t[0]) % (t[2] - t[0]));
    double most = -1e9;
    for (int i = 0; i < 3; ++i)
        most = std::fmax(most, Normalized(n % (t[(i + 1) % 3] - t[i])) * (t[i] - p));
    const double off = std::fabs(n * (p - t[0]));
    return off > 1e-7 ? off : most;
}

TEST(TriangleIntersection, AllFormsAgreeWithExactSeparatingAxes) {
    std::mt19937 random(20);
    int seen[4] = {};
    for (const ZoVector3d& offset : {ZoVector3d::Null, ZoVector3d(5000000, 5100000, 300)}) {
        for (int i = 0; i < 60000; ++i) {
            const int size = i % 3 == 0 ? 2 : 4;
            const Tri a = RandomTriangle(random, 0, size), b = RandomTriangle(random, 0, size);
            const Contact contact = Classify(a, b);
            ++seen[static_cast<int>(contact)];
            Pair pair(a, b, offset);
            const int expected = contact == Contact::kApart ? 0 : 1;
            // On this grid the form without division computes exactly.
            ASSERT_EQ(pair.NoDivision(), expected) << i;
            ASSERT_EQ(pair.WithLine(), pair.Plain()) << i;
            // Where the intervals share an end only, the quotients decide by their last digit.
            if (contact == Contact::kTouching) continue;
            ASSERT_EQ(pair.Plain(), expected) << i;
            ASSERT_TRUE(expected == 0 || pair.coplanar == (contact == Contact::kCoplanar ? 1 : 0)) << i;
        }
    }
    for (const int count : seen)
        EXPECT_GT(count, 500);
}

TEST(TriangleIntersection, SegmentEndsAreTheLastCommonPoints) {
    std::mt19937 random(21);
    int checked = 0;
    for (int i = 0; i < 20000; ++i) {
        const Tri a = RandomTriangle(random, -4, 4), b = RandomTriangle(random, -4, 4);
        if (Classify(a, b) != Contact::kCrossing) continue;
        Pair pair(a, b, ZoVector3d::Null);
        ASSERT_EQ(pair.WithLine(), 1);
        const ZoVector3d along = 1e-4 * Normalized(pair.last - pair.first);
        for (const ZoPoint3d& end : {pair.first, pair.last}) {
            ASSERT_LT(Outside(end, pair.v), 1e-9) << i;
            ASSERT_LT(Outside(end, pair.u), 1e-9) << i;
        }
        const auto beyond = [&](const ZoPoint3d& p) { return std::fmax(Outside(p, pair.v), Outside(p, pair.u)); };
        ASSERT_GT(beyond(pair.first - along), 1e-7) << i;
        ASSERT_GT(beyond(pair.last + along), 1e-7) << i;
        ++checked;
    }
    EXPECT_GT(checked, 1000);
}

TEST(TriangleIntersection, DistancesBelowTheLimitCountAsContact) {
    const ZoTrinagle3d floor({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    for (const double gap : {0.9e-6, 1.1e-6}) {
        const ZoTrinagle3d standing({0.2, 0.2, gap}, {0.2, 0.2, 1}, {0.3, 0.2, 1});
        EXPECT_EQ(floor.Intersect(standing), gap < 1e-6 ? 1 : 0);
        const ZoTrinagle3d lying({0.2, 0.2, gap}, {5, 0.2, gap}, {5, 0.3, gap});
        EXPECT_EQ(floor.Intersect(lying), gap < 1e-6 ? 1 : 0);
    }
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(floor.Intersect(ZoTrinagle3d({none, none, none}, {0, 0, 1}, {1, 0, -1})), 0);
}

TEST(Triangle3d, RaysAgreeWithExactVolumes) {
    std::mt19937 random(22);
    std::uniform_int_distribution<int> any(-8, 8);
    int seen[3] = {};
    for (int i = 0; i < 200000; ++i) {
        const Tri t = RandomTriangle(random, -8, 8);
        const Vec start{any(random), any(random), any(random)};
        const Vec d{any(random), any(random), any(random)};
        if (IsZero(d)) continue;
        const std::int64_t b = Dot(Normal(t), d);
        const std::int64_t a = Dot(Normal(t), t[0] - start);
        int expected = b == 0 && a == 0 ? 2 : 0;
        if (b != 0 && (a == 0 || (a > 0) == (b > 0))) {
            int positive = 0, zero = 0;
            for (int k = 0; k < 3; ++k) {
                const std::int64_t volume = Dot(d, Cross(t[k] - start, t[(k + 1) % 3] - start));
                positive += volume > 0;
                zero += volume == 0;
            }
            if (zero > 0) continue;  // through an edge: the last digit decides
            expected = positive == 0 || positive == 3 ? 1 : 0;
        }
        ++seen[expected];
        const ZoTrinagle3d triangle(Point(t[0]), Point(t[1]), Point(t[2]));
        ZoLine3d ray(Point(start), Point(start));
        ray.direction = Point(d).AsVector();
        ZoPoint3d point;
        double r = -1;
        ASSERT_EQ(triangle.Intersect(ray, point, &r), expected) << i;
        ASSERT_EQ(ZoTrinagle3d_uvn(triangle).Intersect(ray, point), expected) << i;
        if (expected != 1) continue;
        ASSERT_NEAR(r, static_cast<double>(a) / static_cast<double>(b), 1e-12 * (1 + r));
        ASSERT_LT(point.Distance(ray.Evaluate(r)), 1e-12 * (1 + r));
    }
    for (const int count : seen)
        EXPECT_GT(count, 20);
}

TEST(Triangle3d, EdgesAndCornersAreHitAndFailuresKeepTheDistance) {
    const ZoTrinagle3d triangle({0, 0, 0}, {4, 0, 0}, {0, 4, 0});
    ZoPoint3d point;
    double t = -7;
    for (const ZoPoint3d& hit : {ZoPoint3d(0, 0, 0), ZoPoint3d(4, 0, 0), ZoPoint3d(2, 2, 0), ZoPoint3d(0, 1, 0)}) {
        EXPECT_EQ(triangle.Intersect(ZoLine3d(hit + ZoVector3d(0, 0, 3), ZoVector3d(0, 0, -1)), point, &t), 1);
        EXPECT_EQ(t, 3.0);
    }
    t = -7;
    EXPECT_EQ(triangle.Intersect(ZoLine3d(ZoPoint3d(3, 3, 1), ZoVector3d(0, 0, -1)), point, &t), 0);
    EXPECT_TRUE(point.IsSame({3, 3, 0}, 1e-15));  // where the plane is met
    EXPECT_EQ(triangle.Intersect(ZoLine3d(ZoPoint3d(0, 0, 0), ZoVector3d(1, 1, 0)), point, &t), 2);
    EXPECT_EQ(triangle.Intersect(ZoLine3d(), point, &t), 2);  // no direction, from a corner
    ZoTrinagle3d thin;
    thin.Set({0, 0, 0}, {1, 0, 0}, {1, 0.9e-6, 0});
    EXPECT_EQ(thin.Intersect(ZoLine3d(ZoPoint3d(0, 0, 1), ZoVector3d(0, 0, -1)), point, &t), -1);
    EXPECT_TRUE(ZoTrinagle3d_uvn(thin).IsDegenerate());
    EXPECT_EQ(t, -7.0);
}

TEST(Triangle3d, PlyFileHasSixDecimals) {
    const TempFolder folder;
    const ZoTrinagle3d triangle({0, -1.5, 1e7}, {1.0 / 3, 0, 0}, {2, 3, 4});
    ASSERT_TRUE(triangle.WriteAsPly(folder.Name("triangle.ply")));
    EXPECT_EQ(folder.Read("triangle.ply"),
              "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
              "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
              "0.000000 -1.500000 10000000.000000\n0.333333 0.000000 0.000000\n2.000000 3.000000 4.000000\n3 0 1 2\n");
    EXPECT_FALSE(triangle.WriteAsPly(folder.Name("missing/triangle.ply")));
}

}  // namespace
