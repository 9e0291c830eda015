#pragma once

#include "zorv/export.h"

class ZoPoint;
class ZoRegion;

/// Units of length, and two of angle, as records and files number them.
enum eZoUnit : int {
    eZoUnitNone = 0,
    eZoUnitMm = 1,
    eZoUnitCm = 2,
    eZoUnitM = 3,
    eZoUnitMicron = 4,
    eZoUnitFoot = 5,
    eZoUnitInch = 6,
    eZoUnitPixel = 7,
    eZoUnitDegree = 10,
    eZoUnitGon = 11,
};

/// Units of angle. Any other value counts as radian.
enum eZoAngleUnit : int {
    eZoAngleRadian = 1,
    eZoAngleDegree = 2,
    eZoAngleGon = 3,
};

/// The unit that a text names, found by substring without regard to case: "µm", "mm", "cm", "m", "ft", "in", "pixel",
/// the first hit in this order deciding. So every other text with an "m" in it means metres. eZoUnitNone for no hit
/// and for null.
ZORV_API eZoUnit GetZoUnit(const wchar_t* text);

/// Length of one unit in metres, or of one angle unit in radians; 1 for pixels, for no unit and for unknown values.
ZORV_API double GetUnitFactor(eZoUnit unit);
/// What a value in `from` is multiplied by to be one in `to`.
ZORV_API double GetUnitFactor(eZoUnit from, eZoUnit to);

/// Converts the value in place.
ZORV_API void ConvertUnit(double* value, eZoUnit from, eZoUnit to);
/// Converts x, y, z and dx, dy, dz in place.
ZORV_API void ConvertUnit(ZoPoint* point, eZoUnit from, eZoUnit to);
/// Converts both corners.
ZORV_API void ConvertUnit(ZoRegion* region, eZoUnit from, eZoUnit to);

/// The angle in another unit, by way of radians. From radians to radians the value stays exactly as it is.
ZORV_API double ConvertAngle(const double& value, eZoAngleUnit from, eZoAngleUnit to);
