#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "zorv/core/debug_output.h"
#include "zorv/export.h"
#include "zorv/math/vector.h"

class CZipWrapper;
class ZoPoint;
class ZoPointList;
class ZoReaderObject;
class ZoVector3d;

/// A dense matrix of doubles, row by row, counted from 1. Up to 16 elements need no heap block.
///
/// Names follow this library's vocabulary: a "line" (Zeile) is what mathematics calls a row, a "row" (Spalte) is a
/// column. No operation checks shapes: operands have the shape that the operation needs. The shape is that of
/// construction until Set, CalcRotMatAlignVector, Read or ReadV9 changes it; an assignment does not.
///
/// Angles are radians. Rotations act on column vectors, x' = R x, and are right-handed.
class ZORV_API ZoMatrix {
  public:
    static constexpr int kInlineSize = 16;

    ZoMatrix() = default;
    /// All zero. Negative numbers count as 0.
    ZoMatrix(int lines, int columns) : rows(std::max(lines, 0)), cols(std::max(columns, 0)) {
        if (Count() > kInlineSize) MakeBlock();
    }
    /// Copies lines * columns values, row by row.
    ZoMatrix(const double* values, int lines, int columns) { Set(values, lines, columns); }
    ZoMatrix(const ZoMatrix& other) : rows(other.rows), cols(other.cols) {
        if (Count() > kInlineSize) MakeBlock();
        std::copy_n(other.data, Count(), data);
    }
    ZoMatrix(ZoMatrix&& other) noexcept;
    virtual ~ZoMatrix() = default;

    /// Copies as many elements as this matrix has; its shape stays, and the other has the same.
    ZoMatrix& operator=(const ZoMatrix& other) {
        std::copy_n(other.data, &other == this ? 0 : std::min(Count(), other.Count()), data);
        return *this;
    }
    /// The same for a matrix of the same shape only; false, and nothing changes, for another.
    bool AssignSameShape(const ZoMatrix& other) {
        if (rows != other.rows || cols != other.cols) return false;
        *this = other;
        return true;
    }
    /// Takes shape and values, row by row.
    void Set(const double* values, int lines, int columns);

    int GetZeilen() const { return rows; }
    int GetSpalten() const { return cols; }
    /// The line r, to be indexed with a column counted from 1.
    double* operator[](int r) { return data + LineOffset(r); }
    const double* operator[](int r) const { return data + LineOffset(r); }
    double GetElem(int r, int c) const { return data[LineOffset(r) + c]; }
    double SetElem(int r, int c, double value) { return data[LineOffset(r) + c] = value; }
    /// Both indices counted from 0.
    double GetElemZeroIndex(int r, int c) const { return GetElem(r + 1, c + 1); }

    void Clear() { std::fill_n(data, Count(), 0.0); }
    void SetIdent();
    /// Whether all elements off the diagonal are exactly 0, and those on it exactly 0 or 1. True without rows.
    bool IsIdent() const;

    /// Matrix row i, as many elements as the vector has.
    void GetLine(int i, ZoVector& v) const;
    void SetLine(int i, const ZoVector& v);
    /// Matrix column j, as many elements as the vector has.
    void GetRow(int j, ZoVector& v) const;
    void SetRow(int j, const ZoVector& v);
    /// Line dst += factor * line src in the columns firstCol to lastCol; -1 means the last.
    void AddLines(int dst, int src, int firstCol, double factor, int lastCol = -1);
    /// The line times factor in the columns firstCol to lastCol; -1 means the last.
    void MultLine(int line, int firstCol, double factor, int lastCol = -1);
    void SwapLines(int a, int b);
    ZoMatrix Transpose() const;
    /// Adds v * transposed v to the upper left block of v's size. A least-squares fit calls it once per observation
    /// with the observation row extended by its right-hand side, and gets N, b and the sum of squared right-hand
    /// sides in one matrix.
    void CalcNGLAN(const ZoVector& v);

