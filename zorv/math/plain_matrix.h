#pragma once

#include <cmath>
#include <string>

#include "zorv/export.h"

/// Plain storage of the space types: four doubles, counted from 0, without virtual operations.
class ZORV_API _MVector {
  public:
    double& operator[](int i) { return xyzw[i]; }
    double operator[](int i) const { return xyzw[i]; }
    double* asDblArray() { return xyzw; }
    const double* asDblArray() const { return xyzw; }

    double x() const { return xyzw[0]; }
    double y() const { return xyzw[1]; }
    double z() const { return xyzw[2]; }
    double& x() { return xyzw[0]; }
    double& y() { return xyzw[1]; }
    double& z() { return xyzw[2]; }

    /// "[x y z w] |norm of x, y, z|".
    std::string AsString() const;
    /// Prints nothing.
    void DbgPrintf(const char* = nullptr) const {}

  protected:
    _MVector() {}  // initialises nothing
    /// Mind the order: w comes first.
    constexpr _MVector(double w, double x, double y, double z) : xyzw{x, y, z, w} {}

    double xyzw[4];
};

/// Plain storage of the affine maps: four by four doubles, row by row, counted from 0, without virtual operations.
/// As in ZoMatrix a "line" is what mathematics calls a row, and a "row" is a column.
class ZORV_API _MMatrix {
  public:
    /// The first element of row r.
    double* operator[](int r) { return m[r]; }
    const double* operator[](int r) const { return m[r]; }
    double* asDblArray() { return m[0]; }
    const double* asDblArray() const { return m[0]; }

    /// Copies the matrix row i.
    void GetLine(int i, _MVector& v) const {
        for (int k = 0; k < 4; ++k)
            v[k] = m[i][k];
    }
    /// Copies the matrix column j.
    void GetRow(int j, _MVector& v) const {
        for (int k = 0; k < 4; ++k)
            v[k] = m[k][j];
    }
    void SetLine(int i, const _MVector& v) {
        for (int k = 0; k < 4; ++k)
            m[i][k] = v[k];
    }
    void SetRow(int j, const _MVector& v) {
        for (int k = 0; k < 4; ++k)
            m[k][j] = v[k];
    }

    /// The determinant of the top three rows without column k, k from 0 to 3.
    double Sarrus(int k) const;

    /// Four lines in brackets, five digits behind the point.
    std::string AsString() const;
    /// Prints nothing.
    void DbgPrintf(const char* = nullptr) const {}

    double m[4][4];

  protected:
    _MMatrix() {}  // initialises nothing
};

inline double _MMatrix::Sarrus(int k) const {
    const int c1 = k == 0 ? 1 : 0;
    const int c2 = k <= 1 ? 2 : 1;
    const int c3 = k <= 2 ? 3 : 2;
    return m[0][c1] * m[1][c2] * m[2][c3] + m[0][c2] * m[1][c3] * m[2][c1] + m[0][c3] * m[1][c1] * m[2][c2] -
           m[0][c3] * m[1][c2] * m[2][c1] - m[0][c1] * m[1][c3] * m[2][c2] - m[0][c2] * m[1][c1] * m[2][c3];
}
