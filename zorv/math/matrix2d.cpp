#include "zorv/math/matrix2d.h"

#include <algorithm>
#include <cmath>

namespace {

/// Moves the fixed point of a map from the origin to the center.
ZoMatrix2d About(const ZoPoint2d& center, ZoMatrix2d map) {
    const ZoVector2d shift = center - ZoPoint2d::kOrigin;
    ZoVector2d moved = shift;
    moved.transformBy(map);
    return map.setTranslation(shift - moved);
}

}  // namespace

ZoMatrix2d ZoMatrix2d::operator*(const ZoMatrix2d& right) const {
    ZoMatrix2d product;
    for (unsigned int r = 0; r < 3; ++r) {
        for (unsigned int c = 0; c < 3; ++c) {
            product(r, c) = (*this)(r, 0) * right(0, c) + (*this)(r, 1) * right(1, c) + (*this)(r, 2) * right(2, c);
        }
    }
    return product;
}

bool ZoMatrix2d::isEqualTo(const ZoMatrix2d& other, double tolerance) const {
    return std::equal(m.begin(), m.end(), other.m.begin(),
                      [tolerance](double a, double b) { return std::fabs(a - b) <= tolerance; });
}

double ZoMatrix2d::det() const {
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) + m[2] * (m[3] * m[7] - m[4] * m[6]);
}

bool ZoMatrix2d::isSingular(double tolerance) const {
    return !(std::fabs(det()) > tolerance);
}

bool ZoMatrix2d::invert() {
    if (isSingular()) return false;
    const double d = det();
    ZoMatrix2d inverted;
    for (unsigned int r = 0; r < 3; ++r) {
        for (unsigned int c = 0; c < 3; ++c) {
            const unsigned int r1 = (c + 1) % 3, r2 = (c + 2) % 3, c1 = (r + 1) % 3, c2 = (r + 2) % 3;
            inverted(r, c) = ((*this)(r1, c1) * (*this)(r2, c2) - (*this)(r1, c2) * (*this)(r2, c1)) / d;
        }
    }
    *this = inverted;
    return true;
}

ZoMatrix2d ZoMatrix2d::inverse() const {
    ZoMatrix2d inverted = *this;
    inverted.invert();
    return inverted;
}

ZoMatrix2d ZoMatrix2d::transpose() const {
    ZoMatrix2d transposed;
    for (unsigned int r = 0; r < 3; ++r) {
        for (unsigned int c = 0; c < 3; ++c)
            transposed(r, c) = (*this)(c, r);
    }
    return transposed;
}

ZoMatrix2d ZoMatrix2d::rotation(double angle, const ZoPoint2d& center) {
    const ZoVector2d axis(angle);
    return About(center, ZoMatrix2d().setCoordSystem(ZoPoint2d::kOrigin, axis, axis.perpVector()));
}

ZoMatrix2d ZoMatrix2d::scaling(double factor, const ZoPoint2d& center) {
    return About(center, ZoMatrix2d().setCoordSystem(ZoPoint2d::kOrigin, {factor, 0.0}, {0.0, factor}));
}

ZoMatrix2d ZoMatrix2d::mirroring(const ZoPoint2d& center) {
    return scaling(-1.0, center);
}

ZoMatrix2d ZoMatrix2d::mirroring(const ZoLine2d& line) {
    if (line.length() < kTolerance) return {};
    const ZoVector2d d = (line.end - line.start).normal();
    const double cosine = d.x * d.x - d.y * d.y;  // of twice the line's direction
    const double sine = 2.0 * d.x * d.y;
    return About(line.start, ZoMatrix2d().setCoordSystem(ZoPoint2d::kOrigin, {cosine, sine}, {sine, -cosine}));
}

ZoMatrix2d ZoMatrix2d::alignCoordSys(const ZoPoint2d& fromOrigin, const ZoVector2d& fromX, const ZoVector2d& fromY,
                                     const ZoPoint2d& toOrigin, const ZoVector2d& toX, const ZoVector2d& toY) {
    const ZoMatrix2d from = ZoMatrix2d().setCoordSystem(fromOrigin, fromX, fromY);
    return ZoMatrix2d().setCoordSystem(toOrigin, toX, toY) * from.inverse();
}

ZoMatrix2d& ZoMatrix2d::setToRotation(double angle, const ZoPoint2d& center) {
    return *this = rotation(angle, center);
}

ZoMatrix2d& ZoMatrix2d::setToScaling(double factor, const ZoPoint2d& center) {
    return *this = scaling(factor, center);
}

ZoMatrix2d& ZoMatrix2d::setTranslation(const ZoVector2d& shift) {
    m[2] = shift.x;
    m[5] = shift.y;
    return *this;
}

ZoMatrix2d& ZoMatrix2d::setCoordSystem(const ZoPoint2d& origin, const ZoVector2d& xAxis, const ZoVector2d& yAxis) {
    m = {xAxis.x, yAxis.x, origin.x, xAxis.y, yAxis.y, origin.y, 0, 0, 1};
    return *this;
}

void ZoMatrix2d::getCoordSystem(ZoPoint2d& origin, ZoVector2d& xAxis, ZoVector2d& yAxis) const {
    origin.set(m[2], m[5]);
    xAxis = Axis(0);
    yAxis = Axis(1);
}

double ZoMatrix2d::scale() const {
    return std::max(Axis(0).length(), Axis(1).length());
}

bool ZoMatrix2d::IsAffine(double tolerance) const {
    return std::fabs(m[6]) <= tolerance && std::fabs(m[7]) <= tolerance && std::fabs(m[8] - 1.0) <= tolerance;
}

bool ZoMatrix2d::isUniScaledOrtho(double tolerance) const {
    return isScaledOrtho(tolerance) && std::fabs(Axis(0).length() - Axis(1).length()) <= tolerance;
}

bool ZoMatrix2d::isScaledOrtho(double tolerance) const {
    return IsAffine(tolerance) && !isSingular() && std::fabs(Axis(0).dotProduct(Axis(1))) <= tolerance;
}

bool ZoMatrix2d::isConformal(double& scale, double& angle, bool& mirrored) const {
    if (!isUniScaledOrtho()) return false;
    scale = Axis(0).length();
    angle = Axis(0).angle();
    mirrored = det() < 0.0;
    return true;
}
