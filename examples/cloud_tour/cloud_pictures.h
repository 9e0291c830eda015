#pragma once

#include <string>
#include <vector>

#include "raster.h"
#include <zorv/zorv.h>

/// The cloud from above in its colours, shaded by the slope towards the light in the north-west; about 800 pixels wide.
Raster TopView(const ZoPointCloud& cloud);

/// How many points lie at which height.
struct HeightHistogram {
    explicit HeightHistogram(const ZoPointCloud& cloud);

    std::string Svg() const;

    double low = 0;
    double step = 1;  ///< metres a class
    std::vector<double> counts;
    std::vector<int> peaks;  ///< the heights that stand out, as classes
};
