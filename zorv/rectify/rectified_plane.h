#pragma once

#include "zorv/core/list_node.h"
#include "zorv/export.h"
#include "zorv/math/polygon.h"
#include "zorv/photo/image_transform.h"
#include "zorv/rectify/rectification.h"

/// A rectified part of a photo while an orthophoto is set up. The polygon that it is, is the outline on the rectified
/// plane, which CalcElspBorder fills. Photo and rectification stay the caller's and must outlive it.
///
/// The host sets borderMatrix (Biko to the plane of the outline) and planeMatrix (the affine map of the rectified plane
/// into the orthophoto's plane).
class ZORV_API ZoRectPlane : public TZoListnode<ZoRectPlane>, public ZoPolygon {
  public:
    /// Computes the outline in the image. Without photo or rectification it is empty and the matrices are identities.
    ZoRectPlane(ZoPhoto* source, ZoElspTrafo* rectification);
    ZoRectPlane(const ZoRectPlane&) = default;
    ZoRectPlane& operator=(const ZoRectPlane&) = default;

    ZoPhoto* GetPhoto() const { return photo; }
    /// 0 without a photo, or a rectification.
    unsigned int GetPhotoId() const;
    unsigned int GetElspId() const { return elsp ? elsp->GetId() : 0; }
    ZoElspTrafo* GetElspTrafo() const { return elsp; }
    /// Of the rectification; an identity and an empty polygon without one.
    const ZoMatrix& GetElspMat() const;
    const ZoPolygon& GetElspRangeBiko() const;
    int GetGroup() const { return group; }
    int SetGroup(int value) { return group = value; }
    const ZoPolygon& GetElspPolygon() const { return elspPolygon; }
    ZoRegion& PixelRect() { return pixelRect; }
    ZoMatrix& PlaneMatrix() { return planeMatrix; }
    const ZoMatrix& PlaneMatrix() const { return planeMatrix; }
    ZoMatrix& BorderMatrix() { return borderMatrix; }
    const ZoMatrix& DigiToBiko() const { return digiToBiko; }

    /// Adds the outline, without distortion and through borderMatrix, to this polygon.
    void CalcElspBorder();

    ZoPhoto* photo;
    ZoElspTrafo* elsp;
    std::int32_t group = 0;
    ZoPolygon elspPolygon;  ///< the outline in Biko coordinates
    ZoRegion pixelRect;     ///< its extent in pixels, from 0
    ZoBikoTransform bikoTransform;
    ZoMatrix digiToBiko{3, 3};
    ZoMatrix planeMatrix{3, 3};
    ZoMatrix borderMatrix{3, 3};
    ZoVector direction{0.0, 0.0, 0.0};  ///< the host's

  protected:
    void CalcElspPolygonBiko();
};
