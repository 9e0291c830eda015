#include "zorv/math/face2d.h"

#include <algorithm>

#include "zorv/points/point_list.h"

void ZoFace2d::set(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c) {
    v = {a, b, c, ZoVector2d()};
    triangle = true;
    valid = true;
}

void ZoFace2d::set(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c, const ZoVector2d& d) {
    v = {a, b, c, d};
    triangle = false;
    valid = true;
}

bool ZoFace2d::isInside(const ZoVector2d& point) const {
    if (!valid) return false;
    return IsInTriangle(0, 1, 2, point) || (!triangle && IsInTriangle(2, 3, 0, point));
}

// By barycentric coordinates with respect to the first vertex.
bool ZoFace2d::IsInTriangle(std::size_t i0, std::size_t i1, std::size_t i2, const ZoVector2d& point) const {
    const ZoVector2d e1 = v[i1] - v[i0];
    const ZoVector2d e2 = v[i2] - v[i0];
    const ZoVector2d w = point - v[i0];
    const double a = e1.dotProduct(e1);
    const double b = e1.dotProduct(e2);
    const double c = e2.dotProduct(e2);
    const double p = w.dotProduct(e1);
    const double q = w.dotProduct(e2);
    const double k = 1.0 / (c * a - b * b);
    const double u = (c * p - q * b) * k;
    const double s = (q * a - p * b) * k;
    return u >= 0.0 && s >= 0.0 && u + s <= 1.0;
}

bool ZoFace2dContainer::AddFace(ZoPointList& list) {
    std::vector<ZoVector2d> corners;
    for (const ZoPoint* point = list.First(); point && corners.size() <= 4; point = point->NextConst()) {
        corners.emplace_back(point->x, point->y);
    }
    switch (corners.size()) {
        case 3:
            faces.emplace_back(corners[0], corners[1], corners[2]);
            return true;
        case 4:
            faces.emplace_back(corners[0], corners[1], corners[2], corners[3]);
            return true;
        default:
            return false;
    }
}

bool ZoFace2dContainer::isInside(const ZoPoint2d& point) const {
    return std::any_of(faces.begin(), faces.end(), [&point](const ZoFace2d& face) {
        return face.isInside({point.x, point.y});
    });
}

bool ZoFace2dContainer::isInside(const ZoPoint& point) const {
    return isInside(ZoPoint2d(point.x, point.y));
}
