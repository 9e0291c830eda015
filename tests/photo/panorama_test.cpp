#include "zorv/photo/panorama.h"

#include <cmath>
#include <numbers>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/text_conversion.h"
#include "zorv/photo/panorama_info.h"
#include "zorv/photo/photo_rotation.h"

namespace {

/// Three columns and two rows of tiles of 100 by 50 pixels with gaps of 10; photos 1 to 6 from the upper left.
ZoPhotoVivaPano Mosaic() {
    ZoPhotoVivaPano pano(9, L"mosaic");
    pano.SetTileSizeX(100);
    pano.SetTileSizeY(50);
    pano.SetFrame(10);
    ZoIdTable2D table(3, 2);
    for (int i = 0; i < 6; ++i)
        table.table.data[static_cast<std::size_t>(i)] = static_cast<unsigned int>(i + 1);
    pano.SetPhotoIdTable(table);
    return pano;
}

TEST(Panorama, PositionsFindTheirTile) {
    ZoPhotoVivaPano pano = Mosaic();
    const ZoRegion region = static_cast<const ZoPhotoVivaPano&>(pano).GetDigiRegion();
    EXPECT_TRUE(region == ZoRegion(0, 0, 320, 110));
    struct Case {
        double x, y;
        unsigned int photo;  // 0: none
        double pixelX = 0, pixelY = 0;
    };
    // The mosaic is 110 high: y 60 to 110 is the upper row.
    for (const Case& c : {Case{50, 100, 1, 50, 40}, Case{100, 110, 1, 100, 50}, Case{110, 60, 2, 0, 0},
                          Case{319, 50, 6, 99, 50}, Case{320, 0, 6, 100, 0}, Case{-3, 200, 1, -3, 140},
                          Case{105, 100, 0}, Case{215, 100, 0}, Case{320.5, 100, 0}, Case{50, 55, 0}, Case{50, -0.5, 0},
                          Case{std::nan(""), 50, 0}, Case{50, -std::numeric_limits<double>::infinity(), 0}}) {
        EXPECT_EQ(pano.FindPhotoAndPixelXY(c.x, c.y), c.photo != 0) << c.x << ' ' << c.y;
        if (c.photo == 0) continue;
        EXPECT_EQ(std::tuple(pano.GetFoundPhotoId(), pano.GetFoundPixelX(), pano.GetFoundPixelY()),
                  std::tuple(c.photo, c.pixelX, c.pixelY));
    }
    pano.SetFrame(-100);
    EXPECT_FALSE(pano.FindPhotoAndPixelXY(150, 20)) << "no way forward";

    EXPECT_EQ(ZoPhotoVivaPano::CalcTotalPixel(1, 7, 5), 7);
    EXPECT_EQ(ZoPhotoVivaPano::CalcTotalPixel(3, 100, 5), 310);
    EXPECT_EQ(ZoPhotoVivaPano::CalcTotalPixel(0, 100, 5), -5);
}

TEST(Panorama, TilesHaveTheirPlaces) {
    const ZoPhotoVivaPano pano = Mosaic();
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    EXPECT_TRUE(pano.GetPixelRegion(5, x1, y1, x2, y2));
    EXPECT_EQ(x1, 220);
    EXPECT_EQ(y1, 60);
    EXPECT_EQ(x2, 320);
    EXPECT_EQ(y2, 110);
    ZoMatrix m(3, 3);
    EXPECT_TRUE(pano.CalcOffset(1, m, false));
    EXPECT_EQ(std::tuple(m[1][3], m[2][3]), std::tuple(110, 60));
    EXPECT_TRUE(pano.CalcOffset(1, m, true));
    EXPECT_EQ(m[2][3], 50);
    EXPECT_TRUE(pano.AreSideBySide(1, 5, 2) && !pano.AreSideBySide(1, 3, 2) && pano.AreSideBySide(4, 4, 1));
    EXPECT_TRUE(!pano.AreSideBySide(4, 4, 0) && !pano.AreSideBySide(1, 7, 9) && pano.ContainsPhoto(6));
    const ZoPhotoVivaPano empty(1);
    EXPECT_FALSE(empty.ContainsPhoto(0) || empty.GetPixelRegion(0, x1, y1, x2, y2) || empty.CalcOffset(0, m, false));
}

TEST(Panorama, RecordsReadBack) {
    ZoPhotoVivaPano pano = Mosaic();
    pano.SetComment(L"gr\u00FCn \"1\"");
    pano.SetScreenPos(ZoPosition(3, 4));
    pano.SetScreenScale(5);
    pano.FindPhotoAndPixelXY(50, 100);
    EXPECT_EQ(ZoPhotoVivaPano(pano).GetFoundPhotoId(), 0u);
    const std::string text = WrittenText(pano);
    EXPECT_EQ(text, R"(PHOTOID         {    9 "mosaic"}
COMMENT         "grün '1'"
SCREENPOS       {                     3                     4}
SCREENSIZE      5
SCREENFLAGS     0
TILESIZE_X          100
TILESIZE_Y           50
FRAME                10
PANORAMA    
{
    3          2          
    1          2          3          
    4          5          6          
}
)");

    ZoVivaPanoList read;
    EXPECT_EQ(ReadBlock(text, [&](ZoReaderObject* object) { read.AddPhoto(object); }), 0);
    ZoPhotoVivaPano back(0u);
    back = *read.First();
    EXPECT_EQ(std::tuple(back.GetId(), back.GetComment(), back.GetPhotoIdTable().table.data, back.GetScreenPos().y),
              std::tuple(9u, L"gr\u00FCn '1'", pano.GetPhotoIdTable().table.data, 4));
    EXPECT_TRUE(back.IsActive() && back.IsDigital() && back.HasAOR());

    const std::string bytes = ArchiveBytes(pano);
    const std::string numbers = HexBytes(
        "05000000 00000000 64000000 32000000 0a000000 0300000000000000 0200000000000000 01000000 02000000 03000000");
    EXPECT_EQ(bytes.substr(bytes.size() - numbers.size() - 3 * 4, numbers.size()), numbers);
    ZoPhotoVivaPano stored(0u);
    EXPECT_EQ(ReadArchiveBytes(bytes, stored), 0u);
    EXPECT_EQ(ArchiveBytes(stored), bytes);
    EXPECT_FALSE(stored.IsActive());

    ZoVivaPanoList list;
    list.Add(pano);
    list.Add(pano);
    const std::string all = ArchiveBytes(list);
    for (std::size_t cut = 0; cut < all.size(); cut += 7) {
        ZoVivaPanoList part;
        ReadArchiveBytes(all.substr(0, cut), part);
        EXPECT_LE(part.Count(), 2);
    }
}

TEST(Panorama, NamesTellWhatAnImageIs) {
    struct Case {
        const wchar_t* name;
        double width;
        bool image, stitched;
        int series1, series2;
        double date, time;
    };
    for (const Case& c : {
             Case{L"x/IMG_Pano_012_003_310524_1405.jpg", 640, true, false, 3, 12, 240531, 1405},
             Case{L"img_pano_240531_1405.jpg", 640, false, true, 0, 0, 240531, 1405},
             Case{L"IMG_PANO.1.jpg", 640, false, true, 0, 0, 0, 0},
             Case{L"img_pano_1_2_3.jpg", 640, false, false, 0, 0, 0, 0},
             Case{L"img_pano_1_2_310524_1405.jpg", 2600, false, true, 0, 0, 0, 0},
             Case{L"img_pano_1_x_31_nan.jpg", 2599, true, false, 0, 1, 31, 0},
             Case{L"pano_1_2_310524_1405_1.jpg", 640, false, false, 0, 0, 0, 0},
         }) {
        ZoPhoto photo(7, c.name);
        photo.SetPixelRegion(ZoRegion(0, 0, c.width, 480));
        const ZoVivaPanoInfo info(&photo);
        EXPECT_EQ(info.IsPanoImage(), c.image) << wstring2string(c.name, false);
        EXPECT_EQ(std::tuple(info.IsStitchedImage(), info.photoId, info.GetSeriesIndex1(), info.GetSeriesIndex2()),
                  std::tuple(c.stitched, c.image ? 7u : 0u, c.series1, c.series2));
        EXPECT_EQ(std::tuple(info.GetDateKey(), info.GetTimeKey()), std::tuple(c.date, c.time));
    }
    EXPECT_TRUE(ZoVivaPanoInfo(nullptr).IsPanoStart());
}

struct Rotation : ZoRotatePhotoBase {
    using ZoRotatePhotoBase::AdjustReseauOrElspTrafo;
    using ZoRotatePhotoBase::ZoRotatePhotoBase;
};

TEST(Panorama, TurnedImagesKeepTheirPlaceInPre) {
    for (int index = 0; index <= 3; ++index) {
        ZoPhoto photo(1);
        photo.SetActiveFlag(ZoPhoto::kActive);
        photo.SetPixelRegion(ZoRegion(0, 0, 4000, 3000));
        photo.preTrafo.Set(-19.0, 0.01, -14.0, 0.0);  // mm, the Pre origin at pixel (1900, 1400)
        Rotation rotation(&photo);
        rotation.AdjustReseauOrElspTrafo(0, index);
        EXPECT_EQ(photo.digiRegion.Width(), index % 2 ? 3000 : 4000);
        // The image turns about its centre, so that the centre keeps its distance from the Pre origin, and scale stays.
        ZoPoint centre = photo.digiRegion.GetCenter();
        photo.preTrafo.Transform(&centre);
        EXPECT_NEAR(std::hypot(centre.x, centre.y), std::hypot(100.0, 100.0) * 0.01, 1e-9) << index;
        EXPECT_NEAR(std::hypot(photo.preTrafo.GetCoef(1), photo.preTrafo.GetCoef(3)), 0.01, 1e-15);
        // The x axis of the image turns by quarters.
        const int quarters = (4 - index) % 4;
        EXPECT_NEAR(photo.preTrafo.GetCoef(1), 0.01 * std::cos(quarters * std::numbers::pi / 2), 1e-12);
        EXPECT_NEAR(photo.preTrafo.GetCoef(3), 0.01 * std::sin(quarters * std::numbers::pi / 2), 1e-12);
        EXPECT_EQ(photo.preTrafo.GetType(), eTrafo2DHelmert);
    }
    ZoPhoto inactive(1);
    inactive.SetPixelRegion(ZoRegion(0, 0, 4000, 3000));
    Rotation(&inactive).AdjustReseauOrElspTrafo(0, 1);
    EXPECT_EQ(inactive.digiRegion.Width(), 4000);
}

}  // namespace
