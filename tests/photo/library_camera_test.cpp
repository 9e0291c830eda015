#include "zorv/photo/auto/library_camera.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <stdexcept>

#include "tests/support/allocation_count.h"
#include <gtest/gtest.h>

namespace {

using ZorvLibAuto::Camera;
using Point = Camera::Coordinates;

constexpr double kPixels = 1e-8;  // the last digit of the figures below
// The Newton iteration ends with a step below 1e-5; what is left is about its square.
constexpr double kNewtonPlane = 2e-9;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct Calibration {
    std::uint32_t model;
    std::vector<double> params;
    double pixels[6];  // that see kPlane
};

// Mid field, a corner, and beyond the image.
const Point kPlane[] = {{0.2, -0.15}, {-0.6, 0.45}, {0.9, 0.8}};

// Pixels by mpmath with 50 digits, from the published form of each model.
const Calibration kCalibrations[] = {
    {Camera::eCamModelSimplePinhole, {3100.5, 1990.25, 1512.5}, {2610.35, 1047.425, 129.95, 2907.725, 4780.7, 3992.9}},
    {Camera::eCamModelPinhole,
     {3100.5, 3096.25, 1990.25, 1512.5},
     {2610.35, 1048.0625, 129.95, 2905.8125, 4780.7, 3989.5}},
    {Camera::eCamModelPinholeSimpleRadial,
     {3100.5, 1990.25, 1512.5, -0.08},
     {2607.2495, 1049.750375, 213.6635, 2844.939875, 4457.0078, 3705.1736}},
    {Camera::eCamModelPinholeRadial,
     {3100.5, 1990.25, 1512.5, -0.08, 0.02},
     {2607.29794531, 1049.71404102, 201.89128906, 2853.7690332, 4574.3462225, 3809.47442}},
    {Camera::eCamModelPinholeRadialTangential,
     {3100.5, 3096.25, 1990.25, 1512.5, -0.08, 0.02, 0.0004, -0.0003},
     {2607.09098694, 1050.53727457, 200.02866369, 2853.63033441, 4573.27655, 3808.369375}},
    {Camera::eCamModelFisheye,
     {3100.5, 3096.25, 1990.25, 1512.5, 0.01, -0.004, 0.002, -0.0005},
     {2598.25125587, 1057.12411986, 388.39191209, 2712.24675972, 4036.66306795, 3329.04040363}},
    {Camera::eCamModelPinholeOpenCVRadialTangential,
     {3100.5, 3096.25, 1990.25, 1512.5, 0.2, 0.02, 0.0004, -0.0003, 0.01, 0.28, 0.03, 0.002},
     {2607.07360642, 1050.55029209, 202.57317256, 2851.72456867, 4566.56698781, 3802.41349493}},
    {Camera::eCamModelPinholeFOV,
     {3100.5, 3096.25, 1990.25, 1512.5, 0.6},
     {2624.62137368, 1037.37364157, 194.28024165, 2857.63095411, 4463.16653448, 3707.63492659}},
    {Camera::eCamModelFisheyeSimpleRadial,
     {3100.5, 1990.25, 1512.5, 0.01},
     {2598.25975145, 1056.49268641, 387.50033431, 2714.56224927, 4039.99064469, 3334.49168417}},
    {Camera::eCamModelFisheyeRadial,
     {3100.5, 1990.25, 1512.5, 0.01, -0.004},
     {2598.25099712, 1056.49925216, 388.59511773, 2713.7411617, 4035.16086472, 3330.19854642}},
    {Camera::eCamModelFisheyeThinPrism,
     {3100.5, 3096.25, 1990.25, 1512.5, -0.08, 0.02, 0.0004, -0.0003, 0.01, 0.002, 0.0002, -0.0001},
     {2594.86126029, 1059.70494094, 439.17041273, 2674.50356854, 3933.73990522, 3238.60626406}},
    {Camera::eCamModelPinholeBLKRadialTangential,
     {3100.5, 3096.25, 1990.25, 1512.5, -0.08, 0.02, 0.0004, -0.0003, 0.01},
     {2607.09250085, 1050.53614069, 196.71772936, 2856.11013132, 4658.34690631, 3883.88381625}},
};

Camera Made(std::uint32_t model, std::vector<double> params) {
    Camera camera(model, 1.0, 4000, 3000);
    camera.params = std::move(params);
    return camera;
}

/// 20 mm in front of pixels of 1/160 mm.
const std::vector<double> kClassic = {3200, 2000, 1500, 0.12, -0.07, 0.00625, 0.00625, -12.5, -9.375, -2e-4, 3e-7, 9};

std::vector<Camera> AllCameras() {
    std::vector<Camera> cameras;
    for (const Calibration& calibration : kCalibrations)
        cameras.push_back(Made(calibration.model, calibration.params));
    cameras.push_back(Made(Camera::eCamModelZorv, kClassic));
    cameras.push_back(Made(Camera::eCamModelZorvViva, kClassic));
    cameras.back().params.resize(15, 7.0);
    return cameras;
}

TEST(LibraryCamera, ModelsAgreeWithHighPrecision) {
    for (const auto& [model, params, pixels] : kCalibrations) {
        SCOPED_TRACE(Camera::GetModelName(model));
        const Camera camera = Made(model, params);
        const auto agree = [&](const Point& plane, const Point& pixel) {
            const auto [u, v] = camera.PlaneToPixel(plane[0], plane[1]);
            EXPECT_NEAR(u, pixel[0], kPixels);
            EXPECT_NEAR(v, pixel[1], kPixels);
            const auto [x, y] = camera.PixelToPlane(pixel[0], pixel[1]);
            EXPECT_NEAR(x, plane[0], kNewtonPlane);
            EXPECT_NEAR(y, plane[1], kNewtonPlane);
        };
        agree({0.0, 0.0}, {camera.GetPrincipalPointX(), camera.GetPrincipalPointY()});
        for (std::size_t i = 0; i < std::size(kPlane); ++i)
            agree(kPlane[i], {pixels[2 * i], pixels[2 * i + 1]});
    }
}

TEST(LibraryCamera, ListsGiveWhatSinglePointsGiveWithoutAllocations) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> anywhere(-500.0, 4500.0);
    std::vector<Point> pixels(37);
    for (Point& pixel : pixels)
        pixel = {anywhere(random), anywhere(random)};
    for (const Camera& camera : AllCameras()) {
        std::vector<Point> list = pixels;
        const std::size_t before = AllocationCount();
        camera.PixelToPlane(list);
        bool isSame = true;
        for (std::size_t i = 0; i < list.size(); ++i)
            isSame &= list[i] == camera.PixelToPlane(pixels[i][0], pixels[i][1]);
        const Point back = camera.PlaneToPixel(list.back()[0], list.back()[1]);
        camera.PlaneToPixel(list);
        isSame &= list.back() == back;
        EXPECT_EQ(AllocationCount(), before);
        EXPECT_TRUE(isSame) << Camera::GetModelName(camera.model);
    }
}

