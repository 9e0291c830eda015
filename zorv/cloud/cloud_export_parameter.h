#pragma once

#include <algorithm>

/// Settings that a host hands to its exporters. The eight options are the host's own.
struct ZoPointCloudExportParameter {
    void ValidateLasVersion() {
        lasMajor = 1;
        lasMinor = std::clamp(lasMinor, 0, 4);
    }
    void ValidateLasPrecision() { lasPrecision = std::clamp(lasPrecision, 0, 6); }
    void ValidateE57Precision() { e57Precision = std::clamp(e57Precision, 0, 6); }
    /// Brings all settings into their ranges.
    void Validate() {
        ValidateLasVersion();
        ValidateLasPrecision();
        ValidateE57Precision();
    }

    bool options[5] = {};
    int lasMajor = 1;
    int lasMinor = 4;
    int lasPrecision = 3;  ///< digits behind the point, 0 to 6
    int e57Precision = 4;
    bool furtherOptions[3] = {true, true, true};
};
