#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "tests/support/hex_bytes.h"
#include "tests/support/las_bytes.h"
#include "tests/support/recorded_host.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/cloud_container.h"
#include "zorv/core/platform/mapping.h"
#include "zorv/core/progress.h"

namespace {

const std::filesystem::path kData = ZORV_TEST_DATA;

/// Opens what hosts do not need.
struct Container : ZoPointCloudContainer {
    using ZoPointCloudContainer::ObsolteReadPlyFile;
    using ZoPointCloudContainer::ReadPtsFile;
    using ZoPointCloudContainer::ReadXYZFile;
};

/// "x y z r g b i", a line a point.
std::string Text(const ZoPointCloud& cloud) {
    std::string text;
    for (const ZoScanPoint3d& p : cloud.points) {
        char line[200];
        std::snprintf(line, sizeof line, "%.17g %.17g %.17g %d %d %d %d\n", p.x(), p.y(), p.z(), p.GetRed(),
                      p.GetGreen(), p.GetBlue(), static_cast<int>(p.color >> 24));
        text += line;
    }
    return text;
}

/// The points of a file by every way that reads the format; they have to agree.
class Reading {
  public:
    explicit Reading(const std::string& bytes) { folder.Write("cloud", bytes); }

    void Pts() {
        Check(container.ReadPtsFile(folder.Name("cloud"), result));
        Container other;
        std::FILE* file = std::fopen((folder.path / "cloud").c_str(), "rb");
        const ZoPointCloud* cloud = other.ReadPtsFile(file);
        std::fclose(file);
        EXPECT_EQ(Text(*cloud), points);
        EXPECT_EQ(cloud->noColors, container.First()->noColors);
        const zorv::detail::MappingRefusal refusal(zorv::detail::MappingRefusal::kView);
        EXPECT_TRUE(other.ReadPtsFile(folder.Name("cloud"), result));
        EXPECT_EQ(Text(*other.clouds.Last()), points);
    }
    void Xyz() {
        Check(container.ReadXYZFile(folder.Name("cloud"), result));
        Container other;
        std::ifstream stream(folder.path / "cloud", std::ios::binary);
        EXPECT_EQ(Text(*other.ReadXYZFile(stream)), points);
    }
    void Ply() {
        std::ifstream stream(folder.path / "cloud", std::ios::binary);
        Check(container.ObsolteReadPlyFile(stream) != nullptr);
    }
    void Las() { Check(container.ReadLasLazFile(folder.Name("cloud"), result)); }

    TempFolder folder;
    Container container;
    ZoPointCloudReadResult result;
    std::string points;

  private:
    void Check(bool answer) {
        EXPECT_TRUE(answer && result.error == 0);
        ASSERT_EQ(container.clouds.Count(), 1);
        const ZoPointCloud& cloud = *container.First();
        points = Text(cloud);
        ZoPointCloud again(cloud);
        again.CalcCenterAndBoundingBox(false);
        for (const ZoCenterPoint3d& center : {cloud.center, container.center})
            EXPECT_EQ(std::tuple(center.GetCount(), center.m_y), std::tuple(cloud.Size(), again.center.m_y));
        EXPECT_EQ(std::tuple(cloud.box.xmax, container.box.zmin), std::tuple(again.box.xmax, again.box.zmin));
        EXPECT_LE(cloud.points.capacity(), std::filesystem::file_size(folder.path / "cloud") + 1);
    }
};

struct Case {
    const char* name;
    std::string bytes, points;
    std::uint32_t noColors = 0;
};

void ExpectPoints(void (Reading::*read)(), const std::vector<Case>& cases) {
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Reading reading(each.bytes);
        (reading.*read)();
        EXPECT_EQ(reading.points, each.points);
        EXPECT_EQ(reading.container.First()->noColors, each.noColors);
    }
}

using namespace std::string_literals;

