#include "photo_picture.h"

#include "drawing.h"

namespace {

const char* const kMeasured = "#008055";
const char* const kResidual = "#b10027";
const char* const kRegion = "#1f5fbf";
const char* const kOutline = "#000";
constexpr double kEnlarge = 200;  // of residuals

void Outline(Drawing& drawing, std::vector<Place> corners, const char* colour) {
    if (corners.empty()) return;
    corners.push_back(corners.front());
    drawing.Polyline(corners, colour);
}

}  // namespace

std::string DrawPhoto(const ZoPhoto& photo, const std::vector<Sight>& sights) {
    const ZoRegion& image = photo.GetDigiRegion();
    const double height = image.Height();
    Drawing drawing(860, 640);
    drawing.ShowTrue({image.Left(), image.Bottom()}, {image.Right(), image.Top()});
    drawing.Grid();
    Outline(drawing,
            {{image.Left(), image.Bottom()},
             {image.Right(), image.Bottom()},
             {image.Right(), image.Top()},
             {image.Left(), image.Top()}},
            kOutline);
    for (const ZoElspTrafo* each = photo.FirstElspTrafo(); each; each = each->NextConst()) {
        ZoPointList corners(each->GetRegion().GetPoints());
        photo.ConvertList(&corners, eBikoToDigi);
        std::vector<Place> outline;
        for (const ZoPoint* corner = corners.First(); corner; corner = corner->NextConst())
            outline.push_back({corner->x, corner->y});
        Outline(drawing, outline, kRegion);
    }
    for (const Sight& sight : sights) {
        const Place place{sight.column, height - sight.row};
        drawing.Dot(place, kMeasured);
        drawing.Arrow(place,
                      {place.x + kEnlarge * (sight.computedColumn - sight.column),
                       place.y - kEnlarge * (sight.computedRow - sight.row)},
                      kResidual);
        drawing.Label(place, std::to_string(sight.point));
    }
    drawing.Legend(
        {{"measured", kMeasured}, {"residual, 200 times enlarged", kResidual}, {"rectified region", kRegion}});
    drawing.Title("Pixels, y up: " + wstring2string(photo.GetName(), false));
    return drawing.Svg();
}

std::string DrawSite(const ZoPhotoList& photos, const ZoPointList& points) {
    std::vector<Place> places;
    for (const ZoPoint* point = points.First(); point; point = point->NextConst())
        places.push_back({point->x, point->y});
    for (const ZoPhoto* photo = photos.First(); photo; photo = photo->NextConst())
        places.push_back({photo->GetPosAOR()[1], photo->GetPosAOR()[2]});
    const Extent extent = ExtentOf(places);
    Drawing drawing(860, 640);
    drawing.ShowTrue({extent.low.x - 1, extent.low.y - 1}, {extent.high.x + 1, extent.high.y + 1});
    drawing.Grid();
    for (const ZoPhoto* photo = photos.First(); photo; photo = photo->NextConst()) {
        const Place station{photo->GetPosAOR()[1], photo->GetPosAOR()[2]};
        // The left and right edges of the image at mid height, as far as the facade.
        const ZoRegion& image = photo->GetBikoRegion();
        for (const double x : {image.Left(), image.Right()}) {
            ZoPoint edge(0, x, 0.0, 0.0, 0);
            photo->ConvertBiko(&edge, eBikoToImage);
            ZoPoint end;
            photo->CalcRayEndPoint(&end, &edge, photo->GetMinCooDistance());
            drawing.Line(station, {end.x, end.y}, kRegion);
        }
        drawing.Dot(station, kRegion, 4);
        drawing.Label(station, "photo " + std::to_string(photo->GetId()));
    }
    for (const ZoPoint* point = points.First(); point; point = point->NextConst())
        drawing.Dot({point->x, point->y}, kMeasured);
    drawing.Legend({{"surveyed point", kMeasured}, {"station and edges of its image", kRegion}});
    drawing.ScaleBar("m");
    drawing.NorthArrow();
    return drawing.Svg();
}
