#include <limits>
#include <sstream>

#include "tests/support/archive_item.h"
#include "tests/support/hex_bytes.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/photo/photo.h"
#include "zorv/photo/reseau_descriptor.h"
#include "zorv/photo/reseau_file_list.h"

namespace {

std::string MarksText(const ZoReseauFile& reseau) {
    std::ostringstream text;
    for (const ZoPoint* mark = reseau.crossList.First(); mark; mark = mark->NextConst())
        text << mark->GetId() << ' ' << mark->x << ' ' << mark->y << ' ' << mark->GetControlFlags() << ", ";
    return text.str();
}

TEST(Reseau, DescriptorsHaveThreeKindsOfEquality) {
    const ZoReseauDataDesc any(L"Metric.res"), second(L"METRIC.RES", 2);
    EXPECT_TRUE(second == any) << "no number on the right: the name decides";
    EXPECT_FALSE(any == second);
    EXPECT_TRUE(any.Match(second) && !any.ExactMatch(second));

    ZoReseaufileList list;
    ZoReseauFile reseau;
    reseau.SetName(L"Metric.res");
    reseau.SetSubId(2);
    reseau.SetComment(L"plate");
    list.Add(reseau);
    EXPECT_EQ(list.FindReseauFile(second), list.First());
    EXPECT_EQ(list.FindReseauFile(any), nullptr);

    ZoReseauDataDesc desc;
    desc.Set(list.First());
    EXPECT_EQ(desc.GetComment(), L"plate");
    EXPECT_EQ(ZoReseauDataDesc(desc).GetComment(), L"");
    const std::string bytes = HexBytes("02000000 4d00 6500 7400 7200 6900 6300 2e00 7200 6500 7300 0000") +
                              HexBytes("7000 6c00 6100 7400 6500 0000");
    EXPECT_EQ(ArchiveBytes(desc), bytes);
    ZoReseauDataDesc back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    EXPECT_TRUE(back.ExactMatch(desc));
    EXPECT_EQ(back.GetComment(), L"plate");
}

TEST(Reseau, FilesReadBackAndTakeThePlaceOfTheirName) {
    const TempFolder folder;
    ZoReseauFile plate;
    plate.GenerateDummyData();
    EXPECT_EQ(MarksText(plate),
              "11 -15 10 0, 14 0 10 0, 17 15 10 0, 31 -15 0 0, 34 0 0 0, 37 15 0 0, "
              "51 -15 -10 0, 54 0 -10 0, 57 15 -10 0, ");
    EXPECT_EQ(plate.GetReseauArea(), 600);
    plate.SetComment(L"first");
    plate.GenerateDummyData();
    EXPECT_EQ(plate.GetComment(), L"first") << "there is data already";
    std::ostringstream text;
    ZoReseauFile::WriteHeaderComment(text);
    plate.Write(text);
    const std::wstring file = folder.Write("Plate.res", text.str());

    ZoReseaufileList list;
    EXPECT_EQ(list.ReadReseauFile(file), 1);
    folder.Write("Plate.res", "\"second\" { -2 -1 2 1 } { 0 0 1 1 } { 7 1.5 2.5 1 }");
    EXPECT_EQ(MarksText(*list.First()), MarksText(plate));
    EXPECT_TRUE(list.First()->GetPhotoRegion() == plate.GetPhotoRegion());
    EXPECT_TRUE(list.First()->GetBoxRegion() == plate.GetBoxRegion());
    EXPECT_EQ(list.ReadReseauFile(file), 1);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list.First()->GetComment(), L"second");
    EXPECT_EQ(MarksText(*list.First()), "7 1.5 2.5 1, ");

    EXPECT_EQ(list.ReadReseauFile(folder.Write("cut.res", "\"third\" { -2 -1 2 1 } { 0 0")), 0);
    EXPECT_EQ(list.ReadReseauFile(folder.Write("torn.res", "\"torn\" { -2 -1 2 1 } { 0 0 1 1 } { 7 1 2 0 } { 8 x")), 1);
    EXPECT_EQ(MarksText(*list.Last()), "7 1 2 0, ");
    EXPECT_EQ(list.ReadReseauFile(folder.Name("missing.res")), 0);
    EXPECT_EQ(list.ReadReseauFile(folder.Write("points.coo", "1 2 3")), 0);
    EXPECT_EQ(list.ReadReseauFile(static_cast<const wchar_t*>(nullptr)), 0);
}

