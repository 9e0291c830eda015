#include "zorv/core/units.h"

#include <numbers>
#include <string>

#include "zorv/core/string_tools.h"

eZoUnit GetZoUnit(const wchar_t* text) {
    static constexpr struct {
        const wchar_t* part;
        eZoUnit unit;
    } kParts[] = {
        {L"\u00b5m", eZoUnitMicron}, {L"mm", eZoUnitMm},   {L"cm", eZoUnitCm},       {L"m", eZoUnitM},
        {L"ft", eZoUnitFoot},        {L"in", eZoUnitInch}, {L"pixel", eZoUnitPixel},
    };
    if (!text) return eZoUnitNone;
    const std::wstring searched = text;
    for (const auto& [part, unit] : kParts) {
        if (StringContainsNoCase(searched, part)) return unit;
    }
    return eZoUnitNone;
}

double GetUnitFactor(eZoUnit unit) {
    switch (unit) {
        case eZoUnitMm:
            return 0.001;
        case eZoUnitCm:
            return 0.01;
        case eZoUnitMicron:
            return 0.000001;
        case eZoUnitFoot:
            return 0.3048;
        case eZoUnitInch:
            return 0.0254;
        case eZoUnitDegree:
            return std::numbers::pi / 180.0;
        case eZoUnitGon:
            return std::numbers::pi / 200.0;
        default:
            return 1.0;
    }
}

double GetUnitFactor(eZoUnit from, eZoUnit to) {
    return GetUnitFactor(from) / GetUnitFactor(to);
}

void ConvertUnit(double* value, eZoUnit from, eZoUnit to) {
    if (value) *value *= GetUnitFactor(from, to);
}

double ConvertAngle(const double& value, eZoAngleUnit from, eZoAngleUnit to) {
    double radians = value;
    if (from == eZoAngleDegree) radians = value / 180.0 * std::numbers::pi;
    if (from == eZoAngleGon) radians = value / 200.0 * std::numbers::pi;
    if (to == eZoAngleDegree) return (radians / std::numbers::pi) * 180.0;
    if (to == eZoAngleGon) return (radians / std::numbers::pi) * 200.0;
    return radians;
}
