#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "zorv/core/list_node.h"
#include "zorv/export.h"
#include "zorv/math/region.h"
#include "zorv/points/point_list.h"

class ZoPhoto;
class ZoReaderObject;

/// A reseau: the reference marks of a photo at their nominal image coordinates, in mm, y up. The marks are the crosses
/// of a reseau plate, or for a digital camera the four corners of the sensor with the ids 11 upper left, 12 upper
/// right, 21 lower left, 22 lower right.
///
/// Its name is the name of its file, or of the camera; the record's id is no key. The control flags of a mark hold its
/// kind.
class ZORV_API ZoReseauFile : public TZoListnode<ZoReseauFile> {
  public:
    /// Kinds of marks.
    static constexpr short kSmallCross = 0;
    static constexpr short kBigCross = 1;
    static constexpr short kCorner = 2;
    /// Marks of a digital camera.
    static constexpr int kDigitalMarks = 4;

    ZoReseauFile() = default;
    /// Reads the file.
    explicit ZoReseauFile(const std::wstring& fileName) { ReadFile(fileName); }
    /// A record for a photo without a reseau: valid, without marks, with the photo's regions and the name of its image.
    explicit ZoReseauFile(const ZoPhoto* photo);
    ZoReseauFile(const ZoReseauFile&) = default;
    ZoReseauFile& operator=(const ZoReseauFile&) = default;

    /// Takes the file's name as its own and reads the file. Returns 1; read errors are logged, and `valid` tells
    /// whether data came.
    int ReadFile(const std::wstring& fileName);
    /// Text form: the comment, a block with the photo region, one with that of the comment, then a block for each mark
    /// up to the end of the data. Returns 1; throws ZoParserStatus at anything else, the marks before it stay.
    long Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
    static std::ostream& WriteHeaderComment(std::ostream& stream);

    /// One record of the list of digital cameras: name, number, comment, image size in pixels, sensor size in mm.
    /// Returns 1; throws ZoParserStatus, then nothing changes.
    long ReadDigitalCameraFormat(ZoReaderObject* object);
    /// Writes what it takes, one line; nothing unless the reseau has just four marks. A size that is not finite
    /// becomes 0.
    std::ostream& WriteDigitalCameraFormat(std::ostream& stream) const;

    /// The four corners of a sensor centred on the origin, in mm, and a photo region 5 % larger.
    void CreateDigitalFormat(int pixelWidth, int pixelHeight, double width, double height);
    /// The four corners of the image coordinates' region. Expects a record without marks; the place of the comment
    /// stays.
    void CreateDigitalFormat(const ZoRegion& pixelRegion, const ZoRegion& bikoRegion);
    /// Nine crosses on a plate of 40 by 28 mm, unless there is data already.
    void GenerateDummyData();

    /// The mark nearest to a point (mm), null when there is none; `distance` receives how far it is, unless null.
    ZoPoint* FindNearest(const ZoPoint& point, double* distance) const;
    /// The ids of the marks nearest to the lower left and the upper right corner of the photo region; an id stays when
    /// there is no mark. Returns whether the second was found.
    bool FindCrossId(unsigned int& id1, unsigned int& id2) const;
    /// Selects the marks with these ids, and no others, and returns how many there are. Null or a count of 0 gives 0
    /// and changes nothing.
    int SelectCross(const unsigned int* ids, int count);
    /// The ids of the selected marks, at most `max` of them; returns how many.
    int FindUserSelectedCrosses(unsigned int* ids, int max) const;

    /// Extent of the marks in mm; -20000 without marks.
    double GetReseauWidth() const;
    double GetReseauHeight() const;
    double GetReseauArea() const { return GetReseauWidth() * GetReseauHeight(); }
    /// Number of pixels, counted in 32 bits.
    double GetCCDMPixel() const;
    /// Mean size of a pixel in mm; 1e-6 when the image size is unknown.
    double GetCCDPixelSize() const;
    /// Text for a list of reseaus: the name and, for a digital camera, number and image size.
    std::wstring GetDescName() const;

    const ZoRegion& GetPhotoRegion() const { return photoRegion; }
    void SetPhotoRegion(const ZoRegion& region) { photoRegion = region; }
    const ZoRegion& GetBoxRegion() const { return boxRegion; }
    void SetBoxRegion(const ZoRegion& region) { boxRegion = region; }
    const std::wstring& GetComment() const { return comment; }
    void SetComment(const std::wstring& text) { comment = text; }
    unsigned int GetSubId() const { return subId; }
    void SetSubId(unsigned int value) { subId = value; }
    int GetExifPixelWidth() const { return exifPixelWidth; }
    void SetExifPixelWidth(int pixels) { exifPixelWidth = pixels; }
    int GetExifPixelHeight() const { return exifPixelHeight; }
    void SetExifPixelHeight(int pixels) { exifPixelHeight = pixels; }
    ZoPointList& GetCrossList() { return crossList; }
    const ZoPointList& GetCrossList() const { return crossList; }
    bool IsValid() const { return valid; }

    std::uint32_t subId = 0;  ///< second key beside the name, 0 for none
    std::wstring comment;
    ZoRegion photoRegion;
    ZoRegion boxRegion;  ///< where a graphical view shows the comment
    ZoPointList crossList;
    bool valid = false;
    std::int32_t exifPixelWidth = 0;  ///< 0 when unknown
    std::int32_t exifPixelHeight = 0;

  private:
    /// Appends upper left, upper right, lower left, lower right, and returns the first.
    ZoPoint* AddCorners(double left, double bottom, double right, double top);
    /// Gives four marks in that order their ids and their kind.
    static void NumberCorners(ZoPoint* upperLeft);
};
