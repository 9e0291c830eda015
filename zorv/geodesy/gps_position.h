#pragma once

#include <string>

#include "zorv/export.h"
#include "zorv/points/point.h"

/// The form in which a GPS position becomes a point. The swapped forms exchange latitude and longitude first, for
/// devices that give them the other way round.
enum DatumMode : int {
    eDatumLatLong = 0,  ///< latitude, longitude (degrees), altitude
    eDatumUtm = 1,      ///< UTM easting, northing, altitude (metres)
    eDatumMgrs = 2,     ///< easting and northing within the MGRS square, altitude
    eDatumGK = 3,       ///< Gauss-Krueger easting, northing, altitude, when ZoGKSettings is active
    eDatumUtmSwapped = 4,
    eDatumMgrsSwapped = 5,
    eDatumGKSwapped = 6,
    eDatumUtm2 = 7,  ///< as eDatumUtm
};

/// A WGS 84 position: latitude and longitude in degrees, altitude in metres; or, in XYZ mode, three plain coordinates.
class ZORV_API ZoGPSPosition {
  public:
    void Clear() { *this = ZoGPSPosition(); }
    /// Whether it was set and, unless in XYZ mode, none of the three values is exactly 0 and both angles are in range.
    bool IsValid() const;
    bool IsModeXYZ() const { return modeXYZ; }
    void SetModeXYZ(bool on);

    double GetLatitude() const { return latitude; }
    double GetLongitude() const { return longitude; }
    double GetAltitude() const { return altitude; }
    void SetLatitude(double degrees);
    void SetLongitude(double degrees);
    void SetAltitude(double metres);
    void SwapLatLong();

    /// Sign of this latitude minus the other's; 0 when one of the two is not valid.
    int Compare(const ZoGPSPosition& other) const;

    /// Degrees, minutes and seconds of both angles, and the altitude, as UTF-8; " - " for an invalid position.
    std::string GetAsDMS() const;
    /// Both angles as numbers, of an invalid position too.
    void GetAsDMS(int* latDeg, int* latMin, double* latSec, int* longDeg, int* longMin, double* longSec) const;

    /// A point in the form of the mode; a new point where the position was never set, the mode is unknown, or a
    /// Gauss-Krueger mode finds the ZoGKSettings inactive. Coordinates that the conversion did not reach are 0 (see
    /// ZoUtmPoint::IsPositionInUtmSpace). The swapped forms give it the text of the position as its name.
    ZoPoint GetAsZoPoint(DatumMode mode) const;
    /// The same in the process-wide mode into a given point, which keeps its other fields and is named after the
    /// position in every mode ("GPS" for latitude and longitude and in XYZ mode). False, with the point unchanged, for
    /// a position that was never set.
    bool GetAsZoPoint(ZoPoint& point) const;

    static DatumMode GetDatumMode() { return s_DatumMode; }
    static void SetDatumMode(DatumMode mode) { s_DatumMode = mode; }

    bool valid = false;  ///< set by every setter, that of the mode included
    bool modeXYZ = false;
    double latitude = 0.0;
    double longitude = 0.0;
    double altitude = 0.0;

    static DatumMode s_DatumMode;
};
