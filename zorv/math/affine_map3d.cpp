#include "zorv/math/affine_map3d.h"

#include <algorithm>
#include <numbers>
#include <utility>

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
// Beyond so many turns a remainder takes the place of repeated addition.
constexpr double kManyTurns = 64.0 * kTwoPi;
constexpr double kArbitraryAxisLimit = 1.0 / 64.0;
constexpr double kGimbalLock = 1e-6;

}  // namespace

ZoPoint3d::ZoPoint3d(const ZoFrame3d& frame, double x, double y, double z)
    : ZoPoint3d(ZoAffinMap3d(frame).Transform(ZoPoint3d(x, y, z))) {}

ZoVector3d::ZoVector3d(const ZoFrame3d& frame, double x, double y, double z)
    : ZoVector3d(ZoAffinMap3d(frame).Transform(ZoVector3d(x, y, z))) {}

int CounterClockwise(const ZoPoint3d& p0, const ZoPoint3d& p1, const ZoPoint3d& p2) {
    const ZoVector3d d1 = p1 - p0;
    const ZoVector3d d2 = p2 - p0;
    if (d2.y() * d1.x() > d2.x() * d1.y()) return 1;
    if (d2.x() * d1.y() > d2.y() * d1.x()) return -1;
    if (d2.x() * d1.x() < 0.0 || d2.y() * d1.y() < 0.0) return -1;
    const double length1 = d1.x() * d1.x() + d1.y() * d1.y();
    const double length2 = d2.x() * d2.x() + d2.y() * d2.y();
    return length1 >= length2 ? 0 : 1;
}

ZoAffinMap3d::ZoAffinMap3d(const ZoFrame3d& frame) : ZoAffinMap3d() {
    const ZoVector3d axes[] = {frame.v1(), frame.v2(), frame.v3()};
    for (int c = 0; c < 3; ++c) {
        for (int r = 0; r < 3; ++r)
            (*this)[r][c] = axes[c][r];
    }
    *this = Translate(frame.Origin().AsVector()) * *this;
}

ZoAffinMap3d::ZoAffinMap3d(const ZoFrame3d& fromFrame, const ZoFrame3d& toFrame)
    : ZoAffinMap3d(ZoAffinMap3d(toFrame) * Inv(ZoAffinMap3d(fromFrame))) {}

ZoAffinMap3d ZoAffinMap3d::RotX(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    ZoAffinMap3d map;
    map[1][1] = map[2][2] = c;
    map[2][1] = s;
    map[1][2] = -s;
    return map;
}

ZoAffinMap3d ZoAffinMap3d::RotY(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    ZoAffinMap3d map;
    map[0][0] = map[2][2] = c;
    map[0][2] = s;
    map[2][0] = -s;
    return map;
}

ZoAffinMap3d ZoAffinMap3d::RotZ(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    ZoAffinMap3d map;
    map[0][0] = map[1][1] = c;
    map[1][0] = s;
    map[0][1] = -s;
    return map;
}

ZoAffinMap3d ZoAffinMap3d::RotXYZ(double x, double y, double z) {
    return RotZ(z) * RotY(y) * RotX(x);
}

ZoAffinMap3d ZoAffinMap3d::Scale(double sx, double sy, double sz) {
    ZoAffinMap3d map;
    map[0][0] = sx;
    map[1][1] = sy;
    map[2][2] = sz;
    return map;
}

ZoAffinMap3d ZoAffinMap3d::Translate(double x, double y, double z) {
    ZoAffinMap3d map;
    map[0][3] = x;
    map[1][3] = y;
    map[2][3] = z;
    return map;
}

ZoAffinMap3d ZoAffinMap3d::Inv(const ZoAffinMap3d& map) {
    ZoAffinMap3d inverse = map;
    inverse.Invert();
    return inverse;
}

ZoAffinMap3d ZoAffinMap3d::GetScaleMap(const ZoAffinMap3d& map) {
    ZoPoint3d origin;
    ZoVector3d v1, v2, v3;
    map.GetCoordSystem(origin, v1, v2, v3);
    return Scale(v1.Norm(), v2.Norm(), v3.Norm());
}

