#include "zorv/photo/camera_pair.h"

void ZoCamPair::Adjust(double* x, double* y) const {
    mmToPixel.PTrans2D(x, y);
    pixelToMm.PTrans2D(x, y);
}

void ZoCamPair::InvAdjust(double* x, double* y) const {
    mmToPixel.PTrans2D(x, y);
    pixelToMm.PTrans2D(x, y);
}
