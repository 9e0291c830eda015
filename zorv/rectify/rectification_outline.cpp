// What a rectification needs of its photo: outline and size in the image.

#include "zorv/photo/photo.h"
#include "zorv/rectify/rectification.h"

double ZoElspTrafo::GetOriginalPixelArea(const ZoPhoto* photo) const {
    if (!photo || !photo->IsDigital() || !photo->IsActive()) return 0.0;
    ZoPolygon stored(region);
    photo->ConvertList(&stored.Points, eBikoToDigi);
    return stored.Area(true);
}

int ZoGetElspBikoPoints(ZoPointList& out, ZoPhoto* photo, ZoElspTrafo* rectification) {
    constexpr int kPartsOfSide = 9;
    if (rectification && rectification->HasRegion()) return rectification->GetRegion().GetPoints().CopyTo(&out);
    if (!photo) return 0;
    ZoPointList corners(ZoPolygon(photo->GetDigiRegion()).GetPoints());
    photo->ConvertList(&corners, eDigiToBiko);
    if (!rectification || !rectification->CompensateDistortion()) return corners.CopyTo(&out);

    int points = 0;
    for (const ZoPoint* corner = corners.First(); corner; corner = corner->NextConst()) {
        const ZoPoint* const next = corner->next ? corner->NextConst() : corners.First();
        const double stepX = (next->x - corner->x) / kPartsOfSide;
        const double stepY = (next->y - corner->y) / kPartsOfSide;
        ZoPoint point(*corner);
        for (int part = 0; part < kPartsOfSide; ++part, ++points) {
            out.Add(point);
            point.x += stepX;
            point.y += stepY;
        }
    }
    out.Renumber(1, nullptr, 1);
    return points;
}
