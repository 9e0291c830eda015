#include "zorv/math/triangle3d.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/math/triangle_intersection.h"

namespace {

// The oracles compute on small integers, which doubles hold exactly.
struct Tri {
    ZoPoint3d p[3];

    const ZoPoint3d& operator[](int i) const { return p[i % 3]; }
    ZoVector3d Edge(int i) const { return (*this)[i + 1] - (*this)[i]; }
    ZoVector3d Normal() const { return Edge(0) % (p[2] - p[0]); }
    Tri Moved(const ZoVector3d& offset) const { return {{p[0] + offset, p[1] + offset, p[2] + offset}}; }
};

bool IsZero(const ZoVector3d& a) {
    return a * a == 0.0;
}

ZoPoint3d RandomPoint(std::mt19937& random, int low, int high) {
    std::uniform_int_distribution<int> any(low, high);
    const int x = any(random), y = any(random);
    return ZoPoint3d(x, y, any(random));
}

Tri RandomTriangle(std::mt19937& random, int low, int high) {
    Tri t;
    do {
        for (ZoPoint3d& vertex : t.p)
            vertex = RandomPoint(random, low, high);
    } while (IsZero(t.Normal()));
    return t;
}

enum Contact { kApart, kTouching, kCrossing, kCoplanar };

/// Separating axes: two convex bodies are apart exactly when a face normal or edge product of their difference shows a
/// gap.
Contact Classify(const Tri& a, const Tri& b) {
    std::vector<ZoVector3d> axes{a.Normal(), b.Normal()};
    const bool coplanar = IsZero(axes[0] % axes[1]) && axes[0] * (b[0] - a[0]) == 0.0;
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 3; ++k)
            axes.push_back(a.Edge(i) % b.Edge(k));
        axes.push_back(a.Normal() % a.Edge(i));
        axes.push_back(b.Normal() % b.Edge(i));
    }
    bool touching = false;
    for (const ZoVector3d& axis : axes) {
        if (IsZero(axis)) continue;
        const auto along = [&](const ZoPoint3d& p) { return axis * p.AsVector(); };
        const auto [aLow, aHigh] = std::minmax({along(a[0]), along(a[1]), along(a[2])});
        const auto [bLow, bHigh] = std::minmax({along(b[0]), along(b[1]), along(b[2])});
        if (aHigh < bLow || bHigh < aLow) return kApart;
        touching = touching || aHigh == bLow || bHigh == aLow;
    }
    return coplanar ? kCoplanar : touching ? kTouching : kCrossing;
}

template <class Test, class... More>
int Check(Test test, const Tri& a, const Tri& b, More... more) {
    return test(a[0].asDblArray(), a[1].asDblArray(), a[2].asDblArray(), b[0].asDblArray(), b[1].asDblArray(),
                b[2].asDblArray(), more...);
}

/// How far a point lies outside a triangle; below 0 inside, within its plane.
double Outside(const ZoPoint3d& p, const Tri& t) {
    const ZoVector3d n = Normalized(t.Normal());
    double most = -1e9;
    for (int i = 0; i < 3; ++i)
        most = std::fmax(most, Normalized(n % t.Edge(i)) * (t[i] - p));
    const double off = std::fabs(n * (p - t[0]));
    return off > 1e-7 ? off : most;
}

TEST(TriangleIntersection, AllFormsAgreeWithExactSeparatingAxes) {
    std::mt19937 random(20);
    int seen[4] = {};
    for (int i = 0; i < 120000; ++i) {
        const int size = i % 3 == 0 ? 2 : 4;
        const Tri a = RandomTriangle(random, 0, size), b = RandomTriangle(random, 0, size);
        const Contact contact = Classify(a, b);
        ++seen[contact];
        const int expected = contact == kApart ? 0 : 1;
        const ZoVector3d offset = i % 2 == 0 ? ZoVector3d::Null : ZoVector3d(5000000, 5100000, 300);
        const Tri v = a.Moved(offset), u = b.Moved(offset);
        // On this grid the form without division computes exactly.
        ASSERT_EQ(Check(NoDivTriTriIsect, v, u), expected) << i;
        ZoPoint3d first, last;
        int coplanar = -1;
        const int found = Check(tri_tri_intersect, v, u);
        ASSERT_EQ(Check(tri_tri_intersect_with_isectline, v, u, &coplanar, first.asDblArray(), last.asDblArray()),
                  found);
        // Where the intervals share an end only, the quotients decide by their last digit.
        if (contact == kTouching) continue;
        ASSERT_EQ(found, expected) << i;
        ASSERT_TRUE(expected == 0 || coplanar == (contact == kCoplanar ? 1 : 0)) << i;
        if (contact != kCrossing) continue;
        // The ends belong to both triangles, and nothing beyond them does.
        const ZoVector3d step = 1e-4 * Normalized(last - first);
        const auto outside = [&](const ZoPoint3d& p) { return std::fmax(Outside(p, v), Outside(p, u)); };
        ASSERT_LT(std::fmax(outside(first), outside(last)), 1e-8) << i;  // roundings at 5,000,000
        ASSERT_GT(std::fmin(outside(first - step), outside(last + step)), 1e-7) << i;
    }
    for (const int count : seen)
        EXPECT_GT(count, 500);
}

