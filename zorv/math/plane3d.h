#pragma once

#include "zorv/export.h"
#include "zorv/math/line3d.h"
#include "zorv/math/point3d.h"

/// Plane: the points p with norm * p + dist = 0, norm being of unit length.
///
/// Distances are signed, positive on the side into which the normal points. For coordinates around 5,000,000 a plane
/// through a point keeps it within about 1e-9, since `dist` is as large as the coordinates.
class ZORV_API ZoPlane3d {
  public:
    /// Normalises the vector; dist is taken as given, for the unit normal.
    ZoPlane3d(const ZoVector3d& normal, double distance) : norm(Normalized(normal)), dist(distance) {}
    /// The plane through the point. The normal is turned towards the coordinate origin, so that dist is 0 or more; in a
    /// plane through the origin it stays as given.
    ZoPlane3d(const ZoPoint3d& point, const ZoVector3d& normal);
    /// The plane through the point along both vectors; its normal is v2 x v1, turned as above.
    ZoPlane3d(const ZoPoint3d& point, const ZoVector3d& v1, const ZoVector3d& v2) : ZoPlane3d(point, v2 % v1) {}
    /// The plane through three points; its normal is (p2 - p1) x (p3 - p1). Points that define no plane leave normal
    /// and distance 0.
    ZoPlane3d(const ZoPoint3d& p1, const ZoPoint3d& p2, const ZoPoint3d& p3);

    const ZoVector3d& GetNorm() const { return norm; }
    /// Normalises.
    void SetNorm(const ZoVector3d& normal) { norm = Normalized(normal); }
    double GetDist() const { return dist; }
    void SetDist(double distance) { dist = distance; }

    double Dist(const ZoPoint3d& point) const { return norm * point.AsVector() + dist; }
    /// Foot of the perpendicular.
    ZoPoint3d Projection(const ZoPoint3d& point) const { return point - Dist(point) * norm; }

    /// The point of the infinite line in the plane; 0, or 1 with the point untouched when they run parallel (dot
    /// product of normal and direction below 1e-6).
    int Intersect(const ZoLine3d& line, ZoPoint3d& point) const;
    /// The start and direction of the line in both planes, at z = 0; its end stays. 0, or -1 with the line untouched
    /// when the normals are at less than 1e-10 or no single point has z = 0.
    ///
    /// Where the line runs nearly level, z = 0 lies far away, and the start loses as many digits as it is farther away
    /// than the points of interest.
    int Intersect(const ZoPlane3d& plane, ZoLine3d& line) const;

    void DbgPrintf() const;

    ZoVector3d norm;
    double dist = 0.0;
};
