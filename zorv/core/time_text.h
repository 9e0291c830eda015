#pragma once

#include <string>

#include "zorv/export.h"

/// Local time as "2024-05-31  14:03:59", with two blanks; now, or a time in seconds since 1970. What is below 1000 is
/// no time and is returned as its decimal number, as is what lies beyond the calendar.
ZORV_API std::string GetLocalTimeString();
ZORV_API std::string GetLocalTimeString(long long time);

/// Local time as "2024-05-31__14_03_59", for use in a file name. Here small and negative numbers are times too; what
/// lies beyond the calendar is returned as its decimal number.
ZORV_API std::string GetLocalTimeStringForFilename();
ZORV_API std::string GetLocalTimeStringForFilename(long long time);
