#pragma once

#include <array>
#include <cstdint>

#include "zorv/export.h"
#include "zorv/math/point3d.h"
#include "zorv/points/point.h"
#include "zorv/rectify/plane.h"

/// Pyramid in which points are selected: the space on the positive side of four planes, or in them.
///
/// The caller fills planes and offset, with unit normals that look inwards. The planes are those of coordinates less
/// the offset, so that they keep their digits far from the coordinate origin. A new volume is stopped.
class ZORV_API Zo3dSelectVolume {
  public:
    static constexpr std::uint32_t kStopped = 0;
    static constexpr std::uint32_t kPyramid = 1;

    void StartPyramid() { mode = kPyramid; }
    void Stop() { mode = kStopped; }
    bool IsRunning() const { return mode != kStopped; }
    bool IsModePyramid() const { return mode == kPyramid; }

    const std::array<ZoPlane, 4>& Planes() const { return planes; }
    /// An index outside 0 to 3 does nothing.
    void SetPlane(int index, const ZoPlane& plane);
    const ZoPoint3d& Offset() const { return offset; }
    void SetOffset(const ZoPoint3d& point) { offset = point; }

    /// Whether a pyramid is running and holds the point, faces included.
    bool IsInSelectRange(const ZoPoint3d& point) const { return IsInSelectRange(point.x(), point.y(), point.z()); }
    bool IsInSelectRange(double x, double y, double z) const;

    void DbgPrintf() const;

    std::uint32_t mode = kStopped;

  private:
    std::array<ZoPlane, 4> planes;

  public:
    /// Corners for the caller's drawing; nothing here reads them.
    std::array<ZoPoint, 6> frontCorners;
    std::array<ZoPoint, 6> backCorners;

  private:
    ZoPoint3d offset;
};
