#pragma once

#include <cstdint>
#include <vector>

#include "zorv/cloud/point_cloud.h"
#include "zorv/export.h"

/// What reads have loaded. One result may be given to several reads in a row: clouds and points add up, the error is
/// that of the last failure.
struct ZORV_API ZoPointCloudReadResult {
    /// Takes note of a cloud; null does nothing.
    void Add(ZoPointCloud* cloud) {
        if (!cloud) return;
        clouds.push_back(cloud);
        points += cloud->Size();
    }

    int error = 0;                      ///< 0 when nothing went wrong
    std::uint64_t points = 0;           ///< of all clouds loaded
    std::vector<ZoPointCloud*> clouds;  ///< owned by the container that read them
};
