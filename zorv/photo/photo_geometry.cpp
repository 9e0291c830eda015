#include "zorv/photo/photo_geometry.h"

namespace zorv::detail {

// A photo is a name only so far: a host has none to hand over but null.
std::optional<PhotoGeometry> GeometryOf(ZoPhoto*) {
    return std::nullopt;
}

}  // namespace zorv::detail
