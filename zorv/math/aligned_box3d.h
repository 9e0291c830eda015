#pragma once

#include "zorv/export.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/math/bounding_box3d.h"

/// Bounding box in the local coordinates of a map. Points go in and corners come out in world coordinates.
class ZORV_API ZoAlignedBoundingBox3d {
  public:
    /// World axes.
    ZoAlignedBoundingBox3d() = default;
    /// `worldToBox` takes world coordinates to box coordinates.
    explicit ZoAlignedBoundingBox3d(const ZoAffinMap3d& worldToBox) { SetMap(worldToBox); }

    /// Takes over the map and its inverse and resets the box. With a singular map `inverse` is the map itself.
    void SetMap(const ZoAffinMap3d& worldToBox);
    /// Resets the box.
    void InitBox() { box.Reset(); }

    /// Widens the box to the world point and counts it.
    void Update(const ZoPoint3d& point) { box.Update(map.Transform(point)); }
    /// Whether the world point is in the box, faces included.
    bool IsInBox(const ZoPoint3d& point) const { return box.IsInBox(map.Transform(point)); }
    /// A corner in world coordinates: 0 to 3 at zmin as (xmin, ymin), (xmax, ymin), (xmax, ymax), (xmin, ymax), 4 to 7
    /// the same at zmax. Any other index gives the place of box coordinates (0, 0, 0).
    ZoPoint3d GetPoint(int index) const;

    /// The box in its own coordinates.
    ZoBoundingBox3d& Box() { return box; }
    const ZoBoundingBox3d& Box() const { return box; }
    bool IsValid() const { return box.IsValid(); }
    double GetMin() const { return box.GetMin(); }
    double GetMax() const { return box.GetMax(); }
    double GetVol() const { return box.GetVol(); }
    double GetXSize() const { return box.GetXSize(); }
    double GetYSize() const { return box.GetYSize(); }
    double GetZSize() const { return box.GetZSize(); }
    double GetWidth() const { return box.GetWidth(); }
    double GetHeight() const { return box.GetHeight(); }
    double GetDepth() const { return box.GetDepth(); }

    void Dbgprintf() const;

  private:
    ZoBoundingBox3d box;

  public:
    ZoAffinMap3d map;      ///< world to box coordinates
    ZoAffinMap3d inverse;  ///< box to world coordinates
};
