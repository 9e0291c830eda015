#include "zorv/rectify/rectification.h"

ZoElspTrafo::ZoElspTrafo() {
    for (ZoMatrix* m : {&elspMat, &transMat, &invElspMat, &invTransMat})
        m->SetIdent();
}

ZoElspTrafo::ZoElspTrafo(CZipWrapper* archive) : ZoElspTrafo() {
    ReadV9(archive);
}

ZoElspTrafo::ZoElspTrafo(ZoReaderObject* object, bool oldForm) : ZoElspTrafo() {
    if (!oldForm) {
        Read(object);
        return;
    }
    ReadV50(object);
    SetRegionActive(true);
    SetDistortCameraFlag(false);
}

ZoElspTrafo::ZoElspTrafo(const ZoElspTrafo& other) : ZoElspTrafo() {
    *this = other;
    distortCamera.flags = other.distortCamera.flags;
}

ZoElspTrafo& ZoElspTrafo::operator=(const ZoElspTrafo& other) {
    if (this == &other) return *this;
    TZoFlagNode<ZoElspTrafo>::operator=(other);
    elspMat = other.elspMat;
    transMat = other.transMat;
    ppList = other.ppList;
    bikoList = other.bikoList;
    parallelDef = other.parallelDef;
    region = other.region;
    invElspMat = other.invElspMat;
    invTransMat = other.invTransMat;
    invValid = other.invValid;
    SetDistortCameraParam(other.distortCamera);
    autoConnect = other.autoConnect;
    bikoList.mode = ZOPolygon2dId;
    ppList.mode = ZOPolygon3dId;
    parallelDef.SetPoints(&bikoList.Points);
    return *this;
}

bool ZoElspTrafo::SwitchFlag(int mask, bool on) {
    on ? SetFlag(mask) : ClearFlag(mask);
    return on;
}

void ZoElspTrafo::SetElspMat(const ZoMatrix& m) {
    if (elspMat.AssignSameShape(m)) invValid = false;
}

void ZoElspTrafo::SetTransMat(const ZoMatrix& m) {
    if (transMat.AssignSameShape(m)) invValid = false;
}

void ZoElspTrafo::SetDistortCameraParam(const ZoCamera& camera) {
    if (&camera == &distortCamera) return;
    distortCamera.DeleteCamPair();
    distortCamera = camera;
}

bool ZoElspTrafo::Transform(const ZoPoint* in, ZoPoint* out) const {
    *out = *in;
    if (CompensateDistortion()) distortCamera.Adjust(&out->x, &out->y);
    elspMat.PTrans2D(&out->x, &out->y);
    transMat.PTrans3D(&out->x, &out->y, &out->z);
    return true;
}

int ZoElspTrafo::Transform(ZoPointList* list) const {
    int points = 0;
    for (ZoPoint* point = list ? list->First() : nullptr; point; point = point->Next(), ++points)
        Transform(point, point);
    return points;
}

bool ZoElspTrafo::InvTransform(ZoPoint* point) const {
    if (!invValid) {
        invElspMat = elspMat;
        invTransMat = transMat;
        invElspMat.Invert();
        invTransMat.Invert();
        invValid = true;
    }
    invTransMat.PTrans3D(&point->x, &point->y, &point->z);
    invElspMat.PTrans2D(&point->x, &point->y);
    if (CompensateDistortion()) distortCamera.InvAdjust(&point->x, &point->y);
    return true;
}

bool ZoElspTrafo::InvTransform(const ZoPoint* in, ZoPoint* out) const {
    *out = *in;
    return InvTransform(out);
}

ZoPolygon ZoElspTrafo::RectifiedRegion() const {
    ZoPolygon rectified(region);
    if (CompensateDistortion()) distortCamera.Adjust(&rectified.Points);
    Transform2D(&rectified.Points, elspMat);
    return rectified;
}

double ZoElspTrafo::Area() const {
    return RectifiedRegion().Area(true);
}

double ZoElspTrafo::Length() const {
    return RectifiedRegion().Length(true);
}

int ZoElspTrafo::Overlap(ZoPoint* point) const {
    return point && region.Overlap(*point) ? 1 : 0;
}

unsigned int HasElspRegion(const ZoObject* rectification) {
    return rectification && static_cast<const ZoElspTrafo*>(rectification)->HasRegion() ? 1 : 0;
}

unsigned int IsElspActive(const ZoObject* rectification) {
    return rectification && static_cast<const ZoElspTrafo*>(rectification)->IsActive() ? 1 : 0;
}
