#include "zorv/math/convex_hull.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "zorv/math/aligned_rectangle2d.h"

namespace {

using Points = std::vector<ZoPoint2d>;

/// Clockwise hull from the lowest point by Jarvis' march in exact integers: an oracle of another kind.
Points March(const Points& points) {
    const auto cross = [](const ZoPoint2d& a, const ZoPoint2d& b, const ZoPoint2d& c) {
        return static_cast<long long>(b.x - a.x) * static_cast<long long>(c.y - a.y) -
               static_cast<long long>(b.y - a.y) * static_cast<long long>(c.x - a.x);
    };
    std::size_t start = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].y < points[start].y) start = i;
    }
    Points hull;
    std::size_t at = start;
    do {
        hull.push_back(points[at]);
        std::size_t next = at == 0 ? 1 : 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const long long turn = cross(points[at], points[next], points[i]);
            const bool farther = points[at].distanceToSq(points[i]) > points[at].distanceToSq(points[next]);
            if (i != at && (turn > 0 || (turn == 0 && farther))) next = i;
        }
        at = next;
    } while (at != start);
    return hull;
}

void ExpectSame(const Points& hull, const Points& expected) {
    ASSERT_EQ(hull.size(), expected.size());
    for (std::size_t i = 0; i < hull.size(); ++i) {
        EXPECT_EQ(hull[i].x, expected[i].x) << i;
        EXPECT_EQ(hull[i].y, expected[i].y) << i;
    }
}

TEST(ConvexHull, RunsClockwiseFromTheLowestPoint) {
    const Points square{{100, 100}, {300, 110}, {310, 300}, {105, 290}, {200, 200}, {200, 150}};
    ExpectSame(ChansConvexHullAlgorithm(square), {{100, 100}, {105, 290}, {310, 300}, {300, 110}});
}

TEST(ConvexHull, AgreesWithJarvisOnRandomIntegerPoints) {
    std::mt19937 random(7);
    // The coordinates straddle the origin in some sets, where the sort around the origin is not the hull's own.
    for (const double shift : {0.0, 2000.0, -500.0}) {
        for (int size : {3, 5, 9, 17, 60, 400}) {
            std::uniform_int_distribution<int> coordinate(-1000, 1000);
            Points points;
            for (int i = 0; i < size; ++i) {
                points.emplace_back(coordinate(random) + shift, coordinate(random) + shift);
            }
            const Points hull = ChansConvexHullAlgorithm(points);
            const Points expected = March(points);
            // Several lowest points leave the start open; the cycle is the same.
            ASSERT_EQ(hull.size(), expected.size()) << shift << ' ' << size;
            std::size_t offset = 0;
            while (offset < expected.size() && !(expected[offset] == hull[0]))
                ++offset;
            ASSERT_LT(offset, expected.size()) << shift << ' ' << size;
            for (std::size_t i = 0; i < hull.size(); ++i) {
                EXPECT_TRUE(hull[i] == expected[(i + offset) % expected.size()]) << shift << ' ' << size << ' ' << i;
            }
        }
    }
}

TEST(ConvexHull, DegenerateInputsEndInDefinedHulls) {
    EXPECT_TRUE(ChansConvexHullAlgorithm({}).empty());
    ExpectSame(ChansConvexHullAlgorithm({{3, 4}}), {{3, 4}});
    EXPECT_EQ(ChansConvexHullAlgorithm(Points(50, ZoPoint2d(3, 4))).size(), 1u);
    EXPECT_EQ(ChansConvexHullAlgorithm({{0, 0}, {10, 10}, {20, 20}, {30, 30}, {5, 5}}).size(), 2u);
    // On a line, or nearly so, both ends count, wherever the groups cut it.
    ExpectSame(ChansConvexHullAlgorithm({{100, 90}, {100, 50}, {100, 0}}), {{100, 0}, {100, 90}});
    ExpectSame(ChansConvexHullAlgorithm({{100, 0}, {100, 120}, {100.001, 60}}), {{100, 0}, {100, 120}});
    const Points path{{24, -445}, {340, 819}, {4, -525}, {124, -45}, {18, -469}, {-6, -565}};
    ExpectSame(ChansConvexHullAlgorithm(path), {{-6, -565}, {340, 819}});
    // Turns below 1 count as collinear.
    EXPECT_LT(ChansConvexHullAlgorithm({{0.1, 0.1}, {0.9, 0.1}, {0.9, 0.9}, {0.1, 0.9}}).size(), 4u);

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ChansConvexHullAlgorithm({{nan, 1}, {0, 0}, {100, 0}, {infinity, 3}, {0, 100}}).size(), 3u);
    EXPECT_TRUE(ChansConvexHullAlgorithm({{nan, nan}}).empty());
    EXPECT_EQ(ChansConvexHullAlgorithm({{-1e300, 0}, {1e300, 1e300}, {1e300, -1e300}}).size(), 3u);
}

TEST(ConvexHull, ManyPointsOnACircleEndInTime) {
    Points circle;
    for (int i = 0; i < 20000; ++i) {
        const double angle = i * 0.000314159265358979;
        circle.emplace_back(1e6 * std::cos(angle), 1e6 * std::sin(angle));
    }
    EXPECT_GT(ChansConvexHullAlgorithm(circle).size(), 19000u);
}

TEST(AlignedRectangle2d, LiesAlongTheDiameter) {
    // A 200 by 100 rectangle turned so that its diagonal is the diameter: sides along (2, 1)/sqrt(5).
    const Points points{{1000, 1000}, {1200, 1000}, {1200, 1100}, {1000, 1100}};
    const ZoSmallestAlignedRectangle2d rectangle(points);
    ASSERT_EQ(rectangle.GetHull().size(), 4u);
    EXPECT_NEAR(std::fabs(std::sin(rectangle.GetAngle())), 1 / std::sqrt(5.0), 1e-12);
    EXPECT_NEAR(rectangle.GetLength(), 100 * std::sqrt(5.0), 1e-9);
    // The other diagonal's ends are 200*100/sqrt(200^2+100^2) away on both sides.
    EXPECT_NEAR(rectangle.GetWidth(), 2 * 20000 / std::sqrt(50000.0), 1e-9);
    ASSERT_EQ(rectangle.GetCorners().size(), 4u);
    EXPECT_NEAR(rectangle.GetCorners()[0].distanceTo(rectangle.GetCorners()[1]), rectangle.GetLength(), 1e-9);
    EXPECT_NEAR(rectangle.GetCorners()[1].distanceTo(rectangle.GetCorners()[2]), rectangle.GetWidth(), 1e-9);
}

TEST(AlignedRectangle2d, SmallAndEmptyInputs) {
    const Points none;
    EXPECT_TRUE(ZoSmallestAlignedRectangle2d(none).GetCorners().empty());
    const Points small{{5.0, 5.0}, {5.5, 5.1}};
    const ZoSmallestAlignedRectangle2d rectangle(small);
    EXPECT_EQ(rectangle.GetAngle(), 0.0);
    EXPECT_NEAR(rectangle.GetLength(), 0.5, 1e-12);
    EXPECT_EQ(ZoSmallestAlignedRectangle2d::PoligonDiameter({{0, 0}, {3, 0}, {0, 3}, {3, 3}}),
              (std::vector<std::uint64_t>{0, 3}));
}

}  // namespace
