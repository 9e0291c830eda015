#pragma once

#include <ctime>
#include <string>

namespace zorv::detail {

/// The calendar form of a time in seconds since 1970, in the local time zone. False when it has none.
bool LocalTime(long long time, std::tm& parts);

/// The calendar form of this moment.
std::tm LocalTimeNow();

/// The 24 characters of the C function ctime, in English whatever the locale, and its line end:
/// "Sun Sep 16 01:03:52 1973\n".
std::string CtimeText(const std::tm& time);

}  // namespace zorv::detail
