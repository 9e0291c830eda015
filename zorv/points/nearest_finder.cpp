#include "zorv/points/nearest_finder.h"

#include <algorithm>
#include <cmath>

ZoNearestImoFinder::ZoNearestImoFinder(ZoPointList* points, const ZoPoint& position,
                                       const std::vector<double>& searchRadii) {
    Set(points, position);
    Calc(searchRadii);
}

void ZoNearestImoFinder::Set(ZoPointList* points, const ZoPoint& position) {
    list = points;
    point = position;
}

void ZoNearestImoFinder::Calc(const std::vector<double>& searchRadii) {
    if (searchRadii.empty() || !list) return;
    radii = searchRadii;
    // What is not a number has a square without points and stands in front of all others.
    std::sort(radii.begin(), radii.end(),
              [](double a, double b) { return a < b || (std::isnan(a) && !std::isnan(b)); });

    minX.clear();
    maxX.clear();
    minY.clear();
    maxY.clear();
    for (const double radius : radii) {
        minX.push_back(point.x - radius);
        maxX.push_back(point.x + radius);
        minY.push_back(point.y - radius);
        maxY.push_back(point.y + radius);
    }

    idsByRadius.assign(radii.size(), {});
    for (const ZoPoint* each = list->First(); each; each = each->NextConst()) {
        const auto isInSquare = [&](std::size_t i) {
            return each->x >= minX[i] && each->x <= maxX[i] && each->y >= minY[i] && each->y <= maxY[i];
        };
        std::size_t smallest = radii.size();
        while (smallest > 0 && isInSquare(smallest - 1))
            --smallest;
        if (smallest < radii.size()) idsByRadius[smallest].push_back(each->GetId());
    }
}
