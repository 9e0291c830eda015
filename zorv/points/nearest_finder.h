#pragma once

#include <cstdint>
#include <vector>

#include "zorv/export.h"
#include "zorv/points/point.h"
#include "zorv/points/point_list.h"

/// Sorts the points of a list into square rings around a position, by their x and y.
class ZORV_API ZoNearestImoFinder {
  public:
    ZoNearestImoFinder() = default;
    ZoNearestImoFinder(ZoPointList* points, const ZoPoint& position) { Set(points, position); }
    /// Runs Calc too.
    ZoNearestImoFinder(ZoPointList* points, const ZoPoint& position, const std::vector<double>& searchRadii);

    /// The list stays the host's; the position is copied.
    void Set(ZoPointList* points, const ZoPoint& position);

    /// Finds for each point of the list the smallest square around the position that holds it, bounds included; the
    /// radii are half the sides of the squares, in the unit of the list. Results of an earlier call are replaced.
    /// Without radii or without a list nothing happens.
    void Calc(const std::vector<double>& searchRadii);

    ZoPointList* list = nullptr;
    ZoPoint point;
    std::vector<double> radii;                            ///< ascending
    std::vector<std::vector<std::uint32_t>> idsByRadius;  ///< for each radius, in the order of the list
    std::vector<double> minX;                             ///< the square of each radius
    std::vector<double> maxX;
    std::vector<double> minY;
    std::vector<double> maxY;
};