TEST(CloudImport, FieldsOfAPtsLineTellWhatItIs) {
    // An integer of -2000 to 2000 becomes trunc((v + 2000) * 0.064), a fraction trunc(v * 256).
    const std::vector<Case> cases = {
        {"nothing", "", "", 1},
        {"a count and seven columns", "1\n1 2 3 -1035 97 59 38\n", "1 2 3 97 59 38 61\n"},
        {"no count, no line feed", "1 2 3 0 97 59 38", "1 2 3 97 59 38 128\n"},
        {"three columns", "1.5 -2e1 +3\n", "1.5 -20 3 0 0 0 0\n", 1},
        {"integers", "1 2 3 0\n1 2 3 -2000\n1 2 3 1999", "1 2 3 0 0 0 128\n1 2 3 0 0 0 0\n1 2 3 0 0 0 255\n", 1},
        {"low bytes", "1 2 3 2000\n1 2 3 -2020\n1 2 3 1.0\n1 2 3 -0.01\n",
         "1 2 3 0 0 0 0\n1 2 3 0 0 0 255\n1 2 3 0 0 0 0\n1 2 3 0 0 0 254\n", 1},
        {"fractions", "1 2 3 0.5\n1 2 3 .25\n1 2 3 1e-1\n", "1 2 3 0 0 0 128\n1 2 3 0 0 0 64\n1 2 3 0 0 0 128\n", 1},
        {"beyond an int", "1 2 3 1.e30\n1 2 3 nan.\n1 2 3 99999999999\n1 2 3 -0.\n",
         "1 2 3 0 0 0 0\n1 2 3 0 0 0 0\n1 2 3 0 0 0 127\n1 2 3 0 0 0 0\n", 1},
        {"six columns", "1 2 3 97 315 -1\n1 2 3 7.9 8.9 9x\n", "1 2 3 97 59 255 0\n1 2 3 7 8 9 0\n"},
        {"seven columns have no fraction", "1 2 3 0.9 1 2 3\n1 2 3 -1000.9 1 2 3\n",
         "1 2 3 1 2 3 128\n1 2 3 1 2 3 64\n"},
        {"five, eight and many", "1 2 3 4 5\n1 2 3 4 5 6 7 8\n1 2 3 4 5 6 7 8 9 10\n",
         "1 2 3 0 0 0 0\n1 2 3 0 0 0 0\n1 2 3 0 0 0 0\n", 1},
        {"counts and junk between", "2\n1 2 3\n\n 7 \n1 2\n-5\n4 5 6\n", "1 2 3 0 0 0 0\n4 5 6 0 0 0 0\n", 1},
        {"separators", ";1;2\t\t3 ; 4 5 6\r\n\r\n1 2 3\r4 5 6\r\n", "1 2 3 4 5 6 0\n1 2 3 4 5 6 0\n"},
        {"a byte order mark", "\xef\xbb\xbf 1 2 3\n4 5 6\n", "1 2 3 0 0 0 0\n4 5 6 0 0 0 0\n", 1},
        {"decimal commas", "1,5 2,5 3,5 0 1 2 3\n", "1 2 3 1 2 3 128\n"},
        {"words", "here lie points\n", "0 0 0 0 0 0 0\n", 1},
        {"a zero in the line", "1 2 3\0 4 5 6\n1 2\0 3\n\0\n7 8 9\n"s, "1 2 3 0 0 0 0\n7 8 9 0 0 0 0\n", 1},
        {"counts that lie", "4294967295\n99999999999999999999\n1 2 3\n", "1 2 3 0 0 0 0\n", 1},
    };
    ExpectPoints(&Reading::Pts, cases);
    Container container;
    EXPECT_EQ(container.ReadPtsFile(static_cast<std::FILE*>(nullptr)), nullptr);
    EXPECT_EQ(container.First(), nullptr);
}

