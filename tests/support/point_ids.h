#pragma once

#include <vector>

#include "zorv/points/point_list.h"

using Ids = std::vector<unsigned int>;

/// The ids of the points in the order of the list.
inline Ids IdsOf(const ZoPointList& list) {
    Ids ids;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        ids.push_back(point->GetId());
    return ids;
}
