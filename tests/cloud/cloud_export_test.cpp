#include <cfloat>
#include <cmath>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/scan_point.h"

namespace {

/// The line of a point.
std::string Line(const ZoScanPoint3d& point, bool aligned, bool colorOnly) {
    const TempFolder folder;
    std::FILE* file = std::fopen((folder.path / "line").c_str(), "wb");
    point.WriteAscii(file, aligned, colorOnly);
    std::fclose(file);
    return folder.Read("line");
}

TEST(CloudExport, LinesHaveThreeForms) {
    const ZoScanPoint3d point(1.0, -2.5, 1234567.123456789, static_cast<int>(0x80030201));
    EXPECT_EQ(Line(point, false, false), "1.000000 -2.500000 1234567.123457 0 1 2 3\n");
    EXPECT_EQ(Line(point, true, false), "       1.000000000       -2.500000000  1234567.123456789    0   1   2   3\n");
    EXPECT_EQ(Line(point, false, true), "1.000000 -2.500000 1234567.123457 1 2 3\n");
    EXPECT_EQ(Line(point, true, true), Line(point, false, true));
    point.WriteAscii(nullptr, false, false);
}

TEST(CloudExport, LinesAreThoseOfPrintf) {
    for (const double value : {0.0, -0.0, 0.1234565, 1e-9, 5e6 + 1.0 / 3.0, 1e22, DBL_MAX, HUGE_VAL, std::nan("")}) {
        for (const unsigned int color : {0x00000000u, 0x01ffffffu, 0xff00ff00u, 0x00646464u}) {
            const ZoScanPoint3d point(value, -value, value, static_cast<int>(color));
            const int intensity = static_cast<int>((point.GetIntensity() - 128) / 128.0 * 2000.0);
            char expected[2000];
            std::snprintf(expected, sizeof expected, "%18.9f %18.9f %18.9f %4d %3d %3d %3d\n", value, -value, value,
                          intensity, point.GetRed(), point.GetGreen(), point.GetBlue());
            EXPECT_EQ(Line(point, true, false), expected);
        }
    }
}

}  // namespace
