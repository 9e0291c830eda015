#include "zorv/math/matrix.h"

#include <utility>

ZoMatrix::ZoMatrix(ZoMatrix&& other) noexcept
    : rows(std::exchange(other.rows, 0)), cols(std::exchange(other.cols, 0)), block(std::move(other.block)) {
    std::copy_n(other.elements, kInlineSize, elements);
    if (block) data = block.get();
    std::fill_n(other.elements, kInlineSize, 0.0);
    other.data = other.elements;
}

void ZoMatrix::MakeBlock() {
    block = std::make_unique<double[]>(static_cast<std::size_t>(Count()));
    data = block.get();
}

void ZoMatrix::Reshape(int lines, int columns) {
    if (lines == rows && columns == cols) return Clear();
    ZoMatrix fresh(lines, columns);
    rows = fresh.rows;
    cols = fresh.cols;
    block = std::move(fresh.block);
    data = block ? block.get() : elements;
    std::fill_n(elements, kInlineSize, 0.0);
}

void ZoMatrix::Set(const double* values, int lines, int columns) {
    Reshape(lines, columns);
    std::copy_n(values, Count(), data);
}

void ZoMatrix::SetIdent() {
    Clear();
    for (int i = 1; i <= std::min(rows, cols); ++i)
        SetElem(i, i, 1.0);
}

bool ZoMatrix::IsIdent() const {
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= cols; ++c) {
            const double element = GetElem(r, c);
            if (element != 0.0 && (r != c || element != 1.0)) return false;
        }
    }
    return true;
}

void ZoMatrix::GetLine(int i, ZoVector& v) const {
    std::copy_n(data + LineOffset(i) + 1, v.size, v.data);
}

void ZoMatrix::SetLine(int i, const ZoVector& v) {
    std::copy_n(v.data, v.size, data + LineOffset(i) + 1);
}

void ZoMatrix::GetRow(int j, ZoVector& v) const {
    for (int r = 1; r <= v.size; ++r)
        v[r] = GetElem(r, j);
}

void ZoMatrix::SetRow(int j, const ZoVector& v) {
    for (int r = 1; r <= v.size; ++r)
        SetElem(r, j, v[r]);
}

void ZoMatrix::AddLines(int dst, int src, int firstCol, double factor, int lastCol) {
    double* to = (*this)[dst];
    const double* from = (*this)[src];
    const int last = lastCol == -1 ? cols : lastCol;
    for (int c = firstCol; c <= last; ++c)
        to[c] += factor * from[c];
}

void ZoMatrix::MultLine(int line, int firstCol, double factor, int lastCol) {
    double* elem = (*this)[line];
    const int last = lastCol == -1 ? cols : lastCol;
    for (int c = firstCol; c <= last; ++c)
        elem[c] *= factor;
}

void ZoMatrix::SwapLines(int a, int b) {
    if (a == b) return;
    double* first = data + LineOffset(a) + 1;
    std::swap_ranges(first, first + cols, data + LineOffset(b) + 1);
}

ZoMatrix ZoMatrix::Transpose() const {
    ZoMatrix result(cols, rows);
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= cols; ++c)
            result.SetElem(c, r, GetElem(r, c));
    }
    return result;
}

void ZoMatrix::CalcNGLAN(const ZoVector& v) {
    for (int i = 0; i < v.size; ++i) {
        double* line = data + static_cast<std::ptrdiff_t>(i) * cols;
        const double factor = v.data[i];
        for (int j = 0; j < v.size; ++j)
            line[j] += factor * v.data[j];
    }
}

ZoMatrix& ZoMatrix::operator+=(const ZoMatrix& other) {
    for (std::ptrdiff_t i = 0; i < Count(); ++i)
        data[i] += other.data[i];
    return *this;
}

ZoMatrix& ZoMatrix::operator-=(const ZoMatrix& other) {
    for (std::ptrdiff_t i = 0; i < Count(); ++i)
        data[i] -= other.data[i];
    return *this;
}

ZoMatrix& ZoMatrix::operator*=(double factor) {
    for (std::ptrdiff_t i = 0; i < Count(); ++i)
        data[i] *= factor;
    return *this;
}

ZoMatrix ZoMatrix::Multiply(const ZoMatrix& other) const {
    ZoMatrix result(rows, other.cols);
    // Line by line, so that the memory is walked in order; each element still sums from left to right.
    for (std::ptrdiff_t r = 0; r < rows; ++r) {
        double* sums = result.data + r * other.cols;
        for (std::ptrdiff_t k = 0; k < cols; ++k) {
            const double factor = data[r * cols + k];
            const double* line = other.data + k * other.cols;
            for (std::ptrdiff_t c = 0; c < other.cols; ++c)
                sums[c] += factor * line[c];
        }
    }
    return result;
}

ZoVector ZoMatrix::operator*(const ZoVector& v) const {
    ZoVector result(rows);
    const double* line = data;
    for (int r = 0; r < rows; ++r, line += cols) {
        double sum = 0.0;
        for (int c = 0; c < cols; ++c)
            sum += line[c] * v.data[c];
        result.data[r] = sum;
    }
    return result;
}
