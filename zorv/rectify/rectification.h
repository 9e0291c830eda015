#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/flag.h"
#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/math/polygon.h"
#include "zorv/photo/camera.h"
#include "zorv/rectify/definition_lines.h"

class CZipWrapper;
class ZoPhoto;
class ZoReaderObject;

/// A rectification: maps the measurements of one photo onto a flat part of the object.
///
/// Biko coordinates (mm) go by the projective matrix to the rectified plane and from there (z 0) by the spatial matrix
/// to the object system. The matrices come from the host. The inverse mapping keeps the inverted matrices in the
/// record, without a lock.
class ZORV_API ZoElspTrafo : public TZoFlagNode<ZoElspTrafo> {
  public:
    static constexpr int kActive = 0x0002;
    static constexpr int kRegionActive = 0x4000;
    static constexpr int kDistortCamera = 0x8000;

    ZoElspTrafo();
    /// These two read at once. With `oldForm` the second calls ReadV50 and puts the region in force; it throws what
    /// reading throws.
    explicit ZoElspTrafo(CZipWrapper* archive);
    ZoElspTrafo(ZoReaderObject* object, bool oldForm);
    /// The definition of a copy refers to the copy's own measured points.
    ZoElspTrafo(const ZoElspTrafo& other);
    ZoElspTrafo& operator=(const ZoElspTrafo& other);

    const ZoMatrix& GetElspMat() const { return elspMat; }
    ZoMatrix& GetElspMat() { return elspMat; }
    /// These two, unlike changes through the references, renew the inverse mapping. A matrix of another shape is not
    /// taken.
    void SetElspMat(const ZoMatrix& m);
    void SetTransMat(const ZoMatrix& m);
    const ZoMatrix& GetTransMat() const { return transMat; }
    ZoMatrix& GetTransMat() { return transMat; }
    ZoPolygon& GetPPList() { return ppList; }
    const ZoPolygon& GetPPList() const { return ppList; }
    ZoPolygon& GetBikoList() { return bikoList; }
    const ZoPolygon& GetBikoList() const { return bikoList; }
    ZoElspParallelDef& GetParallelDef() { return parallelDef; }
    const ZoElspParallelDef& GetParallelDef() const { return parallelDef; }
    ZoPolygon& GetRegion() { return region; }
    const ZoPolygon& GetRegion() const { return region; }
    ZoCamera& GetDistortCameraParam() { return distortCamera; }
    const ZoCamera& GetDistortCameraParam() const { return distortCamera; }
    /// Takes a copy with its camera pair; a former pair goes.
    void SetDistortCameraParam(const ZoCamera& camera);
    bool IsAutoConnect() const { return autoConnect; }

    bool IsActive() const { return IsFlagSet(kActive) != 0; }
    bool IsRegionActive() const { return IsFlagSet(kRegionActive) != 0; }
    bool GetDistortCameraFlag() const { return IsFlagSet(kDistortCamera) != 0; }
    /// These return the new state.
    bool SetActive(bool on) { return SwitchFlag(kActive, on); }
    bool SetRegionActive(bool on) { return SwitchFlag(kRegionActive, on); }
    bool SetDistortCameraFlag(bool on) { return SwitchFlag(kDistortCamera, on); }
    /// Whether distortion is taken out before the mapping.
    bool CompensateDistortion() const { return GetDistortCameraFlag() && distortCamera.GetId() != 0; }

    /// From Biko coordinates to the object system. True; a point that the matrices cannot map stays as it was.
    bool Transform(const ZoPoint* in, ZoPoint* out) const;
    /// In place; returns the number of points, 0 for null.
    int Transform(ZoPointList* list) const;
    /// From the object system to Biko coordinates. True.
    bool InvTransform(ZoPoint* point) const;
    bool InvTransform(const ZoPoint* in, ZoPoint* out) const;

    /// Area and closed length of the region in the rectified plane; -1 for a region of fewer than 3 or 2 points.
    double Area() const;
    double Length() const;
    /// The size of the region in pixels of the stored image, -1 for fewer than 3 points; 0 unless the photo is digital
    /// and active.
    double GetOriginalPixelArea(const ZoPhoto* photo) const;
    /// Whether the point (Biko) lies in the region, as ZoPolygon::Overlap tells.
    int Overlap(ZoPoint* point) const;
    bool HasRegion() const { return region.First() != nullptr; }
    bool IsByParallelDef() const { return parallelDef.HasData(); }

    /// Keyword form, up to the end of the block. Returns 1; throws ZoParserStatus.
    int Read(ZoReaderObject* object);
    /// The older form: a run of tokens without keywords. Returns 1; throws ZoParserStatus.
    int ReadV50(ZoReaderObject* object);
    /// Writes what Read takes.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: ZoObject, flags, both matrices, pass points, measured points, definition, region, both inverses,
    /// whether they are valid, autoConnect, camera. A matrix of another shape is not taken.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ZoMatrix elspMat{3, 3};             ///< Biko (mm) to the rectified plane
    ZoMatrix transMat{4, 4};            ///< rectified plane to the object system
    ZoPolygon ppList{ZOPolygon3dId};    ///< pass points of the definition, in the system of transMat
    ZoPolygon bikoList{ZOPolygon2dId};  ///< the same points as measured, Biko coordinates
    ZoElspParallelDef parallelDef{&bikoList.Points};
    ZoPolygon region;  ///< where the rectification holds, Biko coordinates; empty for the whole photo
    mutable ZoMatrix invElspMat{3, 3};
    mutable ZoMatrix invTransMat{4, 4};
    mutable bool invValid = false;
    ZoCamera distortCamera;  ///< whose distortion is taken out
    bool autoConnect = false;

  private:
    bool SwitchFlag(int mask, bool on);
    /// The region as it lies in the rectified plane.
    ZoPolygon RectifiedRegion() const;
};

/// The rectifications of a photo. Where regions overlap, the first one holds.
class ZORV_API ZoElspTrafoList : public TZoListHeader<ZoElspTrafo>, public LinkHdl {
  public:
    /// Reads a rectification from the tokens at hand and appends it. Returns 1; throws ZoParserStatus, then nothing is
    /// added.
    long AddTrafo(ZoReaderObject* object);
    /// The same with the older form.
    long AddTrafoV50(ZoReaderObject* object);
    /// Archive record: the number of rectifications (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};

/// Filter function for ZoTestFilter, on objects that are rectifications: 1 with a region, else 0.
ZORV_API unsigned int HasElspRegion(const ZoObject* rectification);
/// The same: 1 for an active rectification, else 0.
ZORV_API unsigned int IsElspActive(const ZoObject* rectification);

/// The outline of the rectified part of a photo in Biko coordinates, appended to `out`: the region, or without one the
/// corners of the image, each side cut into nine parts where distortion bends it. Returns the number of points.
ZORV_API int ZoGetElspBikoPoints(ZoPointList& out, ZoPhoto* photo, ZoElspTrafo* rectification);