TEST(TriangleIntersection, ContactWithinTheLimitCounts) {
    const ZoTrinagle3d floor({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    for (const double gap : {0.9e-6, 1.1e-6}) {
        const ZoTrinagle3d standing({0.2, 0.2, gap}, {0.2, 0.2, 1}, {0.3, 0.2, 1});
        EXPECT_EQ(floor.Intersect(standing), gap < 1e-6 ? 1 : 0);
        const ZoTrinagle3d lying({0.2, 0.2, gap}, {5, 0.2, gap}, {5, 0.3, gap});
        EXPECT_EQ(floor.Intersect(lying), gap < 1e-6 ? 1 : 0);
    }
    // Nested in one plane, and edge on edge in a single point.
    const ZoTrinagle3d wide({0, 0, 0}, {8, 0, 0}, {0, 8, 0});
    for (const ZoTrinagle3d& other :
         {ZoTrinagle3d({1, 1, 0}, {2, 1, 0}, {1, 2, 0}), ZoTrinagle3d({4, 0, -4}, {4, 0, 4}, {4, -4, 0})}) {
        EXPECT_EQ(wide.Intersect(other), 1);
        EXPECT_EQ(other.Intersect(wide), 1);
    }
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(floor.Intersect(ZoTrinagle3d({none, none, none}, {0, 0, 1}, {1, 0, -1})), 0);
}

TEST(Triangle3d, RaysAgreeWithExactVolumes) {
    std::mt19937 random(22);
    int seen[3] = {};
    for (int i = 0; i < 200000; ++i) {
        const Tri t = RandomTriangle(random, -8, 8);
        const ZoPoint3d start = RandomPoint(random, -8, 8);
        const ZoVector3d d = RandomPoint(random, -8, 8).AsVector();
        const double b = t.Normal() * d, a = t.Normal() * (t[0] - start);
        int expected = b == 0 && a == 0 ? 2 : 0;
        if (b != 0 && a / b >= 0) {
            int positive = 0, zero = 0;
            for (int k = 0; k < 3; ++k) {
                const double volume = d * ((t[k] - start) % (t[k + 1] - start));
                positive += volume > 0;
                zero += volume == 0;
            }
            if (zero > 0) continue;  // through an edge: the last digit decides
            expected = positive == 0 || positive == 3 ? 1 : 0;
        }
        ++seen[expected];
        ZoLine3d ray(start, start);
        ray.direction = d;
        ZoPoint3d point;
        double r = -1;
        const ZoTrinagle3d triangle(t[0], t[1], t[2]);
        ASSERT_EQ(triangle.Intersect(ray, point, &r), expected) << i;
        ASSERT_EQ(ZoTrinagle3d_uvn(triangle).Intersect(ray, point), expected) << i;
        if (expected != 1) continue;
        ASSERT_EQ(r, a / b);
        ASSERT_TRUE(point.IsSame(start + a / b * d, 1e-9));
    }
    for (const int count : seen)
        EXPECT_GT(count, 20);
}

TEST(Triangle3d, EdgesAndCornersAreHitAndFailuresKeepTheDistance) {
    const ZoTrinagle3d triangle({0, 0, 0}, {4, 0, 0}, {0, 4, 0});
    ZoPoint3d point;
    double t = 0;
    for (const ZoPoint3d& hit : {ZoPoint3d(0, 0, 0), ZoPoint3d(4, 0, 0), ZoPoint3d(2, 2, 0), ZoPoint3d(0, 1, 0)}) {
        EXPECT_EQ(triangle.Intersect(ZoLine3d(hit + ZoVector3d(0, 0, 3), ZoVector3d(0, 0, -1)), point, &t), 1);
        EXPECT_EQ(t, 3.0);
    }
    EXPECT_EQ(triangle.Intersect(ZoLine3d(ZoPoint3d(3, 3, 1), ZoVector3d(0, 0, -1)), point, &t), 0);
    EXPECT_TRUE(point.IsSame({3, 3, 0}, 1e-15));              // where the plane is met
    EXPECT_EQ(triangle.Intersect(ZoLine3d(), point, &t), 2);  // no direction, from a corner
    const ZoTrinagle3d thin({0, 0, 0}, {1, 0, 0}, {1, 0.9e-6, 0});
    EXPECT_EQ(thin.Intersect(ZoLine3d(ZoPoint3d(0, 0, 1), ZoVector3d(0, 0, -1)), point, &t), -1);
    EXPECT_EQ(t, 3.0);
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
