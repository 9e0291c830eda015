#include "zorv/geodesy/gps_position.h"

#include <cmath>
#include <utility>

#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"
#include "zorv/geodesy/deg_min_sec.h"
#include "zorv/geodesy/gauss_krueger.h"
#include "zorv/geodesy/utm_point.h"

DatumMode ZoGPSPosition::s_DatumMode = eDatumLatLong;

namespace {

/// Coordinates and text of a position in the form of a mode.
struct Form {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    std::string text;
};

bool IsSwapped(DatumMode mode) {
    return mode == eDatumUtmSwapped || mode == eDatumMgrsSwapped || mode == eDatumGKSwapped;
}

Form FormOf(const ZoGPSPosition& position, DatumMode mode) {
    if (position.modeXYZ || mode == eDatumLatLong) {
        return {position.latitude, position.longitude, position.altitude, "GPS"};
    }
    ZoGPSPosition turned(position);
    if (IsSwapped(mode)) turned.SwapLatLong();
    const ZoUtmPoint utm(turned);
    switch (mode) {
        case eDatumUtm:
        case eDatumUtmSwapped:
        case eDatumUtm2:
            return {utm.easting, utm.northing, utm.altitude, utm.utmText};
        case eDatumMgrs:
        case eDatumMgrsSwapped:
            return {utm.mgrsEasting, utm.mgrsNorthing, utm.altitude, utm.mgrsText};
        case eDatumGK:
        case eDatumGKSwapped:
            if (!ZoGKSettings::Get().active) return {0.0, 0.0, 0.0, utm.gkText};
            return {utm.gkEasting, utm.gkNorthing, utm.altitude, utm.gkText};
        default:
            return {};
    }
}

}  // namespace

bool ZoGPSPosition::IsValid() const {
    if (!valid) return false;
    if (modeXYZ) return true;
    if (latitude == 0.0 || longitude == 0.0 || altitude == 0.0) return false;
    return std::fabs(latitude) <= 90.0 && std::fabs(longitude) <= 180.0;
}

void ZoGPSPosition::SetModeXYZ(bool on) {
    modeXYZ = on;
    valid = true;
}

void ZoGPSPosition::SetLatitude(double degrees) {
    latitude = degrees;
    valid = true;
}

void ZoGPSPosition::SetLongitude(double degrees) {
    longitude = degrees;
    valid = true;
}

void ZoGPSPosition::SetAltitude(double metres) {
    altitude = metres;
    valid = true;
}

void ZoGPSPosition::SwapLatLong() {
    std::swap(latitude, longitude);
}

int ZoGPSPosition::Compare(const ZoGPSPosition& other) const {
    if (!IsValid() || !other.IsValid()) return 0;
    const double difference = latitude - other.latitude;
    return difference < 0.0 ? -1 : difference > 0.0 ? 1 : 0;
}

std::string ZoGPSPosition::GetAsDMS() const {
    if (!IsValid()) return " - ";
    const DegMinSec north(latitude);
    const DegMinSec east(longitude);
    return StringPrintf("%d\xC2\xB0 %d' %.3f\"    %d\xC2\xB0 %d' %.3f\"   %.2fm", north.deg, north.min, north.sec,
                        east.deg, east.min, east.sec, altitude);
}

void ZoGPSPosition::GetAsDMS(int* latDeg, int* latMin, double* latSec, int* longDeg, int* longMin,
                             double* longSec) const {
    const DegMinSec north(latitude);
    const DegMinSec east(longitude);
    *latDeg = north.deg;
    *latMin = north.min;
    *latSec = north.sec;
    *longDeg = east.deg;
    *longMin = east.min;
    *longSec = east.sec;
}

ZoPoint ZoGPSPosition::GetAsZoPoint(DatumMode mode) const {
    ZoPoint point;
    if (!valid) return point;
    const Form form = FormOf(*this, mode);
    point = ZoPoint(0, form.x, form.y, form.z, 0);
    const bool withoutGrid = mode == eDatumGKSwapped && !ZoGKSettings::Get().active;
    if (IsSwapped(mode) && !modeXYZ && !withoutGrid) point.SetName(string2wstring(form.text));
    return point;
}

bool ZoGPSPosition::GetAsZoPoint(ZoPoint& point) const {
    if (!valid) return false;
    const Form form = FormOf(*this, s_DatumMode);
    point.x = form.x;
    point.y = form.y;
    point.z = form.z;
    point.SetName(string2wstring(form.text));
    return true;
}
