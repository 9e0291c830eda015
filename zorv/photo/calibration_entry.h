#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "zorv/core/flag.h"
#include "zorv/core/list.h"
#include "zorv/export.h"

/// Smallest, largest and mean value of a series; the mean is sum / count.
struct ZORV_API ZoMinMaxMeanValue {
    double minimum = std::numeric_limits<double>::max();
    double maximum = std::numeric_limits<double>::lowest();
    std::uint64_t count = 0;
    double sum = 0.0;
};

/// A calibration from which ZoCamera::SetFromCalibEntry sets up a digital camera.
class ZORV_API ZoCameraCalibEntry : public TZoFlagNode<ZoCameraCalibEntry> {
  public:
    // Not defaulted: `ZoCameraCalibEntry()` would clear the whole record before its members are set.
    ZoCameraCalibEntry() {}

    /// Maker, model, width, height, focal length with six decimals, key number with two digits, without separators.
    std::string GetKey() const;

    std::string maker;
    std::string model;
    std::uint64_t width = 0;  ///< image size in pixels
    std::uint64_t height = 0;
    double pixelSize = 0.0;             ///< mm
    double focalLength = 20.0;          ///< camera constant in mm
    bool flag0 = true;                  ///< for the host
    bool estimateFlag = false;          ///< raises the camera's libAutoFlags from 5 to 7
    bool flag2 = false;                 ///< for the host
    std::int32_t cameraMode = 0;        ///< mode of the camera when libAutoModel names none
    std::int32_t libAutoModel = 0;      ///< model number of the library camera
    std::int32_t keyNumber = 0;         ///< last part of the key
    std::int32_t reserved = 0;          ///< for the host
    ZoMinMaxMeanValue statistic;        ///< for the host
    std::vector<std::int32_t> indices;  ///< for the host
};

/// Calibrations, with four values for the host.
class ZORV_API ZoCameraCalibEntryList : public TZoListHeader<ZoCameraCalibEntry> {
  public:
    ZoCameraCalibEntryList() { SetDefaultValues(); }

    /// 1, 1, 1 and 0.
    void SetDefaultValues();

    std::int32_t calibValue1;
    std::int32_t calibValue2;
    std::int32_t calibValue3;
    std::int32_t calibValue4;
};
