#pragma once

#include <string>
#include <vector>

#include <zorv/zorv.h>

/// A measurement with what the computation says of it, in pixels with the rows from the top.
struct Sight {
    unsigned int point = 0;
    double column = 0;
    double row = 0;
    double computedColumn = 0;  ///< where the surveyed point projects to
    double computedRow = 0;
    ZoPoint object;        ///< where the ray meets the plane
    double offSurvey = 0;  ///< distance of it from the surveyed point, metres
};

/// The image with its outline, its measurements, their residuals as arrows, and the rectified region.
std::string DrawPhoto(const ZoPhoto& photo, const std::vector<Sight>& sights);

/// The site from above: the stations with their fields of view, the surveyed points and the rays.
std::string DrawSite(const ZoPhotoList& photos, const ZoPointList& points);
