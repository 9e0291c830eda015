#pragma once

#include <iosfwd>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/math/polygon.h"

class CZipWrapper;
class ZoReaderObject;
class ZoRectPlane;

/// One part of an orthophoto: which rectification of which photo it shows, where, and how its pixels lie in the object.
class ZORV_API ZoElspPlaneInfo : public TZoListnode<ZoElspPlaneInfo> {
  public:
    ZoElspPlaneInfo();
    /// These two read at once; the second throws what Read throws.
    explicit ZoElspPlaneInfo(CZipWrapper* archive);
    explicit ZoElspPlaneInfo(ZoReaderObject* object);
    /// From a part that is set up: `m` is the affine map (3 by 3) from orthophoto pixels to the system into which
    /// planeMatrix of the part takes its rectified plane.
    ZoElspPlaneInfo(ZoMatrix& m, ZoRectPlane* part);
    ZoElspPlaneInfo(const ZoElspPlaneInfo&) = default;
    ZoElspPlaneInfo& operator=(const ZoElspPlaneInfo&) = default;

    unsigned int GetPhotoId() const { return photoObject.GetId(); }
    unsigned int GetElspId() const { return elspObject.GetId(); }
    const ZoMatrix& GetTransformation() const { return transformation; }
    const ZoPolygon& GetRange() const { return range; }

    /// Whether a pixel of the orthophoto lies in this part.
    bool Overlap(const ZoPoint& pixel) const { return range.Overlap(pixel); }
    /// From a pixel of the orthophoto to the object system. True.
    bool Transform(ZoPoint* point) const;

    /// Keyword form, up to the end of the block. Returns 1; throws ZoParserStatus.
    int Read(ZoReaderObject* object);
    /// Writes what Read takes.
    std::ostream& Write(std::ostream& stream) const;
    /// Archive record: ZoObject, that of the photo, that of the rectification, transformation, range.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    ZoObject photoObject;  ///< id and name of the photo
    ZoObject elspObject;   ///< and of the rectification
    ZoMatrix transformation{4, 4};
    ZoPolygon range;  ///< the outline in pixels of the orthophoto
};

/// The rectified planes of an orthophoto, which the list owns.
class ZORV_API ZoElspPlaneInfoList : public TZoListHeader<ZoElspPlaneInfo>, public LinkHdl {
  public:
    /// Reads a part from the tokens at hand and appends it. Throws ZoParserStatus, then nothing is added.
    ZoElspPlaneInfo* AddPlane(ZoReaderObject* object);
    /// The first part that holds the pixel; null when there is none.
    ZoElspPlaneInfo* FindPlane(const ZoPoint& pixel) const;
    /// The first part of that photo and, unless 0, that rectification.
    ZoElspPlaneInfo* FindPlane(unsigned int photoId, unsigned int elspId) const;
    /// From a pixel of the orthophoto to the object system by the part that holds it; false when there is none.
    bool Transform(ZoPoint* point) const;
    /// Archive record: the number of parts (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};
