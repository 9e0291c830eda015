#include "zorv/photo/camera_pair.h"

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

void ZoCamPair::Adjust(double* x, double* y) const {
    Map(x, y, first, second);
}

void ZoCamPair::InvAdjust(double* x, double* y) const {
    Map(x, y, second, first);
}

void ZoCamPair::Map(double* x, double* y, const Camera& from, const Camera& to) const {
    double pixelX = *x;
    double pixelY = *y;
    mmToPixel.PTrans2D(&pixelX, &pixelY);
    const double height = static_cast<double>(first.height);
    const auto [planeX, planeY] = from.PixelToPlane(pixelX, height - pixelY);
    const auto [column, row] = to.PlaneToPixel(planeX, planeY);
    *x = column;
    *y = height - row;
    pixelToMm.PTrans2D(x, y);
}
