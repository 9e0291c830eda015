#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "zorv/export.h"

class CZipWrapper;
class ZoPoint;
class ZoReaderObject;

/// How the coordinates x, y, z of a point become a vector, and what ZoVector::ChangeType makes of four elements.
enum eZoVectorType : int {
    eZoVectorXY0 = 0,   ///< x, y, 0
    eZoVectorXY1 = 1,   ///< x, y, 1
    eZoVectorXYZ = 2,   ///< x, y, z
    eZoVectorXYZ0 = 3,  ///< x, y, z, 0
};

/// A vector of doubles, counted from 1. Up to four elements need no heap block.
///
/// No operation checks sizes: operands have the size that the operation needs. The size is that of construction until
/// ChangeType, Read or ReadV9 changes it; an assignment does not.
class ZORV_API ZoVector {
  public:
    static constexpr int kInlineSize = 4;

    static const ZoVector kXaxis2D;  ///< (1, 0)
    static const ZoVector kYaxis2D;  ///< (0, 1)
    static const ZoVector kXaxis3D;  ///< (1, 0, 0)
    static const ZoVector kYaxis3D;  ///< (0, 1, 0)
    static const ZoVector kZaxis3D;  ///< (0, 0, 1)

    constexpr ZoVector() = default;
    /// All zero. A negative size counts as 0.
    explicit ZoVector(int count) : size(std::max(count, 0)) {
        if (size > kInlineSize) MakeBlock();
    }
    constexpr ZoVector(double x, double y) : elements{x, y}, size(2) {}
    constexpr ZoVector(double x, double y, double z) : elements{x, y, z}, size(3) {}
    constexpr ZoVector(double x, double y, double z, double w) : elements{x, y, z, w}, size(4) {}
    ZoVector(const ZoPoint& point, eZoVectorType type);
    /// Reads at once; throws what Read throws.
    explicit ZoVector(ZoReaderObject* object) { Read(object); }
    ZoVector(const ZoVector& other) : size(other.size) {
        if (size > kInlineSize) MakeBlock();
        std::copy_n(other.data, size, data);
    }
    ZoVector(ZoVector&& other) noexcept;
    virtual ~ZoVector() = default;

    /// Copies as many elements as this vector has; its size stays.
    ZoVector& operator=(const ZoVector& other) {
        std::copy_n(other.data, &other == this ? 0 : std::min(size, other.size), data);
        return *this;
    }

    /// The same for a vector of the same size only; false, and nothing changes, for another.
    bool AssignSameShape(const ZoVector& other) {
        if (size != other.size) return false;
        *this = other;
        return true;
    }

    int GetSize() const { return size; }
    double& operator[](int i) { return data[i - 1]; }
    double operator[](int i) const { return data[i - 1]; }
    double GetElem(int i) const { return data[i - 1]; }
    double SetElem(int i, double value) { return data[i - 1] = value; }
    void Clear() { std::fill_n(data, size, 0.0); }

    ZoVector operator+(const ZoVector& other) const {
        ZoVector result(*this);
        result += other;
        return result;
    }
    ZoVector operator-(const ZoVector& other) const {
        ZoVector result(*this);
        result -= other;
        return result;
    }
    ZoVector operator*(double factor) const {
        ZoVector result(*this);
        result *= factor;
        return result;
    }
    ZoVector operator/(double divisor) const {
        ZoVector result(*this);
        result /= divisor;
        return result;
    }
    ZoVector& operator+=(const ZoVector& other) {
        for (int i = 0; i < size; ++i)
            data[i] += other.data[i];
        return *this;
    }
    ZoVector& operator-=(const ZoVector& other) {
        for (int i = 0; i < size; ++i)
            data[i] -= other.data[i];
        return *this;
    }
    ZoVector& operator*=(double factor) {
        for (int i = 0; i < size; ++i)
            data[i] *= factor;
        return *this;
    }
    /// Multiplies by 1 / divisor.
    ZoVector& operator/=(double divisor) { return *this *= 1.0 / divisor; }
    /// The dot product, over the size of the right operand.
    double operator*(const ZoVector& other) const {
        double sum = 0.0;
        for (int i = 0; i < other.size; ++i)
            sum += data[i] * other.data[i];
        return sum;
    }
    /// The cross product of the first three elements; always of size 3.
    ZoVector operator%(const ZoVector& other) const {
        const double* a = data;
        const double* b = other.data;
        return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    }
    /// 1 when size and all elements are exactly the same, else 0.
    int operator==(const ZoVector& other) const {
        return size == other.size && std::equal(data, data + size, other.data) ? 1 : 0;
    }
    int operator!=(const ZoVector& other) const { return *this == other ? 0 : 1; }

    /// The Euclidean norm.
    double Abs() const { return std::sqrt(*this * *this); }
    /// Multiplies by 1 / Abs(). The zero vector becomes not-a-number.
    ZoVector& Normalize() { return *this *= 1.0 / Abs(); }
    /// Whether the norm lies in [1 - eps, 1 + eps].
    bool IsNormalized(double eps) const;

    /// From size 4 to size 3 with the third element of that type (eZoVectorXYZ0 changes nothing); eZoVectorXYZ0 makes
    /// size 3 to size 4 with the fourth element 1. Otherwise nothing happens.
    void ChangeType(eZoVectorType type);
    /// A point with the first three elements as coordinates, else new.
    ZoPoint GetAsZoPoint() const;

    /// Text form: the size, then the elements. Words and strings in place of an element count as 0. Returns 1.
    /// A brace, the end of the file or an impossible size throws ZoParserStatus; then the vector stays.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes, with 17 significant digits, without a line end. Not-a-number reads back as 0.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive form: the size as 4 bytes, then the elements. A size beyond the bytes that are left leaves the vector
    /// as it is.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    /// The elements in brackets, six digits behind the point.
    std::string AsString() const;
    /// One line on the debug channel: label, elements and norm.
    void DbgPrintf(const char* label = nullptr) const;

  private:
    friend class ZoMatrix;

    /// Takes the size, all zero; a new block only when the size differs.
    void Reshape(int count);
    /// Puts the elements of the present size on the heap, all zero.
    void MakeBlock();

    double* data = elements;
    double elements[kInlineSize] = {};
    std::int32_t size = 0;
    std::unique_ptr<double[]> block;  // null while the elements fit inside
};

/// The x and y axes that the arbitrary axis algorithm of the DXF format gives for a normal: x is (0, 1, 0) x normal
/// when the normal's x and y lie below 1/64, otherwise (0, 0, 1) x normal; both are normalised. The out vectors have
/// size 3. Always true.
ZORV_API bool CalcArbitaryAlg(ZoVector* xAxis, ZoVector* yAxis, const ZoVector& normal);
