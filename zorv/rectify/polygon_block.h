#pragma once

#include "zorv/core/block_writer.h"
#include "zorv/math/polygon.h"

namespace zorv::detail {

/// Writes the points of a polygon, if any, in the columns of the mode in which they are read back, whatever mode the
/// host has given it.
inline void WritePolygon(BlockWriter& out, const char* keyword, const ZoPolygon& polygon, ZOPolygonMode mode) {
    if (!polygon.First()) return;
    if (polygon.mode == mode) return out.Record(keyword, polygon);
    ZoPolygon written(polygon);
    written.mode = mode;
    out.Record(keyword, written);
}

}  // namespace zorv::detail
