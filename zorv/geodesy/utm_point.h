#pragma once

#include <string>

#include "zorv/export.h"

class ZoGPSPosition;

/// A WGS 84 position in UTM (UPS beyond its range), MGRS and Gauss-Krueger, metres. The geodesy is GeographicLib's
/// (C. Karney, "Transverse Mercator with an accuracy of a few nanometers", J. Geodesy 85 (2011), 475-485).
class ZORV_API ZoUtmPoint {
  public:
    ZoUtmPoint() = default;
    /// Converts; see FromGPSPosition.
    explicit ZoUtmPoint(const ZoGPSPosition& position) { FromGPSPosition(position); }

    /// False for a latitude beyond the poles, angles that are not finite, and what the projections refuse; the fields
    /// hold what was reached.
    bool FromGPSPosition(const ZoGPSPosition& position);
    /// Altitude, easting and northing become 0.
    void Clear();

    /// Whether the latitude lies in the range of UTM, from -80 to 84 degrees inclusive.
    static bool IsPositionInUtmSpace(const ZoGPSPosition& position);

    std::string zoneText;  ///< "33n"
    std::string utmText;   ///< zone, easting, northing, altitude
    std::string mgrsText;  ///< with 8 digits each for easting and northing, to the millimetre
    double altitude = 0.0;
    double easting = 0.0;
    double northing = 0.0;
    int zone = 0;  ///< 0 for UPS
    bool north = false;
    double mgrsEasting = 0.0;  ///< within the square of 100 km
    double mgrsNorthing = 0.0;
    double gkEasting = 0.0;  ///< by ZoGKSettings, whether they are active or not
    double gkNorthing = 0.0;
    std::string gkText;
};
