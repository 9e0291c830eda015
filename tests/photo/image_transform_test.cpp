#include "zorv/photo/image_transform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "zorv/math/point3d.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/region_tiles.h"

namespace {

constexpr double kDigits = 1e-9;  // pixels or mm, with the look-up in a table of 781 nodes

/// Digi to Pre is (2 x + 10, 2 y - 4), Pre to Biko (1 - y / 2, x / 2 - 2), the principal point (0.5, -0.25), and the
/// camera axes x, y, z lie along the object's y, -x, z. No distortion, so that everything can be worked out by hand.
void SetUpCamera(ZoPhoto& photo) {
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400));
    photo.preTrafo.Set(10, 2, 0, -4, 0, 2);
    photo.mainTrafo.Set(1, 0, -2, 0.5);
    ZoCamera camera(3, 10.0, 0.5, -0.25, 0.0, 0.0, 0.0, "");
    camera.rmax = 60;
    photo.SetCamera(camera, false);
    const double axes[] = {0, -1, 0, 1, 0, 0, 0, 0, 1};
    photo.SetRotAOR(ZoMatrix(axes, 3, 3));
    photo.SetPosAOR(100, 200, 50);
    photo.SetHasAOR(true);
}

/// The main trafo becomes (1 - y / 2 + x^2 / 1000, -2 + x / 2 + x y / 1000), and the way back, which is another
/// polynomial, (3 + 2 x + y, -1 + x - y + y^2 / 2).
void MakePolynomial(ZoPhoto& photo) {
    photo.mainTrafo.type = photo.polyInvTrafo.type = eTrafo2DPolynomial;
    const double main[ZoTrafo2d::kCoefCount] = {1, 0, -0.5, 0.001, 0, 0, 0, 0, 0, 0, -2, 0.5, 0, 0, 0.001};
    const double back[ZoTrafo2d::kCoefCount] = {3, 2, 1, 0, 0, 0, 0, 0, 0, 0, -1, 1, -1, 0, 0, 0.5};
    std::copy(std::begin(main), std::end(main), photo.mainTrafo.coef);
    std::copy(std::begin(back), std::end(back), photo.polyInvTrafo.coef);
}

struct Conversion {
    eConvertBikoMode mode;
    ZoPoint from, to, flippedFrom, flippedTo;
    bool isInside = true;  // with flip
};

ZoPoint At(double x, double y, double z = 0.0) {
    return {0, x, y, z, 0};
}

void ExpectConversions(const ZoPhoto& photo, const std::vector<Conversion>& conversions) {
    for (const Conversion& c : conversions) {
        SCOPED_TRACE(c.mode);
        ZoPoint point = c.from;
        EXPECT_TRUE(photo.ConvertBiko(&point, c.mode));
        EXPECT_LT(point.Distance(c.to), kDigits) << point.x << ' ' << point.y;
        ZoVector vector = c.from.GetAsVector();
        EXPECT_TRUE(ZoBikoTransform(&photo, c.mode, false).Transform(vector));
        EXPECT_LT((vector - c.to.GetAsVector()).Abs(), kDigits);
        ZoPoint3d flipped(c.flippedFrom.x, c.flippedFrom.y, c.flippedFrom.z);
        EXPECT_EQ(ZoBikoTransform(&photo, c.mode, true).Transform(flipped), c.isInside);
        EXPECT_TRUE(flipped.IsSame({c.flippedTo.x, c.flippedTo.y, 0}, kDigits)) << flipped.x() << ' ' << flipped.y();
        if (c.mode >= eObjectToImage) continue;
        double x = c.from.x, y = c.from.y;
        EXPECT_TRUE(ZoBikoTransform(&photo, c.mode, false).Transform(&x, &y, nullptr)) << "z is not used";
    }
}

