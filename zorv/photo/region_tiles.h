#pragma once

#include "zorv/export.h"

class ZoPhoto;
class ZoPoint;

/// A raster over a photo's Biko region, by which points are grouped.
class ZORV_API ZoPhotoRegionTiles {
  public:
    ZoPhotoRegionTiles() = default;
    /// Takes the size of the photo's Biko region; null leaves an empty raster.
    ZoPhotoRegionTiles(const ZoPhoto* photo, int columnCount, int rowCount);
    virtual ~ZoPhotoRegionTiles() = default;

    /// The tile of a point in Biko coordinates, both clamped to the raster; the first tile for an empty one.
    void GetFieldIndex(int& column, int& row, const ZoPoint* point) const;

    double width = 0.0;  ///< mm
    double height = 0.0;
    double halfWidth = 0.0;
    double halfHeight = 0.0;
    double columns = 0.0;
    double rows = 0.0;
};
