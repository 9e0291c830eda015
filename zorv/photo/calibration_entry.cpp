#include "zorv/photo/calibration_entry.h"

#include "zorv/core/number_format.h"
#include "zorv/photo/camera.h"
#include "zorv/photo/library_mode.h"

std::string ZoCameraCalibEntry::GetKey() const {
    constexpr int kDecimals = 6;
    std::string key = maker + model + std::to_string(width) + std::to_string(height);
    zorv::detail::AppendFixed(key, focalLength, kDecimals);
    if (keyNumber >= 0 && keyNumber < 10) key += '0';
    return key + std::to_string(keyNumber);
}

void ZoCameraCalibEntryList::SetDefaultValues() {
    calibValue1 = 1;
    calibValue2 = 1;
    calibValue3 = 1;
    calibValue4 = 0;
}

void ZoCamera::SetFromCalibEntry(const ZoCameraCalibEntry* entry) {
    constexpr std::int32_t kFlags = 5;
    constexpr std::int32_t kFlagsToEstimate = 7;
    if (!entry) return;
    c = entry->focalLength;
    cViva = entry->focalLength;
    k1 = static_cast<double>(entry->width);
    k2 = static_cast<double>(entry->height);
    k3 = entry->pixelSize;
    k4 = k1 * 0.5;
    k5 = k2 * 0.5;
    mode =
        zorv::detail::ModeOfLibraryModel(entry->libAutoModel).value_or(static_cast<std::uint32_t>(entry->cameraMode));
    libAutoModel = entry->libAutoModel;
    libAutoFlags = entry->estimateFlag ? kFlagsToEstimate : kFlags;
}
