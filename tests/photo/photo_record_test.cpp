#include <limits>
#include <numeric>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/photo/photo_list.h"

namespace {

/// Every field that a record keeps has a value of its own.
constexpr const char* kFullText =
    "PHOTOID { 12 \"C:\\im\u00E4ge\\0012.tif\" } COMMENT \"facade\" DIGITALPAGE 7 DIGITALROT 2 DIGITAL 4 DIGITIZERID "
    "21 "
    "CHECKACTIVE 1 STATE 2 ROTATION 3 SCALE 0.125 ORIENTED 1 DIGIREGION { 0 0 600 400 } "
    "AORM { 3 3 0 -1 0 1 0 0 0 0 1 } AORV { 3 4500000.123456789 5300000.1 1e-9 } TPS_SETUP_ID \"S1\" "
    "CAMDATA { ID 3 NAME \"lens\" C 24.5 A2 1e-7 R0 10 RM 21 } RESEAUFILE \"plate.res\" RESEAUSUBID 6 "
    "PRERESTRAFO { 1 1 2 3 4 } MAINRESTRAFO { 2 1 2 3 4 5 6.5 } POLYRESINVTRAFO { 3 1 2 3 4 5 6 7 8 } "
    "ELSPPLANE { ELSPID { 1 \"wall\" } } ELSPPLANE { ELSPID { 2 \"\" } } LASTELSPID 22 "
    "SCREENPOS { 11 22 } SCREENSIZE 33 SCREENFLAGS 44 REGOI { 1 2.5 3.5 0 0.25 }";

void MakeFull(ZoPhoto& photo) {
    photo.SetId(12);
    photo.SetName(L"C:\\im\u00E4ge\\0012.tif");
    photo.SetFlag(ZoPhoto::kCheckActive);
    photo.SetComment(L"facade");
    photo.SetActiveFlag(2);
    photo.SetRotation(3);
    photo.SetHasAOR(true);
    photo.SetScale(0.125);
    photo.SetType(static_cast<eZoPhototype>(4));
    photo.SetDigitizer(21);
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400));
    photo.camera = ZoCamera(3, 24.5, 0, 0, 0, 1e-7, 10, "lens");
    photo.camera.rmax = 21;
    photo.SetReseauData(ZoReseauDataDesc(L"plate.res", 6));
    photo.preTrafo.Set(1, 2, 3, 4);
    photo.mainTrafo.Set(1, 2, 3, 4, 5, 6.5);
    photo.polyInvTrafo.type = eTrafo2DProjektiv;
    std::iota(photo.polyInvTrafo.coef, photo.polyInvTrafo.coef + 8, 1.0);
    const double rotation[] = {0, -1, 0, 1, 0, 0, 0, 0, 1};
    photo.SetRotAOR(ZoMatrix(rotation, 3, 3));
    photo.SetPosAOR(4'500'000.123456789, 5'300'000.1, 1e-9);
    photo.AddElspTrafo(ZoElspTrafo(), true)->SetName(L"wall");
    photo.AddElspTrafo(ZoElspTrafo(), true);
    photo.IncLastElspId(20);
    photo.SetDigPictPage(7);
    photo.SetDigPictRot(2);
    photo.SetScreenPos(ZoPosition(11, 22));
    photo.SetScreenScale(33);
    photo.SetScreenFlags(44);
    photo.SetTpsSetupId(L"S1");
}

int ReadText(const std::string& text, ZoPhoto& photo) {
    return ReadBlock(text, [&](ZoReaderObject* object) { photo.Read(object); });
}

