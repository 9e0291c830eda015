#include "zorv/math/matrix.h"

#include <cmath>
#include <limits>
#include <utility>

#include "tests/support/allocation_count.h"
#include <gtest/gtest.h>

#include "zorv/points/point.h"

namespace {

using Values = std::vector<double>;

ZoMatrix Counted(int rows, int cols) {
    ZoMatrix m(rows, cols);
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= cols; ++c)
            m[r][c] = (r - 1) * cols + c;
    }
    return m;
}

Values Elements(const ZoMatrix& m) {
    const double* first = m[1] + 1;
    return Values(first, first + m.rows * m.cols);
}

TEST(Matrix, SmallShapesNeedNoHeap) {
    const ZoMatrix a = Counted(4, 4);
    const ZoMatrix b = Counted(3, 3);
    const ZoVector v(1.0, 2.0, 3.0, 4.0);
    const std::size_t before = AllocationCount();
    ZoMatrix product = a * a + a.Transpose() / 2.0;
    product.CalcNGLAN(v);
    double xyz[] = {1.0, 2.0, 3.0};
    EXPECT_TRUE(product.PTrans3D(&xyz[0], &xyz[1], &xyz[2]));
    EXPECT_TRUE(std::isfinite((b * b).Sarrus() + (product * v - v * 2.0) * v + product.Invert().Det()));
    EXPECT_EQ(AllocationCount(), before);
    const ZoMatrix large(4, 5);
    EXPECT_EQ(AllocationCount(), before + 1);
}

TEST(Matrix, CopiesAndMovesKeepAllValues) {
    for (const int cols : {4, 5}) {
        const ZoMatrix original = Counted(4, cols);
        ZoMatrix copy(original);
        const ZoMatrix moved(std::move(copy));
        ZoMatrix assigned(4, cols);
        assigned = moved;
        EXPECT_EQ(Elements(assigned), Elements(original));
    }
    ZoVector large(6);
    large.SetElem(6, 2.5);
    const ZoVector copy(large), moved(std::move(large));
    EXPECT_EQ(moved, copy);
    ZoVector small(1.0, 2.0);
    small = ZoVector(7.0, 8.0, 9.0);
    EXPECT_EQ(small, ZoVector(7.0, 8.0)) << "an assignment does not change the size";
    EXPECT_NE(small, ZoVector(7.0, 8.0, 0.0));
}

TEST(Matrix, IdentityMayLackOnes) {
    ZoMatrix m(3, 3);
    EXPECT_TRUE(m.IsIdent() && ZoMatrix(0, 5).IsIdent());
    m.SetIdent();
    m[2][2] = 0.0;
    EXPECT_TRUE(m.IsIdent());
    m[2][2] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(m.IsIdent());
    m.SetIdent();
    m[3][1] = 1e-300;
    EXPECT_FALSE(m.IsIdent());
}

TEST(Matrix, LinesAreHorizontalAndRowsVertical) {
    ZoMatrix m = Counted(2, 2);
    ZoVector v(2);
    m.GetLine(2, v);
    EXPECT_EQ(v, ZoVector(3.0, 4.0));
    m.GetRow(2, v);
    EXPECT_EQ(v, ZoVector(2.0, 4.0));
    m.SetLine(1, v);
    m.SetRow(1, ZoVector(9.0, 8.0));
    EXPECT_EQ(Elements(m), (Values{9, 4, 8, 4}));

    ZoMatrix wide = Counted(2, 4);
    wide.AddLines(1, 2, 3, 10.0);
    wide.MultLine(2, 2, -1.0, 3);
    wide.MultLine(1, 4, 2.0);
    wide.AddLines(2, 2, 1, 1.0, 1);
    wide.SwapLines(1, 2);
    EXPECT_EQ(Elements(wide), (Values{10, -6, -7, 8, 1, 2, 73, 168}));
    EXPECT_EQ(Elements(wide.Transpose()), (Values{10, 1, -6, 2, -7, 73, 8, 168}));
}

