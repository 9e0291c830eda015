#include "zorv/photo/camera.h"

#include <cmath>

#include "zorv/core/debug_output.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/camera_pair.h"
#include "zorv/photo/camera_parameters.h"

ZoCamera::ZoCamera() = default;
ZoCamera::~ZoCamera() = default;

ZoCamera::ZoCamera(const ZoCamera& other) : TZoFlagNode<ZoCamera>(other) {
    Set(other);
}

ZoCamera::ZoCamera(unsigned int number, double constant, double px, double py, double radial1, double radial2,
                   double zeroRadius, const char* cameraName)
    : TZoFlagNode<ZoCamera>(number, string2wstring(cameraName)),
      c(constant),
      xh(px),
      yh(py),
      a1(radial1),
      a2(radial2),
      r0(zeroRadius) {}

ZoCamera::ZoCamera(ZoReaderObject* object, bool fullData) {
    fullData ? ReadFullData(object) : Read(object);
}

ZoCamera& ZoCamera::operator=(const ZoCamera& other) {
    Set(other);
    return *this;
}

void ZoCamera::Set(const ZoCamera& other) {
    if (this == &other) return;
    id = other.id;
    name = other.name;
    mode = other.mode;
    for (const auto& parameter : zorv::detail::kCameraParameters)
        this->*parameter.member = other.*parameter.member;
    libAutoModel = other.libAutoModel;
    libAutoFlags = other.libAutoFlags;
    RememberInversion(0.0, 0.0, 0.0, 0.0);
    if (other.camPair) camPair = std::make_unique<ZoCamPair>(*other.camPair);
}

void ZoCamera::SetTs15(double constant, double px, double py) {
    constexpr double kInstrumentReach = 8.0;  // mm
    mode = kInstrumentMode;
    xhViva = px;
    yhViva = py;
    rmax = kInstrumentReach;
    cViva = c;
    c = constant;
}

double ZoCamera::GetXhYhRadius() const {
    return Calc_r(xhViva, yhViva) + Calc_r(xh, yh);
}

void ZoCamera::DeleteCamPair() {
    camPair.reset();
}

void ZoCamera::RememberInversion(double inX, double inY, double outX, double outY) const {
    lastInX = inX;
    lastInY = inY;
    lastOutX = outX;
    lastOutY = outY;
}

void ZoCamera::DbgPrintf(const char* prefix) const {
    const char* text = prefix ? prefix : "";
    switch (mode) {
        case kPinholeMode:
            dbgprintf("%s Pinhole c %.4f", text, c);
            break;
        case kClassicMode:
            dbgprintf("%s Zorv c %.4f, xh %.4f, yh %.4f, a1 %.4f, a2 %.4f, r0 %.4f", text, c, xh, yh, a1, a2, r0);
            break;
        case kInstrumentMode:
            dbgprintf(
                "%s Viva c %.4f, xh %.4f, yh %.4f, a1 %.4f, a2 %.4f, r0 %.4f | cViva %.4f, xhViva %.4f, yhViva %.4f",
                text, c, xh, yh, a1, a2, r0, cViva, xhViva, yhViva);
            break;
        default:
            break;
    }
}