TEST(Reseau, DigitalCamerasReadBack) {
    const TempFolder folder;
    ZoReseauFile camera;
    camera.SetName(L"Cam 1");
    camera.SetSubId(3);
    camera.SetComment(L"35 mm, a comment beyond its field");
    camera.CreateDigitalFormat(6000, 4000, 36.0, 24.0);
    EXPECT_EQ(MarksText(camera), "11 -18 12 2, 12 18 12 2, 21 -18 -12 2, 22 18 -12 2, ");
    EXPECT_DOUBLE_EQ(camera.GetPhotoRegion().Right(), 18.9);
    EXPECT_DOUBLE_EQ(camera.GetBoxRegion().Top(), 12.6 / 6 - 12.6);
    EXPECT_DOUBLE_EQ(camera.GetCCDPixelSize(), 0.006);
    EXPECT_EQ(camera.GetDescName(), L"Cam 1 3 6000 * 4000 Pixel");
    std::ostringstream line;
    camera.WriteDigitalCameraFormat(line);
    EXPECT_EQ(
        line.str(),
        "{ \"Cam 1\"            3 \"35 mm, a comment beyond its field\"      6000      4000        36        24  }\n");

    ZoReseauFile endless;
    endless.CreateDigitalFormat(1, 1, std::numeric_limits<double>::infinity(), 1.0);
    ZoReseaufileList list;
    list.Add(endless);
    list.Add(camera);
    ZoReseauFile three(camera);
    delete three.crossList.SubtractLast();
    list.Add(three);
    ASSERT_TRUE(list.WriteDigitalCameraFormat(folder.Name("cameras.dres")));
    ZoReseaufileList back;
    EXPECT_EQ(back.ReadReseauFile(folder.Name("cameras.dres")), 1);
    ASSERT_EQ(back.Count(), 2) << "a reseau with three marks is left out, one without bounds is no end";
    EXPECT_EQ(MarksText(*back.Last()), MarksText(camera));
    EXPECT_EQ(back.Last()->GetDescName(), camera.GetDescName());
    EXPECT_EQ(back.ReadReseauFile(folder.Write("cut.dres", "{ \"A\" 0 \"\" 10 10 2.5 1 } { \"B\" 0 \"\" 10 ")), 1);
    EXPECT_EQ(back.Count(), 3);

    ZoReseauFile empty;
    empty.SetName(L"none");
    empty.SetSubId(9);
    EXPECT_EQ(std::tuple(empty.GetDescName(), empty.GetCCDPixelSize(), empty.GetReseauWidth()),
              std::tuple(L"none", 1e-6, -20000));
}

TEST(Reseau, MarksAreFoundAndSelected) {
    ZoReseauFile reseau;
    reseau.CreateDigitalFormat(ZoRegion(0, 0, 100.9, 50.9), ZoRegion(-2, -1, 2, 1));
    EXPECT_EQ(reseau.GetExifPixelWidth(), 100);
    EXPECT_EQ(MarksText(reseau), "11 -2 1 2, 12 2 1 2, 21 -2 -1 2, 22 2 -1 2, ");
    unsigned int first = 0;
    unsigned int second = 0;
    EXPECT_TRUE(reseau.FindCrossId(first, second));
    EXPECT_EQ(first, 21u);
    EXPECT_EQ(second, 12u);
    const unsigned int ids[] = {22, 99, 11};
    EXPECT_EQ(reseau.SelectCross(ids, 3), 2);
    EXPECT_EQ(reseau.SelectCross(nullptr, 3), 0);
    unsigned int selected[4] = {};
    EXPECT_EQ(reseau.FindUserSelectedCrosses(selected, 4), 2);
    EXPECT_EQ(selected[0], 11u);
    EXPECT_EQ(reseau.FindUserSelectedCrosses(selected, 1), 1);
    EXPECT_FALSE(ZoReseauFile().FindCrossId(first, second));

    ZoPhoto photo(1, L"folder\\a.b.jpg");
    photo.SetPixelRegion(ZoRegion(0, 0, 600, 400.7));
    photo.SetBikoRegion(ZoRegion(-3, -2, 3, 2));
    const ZoReseauFile ofPhoto(&photo);
    EXPECT_EQ(std::tuple(ofPhoto.GetComment(), ofPhoto.GetExifPixelHeight()), std::tuple(L"a.b", 400));
    EXPECT_TRUE(ofPhoto.GetPhotoRegion() == photo.GetBikoRegion());
    ZoReseaufileList list;
    list.Add(reseau);
    EXPECT_EQ(list.FindReseauFile(&photo), list.First()) << "neither has a name";
}

}  // namespace