ZoAffinMap3d ZoAffinMap3d::NormalTransformMap(const ZoAffinMap3d& map) {
    ZoAffinMap3d normals = map;
    for (int r = 0; r < 3; ++r)
        normals[r][3] = 0.0;
    normals.Invert();
    for (int r = 0; r < 3; ++r) {
        for (int c = r + 1; c < 3; ++c)
            std::swap(normals[r][c], normals[c][r]);
    }
    return normals;
}

void ZoAffinMap3d::GetRotAngles(const ZoAffinMap3d& map, double* x, double* y, double* z) {
    const double sign = map.Det() < 0.0 ? -1.0 : 1.0;
    ZoVector3d r[3];
    for (int i = 0; i < 3; ++i)
        r[i] = sign * Normalized(ZoVector3d(map[i]));

    // RotXYZ has the first column cos y cos z, cos y sin z, -sin y and the last row -sin y, cos y sin x, cos y cos x.
    // The arc tangent keeps full precision where the arc sine of -sin y flattens out.
    const double cosY = std::hypot(r[2].y(), r[2].z());
    *y = NormAngle(std::atan2(-r[2].x(), cosY));
    if (cosY < kGimbalLock) {
        *z = 0.0;
        *x = NormAngle(std::atan2(-r[1].z(), r[1].y()));
        return;
    }
    *z = NormAngle(std::atan2(r[1].x(), r[0].x()));
    *x = NormAngle(std::atan2(r[2].y(), r[2].z()));
}

int ZoAffinMap3d::Invert() {
    const double det = Det();
    if (det == 0.0) return 1;
    const ZoAffinMap3d former = *this;
    const auto& a = former.m;
    *this = ZoAffinMap3d();
    for (int r = 0; r < 3; ++r) {
        // Cyclic indices give the cofactors their signs.
        const int r1 = (r + 1) % 3, r2 = (r + 2) % 3;
        for (int c = 0; c < 3; ++c) {
            const int c1 = (c + 1) % 3, c2 = (c + 2) % 3;
            m[r][c] = (a[c1][r1] * a[c2][r2] - a[c1][r2] * a[c2][r1]) / det;
        }
        m[r][3] = -(m[r][0] * a[0][3] + m[r][1] * a[1][3] + m[r][2] * a[2][3]);
    }
    return 0;
}

void ZoAffinMap3d::GetCoordSystem(ZoPoint3d& origin, ZoVector3d& v1, ZoVector3d& v2, ZoVector3d& v3) const {
    v1 = {m[0][0], m[1][0], m[2][0]};
    v2 = {m[0][1], m[1][1], m[2][1]};
    v3 = {m[0][2], m[1][2], m[2][2]};
    origin = {m[0][3], m[1][3], m[2][3]};
}

double NormAngle(double angle) {
    if (!std::isfinite(angle)) return angle;
    if (angle > kManyTurns) {
        angle = std::fmod(angle, kTwoPi);
        if (angle == 0.0) angle = kTwoPi;
    } else if (angle < -kManyTurns) {
        angle = std::fmod(angle, kTwoPi) + 0.0;  // no negative zero
    }
    while (angle < 0.0)
        angle += kTwoPi;
    while (angle > kTwoPi)
        angle -= kTwoPi;
    return angle;
}

void ArbAxisAlg(const ZoVector3d& n, ZoVector3d& ax, ZoVector3d& ay) {
    const bool nearZ = std::fabs(n.x()) < kArbitraryAxisLimit && std::fabs(n.y()) < kArbitraryAxisLimit;
    const ZoVector3d normal = n;
    ax = Normalized((nearZ ? ZoVector3d::YAxis : ZoVector3d::ZAxis) % normal);
    ay = Normalized(normal % ax);
}

ZoAffinMap3d MapEcsToWcs(const ZoVector3d& n) {
    ZoVector3d ax, ay;
    ArbAxisAlg(n, ax, ay);
    return ZoAffinMap3d(ZoFrame3d(ZoPoint3d::origin, ax, ay, n));
}
