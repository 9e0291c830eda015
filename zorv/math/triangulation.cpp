#include "zorv/math/triangulation.h"

#include <algorithm>
#include <optional>

#include "zorv/math/line.h"

namespace {

/// The vertex with its neighbours in the ring.
ZoPointTripel Around(const ZoPointList& ring, ZoPoint* vertex) {
    ZoPointTripel tripel;
    tripel.points = {vertex->Previous() ? vertex->Previous() : ring.Last(), vertex,
                     vertex->Next() ? vertex->Next() : ring.First()};
    tripel.visible = {true, true, true};
    return tripel;
}

/// The next vertex from `from` on, or from the first, at which the ring does not turn clockwise.
std::optional<ZoPointTripel> NextConvex(const ZoPointList& ring, ZoPoint* from) {
    for (ZoPoint* begin : {from ? from : ring.First(), from ? ring.First() : nullptr}) {
        for (ZoPoint* vertex = begin; vertex; vertex = vertex->Next()) {
            const ZoPointTripel tripel = Around(ring, vertex);
            if (ZoCounterClockwise(*tripel[0], *tripel[1], *tripel[2]) >= 0) return tripel;
        }
    }
    return std::nullopt;
}

/// Crossing parity of a ray towards increasing x.
bool IsInside(const ZoPointTripel& tripel, const ZoPoint& point) {
    static constexpr int kEdges[][2] = {{0, 2}, {1, 0}, {2, 1}};
    bool inside = false;
    for (const auto& [from, to] : kEdges) {
        const ZoPoint& a = *tripel[from];
        const ZoPoint& b = *tripel[to];
        if (point.y < std::min(a.y, b.y) || point.y >= std::max(a.y, b.y)) continue;
        if (a.x + (point.y - a.y) * (b.x - a.x) / (b.y - a.y) > point.x) inside = !inside;
    }
    return inside;
}

bool IsEar(const ZoPointList& ring, const ZoPointTripel& tripel) {
    for (const ZoPoint* point = ring.First(); point; point = point->NextConst()) {
        if (!tripel.IsInTripel(point) && IsInside(tripel, *point)) return false;
    }
    return true;
}

}  // namespace

ZoTriangulatePolygon::ZoTriangulatePolygon(const ZoPointList& polygon) {
    ZoPointList ring(polygon);
    int left = ring.Count();
    int refused = 0;  // in a row; after a full round there is no ear
    std::optional<ZoPointTripel> candidate = NextConvex(ring, nullptr);
    while (candidate && left >= 4 && refused <= left) {
        if (!IsEar(ring, *candidate)) {
            ++refused;
            candidate = NextConvex(ring, (*candidate)[1]->Next());
            continue;
        }
        refused = 0;
        ring.Move((*candidate)[1], points);
        --left;
        tripels.Add(*candidate);
        candidate = NextConvex(ring, (*candidate)[2]);
    }
    ring.MoveTo(&points);
}
