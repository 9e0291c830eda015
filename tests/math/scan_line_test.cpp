#include "zorv/math/scan_line.h"

#include <cmath>
#include <limits>
#include <memory>

#include <gtest/gtest.h>

#include "zorv/math/polygon.h"
#include "zorv/math/triangulation.h"

namespace {

ZoPolygon Polygon(const std::vector<std::pair<double, double>>& corners) {
    ZoPolygon polygon(ZOPolygon2d);
    for (const auto& [x, y] : corners)
        polygon.AddPoint(ZoPoint(0, x, y, 0, 0));
    return polygon;
}

struct Span {
    int line;
    double y, left, right;
};

class Spans : public ZoScanLine {
  public:
    using ZoScanLine::CreateEdgeTable;
    using ZoScanLine::ToEdgeTable;
    using ZoScanLine::ZoScanLine;
    bool Callback_Line() override {
        spans.push_back({iY + 1, dy, left, right});
        return false;  // must not matter
    }
    std::vector<Span> spans;
};

TEST(ScanLine, SpansOfATriangle) {
    ZoPolygon triangle = Polygon({{0, 0}, {10, 0}, {0, 10}});
    Spans scan(&triangle, 10, 0.0, 10.0);
    ASSERT_TRUE(scan.Process());
    ASSERT_EQ(scan.spans.size(), 11u);
    for (int line = 1; line < 10; ++line) {
        const Span& span = scan.spans[static_cast<std::size_t>(line)];
        EXPECT_EQ(std::tuple(span.line, span.y, span.left, span.right), std::tuple(line, line, -0.5, 10 - line + 0.5));
    }
    EXPECT_FALSE(scan.Process()) << "the table is used up";

    Spans whole(&triangle, 10, 0.0, 10.0);
    whole.SetNormalClippingMode(false);
    ASSERT_TRUE(whole.Process());
    EXPECT_EQ(std::tuple(whole.spans[3].left, whole.spans[3].right), std::tuple(0, 10));
}

// A vertex between two edges counts once: off the horizontal edges every line has an even number of crossings, at the
// places that solving the edges for x gives.
TEST(ScanLine, CrossingsAgreeWithTheEdges) {
    const std::vector<std::pair<double, double>> corners{{0, 0}, {12, 2}, {20, 0}, {17, 9}, {21, 20}, {9, 13}, {1, 19}};
    ZoPolygon polygon = Polygon(corners);
    Spans scan(&polygon, 20, 0.0, 20.0);
    ASSERT_TRUE(scan.Process());
    int checked = 0;
    for (const Span& span : scan.spans) {
        std::vector<double> crossings;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const auto [ax, ay] = corners[i];
            const auto [bx, by] = corners[(i + 1) % corners.size()];
            if ((ay <= span.y) != (by <= span.y)) crossings.push_back(ax + (span.y - ay) * (bx - ax) / (by - ay));
        }
        const bool atVertex = std::any_of(corners.begin(), corners.end(), [&](auto c) { return c.second == span.y; });
        if (atVertex) continue;
        ++checked;
        EXPECT_TRUE(std::any_of(crossings.begin(), crossings.end(), [&](double x) {
            return std::fabs(x - 0.5 - span.left) < 1e-9;
        })) << span.y;
        EXPECT_TRUE(std::any_of(crossings.begin(), crossings.end(), [&](double x) {
            return std::fabs(x + 0.5 - span.right) < 1e-9;
        })) << span.y;
    }
    EXPECT_GE(checked, 14);
}

