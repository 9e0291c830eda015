#pragma once

#include "zorv/core/id_table.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/photo/photo.h"

/// A photo that stands for a grid of single images, the tiles of a panorama: a table of their photo ids, column by
/// column in each row, the rows counted from the top.
///
/// Positions in the mosaic are pixels with y upwards, but for GetPixelRegion, where y runs down. A tile index is
/// column + row * number of columns.
class ZORV_API ZoPhotoVivaPano : public ZoPhoto {
  public:
    explicit ZoPhotoVivaPano(unsigned int number);
    ZoPhotoVivaPano(unsigned int number, const std::wstring& fileName);
    /// These two read at once; the second throws what Read throws.
    explicit ZoPhotoVivaPano(CZipWrapper* archive);
    explicit ZoPhotoVivaPano(ZoReaderObject* object);
    /// The result of FindPhotoAndPixelXY is not copied; assignment takes it.
    ZoPhotoVivaPano(const ZoPhotoVivaPano& other);
    ZoPhotoVivaPano& operator=(const ZoPhotoVivaPano& other);
    ~ZoPhotoVivaPano() override = default;

    bool IsVivaPanorama() const override { return true; }
    /// Keyword form of id, name, comment, window, tiles and table; a line for each.
    std::ostream& Write(std::ostream& stream) const override;
    /// Reads what Write writes, in any order. The panorama is then digital, active and oriented. Returns 1; throws
    /// ZoParserStatus.
    int Read(ZoReaderObject* object) override;
    using ZoPhoto::GetDigiRegion;
    /// Extent of the mosaic, computed from the tiles when it has no width yet; it stays when the tiles change.
    virtual const ZoRegion& GetDigiRegion() const;

    /// Clears the tiles' sizes and the result of FindPhotoAndPixelXY; the table stays.
    void Init();
    const ZoIdTable2D& GetPhotoIdTable() const { return photoIdTable; }
    ZoIdTable2D& GetPhotoIdTable() { return photoIdTable; }
    void SetPhotoIdTable(const ZoIdTable2D& table) { photoIdTable = table; }
    int GetTileSizeX() const { return tileSizeX; }
    void SetTileSizeX(int pixels) { tileSizeX = pixels; }
    int GetTileSizeY() const { return tileSizeY; }
    void SetTileSizeY(int pixels) { tileSizeY = pixels; }
    int GetFrame() const { return frame; }
    void SetFrame(int pixels) { frame = pixels; }

    /// Length of a row of tiles with the gaps between them.
    static int CalcTotalPixel(int tiles, int tileSize, int frameWidth);
    bool ContainsPhoto(unsigned int number) const;
    /// Whether the tiles of two photos are fewer than `distance` columns and rows apart. False for a photo that is not
    /// in the table.
    bool AreSideBySide(unsigned int id1, unsigned int id2, int distance) const;
    /// The pixels of a tile, y down. True; false, with nothing written, for an empty table.
    bool GetPixelRegion(int index, int& x1, int& y1, int& x2, int& y2) const;
    /// Writes where a tile begins into the translation column of a 3 by 3 matrix: its lower edge, or with flipRows the
    /// total height less that. True; false, with nothing written, for an empty table or another shape.
    bool CalcOffset(int index, ZoMatrix& matrix, bool flipRows) const;
    /// Which tile holds a position and where in the tile it is. False in a gap and outside; the pixel may have changed
    /// then.
    bool FindPhotoAndPixelXY(double x, double y);
    unsigned int GetFoundPhotoId() const { return foundPhotoId; }
    double GetFoundPixelX() const { return foundPixelX; }
    double GetFoundPixelY() const { return foundPixelY; }

    /// Archive record: ZoObject, flags, comment, window, tiles, table.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    std::int32_t tileSizeX = 0;  ///< pixels
    std::int32_t tileSizeY = 0;
    std::int32_t frame = 0;  ///< width of the gap between neighbouring tiles
    ZoIdTable2D photoIdTable;
    std::uint32_t foundPhotoId = 0;
    double foundPixelX = 0.0;
    double foundPixelY = 0.0;
};

/// The panoramas of a project, which the list owns.
class ZORV_API ZoVivaPanoList : public TZoListHeader<ZoPhotoVivaPano>, public LinkHdl {
  public:
    /// Reads a panorama from its block and appends it. Throws ZoParserStatus, then nothing is added.
    ZoPhotoVivaPano* AddPhoto(ZoReaderObject* object);
    /// Archive record: the number of panoramas (8 bytes), then theirs. Reading appends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;
};
