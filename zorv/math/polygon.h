#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/link.h"
#include "zorv/export.h"
#include "zorv/math/point3d.h"
#include "zorv/math/region.h"
#include "zorv/points/point_list.h"

/// What the coordinates of a polygon are, and which columns its points have in a text file. Only the first two kinds
/// have an inside; the others are tested by their box.
enum ZOPolygonMode : std::int32_t {
    ZOPolygon2d = 0,    ///< x, y
    ZOPolygon2dId = 1,  ///< id, x, y
    ZOPolygon3d = 2,    ///< x, y, z
    ZOPolygon3dId = 3,  ///< id, x, y, z
};

/// A list of vertices with its extent.
class ZORV_API ZoPolygon : public LinkHdl {
  public:
    explicit ZoPolygon(ZOPolygonMode polygonMode = ZOPolygon2d) : mode(polygonMode) {}
    /// A rectangle with these opposite corners.
    ZoPolygon(const ZoPoint& p1, const ZoPoint& p2, ZOPolygonMode polygonMode);
    explicit ZoPolygon(const ZoRegion& region);
    ZoPolygon(const ZoPointList* list, ZOPolygonMode polygonMode);
    ZoPolygon(const ZoPolygon&) = default;
    ZoPolygon& operator=(const ZoPolygon&) = default;
    virtual ~ZoPolygon() = default;

    /// Appends copies and widens the extent. True; null adds nothing.
    bool AddPoint(const ZoPoint& point);
    bool AddPoint(const ZoPointList* list);

    int Count() const { return Points.Count(); }
    ZoPoint* First() const { return Points.First(); }
    ZOPolygonMode GetMode() const { return mode; }
    const ZoPointList& GetPoints() const { return Points; }

    /// The extent in x and y.
    ZoRegion GetRegion() const { return {Min, Max}; }
    double Width() const { return Max.x - Min.x; }
    double Height() const { return Max.y - Min.y; }
    double Deep() const { return Max.z - Min.z; }
    /// Volume of the extent.
    double Boxvol() const { return Width() * Height() * Deep(); }
    /// The mean of all points; the origin for an empty polygon.
    ZoPoint3d Center() const;
    /// Area in x and y without sign, -1 for fewer than 3 points. The argument has no effect.
    double Area(bool) const;
    /// Length in space, with the closing edge when `closed`; -1 for fewer than 2 points.
    double Length(bool closed) const;

    /// Whether the point lies in the extent, borders included; by the mode in x and y or in x, y and z.
    bool IsInBox(const ZoPoint& point) const;
    /// Whether the point lies inside, by the even-odd rule; three-dimensional kinds and polygons without points look
    /// at the extent only.
    bool Overlap(const ZoPoint& point) const;

    /// Widens the extent to the point.
    void UpdateMinMax(const ZoPoint& point);
    /// Works the extent out anew; without points it stays.
    void UpdateMinMax();

    /// Reads the points of a block, in the columns of the mode; two points stand for a rectangle. Returns 1; throws
    /// ZoParserStatus.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, with digits that bring every number back.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: mode (4 bytes), both extremes as points, the list.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
    /// Extent and, when asked for, the points on the debug channel.
    void DbgPrintf(const char* text, bool withPoints) const;

    ZOPolygonMode mode;
    ZoPoint Min;
    ZoPoint Max;
    ZoPointList Points;

  protected:
    /// Appends the corners of a rectangle, lower left first, counter-clockwise, and numbers all points from 1.
    void MakePolygon(const ZoPoint& p1, const ZoPoint& p2);
};
