#include <algorithm>
#include <cmath>

#include "zorv/math/matrix.h"

namespace {

/// Cosines this near to 1 and -1 count as equal and opposite directions.
constexpr double kSameDirection = 1e-10;

/// What rounding leaves of a unit vector from which its own direction was taken away.
constexpr double kCollinear = 1e-14;

/// A unit vector across the given one.
ZoVector Across(const ZoVector& v) {
    const double x = std::fabs(v[1]);
    const double y = std::fabs(v[2]);
    const double z = std::fabs(v[3]);
    const bool smallX = x <= y && x <= z;
    const ZoVector& axis = smallX ? ZoVector::kXaxis3D : y <= z ? ZoVector::kYaxis3D : ZoVector::kZaxis3D;
    return (v % axis).Normalize();
}

/// Rodrigues' formula without the angle: the rotation that takes a to b, from their cosine c and h = 1 / (1 + c).
void AlignUnitVectors(const ZoVector& a, const ZoVector& b, double c, double h, ZoMatrix& m) {
    const ZoVector v = a % b;
    const double rotation[9] = {
        h * v[1] * v[1] + c,    h * v[1] * v[2] - v[3], h * v[1] * v[3] + v[2],
        h * v[1] * v[2] + v[3], h * v[2] * v[2] + c,    h * v[2] * v[3] - v[1],
        h * v[1] * v[3] - v[2], h * v[2] * v[3] + v[1], h * v[3] * v[3] + c,
    };
    m.Set(rotation, 3, 3);
}

/// The image of the z axis under the upper left 3 by 3 block.
ZoVector ViewingDirection(const ZoMatrix& m) {
    return {m[1][3], m[2][3], m[3][3]};
}

}  // namespace

bool ZoMatrix::CalcRotMatAlignVector(const ZoVector& a, const ZoVector& b) {
    const double c = a * b;
    if (std::fabs(c + 1.0) <= kSameDirection) {
        // The formula loses all its digits here, so a half turn across a, which takes a to -a, comes first.
        ZoMatrix halfTurn(3, 3);
        halfTurn.CalcNGLAN(Across(a));
        halfTurn *= 2.0;
        for (int i = 1; i <= 3; ++i)
            halfTurn[i][i] -= 1.0;
        ZoMatrix rest(3, 3);
        AlignUnitVectors(a * -1.0, b, -c, 1.0 / (1.0 - c), rest);
        const ZoMatrix rotation = rest * halfTurn;
        Set(rotation.data, 3, 3);
    } else if (std::fabs(c - 1.0) <= kSameDirection) {
        Reshape(3, 3);
        SetIdent();
    } else {
        AlignUnitVectors(a, b, c, (1.0 - c) / (1.0 - c * c), *this);
    }
    return true;
}

ZoMatrix& ZoMatrix::MakeRotMatrix(double a, double b, double c) {
    const double sinA = std::sin(a);
    const double cosA = std::cos(a);
    const double sinB = std::sin(b);
    const double cosB = std::cos(b);
    const double sinC = std::sin(c);
    const double cosC = std::cos(c);
    double* line = (*this)[1];
    line[1] = sinB * sinA * sinC + cosC * cosA;
    line[2] = sinB * sinA * cosC - sinC * cosA;
    line[3] = cosB * sinA;
    line = (*this)[2];
    line[1] = cosB * sinC;
    line[2] = cosB * cosC;
    line[3] = -sinB;
    line = (*this)[3];
    line[1] = sinB * cosA * sinC - cosC * sinA;
    line[2] = sinB * cosA * cosC + sinC * sinA;
    line[3] = cosB * cosA;
    return *this;
}

ZoMatrix& ZoMatrix::MakeRotMatrix(const ZoVector& origin, const ZoVector& pointX, const ZoVector& pointXY, bool* ok) {
    if (ok) *ok = false;
    ZoVector x = pointX - origin;
    ZoVector y = pointXY - origin;
    if (!(x.Abs() > 0.0) || !(y.Abs() > 0.0)) return *this;
    x.Normalize();
    y.Normalize();
    y -= x * (x * y);
    if (!(y.Abs() > kCollinear)) return *this;
    y.Normalize();
    ZoVector z = x % y;
    if (!(z.Abs() > 0.0)) return *this;
    z.Normalize();
    for (int i = 1; i <= 3; ++i) {
        SetElem(i, 1, x[i]);
        SetElem(i, 2, y[i]);
        SetElem(i, 3, z[i]);
    }
    if (ok) *ok = true;
    return *this;
}

void ZoMatrix::GetRotAngles(double* b, double* a, double* c) const {
    constexpr double kVanishes = 1e-12;
    const ZoMatrix& r = *this;
    *b = std::asin(std::clamp(-r[2][3], -1.0, 1.0));
    if (std::fabs(r[1][3]) < kVanishes && std::fabs(r[3][3]) < kVanishes) {
        *c = 0.0;
        *a = std::atan2(-r[2][3] * r[1][2], r[1][1]);
        return;
    }
    const double cosB = std::cos(*b);
    *a = std::atan2(r[1][3] / cosB, r[3][3] / cosB);
    *c = std::atan2(r[2][1] / cosB, r[2][2] / cosB);
}

/// Identity with a rotation in the plane of two axes, turning the first towards the second.
void ZoMatrix::SetRotation(int first, int second, double angle) {
    SetIdent();
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    SetElem(first, first, cosine);
    SetElem(first, second, -sine);
    SetElem(second, first, sine);
    SetElem(second, second, cosine);
}

ZoMatrix& ZoMatrix::RotXAxis(double angle) {
    SetRotation(2, 3, angle);
    return *this;
}

ZoMatrix& ZoMatrix::RotYAxis(double angle) {
    SetRotation(3, 1, angle);
    return *this;
}

ZoMatrix& ZoMatrix::RotZAxis(double angle) {
    SetRotation(1, 2, angle);
    return *this;
}

double ZoMatrix::CalcAngle(const ZoMatrix& other) const {
    const double cosine = ViewingDirection(*this).Normalize() * ViewingDirection(other).Normalize();
    return cosine >= 1.0 ? 0.0 : std::acos(std::max(cosine, -1.0));
}

bool ZoMatrix::IsLookingInSameDirection(const ZoMatrix& other) const {
    constexpr double kLongEnough = 1.42;
    return (ViewingDirection(*this) + ViewingDirection(other)).Abs() > kLongEnough;
}
