#include <cmath>
#include <sstream>

#include "tests/support/archive_item.h"
#include "tests/support/read_block.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/photo/photo_list.h"

namespace {

/// Every field that a record keeps has a value of its own.
ZoPhoto FullPhoto() {
    ZoPhoto photo(12, L"C:\\im\u00E4ge\\0012.tif");
    photo.SetFlag(ZoPhoto::kCheckActive);
    photo.SetComment(L"facade \u00F6");
    photo.SetActiveFlag(2);
    photo.SetRotation(3);
    photo.SetHasAOR(true);
    photo.SetScale(0.125);
    photo.SetType(static_cast<eZoPhototype>(4));
    photo.SetDigitizer(21);
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400));
    photo.camera = ZoCamera(3, 24.5, 0.1, -0.2, -1e-4, 1e-7, 9, "lens");
    photo.camera.rmax = 9 * 2.1;
    photo.SetReseauData(ZoReseauDataDesc(L"plate.res", 6));
    photo.preTrafo.Set(1, 2, 3, 4);
    photo.mainTrafo.Set(1, 2, 3, 4, 5, 6.5);
    photo.polyInvTrafo.type = eTrafo2DPolynomial;
    photo.polyInvTrafo.coef[19] = 1.0 / 3;
    photo.SetRotAOR(0.1, 0.2, 0.3);
    photo.SetPosAOR(4'500'000.123456789, 5'300'000.1, 1e-9);
    ZoElspTrafo wall;
    wall.SetName(L"wall");
    photo.AddElspTrafo(wall, true);
    photo.AddElspTrafo(ZoElspTrafo(), true);
    photo.SetDigPictPage(7);
    photo.SetDigPictRot(2);
    photo.SetScreenPos(ZoPosition(11, 22));
    photo.SetScreenScale(33);
    photo.SetScreenFlags(44);
    photo.SetTpsSetupId(L"S1");
    return photo;
}

std::string Text(const ZoPhoto& photo) {
    std::ostringstream text;
    photo.Write(text);
    return text.str();
}

int ReadText(const std::string& text, ZoPhoto& photo) {
    return ReadBlock(text, [&](ZoReaderObject* object) { photo.Read(object); });
}

void ExpectSame(const ZoPhoto& a, const ZoPhoto& b) {
    EXPECT_EQ(a.GetId(), b.GetId());
    EXPECT_EQ(a.GetName(), b.GetName());
    EXPECT_EQ(a.IsFlagSet(ZoPhoto::kCheckActive), b.IsFlagSet(ZoPhoto::kCheckActive));
    EXPECT_EQ(a.comment, b.comment);
    EXPECT_EQ(a.activeFlag, b.activeFlag);
    EXPECT_EQ(a.rotation, b.rotation);
    EXPECT_EQ(a.hasAOR, b.hasAOR);
    EXPECT_EQ(a.scale, b.scale);
    EXPECT_EQ(a.photoType, b.photoType);
    EXPECT_EQ(a.digitizerId, b.digitizerId);
    EXPECT_TRUE(a.digiRegion == b.digiRegion);
    EXPECT_EQ(a.camera.GetName(), b.camera.GetName());
    EXPECT_EQ(a.camera.a2, b.camera.a2);
    EXPECT_EQ(a.camera.rmax, b.camera.rmax);
    EXPECT_TRUE(a.reseauData.ExactMatch(b.reseauData));
    for (const auto trafo : {&ZoPhoto::preTrafo, &ZoPhoto::mainTrafo, &ZoPhoto::polyInvTrafo}) {
        EXPECT_EQ((a.*trafo).GetType(), (b.*trafo).GetType());
        for (int i = 0; i < ZoTrafo2d::kCoefCount; ++i)
            EXPECT_DOUBLE_EQ((a.*trafo).GetCoef(i), (b.*trafo).GetCoef(i));
    }
    EXPECT_EQ((a.rotAOR - b.rotAOR).AsString(), ZoMatrix(3, 3).AsString());
    EXPECT_TRUE(a.posAOR == b.posAOR);
    EXPECT_EQ(a.lastElspId, b.lastElspId);
    EXPECT_EQ(a.digPictPage, b.digPictPage);
    EXPECT_EQ(a.digPictRot, b.digPictRot);
    EXPECT_TRUE(a.screenPos == b.screenPos);
    EXPECT_EQ(a.screenScale, b.screenScale);
    EXPECT_EQ(a.screenFlags, b.screenFlags);
    EXPECT_EQ(a.tpsSetupId, b.tpsSetupId);
}

