#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "zorv/photo/camera.h"

namespace {

constexpr int kNodes = 781;

ZoCamera Camera(unsigned int mode, double a1, double a2, double r0, double reach) {
    ZoCamera camera(500, 18.2, 0.11, -0.07, a1, a2, r0, "");
    camera.mode = mode;
    camera.rmax = reach;
    camera.xhViva = 0.05;
    camera.yhViva = 0.03;
    return camera;
}

/// The search as it is told: a grid of adjusted points, a bisection of both axes at once, a walk of up to 60 steps, a
/// straight line in each axis.
class PlainTable {
  public:
    PlainTable(const ZoCamera& camera, double halfSide) : reach(halfSide), nodes(kNodes * kNodes) {
        for (int i = 0; i < kNodes; ++i) {
            for (int j = 0; j < kNodes; ++j) {
                auto& [x, y] = nodes[static_cast<std::size_t>(i * kNodes + j)];
                x = Raw(i);
                y = Raw(j);
                camera.Adjust(&x, &y);
            }
        }
    }

    bool Invert(double* x, double* y) const {
        if (std::fabs(*x) >= reach || std::fabs(*y) >= reach) return false;
        int lo[2] = {1, 1};
        int hi[2] = {780, 780};
        int at[2] = {0, 0};
        bool settled = false;
        while (lo[0] <= hi[0] && lo[1] <= hi[1] && !settled) {
            at[0] = (lo[0] + hi[0]) / 2;
            at[1] = (lo[1] + hi[1]) / 2;
            const int side[2] = {SideX(at, *x), SideY(at, *y)};
            for (const int axis : {0, 1}) {
                if (side[axis] < 0) hi[axis] = at[axis] - 1;
                if (side[axis] > 0) lo[axis] = at[axis] + 1;
            }
            settled = side[0] == 0 && side[1] == 0;
        }
        for (int step = 0; step < 60 && (SideX(at, *x) != 0 || SideY(at, *y) != 0); ++step) {
            at[0] = std::clamp(at[0] + SideX(at, *x), 1, 780);
            at[1] = std::clamp(at[1] + SideY(at, *y), 1, 780);
        }
        const double lowX = X(at[0] - 1, at[1]);
        const double lowY = Y(at[0], at[1] - 1);
        const double inX = (*x - lowX) / (X(at[0], at[1]) - lowX);
        const double inY = (*y - lowY) / (Y(at[0], at[1]) - lowY);
        if (!std::isfinite(inX) || !std::isfinite(inY)) return false;
        *x = Raw(at[0] - 1 + inX);
        *y = Raw(at[1] - 1 + inY);
        return true;
    }

  private:
    double Raw(double index) const {
        const double step = 2.0 * reach / 780;
        return step * index + step * -390.0;
    }
    double X(int i, int j) const { return nodes[static_cast<std::size_t>(i * kNodes + j)].first; }
    double Y(int i, int j) const { return nodes[static_cast<std::size_t>(i * kNodes + j)].second; }
    int SideX(const int (&at)[2], double x) const {
        if (X(at[0] - 1, at[1]) > x) return -1;
        return x > X(at[0], at[1]) ? 1 : 0;
    }
    int SideY(const int (&at)[2], double y) const {
        if (Y(at[0], at[1] - 1) > y) return -1;
        return y > Y(at[0], at[1]) ? 1 : 0;
    }

