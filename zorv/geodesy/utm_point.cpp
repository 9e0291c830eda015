#include "zorv/geodesy/utm_point.h"

#include <cmath>
#include <exception>
#include <string_view>

#include <GeographicLib/MGRS.hpp>
#include <GeographicLib/TransverseMercator.hpp>
#include <GeographicLib/UTMUPS.hpp>

#include "zorv/core/number_format.h"
#include "zorv/core/string_tools.h"
#include "zorv/geodesy/gauss_krueger.h"
#include "zorv/geodesy/gps_position.h"

namespace {

constexpr std::size_t kMgrsDigits = 8;  // each for easting and northing: millimetres
constexpr double kMillimetres = 1000.0;

}  // namespace

bool ZoUtmPoint::FromGPSPosition(const ZoGPSPosition& position) {
    const double latitude = position.GetLatitude();
    const double longitude = position.GetLongitude();
    if (!std::isfinite(latitude) || !std::isfinite(longitude)) return false;
    try {
        double convergence = 0.0;
        double scale = 0.0;
        GeographicLib::UTMUPS::Forward(latitude, longitude, zone, north, easting, northing, convergence, scale,
                                       GeographicLib::UTMUPS::STANDARD, false);
        altitude = position.GetAltitude();
        zoneText = GeographicLib::UTMUPS::EncodeZone(zone, north);
        utmText = zoneText + StringPrintf(" %.3f %.3f %.3f m", easting, northing, altitude);

        GeographicLib::MGRS::Forward(zone, north, easting, northing, static_cast<int>(kMgrsDigits), mgrsText);
        if (mgrsText.size() < 2 * kMgrsDigits) return false;
        const std::string_view digits = std::string_view(mgrsText).substr(mgrsText.size() - 2 * kMgrsDigits);
        mgrsEasting = zorv::detail::ParseDouble(digits.substr(0, kMgrsDigits)) / kMillimetres;
        mgrsNorthing = zorv::detail::ParseDouble(digits.substr(kMgrsDigits)) / kMillimetres;

        const ZoGKSettings& settings = ZoGKSettings::Get();
        const DegMinSec& meridian = settings.meridian;
        const double centralMeridian = meridian.deg + (meridian.min + meridian.sec / 60.0) / 60.0;
        double x = 0.0;
        double y = 0.0;
        GeographicLib::TransverseMercator::UTM().Forward(centralMeridian, latitude, longitude, x, y, convergence,
                                                         scale);
        gkEasting = x + settings.falseEasting;
        gkNorthing = y + settings.falseNorthing;
        gkText = StringPrintf("%.3f %.3f %.3f m", gkEasting, gkNorthing, altitude);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void ZoUtmPoint::Clear() {
    altitude = 0.0;
    easting = 0.0;
    northing = 0.0;
}

bool ZoUtmPoint::IsPositionInUtmSpace(const ZoGPSPosition& position) {
    constexpr double kSouthernLimit = -80.0;
    constexpr double kNorthernLimit = 84.0;
    return position.GetLatitude() >= kSouthernLimit && position.GetLatitude() <= kNorthernLimit;
}
