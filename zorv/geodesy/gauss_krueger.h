#pragma once

#include <string>

#include "zorv/export.h"
#include "zorv/geodesy/deg_min_sec.h"

/// The Gauss-Krueger grid into which positions are converted: a transverse Mercator projection of the WGS 84 ellipsoid
/// with the scale 0.9996 at a central meridian of choice. One instance serves the whole process, without a lock.
class ZORV_API ZoGKSettings {
  public:
    static ZoGKSettings& Get();

    /// The number of presets, and their texts in UTF-8; empty for an index outside.
    static int GetMaxDefault();
    static std::string GetDefault(int index);
    /// Takes meridian and false coordinates of a preset; `active` stays. False for an index outside.
    bool SetToDefault(int index);

    bool active = false;        ///< whether points may be given in this grid
    DegMinSec meridian;         ///< the central one, east of Greenwich
    double falseEasting = 0.0;  ///< metres
    double falseNorthing = 0.0;
};
