#include "zorv/orientation/planar_trafo.h"

#include <algorithm>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/math/matrix.h"
#include "zorv/points/point.h"

namespace {

constexpr int kCoefsOfType[] = {0, 4, 6, 8, 20, 0};

/// A transformation with all coefficients, 1, 2, 3, ...
ZoTrafo2d Counting(int type) {
    ZoTrafo2d trafo;
    trafo.type = static_cast<eZoTrafo2DType>(type);
    for (int i = 0; i < ZoTrafo2d::kCoefCount; ++i)
        trafo.coef[i] = i + 1;
    return trafo;
}

bool operator==(const ZoTrafo2d& a, const ZoTrafo2d& b) {
    return a.type == b.type && std::equal(std::begin(a.coef), std::end(a.coef), b.coef);
}

TEST(PlanarTrafo, MapsByItsTypeAsItsMatrixDoes) {
    // Where (2, -1) goes, by hand. The terms of the polynomial are there 1, 2, -1, 4, -2, 1, 8, -4, 2, -1.
    const ZoPoint mapped[] = {{0, 2, -1, 0, 0},          {0, 9, 9, 0, 0},    {0, 2, 8, 0, 0},
                              {0, 3 / 7., 9 / 7., 0, 0}, {0, 46, 146, 0, 0}, {0, 2, -1, 0, 0}};
    for (int type = eTrafo2DNone; type <= eTrafo2DInvHelmert; ++type) {
        const ZoTrafo2d trafo = Counting(type);
        ZoPoint point(0, 2, -1, 0, 0);
        EXPECT_EQ(trafo.Transform(&point), kCoefsOfType[type] > 0);
        EXPECT_LT(point.Distance(mapped[type]), 1e-15) << type;

        ZoMatrix m;  // takes the shape
        trafo.BuildMatrix(&m);
        ZoPoint byMatrix(0, 2, -1, 0, 0);
        EXPECT_TRUE(m.PTrans2D(&byMatrix));
        EXPECT_EQ(point.Distance(byMatrix) < 1e-15, type != eTrafo2DPolynomial) << type;
        ZoTrafo2d back = Counting(eTrafo2DNone);
        if (m.IsIdent()) m[1][3] = 8.0;
        back.SetFromMatrix(m, trafo.type);
        EXPECT_TRUE(back == trafo) << type;
    }
    ZoTrafo2d trafo = Counting(eTrafo2DProjektiv);  // w = 7 x + 8 y + 1
    ZoPoint point(0, 1, -1 + 1e-12, 0, 0);
    EXPECT_FALSE(trafo.Transform(&point));
    trafo.type = static_cast<eZoTrafo2DType>(77);
    EXPECT_FALSE(trafo.Transform(&point));
    EXPECT_EQ(point, ZoPoint(0, 1, -1 + 1e-12, 0, 0));
}

TEST(PlanarTrafo, HelmertBackwards) {
    ZoTrafo2d trafo;
    trafo.Set(1000.0, 0.6, -2000.0, -0.8);
    const ZoPoint start(0, 12.5, -7.25, 0, 0);
    ZoPoint point(start);
    ASSERT_TRUE(trafo.Transform(&point));
    trafo.type = eTrafo2DPolynomial;  // the way back does not ask
    ASSERT_TRUE(trafo.TransInvHelmert(&point));
    EXPECT_LT(point.Distance(start), 2e-12);  // a few ulp of the shift
    point = start;
    trafo.SetIdent();
    EXPECT_TRUE(trafo.Transform(&point));
    trafo.Set(3, 0, 4, 0);
    EXPECT_FALSE(trafo.TransInvHelmert(&point));
    EXPECT_EQ(point, start);
}

TEST(PlanarTrafo, TextForms) {
    ZoTrafo2d trafo;
    trafo.Set(1, -0.1, 1e10 / 3, 4, 5, 6e-5);
    EXPECT_EQ(WrittenText(trafo),
              "    2\n"
              "                        1                     -0.1        3333333333.333333                        4\n"
              "                        5                    6e-05");
    const int old[] = {99, 2, 1, 0, 3, -1};
    for (int type = eTrafo2DNone; type <= eTrafo2DInvHelmert; ++type) {
        const std::string text = WrittenText(Counting(type)) + " \"name\"";
        for (const bool isOld : {false, true}) {
            ZoTrafo2d back = Counting(-7);
            std::fill_n(back.coef, kCoefsOfType[type], 0.0);
            const bool known = !isOld || kCoefsOfType[type] > 0;
            const std::string number = std::to_string(isOld ? old[type] : type);
            ReadBlock(number + text.substr(5), [&](ZoReaderObject* object) {
                EXPECT_EQ(isOld ? back.ReadV50(object) : back.Read(object), 1);
                EXPECT_STREQ(object->GetReader()->GetParser().GetTokenString(), "name");
            });
            EXPECT_TRUE(back == Counting(known ? type : -7)) << isOld << " " << type;
        }
    }
    for (const char* text : {"", "word", "1.5 1 2 3 4", "1 1 2 3", "2 1 2 nan 4 5 6", "3 1 2 3 {", "4 1", "\"1\""}) {
        EXPECT_GT(ReadBlock(text, [&](ZoReaderObject* object) { trafo.Read(object); }), 0) << text;
        EXPECT_EQ(trafo.coef[5], 6e-5);
        EXPECT_EQ(trafo.type, eTrafo2DAffin) << text;
    }
}

TEST(PlanarTrafo, ArchiveRecordHoldsAllCoefficients) {
    ZoTrafo2d trafo;
    trafo.Set(1, -2, 0.5, 0);
    const std::string bytes = ArchiveBytes(trafo);
    const std::string begin = HexBytes("01000000 000000000000f03f 00000000000000c0 000000000000e03f");
    EXPECT_EQ(bytes, begin + std::string(17 * 8, '\0'));
    ZoTrafo2d back = Counting(eTrafo2DPolynomial);
    for (const std::size_t size : {0, 3, 4, 163})
        ReadArchiveBytes(bytes.substr(0, size), back);
    EXPECT_TRUE(back == Counting(eTrafo2DPolynomial));
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_TRUE(back == trafo);
}

}  // namespace
