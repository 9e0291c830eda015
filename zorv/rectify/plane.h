#pragma once

#include <iosfwd>

#include "zorv/core/flag.h"
#include "zorv/export.h"
#include "zorv/math/vector.h"
#include "zorv/points/point.h"

class CZipWrapper;
class ZoReaderObject;

/// A named plane of the object system: the points with A x + B y + C z + D = 0.
///
/// The normal need not be of unit length unless an operation says so; a new plane has a zero normal. Distances are
/// signed, positive on the side into which the normal points, in the unit of the coordinates.
class ZORV_API ZoPlane : public TZoFlagNode<ZoPlane> {
  public:
    static constexpr int kGuiSelected = 1;
    static constexpr int kActive = 2;

    ZoPlane() = default;
    /// These two read at once; the first throws what Read throws.
    explicit ZoPlane(ZoReaderObject* object) { Read(object); }
    explicit ZoPlane(CZipWrapper* archive) { ReadV9(archive); }
    ZoPlane(const ZoPlane&) = default;
    /// Copies id, name, flags, normal and D.
    ZoPlane& operator=(const ZoPlane&) = default;

    double A() const { return norm[1]; }
    double B() const { return norm[2]; }
    double C() const { return norm[3]; }
    double D() const { return d; }
    double& A() { return norm[1]; }
    double& B() { return norm[2]; }
    double& C() { return norm[3]; }
    double& D() { return d; }
    const ZoVector& GetNorm() const { return norm; }
    void Get(double* a, double* b, double* c, double* distance) const;
    void Get(ZoVector* normal, double* distance) const;

    bool IsActive() const { return IsFlagSet(kActive) != 0; }
    void SetActive(bool on) { on ? SetFlag(kActive) : ClearFlag(kActive); }
    /// Whether the normal is not zero.
    bool IsValid() const { return A() != 0.0 || B() != 0.0 || C() != 0.0; }

    /// Distance of a point for a unit normal.
    double FastDist(double x, double y, double z) const { return A() * x + B() * y + C() * z + d; }
    double FastDist(const ZoPoint& p) const { return FastDist(p.x, p.y, p.z); }
    /// Distance of a point for any normal; not-a-number for a zero one.
    double Dist(double x, double y, double z) const { return FastDist(x, y, z) / norm.Abs(); }
    double Dist(const ZoPoint& p) const { return Dist(p.x, p.y, p.z); }
    /// D minus the other's D for parallel planes, else 0.
    double Dist(const ZoPlane& other) const;

    /// Angle between the normals, from 0 to pi.
    double CalcAngle(const ZoPlane& other) const;
    /// Whether the normals agree within 4e-7 rad; opposite ones do not.
    bool IsParallel(const ZoPlane& other) const;
    /// Whether the normals are at 45 degrees or more.
    bool IsNormal(const ZoPlane& other) const;
    /// The line in both planes: its point with z = 0 and its unit direction. False for parallel planes, and, with the
    /// direction written already, for a line that z = 0 does not meet in one point. Where the line runs nearly level,
    /// z = 0 lies far away and the point loses as many digits.
    bool CalcIntersection(ZoVector& point, ZoVector& direction, const ZoPlane& other) const;
    /// Gives `result` the coordinates of p less Dist(p) times the normal: the foot of p in the plane when the normal is
    /// of unit length. Its other fields stay. False for a zero normal.
    bool ProjectPoint(ZoPoint* result, const ZoPoint& p) const;
    /// Turns the plane around: all four coefficients change their sign.
    void MirrorNormal();
    /// A point of the plane on a coordinate axis, the one whose coefficient is strictly the greatest, else z; a
    /// coefficient of 0 there makes it infinite. The origin for a zero normal.
    ZoVector CalcPlaneVectorForSip() const;

    /// Text form: id, name, A, B, C, D. Returns 1; throws ZoParserStatus. Words and strings in place of a number count
    /// as 0.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, the coefficients with 16 significant digits. Infinity and not-a-number, which would end
    /// the reading, become 0.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: ZoObject, flags, normal as ZoVector, D.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ZoVector norm{0.0, 0.0, 0.0};
    double d = 0.0;
};

/// Filter function for ZoTestFilter, on objects that are planes: the active bit of their flags.
ZORV_API unsigned int IsPlaneFlagGuiCheckActive(const ZoObject* plane);
/// The same for the selected bit.
ZORV_API unsigned int IsPlaneFlagGuiSelect(const ZoObject* plane);