// By hand: the plane point is at pixel (800, 0), at (3, 4) mm from the centre, and seen 0.75 % nearer to it.
TEST(LibraryCamera, ClassicModelDistortsInMillimetres) {
    const Camera camera = Made(Camera::eCamModelZorv, {1000, 500, 400, 0.1, -0.2, 0.01, 0.01, -5, -4, 1e-4, 0, 10});
    const auto [u, v] = camera.PlaneToPixel(0.3, -0.4);
    EXPECT_NEAR(u, (3 * 0.9925 + 0.1 + 5) / 0.01, kPixels);
    EXPECT_NEAR(v, (-(4 * 0.9925 - 0.2) + 4) / 0.01, kPixels) << "yh points upwards";
    const auto [x, y] = camera.PixelToPlane(807.75, 23.0);
    EXPECT_NEAR(x, 0.3, kNewtonPlane);
    EXPECT_NEAR(y, -0.4, kNewtonPlane);
}

TEST(LibraryCamera, FieldOfViewHasNoGaps) {
    Camera camera = Made(Camera::eCamModelPinholeFOV, {1000, 1000, 0, 0, 0.6});
    const double t = std::tan(0.3);
    for (const double x : {0.0099999, 0.0100001}) {  // both sides of the radius where the series ends
        EXPECT_NEAR(camera.PlaneToPixel(x, 0)[0], 1000 * std::atan(2 * x * t) / 0.6, 1e-6);
        EXPECT_NEAR(camera.PixelToPlane(1000 * x, 0)[0], std::tan(x * 0.6) / (2 * t), 1e-9);
    }
    EXPECT_EQ(camera.PlaneToPixel(0, 0), Point({0, 0}));
    EXPECT_EQ(camera.PixelToPlane(0, 0), Point({0, 0}));
    // Half a circle is at r * omega = pi / 2; what lies beyond stays on its side.
    const double edge = 1000 * std::numbers::pi / 2 / 0.6;
    for (const double u : {edge * 1.001, edge * 2.5, 1e100})
        EXPECT_TRUE(camera.PixelToPlane(u, 0)[0] > 1e12 && std::isfinite(camera.PixelToPlane(u, 0)[0])) << u;
    EXPECT_LT(camera.PixelToPlane(-2 * edge, 0)[0], -1e12);
    camera.params[4] = 0.0;
    EXPECT_EQ(camera.PlaneToPixel(0.5, 0.25), Point({500, 250}));
    EXPECT_EQ(camera.PixelToPlane(500, 250), Point({0.5, 0.25}));
    camera.params[4] = 0.006;
    const double s = 1 + 0.006 * 0.006 * (0.25 / 3 - 1.0 / 12);
    EXPECT_NEAR(camera.PixelToPlane(300, 400)[0], 0.3 * s, 1e-14) << "the same factor both ways";
    EXPECT_NEAR(camera.PlaneToPixel(0.3, 0.4)[1], 400 * s, 1e-11);
}

