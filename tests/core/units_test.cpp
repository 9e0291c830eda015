#include "zorv/core/units.h"

#include <gtest/gtest.h>

namespace {

TEST(Units, TextsNameUnitsByTheirFirstSubstring) {
    struct {
        const wchar_t* text;
        eZoUnit unit;
    } const rows[] = {
        {L"Millimeter", eZoUnitM},  {L"Meter", eZoUnitM}, {L"[MM]", eZoUnitMm},   {L"5 \u00b5m", eZoUnitMicron},
        {L"Cm", eZoUnitCm},         {L"ft", eZoUnitFoot}, {L"inch", eZoUnitInch}, {L"Pixel", eZoUnitPixel},
        {L"pixel in", eZoUnitInch}, {L"", eZoUnitNone},   {L"gon", eZoUnitNone},  {nullptr, eZoUnitNone},
    };
    for (const auto& [text, unit] : rows)
        EXPECT_EQ(GetZoUnit(text), unit);
}

TEST(Units, FactorsAreLengthsInMetres) {
    EXPECT_EQ(GetUnitFactor(eZoUnitMm, eZoUnitM), 0.001);
    EXPECT_DOUBLE_EQ(GetUnitFactor(eZoUnitFoot, eZoUnitInch), 12.0);
    EXPECT_DOUBLE_EQ(GetUnitFactor(eZoUnitCm, eZoUnitMicron), 10000.0);
    EXPECT_DOUBLE_EQ(GetUnitFactor(eZoUnitGon, eZoUnitDegree), 0.9);
    EXPECT_EQ(GetUnitFactor(eZoUnitPixel), 1.0);
    EXPECT_EQ(GetUnitFactor(static_cast<eZoUnit>(99), eZoUnitNone), 1.0);
    double value = 2.5;
    ConvertUnit(&value, eZoUnitInch, eZoUnitMm);
    EXPECT_DOUBLE_EQ(value, 63.5);
    ConvertUnit(static_cast<double*>(nullptr), eZoUnitInch, eZoUnitMm);
}

TEST(Units, AnglesGoThroughRadians) {
    EXPECT_DOUBLE_EQ(ConvertAngle(200.0, eZoAngleGon, eZoAngleDegree), 180.0);
    EXPECT_DOUBLE_EQ(ConvertAngle(-90.0, eZoAngleDegree, eZoAngleRadian), -3.14159265358979323846 / 2);
    EXPECT_EQ(ConvertAngle(0.1, eZoAngleRadian, static_cast<eZoAngleUnit>(0)), 0.1);
}

}  // namespace
