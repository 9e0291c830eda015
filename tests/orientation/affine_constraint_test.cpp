#include <cmath>
#include <filesystem>
#include <limits>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/orientation/affine_constraint_solver.h"

namespace {

/// A shear x' = a x + b y, y' = y, and what it makes of a drawing whose true shape is known. Directions in radians.
struct Shear {
    /// A segment of the true shape as it lies in the rectified image.
    ZoVector3d Segment(double direction, double length) const {
        const double y = length * std::sin(direction);
        return {(length * std::cos(direction) - b * y) / a, y, 7.0};
    }
    /// A normal, of any length, of a line with this true direction.
    ZoVector3d Normal(double direction) const {
        const ZoVector3d along = Segment(direction, 3.0);
        return {-along.y(), along.x(), -5.0};
    }
    double a;
    double b;
};

ZoAffineConstraint Circle(double x, double y, double radius) {
    ZoAffineConstraint circle;
    circle.valid = true;
    circle.centerX = x;
    circle.centerY = y;
    circle.radius = radius;
    return circle;
}

TEST(AffineConstraint, KnownLinesGiveTheShear) {
    for (const Shear& shear : {Shear{1.3, 0.4}, Shear{0.7, -0.9}}) {
        const ZoKnownAngleConstraint acute(shear.Normal(0.6), shear.Normal(1.1), 0.5);
        const ZoKnownAngleConstraint backwards(shear.Normal(1.8), shear.Normal(0.3), -1.5);
        const ZoKnownAngleConstraint wrong(shear.Normal(0.1), shear.Normal(0.6), 1.4);
        const ZoUnknownAngleConstraint same(shear.Normal(0.4), shear.Normal(1.0), shear.Normal(1.7), shear.Normal(2.3));
        const ZoLenghtRatioConstraint equal(shear.Segment(0.3, 4), shear.Segment(1.4, 4), 1.0);
        const ZoLenghtRatioConstraint level(shear.Segment(1.2, 6), shear.Segment(0.0, 4), 1.5);
        for (std::vector<ZoAffineConstraint> set : std::vector<std::vector<ZoAffineConstraint>>{
                 {same, level}, {acute, backwards, equal}, {wrong, acute, same, backwards, equal, level}}) {
            const ZoAffineConstraintSolver solver(set);
            EXPECT_TRUE(solver.IsValid());
            EXPECT_NEAR(solver.GetA(), shear.a, 1e-9) << set.size();
            EXPECT_NEAR(solver.GetB(), shear.b, 1e-9) << set.size();
        }
    }
}

TEST(AffineConstraint, SpecialLinesKeepToTheFormulas) {
    EXPECT_EQ(ZoAffineConstraint::GetK({-0.0, 3, 0}), std::numeric_limits<double>::lowest());
    EXPECT_TRUE(ZoKnownAngleConstraint({1, 2, 0}, {1, 0, 0}, 0.0).IsInvalid());
    // The ratio stands with the first product: |0.5 * 3 * 2 - 1 * 1| / 3.75.
    const ZoLenghtRatioConstraint ratio({1, 2, 0}, {3, 1, 0}, 0.5);
    EXPECT_NEAR(ratio.GetCenterX(), 1.0 / 3, 1e-15);
    EXPECT_NEAR(ratio.GetRadius(), 2 / 3.75, 1e-15);
}

TEST(AffineConstraint, SolverChoosesAmongSections) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const ZoAffineConstraint five = Circle(0, 0, 5), right = Circle(6, 0, 5), left = Circle(-6, 0, 5);
    struct Case {
        const char* name;
        std::vector<ZoAffineConstraint> circles;
        bool isValid;
        double alpha, beta;
    };
    for (const Case& each : {
             Case{"one and an invalid one", {ZoAffineConstraint(), five}, false, 0, 0},
             Case{"mirrored sections", {five, right}, true, 3, 4},
             Case{"of equal groups the last one", {five, right, left}, true, -3, 4},
             Case{"the larger group", {five, right, Circle(3, 0, 4), left}, true, 3, 4},
             Case{"the same circle", {Circle(1, 0, 2), Circle(1, 0, 2)}, true, 1 + std::sqrt(2.0), std::sqrt(2.0)},
             Case{"below beta 0", {Circle(0, -10, 5), Circle(6, -10, 5)}, false, 0, 0},
             Case{"touching at beta 0", {Circle(0, 0, 1), Circle(2, 0, 1)}, false, 1, 0},
             Case{"not a number", {Circle(kNan, 0, 5), five, Circle(6, 0, kNan), right}, true, 3, 4},
             Case{"not finite", {Circle(kInfinity, 0, 5), five, Circle(0, 0, kInfinity), right}, true, 3, 4},
         }) {
        std::vector<ZoAffineConstraint> circles = each.circles;
        const ZoAffineConstraintSolver solver(circles);
        EXPECT_EQ(solver.IsValid(), each.isValid) << each.name;
        EXPECT_NEAR(solver.GetAlpha(), each.alpha, 1e-14) << each.name;
        EXPECT_NEAR(solver.GetBeta(), each.beta, 1e-14) << each.name;
        EXPECT_TRUE(circles.front().IsValid()) << "invalid ones are erased";
    }
}

TEST(AffineConstraint, LogsGoWhereTheDriveIs) {
    const TempFolder folder;
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(folder.path);
    for (const bool hasDrive : {false, true}) {
        if (hasDrive) std::filesystem::create_directory("c:");
        std::vector<ZoAffineConstraint> set{ZoLenghtRatioConstraint({0, 1, 0}, {2, 0, 0}, 2.5), Circle(6, 0, 5)};
        EXPECT_TRUE(ZoAffineConstraintSolver(set).IsValid());
        EXPECT_EQ(std::filesystem::is_empty(folder.path), !hasDrive);
    }
    std::filesystem::current_path(former);
    EXPECT_EQ(folder.Read("c:/AffinConstraint.txt"), "0.00000000 0.00000000 5.00000000\n");
    EXPECT_EQ(folder.Read("c:/AffinConstraintRes.txt"), "3.00000000 -4.00000000\n3.00000000 4.00000000\n");
}

}  // namespace
