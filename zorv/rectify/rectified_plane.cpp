#include "zorv/rectify/rectified_plane.h"

#include "zorv/photo/photo.h"

ZoRectPlane::ZoRectPlane(ZoPhoto* source, ZoElspTrafo* rectification) : photo(source), elsp(rectification) {
    planeMatrix.SetIdent();
    digiToBiko.SetIdent();
    if (!photo || !elsp) {
        borderMatrix.SetIdent();
        return;
    }
    bikoTransform.Set(photo, eBikoToDigi, false);
    if (!bikoTransform.IsPolyTrafo()) {
        digiToBiko = bikoTransform.GetMatrix();
        digiToBiko.Invert();
    }
    CalcElspPolygonBiko();
}

unsigned int ZoRectPlane::GetPhotoId() const {
    return photo ? photo->GetId() : 0;
}

const ZoMatrix& ZoRectPlane::GetElspMat() const {
    static const ZoMatrix identity = ZoElspTrafo().GetElspMat();
    return elsp ? elsp->GetElspMat() : identity;
}

const ZoPolygon& ZoRectPlane::GetElspRangeBiko() const {
    static const ZoPolygon empty;
    return elsp ? elsp->GetRegion() : empty;
}

void ZoRectPlane::CalcElspPolygonBiko() {
    ZoGetElspBikoPoints(elspPolygon.Points, photo, elsp);
    elspPolygon.UpdateMinMax();
    ZoPoint low = elspPolygon.Min;
    ZoPoint high = elspPolygon.Max;
    photo->ConvertBiko(&low, eBikoToDigi);
    photo->ConvertBiko(&high, eBikoToDigi);
    pixelRect = ZoRegion(0.0, 0.0, high.x - low.x, high.y - low.y);
}

void ZoRectPlane::CalcElspBorder() {
    for (const ZoPoint* corner = elspPolygon.First(); corner; corner = corner->NextConst()) {
        ZoPoint point(*corner);
        if (elsp && elsp->CompensateDistortion()) elsp->GetDistortCameraParam().Adjust(&point.x, &point.y);
        borderMatrix.PTrans2D(&point.x, &point.y);
        AddPoint(point);
    }
}