TEST(ImageTransform, ModesFollowTheChain) {
    ZoPhoto photo(1);
    SetUpCamera(photo);
    const ZoPoint digi = At(30, 20), flipped = At(30, 380), pre = At(70, 36), biko = At(-17, 33);
    const ZoPoint image = At(-17.5, 33.25), object = At(-66.25, 112.5, 0);
    ExpectConversions(photo, {
                                 {eDigiToPre, digi, pre, digi, pre},
                                 {eDigiToBiko, digi, biko, flipped, biko},
                                 {ePreToBiko, pre, biko, pre, biko},
                                 {eDigiToImage, digi, image, flipped, image},
                                 {eBikoToImage, biko, image, biko, image},
                                 {eBikoToDigi, biko, digi, biko, flipped},
                                 {ePreToDigi, pre, digi, pre, flipped},
                                 {eBikoToPre, biko, pre, biko, pre},
                                 {eImageToBiko, image, biko, image, biko},
                                 {eImageToDigi, image, digi, image, flipped},
                                 {eObjectToImage, object, image, object, At(-17.5, 366.75), false},
                                 {eObjectToBiko, object, biko, object, At(-17, 367), false},
                                 {eObjectToDigi, object, digi, object, flipped},
                             });
    photo.camera.c = -10.0;
    ExpectConversions(photo, {{eObjectToDigi, object, digi, object, flipped}});

    ZoPoint point = digi;
    for (const int mode : {0, 14, -1}) {
        EXPECT_TRUE(photo.ConvertBiko(&point, static_cast<eConvertBikoMode>(mode)));
        EXPECT_TRUE(point == digi);
    }
    EXPECT_FALSE(ZoBikoTransform().Transform(&point));
    EXPECT_FALSE(ZoBikoTransform(&photo, eDigiToPre, false).Transform(static_cast<ZoPoint*>(nullptr)));
    EXPECT_FALSE(photo.ConvertBiko(nullptr, eDigiToPre));
    ZoPointList list;
    list.Add(digi);
    photo.ConvertList(&list, eDigiToBiko);
    EXPECT_LT(list.First()->Distance(biko), kDigits);
    photo.ConvertList(nullptr, eDigiToBiko);

    const ZoBikoTransform snapshot(&photo, eDigiToImage, false);
    photo.preTrafo.Set(0, 0, 0, 0);
    photo.camera.xh = 1.5;
    EXPECT_TRUE(snapshot.Transform(&(point = digi)));
    EXPECT_LT(point.Distance(At(-18.5, 33.25)), kDigits) << "the trafos of then, the camera of now";
    EXPECT_TRUE(photo.ConvertBiko(&point, eBikoToDigi)) << "a singular trafo";
}

TEST(ImageTransform, PolynomialMainTrafoHasItsOwnWayBack) {
    ZoPhoto photo(1);
    SetUpCamera(photo);
    MakePolynomial(photo);
    const ZoPoint digi = At(30, 20), flipped = At(30, 380), pre = At(70, 36), biko = At(-12.1, 35.52);
    const ZoPoint image = At(-12.6, 35.77), object = At(78.75, 207.5, 0);
    const ZoPoint backBiko = At(2, 4), backPre = At(11, 5), backDigi = At(0.5, 4.5), backImage = At(1.5, 4.25);
    ExpectConversions(photo, {
                                 {eDigiToPre, digi, pre, digi, pre},
                                 {eDigiToBiko, digi, biko, flipped, biko},
                                 {ePreToBiko, pre, biko, pre, biko},
                                 {eDigiToImage, digi, image, flipped, image},
                                 {eBikoToDigi, backBiko, backDigi, backBiko, At(0.5, 395.5)},
                                 {ePreToDigi, pre, digi, pre, flipped},
                                 {eBikoToPre, backBiko, backPre, backBiko, backPre},
                                 {eImageToDigi, backImage, backDigi, backImage, At(0.5, 395.5)},
                                 {eObjectToImage, object, backImage, object, At(1.5, 395.75)},
                                 {eObjectToBiko, object, backBiko, object, At(2, 396)},
                                 {eObjectToDigi, object, backDigi, object, At(0.5, 395.5), false},
                             });
    EXPECT_TRUE(ZoBikoTransform(&photo, eDigiToBiko, false).IsPolyTrafo());
}

