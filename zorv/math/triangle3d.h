#pragma once

#include <cmath>
#include <string>

#include "zorv/export.h"
#include "zorv/math/line3d.h"
#include "zorv/math/point3d.h"

/// Triangle with the vertices p0, p1, p2.
///
/// The ray tests follow D. Sunday's intersection of a segment with a triangle. Their limit of 1e-6 stands for the
/// components of u x v, so that triangles of less than about a square millimetre, in metres, count as degenerate.
class ZORV_API ZoTrinagle3d {
  public:
    ZoTrinagle3d() = default;
    ZoTrinagle3d(const ZoPoint3d& p0, const ZoPoint3d& p1, const ZoPoint3d& p2) : vertices{p0, p1, p2} {}
    ZoTrinagle3d(const ZoTrinagle3d&) = default;
    ZoTrinagle3d& operator=(const ZoTrinagle3d&) = default;
    virtual ~ZoTrinagle3d() = default;

    void Set(const ZoPoint3d& p0, const ZoPoint3d& p1, const ZoPoint3d& p2) { *this = {p0, p1, p2}; }
    const ZoPoint3d& P0() const { return vertices[0]; }
    const ZoPoint3d& P1() const { return vertices[1]; }
    const ZoPoint3d& P2() const { return vertices[2]; }

    /// Where the ray from the line's start along its direction meets the triangle, edges included.
    ///
    /// 1: it does, at `point`, at the distance that `t` takes when it is not null. 0: it does not; `point` may hold
    /// where it meets the triangle's plane. 2: it runs in that plane. -1: the triangle is degenerate.
    int Intersect(const ZoLine3d& line, ZoPoint3d& point, double* t = nullptr) const;
    /// 1 when the triangles have a point in common, else 0.
    int Intersect(const ZoTrinagle3d& other) const;

    /// Writes the triangle as an ASCII PLY file with six decimals. False when the file cannot be written.
    bool WriteAsPly(const std::wstring& path) const;

  private:
    ZoPoint3d vertices[3];
};

/// A triangle prepared for many rays: p0, p1, p2, the edges u and v from p0, and n = u x v, not normalised.
class ZoTrinagle3d_uvn {
  public:
    explicit ZoTrinagle3d_uvn(const ZoTrinagle3d& triangle)
        : p0(triangle.P0()), p1(triangle.P1()), p2(triangle.P2()), u(p1 - p0), v(p2 - p0), n(u % v) {}

    bool IsDegenerate() const { return n.IsDegenerate(kLimit); }

    /// As ZoTrinagle3d::Intersect, without the test for a degenerate triangle.
    int Intersect(const ZoLine3d& line, ZoPoint3d& point, double* t = nullptr) const {
        const double a = -(n * (line.start - p0));
        const double b = n * line.direction;
        if (std::fabs(b) < kLimit) return a == 0.0 ? 2 : 0;
        const double r = a / b;
        if (r < 0.0) return 0;
        point = line.Evaluate(r);

        const ZoVector3d w = point - p0;
        const double uu = u * u, uv = u * v, vv = v * v;
        const double wu = w * u, wv = w * v;
        const double d = uv * uv - uu * vv;
        // Asked for what is inside, so that not-a-number is outside.
        const double s = (uv * wv - vv * wu) / d;
        if (!(s >= 0.0 && s <= 1.0)) return 0;
        const double t2 = (uv * wu - uu * wv) / d;
        if (!(t2 >= 0.0 && s + t2 <= 1.0)) return 0;
        if (t != nullptr) *t = r;
        return 1;
    }

    ZoPoint3d p0, p1, p2;
    ZoVector3d u, v, n;

  private:
    static constexpr double kLimit = 1e-6;
};
