#pragma once

#include <array>

#include "zorv/core/array.h"
#include "zorv/export.h"
#include "zorv/points/point_list.h"

/// Three vertices, not owned, each with a flag.
class ZORV_API ZoPointTripel {
  public:
    bool IsValid() const { return points[0] && points[1] && points[2]; }
    /// Whether the point is one of the three by identity.
    bool IsInTripel(const ZoPoint* point) const {
        return point == points[0] || point == points[1] || point == points[2];
    }
    /// Index from 0 to 2; any other does nothing or gives null and false.
    ZoPoint* operator[](int index) const { return IsIndex(index) ? points[static_cast<std::size_t>(index)] : nullptr; }
    void Set(ZoPoint* point, int index) {
        if (IsIndex(index)) points[static_cast<std::size_t>(index)] = point;
    }
    bool IsVisible(int index) const { return IsIndex(index) && visible[static_cast<std::size_t>(index)]; }
    void SetVisible(int index, bool flag) {
        if (IsIndex(index)) visible[static_cast<std::size_t>(index)] = flag;
    }

    std::array<ZoPoint*, 3> points{};
    std::array<bool, 3> visible{};

  private:
    static bool IsIndex(int index) { return index >= 0 && index < 3; }
};

/// Triangulates a simple polygon, counter-clockwise in x and y and without a repeated closing point, by clipping ears
/// (G. Meisters, "Polygons have ears", American Mathematical Monthly 82 (1975), 648-651).
///
/// n vertices give n - 3 triangles in `tripels`; the last three points of `points` are the closing one. Where the
/// polygon is not simple, fewer triangles come out.
class ZORV_API ZoTriangulatePolygon {
  public:
    explicit ZoTriangulatePolygon(const ZoPointList& polygon);
    ZoTriangulatePolygon(const ZoTriangulatePolygon&) = delete;
    ZoTriangulatePolygon& operator=(const ZoTriangulatePolygon&) = delete;
    virtual ~ZoTriangulatePolygon() = default;

    ZoPointList points;               ///< copies of the vertices in the order in which they were taken
    TZoArray<ZoPointTripel> tripels;  ///< point into `points`
};
