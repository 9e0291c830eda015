#pragma once

#include <cmath>
#include <type_traits>

#include "zorv/export.h"
#include "zorv/math/frame3d.h"
#include "zorv/math/line3d.h"
#include "zorv/math/plain_matrix.h"
#include "zorv/math/point3d.h"

namespace zorv::detail {

template <class T>
concept Number = std::is_arithmetic_v<T>;

}  // namespace zorv::detail

/// Affine map of space, a 4 by 4 matrix m[row][column] on column vectors: a point p goes to M p.
///
/// The linear part is the upper left 3 by 3 block, the translation is column 3, the last row is 0, 0, 0, 1. A * B lets
/// B act first. Rotations are right-handed, angles are in radians. A default map is the identity.
class ZORV_API ZoAffinMap3d : public _MMatrix {
  public:
    ZoAffinMap3d() {
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c)
                (*this)[r][c] = r == c ? 1.0 : 0.0;
        }
    }
    /// Takes frame coordinates to world coordinates.
    explicit ZoAffinMap3d(const ZoFrame3d& frame);
    /// Carries what rests in the first frame to the same place in the second.
    ZoAffinMap3d(const ZoFrame3d& fromFrame, const ZoFrame3d& toFrame);

    static ZoAffinMap3d RotX(double angle);
    static ZoAffinMap3d RotY(double angle);
    static ZoAffinMap3d RotZ(double angle);
    /// RotZ(z) * RotY(y) * RotX(x): the turn about X acts first.
    static ZoAffinMap3d RotXYZ(double x, double y, double z);
    static ZoAffinMap3d Scale(double sx, double sy, double sz);
    static ZoAffinMap3d Translate(double x, double y, double z);
    static ZoAffinMap3d Translate(const ZoVector3d& offset) { return Translate(offset.x(), offset.y(), offset.z()); }
    /// The inverse; a singular map comes back unchanged.
    static ZoAffinMap3d Inv(const ZoAffinMap3d& map);
    /// Scales each axis by the length of that column of the map's linear part.
    static ZoAffinMap3d GetScaleMap(const ZoAffinMap3d& map);
    /// The map of surface normals: inverse and transpose of the linear part, no translation. The linear part of a
    /// singular map is transposed only.
    static ZoAffinMap3d NormalTransformMap(const ZoAffinMap3d& map);
    /// The angles by which RotXYZ gives the rotation of the map, each in [0, 2 pi].
    ///
    /// The rows of the linear part are normalised first, and turned round when the map mirrors, so that scales along
    /// the rows do not matter. y has a cosine of at least 0. Where that cosine is below 1e-6, z is 0 and x holds the
    /// whole turn. A row of length 0 gives not-a-number.
    static void GetRotAngles(const ZoAffinMap3d& map, double* x, double* y, double* z);

    /// The plain product of all 16 elements.
    ZoAffinMap3d operator*(const ZoAffinMap3d& b) const {
        ZoAffinMap3d product;
        for (int r = 0; r < 4; ++r) {
            const double* row = (*this)[r];
            for (int c = 0; c < 4; ++c)
                product[r][c] = row[0] * b[0][c] + row[1] * b[1][c] + row[2] * b[2][c] + row[3] * b[3][c];
        }
        return product;
    }
    ZoPoint3d operator*(const ZoPoint3d& point) const { return Transform(point); }
    ZoVector3d operator*(const ZoVector3d& vector) const { return Transform(vector); }

    ZoPoint3d Transform(const ZoPoint3d& point) const { return {Row(0, point), Row(1, point), Row(2, point)}; }
    /// The translation has no effect.
    ZoVector3d Transform(const ZoVector3d& vector) const { return {Row(0, vector), Row(1, vector), Row(2, vector)}; }
    /// Origin and axes.
    ZoFrame3d Transform(const ZoFrame3d& frame) const {
        return {Transform(frame.Origin()), Transform(frame.v1()), Transform(frame.v2()), Transform(frame.v3())};
    }
    /// The line through both mapped ends; a direction that was set apart from them is lost.
    ZoLine3d Transform(const ZoLine3d& line) const { return {Transform(line.start), Transform(line.end)}; }

    /// Bare numbers are directions: the translation has no effect. Everything is computed in double.
    ZoVector3d Transform(double x, double y, double z) const { return Transform(ZoVector3d(x, y, z)); }
    ZoVector3d Transform(const double* xyz) const { return Transform(ZoVector3d(xyz)); }
    ZoVector3d Transform(float x, float y, float z) const { return Transform(ZoVector3d(x, y, z)); }
    ZoVector3d Transform(const float* xyz) const { return Transform(ZoVector3d(xyz[0], xyz[1], xyz[2])); }
    /// Whole numbers and mixtures, which would be ambiguous between the two forms above.
    ZoVector3d Transform(zorv::detail::Number auto x, zorv::detail::Number auto y, zorv::detail::Number auto z) const {
        return Transform(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
    }

    /// The same on directions in place; floats are rounded when they are stored.
    void InplaceTransform(double& x, double& y, double& z) const { Store(Transform(x, y, z), x, y, z); }
    void InplaceTransform(double* xyz) const { InplaceTransform(xyz[0], xyz[1], xyz[2]); }
    void InplaceTransform(float& x, float& y, float& z) const { Store(Transform(x, y, z), x, y, z); }
    void InplaceTransform(float* xyz) const { InplaceTransform(xyz[0], xyz[1], xyz[2]); }

    /// Becomes the inverse and returns 0. Returns 1, with the map as it was, when the determinant is exactly 0.
    int Invert();
    /// Determinant of the linear part.
    double Det() const {
        return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
               m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    }
    ZoAffinMap3d NormalTransformMap() const { return NormalTransformMap(*this); }
    /// The translation and the three columns of the linear part: the images of the world frame.
    void GetCoordSystem(ZoPoint3d& origin, ZoVector3d& v1, ZoVector3d& v2, ZoVector3d& v3) const;

  protected:
    /// The first three rows times all four components; w goes along unchanged.
    void Transformer(const _MVector* in, _MVector* out) const {
        const double x = Row(0, *in), y = Row(1, *in), z = Row(2, *in);
        (*out)[3] = (*in)[3];
        (*out)[0] = x;
        (*out)[1] = y;
        (*out)[2] = z;
    }

  private:
    double Row(int r, const _MVector& v) const {
        const double* row = (*this)[r];
        return row[0] * v[0] + row[1] * v[1] + row[2] * v[2] + row[3] * v[3];
    }
    template <class T>
    static void Store(const ZoVector3d& v, T& x, T& y, T& z) {
        x = static_cast<T>(v.x());
        y = static_cast<T>(v.y());
        z = static_cast<T>(v.z());
    }
};

inline ZoPoint3d& ZoPoint3d::Transform(const ZoAffinMap3d& map) {
    return *this = map.Transform(*this);
}
inline ZoVector3d& ZoVector3d::Transform(const ZoAffinMap3d& map) {
    return *this = map.Transform(*this);
}

/// The angle brought into [0, 2 pi] by whole turns; 2 pi itself stays. What is not finite comes back as it is.
ZORV_API double NormAngle(double angle);

/// The arbitrary axis algorithm of the DXF format: two axes that make a frame with the normal n.
///
/// ax is (0, 1, 0) x n for a normal within 1/64 of the z axis in both x and y, else (0, 0, 1) x n; ay = n x ax. Both
/// are normalised, n is not.
ZORV_API void ArbAxisAlg(const ZoVector3d& n, ZoVector3d& ax, ZoVector3d& ay);

/// The map from the entity coordinates of a DXF extrusion direction to world coordinates. n is used as given.
ZORV_API ZoAffinMap3d MapEcsToWcs(const ZoVector3d& n);
