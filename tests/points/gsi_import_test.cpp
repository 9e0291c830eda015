#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "tests/support/temp_folder.h"

#include "zorv/points/gsi_item.h"
#include "zorv/points/point_list.h"

namespace {

TEST(GsiImport, LinesWithCoordinatesGivePoints) {
    const TempFolder folder;
    const std::wstring file = folder.Write("Vermessung-Ä.gsi",
                                           "110001+00000123 81..00+00001000 82..00+00002000 83..00+00000500 \r\n"
                                           "110002+00000124 21.102+10378200 22.102+10378200 31..00+00005165 \n"
                                           "garbage\n"
                                           "*110003+0000000000FIRST9 81..00+0000000000004000 83..00-0000000000000250 \r"
                                           "110004+00000125 22.102+10378200 @W427 \n"
                                           "110005+00000126 82..00+00007000");
    ZoPointList list;
    list.Add(ZoPoint(1, 0, 0, 0, 0));
    ASSERT_EQ(list.ReadGsiFile(file, true, eZoUnitCm), 3);
    ASSERT_EQ(list.Count(), 4);
    const ZoPoint* point = list.Get(1);
    EXPECT_EQ(std::tuple(point->GetId(), point->GetName()), std::tuple(123U, L"123"));
    EXPECT_EQ(*point, ZoPoint(0, 100, 200, 50, 0));
    EXPECT_EQ(point->GetControlFlags(), 7);
    point = list.Get(2);
    EXPECT_EQ(std::tuple(point->GetId(), point->GetName()), std::tuple(9U, L"FIRST9"));
    EXPECT_EQ(*point, ZoPoint(0, 400, 0, -25, 0));
    EXPECT_EQ(point->GetControlFlags(), 5);
    EXPECT_EQ(list.Get(3)->GetControlFlags(), 2);

    ZoPointList plain;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> open(
        std::fopen((folder.path / "Vermessung-Ä.gsi").c_str(), "r"), &std::fclose);
    EXPECT_EQ(plain.ReadGsiFile(open.get(), false, eZoUnitM), 3);
    EXPECT_FALSE(plain.HasControlPoints());
    EXPECT_EQ(plain.ReadGsiFile(static_cast<std::FILE*>(nullptr), false, eZoUnitM), 0);
    EXPECT_EQ(plain.ReadGsiFile(folder.Name("none.gsi"), false, eZoUnitM), 0);
    EXPECT_EQ(plain.ReadGsiFile(folder.path.wstring(), false, eZoUnitM), 0);
    EXPECT_EQ(plain.Count(), 3);
}

const std::filesystem::path kSurveys = std::filesystem::path(ZORV_TEST_DATA) / "gsi";

// The instrument wrote slope distance, zenith angle and horizontal distance (word 32, in mm) side by side: one follows
// from the others within the rounding to 1 mm of both distances, on both faces of the circle.
void CheckReductions(const std::filesystem::path& file, int expected) {
    std::ifstream in(file, std::ios::binary);
    int checked = 0;
    for (std::string text; std::getline(in, text, '\r');) {
        const std::size_t word = text.find(" 32..");
        const ZoGsiDataItem item(text.c_str() + (text.starts_with('\n') ? 1 : 0));
        if (word == std::string::npos || !item.MaskData(ZoGsiDataItem::kSlopeDistance)) continue;
        const double horizontal = std::stod(text.substr(word + 7, 9)) / 1000;
        const double zenith = item.GetData(ZoGsiDataItem::kVerticalAngle, eZoAngleRadian);
        const double slope = item.GetData(ZoGsiDataItem::kSlopeDistance, eZoUnitM);
        EXPECT_NEAR(slope * std::abs(std::sin(zenith)), horizontal, 0.00105) << text;
        ++checked;
    }
    EXPECT_EQ(checked, expected);
}

TEST(GsiImport, RealSurveysComeInAndTheirAnglesReduceTheirDistances) {
    if (!std::filesystem::exists(kSurveys)) GTEST_SKIP() << "no survey files in " << kSurveys;
    CheckReductions(kSurveys / "leica_gsi8_ertola.gsi", 694);
    CheckReductions(kSurveys / "RILIEVO.gsi", 23);

    ZoPointList list;
    // Of 699 lines, 4 are stations without a position of their own and 6 are polar only.
    EXPECT_EQ(list.ReadGsiFile((kSurveys / "leica_gsi8_ertola.gsi").wstring(), false, eZoUnitM), 689);
    EXPECT_EQ(*list.First(), ZoPoint(0, 515.836, 525.871, 3.079, 0));
    EXPECT_EQ(list.ReadGsiFile((kSurveys / "RILIEVO.gsi").wstring(), false, eZoUnitM), 0) << "polar only";
}

}  // namespace
