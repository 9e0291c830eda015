// The small geometry of the plane: vectors, points and lines.

#include <algorithm>
#include <cmath>

#include "zorv/core/number_cast.h"
#include "zorv/math/line2d.h"
#include "zorv/math/matrix2d.h"
#include "zorv/math/point2d.h"
#include "zorv/math/vector2d.h"

using zorv::detail::SaturatedInt;

ZoVector2d::ZoVector2d(double angle) : x(std::cos(angle)), y(std::sin(angle)) {}

double ZoVector2d::angle() const {
    return std::atan2(y, x);
}

double ZoVector2d::angleTo(const ZoVector2d& other) const {
    const double cosine = dotProduct(other) / (length() * other.length());
    return std::acos(std::clamp(cosine, -1.0, 1.0));
}

double ZoVector2d::length() const {
    return std::sqrt(lengthSqrd());
}

int ZoVector2d::getXfloor() const {
    return SaturatedInt(std::floor(x));
}

int ZoVector2d::getYfloor() const {
    return SaturatedInt(std::floor(y));
}

bool ZoVector2d::isEqualTo(const ZoVector2d& other, double tolerance) const {
    return (*this - other).length() <= tolerance;
}

bool ZoVector2d::isParallelTo(const ZoVector2d& other, double tolerance) const {
    return std::fabs(crossProduct(other)) < tolerance;
}

bool ZoVector2d::isPerpendicularTo(const ZoVector2d& other, double tolerance) const {
    return std::fabs(dotProduct(other)) < tolerance;
}

bool ZoVector2d::isUnitLength(double tolerance) const {
    return std::fabs(length() - 1.0) <= tolerance;
}

ZoVector2d ZoVector2d::normal() const {
    const double norm = length();
    return norm == 0.0 ? kIdentity : *this / norm;
}

ZoVector2d& ZoVector2d::normalize() {
    const double norm = length();
    return norm == 0.0 ? *this : *this /= norm;
}

ZoVector2d& ZoVector2d::mirror(const ZoLine2d& line) {
    if (line.length() < kTolerance) return *this;
    const ZoVector2d start(line.start.x, line.start.y);
    const ZoVector2d direction = (line.end - line.start).normal();
    const ZoVector2d foot = start + direction * (*this - start).dotProduct(direction);
    return *this = foot * 2.0 - *this;
}

ZoVector2d& ZoVector2d::rotateBy(const ZoVector2d& cosineSine) {
    const ZoVector2d r = cosineSine;
    return set(r.x * x - r.y * y, r.y * x + r.x * y);
}

ZoVector2d& ZoVector2d::setToProduct(const ZoMatrix2d& m, const ZoVector2d& v) {
    return set(m(0, 0) * v.x + m(0, 1) * v.y, m(1, 0) * v.x + m(1, 1) * v.y);
}

ZoPoint2d& ZoPoint2d::rotateBy(double angle, const ZoPoint2d& center) {
    ZoVector2d arm = *this - center;
    return *this = center + arm.rotateBy(angle);
}

ZoPoint2d& ZoPoint2d::scaleBy(double factor, const ZoPoint2d& center) {
    return *this = center + (*this - center) * factor;
}

ZoPoint2d& ZoPoint2d::mirror(const ZoLine2d& line) {
    const ZoVector2d mirrored = ZoVector2d(x, y).mirror(line);
    return set(mirrored.x, mirrored.y);
}

ZoPoint2d& ZoPoint2d::setToProduct(const ZoMatrix2d& m, const ZoPoint2d& p) {
    const double w = m(2, 0) * p.x + m(2, 1) * p.y + m(2, 2);
    if (w == 0.0) return *this = p;
    return set((m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2)) / w, (m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2)) / w);
}

bool ZoLine2d::interSect(const ZoLine2d& other, ZoPoint2d& out) const {
    const ZoVector2d d1 = UnitDirection();
    const ZoVector2d d2 = other.UnitDirection();
    const double den = d1.y * d2.x - d1.x * d2.y;
    if (den == 0.0) return false;
    const double t = ((other.start.y - start.y) * d2.x - (other.start.x - start.x) * d2.y) / den;
    out = start + d1 * t;
    return true;
}

double ZoLine2d::DistanceFromP1(const ZoPoint2d& point, double* perpendicular) const {
    const ZoVector2d d = UnitDirection();
    const ZoVector2d w = point - start;
    if (perpendicular) *perpendicular = w.y * d.x - w.x * d.y;
    return w.dotProduct(d);
}