TEST(CloudImport, EveryXyzLineIsAPoint) {
    const std::vector<Case> cases = {
        {"nothing", "", ""},
        {"an open last line", "1 2 3\n4 5 6", "1 2 3 0 0 0 0\n"},
        {"missing fields", "1 2\n\n1\n", "1 2 0 0 0 0 0\n0 0 0 0 0 0 0\n1 0 0 0 0 0 0\n"},
        {"colours", "1 2 3 4 5 260\n1 2 3 4\n1 2 3 4 5\n", "1 2 3 4 5 4 0\n1 2 3 4 0 0 0\n1 2 3 4 5 0 0\n"},
        {"beyond 64 bits", "18446744073709551617 2 3\n", "1.8446744073709552e+19 2 3 0 0 0 0\n"},
        {"more fields", "1 2 3 4 5 6 7 8\n", "1 2 3 4 5 6 0\n"},
        {"text and semicolons", "x y z\n1;2;3\n", "0 0 0 0 0 0 0\n1 0 0 0 0 0 0\n"},
        {"carriage returns", "1 2 3\r\n1 2 3 4 5 6\r\n1 2 3 \r\n\r\n1 2\r3 4\n",
         "1 2 3 0 0 0 0\n1 2 3 4 5 6 0\n1 2 3 0 0 0 0\n0 0 0 0 0 0 0\n1 2 4 0 0 0 0\n"},
        {"a zero in the line", "1\0x 2 3\n"s, "1 2 3 0 0 0 0\n"},
    };
    ExpectPoints(&Reading::Xyz, cases);
}

TEST(CloudImport, PlyVerticesHaveOneLayout) {
    const auto header = [](int properties) {
        std::string text = "ply\nformat ascii 1.0\ncomment of no one\nelement vertex 4294967295\n";
        for (int i = 0; i < properties; ++i)
            text += "property float p\n";
        return text + "end_header\n";
    };
    const std::vector<Case> cases = {
        {"nine properties", header(9) + "0.1 2 3 9 9 9 4 5 261\n1 2 3\n1 2 3 9 9 9 4 5 6",
         "0.10000000149011612 2 3 4 5 5 0\n1 2 3 4 5 6 0\n"},
        {"ten", header(10) + "1 2 3 9 9 9 4 5 6\n1 2 3 9 9 9 4 5 6 7 8\n", "1 2 3 4 5 6 0\n"},
        {"six", header(6) + "1 2 3 4 5 6 7 8 9\n", ""},
        {"an empty line", header(9) + "1 2 3 9 9 9 4 5 6\n\n1 2 3 9 9 9 4 5 6\n", "1 2 3 4 5 6 0\n"},
        {"carriage returns", header(9) + "1 2 3 9 9 9 4 5 6\r\n1 2 3 9 9 9 4 5 \r\n\r\n1 2 3 9 9 9 4 5 6\r\n",
         "1 2 3 4 5 6 0\n"},
        {"an empty line in the header", "ply\n\n" + header(9) + "1 2 3 9 9 9 4 5 6\n", ""},
        {"no end of the header", "PLY\nProperty\n1 2 3 9 9 9 4 5 6\n", ""},
        {"nothing", "", ""},
    };
    ExpectPoints(&Reading::Ply, cases);
}

TEST(CloudImport, NumbersAreThoseOfTheCLibrary) {
    // Whole lines of numbers of every length, and lines across the ends of blocks.
    std::mt19937_64 random(7);
    std::vector<std::string> numbers;
    std::string text;
    for (int i = 0; i < 60000; ++i) {
        std::string digits = std::to_string(random() >> random() % 64);
        if (random() % 4 > 0) digits.insert(random() % (digits.size() + 1), 1, '.');
        if (random() % 3 == 0) digits.insert(0, 1, '-');
        if (random() % 16 == 0) digits += 'e' + std::to_string(static_cast<int>(random() % 40) - 20);
        numbers.push_back(digits);
        text += digits;
        text += i % 3 < 2 ? " " : i % 2 == 0 ? "\n" : "\r\n";
    }
    Reading reading(text);
    reading.Xyz();
    ASSERT_EQ(reading.container.Size(), 20000u);
    const ZoScanPointVector& points = reading.container.First()->points;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double value = points[i / 3][i % 3];
        const double expected = std::strtod(numbers[i].c_str(), nullptr);
        ASSERT_EQ(std::tuple(value, std::signbit(value)), std::tuple(expected, std::signbit(expected))) << numbers[i];
    }
    EXPECT_EQ(points.capacity(), 20000u) << "room is made once";
    Reading pts(text);
    pts.Pts();
    EXPECT_EQ(pts.points, reading.points);
}