    ZoMatrix operator+(const ZoMatrix& other) const {
        ZoMatrix result(*this);
        result += other;
        return result;
    }
    ZoMatrix operator-(const ZoMatrix& other) const {
        ZoMatrix result(*this);
        result -= other;
        return result;
    }
    ZoMatrix operator*(double factor) const {
        ZoMatrix result(*this);
        result *= factor;
        return result;
    }
    ZoMatrix operator/(double divisor) const {
        ZoMatrix result(*this);
        result /= divisor;
        return result;
    }
    ZoMatrix& operator+=(const ZoMatrix& other);
    ZoMatrix& operator-=(const ZoMatrix& other);
    ZoMatrix& operator*=(double factor);
    /// Multiplies by 1 / divisor.
    ZoMatrix& operator/=(double divisor) { return *this *= 1.0 / divisor; }
    ZoMatrix operator*(const ZoMatrix& other) const {
        if (rows == 3 && cols == 3 && other.cols == 3) return MultiplySquare<3>(other);
        if (rows == 4 && cols == 4 && other.cols == 4) return MultiplySquare<4>(other);
        return Multiply(other);
    }
    ZoVector operator*(const ZoVector& v) const;

    /// See the free functions of zorv/math/solvers.h.
    int GaussLoeserRelMax(ZoMatrix& b);
    int DreieckLoeserOben(ZoMatrix& b);
    double Det() const;
    /// Becomes its own inverse. Status, when not null, gets 0, or 1 for a singular matrix, which is then partly
    /// eliminated.
    ZoMatrix& Invert(int* status = nullptr);
    /// Solves the normal equations N x = b of a least-squares fit and returns its residual sum of squares.
    ///
    /// With n unknowns the matrix has n + 1 rows and 2 n + 1 columns: columns 1 to n hold N, column n + 1 holds b and
    /// in its last row the sum of squared observations, columns n + 2 to 2 n + 1 hold the n by n identity. Afterwards
    /// those hold the transposed inverse of R, with N = transposed R * R, from which cofactors are formed, and the last
    /// row's sum has become the explained sum of squares divided by the residual one. 0 means that N is not positive
    /// definite, with x untouched, or a perfect fit, with x filled.
    double Cholesky(ZoVector& x);
    /// The determinant of a 3 by 3 matrix.
    double Sarrus() const;
    /// Solves a 3 by 3 system. The determinant is not tested: a singular system gives infinities or not-a-number.
    ZoVector Cramer(const ZoVector& b) const;

    /// Becomes the 3 by 3 rotation that takes the unit vector a to the unit vector b the short way; for opposite
    /// vectors a half turn about an axis across a. Always true.
    bool CalcRotMatAlignVector(const ZoVector& a, const ZoVector& b);
    /// The upper left 3 by 3 block becomes Ry(a) * Rx(b) * Rz(c).
    ZoMatrix& MakeRotMatrix(double a, double b, double c);
    /// The columns of the upper left 3 by 3 block become the axes of the frame with x from origin to pointX and y in
    /// the plane of the three points, on the side of pointXY. Where two points fall together or all lie on one line,
    /// the matrix stays and *ok is false.
    ZoMatrix& MakeRotMatrix(const ZoVector& origin, const ZoVector& pointX, const ZoVector& pointXY,
                            bool* ok = nullptr);
    /// Undoes MakeRotMatrix(a, b, c); b comes first. b lies in [-pi/2, pi/2]. Where cos b vanishes only a + c or a - c
    /// is determined, and c is taken as 0.
    void GetRotAngles(double* b, double* a, double* c) const;
    /// Identity, then the rotation about one axis in the upper left 3 by 3 block.
    ZoMatrix& RotXAxis(double angle);
    ZoMatrix& RotYAxis(double angle);
    ZoMatrix& RotZAxis(double angle);
    /// The angle between the z axes that both rotations give, in [0, pi].
    double CalcAngle(const ZoMatrix& other) const;
    /// Whether the sum of the z axes of both rotations is longer than 1.42, that is, they differ by less than about 90
    /// degrees.
    bool IsLookingInSameDirection(const ZoMatrix& other) const;

