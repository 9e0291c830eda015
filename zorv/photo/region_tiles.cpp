#include "zorv/photo/region_tiles.h"

#include <algorithm>
#include <cmath>

#include "zorv/core/number_cast.h"
#include "zorv/photo/photo.h"

namespace {

int ClampedTile(double index, double count) {
    return std::clamp(zorv::detail::SaturatedInt(std::floor(index)), 0,
                      std::max(zorv::detail::SaturatedInt(count) - 1, 0));
}

}  // namespace

ZoPhotoRegionTiles::ZoPhotoRegionTiles(const ZoPhoto* photo, int columnCount, int rowCount) {
    if (!photo) return;
    const ZoRegion& region = photo->GetBikoRegion();
    width = region.Width();
    height = region.Height();
    halfWidth = width / 2;
    halfHeight = height / 2;
    columns = columnCount;
    rows = rowCount;
}

void ZoPhotoRegionTiles::GetFieldIndex(int& column, int& row, const ZoPoint* point) const {
    column = ClampedTile((point->x + halfWidth) * columns / width, columns);
    row = ClampedTile((point->y + halfHeight) * rows / height, rows);
}