TEST(PhotoRecord, TextComesBack) {
    ZoPhoto photo = FullPhoto();
    photo.regionOfInterest.Add(ZoPoint(1, 2.5, 3.5, 0, 0))->dy = 0.25;
    ZoPhoto back(0u);
    ASSERT_EQ(ReadText(Text(photo), back), 0) << Text(photo);
    ExpectSame(back, photo);
    ASSERT_EQ(back.elspList.Count(), 2);
    EXPECT_EQ(back.FindElspTrafo(1)->GetName(), L"wall");
    ASSERT_EQ(back.regionOfInterest.Count(), 1);
    EXPECT_EQ(back.regionOfInterest.First()->y + back.regionOfInterest.First()->dy, 3.75);

    ZoPhoto untouched(5);
    EXPECT_EQ(ReadText("", untouched), 0);
    ExpectSame(untouched, ZoPhoto(5));
    EXPECT_TRUE(untouched.rotAOR.IsIdent() && untouched.preTrafo.GetType() == eTrafo2DHelmert);
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
    EXPECT_EQ(photo.GetName(), L"");
    EXPECT_EQ(photo.GetReseauData().GetName(), L"plate.res");
    EXPECT_TRUE(photo.IsAnalog());
    EXPECT_EQ(photo.GetDigitizerId() * 100 + static_cast<unsigned>(photo.GetDigPictPage() * 10 + photo.GetDigPictRot()),
              950u);
    EXPECT_EQ(photo.camera.c, 20);
    EXPECT_EQ(photo.camera.rmax, 21);
    EXPECT_EQ(photo.preTrafo.GetType(), eTrafo2DHelmert);
    EXPECT_EQ(photo.mainTrafo.GetType(), eTrafo2DAffin);

    ZoPhoto digital(0u);
    EXPECT_EQ(ReadText("PHOTOID { 4 \"label\" } PRERESEAU { 2 0 0.1 0 0 \"plate.res\" } DIGITAL 1 "
                       "CAMERA { 5 20 1 0 0 0 0 \"old\" } CAMDATA { ID 6 C 30 } DIGIREGION { 0 0 30 40 }",
                       digital),
              0);
    EXPECT_EQ(digital.GetName(), L"label");
    EXPECT_EQ(digital.GetReseauData().GetName(), L"plate.res");
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
    ZoPhoto* const photo = list.Add(FullPhoto());
    photo->AddElspTrafo(ZoElspTrafo(), true);  // a copy starts without
    photo->SetLayer(5);
    photo->SetBikoRegion(ZoRegion(-3, -2, 3, 2));
    photo->GetPixelSize();
    list.Add(ZoPhoto(13));
    const std::string bytes = ArchiveBytes(list);
    ZoPhotoList back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    ASSERT_EQ(back.Count(), 2);
    ExpectSame(*back.First(), *photo);
    EXPECT_EQ(back.First()->GetLayer(), 5);
    EXPECT_TRUE(back.First()->bikoRegion == photo->bikoRegion);
    EXPECT_EQ(back.First()->pixelSize, photo->pixelSize);
    EXPECT_EQ(back.First()->elspList.Count(), 1);
    EXPECT_EQ(ArchiveBytes(back), bytes);
    EXPECT_EQ(back.FindWithCameraId(3), back.First());

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
    EXPECT_FALSE(photo.RescaleTo(0.0));
    EXPECT_TRUE(photo.RescaleTo(0.5));
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

TEST(PhotoRecord, TextsForLists) {
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
    photo.SetComment(nullptr);
    EXPECT_EQ(photo.GetComment(), L"");
    photo.SetBikoRegion(ZoRegion(-3, -2, 3, 2));
    photo.SetExposureDistance(0.0025);
    EXPECT_DOUBLE_EQ(photo.ExposureDistanceCCD(), 2.5 / 6);
    EXPECT_EQ(photo.ExposureDistaceCCD_Group(), 1);
    EXPECT_EQ(std::string(ZoPhoto::desc()), "ZoPhoto");
    ZoPhotoDesc desc(&photo);
    EXPECT_EQ(desc.id, 3u);
    desc.Set(nullptr);
    EXPECT_EQ(desc.id, 0u);
}

}  // namespace
