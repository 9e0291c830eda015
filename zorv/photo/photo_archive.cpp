// The archive form of a photo.

#include "zorv/core/archive.h"
#include "zorv/core/shaped_value.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/photo_geometry.h"

void ZoPhoto::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    archive->Read(&comment);
    archive->ReadValue(activeFlag);
    archive->ReadValue(layer);
    archive->ReadValue(rotation);
    archive->ReadValue(hasAOR);
    archive->ReadValue(scale);
    archive->ReadValue(pixelSize);
    archive->ReadValue(photoType);
    archive->ReadValue(digitizerId);
    digiRegion.ReadV9(archive);
    bikoRegion.ReadV9(archive);
    camera.ReadV9(archive);
    reseauData.ReadV9(archive);
    preTrafo.ReadV9(archive);
    mainTrafo.ReadV9(archive);
    polyInvTrafo.ReadV9(archive);
    zorv::detail::ReadShaped(rotAOR, archive);
    zorv::detail::ReadShaped(posAOR, archive);
    elspList.ReadV9(archive);
    archive->ReadValue(lastElspId);
    archive->ReadValue(digPictPage);
    archive->ReadValue(digPictRot);
    screenPos.ReadV9(archive);
    archive->ReadValue(screenScale);
    archive->ReadValue(screenFlags);
    archive->Read(&tpsSetupId);
    pixelHeight = 0;
    fieldOfView.valid = false;
    zorv::detail::GiveReach(*this);
}

void ZoPhoto::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    archive->Write(comment);
    archive->WriteValue(activeFlag);
    archive->WriteValue(layer);
    archive->WriteValue(rotation);
    archive->WriteValue(hasAOR);
    archive->WriteValue(scale);
    archive->WriteValue(pixelSize);
    archive->WriteValue(photoType);
    archive->WriteValue(digitizerId);
    digiRegion.WriteV9(archive);
    bikoRegion.WriteV9(archive);
    camera.WriteV9(archive);
    reseauData.WriteV9(archive);
    preTrafo.WriteV9(archive);
    mainTrafo.WriteV9(archive);
    polyInvTrafo.WriteV9(archive);
    rotAOR.WriteV9(archive);
    posAOR.WriteV9(archive);
    elspList.WriteV9(archive);
    archive->WriteValue(lastElspId);
    archive->WriteValue(digPictPage);
    archive->WriteValue(digPictRot);
    screenPos.WriteV9(archive);
    archive->WriteValue(screenScale);
    archive->WriteValue(screenFlags);
    archive->Write(tpsSetupId);
}
