#include <cstring>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

#include "tests/support/archive_item.h"
#include "tests/support/read_block.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/photo/camera.h"

namespace {

/// A camera in which every parameter has a value of its own that needs all digits.
ZoCamera Full() {
    ZoCamera camera(4294967295u, -18.2, 0.1, -1.0 / 3.0, -1.4e-4, 1.1e-17, 9.0, "a \"b\"");
    camera.mode = 14;
    double value = 1.0 / 7.0;
    for (double ZoCamera::*member :
         {&ZoCamera::cViva, &ZoCamera::xhViva, &ZoCamera::yhViva, &ZoCamera::a3,  &ZoCamera::a4,
          &ZoCamera::a5,    &ZoCamera::a6,     &ZoCamera::c1,     &ZoCamera::c2,  &ZoCamera::b1,
          &ZoCamera::b2,    &ZoCamera::k1,     &ZoCamera::k2,     &ZoCamera::k3,  &ZoCamera::k4,
          &ZoCamera::k5,    &ZoCamera::omega,  &ZoCamera::sx1,    &ZoCamera::sx2, &ZoCamera::rmax})
        camera.*member = value *= -1.7;
    return camera;
}

/// The values in the order of the archive.
std::vector<double> Values(const ZoCamera& camera) {
    return {camera.c,  camera.xh,    camera.yh,     camera.a1,     camera.a2,  camera.a3, camera.a4,
            camera.r0, camera.cViva, camera.xhViva, camera.yhViva, camera.c1,  camera.c2, camera.b1,
            camera.b2, camera.a5,    camera.a6,     camera.k1,     camera.k2,  camera.k3, camera.k4,
            camera.k5, camera.omega, camera.sx1,    camera.sx2,    camera.rmax};
}

std::string FullText(const ZoCamera& camera, bool lines) {
    std::ostringstream stream;
    camera.WriteFullData(stream, lines);
    return stream.str();
}

TEST(CameraText, SimpleRecord) {
    ZoCamera camera;
    camera.lastInX = 1.0;
    EXPECT_EQ(ReadBlock("7 -18.25 0.5 -.25 -1e-4 2 4 \"Distagon \xC3\xA4\"", [&](auto* in) { camera.Read(in); }), 0);
    EXPECT_EQ(std::tuple(camera.GetId(), camera.GetName()), std::tuple(7u, L"Distagon \u00e4"));
    EXPECT_EQ(camera.c, 18.25) << "positive";
    EXPECT_EQ(std::tuple(camera.rmax, camera.lastInX), std::tuple(8.4, 0.0));
    EXPECT_TRUE(camera.IsOldZorv());

    camera.xh = 1.0 / 3.0;
    camera.yh = std::numeric_limits<double>::infinity();
    const std::string stream = WrittenText(camera);
    EXPECT_EQ(stream,
              "    7                    18.25      0.33333333333333331                        0"
              "                  -0.0001                        2                        4 \"Distagon \xC3\xA4\"");
    ZoCamera back;
    EXPECT_EQ(ReadBlock(stream, [&](auto* in) { back.Read(in); }), 0);
    EXPECT_EQ(back.xh, camera.xh);
    EXPECT_EQ(ReadBlock("8 1 2 nan 4", [&](auto* in) { back.Read(in); }), 1);
    EXPECT_EQ(back.GetId(), 8u) << "what stands before an error is taken";
    EXPECT_EQ(back.a1, -1e-4);
}

TEST(CameraText, FullRecordBringsAllBackOnOneLineOrMore) {
    const ZoCamera camera = Full();
    for (const bool lines : {false, true}) {
        const std::string text = FullText(camera, lines);
        EXPECT_EQ(text.find('\n') != std::string::npos, lines);
        EXPECT_EQ(text.rfind("ID 4294967295 NAME \"a 'b'\" MD 14", 0), 0u) << text;
        ZoCamera back;
        EXPECT_EQ(ReadBlock(text, [&](auto* in) { back.ReadFullData(in); }), 0);
        EXPECT_EQ(Values(back), Values(camera));
        EXPECT_EQ(std::tuple(back.mode, back.GetId()), std::tuple(14u, 4294967295u));
    }
}

TEST(CameraText, FullRecordInAnyOrder) {
    ZoCamera camera;
    EXPECT_EQ(ReadBlock("XH 1 R0 4 X0 2 UNKNOWN { C 99 } Y0 3 C -20 OTHER 5 YH 4 omega 7 Omega 8 ID 3",
                        [&](auto* in) { camera.ReadFullData(in); }),
              1)
        << "the unknown block";
    EXPECT_EQ(camera.xh, 2.0) << "the later of both spellings";
    EXPECT_EQ(camera.yh, 4.0);
    EXPECT_EQ(camera.c, -20.0) << "keeps its sign";
    EXPECT_EQ(std::tuple(camera.omega, camera.rmax), std::tuple(8.0, 8.4));
    for (const auto& [text, rmax] : {std::pair("R0 4 RM 0", 8.4), std::pair("RM 5 R0 4", 5.0)}) {
        ZoCamera other;
        ReadBlock(text, [&other](auto* in) { other.ReadFullData(in); });
        EXPECT_EQ(other.rmax, rmax) << text;
    }
}

TEST(CameraText, InstrumentAndGentriLines) {
    ZoCamera camera(12, -18.123456789, 0.5, -0.25, -1.4e-4, 1.1e-7, 9.0, "");
    camera.cViva = 17.5;
    camera.yhViva = -0.125;
    std::ostringstream stream;
    camera.WriteTS15Data(stream) << '\n';
    camera.WriteGentriFormat(stream) << '\n';
    camera.mode = 4;
    camera.k1 = camera.k2 = camera.k3 = 1.0;
    camera.CreateLibAutoCam(nullptr, false);
    ASSERT_NE(camera.GetCamPair(), nullptr);
    camera.WriteGentriFormat(stream);
    EXPECT_EQ(stream.str(),
              "CV 17.5 XHV 0 YHV -0.125\n"
              "   12        18.123457              0.5            -0.25         -0.00014          1.1e-07"
              "                9\n"
              "   12        18.123457                0                0                0                0"
              "                0");
}

TEST(CameraText, ArchiveRecord) {
    ZoCamera camera = Full();
    camera.SetFlag(5);
    camera.r0 = 4.0;
    camera.rmax = 8.0;
    // id 4, name 5 characters and a zero of 2 bytes, flags 4, then 26 values and the mode
    constexpr std::size_t kHead = 4 + 6 * 2 + 4;
    const std::string bytes = ArchiveBytes(camera);
    ASSERT_EQ(bytes.size(), kHead + 26 * 8 + 4);
    std::vector<double> stored(26);
    std::memcpy(stored.data(), bytes.data() + kHead, 26 * sizeof(double));
    EXPECT_EQ(stored, Values(camera));

    ZoCamera back;
    EXPECT_EQ(ReadArchiveBytes(bytes, back), 0u);
    std::vector<double> expected = stored;
    expected.back() = 4.0 * 2.1;
    EXPECT_EQ(Values(back), expected) << "the stored reach has no effect";
    EXPECT_EQ(std::tuple(back.mode, back.GetFlag()), std::tuple(14u, 5));
    EXPECT_EQ(back.GetName(), L"a \"b\"");
}

}  // namespace
