#pragma once

#include "zorv/export.h"

/// An angle in degrees, minutes and seconds. A negative angle has negative degrees only: -0.5 is -1 degree, 30 minutes.
struct ZORV_API DegMinSec {
    DegMinSec() = default;
    DegMinSec(int degrees, int minutes, double seconds) : deg(degrees), min(minutes), sec(seconds) {}
    explicit DegMinSec(double degrees);

    /// In degrees.
    double GetDMS() const { return (sec / 60.0 + min) / 60.0 + deg; }

    int deg = 0;
    int min = 0;
    double sec = 0.0;
};
