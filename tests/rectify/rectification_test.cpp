#include "zorv/rectify/rectification.h"

#include <cmath>

#include "tests/rectify/places.h"
#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/photo/photo.h"

namespace {

constexpr double kTolerance = 1e-12;

/// Takes (x, y) to (X, Y) = ((2 x + 1) / w, (3 y - 1) / w) with w = 1 + x / 10 and on to (X + 10, 20, Y + 30). The
/// region is a rectangle of 10 by 4.
ZoElspTrafo Wall() {
    ZoElspTrafo wall;
    wall.SetId(7);
    wall.SetName(L"Wall");
    wall.SetElspMat(Matrix(3, {2, 0, 1, 0, 3, -1, 0.1, 0, 1}));
    wall.SetTransMat(Matrix(4, {1, 0, 0, 10, 0, 0, -1, 20, 0, 1, 0, 30, 0, 0, 0, 1}));
    for (const auto& [x, y] : {std::pair{0, 0}, {10, 0}, {10, 4}, {0, 4}}) {
        wall.region.AddPoint(ZoPoint(0, x, y, 0, 0));
        wall.bikoList.AddPoint(ZoPoint(static_cast<unsigned int>(wall.bikoList.Count() + 1), x, y, 0, 0));
    }
    wall.region.Points.Renumber(1, nullptr, 1);
    return wall;
}

/// Moves a point outward by 1 + r^2 / 1000, so that (3, 4) becomes 1.025 times as far.
void Distort(ZoElspTrafo& rectification) {
    ZoCamera camera(3, 20.0, 0.0, 0.0, -0.001, 0.0, 0.0, "lens");
    camera.rmax = 20.0;
    rectification.SetDistortCameraParam(camera);
    rectification.SetDistortCameraFlag(true);
}

/// 1000 by 800 pixels of 0.01 mm about the origin of Biko.
void TakeImage(ZoPhoto& photo) {
    photo.SetActiveFlag(ZoPhoto::kActive);
    photo.SetPixelRegion(ZoRegion(0, 0, 1000, 800));
    photo.preTrafo.Set(-5.0, 0.01, -4.0, 0.0);
}

TEST(Rectification, MapsBothWays) {
    ZoElspTrafo wall = Wall();
    ZoPoint object, biko;
    EXPECT_TRUE(wall.Transform(&(biko = ZoPoint(5, 10, 5, 0, 0)), &object));
    EXPECT_EQ(object.GetId(), 5u);
    ExpectAt(object, 20.5, 20, 37);
    EXPECT_TRUE(wall.InvTransform(&object, &biko));
    ExpectAt(biko, 10, 5, 0);
    wall.Transform(&(biko = ZoPoint(0, -10, 5, 0, 0)), &object);
    ExpectAt(object, 0, 20, 35);  // on the horizon the projective step leaves the point

    wall.SetTransMat(ZoElspTrafo().GetTransMat());
    wall.InvTransform(&(biko = ZoPoint(0, 10.5, 7, 0, 0)));
    ExpectAt(biko, 10, 5, 0);
    wall.SetElspMat(ZoMatrix(2, 2));
    EXPECT_EQ(wall.GetElspMat()[3][1], 0.1) << "another shape is not taken";
    wall.SetElspMat(ZoMatrix(3, 3));
    EXPECT_TRUE(wall.InvTransform(&biko)) << "a singular matrix";

    ZoPointList list;
    EXPECT_EQ(wall.Transform(&list), 0);
    list.Add(ZoPoint(2, 0, 0, 0, 0));
    EXPECT_EQ(Wall().Transform(&list), 1);
    ExpectAt(*list.Last(), 11, 20, 29);
}

TEST(Rectification, DistortionIsTakenOutFirst) {
    ZoElspTrafo lens;
    Distort(lens);
    ZoPoint point(0, 3, 4, 0, 0);
    lens.Transform(&point, &point);
    ExpectAt(point, 3.075, 4.1, 0);
    lens.InvTransform(&point);
    ExpectAt(point, 3, 4, 0, 1e-3);  // the table of the inversion has steps of 0.05 mm
    lens.GetDistortCameraParam().SetId(0);
    EXPECT_FALSE(lens.CompensateDistortion());
    lens.Transform(&point, &(point = ZoPoint(0, 3, 4, 0, 0)));
    ExpectAt(point, 3, 4, 0);
    ZoCamera::DeleteInvAdjustTables();
}

TEST(Rectification, CopiesOwnThePointsOfTheirDefinition) {
    ZoElspTrafo wall = Wall();
    Distort(wall);
    wall.distortCamera.SetFlag(4);
    wall.SetDistortCameraFlag(false);
    EXPECT_TRUE(wall.SetActive(true));
    EXPECT_EQ(wall.flags, 2u);
    ASSERT_TRUE(wall.GetParallelDef().MakeDefLine(1, 2));
    wall.region.mode = wall.bikoList.mode = wall.ppList.mode = ZOPolygon3d;
    ZoElspTrafo copy(wall), assigned;
    assigned = wall;
    for (ZoElspTrafo* each : {&copy, &assigned}) {
        EXPECT_EQ(std::tuple(each->GetParallelDef().GetPoints(), each->bikoList.mode, each->ppList.mode),
                  std::tuple(&each->bikoList.Points, ZOPolygon2dId, ZOPolygon3dId));
        EXPECT_EQ(each->region.mode, ZOPolygon3d);
        ZoPoint a, b;
        each->bikoList.First()->x = -1;
        ASSERT_TRUE(each->GetParallelDef().GetLine(a, b, each->GetParallelDef().lines.First()));
        EXPECT_EQ(a.x, -1);
    }
    EXPECT_EQ(wall.bikoList.First()->x, 0);
    EXPECT_EQ(copy.distortCamera.GetFlag(), 4);
}

TEST(Rectification, RegionsHaveTheirSizes) {
    // The rectangle becomes a trapezium: sides of 12 and 6 at x = 1 and x = 10.5.
    const ZoElspTrafo wall = Wall();
    EXPECT_NEAR(wall.Area(), (12 + 6) / 2.0 * 9.5, kTolerance);
    EXPECT_NEAR(wall.Length(), 12 + 6 + std::hypot(9.5, 0.5) + std::hypot(9.5, 5.5), kTolerance);
    ZoElspTrafo lens;
    lens.region = wall.region;
    Distort(lens);
    // (10, 0) goes outward by 1.1, (10, 4) by 1.116, (0, 4) by 1.016.
    EXPECT_NEAR(lens.Area(), (11 * 4.464 + 11.16 * 4.064) / 2, kTolerance);
    EXPECT_EQ(ZoElspTrafo().Area(), -1) << "no region";

    ZoPhoto photo(1);
    TakeImage(photo);
    EXPECT_NEAR(wall.GetOriginalPixelArea(&photo), 40 / 1e-4, 1e-6);
    EXPECT_EQ(wall.GetOriginalPixelArea(nullptr), 0);
    photo.photoType = eZoPhotoAnalog;
    EXPECT_EQ(wall.GetOriginalPixelArea(&photo), 0);
    photo.photoType = eZoPhotoDigital;
    photo.SetActiveFlag(1);
    EXPECT_EQ(wall.GetOriginalPixelArea(&photo), 0);
    EXPECT_EQ(HasElspRegion(&wall), 1u);
    EXPECT_EQ(IsElspActive(&wall), 0u);
}

TEST(Rectification, OutlinesBendWithDistortionOnly) {
    ZoPhoto photo(1);
    TakeImage(photo);
    ZoElspTrafo whole;
    ZoPointList plain;
    EXPECT_EQ(ZoGetElspBikoPoints(plain, &photo, &whole), 4);
    ExpectAt(*plain.First(), -5, -4, 0);
    ExpectAt(*plain.Find(3), 5, 4, 0);
    Distort(whole);
    ZoPointList bent;
    EXPECT_EQ(ZoGetElspBikoPoints(bent, &photo, &whole), 36);
    ASSERT_EQ(bent.Count(), 36);
    ExpectAt(*bent.Find(2), -5 + 10 / 9.0, -4, 0);
    ExpectAt(*bent.Find(10), 5, -4, 0);
    ExpectAt(*bent.Find(36), -5, -4 + 8 / 9.0, 0);
    ZoElspTrafo wall = Wall();
    Distort(wall);
    ZoPointList region;
    EXPECT_EQ(ZoGetElspBikoPoints(region, &photo, &wall), 4);
    ExpectAt(*region.Last(), 0, 4, 0);
    EXPECT_EQ(ZoGetElspBikoPoints(region, nullptr, nullptr), 0);
}

TEST(Rectification, TextReadsBack) {
    ZoElspTrafo wall = Wall();
    Distort(wall);
    wall.distortCamera.r0 = 10;
    wall.distortCamera.rmax = 21;
    wall.SetRegionActive(true);
    wall.ppList = wall.bikoList;
    wall.ppList.mode = ZOPolygon3dId;
    wall.ppList.First()->z = 0.1;
    wall.ppList.UpdateMinMax();
    wall.GetParallelDef().MakeDefLine(1, 2);
    wall.region.Points.Destroy();
    for (int i = 0; i < 1000; ++i)  // far more than one line of text holds
        wall.region.AddPoint(ZoPoint(0, std::sin(i), std::cos(i), 0, 0));
    wall.region.Points.Renumber(1, nullptr, 1);
    const std::string text = WrittenText(wall);
    wall.region.mode = ZOPolygon2dId;
    wall.bikoList.mode = ZOPolygon3d;
    EXPECT_EQ(WrittenText(wall), text) << "the columns that are read, also where the host took over other polygons";
    ZoElspTrafo back;
    back.region.mode = ZOPolygon2dId;
    back.SetActive(true);
    EXPECT_EQ(ReadBlock(text, [&](ZoReaderObject* object) { EXPECT_EQ(back.Read(object), 1); }), 0);
    EXPECT_FALSE(back.IsActive()) << "what a block leaves out is off";
    wall.region.mode = ZOPolygon2d;
    wall.bikoList.mode = ZOPolygon2dId;
    EXPECT_TRUE(ArchiveBytes(back) == ArchiveBytes(wall));
}

TEST(Rectification, PhotosHoldBothForms) {
    const char* const text =
        "PHOTOID { 4 \"a.jpg\" } ELSPTRAFO { 7 \"Wall\" 1   1 -1 0 3 0  2 0 0.1\n"
        "  { 4 4  1 0 0 10  0 0 -1 20  0 1 0 30  0 0 0 1 } { 0 0 10 4 }  10 5  0 0  10 0  0 4 }\n"
        "ELSPPLANE { FUTURE { A 1 { B { 2 } } } ACTIV 1 ELSPID { 8 \"Floor\" } ELSPTRAFO { 2 2 9 9 9 9 }\n"
        "  TRAFO3D { 4 4 2 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 } VALIDREGION { 0 0 1 0 1 1 } } LASTELSPID 8";
    ZoPhoto photo(0u);
    EXPECT_EQ(ReadBlock(text, [&](ZoReaderObject* object) { photo.Read(object); }), 1) << "the unknown block";
    ASSERT_EQ(photo.GetElspList()->Count(), 2);
    ZoElspTrafo& old = *photo.FirstElspTrafo();
    EXPECT_EQ(std::tuple(old.GetName(), old.flags), std::tuple(L"Wall", 0x4002u));
    EXPECT_TRUE(std::equal(old.elspMat[1] + 1, old.elspMat[1] + 10, Wall().elspMat[1] + 1));
    ASSERT_EQ(old.ppList.Count(), 4);
    ExpectAt(*old.ppList.First(), 20.5, 20, 37);
    EXPECT_EQ(std::tuple(old.ppList.Points.Last()->GetId(), old.region.Max.x), std::tuple(4u, 10));

    const ZoElspTrafo& present = *photo.LastElspTrafo();
    EXPECT_EQ(present.GetId(), 8u);
    EXPECT_TRUE(present.IsActive() && !present.IsRegionActive());
    EXPECT_TRUE(present.elspMat.IsIdent()) << "another shape";
    EXPECT_EQ(std::tuple(present.transMat[1][1], present.region.First()->GetId()), std::tuple(2, 1u));
}

TEST(Rectification, ArchiveRecordHasItsPlaces) {
    ZoElspTrafo wall;
    wall.SetId(7);
    wall.SetActive(true);
    wall.transMat[1][4] = 2;
    ZoPoint point;
    wall.InvTransform(&point);
    wall.autoConnect = true;
    const std::string bytes = ArchiveBytes(wall);
    constexpr std::size_t kPolygon = 4 + 2 * 112 + 8;
    constexpr std::size_t kPlane = 4 + 2 + 4;
    constexpr std::size_t kSpace = kPlane + 8 + 9 * 8;
    constexpr std::size_t kPoints = kSpace + 8 + 16 * 8;
    constexpr std::size_t kInverses = kPoints + 3 * kPolygon + 16;
    constexpr std::size_t kValid = kInverses + 80 + 136;
    ASSERT_EQ(bytes.size(), kValid + 2 + 222);
    const std::pair<std::size_t, const char*> parts[] = {
        {0, "07000000 0000 02000000 03000000 03000000 000000000000f03f"},
        {kSpace, "04000000 04000000 000000000000f03f"},
        {kSpace + 8 + 3 * 8, "0000000000000040"},
        {kPoints, "03000000"},
        {kPoints + kPolygon, "01000000"},
        {kInverses - kPolygon, "00000000"},
        {kInverses + 80 + 8 + 3 * 8, "00000000000000c0"},
        {kValid, "01 01 00000000 0000"},
    };
    for (const auto& [offset, hex] : parts) {
        const std::string expected = HexBytes(hex);
        EXPECT_EQ(bytes.substr(offset, expected.size()), expected) << offset;
    }

    ZoElspTrafoList list;
    list.Add(wall);
    list.Add(Wall());
    const std::string all = ArchiveBytes(list);
    ZoElspTrafoList back;
    EXPECT_EQ(ReadArchiveBytes(all, back), 0u);
    EXPECT_TRUE(ArchiveBytes(back) == all);
    EXPECT_EQ(back.Last()->GetParallelDef().GetPoints(), &back.Last()->bikoList.Points);
    for (std::size_t cut = 0; cut < all.size(); ++cut) {
        ZoElspTrafoList part;
        ReadArchiveBytes(all.substr(0, cut), part);
        EXPECT_EQ(part.Count(), cut < 8 + 42 ? 0 : cut < 8 + bytes.size() + 42 ? 1 : 2) << cut;
        if (!part.First()) continue;
        EXPECT_EQ(part.First()->transMat[1][4], cut >= 8 + kPoints ? 2 : 0) << cut;
    }
    ZoElspTrafo shapes;
    ReadArchiveBytes(bytes.substr(0, kPlane) + HexBytes("01000000 01000000 0000000000000040") + bytes.substr(kSpace),
                     shapes);
    EXPECT_TRUE(shapes.elspMat.IsIdent());
    EXPECT_EQ(shapes.transMat[1][4], 2);
}

}  // namespace