TEST(CloudImport, LongLinesAreWhole) {
    const std::string blanks(600'000, ' '), digits(300'000, '7');
    const std::string line = "1" + blanks + "2 " + digits + " 0 1 2 3\n";
    const std::string point = "1 2 inf 1 2 3 128\n";
    ExpectPoints(&Reading::Pts, {{"long lines", "4294967295\n" + line + line + blanks, point + point}});
}

TEST(CloudImport, FilesBecomeNamedCloudsBesideTheOthers) {
    const TempFolder folder;
    const std::filesystem::path path = folder.path / "hall.pts";
    const std::wstring name = folder.Write("hall.pts", "1 2 3 0 1 2 3\n");
    // 2001-09-09, a billion seconds after 1970.
    std::filesystem::last_write_time(
        path, std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(1'000'000'000))));
    ZoPointCloudContainer container;
    container.AddCloud()->AddPoint(ZoScanPoint3d(9, 9, 9, 0));
    ZoPointCloudReadResult result;
    EXPECT_TRUE(container.ReadPtsFile(name.c_str(), result) && container.ReadXYZFile(name.c_str(), result));
    EXPECT_EQ(result.points, 2u);
    ASSERT_EQ(result.clouds.size(), 2u);
    for (const ZoPointCloud* cloud : result.clouds) {
        EXPECT_EQ(std::tuple(cloud->GetName(), cloud->scanInfo.timeStart), std::tuple(L"hall.pts", 1'000'000'000));
    }
    EXPECT_EQ(result.clouds[1]->GetId(), 3u);
    EXPECT_EQ(std::tuple(container.GetDirty(), container.box.xmin, container.box.xmax, container.center.GetCount()),
              std::tuple(3u, 1, 9, 3));

    // What cannot be read changes nothing.
    const auto fails = [&](bool answer, int expected) {
        EXPECT_FALSE(answer);
        EXPECT_EQ(result.error, expected);
        EXPECT_EQ(container.GetDirty(), 3u);
        result.error = 0;
    };
    fails(container.ReadPtsFile(folder.Name("missing"), result), ENOENT);
    fails(container.ReadPtsFile(folder.Name(""), result), EINVAL);
    fails(container.ReadXYZFile(static_cast<const wchar_t*>(nullptr), result), ENOENT);
    fails(container.ReadLasLazFile(static_cast<const wchar_t*>(nullptr), result), 4);
    fails(container.ReadLasLazFile(name.c_str(), result), 3);
    EXPECT_EQ(result.points, 2u);
}

TEST(CloudImport, LasFieldsKeepTheirHighBytes) {
    // X 150, Y -100, Z 7, intensity 0xffff; colours 0x01ff, 0xfe00, 0x00ff.
    const std::string record = HexBytes("96000000 9cffffff 07000000 ffff 000000000000 ff01 00fe ff00");
    const std::string bytes = las_bytes::Header(2, 2, 26, 4'000'000'000);
    ExpectPoints(&Reading::Las,
                 {{"one point and a half", bytes + record + record.substr(1), "1001.5 1998 0.5 1 254 0 255\n"}});
}

TEST(CloudImport, TheHostSeesItComeOn) {
    const TempFolder folder;
    std::string text;
    while (text.size() < 3'000'000)
        text += "1.25 2.5 3.75 0 1 2 3\n";
    const std::wstring pts = folder.Write("a.pts", text);
    const std::wstring las = folder.Write("a.las", las_bytes::Header(2, 0, 20, 100'000) + std::string(2'000'000, '\0'));
    RecordedHost host;
    ZoProgressBarRouter::SetMsgHWND(reinterpret_cast<HWND>(&host));
    for (const bool isLas : {false, true}) {
        host.posts.clear();
        ZoPointCloudContainer container;
        ZoPointCloudReadResult result;
        EXPECT_TRUE(isLas ? container.ReadLasLazFile(las, result) : container.ReadPtsFile(pts, result));
        EXPECT_GE(host.posts.size(), 30u);
        EXPECT_LE(host.posts.size(), 100u);
        EXPECT_EQ(std::get<1>(host.posts.front()), ZoProgressBarRouter::GetMsgShowProgressBar());
        EXPECT_EQ(std::get<1>(host.posts.back()), ZoProgressBarRouter::GetMsgHideProgresBar());
        for (std::size_t i = 2; i + 1 < host.posts.size(); ++i)
            EXPECT_LT(std::get<2>(host.posts[i - 1]), std::get<2>(host.posts[i]));
        EXPECT_EQ(ZoProgressBarRouter::GetProgressBarPos(), 100);
    }
    ZoProgressBarRouter::SetMsgHWND(nullptr);
}

// Counts, bounds and sums come from a script that takes the text or the records apart.
TEST(CloudImport, RealFilesGiveWhatAScriptFound) {
    // Name, points, least x y z, largest x y z, sums of x y z and of red, green, blue and intensity.
    std::istringstream files(
        "pts/test.pts 19 -25.050461 -24.533554 -2.000961 3.980972 -2.006119 -0.010086"
        " -352.692185 -412.48265 -22.633043 443 312 254 906\n"
        "pts/autzen.pts 10 636102.840012 848968.800003 427.919998 636126.400009 849345.199997 512.139999"
        " 6361203.110017 8490797.470032 4448.180021 1019 1157 923 646\n"
        "xyz/data.xyz 400 440750 3750150 74 441890 3751290 255 176528000 1500288000 50706 0 0 0 0\n"
        "ply/option-0000_first40.ply 40 -0.046851601452 0.816336989403 -3.309149980545 0.915618002415 1.187790036201"
        " -2.460020065308 16.617858733982 41.532750964165 -118.543230772018 5858 5579 5467 0\n"
        "las/simple.laz 1065 635619.85 848899.7 406.59 638982.55 853535.43 586.38 678721022.97 906580758.49 462314.2"
        " 0 0 0 0\n"
        "las/test1_4.las 1000 1694038.445637452 1816492.706270058 5592.749917468 1694539.677014474 1816497.97626246"
        " 5599.069686751 1694379477.654358 1816495465.573157 5597520.532653 0 0 0 0\n"
        "las/bad_vlr_count.las 10 289814.15 4320978.61 170.58 289818.5 4320980.59 170.76 2898163.22 43209796.05 1706.79"
        " 0 0 0 8\n");
    const double kSum = 1e-3;  // of a thousand values at map coordinates
    if (!std::filesystem::exists(kData)) GTEST_SKIP() << "no " << kData;
    std::string file;
    for (std::size_t points = 0; files >> file >> points;) {
        SCOPED_TRACE(file);
        const auto expect = [&files](double value, double tolerance) {
            double expected = 0.0;
            files >> expected;
            EXPECT_NEAR(value, expected, tolerance);
        };
        const std::filesystem::path path = kData / file;
        const std::wstring name = string2wstring(path.native());
        Container container;
        ZoPointCloudReadResult result;
        if (path.extension() == ".pts") {
            EXPECT_TRUE(container.ReadPtsFile(name, result));
        } else if (path.extension() == ".xyz") {
            EXPECT_TRUE(container.ReadXYZFile(name, result));
        } else if (path.extension() == ".ply") {
            std::ifstream stream(path);
            EXPECT_NE(container.ObsolteReadPlyFile(stream), nullptr);
        } else {
            EXPECT_TRUE(container.ReadLasLazFile(name, result));
        }
        ASSERT_EQ(container.Size(), points);
        const ZoBoundingBox3d& box = container.box;
        for (const double bound : {box.xmin, box.ymin, box.zmin, box.xmax, box.ymax, box.zmax})
            expect(bound, 1e-9);
        double sums[3] = {};
        int colors[4] = {};
        for (const ZoScanPoint3d& point : container.First()->points) {
            for (int i = 0; i < 3; ++i)
                sums[i] += point[i];
            for (int i = 0; i < 4; ++i)
                colors[i] += static_cast<int>(point.color >> 8 * i & 0xff);
        }
        for (const double sum : sums)
            expect(sum, kSum);
        for (const int color : colors)
            expect(color, 0);
    }
}

}  // namespace
