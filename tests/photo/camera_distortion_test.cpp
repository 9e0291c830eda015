// Expected values come from the formulas in 40 decimal digits.

#include <limits>

#include "tests/support/allocation_count.h"
#include <gtest/gtest.h>

#include "zorv/photo/camera.h"
#include "zorv/points/point_list.h"

namespace {

constexpr double kRounding = 1e-14;  // mm, a few units in the last place of 40 mm

struct Case {
    double x, y, adjustedX, adjustedY;
};

ZoCamera WideAngle(unsigned int id = 7) {
    return {id, 18.2, 0.11, -0.07, -1.4e-4, 1.1e-7, 9.0, "wide angle"};
}

ZoCamera Instrument() {
    ZoCamera camera(8, 50.0, 0.02, -0.015, 3.1e-4, -2.5e-6, 2.5, "instrument");
    camera.SetTs15(48.0, 0.05, 0.03);
    return camera;
}

void ExpectAdjusted(const ZoCamera& camera, const std::vector<Case>& cases) {
    for (const Case& at : cases) {
        double x = at.x, y = at.y;
        EXPECT_TRUE(camera.Adjust(&x, &y));
        EXPECT_NEAR(x, at.adjustedX, kRounding) << at.x << ' ' << at.y;
        EXPECT_NEAR(y, at.adjustedY, kRounding) << at.x << ' ' << at.y;
    }
}

TEST(CameraDistortion, ClassicCameraFromCentreToBeyondTheImage) {
    ExpectAdjusted(WideAngle(), {{0.11, -0.07, 0.0, 0.0},
                                 {0.0, 0.0, -0.1088322498965031, 0.069256886297774697},
                                 {6.0, -4.5, 5.8703365470887769, -4.4152106797289106},
                                 {-17.0, 12.0, -17.616762605612045, 12.427488290458058},
                                 {21.0, -21.0, 21.468474078541483, -21.509581735944149},
                                 {40.0, 35.0, 20.299261731913436, 17.846455476014146}});
}

TEST(CameraDistortion, InstrumentDistortsAroundTheFirstPrincipalPoint) {
    ExpectAdjusted(Instrument(), {{0.02, -0.015, -0.03, -0.045},
                                  {0.05, 0.03, 0.0, 0.0},
                                  {1.2, -0.8, 1.151411344901373, -0.83101862284186057},
                                  {-2.8, 2.1, -2.8453655876160644, 2.0666339531106153},
                                  {7.9, 7.9, 7.8662583117749474, 7.8862997342253296}});
}

TEST(CameraDistortion, ValuesAtARadius) {
    ZoCamera camera = WideAngle();
    camera.a3 = -3e-11;
    EXPECT_NEAR(camera.CalcdrA1A2(5.0, 12.0), -0.0099, 1e-17);
    EXPECT_NEAR(camera.CalcdrA1A2A3(5.0, -12.0), -0.01002886104, 1e-17);
    EXPECT_EQ(camera.CalcdrA1A2(0.0), 0.0);
    EXPECT_EQ(camera.CalcdrA1A2A3(0.0, 0.0), 0.0);
    EXPECT_NEAR(camera.Calcd(0.0, 0.0), 0.01061829, 1e-17) << "no exception at the centre";
    EXPECT_NEAR(camera.Calcd(3.0, 4.0), 0.00718704, 1e-17);
    EXPECT_EQ(camera.Calc_drForGraph(5.0, 12.0), camera.CalcdrA1A2(13.0));
    camera.mode = 6;
    EXPECT_EQ(camera.Calc_drForGraph(5.0, 12.0), 0.0);
}

TEST(CameraDistortion, CamerasThatCannotAdjustLeaveThePoint) {
    double x = 3.0, y = -2.0;
    ZoCamera pinhole = WideAngle(301);
    pinhole.SetPinholeCamera();
    EXPECT_TRUE(!pinhole.Adjust(&x, &y) && pinhole.InvAdjust(&x, &y));
    for (const std::uint32_t mode : {2u, 9u, 17u, 4000000000u}) {
        pinhole.mode = mode;
        EXPECT_FALSE(pinhole.Adjust(&x, &y)) << mode;
    }
    EXPECT_FALSE(WideAngle(0).Adjust(&x, &y) || WideAngle(0).InvAdjust(&x, &y));
    EXPECT_EQ(x, 3.0);
    EXPECT_EQ(y, -2.0);
}

TEST(CameraDistortion, ModesWithoutAPairIterateOnTheRadialCoefficients) {
    constexpr double kConverged = 1e-8;  // mm; the last step is below 1e-7, and each a tenth of the one before
    ZoCamera camera = WideAngle(302);
    camera.mode = 9;
    double x = 6.0, y = -4.5;
    EXPECT_TRUE(camera.InvAdjust(&x, &y));
    EXPECT_NEAR(x, 6.1280084786257953, kConverged);
    EXPECT_NEAR(y, -4.5835445773025931, kConverged);
    EXPECT_EQ(camera.lastInX, 6.0);
    EXPECT_EQ(camera.lastOutX, x - camera.xh) << "the memory is without the principal point";
    // The next one starts where the last one ended: far away in y, but as far in x.
    x = -11.0;
    y = 9.0;
    EXPECT_TRUE(camera.InvAdjust(&x, &y));
    EXPECT_NEAR(x, -10.750829417009061, kConverged);
    EXPECT_NEAR(y, 8.8163836914736446, kConverged);

    // Divergence leaves it to a table of what Adjust does in this mode: nothing.
    camera.SetId(303);
    camera.a1 = 0.5;
    x = 6.0;
    EXPECT_FALSE(camera.InvAdjust(&x, &y)) << "without a reach all is outside";
    EXPECT_EQ(x, 6.0);
    camera.SetId(304);
    camera.rmax = -21.0;
    EXPECT_TRUE(camera.InvAdjust(&x, &y));
    EXPECT_NEAR(x, 6.0, kRounding);
}

TEST(CameraDistortion, ListsArePointByPointAndAllocateNothing) {
    const ZoCamera camera = WideAngle();
    ZoPointList list;
    for (unsigned int id = 1; id <= 100; ++id)
        list.Add(ZoPoint(id, 0.17 * id, -0.11 * id, 5.0, 0));
    const ZoPointList raw(list);
    double x = 1.0, y = 1.0;
    EXPECT_TRUE(camera.InvAdjust(&x, &y));

    const std::size_t before = AllocationCount();
    EXPECT_TRUE(camera.Adjust(&list));
    for (const ZoPoint* point = list.First(); point; point = point->NextConst()) {
        ZoPoint alone = *raw.Get(static_cast<int>(point->GetId()) - 1);
        EXPECT_TRUE(camera.Adjust(&alone));
        EXPECT_EQ(alone, *point);
    }
    EXPECT_TRUE(camera.InvAdjust(&list));
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_NEAR(list.Last()->x, 17.0, 2e-3);
    EXPECT_EQ(list.Last()->z, 5.0);

    EXPECT_TRUE(WideAngle(0).Adjust(&list));
    EXPECT_NEAR(list.Last()->x, 17.0, 2e-3);
    ZoPointList none;
    EXPECT_TRUE(camera.InvAdjust(&none) && !camera.Adjust(static_cast<ZoPointList*>(nullptr)));
    EXPECT_FALSE(camera.InvAdjust(static_cast<ZoPointList*>(nullptr)) || camera.Adjust(static_cast<ZoPoint*>(nullptr)));
}

}  // namespace