TEST(PhotoRecord, TextComesBack) {
    ZoPhoto photo(0u);
    MakeFull(photo);
    ZoPhoto read(0u);
    EXPECT_EQ(ReadText(kFullText, read), 0);
    EXPECT_TRUE(ArchiveBytes(read) == ArchiveBytes(photo));
    ASSERT_EQ(read.regionOfInterest.Count(), 1);
    EXPECT_EQ(read.regionOfInterest.First()->y + read.regionOfInterest.First()->dy, 3.75);
    ZoPhoto back(0u);
    EXPECT_EQ(ReadText(WrittenText(read), back), 0) << WrittenText(read);
    EXPECT_TRUE(ArchiveBytes(back) == ArchiveBytes(photo));
    EXPECT_EQ(WrittenText(back), WrittenText(read)) << "with the region of interest";

    ZoPhoto untouched(5);
    EXPECT_EQ(ReadText("", untouched), 0);
    EXPECT_TRUE(ArchiveBytes(untouched) == ArchiveBytes(ZoPhoto(5)));
    EXPECT_TRUE(untouched.rotAOR.IsIdent() && untouched.preTrafo.GetType() == eTrafo2DHelmert);
}

TEST(PhotoRecord, ValuesThatAreNoNumbersDoNotEndTheReading) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    ZoPhoto photo(0u);
    MakeFull(photo);
    photo.SetScale(kNan);
    photo.SetPixelRegion(ZoRegion(0, kNan, 600, std::numeric_limits<double>::infinity()));
    photo.preTrafo.coef[0] = photo.mainTrafo.coef[2] = kNan;
    photo.camera.c = kNan;
    photo.regionOfInterest.Add(ZoPoint(1, kNan, 2.0, 3.0, 0));
    photo.SetPosAOR(kNan, 1.0, 2.0);
    photo.FirstElspTrafo()->GetRegion() = ZoPolygon(photo.GetDigiRegion());
    ZoPhoto read(0u);
    EXPECT_EQ(ReadText(WrittenText(photo), read), 0) << WrittenText(photo);
    EXPECT_EQ(read.GetScreenFlags(), 44U) << "of the last lines";
    EXPECT_EQ(read.GetDigiRegion().Right(), 600.0);
    EXPECT_EQ(read.GetScale() + read.GetDigiRegion().Bottom() + read.preTrafo.coef[0], 0.0);
}

TEST(PhotoRecord, OlderKeywordsAreUnderstood) {
    ZoPhoto photo(0u);
    EXPECT_EQ(ReadText("PHOTOID { 4 \"label\" } TYPE 0 9 "
                       "USERDATA \"x;4;3\" CAMERA { 5 -20 0 0 1e-4 0 10 \"old\" } "
                       "DIGIREGION { 0 0 30 40 } "
                       "PRERESEAU { 2 1 2 3 4 \"plate.res\" } MAINRESEAU { 1 1 2 3 4 5 6 \"\" }",
                       photo),
              0);
    EXPECT_EQ(photo.GetId(), 4u);
    EXPECT_EQ(photo.GetComment(), L"label") << "an analogue photo's label";
    EXPECT_EQ(std::tuple(photo.GetName(), photo.GetReseauData().GetName()), std::tuple(L"", L"plate.res"));
    EXPECT_TRUE(photo.IsAnalog());
    EXPECT_EQ(photo.GetDigitizerId() * 100 + static_cast<unsigned>(photo.GetDigPictPage() * 10 + photo.GetDigPictRot()),
              950u);
    EXPECT_EQ(std::tuple(photo.camera.c, photo.camera.rmax, photo.preTrafo.GetType(), photo.mainTrafo.GetType()),
              std::tuple(20, 21, eTrafo2DHelmert, eTrafo2DAffin));

    ZoPhoto digital(0u);
    EXPECT_EQ(ReadText("PHOTOID { 4 \"label\" } PRERESEAU { 2 0 0.1 0 0 \"plate.res\" } DIGITAL 1 "
                       "CAMERA { 5 20 1 0 0 0 0 \"old\" } CAMDATA { ID 6 C 30 } DIGIREGION { 0 0 30 40 }",
                       digital),
              0);
    EXPECT_EQ(std::tuple(digital.GetName(), digital.GetReseauData().GetName()), std::tuple(L"label", L"plate.res"));
    EXPECT_EQ(digital.camera.GetId(), 6u) << "the later spelling wins, field by field";
    EXPECT_EQ(digital.camera.xh, 1);
    EXPECT_NEAR(digital.camera.rmax, 0.55 * 5, 1e-12) << "the reach of the image";

    struct Case {
        const char* text;
        int page, turn;
    };
    for (const Case& c : {Case{"a;0;2;b", 1, 2}, Case{";;", 1, 0}, Case{"a;5", 8, 9}, Case{"", 8, 9},
                          Case{"a;2147483647;1", INT32_MAX, 1}}) {
        ZoPhoto user(0u);
        EXPECT_EQ(ReadText(std::string("DIGITALPAGE 8 DIGITALROT 9 USERDATA \"") + c.text + "\"", user), 0);
        EXPECT_EQ(user.GetDigPictPage(), c.page) << c.text;
        EXPECT_EQ(user.GetDigPictRot(), c.turn) << c.text;
    }
}

