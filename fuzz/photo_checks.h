#pragma once

// What can be done with every photo, whatever a file made of it.

#include "record_checks.h"

#include "zorv/math/line3d.h"
#include "zorv/photo/photo_list.h"

inline void UsePhoto(ZoPhoto& photo) {
    Require(photo.rotAOR.GetZeilen() == 3 && photo.rotAOR.GetSpalten() == 3 && photo.posAOR.GetSize() == 3);
    photo.CreateAutoLibCamera();
    photo.SetZorvLibAutoDataFromInternalData();
    // Inverse tables take their time and have a harness of their own.
    if (!photo.camera.GetCamPair()) photo.camera.SetPinholeCamera();
    for (int mode = 0; mode <= 14; ++mode) {
        ZoPoint point(1, 0.5, -7.0, 3.0, 0);
        ZoPoint inBulk(point);
        const bool isConverted = photo.ConvertBiko(&point, static_cast<eConvertBikoMode>(mode));
        const ZoBikoTransform transform(&photo, static_cast<eConvertBikoMode>(mode), false);
        Require(mode <= 8 || mode == 9 || transform.Transform(&inBulk) == isConverted);
    }
    photo.AddImo(ZoPoint(1, 0.5, -7.0, 0.0, 0), eDigiToBiko);
    photo.CopyImoToMeasure(1, eBikoToImage);
    ZoPlane plane;
    plane.C() = 1.0;
    ZoPoint found;
    const bool isFound = photo.CalcSip(&found, plane, 1, false);
    Require(isFound || photo.GetLastError() != 0);
    photo.SetBikoTransform(eDigiToImage, true);
    ZoLine3d ray;
    photo.CalcRayDirection(ray, 1.0, 2.0);
    ZoPointList coordinates;
    coordinates.Add(ZoPoint(1, 1.0, 2.0, 3.0, 0));
    ZoPhotoList list;
    list.Add(photo);
    list.First()->AddImo(ZoPoint(1, 0.5, -7.0, 0.0, 0), eDigiToBiko);
    ZoPhoto::CalcPhotoCooDistances(&list, &coordinates);
    Require(photo.CalcFieldOfViewPlanes() == photo.HasAOR());
    photo.IsViewIntersect(*list.First(), true);
    photo.IsInPhotoView(*coordinates.First(), true);
    double a = 0.0, b = 0.0, c = 0.0;
    photo.GetRotAOR(a, b, c);
    photo.GetPixelSize();
    photo.ExposureDistaceCCD_Group();
    ZoPhoto::GuiString(&photo, true);
    list.First()->RescaleTo(0.5);
    list.First()->RescaleTo(2.0, 3.0);
}
