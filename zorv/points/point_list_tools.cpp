#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <unordered_set>
#include <vector>

#include "zorv/core/sort_helper.h"
#include "zorv/points/point_list.h"

int FindCommonZoPointById(const ZoPointList& a, const ZoPointList& b, ZoPointList* out) {
    if (!out) return 0;
    std::unordered_set<unsigned int> ids;
    for (const ZoPoint* point = b.First(); point; point = point->NextConst())
        ids.insert(point->id);

    int common = 0;
    // `out` may be `a`: what is added behind its last point is not looked at.
    const ZoPoint* last = a.Last();
    for (const ZoPoint* point = a.First(); point; point = point->NextConst()) {
        if (ids.contains(point->id)) {
            out->Add(*point);
            ++common;
        }
        if (point == last) break;
    }
    return common;
}

int MergeCooCoo2(ZoPointList& coo, ZoPointList& coo2) {
    if (coo2.IsEmpty()) return 0;
    const ZoSortHelper<ZoPoint> targets(&coo);
    int updated = 0;
    for (const ZoPoint* source = coo2.First(); source; source = source->NextConst()) {
        ZoPoint* target = targets.Find(source->id);
        if (!target) continue;
        target->name = source->name;
        target->flags = source->flags;
        target->dx = source->dx;
        target->dy = source->dy;
        target->dz = source->dz;
        target->residualX = source->residualX;
        target->residualY = source->residualY;
        target->residualZ = source->residualZ;
        target->vx = source->vx;
        target->vy = source->vy;
        target->vz = source->vz;
        target->imoCount = source->imoCount;
        target->color = source->color;
        ++updated;
    }
    return updated;
}

ZoPoint ZoCalcGravitycenter(const ZoPointList& points) {
    ZoPoint mean;
    double n = 0.0;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst()) {
        // (mean * n + point) / (n + 1), without a copy of the record: differences are not scaled.
        mean.x = (mean.x * n + point->x) / (n + 1.0);
        mean.y = (mean.y * n + point->y) / (n + 1.0);
        mean.z = (mean.z * n + point->z) / (n + 1.0);
        mean.dx += point->dx;
        mean.dy += point->dy;
        mean.dz += point->dz;
        n += 1.0;
    }
    return mean;
}

namespace {

/// Direction of a difference of coordinates in degrees of a pseudo-angle: right 0, up 90, left 180, down 270, and
/// between them the share of dy in |dx| + |dy|.
double PseudoAngle(double dx, double dy) {
    double t = dx == 0.0 && dy == 0.0 ? 0.0 : dy / (std::abs(dx) + std::abs(dy));
    if (dx < 0.0) {
        t = 2.0 - t;
    } else if (dy < 0.0) {
        t += 4.0;
    }
    return t * 90.0;
}

}  // namespace

int ZoSimpleClosedPath(const ZoPointList& in, ZoPointList* out) {
    if (!out) return 0;
    ZoPointList points(in);
    out->Destroy();
    if (points.IsEmpty()) return 0;

    ZoPoint* pivot = points.First();
    for (ZoPoint* point = pivot; point; point = point->Next()) {
        if (point->y < pivot->y) pivot = point;
    }

    std::vector<ZoPoint*> path;
    for (ZoPoint* point = points.First(); point; point = point->Next()) {
        point->residualX = PseudoAngle(point->x - pivot->x, point->y - pivot->y);
        if (point != pivot) path.push_back(point);
    }
    // Without a number there is no order: such points go to the end.
    const auto angle = [](const ZoPoint* point) {
        return std::isnan(point->residualX) ? std::numeric_limits<double>::infinity() : point->residualX;
    };
    std::stable_sort(path.begin(), path.end(),
                     [&angle](const ZoPoint* a, const ZoPoint* b) { return angle(a) < angle(b); });

    ZoPointList ordered;
    ordered.Add(points.Subtract(pivot));
    for (ZoPoint* point : path)
        ordered.Add(points.Subtract(point));
    ordered.MoveTo(out);
    return static_cast<int>(path.size()) + 1;
}