// Worked out in rational arithmetic outside of this program.
TEST(Matrix, ProductsAgreeWithExactArithmetic) {
    const double p[] = {1, -2, 3, 0, 4, 2, 1, 0, -1, 5, 0, 3, 1, 2, -2};
    const double q[] = {1, 2, 0, -1, 3, 1, 2, 2, -1, 4};
    EXPECT_EQ(Elements(ZoMatrix(p, 3, 5) * ZoMatrix(q, 5, 2)), (Values{6, 23, -5, 21, 9, -6}));
    const double a3[] = {1, 2, 3, 0, -1, 4, 5, 6, 0};
    const double b3[] = {2, 5, -1, 0, 3, 4, 7, -2, 6};
    EXPECT_EQ(Elements(ZoMatrix(a3, 3, 3) * ZoMatrix(b3, 3, 3)), (Values{23, 5, 25, 28, -11, 20, 10, 43, 19}));
    const double a4[] = {1, 2, 3, 4, 0, -1, 2, 1, 5, 0, 1, -2, 3, 3, -3, 1};
    const double b4[] = {2, -1, 0, 3, 4, 0, 5, -2, -3, 7, 1, 1, 1, 2, -6, 4};
    EXPECT_EQ(Elements(ZoMatrix(a4, 4, 4) * ZoMatrix(b4, 4, 4)),
              (Values{5, 28, -11, 18, -9, 16, -9, 8, 5, -2, 13, 8, 28, -22, 6, 4}));
    EXPECT_EQ(ZoMatrix(a3, 3, 3) * ZoVector(1.0, -1.0, 2.0), ZoVector(5.0, 9.0, -1.0));
    ZoMatrix normal(2, 3);
    normal.CalcNGLAN(ZoVector(1.0, -3.0));
    normal.CalcNGLAN(ZoVector(2.0, 4.0));
    EXPECT_EQ(Elements(normal), (Values{5, 5, 0, 5, 25, 0}));
}

TEST(Matrix, OperatorsOfVectors) {
    // 5 * (1 / 3) and 5 / 3 differ in the last digit; division is the former.
    ASSERT_NE(5.0 * (1.0 / 3.0), 5.0 / 3.0);
    EXPECT_EQ((ZoVector(5.0, 1.0) / 3.0)[1], 5.0 * (1.0 / 3.0));
    EXPECT_EQ((Counted(5, 1) / 3.0)[5][1], 5.0 * (1.0 / 3.0));
    EXPECT_EQ(ZoVector(1.0, 2.0, 3.0) * ZoVector(10.0, 100.0), 210.0) << "over the size of the right operand";
    EXPECT_EQ(ZoVector(1.0, 2.0, 3.0, 9.0) % ZoVector(-2.0, 1.0, 5.0, 9.0), ZoVector(7.0, -11.0, 5.0));
    EXPECT_EQ(ZoVector::kXaxis3D % ZoVector::kYaxis3D, ZoVector::kZaxis3D);
    ZoVector v(2.0, 3.0, 6.0);
    EXPECT_TRUE(!v.IsNormalized(5.9) && v.IsNormalized(6.0) && v.Normalize().IsNormalized(1e-15));
    EXPECT_FALSE(ZoVector(3).Normalize().IsNormalized(10.0));
}

TEST(Matrix, PointsBecomeVectorsByType) {
    const ZoPoint point(5, 1.0, 2.0, 3.0, 7);
    const ZoVector expected[] = {{1.0, 2.0, 0.0}, {1.0, 2.0, 1.0}, {1.0, 2.0, 3.0}, {1.0, 2.0, 3.0, 0.0}};
    const ZoVector changed[] = {{1.0, 2.0, 0.0}, {1.0, 2.0, 1.0}, {1.0, 2.0, 8.0}, {1.0, 2.0, 8.0, 9.0}};
    for (const eZoVectorType type : {eZoVectorXY0, eZoVectorXY1, eZoVectorXYZ, eZoVectorXYZ0}) {
        EXPECT_EQ(ZoVector(point, type), expected[type]) << type;
        ZoVector v(1.0, 2.0, 8.0, 9.0);
        v.ChangeType(type);
        EXPECT_EQ(v, changed[type]) << type;
        ZoVector three(1.0, 2.0, 8.0);
        three.ChangeType(type);
        EXPECT_EQ(three, type == eZoVectorXYZ0 ? ZoVector(1.0, 2.0, 8.0, 1.0) : ZoVector(1.0, 2.0, 8.0)) << type;
    }
    const ZoPoint back = point.GetAsVector().GetAsZoPoint();
    EXPECT_TRUE(back == point && back.id == 0 && back.controlFlags == 0);
}

}  // namespace
