// Rays of a photo and where they meet a plane.

#include <cmath>

#include "zorv/cloud/scan_point.h"
#include "zorv/math/line3d.h"
#include "zorv/photo/photo.h"

namespace {

enum SipError : std::int32_t { kNoOrientation = 1, kNoPlane = 2, kNoPoint = 3 };

ZoPoint3d Centre(const ZoPhoto& photo) {
    return {photo.posAOR[1], photo.posAOR[2], photo.posAOR[3]};
}

/// The direction of an image point in object space, as long as in the camera frame.
ZoVector3d Direction(const ZoPhoto& photo, double x, double y) {
    const ZoMatrix& r = photo.rotAOR;
    const double z = -std::fabs(photo.camera.c);
    return {r[1][1] * x + r[1][2] * y + r[1][3] * z, r[2][1] * x + r[2][2] * y + r[2][3] * z,
            r[3][1] * x + r[3][2] * y + r[3][3] * z};
}

ZoVector3d UnitDirection(const ZoPhoto& photo, double x, double y) {
    const ZoVector3d d = Direction(photo, x, y);
    return d * (1.0 / d.Norm());
}

/// A point of the plane: on a coordinate axis or, where that is at infinity, the foot of the origin.
ZoPoint3d PointOf(const ZoPlane& plane, const ZoVector3d& normal) {
    const ZoVector point = plane.CalcPlaneVectorForSip();
    if (std::isfinite(point[1]) && std::isfinite(point[2]) && std::isfinite(point[3]))
        return {point[1], point[2], point[3]};
    return (normal * (-plane.d / normal.dot(normal))).AsPoint();
}

/// How far along the direction the ray meets the plane, in lengths of the direction.
double Parameter(const ZoPhoto& photo, const ZoPlane& plane, const ZoVector3d& direction) {
    const ZoVector3d normal(plane.A(), plane.B(), plane.C());
    return normal.dot(PointOf(plane, normal) - Centre(photo)) / normal.dot(direction);
}

void SetResult(ZoPoint* result, const ZoPoint3d& position) {
    result->x = position.x();
    result->y = position.y();
    result->z = position.z();
}

}  // namespace

void ZoPhoto::SetRayStart(ZoLine3d& ray) const {
    ray.start = Centre(*this);
}

void ZoPhoto::CalcRay(ZoLine3d& ray, const ZoPoint* imagePoint) const {
    SetRayStart(ray);
    ray.direction = UnitDirection(*this, imagePoint->x, imagePoint->y);
}

void ZoPhoto::CalcRayDirection(ZoLine3d& ray, double x, double y) const {
    double z = 0.0;
    bikoTransform.Transform(&x, &y, &z);
    ray.direction = UnitDirection(*this, x, y);
}

bool ZoPhoto::CalcRayEndPoint(double& x, double& y, double& z, const ZoPoint* imagePoint, const double& length) const {
    const ZoPoint3d end = Centre(*this) + UnitDirection(*this, imagePoint->x, imagePoint->y) * length;
    x = end.x();
    y = end.y();
    z = end.z();
    return true;
}

bool ZoPhoto::CalcRayEndPoint(ZoPoint* result, const ZoPoint* imagePoint, const double& length) const {
    return CalcRayEndPoint(result->x, result->y, result->z, imagePoint, length);
}

bool ZoPhoto::CalcRayEndPoint(ZoScanPoint3d* result, const ZoPoint* imagePoint, const double& length) const {
    return CalcRayEndPoint(result->x(), result->y(), result->z(), imagePoint, length);
}

void ZoPhoto::CalcSipNoErrorCheck(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint) const {
    const ZoVector3d direction = Direction(*this, imagePoint->x, imagePoint->y);
    SetResult(result, Centre(*this) + direction * Parameter(*this, plane, direction));
}

bool ZoPhoto::CalcSip(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint) {
    const auto fail = [this](SipError reason) {
        lastError = reason;
        return false;
    };
    if (!hasAOR) return fail(kNoOrientation);
    if (!plane.IsValid()) return fail(kNoPlane);
    if (!imagePoint) return fail(kNoPoint);
    const ZoVector3d direction = Direction(*this, imagePoint->x, imagePoint->y);
    const double t = Parameter(*this, plane, direction);
    if (!std::isfinite(t)) return fail(kNoPlane);
    SetResult(result, Centre(*this) + direction * t);
    return true;
}

bool ZoPhoto::CalcSip(ZoPoint* result, const ZoPlane& plane, unsigned int number, bool useMeasure) {
    const ZoPoint* const found = useMeasure ? FindMeasure(number) : FindImo(number);
    if (!found) {
        lastError = kNoPoint;
        return false;
    }
    ZoPoint imagePoint(*found);
    if (!useMeasure) ConvertBiko(&imagePoint, eBikoToImage);
    *result = ZoPoint(number, 0.0, 0.0, 0.0, 0);
    return CalcSip(result, plane, &imagePoint);
}
