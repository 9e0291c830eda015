#pragma once

#include <array>

#include "zorv/export.h"
#include "zorv/math/line2d.h"
#include "zorv/math/point2d.h"

/// A homogeneous map of the plane on column vectors: p' = M p with p = (x, y, 1). Translation in the last column;
/// `A * B` lets B act first. Angles are radians, counter-clockwise.
class ZORV_API ZoMatrix2d {
  public:
    static constexpr double kTolerance = 1e-5;

    /// The identity.
    ZoMatrix2d() = default;

    /// Row and column from 0, without a test of the indices.
    double operator()(unsigned int row, unsigned int column) const { return m[row * 3 + column]; }
    double& operator()(unsigned int row, unsigned int column) { return m[row * 3 + column]; }

    ZoMatrix2d operator*(const ZoMatrix2d& right) const;
    ZoMatrix2d& operator*=(const ZoMatrix2d& right) { return *this = *this * right; }
    /// Equal within kTolerance, element by element.
    bool operator==(const ZoMatrix2d& other) const { return isEqualTo(other); }
    bool operator!=(const ZoMatrix2d& other) const { return !isEqualTo(other); }
    bool isEqualTo(const ZoMatrix2d& other, double tolerance = kTolerance) const;

    ZoMatrix2d& setToIdentity() { return *this = ZoMatrix2d(); }
    /// left * right.
    ZoMatrix2d& setToProduct(const ZoMatrix2d& left, const ZoMatrix2d& right) { return *this = left * right; }
    /// left * this: `left` acts last.
    ZoMatrix2d& preMultBy(const ZoMatrix2d& left) { return *this = left * *this; }
    /// this * right: `right` acts first.
    ZoMatrix2d& postMultBy(const ZoMatrix2d& right) { return *this = *this * right; }

    double det() const;
    /// Whether the absolute determinant is at most the tolerance; not-a-number counts as singular.
    bool isSingular(double tolerance = 0.0) const;
    /// The inverse in place; a singular matrix stays as it is and gives false.
    bool invert();
    /// The inverse; a singular matrix comes back unchanged.
    ZoMatrix2d inverse() const;
    ZoMatrix2d transpose() const;
    ZoMatrix2d& transposeIt() { return *this = transpose(); }

    static ZoMatrix2d translation(const ZoVector2d& shift) { return ZoMatrix2d().setToTranslation(shift); }
    static ZoMatrix2d rotation(double angle, const ZoPoint2d& center = ZoPoint2d::kOrigin);
    static ZoMatrix2d scaling(double factor, const ZoPoint2d& center = ZoPoint2d::kOrigin);
    /// Through a point.
    static ZoMatrix2d mirroring(const ZoPoint2d& center);
    /// Across an infinite line; one shorter than kTolerance gives the identity.
    static ZoMatrix2d mirroring(const ZoLine2d& line);
    /// The map that carries the first coordinate system onto the second.
    static ZoMatrix2d alignCoordSys(const ZoPoint2d& fromOrigin, const ZoVector2d& fromX, const ZoVector2d& fromY,
                                    const ZoPoint2d& toOrigin, const ZoVector2d& toX, const ZoVector2d& toY);

    ZoMatrix2d& setToTranslation(const ZoVector2d& shift) { return setToIdentity().setTranslation(shift); }
    ZoMatrix2d& setToRotation(double angle, const ZoPoint2d& center = ZoPoint2d::kOrigin);
    ZoMatrix2d& setToScaling(double factor, const ZoPoint2d& center = ZoPoint2d::kOrigin);
    ZoMatrix2d& setToMirroring(const ZoPoint2d& center) { return *this = mirroring(center); }
    ZoMatrix2d& setToMirroring(const ZoLine2d& line) { return *this = mirroring(line); }
    ZoMatrix2d& setToAlignCoordSys(const ZoPoint2d& fromOrigin, const ZoVector2d& fromX, const ZoVector2d& fromY,
                                   const ZoPoint2d& toOrigin, const ZoVector2d& toX, const ZoVector2d& toY) {
        return *this = alignCoordSys(fromOrigin, fromX, fromY, toOrigin, toX, toY);
    }

    ZoMatrix2d& setTranslation(const ZoVector2d& shift);
    ZoVector2d translation() const { return {m[2], m[5]}; }

    /// The axes and the origin as the columns.
    ZoMatrix2d& setCoordSystem(const ZoPoint2d& origin, const ZoVector2d& xAxis, const ZoVector2d& yAxis);
    void getCoordSystem(ZoPoint2d& origin, ZoVector2d& xAxis, ZoVector2d& yAxis) const;

    /// Length of the longer of the two axes.
    double scale() const;
    /// Affine, with axes at right angles and of equal length: a similarity, mirrored or not.
    bool isUniScaledOrtho(double tolerance = kTolerance) const;
    /// Affine, with axes at right angles.
    bool isScaledOrtho(double tolerance = kTolerance) const;
    /// Whether the map keeps angles; then its scale, rotation angle and whether it mirrors, else all unchanged.
    bool isConformal(double& scale, double& angle, bool& mirrored) const;

    std::array<double, 9> m{1, 0, 0, 0, 1, 0, 0, 0, 1};  ///< row by row

  private:
    ZoVector2d Axis(unsigned int column) const { return {m[column], m[3 + column]}; }
    bool IsAffine(double tolerance) const;
};
