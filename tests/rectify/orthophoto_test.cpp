#include "zorv/rectify/orthophoto.h"

#include "tests/rectify/places.h"
#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/points_of.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/rectify/rectified_plane.h"

namespace {

/// A part that shows rectification 9 of a photo in the pixels 0 to 10 from `left` on and moves them by 100 in z.
ZoElspPlaneInfo Part(unsigned int photo, double left) {
    ZoElspPlaneInfo part;
    part.SetId(1);
    part.photoObject = ZoObject(photo, L"photo");
    part.elspObject = ZoObject(9, L"wall");
    part.transformation[3][4] = 100;
    for (const auto& [x, y] : {std::pair{0, 0}, {10, 0}, {10, 10}, {0, 10}})
        part.range.AddPoint(ZoPoint(0, left + x, y, 0, 0));
    return part;
}

/// 100 by 80 pixels with the parts of photos 5 and 6.
ZoOrthoPhoto Ortho() {
    ZoOrthoPhoto ortho(3);
    ortho.SetPixelRegion(ZoRegion(0, 0, 100, 80));
    ortho.SetComment(L"gr\u00FCn");
    ortho.SetStatPixel(11);
    ortho.SetStatTime(2.5);
    ortho.SetScale(50);
    ortho.SetMaxAngle(0.1);
    ortho.GetOrthoRegion() = ZoRegion(-1, -2, 3, 4);
    ortho.ElspPlaneList().Add(Part(5, 0));
    ortho.ElspPlaneList().Add(Part(6, 50));
    return ortho;
}

TEST(Orthophoto, PixelsTurnAndMirror) {
    // By rotation and mirror, for an image of 100 by 80: where the pixel (10, 20) is shown, and which one is shown
    // there.
    constexpr double kPlaces[4][4][4] = {
        {{10, 20, 10, 20}, {90, 20, 90, 20}, {10, 60, 10, 60}, {90, 60, 90, 60}},
        {{61, 10, 20, 70}, {39, 10, 20, -10}, {61, 70, 60, 70}, {39, 70, 60, -10}},
        {{91, 61, 90, 60}, {9, 61, 10, 60}, {91, 19, 90, 20}, {9, 19, 10, 20}},
        {{20, 91, 80, 10}, {80, 91, 80, 90}, {20, -11, 40, 10}, {80, -11, 40, 90}},
    };
    ZoOrthoPhoto ortho(1);
    ortho.SetPixelRegion(ZoRegion(0, 0, 100, 80));
    for (const int turn : {0, 1, 2, 3, 4}) {
        ortho.SetDigPictRot(turn);
        for (const int mirror : {0, 1, 3, 2}) {
            EXPECT_EQ(ortho.GetMirrorInfo(), mirror);
            const double* place = kPlaces[turn % 4][mirror];
            ZoPoint point(0, 10, 20, 0, 0);
            ortho.InvAdjustPixelRotation(&point);
            ExpectAt(point, place[2], place[3], 0);
            ZoPointList list = PointsOf({{0, 10, 20, 0, 0}});
            ortho.AdjustPixelRotation(&list);
            ExpectAt(*list.First(), place[0], place[1], 0);
            mirror == 0 || mirror == 3 ? ortho.ToggleMirrorX() : ortho.ToggleMirrorY();
        }
    }
}

TEST(Orthophoto, PixelsGoToTheObjectByTheirPart) {
    ZoOrthoPhoto ortho = Ortho();
    EXPECT_TRUE(ortho.IsOrthoPhoto() && ortho.IsDigital());
    EXPECT_EQ(ortho.GetPixelSize(), 1);
    EXPECT_FALSE(ortho.Transform(nullptr));
    ortho.SetDigPictRot(2);
    ZoPoint point(0, 95, 75, 0, 0);
    EXPECT_TRUE(ortho.Transform(&point));
    ExpectAt(point, 5, 5, 100);
    EXPECT_FALSE(ortho.Transform(&(point = ZoPoint(0, 70, 75, 0, 0))));
    ExpectAt(point, 30, 5, 0);
    delete ortho.ElspPlaneList().Subtract(ortho.ElspPlaneList().Last());
    EXPECT_TRUE(ortho.Transform(&(point = ZoPoint(0, 70, 75, 0, 0)))) << "a single part serves everywhere";
    ExpectAt(point, 30, 5, 100);

    ZoPoint corners[4];
    EXPECT_TRUE(ortho.GetImageCorners(&corners[0], &corners[1], &corners[2], &corners[3]));
    const ZoOrthoPhoto empty(1);
    EXPECT_FALSE(empty.GetImageCorners(&corners[0], &corners[1], &corners[2], &corners[3]) || empty.Transform(&point));
    EXPECT_EQ(empty.GetPixelSize(), 0);
    ExpectAt(corners[0], 0, 0, 100);
    ExpectAt(corners[1], 100, 0, 100);
    ExpectAt(corners[2], 100, 80, 100);
    ExpectAt(corners[3], 0, 80, 100);

    const ZoElspPlaneInfoList parts = Ortho().ElspPlaneList();
    EXPECT_EQ(parts.FindPlane(6, 0), parts.Last());
    EXPECT_EQ(parts.FindPlane(6, 8), nullptr);
    EXPECT_EQ(parts.FindPlane(ZoPoint(0, 55, 5, 0, 0)), parts.Last());
}

TEST(Orthophoto, PartsComeFromRectifiedPlanes) {
    ZoPhoto photo(4, L"a.jpg");
    photo.SetPixelRegion(ZoRegion(0, 0, 1000, 800));
    photo.preTrafo.Set(5.0, -0.01, 4.0, 0.0);  // upside down: pixels grow against the axes of Biko
    ZoElspTrafo wall;
    wall.SetId(8);
    wall.SetTransMat(
        Matrix(4, {1, 0, 0, 10, 0, 0, -1, 20, 0, 1, 0, 30, 0, 0, 0, 1}));  // (x, y) to (x + 10, 20, y + 30)
    ZoRectPlane plane(&photo, &wall);
    EXPECT_EQ(std::tuple(plane.GetPhotoId(), plane.GetElspId(), plane.GetElspPolygon().Count()), std::tuple(4u, 8u, 4));
    EXPECT_TRUE(plane.First() == nullptr && plane.PlaneMatrix().IsIdent());
    EXPECT_EQ(plane.BorderMatrix()[3][3], 0);
    ExpectAt(plane.PixelRect().GetLL(), -1000, -800, 0);
    ExpectAt(plane.PixelRect().GetUR(), 0, 0, 0);
    ZoPoint pixel(0, 100, 200, 0, 0);
    plane.DigiToBiko().PTrans2D(&pixel);
    ExpectAt(pixel, 4, 2, 0);
    plane.BorderMatrix() = Matrix(3, {2, 0, 10, 0, 3, 12, 0, 0, 1});
    plane.CalcElspBorder();
    ASSERT_EQ(plane.Count(), 4);
    ExpectAt(plane.Min, 0, 0, 0);
    ExpectAt(plane.Max, 20, 24, 0);

    // The pixel (10, 20) is (6, 12) in the common plane, which is (1, 3) on the rectified one.
    plane.PlaneMatrix() = Matrix(3, {2, 0, 4, 0, 2, 6, 0, 0, 1});
    ZoMatrix m = Matrix(3, {0.5, 0, 1, 0, 0.5, 2, 0, 0, 1});
    ZoElspPlaneInfo part(m, &plane);
    EXPECT_EQ(std::tuple(part.GetPhotoId(), part.photoObject.GetName(), part.GetElspId(), part.GetRange().Max.x),
              std::tuple(4u, L"a.jpg", 8u, plane.Max.x));
    ZoPoint point(0, 10, 20, 0, 0);
    EXPECT_TRUE(part.Transform(&point));
    ExpectAt(point, 11, 20, 33);

    ZoRectPlane empty(nullptr, &wall);
    EXPECT_EQ(empty.GetPhotoId(), 0u);
    empty.CalcElspBorder();
    EXPECT_EQ(empty.Count(), 0);
    EXPECT_TRUE(empty.DigiToBiko().IsIdent() && empty.BorderMatrix().IsIdent());
    EXPECT_TRUE(ZoRectPlane(&photo, nullptr).GetElspMat().IsIdent());
    EXPECT_EQ(ZoElspPlaneInfo(m, &empty).GetPhotoId(), 0u);
}

TEST(Orthophoto, RecordsReadBack) {
    ZoOrthoPhoto ortho = Ortho();
    ortho.SetName(L"ortho.tif");
    ortho.SetDigPictRot(3);
    ortho.ToggleMirrorY();
    const std::string bytes = ArchiveBytes(ortho);
    EXPECT_TRUE(ArchiveBytes(ZoOrthoPhoto(ortho)) == bytes);
    // Object, flags, comment, the numbers; then two regions of two points of 112 bytes; then the parts.
    const std::string numbers = HexBytes(
        "6700 7200fc006e00 0000 0b000000 0000000000000440 0000000000004940 9a9999999999b93f 03000000 02000000");
    const std::size_t start = 4 + 2 * 10 + 4;
    EXPECT_EQ(bytes.substr(start, numbers.size()), numbers);
    const std::size_t parts = start + numbers.size() + 4 * 112;
    EXPECT_EQ(bytes.substr(parts, 8 + 4 + 2 + 4), HexBytes("0200000000000000 01000000 0000 05000000"));

    const std::string text = WrittenText(ortho);
    ZoOrthoPhoto back(0u);
    EXPECT_EQ(ReadBlock(text + " PLANEINFO { FUTURE { A { 1 } } TRANSFORMATION { 2 2 1 2 3 4 } PHOTOID { 8 \"x\" } }",
                        [&](ZoReaderObject* object) { EXPECT_EQ(back.Read(object), 1); }),
              1)
        << "the unknown block";
    ASSERT_EQ(back.ElspPlaneList().Count(), 3);
    EXPECT_EQ(back.ElspPlaneList().Last()->GetPhotoId(), 8u);
    EXPECT_TRUE(back.ElspPlaneList().Last()->GetTransformation().IsIdent()) << "another shape";
    delete back.ElspPlaneList().Subtract(back.ElspPlaneList().Last());
    for (ZoElspPlaneInfo* part = back.ElspPlaneList().First(); part; part = part->Next())
        part->SetId(1);  // the number of a part is in the archive only
    EXPECT_TRUE(ArchiveBytes(back) == bytes);

    ZoOrthoPhotoList list;
    list.Add(ortho);
    list.Add(ortho);
    const std::string all = ArchiveBytes(list);
    ZoOrthoPhotoList stored;
    EXPECT_EQ(ReadArchiveBytes(all, stored), 0u);
    EXPECT_TRUE(ArchiveBytes(stored) == all);
    for (std::size_t cut = 0; cut < all.size(); ++cut) {
        ZoOrthoPhotoList part;
        ReadArchiveBytes(all.substr(0, cut), part);
        EXPECT_LE(part.Count(), 2);
        if (cut <= 8 + bytes.size()) continue;
        EXPECT_TRUE(ArchiveBytes(*part.First()) == bytes) << cut;
    }
    for (const char* broken : {"ID { \"x\" 1 }", "PLANEINFO { ELSPRANGE { 1 2 { 3 } } ", "PIXELSIZE { 1 2 3 }"}) {
        ZoOrthoPhoto photo(0u);
        EXPECT_GT(ReadBlock(broken, [&](ZoReaderObject* object) { photo.Read(object); }), 0);
        EXPECT_EQ(photo.GetStatTime(), 1.0);
    }
}

}  // namespace
