#include "site_position.h"

#include <cmath>

#include <zorv/zorv.h>

std::vector<std::vector<std::string>> SitePositionTable(double latitude, double longitude, double altitude) {
    static const struct {
        const char* name;
        DatumMode mode;
    } kModes[] = {
        {"latitude, longitude", eDatumLatLong},
        {"UTM", eDatumUtm},
        {"MGRS", eDatumMgrs},
        {"Gauss-Krueger", eDatumGK},
        {"UTM, device with exchanged angles", eDatumUtmSwapped},
        {"MGRS, exchanged", eDatumMgrsSwapped},
        {"Gauss-Krueger, exchanged", eDatumGKSwapped},
        {"UTM (second)", eDatumUtm2},
    };
    // A strip about the nearest meridian that a multiple of three degrees gives.
    ZoGKSettings& grid = ZoGKSettings::Get();
    grid.active = true;
    grid.meridian = DegMinSec(3.0 * std::round(longitude / 3.0));
    grid.falseEasting = 500000.0;
    grid.falseNorthing = 0.0;

    ZoGPSPosition position;
    position.SetLatitude(latitude);
    position.SetLongitude(longitude);
    position.SetAltitude(altitude);
    std::vector<std::vector<std::string>> rows{{"Form", "x", "y", "z", "text"}};
    for (const auto& [name, mode] : kModes) {
        const bool swapped = mode == eDatumUtmSwapped || mode == eDatumMgrsSwapped || mode == eDatumGKSwapped;
        ZoGPSPosition given(position);
        if (swapped) given.SwapLatLong();
        ZoGPSPosition::SetDatumMode(mode);
        ZoPoint point;
        given.GetAsZoPoint(point);
        const int decimals = mode == eDatumLatLong ? 7 : 3;
        rows.push_back({name, StringPrintf("%.*f", decimals, point.x), StringPrintf("%.*f", decimals, point.y),
                        StringPrintf("%.3f", point.z), wstring2string(point.GetName(), false)});
    }
    rows.push_back({"degrees, minutes, seconds", "", "", "", position.GetAsDMS()});
    return rows;
}
