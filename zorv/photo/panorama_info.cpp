#include "zorv/photo/panorama_info.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "zorv/core/debug_output.h"
#include "zorv/core/number_format.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/photo.h"

namespace {

double Number(const std::string& text) {
    const double value = zorv::detail::ParseDouble(text);
    return std::isfinite(value) ? value : 0.0;
}

}  // namespace

ZoVivaPanoInfo::ZoVivaPanoInfo(ZoPhoto* photo) {
    constexpr std::size_t kPartsOfImage = 7;
    constexpr std::size_t kPartsOfStitched = 5;
    constexpr std::size_t kDateSize = 6;
    if (!photo) return;
    std::wstring wideName = ZoGetFilename(photo->GetName());
    StringToLower(&wideName);
    const std::string name = wstring2string(wideName, false);
    if (name.find("img") == name.npos || name.find("pano") == name.npos) return;
    const ZoRegion& region = photo->GetDigiRegion();
    if (std::count(name.begin(), name.end(), '.') >= 2 || region.Width() >= kMaxImageWidth ||
        region.Height() >= kMaxImageHeigth) {
        isStitchedImage = true;
        return;
    }
    std::vector<std::string> parts = StringSplit(name, "_.");
    if (parts.size() >= kPartsOfImage) {
        photoId = photo->GetId();
        seriesIndex1 = zorv::detail::ParseInt(parts[3]);
        seriesIndex2 = zorv::detail::ParseInt(parts[2]);
        std::string& date = parts[4];
        if (date.size() >= kDateSize) {
            std::swap(date[0], date[4]);
            std::swap(date[1], date[5]);
        }
        dateKey = Number(date);
        timeKey = Number(parts[5]);
        isPanoImage = true;
    } else if (parts.size() == kPartsOfStitched) {
        isStitchedImage = true;
        dateKey = Number(parts[2]);
        timeKey = Number(parts[3]);
    }
}

bool ZoVivaPanoInfo::operator<(const ZoVivaPanoInfo& other) const {
    return std::tie(dateKey, timeKey) < std::tie(other.dateKey, other.timeKey);
}

void ZoVivaPanoInfo::dbgprintf(const char* prefix) const {
    ::dbgprintf("%s %.0f %.0f %03d %03d Id %d ", prefix ? prefix : "", dateKey, timeKey, seriesIndex1, seriesIndex2,
                static_cast<int>(photoId));
}
