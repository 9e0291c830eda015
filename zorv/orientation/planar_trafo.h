#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/export.h"

class CZipWrapper;
class ZoMatrix;
class ZoPoint;
class ZoReaderObject;

/// The mapping of a ZoTrafo2d from (x, y) to (X, Y), with its coefficients in the order in which they are stored.
enum eZoTrafo2DType : std::int32_t {
    eTrafo2DNone = 0,
    /// a0, a1, b0, b1: X = a0 + a1 x - b1 y, Y = b0 + b1 x + a1 y
    eTrafo2DHelmert = 1,
    /// a0, a1, a2, b0, b1, b2: X = a0 + a1 x + a2 y, Y = b0 + b1 x + b2 y
    eTrafo2DAffin = 2,
    /// c0 to c7: X = (c0 x + c1 y + c2) / w, Y = (c3 x + c4 y + c5) / w with w = c6 x + c7 y + 1
    eTrafo2DProjektiv = 3,
    /// c0 to c9 for X, c10 to c19 for Y, each by the terms 1, x, y, x², xy, y², x³, x²y, xy², y³
    eTrafo2DPolynomial = 4,
    /// Stored like a Helmert transformation that is meant backwards; Transform maps nothing by it.
    eTrafo2DInvHelmert = 5,
};

/// A planar transformation, such as from pixels to image coordinates in mm. Units are those of its use.
///
/// Whatever sets coefficients leaves those that the type does not use as they were.
class ZORV_API ZoTrafo2d {
  public:
    static constexpr int kCoefCount = 20;

    ZoTrafo2d() = default;
    ZoTrafo2d(const ZoTrafo2d&) = default;
    ZoTrafo2d& operator=(const ZoTrafo2d&) = default;
    virtual ~ZoTrafo2d() = default;

    /// Type none and all coefficients 0.
    void Init();
    /// The Helmert transformation that changes nothing.
    void SetIdent() { Set(0.0, 1.0, 0.0, 0.0); }
    /// A Helmert transformation.
    void Set(double a0, double a1, double b0, double b1);
    /// An affine transformation.
    void Set(double a0, double a1, double a2, double b0, double b1, double b2);
    /// Type and all coefficients of another one.
    void Set(const ZoTrafo2d& other);

    eZoTrafo2DType GetType() const { return type; }
    /// The coefficient i, counted from 0; 0 outside.
    double GetCoef(int i) const { return i >= 0 && i < kCoefCount ? coef[i] : 0.0; }
    /// "None", "Helmert", "Affin", "Projektiv", "Polynomial", "Inv. Helmert"; "None" for any other value.
    static const wchar_t* GetTrafoName(eZoTrafo2DType type);
    const wchar_t* GetTrafoName() const { return GetTrafoName(type); }

    /// Maps the coordinates; of a point x and y. False, and nothing changes, for a type without a mapping and where
    /// the denominator of a projective one lies below 1e-10.
    bool Transform(double* x, double* y) const;
    bool Transform(ZoPoint* point) const;
    /// The way back through the Helmert coefficients, whatever the type. False, and nothing changes, when a1 and b1
    /// are 0.
    bool TransInvHelmert(double* x, double* y) const;
    bool TransInvHelmert(ZoPoint* point) const;

    /// Makes *m the homogeneous 3 by 3 matrix of a Helmert, affine or projective transformation, else the identity.
    void BuildMatrix(ZoMatrix* m) const;
    /// Undoes BuildMatrix: takes the type, and from a 3 by 3 matrix the coefficients of a Helmert (columns 1 and 3),
    /// affine or projective transformation. The last element counts as 1.
    void SetFromMatrix(const ZoMatrix& m, eZoTrafo2DType matrixType);

    /// One line on the debug channel; nothing for a type without a mapping.
    void DbgPrintf(const char* prefix) const;

    /// Text form: the type, then the coefficients that it uses; a type without a mapping has none. Returns 1. Throws
    /// ZoParserStatus at a token that is no number; then the object stays.
    int Read(ZoReaderObject* object);
    /// The same in the old numbering: 0 projective, 1 affine, 2 Helmert, 3 polynomial. For any other type nothing more
    /// is read and the object stays.
    int ReadV50(ZoReaderObject* object);
    /// Writes what Read takes, four coefficients on a line, with 16 significant digits.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: the type (4 bytes), then all coefficients. One that is cut off leaves the object as it is.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    eZoTrafo2DType type = eTrafo2DNone;
    double coef[kCoefCount] = {};

  private:
    void ReadCoefs(ZoReaderObject* object, eZoTrafo2DType newType);
};
