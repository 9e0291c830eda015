#include "zorv/geodesy/gauss_krueger.h"

#include <iterator>

#include "zorv/core/string_tools.h"

namespace {

struct Preset {
    const char* name;
    int degrees;
    int minutes;
    double falseEasting;
    double falseNorthing;
};

constexpr Preset kPresets[] = {
    {"\xC3\x96sterreich M28", 10, 20, 150000.0, -5000000.0},
    {"\xC3\x96sterreich M31", 13, 20, 450000.0, -5000000.0},
    {"\xC3\x96sterreich M34", 16, 20, 750000.0, -5000000.0},
};

const Preset* Find(int index) {
    return index >= 0 && index < ZoGKSettings::GetMaxDefault() ? &kPresets[index] : nullptr;
}

}  // namespace

ZoGKSettings& ZoGKSettings::Get() {
    static ZoGKSettings settings;
    return settings;
}

int ZoGKSettings::GetMaxDefault() {
    return static_cast<int>(std::size(kPresets));
}

std::string ZoGKSettings::GetDefault(int index) {
    const Preset* preset = Find(index);
    if (!preset) return {};
    return StringPrintf("%s %d\xC2\xB0 %d' %.0f %.0f ", preset->name, preset->degrees, preset->minutes,
                        preset->falseEasting, preset->falseNorthing);
}

bool ZoGKSettings::SetToDefault(int index) {
    const Preset* preset = Find(index);
    if (!preset) return false;
    meridian = DegMinSec(preset->degrees, preset->minutes, 0.0);
    falseEasting = preset->falseEasting;
    falseNorthing = preset->falseNorthing;
    return true;
}
