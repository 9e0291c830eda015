#include "zorv/photo/photo_rotation.h"

#include <cmath>
#include <utility>

#include "zorv/photo/photo.h"
#include "zorv/photo/reseau_matrix.h"

namespace {

constexpr double kQuarterTurn = 1.5707963267948966;
constexpr int kQuarters[] = {0, 3, 2, 1};  // by rotation index

}  // namespace

void ZoRotatePhotoBase::SetPhoto(ZoPhoto* source) {
    photo = source;
    oldRotation = source ? source->GetDigPictRot() : 0;
}

void ZoRotatePhotoBase::AdjustReseauOrElspTrafo(int, int rotationIndex) {
    if (!photo || rotationIndex < 1 || rotationIndex > 3) return;
    if (photo->IsOrthoPhoto() || photo->IsInactive()) return;
    const int quarters = kQuarters[rotationIndex];
    const double angle = quarters * kQuarterTurn;
    ZoMatrix turn(3, 3);
    turn.SetIdent();
    turn[1][1] = turn[2][2] = std::cos(angle);
    turn[2][1] = std::sin(angle);
    turn[1][2] = -turn[2][1];

    // The pixel of the Pre origin keeps its place relative to the centre of the image, which turns.
    ZoPoint preOrigin;
    photo->ConvertBiko(&preOrigin, ePreToDigi);
    const ZoPoint centre = photo->digiRegion.GetCenter();
    if (quarters != 2) {
        std::swap(photo->digiRegion.UR.x, photo->digiRegion.UR.y);
        photo->pixelHeight = 0;
    }
    double dx = centre.x - preOrigin.x;
    double dy = centre.y - preOrigin.y;
    turn.PTrans2D(&dx, &dy);
    const double sign = quarters == 2 ? -1.0 : 1.0;
    const ZoPoint newCentre = photo->digiRegion.GetCenter();
    double x = newCentre.x + sign * dx;
    double y = newCentre.y + sign * dy;

    const ZoMatrix turned = turn * zorv::detail::MatrixOf(photo->preTrafo);
    turned.PTrans2D(&x, &y);
    ZoMatrix shift(3, 3);
    shift.SetIdent();
    shift[1][3] = -x;
    shift[2][3] = -y;
    photo->preTrafo.SetFromMatrix(shift * turned, eTrafo2DHelmert);
}
