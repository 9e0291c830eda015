#include "zorv/photo/camera_pair.h"

#include <cmath>

using ZorvLibAuto::Camera;

ZoCamPair::ZoCamPair(const Camera& camera)
    : first(camera), second(Camera::eCamModelPinhole, camera.GetFocalLength(), camera.width, camera.height) {
    second.id = camera.id;
    mmToPixel.SetIdent();
    pixelToMm.SetIdent();
}

ZoCamPair::ZoCamPair(const Camera& camera, const ZoMatrix& photoPixelToMm) : ZoCamPair(camera) {
    ZoMatrix inverse(photoPixelToMm);
    int status = 0;
    inverse.Invert(&status);
    if (status != 0) return;
    pixelToMm = photoPixelToMm;
    mmToPixel = inverse;
}

bool ZoCamPair::Adjust(double* x, double* y) const {
    return Map(x, y, first, second);
}

bool ZoCamPair::InvAdjust(double* x, double* y) const {
    return Map(x, y, second, first);
}

bool ZoCamPair::Map(double* x, double* y, const Camera& from, const Camera& to) const {
    double pixelX = *x;
    double pixelY = *y;
    mmToPixel.PTrans2D(&pixelX, &pixelY);
    const double height = static_cast<double>(first.height);
    const auto [planeX, planeY] = from.PixelToPlane(pixelX, height - pixelY);
    const auto [column, row] = to.PlaneToPixel(planeX, planeY);
    double mmX = column;
    double mmY = height - row;
    pixelToMm.PTrans2D(&mmX, &mmY);
    if (!std::isfinite(mmX) || !std::isfinite(mmY)) return false;
    *x = mmX;
    *y = mmY;
    return true;
}
