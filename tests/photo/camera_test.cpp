#include "zorv/photo/camera.h"

#include "tests/support/recorded_host.h"
#include <gtest/gtest.h>

#include "zorv/photo/calibration_entry.h"

namespace {

ZoCamera Classic() {
    return {7, 18.25, 0.5, -0.25, -1e-4, 2e-7, 9.0, "Distagon \xC3\xA4"};
}

TEST(Camera, NewOnesAreEmptyAndClassic) {
    const ZoCamera empty;
    EXPECT_TRUE(empty.IsOldZorv() && !empty.IsValid());
    EXPECT_EQ(empty.rmax, 0.0);
    const ZoCamera classic = Classic();
    EXPECT_TRUE(classic.IsValid());
    EXPECT_EQ(std::tuple(classic.GetName(), classic.rmax), std::tuple(L"Distagon \u00e4", 0.0));
    EXPECT_EQ(ZoCamera(1, 0, 0, 0, 0, 0, 0, nullptr).GetName(), L"");
}

TEST(Camera, InstrumentKeepsItsFormerConstant) {
    ZoCamera camera = Classic();
    camera.SetTs15(20.5, 3.0, -4.0);
    EXPECT_TRUE(camera.IsTs15());
    EXPECT_EQ(std::tuple(camera.c, camera.cViva, camera.rmax), std::tuple(20.5, 18.25, 8.0));
    EXPECT_DOUBLE_EQ(camera.GetXhYhRadius(), 5.0 + std::sqrt(0.3125));
    camera.SetPinholeCamera();
    EXPECT_TRUE(camera.IsPinholeCamera());
    EXPECT_EQ(camera.rmax, 8.0);
}

TEST(Camera, AssignmentTakesAllButFlagsAndMemory) {
    ZoCamera source = Classic();
    source.mode = 14;
    source.sx2 = 1.5;
    source.rmax = 21.0;
    source.libAutoModel = 8;
    source.libAutoFlags = 7;
    source.SetFlag(4);
    source.lastInX = source.lastOutY = 3.0;
    ZoCamera target;
    target.SetFlag(1);
    target.lastInY = 2.0;
    target = source;
    EXPECT_EQ(std::tuple(target.GetId(), target.mode, target.sx2, target.rmax, target.libAutoModel),
              std::tuple(7u, 14u, 1.5, 21.0, 8));
    EXPECT_EQ(std::tuple(target.libAutoFlags, target.GetFlag(), target.lastInX + target.lastInY + target.lastOutY),
              std::tuple(7, 1, 0.0));
    EXPECT_EQ(ZoCamera(source).GetFlag(), 4) << "a copy has the flags of its source";
    source.Set(source);
    EXPECT_EQ(source.lastInX, 3.0);
}

TEST(Camera, CopiesHaveAPairOfTheirOwn) {
    ZoCamera copy;
    double x = 2.0, y = 1.0;
    {
        ZoCamera source;
        source.SetId(7);
        source.mode = 6;
        source.c = 20.0;
        source.k1 = source.k2 = 4000.0;
        source.k3 = 0.01;
        source.a1 = 0.1;
        source.CreateLibAutoCam(nullptr, false);
        copy = source;
        EXPECT_NE(copy.GetCamPair(), source.GetCamPair());
    }
    ASSERT_NE(copy.GetCamPair(), nullptr);
    EXPECT_TRUE(copy.Adjust(&x, &y));
    EXPECT_NE(x, 2.0);
    EXPECT_EQ(copy.Calc_drForGraph(2.0, 1.0), x - 2.0);
    EXPECT_TRUE(copy.InvAdjust(&x, &y));
    EXPECT_NEAR(x, 2.0, 1e-5);
    copy.SetId(0);
    EXPECT_FALSE(copy.Adjust(&x, &y)) << "the id comes first";

    const ZoCamPair* own = copy.GetCamPair();
    copy = Classic();
    EXPECT_EQ(copy.GetCamPair(), own) << "a source without a pair leaves it";
    EXPECT_TRUE(copy.Adjust(&x, &y)) << "which goes before the mode";
    copy.DeleteCamPair();
    EXPECT_EQ(copy.GetCamPair(), nullptr);
}

TEST(Camera, CalibrationEntriesMakeDigitalCameras) {
    ZoCameraCalibEntry entry;
    entry.maker = "Maker";
    entry.model = " M1";
    entry.width = 4000;
    entry.height = 3000;
    entry.pixelSize = 0.005;
    entry.keyNumber = 7;
    entry.cameraMode = 2;
    entry.libAutoModel = 3;
    EXPECT_EQ(entry.GetKey(), "Maker M14000300020.00000007");
    ZoCamera camera;
    camera.SetFromCalibEntry(&entry);
    camera.SetFromCalibEntry(nullptr);
    const double expected[] = {20, 20, 4000, 3000, 0.005, 2000, 1500};
    const double found[] = {camera.c, camera.cViva, camera.k1, camera.k2, camera.k3, camera.k4, camera.k5};
    EXPECT_TRUE(std::equal(found, found + 7, expected));
    EXPECT_EQ(camera.mode * 10 + static_cast<unsigned>(camera.libAutoFlags), 85u) << "the mode of model 3";
    entry.libAutoModel = 4;  // no model
    entry.estimateFlag = true;
    camera.SetFromCalibEntry(&entry);
    EXPECT_EQ(camera.mode * 10 + static_cast<unsigned>(camera.libAutoFlags), 27u);
}

TEST(Camera, DebugLineNamesTheGeneration) {
    const RecordedHost host;
    ZoCamera camera = Classic();
    camera.DbgPrintf("cam");
    camera.SetTs15(20.5, 3.0, -4.0);
    camera.DbgPrintf(nullptr);
    camera.SetPinholeCamera();
    camera.DbgPrintf("p");
    camera.mode = 5;
    camera.DbgPrintf("p");
    EXPECT_EQ(host.narrow,
              (std::vector<std::string>{"cam Zorv c 18.2500, xh 0.5000, yh -0.2500, a1 -0.0001, a2 0.0000, r0 9.0000",
                                        " Viva c 20.5000, xh 0.5000, yh -0.2500, a1 -0.0001, a2 0.0000, r0 9.0000 | "
                                        "cViva 18.2500, xhViva 3.0000, yhViva -4.0000",
                                        "p Pinhole c 20.5000"}));
}

}  // namespace
