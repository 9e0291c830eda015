#pragma once

#include "zorv/points/column_table.h"

namespace zorv::detail {

/// The columns of the points of a photo's region of interest.
inline constexpr eZoPointRWMask kRegionOfInterestColumns[] = {eZoRWId, eZoRWX, eZoRWY, eZoRWDx, eZoRWDy, eZoRWEnd};

}  // namespace zorv::detail