TEST(ImageTransform, FlippedProjectionsTellWhatFallsOutside) {
    ZoPhoto photo(1);
    photo.SetPixelRegion(ZoRegion(0, 0, 100, 50));
    photo.camera = ZoCamera(3, 1.0, 0, 0, 0, 0, 0, "");
    photo.camera.SetPinholeCamera();
    photo.SetPosAOR(0, 0, 1);
    const ZoBikoTransform transform(&photo, eObjectToDigi, true);
    struct Case {
        double x, row;
        bool isInside;
    };
    for (const Case& c :
         {Case{1, 1, true}, Case{0.99, 1, false}, Case{1, 0.99, false}, Case{98.99, 48.99, true}, Case{99, 48, false},
          Case{98, 49, false}, Case{-50, 25, false}, Case{double{NAN}, 25, false}}) {
        double x = c.x, y = 50 - c.row, z = 0;
        EXPECT_EQ(transform.Transform(&x, &y, &z), c.isInside) << c.x << ' ' << c.row;
        EXPECT_TRUE(std::isnan(c.x) || std::fabs(y - c.row) < kDigits) << "written all the same";
    }
    ZoPoint beside = At(2, 3, 1);
    EXPECT_TRUE(photo.ConvertBiko(&beside, eObjectToImage));
    EXPECT_LT(beside.Distance(At(-2e8, -3e8)), 1e-3) << "at the height of the camera";

    photo.camera.mode = ZoCamera::kClassicMode;
    photo.camera.rmax = 10;
    for (const eConvertBikoMode mode : {eObjectToBiko, eObjectToDigi}) {
        ZoPoint far = At(50, -2, 0);
        EXPECT_FALSE(photo.ConvertBiko(&far, mode)) << "beyond the reach of the lens";
        EXPECT_TRUE(far == At(50, -2, 0)) << "in Image";
    }
    ZoPoint far = At(50, -2, 0);
    EXPECT_TRUE(ZoBikoTransform(&photo, eImageToDigi, false).Transform(&far)) << "these modes do not tell";
}

TEST(ImageTransform, ViewReaches120DegreesFromTheAxis) {
    ZoPhoto photo(1);
    photo.SetHasAOR(true);
    photo.SetPosAOR(1, 2, 3);
    const ZoBikoTransform transform(&photo, eObjectToDigi, false);
    for (const double degrees : {0.0, 90.0, 119.9, -119.9, 120.1, 180.0}) {
        const double angle = degrees * std::numbers::pi / 180;
        EXPECT_EQ(transform.IsInPhotoView(1 - 5 * std::sin(angle), 2, 3 - 5 * std::cos(angle)),
                  std::fabs(degrees) < 120)
            << degrees;
    }
    EXPECT_FALSE(ZoBikoTransform(nullptr, eObjectToDigi, false).IsInPhotoView(0, 0, 0));
}

TEST(ImageTransform, PhotosKnowTheirSizes) {
    ZoPhoto photo(1);
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400.7));
    photo.preTrafo.Set(-3, 0.01, 0, -4, 0, 0.02);
    EXPECT_TRUE(photo.GetBikoRegion() == ZoRegion(-3, -4, 3, 400.7 * 0.02 - 4));
    EXPECT_NEAR(photo.GetPixelSizeX(), 0.01, kDigits);
    EXPECT_NEAR(photo.GetPixelSizeY(), 0.02, kDigits);
    EXPECT_NEAR(photo.GetPixelSize(), std::sqrt(2e-4), kDigits);
    EXPECT_NEAR(photo.GetPhotoPixelScale(), 75, kDigits);
    EXPECT_NEAR(photo.GetMaxBikoRadius(), 0.55 * std::hypot(6, 8.014), kDigits);
    photo.preTrafo.Set(0, 1, 0, 0);
    EXPECT_NEAR(photo.GetPixelSize(), std::sqrt(2e-4), kDigits) << "kept";
    EXPECT_EQ(photo.GetBikoRegion().Left(), -3) << "kept";
    photo.Init();
    EXPECT_NEAR(photo.GetPixelSize(), 1.0, kDigits);

    ZoPoint point = At(5, 50.5);
    photo.PixelRks_Lks(&point);
    EXPECT_EQ(point.y, 349.5);
    photo.SetPixelRegion(ZoRegion(0, 0, 10, 100));
    photo.PixelRks_Lks(&point);
    EXPECT_EQ(point.y, -249.5);

    photo.SetBikoRegion(ZoRegion(-3, -4, 3, 4));
    const ZoPhotoRegionTiles tiles(&photo, 3, 4);
    for (const auto& [x, y, column, row] : {std::array{-3.0, -4.0, 0.0, 0.0}, std::array{0.99, -0.01, 1.0, 1.0},
                                            std::array{3.0, 4.0, 2.0, 3.0}, std::array{-100.0, 1e300, 0.0, 3.0}}) {
        int foundColumn = -1, foundRow = -1;
        const ZoPoint place = At(x, y);
        tiles.GetFieldIndex(foundColumn, foundRow, &place);
        EXPECT_EQ(foundColumn, column);
        EXPECT_EQ(foundRow, row);
        ZoPhotoRegionTiles(nullptr, 3, 4).GetFieldIndex(foundColumn, foundRow, &place);
        EXPECT_EQ(foundColumn + foundRow, 0);
    }
}

}  // namespace
