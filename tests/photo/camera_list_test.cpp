#include "zorv/photo/camera_list.h"

#include <sstream>

#include "tests/support/recorded_host.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

ZoCamera Camera(unsigned int id, unsigned int mode = 0) {
    ZoCamera camera(id, 18.25, 0.5, -0.25, 0.0, 0.0, 9.0, "c");
    camera.mode = mode;
    return camera;
}

constexpr char kSimpleFile[] =
    "; \n"
    "; ZORVSCOPE 10 Version 9.050 Simple Camera File\n"
    "; \n"
    "; File Format: { Id  C  Xh  Yh  A1  A2  R0 \"Infotext\"}\n"
    "; \n"
    "\n"
    "{    7                    18.25                      0.5                    -0.25"
    "                        0                        0                        9 \"c\"}\n";

constexpr char kFullHeader[] =
    "; \n"
    "; ZORVSCOPE 10 Version 9.050 General Purpose Camera File\n"
    "; \n"
    "; Ident: ID         Camera Id\n"
    ";        NAME       Camera Name\n"
    ";        MD         Mode: 0,1,2\n"
    ";        C          Camera Constant\n"
    ";        CV         Camera Constant Viva\n"
    ";        XH YH      Principial Point\n"
    ";        XHV YHV    Principial Point Viva\n"
    ";        R0 RM      Radial Symmetric Distortion, Rmax\n"
    ";        A1 A2 A3   Radial Symmetric Distortion\n"
    ";        B1 B2      Affine Distortion\n"
    ";        C1 C2      Tangential Distortion\n"
    ";        K1..K5     Extra Distortion and Parameters\n"
    "; \n"
    "\n"
    "CAMERA    { ID 7 NAME \"c\" MD 1\n"
    "    C 18.25 XH 0.5 YH -0.25\n";

TEST(CameraList, FormOfTheFileFollowsTheModes) {
    const TempFolder folder;
    ZoCameraList list;
    EXPECT_TRUE(list.ContainsOnlyGentriCams());
    list.Add(Camera(7));
    EXPECT_EQ(list.WriteFile(folder.Name("simple.cam"), false), 1);
    EXPECT_EQ(folder.Read("simple.cam"), kSimpleFile);
    EXPECT_EQ(list.WriteFile(folder.Name("gentri.cam"), true), 1);
    EXPECT_EQ(folder.Read("gentri.cam"),
              "    7            18.25              0.5            -0.25                0                0"
              "                9\n");

    list.First()->mode = 1;
    list.Add(Camera(8));
    EXPECT_FALSE(list.ContainsOnlyGentriCams());
    EXPECT_EQ(list.WriteFile(folder.Name("full.cam").c_str(), false), 1);
    const std::string text = folder.Read("full.cam");
    EXPECT_EQ(text.substr(0, sizeof kFullHeader - 1), kFullHeader);
    EXPECT_EQ(text.substr(text.size() - 3), "0}\n") << text;

    const ZoCameraList back(folder.Name("full.cam"));
    ASSERT_EQ(back.Count(), 2);
    EXPECT_TRUE(back.First()->IsTs15());
    EXPECT_EQ(back.Last()->GetId(), 8u);
    EXPECT_EQ(ZoCameraList(folder.Name("simple.cam")).First()->rmax, 9.0 * 2.1);

    EXPECT_EQ(list.WriteFile(static_cast<const wchar_t*>(nullptr), false), 0);
    EXPECT_EQ(list.WriteFile(folder.Name("no/such/folder.cam"), false), 1);
    std::ostringstream broken;
    broken.setstate(std::ios::failbit);
    EXPECT_EQ(list.WriteFile(broken, false), 1);
}

TEST(CameraList, FilesThatAreNotAsTheyShouldBe) {
    const TempFolder folder;
    const struct {
        const char* text;
        int cameras;
        unsigned int lastId;
    } cases[] = {
        {"", 0, 0},
        {"{ 1 20 0 0 0 0 0 \"one\" }", 1, 1},
        {"{ 1 20 0 0 0 0 0 \"one\" } { 2 20 0 0 0", 1, 1},
        {"{ 1 20 0 0 0 0 word \"one\" } { 2 20 0 0 0 0 0 \"two\" }", 0, 0},
        {"CAMERA { ID 4 C 0 NEW 3 } STRANGE { 1 2 } CAMERA { ID 5 } }", 2, 5},
        {"CAMERA { ID 4 C 20 CAMERA { ID 5 }", 1, 4},
        {"CAMERA ID 6 C 20", 1, 6},
        {"CAMERA", 1, 0},
        {"CAMERA { ID 7 NAME \"not closed }\nCAMERA { ID 8 }", 2, 8},
        {"CAMERA { ID 9 C 1e999 A1 1e308 }", 1, 9},
    };
    for (const auto& at : cases) {
        const ZoCameraList list(folder.Write("strange.cam", at.text));
        EXPECT_EQ(list.Count(), at.cameras) << at.text;
        EXPECT_EQ(list.IsEmpty() ? 0 : list.Last()->GetId(), at.lastId) << at.text;
    }
    ZoCameraList list;
    list.Add(Camera(1));
    EXPECT_EQ(list.Read(folder.Name("missing.cam")), 1);
    EXPECT_EQ(list.ReadFileFormatFull(folder.Name("missing.cam")), 0);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Read(folder.Write("more.cam", "CAMERA { ID 2 }")), 1);
    EXPECT_EQ(list.Count(), 2) << "reading appends";
    EXPECT_TRUE(list.IsNotifyEnabled());
}

TEST(CameraList, WarnsOfIdsThatStandThreeTimes) {
    const RecordedHost host;
    ZoCameraList list;
    for (const unsigned int id : {5u, 6u, 5u, 6u, 5u})
        list.Add(Camera(id));
    EXPECT_EQ(list.TestForMultipleCameras(), 1);
    EXPECT_EQ(host.beeps, (std::vector<std::pair<int, int>>{{1000, 100}}));
    EXPECT_EQ(host.narrow, std::vector<std::string>{"** ZoCameraList::TestForMultipleCameras Id 5 3 Entries"});
    EXPECT_EQ(list.Count(), 5);
}

}  // namespace
