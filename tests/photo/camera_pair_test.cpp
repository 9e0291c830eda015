#include "zorv/photo/camera_pair.h"

#include <cmath>
#include <utility>

#include <gtest/gtest.h>

#include "zorv/core/text_conversion.h"
#include "zorv/photo/camera.h"
#include "zorv/photo/camera_library_bridge.h"

namespace {

using zorv::detail::CreateLibraryCameraFromClassic;
using zorv::detail::PhotoGeometry;
using zorv::detail::TakeLibraryCamera;
using ZorvLibAuto::Camera;

constexpr double kMm = 1e-9;

/// An image of 4000 by 3000 pixels of 1/160 mm, with the origin of the mm in its centre.
PhotoGeometry CentredPhoto() {
    PhotoGeometry photo;
    photo.width = 4000.9;
    photo.height = 3000.9;
    photo.pixelsPerMm = [] { return 160.0; };
    const double matrix[] = {1 / 160.0, 0, -12.5, 0, 1 / 160.0, -9.375, 0, 0, 1};
    photo.digiToBiko.Set(matrix, 3, 3);
    photo.flippedDigiToBiko = [](double* x, double* y) {
        *x = *x / 160 - 12.5;
        *y = (3000 - *y) / 160 - 9.375;
    };
    return photo;
}

ZoCamera ClassicCamera() {
    return ZoCamera(7, 20.0, 0.12, -0.07, -2e-5, 3e-8, 9.0, "classic");
}

/// A camera whose fields tell their names.
ZoCamera DigitalCamera(std::uint32_t mode) {
    ZoCamera camera(5, 20, 0, 0, 1e-3, 2e-3, 0, "");
    camera.mode = mode;
    const std::pair<double ZoCamera::*, double> values[] = {
        {&ZoCamera::cViva, 21}, {&ZoCamera::k1, 4000.9}, {&ZoCamera::k2, 3000},  {&ZoCamera::k3, 0.5},
        {&ZoCamera::k4, 1990},  {&ZoCamera::k5, 1510},   {&ZoCamera::a3, 3e-3},  {&ZoCamera::a4, 4e-3},
        {&ZoCamera::a5, 5e-3},  {&ZoCamera::a6, 6e-3},   {&ZoCamera::c1, 1e-4},  {&ZoCamera::c2, 2e-4},
        {&ZoCamera::sx1, 1e-5}, {&ZoCamera::sx2, 2e-5},  {&ZoCamera::omega, 0.6}};
    for (const auto& [member, value] : values)
        camera.*member = value;
    camera.libAutoFlags = 7;
    return camera;
}

struct ModeRow {
    std::uint32_t mode, model;
    std::vector<double> params;
};

const ModeRow kModeRows[] = {
    {4, 0, {40, 1990, 1510}},
    {5, 1, {40, 42, 1990, 1510}},
    {6, 2, {40, 1990, 1510, 1e-3}},
    {7, 10, {40, 1990, 1510, 1e-3}},
    {8, 3, {40, 1990, 1510, 1e-3, 2e-3}},
    {11, 11, {40, 1990, 1510, 1e-3, 2e-3}},
    {12, 6, {40, 42, 1990, 1510, 1e-3, 2e-3, 1e-4, 2e-4}},
    {13, 7, {40, 42, 1990, 1510, 1e-3, 2e-3, 3e-3, 4e-3}},
    {14, 8, {40, 42, 1990, 1510, 1e-3, 2e-3, 1e-4, 2e-4, 3e-3, 4e-3, 5e-3, 6e-3}},
    {15, 9, {40, 42, 1990, 1510, 0.6}},
    {16, 12, {40, 42, 1990, 1510, 1e-3, 2e-3, 1e-4, 2e-4, 3e-3, 4e-3, 1e-5, 2e-5}},
    {17, 28, {40, 42, 1990, 1510, 1e-3, 2e-3, 1e-4, 2e-4, 3e-3}},
};

TEST(CameraPair, ModesFeedTheParametersOfTheirModels) {
    for (const auto& [mode, model, params] : kModeRows) {
        SCOPED_TRACE(mode);
        ZoCamera camera = DigitalCamera(mode);
        camera.CreateLibAutoCam(nullptr, true);
        ASSERT_NE(camera.GetCamPair(), nullptr);
        const ZoCamPair& pair = *camera.GetCamPair();
        EXPECT_EQ(std::tuple(pair.first.model, pair.first.params, pair.first.id, pair.first.flags, pair.first.width),
                  std::tuple(model, params, 5u, 7u, 4000u));
        EXPECT_TRUE(pair.first.hasData);
        EXPECT_EQ(pair.second.params, std::vector<double>({40, 40, 2000, 1500}));
        EXPECT_EQ(pair.second.id, 5u);
        EXPECT_TRUE(pair.mmToPixel.IsIdent() && pair.pixelToMm.IsIdent());

        ZoCamera taken = DigitalCamera(2);
        taken.SetFromLibAuto(&pair.first, nullptr);
        EXPECT_EQ(std::tuple(taken.mode, taken.r0), std::tuple(mode, 0.0));
        EXPECT_EQ(taken.GetName(), string2wstring(Camera::GetModelName(model)));
        taken.CreateLibAutoCam(nullptr, false);
        EXPECT_EQ(taken.GetCamPair()->first.params, params);
    }
}

TEST(CameraPair, ModesWithoutAModelMakeNone) {
    for (const std::uint32_t mode : {0u, 1u, 2u, 3u}) {
        ZoCamera camera = DigitalCamera(4);
        camera.CreateLibAutoCam(nullptr, false);
        camera.mode = mode;
        for (const bool fromClassic : {true, false})
            camera.CreateLibAutoCam(nullptr, fromClassic);
        EXPECT_NE(camera.GetCamPair(), nullptr) << "it stays in mode " << mode;
    }
    const auto pairGoes = [](auto spoil) {
        ZoCamera camera = DigitalCamera(4);
        camera.CreateLibAutoCam(nullptr, false);
        spoil(camera);
        camera.CreateLibAutoCam(nullptr, true);
        return camera.GetCamPair() == nullptr;
    };
    for (const std::uint32_t mode : {9u, 10u, 18u, 0xFFFFFFFFu})
        EXPECT_TRUE(pairGoes([=](ZoCamera& camera) { camera.mode = mode; })) << mode;
    EXPECT_TRUE(pairGoes([](ZoCamera& camera) { camera.k1 = 0; }));
    EXPECT_TRUE(pairGoes([](ZoCamera& camera) { camera.k2 = NAN; }));
    EXPECT_TRUE(pairGoes([](ZoCamera& camera) { camera.k3 = -0.1; }));
    EXPECT_TRUE(pairGoes([](ZoCamera& camera) { camera.k3 = INFINITY; }));
}

TEST(CameraPair, ClassicCameraFeedsTheClassicModel) {
    const PhotoGeometry photo = CentredPhoto();
    ZoCamera camera = ClassicCamera();
    ASSERT_TRUE(CreateLibraryCameraFromClassic(camera, &photo));
    EXPECT_EQ(camera.GetCamPair()->first.params, std::vector<double>({3200, 2000, 1500, 0.12, -0.07, 1 / 160.0,
                                                                      1 / 160.0, -12.5, -9.375, -2e-5, 3e-8, 9}));
    // The way back is a closed form: about the principal point, each radius times 1 + dr.
    double x = -12, y = 7.5;
    const double dr = camera.CalcdrA1A2(x, y);
    ASSERT_TRUE(camera.InvAdjust(&x, &y));
    EXPECT_NEAR(x, -12 - 12 * dr + 0.12, kMm);
    EXPECT_NEAR(y, 7.5 + 7.5 * dr - 0.07, kMm);
}

TEST(CameraPair, WithoutAFocalLengthNothingIsAdjusted) {
    const auto stays = [](const ZoCamera& camera) {
        double x = 1.5, y = -2.5;
        const bool isAdjusted = camera.Adjust(&x, &y) || camera.InvAdjust(&x, &y);
        return !isAdjusted && x == 1.5 && y == -2.5;
    };
    for (const double focal : {0.0, double{NAN}, double{INFINITY}}) {
        ZoCamera camera = DigitalCamera(12);
        camera.c = focal;
        camera.CreateLibAutoCam(nullptr, false);
        ASSERT_NE(camera.GetCamPair(), nullptr);
        EXPECT_TRUE(stays(camera)) << focal;

        PhotoGeometry photo = CentredPhoto();
        photo.pixelsPerMm = [focal] { return focal; };
        ZoCamera classic = ClassicCamera();
        EXPECT_FALSE(CreateLibraryCameraFromClassic(classic, &photo)) << focal;
        EXPECT_EQ(classic.GetCamPair(), nullptr);
    }
}

TEST(CameraPair, InstrumentCameraCarriesItsSecondConstant) {
    PhotoGeometry photo = CentredPhoto();
    photo.width = 4001;
    ZoCamera camera = ClassicCamera();
    camera.SetTs15(8.0, 0.01, 0.02);
    ASSERT_TRUE(CreateLibraryCameraFromClassic(camera, &photo));
    const Camera made = camera.GetCamPair()->first;
    EXPECT_EQ(std::tuple(made.model, made.params[0]), std::tuple(25u, 8.0 * 160));
    EXPECT_EQ(made.params[1], 2000) << "whole pixels";
    EXPECT_EQ(std::tuple(made.params[12], made.params[14]), std::tuple(20.0 * 160, 0.02));

    ZoCamera taken = DigitalCamera(4);
    taken.CreateLibAutoCam(nullptr, false);
    TakeLibraryCamera(taken, made, &photo);
    EXPECT_TRUE(taken.IsTs15());
    EXPECT_EQ(std::tuple(taken.GetCamPair(), taken.xh, taken.yh, taken.a2, taken.r0),
              std::tuple(nullptr, camera.xh, camera.yh, camera.a2, 9.0));
    EXPECT_DOUBLE_EQ(taken.cViva, 20.0);
    EXPECT_EQ(taken.xhViva, 0.01);
}

TEST(CameraPair, LibraryCameraTakesTheScaleOfThePhoto) {
    const PhotoGeometry photo = CentredPhoto();
    Camera library(Camera::eCamModelPinholeRadial, 3200, 4000, 3000);
    library.id = 42;
    library.params = {3200, 1984, 1516, -0.08, 0.02};
    ZoCamera camera = ClassicCamera();
    TakeLibraryCamera(camera, library, &photo);
    EXPECT_EQ(camera.GetId(), 42u);
    EXPECT_EQ(camera.GetName(), L"classic") << "without flags the name stays";
    EXPECT_EQ(std::tuple(camera.c, camera.k3), std::tuple(20.0, 1 / 160.0));
    EXPECT_NEAR(camera.xh, -0.1, kMm);
    EXPECT_NEAR(camera.yh, -0.1, kMm);
    // The image point of the ray (0.5, 0.25) without distortion and without the offset of the principal point.
    double x = 0.5 * 20, y = 0.25 * 20;
    const double seen = 1 - 0.08 * 0.3125 + 0.02 * 0.3125 * 0.3125;
    double rawX = (0.5 * seen * 3200 + 1984) / 160 - 12.5;
    double rawY = (0.25 * seen * 3200 - 1516 + 3000) / 160 - 9.375;
    ZoCamera copy;
    copy = camera;
    camera.DeleteCamPair();
    ASSERT_TRUE(copy.Adjust(&rawX, &rawY)) << "a copy has a pair of its own";
    EXPECT_NEAR(rawX, x, 1e-7);
    EXPECT_NEAR(rawY, y, 1e-7);
    copy.InvAdjust(&rawX, &rawY);
    copy.Adjust(&rawX, &rawY);
    EXPECT_NEAR(rawX, x, 1e-7);
}

TEST(CameraPair, UnknownLibraryCamerasLeaveTheModeAndNoPair) {
    for (const std::uint32_t number : {5u, 29u, 0xFFFFFFFFu}) {
        ZoCamera camera = DigitalCamera(13);
        camera.CreateLibAutoCam(nullptr, false);
        Camera unknown;
        unknown.model = number;
        camera.SetFromLibAuto(&unknown, nullptr);
        EXPECT_EQ(std::tuple(camera.mode, camera.c, camera.GetCamPair()), std::tuple(13u, 0.0, nullptr));
    }
    ZoCamera camera = DigitalCamera(13);
    camera.CreateLibAutoCam(nullptr, false);
    camera.SetFromLibAuto(nullptr, nullptr);
    EXPECT_EQ(camera.c, 20.0);
    camera.SetFromLibAuto(&camera.GetCamPair()->first, nullptr);
    EXPECT_EQ(camera.GetCamPair()->first.params[7], 4e-3) << "from its own pair";
}

TEST(CameraPair, HostsNameTheModels) {
    EXPECT_EQ(ZoCamera::GetLocalAutoLibName(3), L"");
    EXPECT_TRUE(!ZoCamera::SetLocalAutoLibName(3, nullptr) && ZoCamera::SetLocalAutoLibName(3, L"Lochkamera"));
    EXPECT_EQ(ZoCamera::GetLocalAutoLibName(3), L"Lochkamera");
    const Camera library(3, 1, 2, 2);
    ZoCamera camera = DigitalCamera(4);
    camera.SetFromLibAuto(&library, nullptr);
    EXPECT_EQ(camera.GetName(), L"Lochkamera");
    ZoCamera::SetLocalAutoLibName(3, L"");
    camera.SetFromLibAuto(&library, nullptr);
    EXPECT_EQ(camera.GetName(), L"Pinhole_Radial");
}

}  // namespace
