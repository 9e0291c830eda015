#include "zorv/points/point.h"

#include "zorv/core/units.h"

int ZoPoint::Compare(ZoListnode* other) const {
    const auto* point = static_cast<const ZoPoint*>(other);
    return point ? static_cast<int>(OrderingKey() - point->OrderingKey()) : 0;
}

void ZoPoint::init() {
    photoId = cameraId = 0;
    controlFlags = 0;
    spare1 = spare2 = 0;
    x = y = z = 0.0;
    dx = dy = dz = 0.0;
    residualX = residualY = residualZ = 0.0;
    vx = vy = vz = 0.0F;
    spare3 = imoCount = 0;
    color = 0;
}

ZoPoint ZoPoint::operator+(const ZoPoint& other) const {
    ZoPoint sum(*this);
    sum.x += other.x;
    sum.y += other.y;
    sum.z += other.z;
    sum.dx += other.dx;
    sum.dy += other.dy;
    sum.dz += other.dz;
    return sum;
}

ZoPoint ZoPoint::operator-(const ZoPoint& other) const {
    ZoPoint difference(*this);
    difference.x -= other.x;
    difference.y -= other.y;
    difference.z -= other.z;
    difference.dx -= other.dx;
    difference.dy -= other.dy;
    difference.dz -= other.dz;
    return difference;
}

ZoPoint ZoPoint::operator*(double factor) const {
    ZoPoint scaled(*this);
    scaled.x *= factor;
    scaled.y *= factor;
    scaled.z *= factor;
    return scaled;
}

ZoPoint ZoPoint::operator/(double divisor) const {
    ZoPoint scaled(*this);
    scaled.x /= divisor;
    scaled.y /= divisor;
    scaled.z /= divisor;
    return scaled;
}

ZoPoint ZoPoint::operator%(const ZoPoint& other) const {
    ZoPoint mean(*this);
    mean.x = (x + other.x) / 2.0;
    mean.y = (y + other.y) / 2.0;
    mean.z = (z + other.z) / 2.0;
    mean.dx = (dx + other.dx) / 2.0;
    mean.dy = (dy + other.dy) / 2.0;
    mean.dz = (dz + other.dz) / 2.0;
    return mean;
}

int ZoPoint::GrayIntensity() const {
    // Weights of the three primaries in 1/65536.
    return (13933 * GetRed() + 46871 * GetGreen() + 4732 * GetBlue() + 32768) >> 16;
}

const char* ZoPoint::GetControlCodeAs123(int code) {
    static constexpr const char* kTexts[] = {"  0", "  1", "  2", " 12", "  3", " 13", " 23", "123"};
    return kTexts[code & kControlMask];
}

const char* ZoPoint::GetControlCodeAsXYZ(int code) {
    static constexpr const char* kTexts[] = {" N ", "X  ", " Y ", "XY ", "  Z", "X Z", " YZ", "XYZ"};
    return kTexts[code & kControlMask];
}

void MultiplyZoPoint(ZoPoint* point, double factor) {
    if (!point) return;
    point->x *= factor;
    point->y *= factor;
    point->z *= factor;
    point->dx *= factor;
    point->dy *= factor;
    point->dz *= factor;
}

void ConvertUnit(ZoPoint* point, eZoUnit from, eZoUnit to) {
    MultiplyZoPoint(point, GetUnitFactor(from, to));
}
