#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "zorv/export.h"
#include "zorv/math/point3d.h"

class CZipWrapper;

/// Axis-parallel box in space, with the number of updates that it has seen.
///
/// A reset box has all minima at the largest double and all maxima at its negative. It is invalid, as is any box in
/// which a single bound still has such a value.
class ZORV_API ZoBoundingBox3d {
  public:
    /// A reset box.
    ZoBoundingBox3d() = default;
    /// The box of two opposite corners in any order; count is 0.
    ZoBoundingBox3d(const ZoPoint3d& p1, const ZoPoint3d& p2)
        : ZoBoundingBox3d(p1.x(), p1.y(), p1.z(), p2.x(), p2.y(), p2.z()) {}
    ZoBoundingBox3d(double x1, double y1, double z1, double x2, double y2, double z2)
        : xmin(std::min(x1, x2)),
          ymin(std::min(y1, y2)),
          zmin(std::min(z1, z2)),
          xmax(std::max(x1, x2)),
          ymax(std::max(y1, y2)),
          zmax(std::max(z1, z2)) {}

    void Reset() { *this = ZoBoundingBox3d(); }
    /// Widens the box to the point and counts it. A coordinate of not-a-number leaves its axis alone.
    void Update(double x, double y, double z) {
        xmin = std::min(xmin, x);
        ymin = std::min(ymin, y);
        zmin = std::min(zmin, z);
        xmax = std::max(xmax, x);
        ymax = std::max(ymax, y);
        zmax = std::max(zmax, z);
        ++count;
    }
    void Update(const ZoPoint3d& point) { Update(point.x(), point.y(), point.z()); }
    /// Takes in another box, unless that is invalid, and counts 1 for it.
    void Union(const ZoBoundingBox3d& other);

    bool IsValid() const {
        return xmin != kUnset && ymin != kUnset && zmin != kUnset && xmax != -kUnset && ymax != -kUnset &&
               zmax != -kUnset;
    }
    std::uint32_t GetCount() const { return count; }
    /// The middle; (0, 0, 0) for an invalid box.
    ZoPoint3d Center() const;

    double Xmin() const { return xmin; }
    double Ymin() const { return ymin; }
    double Zmin() const { return zmin; }
    double Xmax() const { return xmax; }
    double Ymax() const { return ymax; }
    double Zmax() const { return zmax; }
    void SetXmin(double value) { xmin = value; }
    void SetYmin(double value) { ymin = value; }
    void SetZmin(double value) { zmin = value; }
    void SetXmax(double value) { xmax = value; }
    void SetYmax(double value) { ymax = value; }
    void SetZmax(double value) { zmax = value; }
    /// Shift one bound, at most up to the opposite one.
    void MoveXmin(double d) { MoveMin(xmin, xmax, d); }
    void MoveYmin(double d) { MoveMin(ymin, ymax, d); }
    void MoveZmin(double d) { MoveMin(zmin, zmax, d); }
    void MoveXmax(double d) { MoveMax(xmin, xmax, d); }
    void MoveYmax(double d) { MoveMax(ymin, ymax, d); }
    void MoveZmax(double d) { MoveMax(zmin, zmax, d); }

    double GetXSize() const { return xmax - xmin; }
    double GetYSize() const { return ymax - ymin; }
    double GetZSize() const { return zmax - zmin; }
    double GetWidth() const { return GetXSize(); }
    double GetHeight() const { return GetYSize(); }
    double GetDepth() const { return GetZSize(); }
    /// Smallest and largest of the three sizes, and their product.
    double GetMin() const { return std::min({GetXSize(), GetYSize(), GetZSize()}); }
    double GetMax() const { return std::max({GetXSize(), GetYSize(), GetZSize()}); }
    double GetVol() const { return GetXSize() * GetYSize() * GetZSize(); }
    void GetMinMaxPoints(ZoPoint3d& min, ZoPoint3d& max) const;

    /// The bounds themselves are inside.
    bool IsInX(double x) const { return x >= xmin && x <= xmax; }
    bool IsInY(double y) const { return y >= ymin && y <= ymax; }
    bool IsInZ(double z) const { return z >= zmin && z <= zmax; }
    bool IsInXY(double x, double y) const { return IsInX(x) && IsInY(y); }
    bool IsInXZ(double x, double z) const { return IsInX(x) && IsInZ(z); }
    bool IsInYZ(double y, double z) const { return IsInY(y) && IsInZ(z); }
    bool IsInBox(double x, double y, double z) const { return IsInX(x) && IsInY(y) && IsInZ(z); }
    bool IsInBox(const ZoPoint3d& point) const { return IsInBox(point.x(), point.y(), point.z()); }

    /// Whether the boxes have an area or space in common; with `touching` a shared border is enough. Swapped bounds are
    /// put in order first.
    bool OverlapXY(const ZoBoundingBox3d& other, bool touching) const;
    bool OverlapXZ(const ZoBoundingBox3d& other, bool touching) const;
    bool OverlapYZ(const ZoBoundingBox3d& other, bool touching) const;
    bool Overlap(const ZoBoundingBox3d& other, bool touching) const;
    /// Whether this box does not strictly enclose the other.
    bool CheckMax(const ZoBoundingBox3d& other) const;
    /// Whether the sizes differ by at most the given part of the largest of all sizes. False for an invalid box.
    bool SameSize(const ZoBoundingBox3d& other, double part) const;

    /// Shifts a valid box.
    void Move(double dx, double dy, double dz);
    /// Multiplies all bounds, about the coordinate origin. A reset box does not stay reset.
    void Scale(double factor);
    /// Widens the box by d on all sides; AddFrame has a margin for each axis.
    void Swell(double d) { AddFrame(d, d, d); }
    void AddFrame(double dx, double dy, double dz);

    /// Archive record: the six bounds, minima first (8 bytes each), count (4 bytes).
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
    void DbgPrintf() const;

    static constexpr double kUnset = std::numeric_limits<double>::max();

    double xmin = kUnset;
    double ymin = kUnset;
    double zmin = kUnset;
    double xmax = -kUnset;
    double ymax = -kUnset;
    double zmax = -kUnset;
    std::uint32_t count = 0;

  private:
    static void MoveMin(double& min, double max, double d) {
        min += d;
        if (!(max > min)) min = max;
    }
    static void MoveMax(double min, double& max, double d) {
        max += d;
        if (!(max > min)) max = min;
    }
};
