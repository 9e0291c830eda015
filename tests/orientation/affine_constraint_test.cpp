#include <cmath>
#include <filesystem>
#include <limits>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/orientation/affine_constraint_solver.h"

namespace {

using Circles = std::vector<ZoAffineConstraint>;

ZoAffineConstraint Circle(double x, double y, double radius) {
    ZoAffineConstraint circle;
    circle.valid = true;
    circle.centerX = x;
    circle.centerY = y;
    circle.radius = radius;
    return circle;
}

TEST(AffineConstraint, KnownLinesGiveTheShear) {
    for (const auto& [a, b] : {std::pair{1.3, 0.4}, std::pair{0.7, -0.9}}) {
        // Segments of the true shape as they lie in the rectified image, and normals of their lines.
        const auto segment = [a = a, b = b](double direction, double length) {
            const double y = length * std::sin(direction);
            return ZoVector3d((length * std::cos(direction) - b * y) / a, y, 7.0);
        };
        const auto normal = [&](double direction) {
            const ZoVector3d along = segment(direction, 3.0);
            return ZoVector3d(-along.y(), along.x(), -5.0);
        };
        const ZoKnownAngleConstraint acute(normal(0.6), normal(1.1), 0.5);
        const ZoKnownAngleConstraint backwards(normal(1.8), normal(0.3), -1.5);
        const ZoKnownAngleConstraint wrong(normal(0.1), normal(0.6), 1.4);
        const ZoUnknownAngleConstraint same(normal(0.4), normal(1.0), normal(1.7), normal(2.3));
        const ZoLenghtRatioConstraint equal(segment(0.3, 4), segment(1.4, 4), 1.0);
        const ZoLenghtRatioConstraint level(segment(1.2, 6), segment(0.0, 4), 1.5);
        Circles sets[] = {{same, level}, {acute, backwards, equal}, {wrong, acute, same, backwards, equal, level}};
        for (Circles& set : sets) {
            const ZoAffineConstraintSolver solver(set);
            EXPECT_TRUE(solver.IsValid());
            EXPECT_NEAR(solver.GetA(), a, 1e-9) << set.size();
            EXPECT_NEAR(solver.GetB(), b, 1e-9) << set.size();
        }
    }
    EXPECT_EQ(ZoAffineConstraint::GetK({-0.0, 3, 0}), std::numeric_limits<double>::lowest());
    EXPECT_TRUE(ZoKnownAngleConstraint({1, 2, 0}, {1, 0, 0}, 0.0).IsInvalid());
    // The ratio stands with the first product: |0.5 * 3 * 2 - 1 * 1| / 3.75.
    EXPECT_NEAR(ZoLenghtRatioConstraint({1, 2, 0}, {3, 1, 0}, 0.5).GetRadius(), 2 / 3.75, 1e-15);
}

TEST(AffineConstraint, SolverChoosesAmongSections) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const ZoAffineConstraint five = Circle(0, 0, 5), right = Circle(6, 0, 5), left = Circle(-6, 0, 5);
    const std::tuple<const char*, Circles, double, double> cases[] = {
        {"one and an invalid one", {ZoAffineConstraint(), five}, 0, 0},
        {"of equal groups the last one", {five, right, left}, -3, 4},
        {"the larger group", {five, right, Circle(3, 0, 4), left}, 3, 4},
        {"the same circle", {Circle(1, 0, 2), Circle(1, 0, 2)}, 1 + std::sqrt(2.0), std::sqrt(2.0)},
        {"below beta 0", {Circle(0, -10, 5), Circle(6, -10, 5)}, 0, 0},
        {"touching at beta 0", {Circle(0, 0, 1), Circle(2, 0, 1)}, 1, 0},
        {"not finite",
         {Circle(std::nan(""), 0, 5), five, Circle(kInfinity, 0, 5), right, Circle(6, 0, kInfinity)},
         3,
         4},
    };
    for (const auto& [name, given, alpha, beta] : cases) {
        Circles circles = given;
        const ZoAffineConstraintSolver solver(circles);
        EXPECT_EQ(solver.IsValid(), beta > 0) << name;
        EXPECT_NEAR(solver.GetAlpha(), alpha, 1e-14) << name;
        EXPECT_NEAR(solver.GetBeta(), beta, 1e-14) << name;
        EXPECT_TRUE(circles.front().IsValid()) << "invalid ones are erased";
    }
}

TEST(AffineConstraint, LogsGoWhereTheDriveIs) {
    const TempFolder folder;
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(folder.path);
    for (const bool hasDrive : {false, true}) {
        if (hasDrive) std::filesystem::create_directory("c:");
        Circles set{ZoLenghtRatioConstraint({0, 1, 0}, {2, 0, 0}, 2.5), Circle(6, 0, 5)};
        EXPECT_TRUE(ZoAffineConstraintSolver(set).IsValid());
        EXPECT_EQ(std::filesystem::is_empty(folder.path), !hasDrive);
    }
    std::filesystem::current_path(former);
    EXPECT_EQ(folder.Read("c:/AffinConstraint.txt"), "0.00000000 0.00000000 5.00000000\n");
    EXPECT_EQ(folder.Read("c:/AffinConstraintRes.txt"), "3.00000000 -4.00000000\n3.00000000 4.00000000\n");
}

}  // namespace
