#include "zorv/math/triangle_intersection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

constexpr double kInPlane = 1e-6;

using Vec = std::array<double, 3>;
using Triangle = std::array<Vec, 3>;

Vec operator-(const Vec& a, const Vec& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
double Dot(const Vec& a, const Vec& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Vec Cross(const Vec& a, const Vec& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Triangle MakeTriangle(const double* a, const double* b, const double* c) {
    return {Vec{a[0], a[1], a[2]}, Vec{b[0], b[1], b[2]}, Vec{c[0], c[1], c[2]}};
}

Vec Normal(const Triangle& t) {
    return Cross(t[1] - t[0], t[2] - t[0]);
}

int GreatestAxis(const Vec& v) {
    int axis = 0;
    for (int i = 1; i < 3; ++i) {
        if (std::fabs(v[i]) > std::fabs(v[axis])) axis = i;
    }
    return axis;
}

// Signed distances of the vertices of t from the plane through `origin`. Differences come first, so that large
// coordinates do not eat up the digits.
Vec PlaneDistances(const Vec& normal, const Vec& origin, const Triangle& t) {
    Vec d;
    for (int i = 0; i < 3; ++i) {
        d[i] = Dot(normal, t[i] - origin);
        if (std::fabs(d[i]) < kInPlane) d[i] = 0.0;
    }
    return d;
}

bool OnOneSide(const Vec& d) {
    return d[0] * d[1] > 0.0 && d[0] * d[2] > 0.0;
}

// Coplanar triangles, seen along the greatest component of their normal. Among equal components the choice is that of
// the published test, so that degenerate triangles, whose normal may be null, get its answer too.
class FlatTriangles {
  public:
    explicit FlatTriangles(const Vec& normal) {
        const double x = std::fabs(normal[0]), y = std::fabs(normal[1]), z = std::fabs(normal[2]);
        const int dropped = x > y ? (x > z ? 0 : 2) : (z > y ? 2 : 1);
        i0 = dropped == 0 ? 1 : 0;
        i1 = dropped == 2 ? 1 : 2;
    }

    bool Intersect(const Triangle& v, const Triangle& u) const {
        for (int i = 0; i < 3; ++i) {
            for (int k = 0; k < 3; ++k) {
                if (EdgesMeet(v[i], v[(i + 1) % 3], u[k], u[(k + 1) % 3])) return true;
            }
        }
        return Inside(v[0], u) || Inside(u[0], v);
    }

  private:
    // Segments v0 v1 and u0 u1, ends included; parallel ones do not meet. Two triangles that share a piece of an edge
    // are found by one of its ends on other edges.
    bool EdgesMeet(const Vec& v0, const Vec& v1, const Vec& u0, const Vec& u1) const {
        const double ax = v1[i0] - v0[i0], ay = v1[i1] - v0[i1];
        const double bx = u0[i0] - u1[i0], by = u0[i1] - u1[i1];
        const double cx = v0[i0] - u0[i0], cy = v0[i1] - u0[i1];
        const double f = ay * bx - ax * by;
        const double d = by * cx - bx * cy;
        const double e = ax * cy - ay * cx;
        if (f > 0.0) return d >= 0.0 && d <= f && e >= 0.0 && e <= f;
        if (f < 0.0) return d <= 0.0 && d >= f && e <= 0.0 && e >= f;
        return false;
    }

    // Strictly inside; a point on an edge has been found by the edges.
    bool Inside(const Vec& p, const Triangle& t) const {
        Vec side;
        for (int i = 0; i < 3; ++i) {
            const Vec& a = t[i];
            const Vec& b = t[(i + 1) % 3];
            side[i] = (b[i1] - a[i1]) * (p[i0] - a[i0]) - (b[i0] - a[i0]) * (p[i1] - a[i1]);
        }
        return OnOneSide(side);
    }

    int i0, i1;
};

// Which vertex stands alone on its side of the other plane, or in the plane with the others not on one side. Both edges
// that leave it reach the line of intersection. -1: all three lie in the plane.
int LoneVertex(const Vec& d) {
    if (d[0] * d[1] > 0.0) return 2;
    if (d[0] * d[2] > 0.0) return 1;
    if (d[1] * d[2] > 0.0 || d[0] != 0.0) return 0;
    if (d[1] != 0.0) return 1;
    if (d[2] != 0.0) return 2;
    return -1;
}

// The distances of both triangles, the axis along which the line of intersection is measured, and the vertices from
// which the intervals start.
struct Crossing {
    enum { kApart, kCrossing, kCoplanar } kind = kApart;
    Vec dv, du;
    Vec normal;  // of v
    int axis = 0;
    int loneV = 0, loneU = 0;

    Crossing(const Triangle& v, const Triangle& u) : normal(Normal(v)) {
        du = PlaneDistances(normal, v[0], u);
        if (OnOneSide(du)) return;
        const Vec other = Normal(u);
        dv = PlaneDistances(other, u[0], v);
        if (OnOneSide(dv)) return;
        axis = GreatestAxis(Cross(normal, other));
        loneV = LoneVertex(dv);
        loneU = LoneVertex(du);
        kind = loneV < 0 || loneU < 0 ? kCoplanar : kCrossing;
    }
};

// A triangle's share of the line of intersection: ascending along its axis, with the points in space.
struct Interval {
    double begin, end;
    Vec first, last;

    Interval(const Triangle& t, const Vec& d, int lone, int axis) {
        std::tie(begin, first) = Cut(t, d, lone, (lone + 1) % 3, axis);
        std::tie(end, last) = Cut(t, d, lone, (lone + 2) % 3, axis);
        if (begin > end) {
            std::swap(begin, end);
            std::swap(first, last);
        }
    }

    // Asked so that not-a-number does not meet.
    bool Meets(const Interval& other) const { return begin <= other.end && other.begin <= end; }

  private:
    static std::pair<double, Vec> Cut(const Triangle& t, const Vec& d, int from, int to, int axis) {
        const double share = d[from] / (d[from] - d[to]);
        Vec point;
        for (int i = 0; i < 3; ++i)
            point[i] = t[from][i] + (t[to][i] - t[from][i]) * share;
        return {point[axis], point};
    }
};

// The same interval as a + b / x0, a + c / x1 with the denominators kept apart.
struct Fractions {
    double a, b, c, x0, x1;

    Fractions(const Triangle& t, const Vec& d, int lone, int axis) {
        const int n1 = (lone + 1) % 3, n2 = (lone + 2) % 3;
        a = t[lone][axis];
        b = (t[n1][axis] - a) * d[lone];
        c = (t[n2][axis] - a) * d[lone];
        x0 = d[lone] - d[n1];
        x1 = d[lone] - d[n2];
    }
};

}  // namespace

int tri_tri_intersect(const double v0[3], const double v1[3], const double v2[3], const double u0[3],
                      const double u1[3], const double u2[3]) {
    const Triangle v = MakeTriangle(v0, v1, v2);
    const Triangle u = MakeTriangle(u0, u1, u2);
    const Crossing crossing(v, u);
    if (crossing.kind == Crossing::kApart) return 0;
    if (crossing.kind == Crossing::kCoplanar) return FlatTriangles(crossing.normal).Intersect(v, u) ? 1 : 0;
    const Interval onV(v, crossing.dv, crossing.loneV, crossing.axis);
    const Interval onU(u, crossing.du, crossing.loneU, crossing.axis);
    return onV.Meets(onU) ? 1 : 0;
}

int NoDivTriTriIsect(const double v0[3], const double v1[3], const double v2[3], const double u0[3], const double u1[3],
                     const double u2[3]) {
    const Triangle v = MakeTriangle(v0, v1, v2);
    const Triangle u = MakeTriangle(u0, u1, u2);
    const Crossing crossing(v, u);
    if (crossing.kind == Crossing::kApart) return 0;
    if (crossing.kind == Crossing::kCoplanar) return FlatTriangles(crossing.normal).Intersect(v, u) ? 1 : 0;

    const Fractions f(v, crossing.dv, crossing.loneV, crossing.axis);
    const Fractions g(u, crossing.du, crossing.loneU, crossing.axis);
    // Both denominators of a triangle have the same sign, so the common one is positive and keeps the order.
    const double xx = f.x0 * f.x1, yy = g.x0 * g.x1;
    const double offset = (g.a - f.a) * xx * yy;
    const auto [fLow, fHigh] = std::minmax({f.b * f.x1 * yy, f.c * f.x0 * yy});
    const auto [gLow, gHigh] = std::minmax({offset + g.b * g.x1 * xx, offset + g.c * g.x0 * xx});
    return fLow <= gHigh && gLow <= fHigh ? 1 : 0;
}

int tri_tri_intersect_with_isectline(const double v0[3], const double v1[3], const double v2[3], const double u0[3],
                                     const double u1[3], const double u2[3], int* coplanar, double isectpt1[3],
                                     double isectpt2[3]) {
    const Triangle v = MakeTriangle(v0, v1, v2);
    const Triangle u = MakeTriangle(u0, u1, u2);
    const Crossing crossing(v, u);
    *coplanar = crossing.kind == Crossing::kCoplanar ? 1 : 0;
    if (crossing.kind == Crossing::kApart) return 0;
    if (crossing.kind == Crossing::kCoplanar) return FlatTriangles(crossing.normal).Intersect(v, u) ? 1 : 0;
    const Interval onV(v, crossing.dv, crossing.loneV, crossing.axis);
    const Interval onU(u, crossing.du, crossing.loneU, crossing.axis);
    if (!onV.Meets(onU)) return 0;
    const Vec& first = onV.begin < onU.begin ? onU.first : onV.first;
    const Vec& last = onV.end > onU.end ? onU.last : onV.last;
    std::copy(first.begin(), first.end(), isectpt1);
    std::copy(last.begin(), last.end(), isectpt2);
    return 1;
}