TEST(PhotoRecord, BadTextLeavesWhatIsFixedAlone) {
    ZoPhoto photo(3);
    ReadText("AORM { 2 3 1 2 3 4 5 6 } AORV { 2 7 8 } SOMETHING { NEW { DEEP 1 } } LAYER 9 SCALE 2", photo);
    EXPECT_TRUE(photo.rotAOR.IsIdent());
    EXPECT_TRUE(photo.posAOR == ZoVector(0, 0, 0));
    EXPECT_EQ(photo.rotAOR.GetZeilen() * 10 + photo.posAOR.GetSize(), 33);
    for (const char* text : {"SCALE \"two\"", "TYPE 0", "PHOTOID { \"x\" 3 }", "CAMDATA { ID", "PRERESTRAFO { 4 1 2 }",
                             "ELSPPLANE { ELSPID {", "REGOI { 5 {", "DIGIREGION 7"}) {
        ZoPhotoList list;
        ReadBlock(text, [&](ZoReaderObject* object) { list.AddPhoto(object); });
        EXPECT_LE(list.Count(), 1) << text;
    }
}

TEST(PhotoRecord, ArchiveComesBackFromEveryCut) {
    ZoPhotoList list;
    ZoPhoto& photo = *list.Add(ZoPhoto(0u));
    MakeFull(photo);
    photo.SetName(L"a");
    photo.SetComment(L"b");
    photo.SetLayer(5);
    photo.pixelSize = 1;
    const std::string record = ArchiveBytes(photo);
    EXPECT_EQ(record.substr(0, 53), HexBytes("0c000000 6100 0000 02000000 6200 0000 02000000 05000000 03000000 01 "
                                             "000000000000c03f 000000000000f03f 04000000 15000000"));
    EXPECT_EQ(record.substr(record.size() - 14), HexBytes("21000000 2c000000 5300 3100 0000"));
    list.Add(ZoPhoto(13));
    const std::string bytes = ArchiveBytes(list);
    EXPECT_EQ(bytes.substr(0, 8), HexBytes("0200000000000000"));
    ZoPhotoList back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_TRUE(ArchiveBytes(back) == bytes);
    EXPECT_EQ(back.FindWithCameraId(3), back.First());
    EXPECT_EQ(back.First()->FindElspTrafo(1)->GetName(), L"wall");

    for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
        ZoPhotoList part;
        ReadArchiveBytes(bytes.substr(0, cut), part);
        ASSERT_LE(part.Count(), 2) << cut;
        if (ZoPhoto* const first = part.First()) {
            ASSERT_EQ(first->rotAOR.GetZeilen() * 10 + first->posAOR.GetSize(), 33) << cut;
            ZoPoint point;
            first->ConvertBiko(&point, eDigiToBiko);
        }
    }

    // The matrix stands behind the three trafos: its shape, 3 and 3, then (its first element) the cosines.
    ZoPhoto plain(1);
    plain.SetRotAOR(0, 0, 0.5);
    std::string wrong = ArchiveBytes(plain);
    const double first = plain.rotAOR[1][1];
    const std::size_t place = wrong.find(std::string(reinterpret_cast<const char*>(&first), sizeof first));
    ASSERT_NE(place, wrong.npos);
    wrong[place - 8] = 1;
    wrong[place - 4] = 9;
    ZoPhoto kept(2);
    EXPECT_EQ(ReadArchiveBytes(wrong, kept), 0u);
    EXPECT_TRUE(kept.rotAOR.IsIdent());
}

