#pragma once

#include <ctime>

namespace zorv::detail {

/// The calendar form of a time in seconds since 1970, in the local time zone. False when it has none.
bool LocalTime(long long time, std::tm& parts);

}  // namespace zorv::detail
