// Rays of a photo and where they meet a plane.

#include <cmath>

#include "zorv/math/line3d.h"
#include "zorv/photo/photo.h"

namespace {

enum SipError : std::int32_t { kNoOrientation = 1, kNoPlane = 2, kNoPoint = 3 };

/// The direction of an image point in object space, as long as in the camera frame.
ZoVector Direction(const ZoPhoto& photo, double x, double y) {
    return photo.rotAOR * ZoVector(x, y, -std::fabs(photo.camera.c));
}

ZoVector EndPoint(const ZoPhoto& photo, const ZoPoint& imagePoint, double length) {
    return photo.posAOR + Direction(photo, imagePoint.x, imagePoint.y).Normalize() * length;
}

/// A point of the plane: on a coordinate axis or, where that is at infinity, the foot of the origin.
ZoVector PointOf(const ZoPlane& plane) {
    const ZoVector point = plane.CalcPlaneVectorForSip();
    if (std::isfinite(point[1]) && std::isfinite(point[2]) && std::isfinite(point[3])) return point;
    return plane.norm * (-plane.d / (plane.norm * plane.norm));
}

/// How far along the direction the ray meets the plane, in lengths of the direction.
double Parameter(const ZoPhoto& photo, const ZoPlane& plane, const ZoVector& direction) {
    return plane.norm * (PointOf(plane) - photo.posAOR) / (plane.norm * direction);
}

void SetResult(ZoPoint* result, const ZoPhoto& photo, const ZoVector& direction, double t) {
    result->x = photo.posAOR[1] + t * direction[1];
    result->y = photo.posAOR[2] + t * direction[2];
    result->z = photo.posAOR[3] + t * direction[3];
}

}  // namespace

void ZoPhoto::SetRayStart(ZoLine3d& ray) const {
    ray.start = ZoPoint3d(posAOR[1], posAOR[2], posAOR[3]);
}

void ZoPhoto::CalcRay(ZoLine3d& ray, const ZoPoint* imagePoint) const {
    SetRayStart(ray);
    const ZoVector d = Direction(*this, imagePoint->x, imagePoint->y).Normalize();
    ray.direction = ZoVector3d(d[1], d[2], d[3]);
}

void ZoPhoto::CalcRayDirection(ZoLine3d& ray, double x, double y) const {
    double z = 0.0;
    bikoTransform.Transform(&x, &y, &z);
    const ZoVector d = Direction(*this, x, y).Normalize();
    ray.direction = ZoVector3d(d[1], d[2], d[3]);
}

bool ZoPhoto::CalcRayEndPoint(double& x, double& y, double& z, const ZoPoint* imagePoint, const double& length) const {
    const ZoVector end = EndPoint(*this, *imagePoint, length);
    x = end[1];
    y = end[2];
    z = end[3];
    return true;
}

bool ZoPhoto::CalcRayEndPoint(ZoPoint* result, const ZoPoint* imagePoint, const double& length) const {
    return CalcRayEndPoint(result->x, result->y, result->z, imagePoint, length);
}

void ZoPhoto::CalcSipNoErrorCheck(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint) const {
    const ZoVector direction = Direction(*this, imagePoint->x, imagePoint->y);
    SetResult(result, *this, direction, Parameter(*this, plane, direction));
}

bool ZoPhoto::CalcSip(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint) {
    const auto fail = [this](SipError reason) {
        lastError = reason;
        return false;
    };
    if (!hasAOR) return fail(kNoOrientation);
    if (!plane.IsValid()) return fail(kNoPlane);
    if (!imagePoint) return fail(kNoPoint);
    const ZoVector direction = Direction(*this, imagePoint->x, imagePoint->y);
    const double t = Parameter(*this, plane, direction);
    if (!std::isfinite(t)) return fail(kNoPlane);
    SetResult(result, *this, direction, t);
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