TEST(ScanLine, StaysInsideItsTable) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    ZoPolygon beyond = Polygon({{0, -50}, {10, -50}, {10, 50}, {0, 50}});
    Spans cut(&beyond, 10, 0.0, 10.0);
    ASSERT_TRUE(cut.Process());
    EXPECT_EQ(cut.spans.front().line, 0) << "an edge from below is cut at line 0";
    EXPECT_EQ(cut.spans.front().right, 10.5);
    ZoPolygon slanted = Polygon({{-10, -10}, {30, -10}, {30, 10}, {10, 10}});
    Spans moved(&slanted, 10, 0.0, 10.0);
    ASSERT_TRUE(moved.Process());
    EXPECT_NEAR(moved.spans.front().left, 0 - 0.5, 1e-12);

    for (ZoPolygon wild :
         {Polygon({{nan, nan}, {1, 2}, {3, nan}}), Polygon({{0, -infinity}, {1, infinity}, {2, 1e300}}),
          Polygon({{-1e300, -1e300}, {1e300, 1e300}, {0, 3}})}) {
        Spans scan(&wild, 7, 0.0, 7.0);
        scan.Process();
        EXPECT_LE(scan.spans.size(), 8u * 2);
    }
    EXPECT_FALSE(Spans(&beyond, 10, 5.0, 5.0).Process() || Spans(&beyond, 10, nan, 5.0).Process());
    ZoPolygon empty(ZOPolygon2d);
    EXPECT_FALSE(Spans(&empty, 10, 0.0, 10.0).Process());
    EXPECT_EQ(Spans(&beyond, -3, 0.0, 10.0).n, 1);
    EXPECT_FALSE(ZoScanLine().Process());

    // What a subclass may do with the fields.
    Spans own;
    own.ToEdgeTable(std::make_unique<EdgeTableEntry>().release(), 0);
    EXPECT_FALSE(own.Process()) << "there is no table yet";
    own.polygon = &beyond;
    own.n = -3;
    own.step = 1.0;
    ASSERT_TRUE(own.CreateEdgeTable());
    own.n = 1000000;
    ASSERT_TRUE(own.Process());
    EXPECT_LE(own.spans.size(), 3u);
}

TEST(ScanLine, CopiesOwnTheirEdges) {
    ZoPolygon square = Polygon({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    Spans first(&square, 4, 0.0, 4.0), second(first);
    EXPECT_TRUE(first.Process());
    EXPECT_TRUE(second.Process());
    EXPECT_EQ(first.spans.size(), second.spans.size());
}

double Area(const ZoPoint& a, const ZoPoint& b, const ZoPoint& c) {
    return ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
}

TEST(TriangulatePolygon, EarsCoverThePolygon) {
    const ZoPolygon comb = Polygon({{0, 0}, {10, 0}, {10, 5}, {8, 1}, {6, 5}, {4, 1}, {2, 5}, {0.5, 1}});
    const ZoTriangulatePolygon triangles(comb.GetPoints());
    ASSERT_EQ(triangles.tripels.Size(), 5);
    ASSERT_EQ(triangles.points.Count(), 8);
    double area = 0;
    for (int i = 0; i < triangles.tripels.Size(); ++i) {
        const ZoPointTripel& tripel = triangles.tripels[i];
        EXPECT_TRUE(tripel.IsValid() && tripel.IsVisible(0) && tripel.IsInTripel(tripel[2]));
        const double ear = Area(*tripel[0], *tripel[1], *tripel[2]);
        EXPECT_GE(ear, 0) << i;
        area += ear;
    }
    const ZoPoint* c = triangles.points.Last();
    area += std::fabs(Area(*c->PreviousConst()->PreviousConst(), *c->PreviousConst(), *c));
    EXPECT_NEAR(area, comb.Area(true), 1e-12);
}

TEST(TriangulatePolygon, FewPointsAndCrossedRingsEnd) {
    const ZoTriangulatePolygon triangle(Polygon({{0, 0}, {1, 0}, {0, 1}}).GetPoints());
    EXPECT_EQ(std::tuple(triangle.tripels.Size(), triangle.points.Count()), std::tuple(0, 3));
    EXPECT_EQ(ZoTriangulatePolygon(Polygon({{0, 0}, {2, 0}, {2, 2}, {0, 2}}).GetPoints()).tripels.Size(), 1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const ZoPolygon& ring :
         {Polygon({}), Polygon({{0, 0}, {5, 5}, {5, 0}, {0, 5}, {2, 9}}),
          Polygon({{1, 1}, {1, 1}, {1, 1}, {1, 1}, {1, 1}}), Polygon({{nan, 1}, {2, nan}, {3, 3}, {4, 4}}),
          Polygon({{0, 5}, {5, 5}, {5, 0}, {0, 0}, {2, 2}})}) {
        EXPECT_EQ(ZoTriangulatePolygon(ring.GetPoints()).points.Count(), ring.Count());
    }
}

}  // namespace