    /// The homogeneous map of the plane by a 3 by 3 matrix. False, and nothing changes, when the denominator is below
    /// 1e-10.
    bool PTrans2D(double* x, double* y) const {
        const double* m = data;
        const double w = m[6] * *x + m[7] * *y + m[8];
        if (std::fabs(w) < kSmallestDenominator) return false;
        const double px = *x;
        const double py = *y;
        *x = (m[0] * px + m[1] * py + m[2]) / w;
        *y = (m[3] * px + m[4] * py + m[5]) / w;
        return true;
    }
    bool PTrans2D(ZoPoint* point) const;
    bool PTrans2D(ZoVector3d* v) const;
    /// The homogeneous map of space by a 4 by 4 matrix. False, and nothing changes, when the denominator is below
    /// 1e-10.
    bool PTrans3D(double* x, double* y, double* z) const {
        const double* m = data;
        const double w = m[12] * *x + m[13] * *y + m[14] * *z + m[15];
        if (std::fabs(w) < kSmallestDenominator) return false;
        const double px = *x;
        const double py = *y;
        const double pz = *z;
        *x = (m[0] * px + m[1] * py + m[2] * pz + m[3]) / w;
        *y = (m[4] * px + m[5] * py + m[6] * pz + m[7]) / w;
        *z = (m[8] * px + m[9] * py + m[10] * pz + m[11]) / w;
        return true;
    }
    bool PTrans3D(ZoPoint* point) const;

    /// Text form: rows, columns, then the elements row by row. Words and strings in place of an element count as 0.
    /// Returns 1. A brace, the end of the file or an impossible shape throws ZoParserStatus; then the matrix stays.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, with 17 significant digits, a line for each row, without a line end behind the last.
    /// Not-a-number reads back as 0.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive form: rows and columns as 4 bytes each, then the elements row by row. A shape beyond the bytes that are
    /// left leaves the matrix as it is.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    /// A line of text for each row, seven digits behind the point.
    std::string AsString() const;
    /// The same on the debug channel.
    void DbgPrintf() const;
    /// A message and a line end before it.
    void DbgPrintf(const char* format, ...) const ZORV_PRINTF(2, 3);

  private:
    static constexpr double kSmallestDenominator = 1e-10;

    std::ptrdiff_t LineOffset(int r) const { return static_cast<std::ptrdiff_t>(r - 1) * cols - 1; }
    std::ptrdiff_t Count() const { return static_cast<std::ptrdiff_t>(rows) * cols; }
    /// Takes the shape, all zero; a new block only when the shape differs.
    void Reshape(int lines, int columns);
    /// Puts the elements of the present shape on the heap, all zero.
    void MakeBlock();
    ZoMatrix Multiply(const ZoMatrix& other) const;
    /// A small square product with its loops known to the compiler. Each element sums from left to right, as in the
    /// general product. The local array tells the compiler that nothing overlaps.
    template <int n>
    ZoMatrix MultiplySquare(const ZoMatrix& other) const {
        const double* a = data;
        const double* b = other.data;
        double product[kInlineSize] = {};
        for (int r = 0; r < n; ++r) {
            for (int c = 0; c < n; ++c) {
                double sum = 0.0;
                for (int k = 0; k < n; ++k)
                    sum += a[r * n + k] * b[k * n + c];
                product[r * n + c] = sum;
            }
        }
        return ZoMatrix(n, product);
    }
    /// A small square matrix from as many values as fit inside.
    ZoMatrix(int n, const double (&values)[kInlineSize]) : rows(n), cols(n) {
        std::copy_n(values, kInlineSize, elements);
    }
    void SetRotation(int first, int second, double angle);

    double* data = elements;
    double elements[kInlineSize] = {};  // those behind the last one in use stay 0

  public:
    std::int32_t rows = 0;
    std::int32_t cols = 0;

  private:
    std::unique_ptr<double[]> block;  // null while the elements fit inside
};

/// The unit normal of the plane to which a 4 by 4 matrix maps the plane z = 0. False, with the normal as it was, when
/// one of the three points that define it goes to infinity.
ZORV_API bool CalcNormVect(ZoVector* normal, const ZoMatrix& m);

/// Applies PTrans2D to every point of the list. A point that cannot be mapped stays as it is and counts.
/// Returns the number of points; 0 for null.
ZORV_API int Transform2D(ZoPointList* list, const ZoMatrix& m);
/// The same with PTrans3D.
ZORV_API int Transform3D(ZoPointList* list, const ZoMatrix& m);
