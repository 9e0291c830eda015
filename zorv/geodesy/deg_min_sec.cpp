#include "zorv/geodesy/deg_min_sec.h"

#include <cmath>

#include "zorv/core/number_cast.h"

DegMinSec::DegMinSec(double degrees) {
    const double wholeDegrees = std::floor(degrees);
    const double minutes = (degrees - wholeDegrees) * 60.0;
    const double wholeMinutes = std::floor(minutes);
    deg = zorv::detail::SaturatedInt(wholeDegrees);
    min = zorv::detail::SaturatedInt(wholeMinutes);
    sec = (minutes - wholeMinutes) * 60.0;
}
