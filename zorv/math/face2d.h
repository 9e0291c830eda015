#pragma once

#include <array>
#include <vector>

#include "zorv/export.h"
#include "zorv/math/point2d.h"
#include "zorv/math/vector2d.h"

class ZoPoint;
class ZoPointList;

/// A triangle or a quadrilateral of the plane, vertices in the order given. A default face holds no point.
class ZORV_API ZoFace2d {
  public:
    ZoFace2d() = default;
    ZoFace2d(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c) { set(a, b, c); }
    ZoFace2d(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c, const ZoVector2d& d) { set(a, b, c, d); }

    void set(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c);
    void set(const ZoVector2d& a, const ZoVector2d& b, const ZoVector2d& c, const ZoVector2d& d);

    /// Whether the face holds the point, its border included. A quadrilateral is the union of the triangles 0-1-2 and
    /// 2-3-0, convex or not.
    bool isInside(const ZoVector2d& point) const;

    /// Prints nothing.
    void DbgPrintf(const char*) const {}

    std::array<ZoVector2d, 4> v;
    bool triangle = false;
    bool valid = false;

  private:
    bool IsInTriangle(std::size_t a, std::size_t b, std::size_t c, const ZoVector2d& point) const;
};

/// Faces in the order in which they were added; holds a point when one of them does.
class ZORV_API ZoFace2dContainer {
  public:
    /// A face from the x and y of 3 or 4 points; a list of another size adds nothing and gives false.
    bool AddFace(ZoPointList& list);

    bool isInside(const ZoPoint2d& point) const;
    bool isInside(const ZoPoint& point) const;

    std::vector<ZoFace2d> faces;
};
