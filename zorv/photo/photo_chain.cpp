// The interior orientation of a photo: camera, trafos, the chain of image coordinates and their scale.

#include <cmath>

#include "zorv/core/number_cast.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/photo_geometry.h"
#include "zorv/photo/reseau_matrix.h"

using zorv::detail::GiveReach;
using zorv::detail::MatrixOf;

namespace {

constexpr double kEmptyWidth = 1e-10;   // mm
constexpr double kPixelProbe = 5.0;     // mm
constexpr double kReachOverHalf = 1.1;  // of the diagonal, so that corners of a slightly shifted image are in reach

ZoMatrix Diagonal(double x, double y) {
    ZoMatrix m(3, 3);
    m[1][1] = x;
    m[2][2] = y;
    m[3][3] = 1.0;
    return m;
}

/// Whether a transformation of that type can scale its axes by different factors.
bool HoldsTwoFactors(eZoTrafo2DType type) {
    return type == eTrafo2DAffin || type == eTrafo2DProjektiv;
}

/// Length of a pixel along a step in the image plane, in mm.
double PixelSizeAlong(const ZoPhoto& photo, double x, double y) {
    ZoPoint origin;
    ZoPoint probe(0, x, y, 0.0, 0);
    const ZoBikoTransform toPixels(&photo, eBikoToDigi, false);
    toPixels.Transform(&origin);
    toPixels.Transform(&probe);
    const double pixels = origin.Distance(probe);
    return std::fabs(kPixelProbe / (pixels == 0.0 ? 1.0 : pixels));
}

}  // namespace

void ZoPhoto::SetCamera(const ZoCamera& newCamera, bool fromClassic) {
    if (&newCamera != &camera) camera.DeleteCamPair();
    camera = newCamera;
    GiveReach(*this);
    camera.CreateLibAutoCam(this, fromClassic);
}

void ZoPhoto::SetCamera(const ZoCamera* newCamera, bool fromClassic) {
    if (newCamera) {
        SetCamera(*newCamera, fromClassic);
    } else {
        GiveReach(*this);
    }
}

void ZoPhoto::SetCamera(const ZorvLibAuto::Camera* newCamera) {
    if (newCamera) camera.SetFromLibAuto(newCamera, this);
    GiveReach(*this);
}

void ZoPhoto::CreateAutoLibCamera() {
    camera.CreateLibAutoCam(this, true);
    GiveReach(*this);
}

void ZoPhoto::SetZorvLibAutoDataFromInternalData() {
    camera.CreateLibAutoCam(this, false);
    for (ZoElspTrafo* each = elspList.First(); each; each = each->Next()) {
        if (each->distortCamera.GetId() != 0) each->distortCamera.CreateLibAutoCam(this, false);
    }
}

ZoMatrix ZoPhoto::GetReseauTrafoMat() const {
    return MatrixOf(mainTrafo) * MatrixOf(preTrafo);
}

bool ZoPhoto::ConvertBiko(ZoPoint* point, eConvertBikoMode mode) const {
    if (!point) return false;
    switch (mode) {
        case eDigiToPre:
            preTrafo.Transform(point);
            return true;
        case eDigiToBiko:
            preTrafo.Transform(point);
            mainTrafo.Transform(point);
            return true;
        case ePreToBiko:
            mainTrafo.Transform(point);
            return true;
        case eDigiToImage:
            preTrafo.Transform(point);
            mainTrafo.Transform(point);
            camera.Adjust(point);
            return true;
        case eBikoToImage:
            camera.Adjust(point);
            return true;
        case eImageToBiko:
            return camera.InvAdjust(point);
        default:
            return ZoBikoTransform(this, mode, false).Transform(point);
    }
}

void ZoPhoto::ConvertList(ZoPointList* list, eConvertBikoMode mode) const {
    if (list) ZoBikoTransform(this, mode, false).Transform(list);
}

void ZoPhoto::PixelRks_Lks(ZoPoint* point) const {
    if (!point) return;
    if (pixelHeight == 0) pixelHeight = zorv::detail::SaturatedInt(digiRegion.Height());
    point->y = pixelHeight - point->y;
}

void ZoPhoto::SetPixelRegion(const ZoRegion& region) {
    digiRegion = region;
    pixelHeight = 0;
}

void ZoPhoto::CalcBikoRegionFromDigiRegion() const {
    ZoPoint low = digiRegion.LL;
    ZoPoint high = digiRegion.UR;
    ConvertBiko(&low, eDigiToBiko);
    ConvertBiko(&high, eDigiToBiko);
    bikoRegion = ZoRegion(low, high);
}

const ZoRegion& ZoPhoto::GetBikoRegion() const {
    if (bikoRegion.Width() < kEmptyWidth) CalcBikoRegionFromDigiRegion();
    return bikoRegion;
}

double ZoPhoto::GetPhotoPixelScale() const {
    const ZoRegion& region = GetBikoRegion();
    return (digiRegion.Width() / region.Width() + digiRegion.Height() / region.Height()) / 2;
}

double ZoPhoto::GetPixelSize() const {
    if (pixelSize == 0.0) pixelSize = std::sqrt(GetPixelSizeX() * GetPixelSizeY());
    return pixelSize;
}

double ZoPhoto::GetPixelSizeX() const {
    return PixelSizeAlong(*this, kPixelProbe, 0.0);
}

double ZoPhoto::GetPixelSizeY() const {
    return PixelSizeAlong(*this, 0.0, kPixelProbe);
}

double ZoPhoto::GetMaxBikoRadius() const {
    const ZoRegion& region = GetBikoRegion();
    return 0.5 * kReachOverHalf * std::hypot(region.Width(), region.Height());
}

bool ZoPhoto::RescaleTo(double factor) {
    if (factor == 0.0 || !std::isfinite(factor)) return false;
    for (ZoPoint* corner : {&digiRegion.LL, &digiRegion.UR}) {
        corner->x *= factor;
        corner->y *= factor;
    }
    scale *= factor;
    pixelSize = 0.0;
    pixelHeight = 0;
    preTrafo.SetFromMatrix(MatrixOf(preTrafo) * Diagonal(1.0 / factor, 1.0 / factor), eTrafo2DHelmert);
    return true;
}

bool ZoPhoto::RescaleTo(double factorX, double factorY) {
    const eZoTrafo2DType type = mainTrafo.GetType();
    if (type == eTrafo2DPolynomial || !std::isfinite(factorX) || !std::isfinite(factorY)) return false;
    if (factorX == 0.0 || factorY == 0.0) return false;
    ConvertList(&imoList, eBikoToDigi);
    pixelSize = 0.0;
    for (ZoPoint* corner : {&bikoRegion.LL, &bikoRegion.UR}) {
        corner->x *= factorX;
        corner->y *= factorY;
    }
    const bool keepsType = HoldsTwoFactors(type) || (type == eTrafo2DHelmert && factorX == factorY);
    mainTrafo.SetFromMatrix(Diagonal(factorX, factorY) * MatrixOf(mainTrafo), keepsType ? type : eTrafo2DAffin);
    GetPixelSize();
    ConvertList(&imoList, eDigiToBiko);
    return true;
}
