#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "zorv/cad/distance_section.h"
#include "zorv/cad/line_match.h"
#include "zorv/cad/ortho_line.h"

namespace {

constexpr double kTolerance = 1e-12;

void ExpectNear(const ZoPoint3d& p, double x, double y, double z) {
    EXPECT_NEAR(p.x(), x, kTolerance);
    EXPECT_NEAR(p.y(), y, kTolerance);
    EXPECT_NEAR(p.z(), z, kTolerance);
    EXPECT_EQ(p[3], 1) << "w";
}

TEST(CadLinesMatch, SkewLinesMeetAtTheirClosestPoints) {
    // Along x at z = 0 and along y at z = 1, both pointing at the z axis.
    const ZoCad2LinesMatch match({-10, 0, 0}, {-1, 0, 0}, {0, -1, 1}, {0, -10, 1}, 0, 0, 1, ZoCad2LinesMatch::eMatch3d);
    ASSERT_TRUE(match.IsValid());
    EXPECT_FALSE(match.IsParallel());
    ExpectNear(match.Result1(), 0, 0, 0);
    ExpectNear(match.Result2(), 0, 0, 1);
    ExpectNear(match.Base1(), -10, 0, 0);
    ExpectNear(match.Base2(), 0, -10, 1);
    EXPECT_NEAR(match.Distance(), 1, kTolerance);
    ExpectNear(match.MiddlePoint(), 0, 0, 0.5);
    EXPECT_EQ(match.ValueDistance(), 2);
}

TEST(CadLinesMatch, OffsetsLieBeyondTheCrossing) {
    const ZoCad2LinesMatch match({-10, 0, 0}, {-1, 0, 0}, {0, -1, 0}, {0, -10, 0}, 1, 2, 1, ZoCad2LinesMatch::eMatch3d);
    ExpectNear(match.Result1(), 1, 0, 0);
    ExpectNear(match.Result2(), 0, 2, 0);
    // The other way round the lines give the same places.
    const ZoCad2LinesMatch turned({-1, 0, 0}, {-10, 0, 0}, {0, -10, 0}, {0, -1, 0}, 1, 2, 1,
                                  ZoCad2LinesMatch::eMatch3d);
    ExpectNear(turned.Result1(), 1, 0, 0);
    ExpectNear(turned.Base1(), -10, 0, 0);
    const ZoCad2LinesMatch exact({-10, 0, 0}, {-1, 0, 0}, {0, -1, 0}, {0, -10, 0}, 0, 0, 1, ZoCad2LinesMatch::eMatch3d);
    EXPECT_EQ(exact.ValueDistance(), 0);
}

TEST(CadLinesMatch, PlaneModesBringTheThirdCoordinateBack) {
    const ZoCad2LinesMatch match({-10, 0, 5}, {-1, 0, 6}, {0, -1, 8}, {0, -10, 9}, 0, 0, 1, ZoCad2LinesMatch::eMatchXY);
    ASSERT_TRUE(match.IsValid());
    ExpectNear(match.Result1(), 0, 0, 7);
    ExpectNear(match.Result2(), 0, 0, 7);
    ExpectNear(match.Base1(), -10, 0, 5);
    ExpectNear(match.Base2(), 0, -10, 9);
    EXPECT_EQ(match.p2.z(), 0) << "the stored points keep the zero";
    const ZoCad2LinesMatch yz({5, -10, 0}, {6, -1, 0}, {8, 0, -1}, {9, 0, -10}, 0, 0, 1, ZoCad2LinesMatch::eMatchYZ);
    ExpectNear(yz.Result1(), 7, 0, 0);
}

TEST(CadLinesMatch, ParallelLinesMeetBetweenTheirNearestEnds) {
    const ZoCad2LinesMatch match({0, 0, 0}, {4, 0, 0}, {6, 1, 0}, {9, 1, 0}, 3, 3, 1, ZoCad2LinesMatch::eMatch3d);
    ASSERT_TRUE(match.IsValid());
    EXPECT_TRUE(match.IsParallel());
    ExpectNear(match.Result1(), 5, 0, 0);
    ExpectNear(match.Result2(), 5, 1, 0);
    ExpectNear(match.Base1(), 0, 0, 0);
    ExpectNear(match.Base2(), 9, 1, 0);
    // Half a degree apart, with one degree as the limit.
    const double half = std::tan(0.5 / 180 * std::numbers::pi);
    EXPECT_TRUE(
        ZoCad2LinesMatch({0, 0, 0}, {4, 0, 0}, {6, 1, 0}, {9, 1 + 3 * half, 0}, 0, 0, 1, ZoCad2LinesMatch::eMatch3d)
            .IsParallel());
    EXPECT_FALSE(
        ZoCad2LinesMatch({0, 0, 0}, {0, 0, 0}, {6, 1, 0}, {9, 1, 0}, 0, 0, 1, ZoCad2LinesMatch::eMatch3d).IsValid());
}

TEST(CadLinesMatch, GradeCountsFivePerCent) {
    // Lines of 10 that miss each other by 0.5, and by a little more.
    for (const double gap : {0.5, 0.500001}) {
        const ZoCad2LinesMatch match({-10, 0, 0}, {-1, 0, 0}, {0, -1, gap}, {0, -10, gap}, 0, 0, 1,
                                     ZoCad2LinesMatch::eMatch3d);
        EXPECT_EQ(match.ValueDistance(), gap == 0.5 ? 1 : 2);
    }
}

TEST(CadBogenschlag, SectionsHaveBothDistances) {
    const ZoCadBogenschlag section({100, 200, 7}, 5, {106, 208, 7}, 7, 1e-6);
    ASSERT_TRUE(section.IsValid());
    for (const ZoPoint3d& p : {section.P1(), section.P2()}) {
        EXPECT_NEAR(p.Distance(section.center1), 5, kTolerance);
        EXPECT_NEAR(p.Distance(section.center2), 7, kTolerance);
        EXPECT_EQ(p.z(), 7);
    }
    // To the right of the way from the first centre to the second.
    EXPECT_LT((section.center2 - section.center1).cross(section.P1() - section.center1).z(), 0);
    ExpectNear(section.GetNearestPoint(section.P2()), section.P2().x(), section.P2().y(), 7);
    ExpectNear(section.GetNearestPoint(section.Base()), section.P1().x(), section.P1().y(), 7);
    ExpectNear(section.GetConcentricPx(std::numbers::pi / 2), 100, 205, 7);
}

TEST(CadBogenschlag, TouchingApartAndSameCircles) {
    const ZoCadBogenschlag touching({0, 0, 0}, 2, {5, 0, 0}, 3, 1e-6);
    ASSERT_TRUE(touching.IsValid());
    ExpectNear(touching.P1(), 2, 0, 0);
    ExpectNear(touching.P2(), 2, 0, 0);
    struct Case {
        double r1, x2, r2;
        bool concentric;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [r1, x2, r2, concentric] : {Case{2, 9, 3, false},  // apart
                                                 Case{9, 1, 3, false},  // one inside the other
                                                 Case{5, 2, 3, false},  // touching from within
                                                 Case{5, 0, 5, true},   // the same
                                                 Case{5, 0, 4, false},  // concentric, not the same
                                                 Case{5, nan, 4, false}}) {
        const ZoCadBogenschlag section({0, 0, 0}, r1, {x2, 0, 0}, r2, 1e-6);
        EXPECT_FALSE(section.IsValid());
        EXPECT_EQ(section.IsConcentric(), concentric);
    }
}

TEST(CadOrthoLine, RunsAlongTheNearestAxis) {
    const ZoCadOrthoLine line({1, 2, 3}, {2, -7, 4});
    ASSERT_TRUE(line.IsValid());
    ExpectNear(line.Result(), 1, -7, 3);
    ExpectNear(ZoCadOrthoLine({0, 0, 0}, {1, 1, 1}).Result(), 1, 0, 0);
    ExpectNear(ZoCadOrthoLine({0, 0, 0}, {0, 1, 1}).Result(), 0, 1, 0);
    const ZoCadOrthoLine none({1, 2, 3}, {1, 2, 3});
    EXPECT_FALSE(none.IsValid());
    ExpectNear(none.Result(), 1, 2, 3);
}

}  // namespace
