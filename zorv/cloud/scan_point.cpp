#include "zorv/cloud/scan_point.h"

#include <algorithm>
#include <limits>

#include "zorv/points/point.h"

static_assert(sizeof(ZoScanPoint3d) == 72, "four doubles, eight words and two bytes with the padding behind them");

ZoScanPoint3d::ZoScanPoint3d(const ZoPoint& point)
    : ZoPoint3d(point.x, point.y, point.z),
      extra{static_cast<float>(point.dx), static_cast<float>(point.dy), static_cast<float>(point.dz)},
      normal{point.vx, point.vy, point.vz},
      nbrMeasurements(
          static_cast<std::uint8_t>(std::min<std::uint16_t>(point.imoCount, std::numeric_limits<std::uint8_t>::max()))),
      flags(static_cast<std::uint8_t>(point.GetFlag())),
      color(point.color) {}

int ZoScanPoint3d::GetIntensity() const {
    const std::uint32_t stored = color >> 24;
    if (stored != 0) return static_cast<int>(stored);
    return static_cast<int>(0.21 * GetRed() + 0.72 * GetGreen() + 0.07 * GetBlue());
}

int ZoScanPoint3d::GrayIntensity() const {
    // Weights of the three primaries in 1/65536.
    return (13933 * GetRed() + 46871 * GetGreen() + 4732 * GetBlue() + 32768) >> 16;
}
