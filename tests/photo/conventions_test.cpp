// The numbers of docs/conventions.md, which were worked out by a program of their own.

#include <gtest/gtest.h>

#include "zorv/math/line3d.h"
#include "zorv/photo/photo.h"

namespace {

constexpr double kDigits = 1e-6;       // of the page
constexpr double kPixelDigits = 2e-3;  // the inverse table's interpolation, in pixels

TEST(Conventions, OnePointGoesFromTheObjectToItsPixel) {
    ZoPhoto photo(1);
    photo.SetPixelRegion(ZoRegion(0, 0, 6000, 4000));
    photo.preTrafo.Set(-18.0, 0.006, -12.0, 0.0);
    photo.SetCamera(ZoCamera(7, 24.35, 0.052, -0.031, -4e-5, 3e-8, 12.0, "example"), false);
    photo.SetPosAOR(10, 20, 30);
    photo.SetRotAOR(0.1, 0.2, -0.05);
    photo.SetHasAOR(true);
    const double rotation[3][3] = {
        {0.977850, 0.068792, 0.197677}, {-0.049729, 0.993761, -0.099833}, {-0.203311, 0.087792, 0.975170}};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(photo.rotAOR[row + 1][column + 1], rotation[row][column], kDigits);
    }

    const ZoPoint object(1, 11, 22, 10, 0);
    const auto converted = [&](eConvertBikoMode mode) {
        ZoPoint point(object);
        EXPECT_TRUE(photo.ConvertBiko(&point, mode));
        return point;
    };
    const ZoPoint image = converted(eObjectToImage);
    EXPECT_NEAR(image.x, 6.172721, kDigits);
    EXPECT_NEAR(image.y, 0.375108, kDigits);
    const ZoPoint biko = converted(eObjectToBiko);
    EXPECT_NEAR(biko.x, 6.247281, kPixelDigits * 0.006);
    EXPECT_NEAR(biko.y, 0.345479, kPixelDigits * 0.006);
    EXPECT_NEAR(photo.camera.CalcdrA1A2(6.206710), 0.00364151, 1e-8);
    ZoPoint pixel = converted(eObjectToDigi);
    EXPECT_NEAR(pixel.x, 4041.2136, kPixelDigits);
    EXPECT_NEAR(pixel.y, 2057.5798, kPixelDigits);
    photo.PixelRks_Lks(&pixel);
    EXPECT_NEAR(pixel.y, 1942.4202, kPixelDigits);

    ZoLine3d ray;
    photo.CalcRay(ray, &image);
    EXPECT_NEAR(ray.direction.x(), 0.049690, kDigits);
    EXPECT_NEAR(ray.direction.y(), 0.099381, kDigits);
    EXPECT_NEAR(ray.direction.z(), -0.993808, kDigits);
    EXPECT_NEAR(ray.getNormDistance(ZoPoint3d(11, 22, 10)), 0.0, 1e-12);
}

}  // namespace
