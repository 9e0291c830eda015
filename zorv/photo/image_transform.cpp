#include "zorv/photo/image_transform.h"

#include <cmath>

#include "zorv/math/point3d.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/reseau_matrix.h"

using zorv::detail::MatrixOf;

namespace {

constexpr double kSmallestDepth = 1e-8;  // in the place of a depth of 0

ZoMatrix Inverted(ZoMatrix m) {
    m.Invert();
    return m;
}

ZoMatrix Identity() {
    ZoMatrix m(3, 3);
    m.SetIdent();
    return m;
}

/// The linear part of a conversion without a polynomial: P takes Digi to Pre, Q Pre to Biko.
ZoMatrix LinearPart(eConvertBikoMode mode, const ZoMatrix& p, const ZoMatrix& q) {
    switch (mode) {
        case eDigiToPre:
            return p;
        case eDigiToBiko:
        case eDigiToImage:
            return q * p;
        case ePreToBiko:
            return q;
        case eBikoToDigi:
        case eImageToDigi:
        case eObjectToDigi:
            return Inverted(q * p);
        case ePreToDigi:
            return Inverted(p);
        case eBikoToPre:
            return Inverted(q);
        default:
            return Identity();
    }
}

/// What remains of it beside a polynomial main trafo.
ZoMatrix PartBesidePolynomial(eConvertBikoMode mode, const ZoMatrix& p) {
    switch (mode) {
        case eDigiToPre:
        case eDigiToBiko:
        case eDigiToImage:
            return p;
        case eBikoToDigi:
        case ePreToDigi:
        case eImageToDigi:
        case eObjectToDigi:
            return Inverted(p);
        default:
            return Identity();
    }
}

/// The collinearity equations: object coordinates to corrected image coordinates.
void Project(const ZoPhoto& photo, double* x, double* y, double* z) {
    const ZoMatrix& r = photo.rotAOR;
    const ZoVector& centre = photo.posAOR;
    const double dx = *x - centre[1];
    const double dy = *y - centre[2];
    const double dz = *z - centre[3];
    const double c = std::fabs(photo.camera.c);
    double n = r[1][3] * dx + r[2][3] * dy + r[3][3] * dz;
    if (n == 0.0) n = kSmallestDepth;
    *x = -c * (r[1][1] * dx + r[2][1] * dy + r[3][1] * dz) / n;
    *y = -c * (r[1][2] * dx + r[2][2] * dy + r[3][2] * dz) / n;
    *z = 0.0;
}

}  // namespace

void ZoBikoTransform::Set(const ZoPhoto* source, eConvertBikoMode conversion, bool flipDigi) {
    photo = source;
    poly = false;
    mode = conversion;
    flip = flipDigi;
    matrix.SetIdent();
    width = height = 0.0;
    if (!photo) return;
    width = photo->digiRegion.Width();
    height = photo->digiRegion.Height();
    const ZoMatrix p = MatrixOf(photo->preTrafo);
    if (photo->mainTrafo.GetType() == eTrafo2DPolynomial) {
        poly = true;
        mainTrafo = photo->mainTrafo;
        polyInvTrafo = photo->polyInvTrafo;
        matrix = PartBesidePolynomial(mode, p);
    } else {
        matrix = LinearPart(mode, p, MatrixOf(photo->mainTrafo));
    }
    if (photo->HasAOR()) {
        const ZoMatrix& r = photo->rotAOR;
        viewDirection = ZoVector(r[1][3], r[2][3], r[3][3]).Normalize();
    }
}

bool ZoBikoTransform::Transform(double* x, double* y, double* z) const {
    if (!photo) return false;
    const ZoCamera& camera = photo->camera;
    const auto flipRows = [&] {
        if (flip) *y = height - *y;
    };
    const auto flipInside = [&](bool good) {
        if (!flip) return good;
        *y = height - *y;
        return good && *x >= 1 && *y >= 1 && *x < width - 1 && *y < height - 1;
    };
    const auto polyInverse = [&] {
        if (poly) polyInvTrafo.Transform(x, y);
    };
    const auto digiToBiko = [&] {
        flipRows();
        matrix.PTrans2D(x, y);
        if (poly) mainTrafo.Transform(x, y);
    };
    const auto bikoToDigi = [&] {
        polyInverse();
        matrix.PTrans2D(x, y);
        flipRows();
    };
    switch (mode) {
        case eDigiToPre:
            matrix.PTrans2D(x, y);
            return true;
        case eDigiToBiko:
            digiToBiko();
            return true;
        case ePreToBiko:
            poly ? mainTrafo.Transform(x, y) : matrix.PTrans2D(x, y);
            return true;
        case eDigiToImage:
            digiToBiko();
            camera.Adjust(x, y);
            return true;
        case eBikoToImage:
            camera.Adjust(x, y);
            return true;
        case eBikoToDigi:
            bikoToDigi();
            return true;
        case ePreToDigi:
            matrix.PTrans2D(x, y);
            flipRows();
            return true;
        case eBikoToPre:
            poly ? polyInvTrafo.Transform(x, y) : matrix.PTrans2D(x, y);
            return true;
        case eImageToBiko:
            camera.InvAdjust(x, y);
            return true;
        case eImageToDigi:
            camera.InvAdjust(x, y);
            bikoToDigi();
            return true;
        case eObjectToImage:
            Project(*photo, x, y, z);
            return flipInside(true);
        case eObjectToBiko:
            Project(*photo, x, y, z);
            if (!camera.InvAdjust(x, y)) return false;
            return flipInside(true);
        case eObjectToDigi:
            Project(*photo, x, y, z);
            if (!camera.InvAdjust(x, y)) return false;
            polyInverse();
            return flipInside(matrix.PTrans2D(x, y));
        default:
            return true;
    }
}

bool ZoBikoTransform::Transform(ZoPoint* point) const {
    return point && Transform(&point->x, &point->y, &point->z);
}

bool ZoBikoTransform::Transform(ZoPoint3d& point) const {
    double x = point.x();
    double y = point.y();
    double z = point.z();
    const bool good = Transform(&x, &y, &z);
    point.x() = x;
    point.y() = y;
    point.z() = z;
    return good;
}

bool ZoBikoTransform::Transform(ZoVector& vector) const {
    return Transform(&vector[1], &vector[2], &vector[3]);
}

void ZoBikoTransform::Transform(ZoPointList* list) const {
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next())
        Transform(&point->x, &point->y, &point->z);
}

bool ZoBikoTransform::IsInPhotoView(double x, double y, double z) const {
    if (!photo) return false;
    const ZoVector towards = (photo->posAOR - ZoVector(x, y, z)).Normalize();
    return (viewDirection + towards).Abs() >= 1.0;
}
