// The exterior orientation of a photo.

#include <algorithm>
#include <cmath>

#include "zorv/photo/photo.h"

namespace {

constexpr double kGonOfRadian = 63.66197723675813;

}  // namespace

void ZoPhoto::SetPosAOR(const ZoVector& position) {
    posAOR = position;
    fieldOfView.valid = false;
}

void ZoPhoto::SetPosAOR(double x, double y, double z) {
    SetPosAOR(ZoVector(x, y, z));
}

void ZoPhoto::SetRotAOR(const ZoMatrix& rotation3) {
    rotAOR.AssignSameShape(rotation3);
    fieldOfView.valid = false;
}

void ZoPhoto::SetRotAOR(double a, double b, double c) {
    const double sa = std::sin(a), ca = std::cos(a);
    const double sb = std::sin(b), cb = std::cos(b);
    const double sc = std::sin(c), cc = std::cos(c);
    ZoMatrix& r = rotAOR;
    r[1][1] = cc * cb + sc * sb * sa;
    r[1][2] = cc * sb * sa - cb * sc;
    r[1][3] = ca * sb;
    r[2][1] = ca * sc;
    r[2][2] = ca * cc;
    r[2][3] = -sa;
    r[3][1] = cb * sa * sc - cc * sb;
    r[3][2] = cb * sa * cc + sc * sb;
    r[3][3] = ca * cb;
    fieldOfView.valid = false;
}

void ZoPhoto::SetAOR(const ZoPhoto& other) {
    SetPosAOR(other.posAOR);
    SetRotAOR(other.rotAOR);
    hasAOR = other.hasAOR;
}

void ZoPhoto::GetPosAOR(double& x, double& y, double& z) const {
    x = posAOR[1];
    y = posAOR[2];
    z = posAOR[3];
}

void ZoPhoto::GetRotAOR(double& a, double& b, double& c) const {
    const ZoMatrix& r = rotAOR;
    a = std::asin(std::clamp(-r[2][3], -1.0, 1.0));
    if (std::fabs(r[2][3]) >= 1.0) {
        // Looking along the y axis only the sum or the difference of b and c is determined.
        b = std::atan2(-r[2][3] * r[1][2], r[1][1]);
        c = 0.0;
        return;
    }
    const double k = std::cos(a);
    b = std::atan2(r[1][3] / k, r[3][3] / k);
    c = std::atan2(r[2][1] / k, r[2][2] / k);
}

void ZoPhoto::GetAOR(ZoMatrix* pose) const {
    if (!pose) return;
    const ZoMatrix& r = rotAOR;
    const double values[] = {r[1][1], r[1][2], r[1][3], posAOR[1],  //
                             r[2][1], r[2][2], r[2][3], posAOR[2],  //
                             r[3][1], r[3][2], r[3][3], posAOR[3],  //
                             0.0,     0.0,     0.0,     1.0};
    pose->Set(values, 4, 4);
}

void ZoPhoto::GetAOR(ZoPoint* point, bool gon) const {
    if (!point) return;
    GetPosAOR(point->x, point->y, point->z);
    GetRotAOR(point->dx, point->dy, point->dz);
    if (gon) {
        for (double* angle : {&point->dx, &point->dy, &point->dz})
            *angle *= kGonOfRadian;
    }
    point->SetId(id);
    point->photoId = id;
    point->cameraId = camera.GetId();
}
