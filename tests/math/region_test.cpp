#include "zorv/math/region.h"

#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/units.h"
#include "zorv/math/line.h"
#include "zorv/math/polygon.h"

namespace {

void ExpectBounds(const ZoRegion& region, double left, double bottom, double right, double top) {
    EXPECT_EQ(std::tuple(region.Left(), region.Bottom(), region.Right(), region.Top()),
              std::tuple(left, bottom, right, top));
}

/// A square with a notch from above down to (2, 1).
ZoPolygon Notched() {
    ZoPolygon polygon(ZOPolygon2d);
    const double corners[][2] = {{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}};
    for (const auto& [x, y] : corners)
        polygon.AddPoint(ZoPoint(0, x, y, 0, 0));
    return polygon;
}

TEST(Region, SortsItsBoundsAndNamesItsCorners) {
    const ZoRegion region(5, 6, 1, 2);
    ExpectBounds(region, 1, 2, 5, 6);
    EXPECT_EQ(region.GetUL(), ZoPoint(0, 1, 6, 0, 0));
    EXPECT_EQ(region.GetLR(), ZoPoint(0, 5, 2, 0, 0));
    EXPECT_EQ(region.GetCenter(), ZoPoint(0, 3, 4, 0, 0));
    EXPECT_EQ(ZoRegion(0, 0, 2, 7).MaxDimension(), 7);
    ExpectBounds(region + ZoRegion(1, 2, 3, 5) - ZoRegion(0, 1, 1, 1), 2, 3, 7, 10);
    ZoRegion grown = region;
    grown += 1;
    ExpectBounds(grown, 0, 1, 6, 7);
    ConvertUnit(&grown, eZoUnitM, eZoUnitMm);
    ExpectBounds(grown, 0, 1000, 6000, 7000);
}

TEST(Region, OverlapIsClosed) {
    const ZoRegion region(0, 0, 4, 4);
    EXPECT_TRUE(region.Overlap(ZoRegion(4, 4, 5, 5)));
    EXPECT_TRUE(ZoRegion(4, 4, 5, 5).Overlap(region));
    EXPECT_TRUE(!region.Overlap(ZoRegion(4.001, 0, 5, 5)) && region.Overlap(ZoPoint(0, 0, 4, 99, 0)));
    ZoRegion unsorted;
    unsorted.Left() = 3;
    unsorted.Top() = 2;
    EXPECT_TRUE(unsorted.Overlap(ZoPoint(0, 1, 1, 0, 0)));
}

TEST(Region, IntersectionHasZeroBoundsWhereRegionsAreApart) {
    ExpectBounds(ZoRegion(1, 1, 4, 4).Intersect(ZoRegion(2, 0, 9, 3)), 2, 1, 4, 3);
    ExpectBounds(ZoRegion(1, 1, 4, 4).Intersect(ZoRegion(7, 2, 9, 3)), 0, 2, 0, 3);
    ExpectBounds(ZoRegion(1, 1, 4, 4).Union(ZoRegion(7, 0, 9, 3)), 1, 0, 9, 4);
    double lo = 9, hi = 9;
    ZoIntervall(lo, hi, 5, 1, 9, 5);  // the second begins where the first ends
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 0);
    ZoIntervall(lo, hi, 5, 9, 1, 5);  // the second ends where the first begins
    EXPECT_EQ(lo, 5);
    EXPECT_EQ(hi, 5);
}

TEST(Polygon, RectangleFromRegionAndMeasures) {
    const ZoPolygon rectangle{ZoRegion(1, 2, 4, 6)};
    ASSERT_EQ(rectangle.Count(), 4);
    EXPECT_EQ(rectangle.First()->GetId(), 1u);
    EXPECT_EQ(*rectangle.GetPoints().Get(1), ZoPoint(0, 4, 2, 0, 0));
    EXPECT_EQ(std::tuple(rectangle.Area(false), rectangle.Length(true), rectangle.Length(false)),
              std::tuple(12, 14, 10));
    EXPECT_EQ(rectangle.Center().x(), 2.5);

    ZoPolygon polygon(ZOPolygon3d);
    EXPECT_EQ(polygon.Area(true), -1);
    polygon.AddPoint(ZoPoint(0, 0, 0, 0, 0));
    EXPECT_EQ(polygon.Length(true), -1);
    polygon.AddPoint(ZoPoint(0, 0, 3, 4, 0));
    EXPECT_EQ(polygon.Length(true), 5);
    polygon.AddPoint(*polygon.First());
    EXPECT_EQ(polygon.Length(true), 10);
    EXPECT_EQ(polygon.Deep(), 4);
}

TEST(Polygon, EvenOddInsideAndBoxOnly) {
    ZoPolygon polygon = Notched();
    EXPECT_TRUE(polygon.Overlap(ZoPoint(0, 0.5, 2, 0, 0)) && polygon.Overlap(ZoPoint(0, 3.5, 2, 0, 0)));
    EXPECT_FALSE(polygon.Overlap(ZoPoint(0, 2, 2, 0, 0)) || polygon.Overlap(ZoPoint(0, 5, 2, 0, 0)));
    polygon.mode = ZOPolygon3d;
    EXPECT_TRUE(polygon.Overlap(ZoPoint(0, 2, 2, 0, 0)) && !polygon.Overlap(ZoPoint(0, 2, 2, 1, 0)));
    polygon.mode = static_cast<ZOPolygonMode>(7);
    EXPECT_FALSE(polygon.Overlap(ZoPoint(0, 2, 2, 0, 0)));
}

TEST(Polygon, TextReadsBackAndTwoPointsAreARectangle) {
    ZoPolygon polygon(ZOPolygon2dId);
    for (unsigned int id : {7u, 9u, 4000000000u})
        polygon.AddPoint(ZoPoint(id, 0.1 * id, 1.0 / id, 0, 0));
    const std::string text = WrittenText(polygon);
    ZoPolygon back(ZOPolygon2dId);
    ReadBlock(text, [&back](ZoReaderObject* object) { back.Read(object); });
    ASSERT_EQ(back.Count(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(*back.GetPoints().Get(i), *polygon.GetPoints().Get(i));
        EXPECT_EQ(back.GetPoints().Get(i)->GetId(), polygon.GetPoints().Get(i)->GetId());
    }
    EXPECT_EQ(back.GetRegion(), polygon.GetRegion());

    ZoPolygon rectangle(ZOPolygon2d);
    ReadBlock("4 6 1 2", [&rectangle](ZoReaderObject* object) { rectangle.Read(object); });
    ASSERT_EQ(rectangle.Count(), 4);
    EXPECT_EQ(rectangle.GetRegion(), ZoRegion(1, 2, 4, 6));
    ZoPolygon none(static_cast<ZOPolygonMode>(9));
    ReadBlock("1 2 3", [&none](ZoReaderObject* object) { none.Read(object); });
    EXPECT_EQ(none.Count(), 0);

    ZoRegion region;
    ReadBlock("4 6 1 2", [&region](ZoReaderObject* object) { region.Read(object); });
    ExpectBounds(region, 4, 6, 1, 2);
}

}  // namespace
