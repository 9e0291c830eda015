#include "zorv/photo/photo_geometry.h"

#include "zorv/photo/photo.h"

namespace zorv::detail {

std::optional<PhotoGeometry> GeometryOf(ZoPhoto* photo) {
    if (!photo) return std::nullopt;
    PhotoGeometry geometry;
    geometry.width = photo->digiRegion.Width();
    geometry.height = photo->digiRegion.Height();
    geometry.digiToBiko = photo->GetReseauTrafoMat();
    geometry.pixelsPerMm = [photo] { return photo->GetPhotoPixelScale(); };
    geometry.flippedDigiToBiko = [photo](double* x, double* y) {
        photo->SetBikoTransform(eDigiToBiko, true);
        double z = 0.0;
        photo->GetBikoTransform().Transform(x, y, &z);
    };
    return geometry;
}

void GiveReach(ZoPhoto& photo) {
    if (photo.camera.rmax == 0.0) photo.camera.rmax = photo.GetMaxBikoRadius();
}

}  // namespace zorv::detail
