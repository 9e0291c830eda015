#include "zorv/math/aligned_rectangle2d.h"

#include <algorithm>
#include <cmath>

#include "zorv/core/number_cast.h"
#include "zorv/math/bounding_box2d.h"
#include "zorv/math/convex_hull.h"

ZoSmallestAlignedRectangle2d::ZoSmallestAlignedRectangle2d(const std::vector<ZoPoint2d>& points)
    : input(&points), hull(ChansConvexHullAlgorithm(points)), diameter(PoligonDiameter(hull)) {
    if (points.empty()) return;
    const double alpha = hull.empty() ? 0.0 : Angle(hull[diameter[0]], hull[diameter[1]]);
    ZoBoundingBox2d box;
    for (ZoPoint2d point : points) {
        point.rotateBy(-alpha);
        box.Update(point.x, point.y);
    }
    angle = alpha;
    corners = {{box.xmin, box.ymin}, {box.xmax, box.ymin}, {box.xmax, box.ymax}, {box.xmin, box.ymax}};
    for (ZoPoint2d& corner : corners)
        corner.rotateBy(alpha);
    length = std::max(box.GetWidth(), box.GetHeight());
    width = std::min(box.GetWidth(), box.GetHeight());
}

double ZoSmallestAlignedRectangle2d::Angle(const ZoPoint2d& p, const ZoPoint2d& q) {
    return std::atan2(q.y - p.y, q.x - p.x);
}

std::vector<std::uint64_t> ZoSmallestAlignedRectangle2d::PoligonDiameter(const std::vector<ZoPoint2d>& polygon) {
    std::vector<std::uint64_t> farthest{0, 0};
    std::int32_t best = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        for (std::size_t j = i + 1; j < polygon.size(); ++j) {
            const std::int32_t distance = zorv::detail::SaturatedInt(polygon[i].distanceToSq(polygon[j]));
            if (distance > best) {
                best = distance;
                farthest = {i, j};
            }
        }
    }
    return farthest;
}