    double reach;
    std::vector<std::pair<double, double>> nodes;
};

TEST(InverseTable, AnswersAsThePlainSearchToTheLastBit) {
    const struct {
        const char* what;
        ZoCamera camera;
    } cases[] = {
        {"wide angle", Camera(0, -1.4e-4, 1.1e-7, 9.0, 21.0)}, {"instrument", Camera(1, 3.1e-4, -2.5e-6, 2.5, 8.0)},
        {"no distortion", Camera(0, 0.0, 0.0, 0.0, 21.0)},     {"strong barrel", Camera(0, -2e-3, 0.0, 5.0, 30.0)},
        {"folds over", Camera(0, 1e-2, -3e-5, 9.0, 21.0)},     {"collapses", Camera(0, 1.0, 0.0, 0.0, 8.0)},
        {"overflows", Camera(0, 1e306, -1e304, 9.0, 21.0)},
    };
    constexpr int kPoints = 40000;
    for (const auto& [what, camera] : cases) {
        ZoCamera::DeleteInvAdjustTables();
        const PlainTable plain(camera, camera.rmax);
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(-camera.rmax * 1.01, camera.rmax * 1.01);
        std::uniform_int_distribution<int> index(0, 780);
        int different = 0;
        for (int k = 0; k < kPoints; ++k) {
            double x = across(random);
            double y = across(random);
            if (k % 4 == 0) {  // on a node, where cells meet
                x = 2.0 * camera.rmax / 780 * (index(random) - 390);
                y = 2.0 * camera.rmax / 780 * (index(random) - 390);
                if (k % 8 == 0) camera.Adjust(&x, &y);
            }
            if (std::isnan(x + y)) continue;
            double plainX = x, plainY = y;
            const bool found = plain.Invert(&plainX, &plainY);
            different += camera.InvAdjust(&x, &y) != found || x != plainX || y != plainY;
        }
        EXPECT_EQ(different, 0) << what;
    }
}

TEST(InverseTable, IsSharedByIdAndConstantUntilDeleted) {
    ZoCamera::DeleteInvAdjustTables();
    const ZoCamera first = Camera(0, -1.4e-4, 1.1e-7, 9.0, 21.0);
    ZoCamera second = Camera(0, 0.0, 0.0, 0.0, 5.0);
    const auto inverse = [](const ZoCamera& camera) {
        double x = 10.0, y = 3.0;
        return camera.InvAdjust(&x, &y) ? x : std::numeric_limits<double>::quiet_NaN();
    };
    const double byFirst = inverse(first);
    EXPECT_EQ(inverse(second), byFirst);
    const ZoCamera copy(first);
    ZoCamera::DeleteInvAdjustTables();
    EXPECT_TRUE(std::isnan(inverse(second))) << "its own table ends at 5 mm";
    EXPECT_TRUE(std::isnan(inverse(copy))) << "which the copy now shares";
    second.c = std::nextafter(second.c, 100.0);
    second.rmax = 21.0;
    EXPECT_NEAR(inverse(second), 10.11, 1e-12);
}

TEST(InverseTable, ReachDependsOnTheCamera) {
    const struct {
        ZoCamera camera;
        double reach;
    } cases[] = {{Camera(0, 0, 0, 0, 0), 30.0}, {Camera(1, 0, 0, 0, 0), 8.0}, {Camera(0, 0, 0, 0, -12.5), 12.5}};
    for (const auto& [camera, reach] : cases) {
        ZoCamera::DeleteInvAdjustTables();
        double x = reach, y = 0.0;
        EXPECT_FALSE(camera.InvAdjust(&x, &y));
        EXPECT_EQ(x, reach);
        EXPECT_FALSE(camera.InvAdjust(&(y = 0.0), &x));
        EXPECT_EQ(camera.lastInX, 0.0);
        x = std::nextafter(reach, 0.0);
        EXPECT_TRUE(camera.InvAdjust(&x, &y));
        EXPECT_NEAR(x, reach + (camera.IsTs15() ? 0.05 : 0.11), 1e-12);
        EXPECT_EQ(camera.lastInX, std::nextafter(reach, 0.0));
        EXPECT_EQ(camera.lastOutX, x);
    }
}

TEST(InverseTable, NumbersThatAreNoneEndInFalse) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto fails = [](ZoCamera camera, double x) {
        ZoCamera::DeleteInvAdjustTables();
        double y = 1.0;
        const double given = x;
        return !camera.InvAdjust(&x, &y) && y == 1.0 && (x == given || std::isnan(given));
    };
    ZoCamera camera = Camera(0, 0, 0, 0, 21.0);
    EXPECT_TRUE(fails(camera, kNaN) && fails(camera, kInfinity));
    for (double ZoCamera::*member : {&ZoCamera::c, &ZoCamera::rmax, &ZoCamera::a1, &ZoCamera::xh, &ZoCamera::r0}) {
        ZoCamera broken = camera;
        broken.*member = kNaN;
        EXPECT_TRUE(fails(broken, 1.0));
    }
    for (const double reach : {kInfinity, 1e308, 1e200}) {
        ZoCamera wide = Camera(0, 1e-4, 1e-7, 9.0, reach);
        EXPECT_TRUE(fails(wide, 1.0)) << reach;
    }
    double x = 0.0, y = 0.0;
    ZoCamera tiny = Camera(0, 0, 0, 0, std::numeric_limits<double>::denorm_min());
    ZoCamera::DeleteInvAdjustTables();
    EXPECT_FALSE(tiny.InvAdjust(&x, &y));
    ZoCamera::DeleteInvAdjustTables();
}

}  // namespace
