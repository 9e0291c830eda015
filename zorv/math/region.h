#pragma once

#include <iosfwd>

#include "zorv/export.h"
#include "zorv/points/point.h"

class CZipWrapper;
class ZoReaderObject;

/// An axis-parallel rectangle, the extent of an image, a photo or an orthophoto. y up; mm or pixels by use.
///
/// Constructors and Set sort the bounds; the references that Left, Right, Bottom and Top hand out can break that.
class ZORV_API ZoRegion {
  public:
    ZoRegion() = default;
    ZoRegion(double left, double bottom, double right, double top) { Set(left, bottom, right, top); }
    /// Two opposite corners.
    ZoRegion(const ZoPoint& p1, const ZoPoint& p2) : ZoRegion(p1.x, p1.y, p2.x, p2.y) {}

    void Set(double left, double bottom, double right, double top);
    void Set(const ZoRegion& region) { *this = region; }
    void Get(double& left, double& bottom, double& right, double& top) const;

    ZoPoint& GetLL() { return LL; }
    ZoPoint& GetUR() { return UR; }
    const ZoPoint& GetLL() const { return LL; }
    const ZoPoint& GetUR() const { return UR; }
    /// New points at the other two corners and in the middle.
    ZoPoint GetUL() const { return {0, Left(), Top(), 0.0, 0}; }
    ZoPoint GetLR() const { return {0, Right(), Bottom(), 0.0, 0}; }
    ZoPoint GetCenter() const { return {0, (Left() + Right()) / 2.0, (Bottom() + Top()) / 2.0, 0.0, 0}; }

    double Left() const { return LL.x; }
    double Bottom() const { return LL.y; }
    double Right() const { return UR.x; }
    double Top() const { return UR.y; }
    double& Left() { return LL.x; }
    double& Bottom() { return LL.y; }
    double& Right() { return UR.x; }
    double& Top() { return UR.y; }

    double Width() const { return Right() - Left(); }
    double Height() const { return Top() - Bottom(); }
    double Area() const { return Width() * Height(); }
    /// The greater of width and height.
    double MaxDimension() const { return Width() > Height() ? Width() : Height(); }
    /// Brings left below right and bottom below top.
    void Sort();

    /// Whether the regions share a point, borders included. Null shares none.
    bool Overlap(const ZoRegion& region) const;
    bool Overlap(const ZoRegion* region) const { return region && Overlap(*region); }
    /// Whether the point lies in the region, sorted or not, borders included.
    bool Overlap(const ZoPoint& point) const;
    bool Overlap(const ZoPoint* point) const { return point && Overlap(*point); }

    /// What both have in common; on an axis on which they do not meet both bounds are 0.
    ZoRegion Intersect(const ZoRegion& region) const;
    /// The smallest region that holds both.
    ZoRegion Union(const ZoRegion& region) const;

    /// Whether the four bounds are exactly the same.
    bool operator==(const ZoRegion& region) const;
    /// Bound by bound.
    ZoRegion operator+(const ZoRegion& region) const;
    ZoRegion operator-(const ZoRegion& region) const;
    /// Grows, or shrinks, by d on every side.
    ZoRegion& operator+=(double d);
    ZoRegion& operator-=(double d) { return *this += -d; }

    /// Reads left, bottom, right, top from the tokens at hand. Returns 1; throws ZoParserStatus.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, with digits that bring every number back.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: both corners as points.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
    /// One line on the debug channel.
    void DbgPrintf(const char* text) const;

    ZoPoint LL;  ///< lower left
    ZoPoint UR;  ///< upper right
};
