#pragma once

#include <initializer_list>

#include "zorv/points/point_list.h"

/// A list of these points.
inline ZoPointList PointsOf(std::initializer_list<ZoPoint> points) {
    ZoPointList list;
    for (const ZoPoint& point : points)
        list.Add(point);
    return list;
}
