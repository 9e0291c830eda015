#pragma once

#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/photo/photo.h"
#include "zorv/rectify/orthophoto_part.h"

/// An image put together from rectified parts of photos. The host computes the image; this record tells how its pixels
/// lie in the object.
///
/// Pixels as shown differ from those of the computed image by the digital rotation and the mirroring.
class ZORV_API ZoOrthoPhoto : public ZoPhoto {
  public:
    static constexpr int kMirrorX = 1;
    static constexpr int kMirrorY = 2;

    explicit ZoOrthoPhoto(unsigned int number) : ZoPhoto(number) {}
    /// These two read at once; the second throws what Read throws.
    explicit ZoOrthoPhoto(CZipWrapper* archive);
    explicit ZoOrthoPhoto(ZoReaderObject* object);
    /// Copies take the parts too.
    ZoOrthoPhoto(const ZoOrthoPhoto& other);
    ZoOrthoPhoto& operator=(const ZoOrthoPhoto& other);
    ~ZoOrthoPhoto() override = default;

    bool IsOrthoPhoto() const override { return true; }
    /// 1, or 0 for an orthophoto without width: its ground resolution is the host's.
    double GetPixelSize() const override;
    /// Keyword form, up to the end of the block. Returns 1; throws ZoParserStatus.
    int Read(ZoReaderObject* object) override;
    /// Writes what Read takes.
    std::ostream& Write(std::ostream& stream) const override;

    ZoElspPlaneInfoList& ElspPlaneList() { return planeInfos; }
    const ZoElspPlaneInfoList& ElspPlaneList() const { return planeInfos; }
    int GetStatPixel() const { return statPixel; }
    void SetStatPixel(int pixels) { statPixel = pixels; }
    double GetStatTime() const { return statTime; }
    void SetStatTime(double time) { statTime = time; }
    ZoRegion& GetOrthoRegion() { return orthoRegion; }
    ZoRegion GetOrthoRegion() const { return orthoRegion; }
    void SetOrthoRegion(const ZoRegion& region) { orthoRegion = region; }
    double GetMaxAngle() const { return maxAngle; }
    void SetMaxAngle(double angle) { maxAngle = angle; }
    int GetMirrorInfo() const { return mirror; }
    void ToggleMirrorX() { mirror ^= kMirrorX; }
    void ToggleMirrorY() { mirror ^= kMirrorY; }

    /// From pixels of the computed image to pixels as shown. Adds a pixel on each axis that it turns around, which
    /// InvAdjustPixelRotation does not take off: the two are no exact inverses.
    void AdjustPixelRotation(ZoPoint* point) const;
    void AdjustPixelRotation(ZoPointList* list) const;
    /// From pixels as shown to those of the computed image.
    void InvAdjustPixelRotation(ZoPoint* point) const;
    /// From a pixel as shown to the object system. A single part serves for the whole image. False for null, and, with
    /// the point in pixels of the computed image, where no part lies.
    bool Transform(ZoPoint* point) const;
    /// The corners of the image in the object system by the first part, lower left first, counter-clockwise. False, and
    /// nothing changes, without a part.
    bool GetImageCorners(ZoPoint* p1, ZoPoint* p2, ZoPoint* p3, ZoPoint* p4) const;

    /// Archive record: ZoObject, flags, comment, the numbers, both regions, the parts.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ZoElspPlaneInfoList planeInfos;
    std::int32_t statPixel = 0;
    double statTime = 1.0;
    ZoRegion orthoRegion;  ///< extent in the orthophoto's object coordinates
    double maxAngle = 9.0;
    std::int32_t mirror = 0;
};

/// The orthophotos of a project, which the list owns.
class ZORV_API ZoOrthoPhotoList : public TZoListHeader<ZoOrthoPhoto>, public LinkHdl {
  public:
    /// Reads an orthophoto from its block and appends it. Throws ZoParserStatus, then nothing is added.
    ZoOrthoPhoto* AddPhoto(ZoReaderObject* object);
    /// Archive record: the number of orthophotos (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};
