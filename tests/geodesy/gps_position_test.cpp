#include "zorv/geodesy/gps_position.h"

#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "zorv/geodesy/deg_min_sec.h"
#include "zorv/geodesy/gauss_krueger.h"
#include "zorv/geodesy/utm_point.h"

namespace {

constexpr double kMillimetre = 1e-3;

ZoGPSPosition Position(double latitude, double longitude, double altitude) {
    ZoGPSPosition position;
    position.SetLatitude(latitude);
    position.SetLongitude(longitude);
    position.SetAltitude(altitude);
    return position;
}

/// Puts the process-wide settings back.
class GpsPosition : public testing::Test {
  protected:
    void TearDown() override {
        ZoGKSettings::Get() = ZoGKSettings();
        ZoGPSPosition::SetDatumMode(eDatumLatLong);
    }
};

TEST(DegMinSec, FloorsTowardMinusInfinity) {
    const DegMinSec half(-0.5);
    EXPECT_EQ(std::tuple(half.deg, half.min, half.GetDMS()), std::tuple(-1, 30, -0.5));
    EXPECT_NEAR(DegMinSec(16, 20, 30.6).GetDMS(), 16.341833333333333, 1e-14);
    EXPECT_EQ(DegMinSec(std::numeric_limits<double>::quiet_NaN()).deg, 0);
}

TEST_F(GpsPosition, ValidityAndComparison) {
    ZoGPSPosition position;
    EXPECT_FALSE(position.IsValid());
    position.SetLatitude(48);
    EXPECT_FALSE(position.IsValid()) << "longitude and altitude are 0";
    EXPECT_TRUE(Position(48, 16, 200).IsValid() && !Position(90.1, 16, 200).IsValid());
    EXPECT_FALSE(Position(48, -180.1, 200).IsValid());
    position.Clear();
    position.SetModeXYZ(true);
    EXPECT_TRUE(position.IsValid()) << "any setter counts";
    EXPECT_EQ(Position(48, 16, 200).Compare(Position(49, 1, 1)), -1);
    EXPECT_EQ(Position(48, 16, 200).Compare(Position(47, 1, 1)), 1);
    EXPECT_EQ(Position(48, 16, 200).Compare(ZoGPSPosition()), 0);
    int degrees[2], minutes[2];
    double seconds[2];
    Position(48.5, -0.25, 171.256)
        .GetAsDMS(&degrees[0], &minutes[0], &seconds[0], &degrees[1], &minutes[1], &seconds[1]);
    EXPECT_EQ(std::tuple(degrees[0], minutes[0], degrees[1], minutes[1]), std::tuple(48, 30, -1, 45));
    EXPECT_EQ(ZoGPSPosition().GetAsDMS(), " - ");
    EXPECT_EQ(Position(48.5, -0.25, 171.256).GetAsDMS(), "48\xC2\xB0 30' 0.000\"    -1\xC2\xB0 45' 0.000\"   171.26m");
}

// Worked out by the series of Krueger (1912) to the sixth order with another program; beyond UTM by the closed form of
// the polar stereographic projection.
TEST_F(GpsPosition, UtmAgreesWithKruegersSeries) {
    const std::tuple<double, double, double, double, const char*> cases[] = {
        {48.2082, 16.3738, 602065.207411, 5340353.594304, "33n"},
        {33.3, 44.4, 444140.544918, 3684706.355550, "38n"},
        {-33.8568, 151.2153, 334900.569652, 6252288.752888, "56s"},
        {86, 30, 2222134.214679, 1615252.254077, "n"},
    };
    for (const auto& [latitude, longitude, easting, northing, zone] : cases) {
        const ZoUtmPoint utm(Position(latitude, longitude, 12.5));
        EXPECT_EQ(utm.zoneText, zone);
        EXPECT_NEAR(utm.easting, easting, kMillimetre);
        EXPECT_NEAR(utm.northing, northing, kMillimetre);
        EXPECT_EQ(utm.altitude, 12.5);
        // The MGRS square counts from full 100 km.
        EXPECT_NEAR(utm.mgrsEasting, std::fmod(easting, 1e5), kMillimetre);
        EXPECT_NEAR(utm.mgrsNorthing, std::fmod(northing, 1e5), kMillimetre);
    }
    const ZoUtmPoint utm(Position(33.3, 44.4, 12.5));
    EXPECT_EQ(utm.utmText, "38n 444140.545 3684706.356 12.500 m");
    EXPECT_EQ(utm.mgrsText, "38SMB4414054484706355");
}

TEST_F(GpsPosition, GaussKruegerPresets) {
    EXPECT_EQ(ZoGKSettings::GetDefault(2), "\xC3\x96sterreich M34 16\xC2\xB0 20' 750000 -5000000 ");
    EXPECT_EQ(ZoGKSettings::GetDefault(3), "");
    EXPECT_FALSE(ZoGKSettings::Get().SetToDefault(-1));
    ASSERT_TRUE(ZoGKSettings::Get().SetToDefault(2));
    const ZoGPSPosition graz = Position(47.0707, 15.4395, 353);
    EXPECT_EQ(graz.GetAsZoPoint(eDatumGK), ZoPoint()) << "the settings are not active";
    EXPECT_EQ(graz.GetAsZoPoint(eDatumGKSwapped).GetName(), L"");
    ZoGKSettings::Get().active = true;
    const ZoPoint point = graz.GetAsZoPoint(eDatumGK);
    EXPECT_NEAR(point.x, -67864.307720 + 750000, kMillimetre);
    EXPECT_NEAR(point.y, 5213408.398123 - 5000000, kMillimetre);
    EXPECT_EQ(point.z, 353);
    EXPECT_TRUE(point.GetName().empty());
}

TEST_F(GpsPosition, FormsAndNames) {
    const ZoGPSPosition position = Position(48.2082, 16.3738, 170);
    const ZoPoint swapped = Position(16.3738, 48.2082, 170).GetAsZoPoint(eDatumUtmSwapped);
    EXPECT_EQ(swapped, position.GetAsZoPoint(eDatumUtm));
    EXPECT_EQ(swapped.GetName(), L"33n 602065.207 5340353.594 170.000 m");
    EXPECT_EQ(position.GetAsZoPoint(eDatumLatLong), ZoPoint(0, 48.2082, 16.3738, 170, 0));
    EXPECT_EQ(position.GetAsZoPoint(static_cast<DatumMode>(8)), ZoPoint());

    ZoPoint point(5, 1, 2, 3, 0);
    EXPECT_FALSE(ZoGPSPosition().GetAsZoPoint(point));
    EXPECT_EQ(point.x, 1);
    EXPECT_TRUE(position.GetAsZoPoint(point));
    EXPECT_EQ(point.GetName(), L"GPS");
    ZoGPSPosition::SetDatumMode(eDatumMgrs);
    EXPECT_TRUE(position.GetAsZoPoint(point));
    EXPECT_EQ(std::tuple(point.GetName(), point.GetId()), std::tuple(L"33UXP0206520740353594", 5u));
    ZoGPSPosition plain = position;
    plain.SetModeXYZ(true);
    EXPECT_EQ(plain.GetAsZoPoint(eDatumUtm), position.GetAsZoPoint(eDatumLatLong));
}

TEST_F(GpsPosition, NothingEscapesFromWildPositions) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [latitude, longitude] :
         {std::pair{90.1, 0.0}, {-1e300, 5.0}, {nan, 5.0}, {5.0, nan}, {5.0, infinity}, {infinity, infinity}}) {
        ZoUtmPoint none;
        EXPECT_FALSE(none.FromGPSPosition(Position(latitude, longitude, 1)));
        EXPECT_EQ(none.easting, 0);
    }
    ZoUtmPoint utm;
    EXPECT_TRUE(utm.FromGPSPosition(Position(85, 30, 1))) << "UPS";
    EXPECT_EQ(utm.zone, 0);
    EXPECT_TRUE(utm.FromGPSPosition(Position(10, 370, 1e300))) << "a whole turn more";
    EXPECT_TRUE(ZoUtmPoint::IsPositionInUtmSpace(Position(84, 0, 0)));
    EXPECT_FALSE(ZoUtmPoint::IsPositionInUtmSpace(Position(84.1, 0, 0)));
    EXPECT_FALSE(ZoUtmPoint::IsPositionInUtmSpace(Position(-80.1, 0, 0)));
    EXPECT_FALSE(ZoUtmPoint::IsPositionInUtmSpace(Position(nan, 0, 0)));
}

}  // namespace
