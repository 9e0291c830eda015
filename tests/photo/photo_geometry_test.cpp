#include <cmath>
#include <numbers>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/scan_point.h"
#include "zorv/math/line3d.h"
#include "zorv/photo/auto/library_camera.h"
#include "zorv/photo/photo_list.h"

namespace {

using ZorvLibAuto::Camera;

constexpr double kDigits = 1e-9;

/// 3000 by 2000 pixels of 5 micrometres about the origin of Biko, on a tilted camera.
void SetUpTilted(ZoPhoto& photo) {
    photo.SetPixelRegion(ZoRegion(0, 0, 3000, 2000));
    photo.preTrafo.Set(-7.5, 0.005, -5.0, 0.0);
    photo.SetPosAOR(4'500'000.25, 5'300'000.5, 412.75);
    photo.SetRotAOR(0.3, -0.2, 2.5);
    photo.SetHasAOR(true);
    photo.SetActiveFlag(ZoPhoto::kActive);
}

/// The farthest that pixels of the image come back from their own object points at 1 to 300 m. Calls `check` with each
/// pixel and its direction in the camera frame.
template <class Check>
double WorstReturn(ZoPhoto& photo, Check check) {
    photo.SetBikoTransform(eDigiToImage, true);
    const ZoBikoTransform toPixel(&photo, eObjectToDigi, true);
    double worst = 0;
    for (double column = 5; column < 3000; column += 230) {
        for (double row = 5; row < 2000; row += 180) {
            ZoLine3d ray;
            photo.SetRayStart(ray);
            photo.CalcRayDirection(ray, column, row);
            const ZoVector d =
                photo.rotAOR.Transpose() * ZoVector(ray.direction.x(), ray.direction.y(), ray.direction.z());
            check(column, row, d);
            ZoPoint3d point = ray.Evaluate(1 + column / 10);
            EXPECT_TRUE(toPixel.Transform(point)) << column << ' ' << row;
            worst = std::max(worst, std::hypot(point.x() - column, point.y() - row));
        }
    }
    return worst;
}

struct Lens {
    std::uint32_t model;
    std::vector<double> coefficients;  // behind the principal point
};

const Lens kLenses[] = {
    {Camera::eCamModelSimplePinhole, {}},
    {Camera::eCamModelPinhole, {}},
    {Camera::eCamModelPinholeSimpleRadial, {-0.08}},
    {Camera::eCamModelPinholeRadial, {-0.08, 0.02}},
    {Camera::eCamModelPinholeRadialTangential, {-0.08, 0.02, 1e-3, -5e-4}},
    {Camera::eCamModelFisheye, {0.01, -0.004, 0.001, -2e-4}},
    {Camera::eCamModelPinholeOpenCVRadialTangential, {-0.08, 0.02, 1e-3, -5e-4, 0.003, 0.01, 0.002, 0.001}},
    {Camera::eCamModelPinholeFOV, {0.7}},
    {Camera::eCamModelFisheyeSimpleRadial, {0.01}},
    {Camera::eCamModelFisheyeRadial, {0.01, -0.004}},
    {Camera::eCamModelFisheyeThinPrism, {0.01, -0.004, 1e-3, -5e-4, 0.001, -2e-4, 1e-3, 2e-3}},
    {Camera::eCamModelPinholeBLKRadialTangential, {-0.08, 0.02, 1e-3, -5e-4, 0.003}},
};

TEST(PhotoGeometry, RaysOfEveryLensLeadBackToTheirPixels) {
    for (const auto& [model, coefficients] : kLenses) {
        SCOPED_TRACE(model);
        Camera lens(model, 2400.0, 3000, 2000);
        lens.id = 5;
        std::copy(coefficients.begin(), coefficients.end(), lens.params.end() - static_cast<int>(coefficients.size()));
        for (double& parameter : lens.params)
            if (parameter == 1500 || parameter == 1000) parameter += 12;  // the principal point
        if (lens.GetPrincipalPointX() == lens.params[2]) lens.params[1] = 2405.0;
        ZoPhoto photo(1);
        SetUpTilted(photo);
        photo.SetCamera(&lens);
        EXPECT_NEAR(photo.camera.c, 12.0, kDigits);
        EXPECT_NEAR(photo.camera.xh, 0.06, kDigits);
        EXPECT_NEAR(photo.camera.yh, -0.06, kDigits);
        EXPECT_NEAR(photo.camera.rmax, 0.55 * std::hypot(15, 10), kDigits);
        // The lens has y down and looks along z.
        const auto isOfLens = [&](double column, double row, const ZoVector& d) {
            const auto [x, y] = lens.PixelToPlane(column, row);
            EXPECT_NEAR(d[1] / -d[3], x, kDigits);
            EXPECT_NEAR(d[2] / -d[3], -y, kDigits);
        };
        EXPECT_LT(WorstReturn(photo, isOfLens), 1e-3) << "pixels";
    }
}

TEST(PhotoGeometry, ClassicLensesAgreeWithTheirPairs) {
    // One inverts 1 + dr, the other takes 1 - dr, with dr up to 0.006, and 0.016 by its slope.
    constexpr double kSecondOrder = 0.006 * (0.006 + 0.016);
    for (const std::uint32_t model : {Camera::eCamModelZorv, Camera::eCamModelZorvViva}) {
        Camera lens(model, 2400.0, 3000, 2000);
        lens.id = 5;
        const double values[] = {0.05, -0.03, 0.005, 0.005, -7.5, -5, -1e-4, 1e-7, 5};
        std::copy(std::begin(values), std::end(values), lens.params.begin() + 3);
        ZoPhoto photo(1);
        SetUpTilted(photo);
        photo.SetCamera(&lens);
        EXPECT_EQ(photo.camera.GetCamPair(), nullptr);
        EXPECT_EQ(photo.camera.mode,
                  model == Camera::eCamModelZorv ? ZoCamera::kClassicMode : ZoCamera::kInstrumentMode);
        photo.camera.xhViva = photo.camera.xh;  // the model has one principal point
        photo.camera.yhViva = photo.camera.yh;
        ZoPhoto paired(photo);
        paired.CreateAutoLibCamera();
        ASSERT_NE(paired.camera.GetCamPair(), nullptr);
        const auto isOfPair = [&](double column, double row, const ZoVector& d) {
            ZoLine3d ray;
            paired.SetBikoTransform(eDigiToImage, true);
            paired.CalcRayDirection(ray, column, row);
            const ZoVector direction(ray.direction.x(), ray.direction.y(), ray.direction.z());
            EXPECT_LT((photo.rotAOR * d - direction).Abs(), kSecondOrder);
        };
        // The table takes each axis by itself: a node's distance of 20 / 780 mm times the slope across, 2 a1 x y.
        EXPECT_LT(WorstReturn(photo, isOfPair), 2 * 9.9 / 780 * 2 * 1e-4 * 7.5 * 5 / 0.005);
        EXPECT_LT(WorstReturn(paired, [](double, double, const ZoVector&) {}), 1e-3) << "pixels";

        paired.SetCamera(paired.camera, false);
        EXPECT_NE(paired.camera.GetCamPair(), nullptr) << "its own camera";
        paired.SetCamera(photo.camera, false);
        EXPECT_EQ(paired.camera.GetCamPair(), nullptr) << "no former lens";
        paired.SetCamera(static_cast<const ZoCamera*>(nullptr), true);
        paired.mainTrafo.Set(0, 0, 0, 1);  // a quarter turn, which the model cannot hold
        paired.CreateAutoLibCamera();
        EXPECT_EQ(paired.camera.GetCamPair(), nullptr);
    }
}

TEST(PhotoGeometry, PoseIsTakenAndGivenInAllForms) {
    ZoPhoto photo(1);
    double a = 0, b = 0, c = 0;
    photo.SetRotAOR(0.7, -3.0, 3.1);
    photo.GetRotAOR(a, b, c);
    EXPECT_NEAR(std::fabs(a - 0.7) + std::fabs(b + 3.0) + std::fabs(c - 3.1), 0, kDigits);
    photo.rotAOR[2][3] = -1.0000001;
    photo.GetRotAOR(a, b, c);
    EXPECT_EQ(a, std::numbers::pi / 2);

    photo.SetRotAOR(0.1, 0.2, -0.3);
    photo.SetPosAOR(1, 2, 3);
    photo.camera.SetId(8);
    ZoMatrix pose(2, 2);
    photo.GetAOR(&pose);
    EXPECT_TRUE(pose[1][3] == photo.rotAOR[1][3] && pose[2][4] == 2 && pose[4][4] == 1 && pose[4][1] == 0);
    ZoPoint point;
    photo.GetAOR(&point, true);
    EXPECT_NEAR(point.dx, 6.3661977, 1e-7);
    EXPECT_NEAR(point.dz, -19.0985932, 1e-7);
    EXPECT_EQ(point.GetId() * 1000 + point.photoId * 100 + point.cameraId * 10, 1180u);
    EXPECT_EQ(point.y, 2);
}

/// Looks straight down from (0, 0, 10); a pixel of Biko is 2.5 on the ground.
void SetUpDown(ZoPhoto& photo, double x = 0.0) {
    photo.SetActiveFlag(ZoPhoto::kActive);
    photo.camera = ZoCamera(3, -4.0, 0, 0, 0, 0, 0, "");
    photo.camera.rmax = 5;
    photo.SetBikoRegion(ZoRegion(-2, -1, 2, 1));
    photo.SetPosAOR(x, 0, 10);
    photo.SetHasAOR(true);
}

ZoPlane Plane(double a, double b, double c, double d) {
    ZoPlane plane;
    plane.norm = ZoVector(a, b, c);
    plane.d = d;
    return plane;
}

TEST(PhotoGeometry, RaysMeetPlanes) {
    ZoPhoto photo(1);
    SetUpDown(photo);
    const ZoPoint image(0, 2, 1, 0, 0);
    ZoLine3d ray;
    photo.CalcRay(ray, &image);
    EXPECT_TRUE(ray.start.IsSame({0, 0, 10}, kDigits)) << "and |c| counts";
    EXPECT_TRUE((ray.direction - ZoVector3d(2, 1, -4) / std::sqrt(21)).IsDegenerate(kDigits));
    ZoScanPoint3d end;
    EXPECT_TRUE(photo.CalcRayEndPoint(&end, &image, std::sqrt(21) * 2.5));
    EXPECT_TRUE(end.IsSame({5, 2.5, 0}, kDigits));

    struct Case {
        ZoPlane plane;
        double x, y, z;
    };
    for (const Case& c : {Case{Plane(0, 0, 2, 0), 5, 2.5, 0}, Case{Plane(1, 1, 0, -6), 4, 2, 2},
                          Case{Plane(-1, -1, -1, 9), 0, 0, 0}, Case{Plane(0, 1, 0, 5), -10, -5, 30}}) {
        ZoPoint found(9, 7, 7, 7, 3);
        EXPECT_TRUE(photo.CalcSip(&found, c.plane, &image));
        if (c.plane.C() == -1) continue;  // below
        EXPECT_LT(found.Distance(ZoPoint(0, c.x, c.y, c.z, 0)), kDigits);
        EXPECT_EQ(found.GetId() + static_cast<unsigned>(found.controlFlags), 12u);
    }
    EXPECT_EQ(photo.GetLastError(), 0);

    const auto fails = [&](int reason, const ZoPlane& plane, const ZoPoint* from) {
        ZoPoint found(9, 7, 7, 7, 0);
        return !photo.CalcSip(&found, plane, from) && photo.GetLastError() == reason && found == ZoPoint(9, 7, 7, 7, 0);
    };
    EXPECT_TRUE(fails(2, Plane(0, 0, 0, 1), nullptr) && fails(3, Plane(0, 0, 1, 0), nullptr));
    EXPECT_TRUE(fails(2, Plane(1, 2, 1, 5), &image)) << "parallel";
    EXPECT_TRUE(fails(2, Plane(0, 0, 1, INFINITY), &image));
    EXPECT_TRUE(photo.CalcSip(&*std::make_unique<ZoPoint>(), Plane(0, 0, 1, 0), &image));
    EXPECT_EQ(photo.GetLastError(), 2) << "a success does not clear it";

    photo.camera.xh = 0.5;
    photo.imoList.Add(ZoPoint(3, 2.5, 1, 0, 0));
    photo.measureList.Add(ZoPoint(3, -2, 1, 0, 0));
    ZoPoint found(9, 7, 7, 7, 3);
    EXPECT_FALSE(photo.CalcSip(&found, Plane(0, 0, 1, 0), 4, true));
    EXPECT_EQ(photo.GetLastError() * 10 + found.x, 37);
    EXPECT_TRUE(photo.CalcSip(&found, Plane(0, 0, 1, 0), 3, false));
    EXPECT_LT(found.Distance(ZoPoint(0, 5, 2.5, 0, 0)), kDigits) << "corrected";
    EXPECT_EQ(found.GetId() * 10 + static_cast<unsigned>(found.controlFlags), 30u);
    EXPECT_TRUE(photo.CalcSip(&found, Plane(0, 0, 1, 0), 3, true));
    EXPECT_LT(found.Distance(ZoPoint(0, -5, 2.5, 0, 0)), kDigits) << "as it is";
    photo.SetHasAOR(false);
    EXPECT_TRUE(fails(1, Plane(0, 0, 0, 1), nullptr));
}

TEST(PhotoGeometry, FieldOfViewIsThePyramidOfTheImage) {
    ZoPhotoList photos;
    for (const double x : {0.0, 4.0, 100.0})
        SetUpDown(*photos.Add(std::make_unique<ZoPhoto>(static_cast<unsigned>(x)).release()), x);
    ZoPhoto& photo = *photos.First();
    EXPECT_FALSE(photo.IsViewIntersect(*photo.Next(), false));
    EXPECT_TRUE(photo.IsViewIntersect(*photo.Next(), true)) << "unknown";
    const TempFolder folder;
    const std::string file = (folder.path / "view.ply").native();
    EXPECT_FALSE(photo.GetFieldOfView().WriteAsPly(file.c_str()));

    EXPECT_TRUE(photo.CalcFieldOfViewPlanes());
    const ZoPhotoFieldOfView& view = photo.GetFieldOfView();
    EXPECT_TRUE(view.GetApex() == ZoPoint(0, 0, 0, 10, 0));
    EXPECT_EQ(view.GetApex().GetId() * 10 + view.GetCorner(3).GetId(), 54u);
    EXPECT_LT(view.GetCorner(0).Distance(ZoPoint(0, 2, 1, 6, 0)), kDigits) << "by the signed constant, -4";
    EXPECT_NEAR(std::fabs(view.GetBasePlane().Dist(0, 0, 0)), 6, kDigits);
    for (int i = 0; i < 4; ++i) {
        const double x = i == 1 || i == 2 ? -5 : 5, y = i < 2 ? 2.5 : -2.5;
        for (const int side : {i, (i + 3) % 4})
            EXPECT_NEAR(view.GetSidePlane(side).Dist(x, y, 0), 0, kDigits) << i << ' ' << side;
        EXPECT_TRUE(view.GetFarPoint(i).IsOrigin());
    }
    photo.Next()->CalcFieldOfViewPlanes();
    EXPECT_FALSE(photo.IsViewIntersect(*photo.Next(), true)) << "without a depth";

    ZoPointList coordinates;
    coordinates.Add(ZoPoint(1, 0, 0, 0, 0));
    coordinates.Add(ZoPoint(2, 0, 0, 6, 0));
    for (const unsigned int id : {1u, 2u, 3u})
        photo.AddImo(ZoPoint(id, 0, 0, 0, 0), ePreToBiko);
    photo.SetPosAOR(0, 0, 10);
    EXPECT_FALSE(view.IsValid());
    photo.Next()->SetRotAOR(photo.rotAOR);
    ZoPhoto::CalcPhotoCooDistances(&photos, &coordinates);
    EXPECT_LT(view.GetFarPoint(0).Distance(ZoPoint(0, -7.5, -3.75, -5, 0)), kDigits) << "at 1.5 times the depth";
    EXPECT_TRUE(photo.IsViewIntersect(*photo.Next(), false) && !photo.IsViewIntersect(*photos.Last(), false));
    ASSERT_TRUE(view.WriteAsPly(file.c_str()));
    EXPECT_EQ(folder.Read("view.ply"),
              "ply\nformat ascii 1.0\nelement vertex 5\nproperty float x\nproperty float y\nproperty float z\n"
              "element face 4\nproperty list uchar int vertex_indices\nend_header\n"
              "0.000000 0.000000 10.000000\n-7.500000 -3.750000 -5.000000\n7.500000 -3.750000 -5.000000\n"
              "7.500000 3.750000 -5.000000\n-7.500000 3.750000 -5.000000\n"
              "3 0 1 2\n3 0 2 3\n3 0 3 4\n3 0 4 1\n");
    photo.SetHasAOR(false);
    EXPECT_TRUE(view.IsValid());
    photo.SetRotAOR(0, 0, 0);
    EXPECT_FALSE(photo.CalcFieldOfViewPlanes());
}

TEST(PhotoGeometry, PhotosWithoutPointsTakeTheDistancesOfTheWidest) {
    ZoPhotoList photos;
    for (const unsigned int id : {1u, 2u, 3u, 4u})
        SetUpDown(*photos.Add(std::make_unique<ZoPhoto>(id).release()));
    ZoPhoto& near = *photos.Find(1);
    ZoPhoto& wide = *photos.Find(2);
    ZoPhoto& lost = *photos.Find(3);
    ZoPhoto& idle = *photos.Find(4);
    wide.SetPosAOR(0, 0, 30);
    ZoPointList coordinates;
    coordinates.Add(ZoPoint(1, 0, 0, 0, 0));
    coordinates.Add(ZoPoint(2, 0, 0, 6, 0));
    for (ZoPhoto* photo : {&near, &wide, &lost}) {
        photo->imoList.Add(ZoPoint(photo == &lost ? 8 : 1, 0, 0, 0, 0));
        photo->imoList.Add(ZoPoint(photo == &lost ? 9 : 2, 0, 0, 0, 0));
    }
    idle.SetHasAOR(false);
    const auto distances = [](const ZoPhoto& photo) {
        return std::vector<double>{photo.GetMinCooDistance(), photo.GetMeanCooDistance(), photo.GetMaxCooDistance(),
                                   static_cast<double>(photo.GetCooDistanceCount())};
    };
    ZoPhoto::CalcPhotoCooDistances(&photos, &coordinates);
    EXPECT_EQ(distances(near), std::vector<double>({4, 7, 10, 2}));
    EXPECT_EQ(distances(wide), std::vector<double>({24, 27, 30, 2}));
    EXPECT_EQ(distances(lost), std::vector<double>(4));
    EXPECT_EQ(distances(idle), std::vector<double>(4));
    idle.SetHasAOR(true);
    ZoPhoto::CalcPhotoCooDistances(&photos, &coordinates);
    EXPECT_EQ(distances(idle), std::vector<double>({24, 27, 30, 1}));
    EXPECT_TRUE(idle.GetFieldOfView().IsValid());
    ZoPhoto::CalcPhotoCooDistances(&photos, nullptr);
    EXPECT_EQ(distances(near)[3], 2);
}

TEST(PhotoGeometry, PhotosAreComparedByWhereTheyStandAndLook) {
    ZoPhoto photo(1);
    SetUpDown(photo);
    struct Case {
        double x, y, z;
        bool isInImage, isAhead;
    };
    for (const Case& c : {Case{0, 0, 0, true, true}, Case{4.9, -2.4, 0, true, true}, Case{5.1, 0, 0, false, false},
                          Case{0, 2.6, 0, false, false}, Case{0, 0, 20, true, false}}) {
        EXPECT_EQ(photo.IsInPhotoView(ZoPoint(0, c.x, c.y, c.z, 0), false), c.isInImage) << c.x << ' ' << c.y;
        EXPECT_EQ(photo.IsInPhotoView(ZoPoint(0, c.x, c.y, c.z, 0), true), c.isAhead) << c.x << ' ' << c.y;
    }
    photo.bikoRegion.LL.x = 2;
    photo.bikoRegion.UR.x = 3;
    EXPECT_FALSE(photo.IsInPhotoView(ZoPoint(), false));
    photo.bikoRegion.LL.x = -2;
    photo.SetActiveFlag(ZoPhoto::kExtern);
    EXPECT_FALSE(photo.IsInPhotoView(ZoPoint(), false));
    photo.SetActiveFlag(ZoPhoto::kActive);
    photo.SetHasAOR(false);
    EXPECT_FALSE(photo.IsInPhotoView(ZoPoint(), false));

    ZoPhoto other(2);
    SetUpDown(other, 3.0);
    other.SetPosAOR(3, 4, 22);
    EXPECT_EQ(photo.Distance(other), 13);
    EXPECT_EQ(photo.Distance2(ZoPoint(0, 3, 0, 14, 0)), 25);
    EXPECT_TRUE(!photo.IsSamePointOfView(other, 12.9) && photo.IsSamePointOfView(other, 13));
    photo.SetTpsSetupId(L"S1,S2");
    EXPECT_TRUE(photo.IsSamePointOfView(other, 13));
    other.SetTpsSetupId(L"S2");
    EXPECT_TRUE(photo.IsSamePointOfView(other, 0));
    EXPECT_FALSE(other.IsSamePointOfView(photo, 100));
    EXPECT_TRUE(photo.IsSamePointOfView(ZoPhoto(1), 0));
    other.SetRotAOR(1.6, 0, 0);
    EXPECT_NEAR(photo.CalcAngle(other), 1.6, kDigits);
    EXPECT_FALSE(photo.IsLookingInSameDirection(other));
    other.SetAOR(photo);
    EXPECT_TRUE(photo.IsLookingInSameDirection(other) && photo.Distance(other) == 0 && !other.HasAOR());
}

}  // namespace
