#pragma once

#include <iosfwd>

#include "zorv/points/column_table.h"

class ZoPoint;

namespace zorv::detail {

/// Writes id and coordinates, each behind a blank, with digits that bring every finite number back; others become 0. Of
/// the columns those of id, x, y and z count.
void WriteExactly(std::ostream& stream, const ZoPoint& point, const TZoFormatTable<eZoPointRWMask>& columns);

}  // namespace zorv::detail
