#pragma once

#include "zorv/export.h"
#include "zorv/math/vector3d.h"

/// What is known of the lines of a plane whose image is rectified up to an affine map, as a circle of all pairs
/// (alpha, beta) for which it holds.
///
/// A pair stands for the map x' = (x - alpha y) / beta, y' = y, which brings the rectified image (x, y) to its true
/// shape up to a rotation and a scale; beta is the half plane above 0. ZoAffineConstraintSolver finds the pair in which
/// the circles meet. All vectors are of the rectified image, only their x and y count, and lengths do not depend on its
/// unit. The circles have fields only: a vector of ZoAffineConstraint holds the derived ones by value.
///
/// D. Liebowitz, A. Zisserman: Metric rectification for perspective images of planes, Proc. CVPR 1998, 482-488,
/// section 3.
class ZORV_API ZoAffineConstraint {
  public:
    ZoAffineConstraint() = default;
    ZoAffineConstraint(const ZoAffineConstraint&) = default;
    ZoAffineConstraint& operator=(const ZoAffineConstraint&) = default;
    virtual ~ZoAffineConstraint() = default;

    /// -v.y / v.x, the lowest double for v.x of 0. For the normal v of a line that is how far the line goes along x
    /// where it goes 1 along y.
    static double GetK(const ZoVector3d& v);

    bool IsValid() const { return valid; }
    bool IsInvalid() const { return !valid; }
    double GetCenterX() const { return centerX; }
    double GetCenterY() const { return centerY; }
    double GetRadius() const { return radius; }

    /// Appends centre and radius as a line to the file `c:\AffinConstraint.txt`. Where that cannot be opened, as on
    /// systems without drives, nothing is written. The prefix has no effect.
    void WriteDbgLog(const char* prefix) const;

    bool valid = false;
    double centerX = 0.0;
    double centerY = 0.0;
    double radius = 0.0;
};

/// Two lines enclose an angle that is known.
class ZORV_API ZoKnownAngleConstraint : public ZoAffineConstraint {
  public:
    /// d1 and d2 are normals of the lines: (l1, l2) of a line l1 x + l2 y + l3 = 0, or the direction of the line turned
    /// by 90 degrees. Given the directions themselves the circle would be that of another map.
    ///
    /// `angle`, in radians, is the turn from the first line to the second in the true shape, counter-clockwise; half
    /// turns do not count. 0 gives an invalid constraint.
    ZoKnownAngleConstraint(const ZoVector3d& d1, const ZoVector3d& d2, double angle);
};

/// Two pairs of lines enclose the same angle, whatever it is.
class ZORV_API ZoUnknownAngleConstraint : public ZoAffineConstraint {
  public:
    /// Normals of the lines, as in ZoKnownAngleConstraint. The turn from the first to the second is that from the third
    /// to the fourth. Pairs that no map tells apart, such as the same pair twice, give fields that are not finite.
    ZoUnknownAngleConstraint(const ZoVector3d& d1, const ZoVector3d& d2, const ZoVector3d& d3, const ZoVector3d& d4);
};

/// Two segments have lengths of a known ratio.
class ZORV_API ZoLenghtRatioConstraint : public ZoAffineConstraint {
  public:
    /// d1 and d2 go from the start of each segment to its end: the segments themselves, not their normals. `ratio` is
    /// the true length of the first by that of the second.
    ///
    /// The circle is the true one for a ratio of 1, or where the second segment is parallel to x or the first one to y;
    /// else its radius |(ratio x2 y1 - x1 y2) / (y1^2 - ratio^2 y2^2)| keeps to the convention of existing projects, in
    /// which the ratio stands with the first product only. Parallel segments of just that ratio give fields that are
    /// not finite.
    ZoLenghtRatioConstraint(const ZoVector3d& d1, const ZoVector3d& d2, double ratio);
};
