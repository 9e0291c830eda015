#pragma once

#include "zorv/math/matrix.h"
#include "zorv/photo/reseau_trafo.h"

namespace zorv::detail {

/// What BuildMatrix makes of a photo's transformation.
inline ZoMatrix MatrixOf(const ZoReseauTrafo& trafo) {
    ZoMatrix m(3, 3);
    trafo.BuildMatrix(&m);
    return m;
}

}  // namespace zorv::detail