TEST(PhotoRecord, RescaledPhotosMeasureTheSame) {
    ZoPhoto photo(1);
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400));
    photo.SetScale(3);
    photo.preTrafo.Set(-30, 0.08, 0.06, -20, -0.06, 0.08);
    photo.preTrafo.SetFromMatrix(photo.GetReseauTrafoMat(), eTrafo2DHelmert);
    ZoPoint before(0, 300, 100, 0, 0);
    photo.ConvertBiko(&before, eDigiToBiko);
    EXPECT_TRUE(!photo.RescaleTo(0.0) && photo.RescaleTo(0.5));
    ZoPoint after(0, 150, 50, 0, 0);
    photo.ConvertBiko(&after, eDigiToBiko);
    EXPECT_LT(after.Distance(before), 1e-12);
    EXPECT_TRUE(photo.digiRegion == ZoRegion(0, 0, 300, 200));
    EXPECT_EQ(photo.GetScale(), 1.5);
    EXPECT_NEAR(photo.GetPixelSize(), 0.2, 1e-12);

    photo.SetBikoRegion(ZoRegion(-3, -2, 3, 2));
    photo.AddImo(after, static_cast<eConvertBikoMode>(0));
    EXPECT_TRUE(photo.RescaleTo(2.0, 3.0));
    EXPECT_LT(photo.FirstImo()->Distance(ZoPoint(0, before.x * 2, before.y * 3, 0, 0)), 1e-12);
    EXPECT_EQ(photo.GetReseauTrafoType(), eTrafo2DAffin) << "a Helmert one has no two factors";
    EXPECT_TRUE(photo.bikoRegion == ZoRegion(-6, -6, 6, 6));
    photo.mainTrafo.type = eTrafo2DPolynomial;
    EXPECT_FALSE(photo.RescaleTo(2.0, 3.0));
}

TEST(PhotoRecord, ListsSortByNumberAndGoIntoDialogs) {
    ZoPhotoList list;
    for (const unsigned int id : {3u, 4294967295u, 1u})
        list.Add(ZoPhoto(id));
    list.Sort();
    EXPECT_EQ(list.First()->GetId(), 4294967295u) << "-1";
    EXPECT_EQ(list.Last()->GetId(), 3u);
    struct Case {
        const wchar_t* name;
        unsigned int limited, free;
    };
    for (const Case& c : {Case{L"a7/b\\x0012.tif", 12, 12}, Case{L"none.tif", 1, 0}, Case{L"1.mp4", 14, 14},
                          Case{L"1073741823", 1073741823, 1073741823}, Case{L"1073741824", 1, 1073741824},
                          Case{L"99999999999999999999999", 1, INT32_MAX}, Case{nullptr, 0, 0}}) {
        EXPECT_EQ(ZoPhoto::SuggestIdFromFilename(c.name, true), c.limited);
        EXPECT_EQ(ZoPhoto::SuggestIdFromFilename(c.name, false), c.free);
    }
    ZoPhoto photo(3, L"image.tif");
    photo.SetComment(L"label");
    EXPECT_EQ(ZoPhoto::GuiString(&photo, true), L"3 - image.tif");
    photo.SetType(eZoPhotoAnalog);
    photo.SetHasAOR(true);
    EXPECT_EQ(ZoPhoto::GuiString(&photo, true), L":: 3 - label");
    EXPECT_EQ(ZoPhoto::GuiString(&photo, false), L"3 - label");
    EXPECT_EQ(ZoPhoto::GuiString(nullptr, true), L"??");
    photo.AddAttribute(std::make_unique<ZoAttribute>(L"note").release());
    photo.DelAttribute(L"NOTE");
    EXPECT_EQ(photo.FirstAttribute(), nullptr);
    photo.SetBikoRegion(ZoRegion(-3, -2, 3, 2));
    photo.SetExposureDistance(0.0025);
    EXPECT_DOUBLE_EQ(photo.ExposureDistanceCCD(), 2.5 / 6);
    EXPECT_EQ(photo.ExposureDistaceCCD_Group(), 1);
}

}  // namespace