TEST(LibraryCamera, BeyondItsReachTheIterationStaysFinite) {
    // r - r^3 never sees more than 0.385; the equidistant fisheye never more than pi / 2.
    const Camera folding = Made(Camera::eCamModelPinholeSimpleRadial, {1000, 0, 0, -1});
    const Camera fisheye = Made(Camera::eCamModelFisheye, {1000, 1000, 0, 0, 0, 0, 0, 0});
    const Camera enormous = Made(Camera::eCamModelPinholeRadial, {1000, 0, 0, 1e308, -1e308});
    for (const Camera* camera : {&folding, &fisheye, &enormous}) {
        for (const double u : {0.0, 385.0, 577.3502691896258, 1600.0, 3e5, 1e200}) {
            const auto [x, y] = camera->PixelToPlane(u, -u);
            EXPECT_TRUE(std::isfinite(x) && std::isfinite(y)) << Camera::GetModelName(camera->model) << " at " << u;
        }
    }
    EXPECT_EQ(fisheye.PlaneToPixel(2e-16, 0), Point({2e-13, 0})) << "no distortion at the centre";
    for (Camera camera : AllCameras()) {
        camera.PixelToPlane(kNan, kInf);
        camera.PlaneToPixel(kInf, -kInf);
        camera.params.assign(camera.params.size(), kNan);
        camera.PixelToPlane(1, 1);
        camera.params.assign(camera.params.size(), 0.0);
        camera.PixelToPlane(1, 1);
    }
}

TEST(LibraryCamera, ModelsHaveNamesAndBeginWithoutDistortion) {
    const Camera fov(Camera::eCamModelPinholeFOV, 800, 641, 480);
    EXPECT_EQ(fov.params, std::vector<double>({800, 800, 320.5, 240, 0.01}));
    const Camera classic(ZorvLibAuto::eCamModelZorv, 800, 640, 480);
    EXPECT_EQ(classic.params, std::vector<double>({800, 320, 240, 0, 0, 1, 1, 0, 0, 0, 0, 0}));
    const Camera pinhole = Made(Camera::eCamModelPinhole, {1, 2, 3, 4});
    EXPECT_EQ(std::tuple(pinhole.GetFocalLengthY(), pinhole.GetPrincipalPointY()), std::tuple(2, 4));
    const Camera simple = Made(Camera::eCamModelFisheyeRadial, {1, 2, 3, 4, 5});
    EXPECT_EQ(std::tuple(simple.GetFocalLengthY(), simple.GetPrincipalPointX()), std::tuple(1, 2));
    EXPECT_EQ(Camera::GetModelParameters(24), "f, x0 y0, xh, yh, a1, a2, a3, a4  R1, R2, R0, ");
    for (const Camera& camera : AllCameras()) {
        EXPECT_EQ(Camera::GetModelNumber(Camera::GetModelName(camera.model)), static_cast<int>(camera.model));
        EXPECT_EQ(Camera(camera.model, 1, 2, 2).params.size(), camera.params.size());
    }
    EXPECT_EQ(Camera::GetModelNumber("fisheye"), -1);
    EXPECT_EQ(Camera::GetModelName(4), "");
}

TEST(LibraryCamera, UnknownModelsAndMissingParametersThrow) {
    for (const std::uint32_t number : {4u, 5u, 13u, 23u, 26u, 27u, 29u, 0xFFFFFFFFu}) {
        EXPECT_THROW(Camera(number, 1, 2, 2), std::domain_error) << number;
        Camera camera(0, 1, 2, 2);
        camera.model = number;
        EXPECT_THROW(camera.PixelToPlane(0, 0), std::domain_error) << number;
    }
    Camera camera;
    try {
        camera.PlaneToPixel(0, 0);
        ADD_FAILURE() << "no model, no exception";
    } catch (const std::domain_error& error) {
        EXPECT_STREQ(error.what(), "Unknown Camera model");
    }
    camera.SetModel(6, 1, 2, 2);
    camera.params.pop_back();
    EXPECT_THROW(camera.PlaneToPixel(0, 0), std::domain_error);
    EXPECT_THROW(camera.GetFocalLength(), std::domain_error);
}

}  // namespace
