#include "zorv/photo/panorama.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <ostream>

#include "zorv/core/archive_list.h"
#include "zorv/core/block_keywords.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_conversion.h"
#include "zorv/core/text_writer.h"

namespace {

/// id, an empty name, flags, an empty comment, of the window the fields behind id and name, the numbers of the table.
constexpr std::size_t kSmallestRecord = 4 + 2 + 4 + 2 + 5 * 4 + 2 * 8;

/// Integers of 32 bits as a host hands them over: sums and products wrap around.
class Pixels {
  public:
    explicit Pixels(int number) : value(static_cast<std::uint32_t>(number)) {}
    Pixels operator+(Pixels b) const { return Wrapped(value + b.value); }
    Pixels operator-(Pixels b) const { return Wrapped(value - b.value); }
    Pixels operator*(Pixels b) const { return Wrapped(value * b.value); }
    operator int() const { return static_cast<int>(value); }

  private:
    static Pixels Wrapped(std::uint32_t number) { return Pixels(static_cast<int>(number)); }
    std::uint32_t value;
};

struct Tile {
    int column = 0;
    int row = 0;
};

Tile TileOf(int index, int columns) {
    return {index % columns, index / columns};
}

/// The running index of the first tile of a photo; -1 when there is none.
int Find(const ZoIdTable2D& table, unsigned int photo) {
    const auto& ids = table.table.data;
    const auto found = std::find(ids.begin(), ids.end(), photo);
    return found == ids.end() ? -1 : static_cast<int>(found - ids.begin());
}

/// Where a position lies along one axis: the tile and the position inside. False in a gap and behind the last tile.
bool Locate(double position, int tileSize, int frame, int tiles, int& tile, double& inside) {
    const double step = static_cast<double>(tileSize) + frame;
    if (!std::isfinite(position) || step <= 0.0) return false;
    tile = 0;
    inside = position;
    if (tileSize > position) return true;
    double end = tileSize;
    while (position > end) {
        if (end + frame > position) return false;
        if (++tile >= tiles) return false;
        end += step;
    }
    inside = position - end + tileSize;
    return true;
}

}  // namespace

ZoPhotoVivaPano::ZoPhotoVivaPano(unsigned int number) : ZoPhoto(number) {}

ZoPhotoVivaPano::ZoPhotoVivaPano(unsigned int number, const std::wstring& fileName) : ZoPhoto(number, fileName) {}

ZoPhotoVivaPano::ZoPhotoVivaPano(CZipWrapper* archive) : ZoPhoto(0u) {
    ReadV9(archive);
}

ZoPhotoVivaPano::ZoPhotoVivaPano(ZoReaderObject* object) : ZoPhoto(0u) {
    ZoPhotoVivaPano::Read(object);
}

ZoPhotoVivaPano::ZoPhotoVivaPano(const ZoPhotoVivaPano& other)
    : ZoPhoto(other),
      tileSizeX(other.tileSizeX),
      tileSizeY(other.tileSizeY),
      frame(other.frame),
      photoIdTable(other.photoIdTable) {}

ZoPhotoVivaPano& ZoPhotoVivaPano::operator=(const ZoPhotoVivaPano& other) = default;

void ZoPhotoVivaPano::Init() {
    tileSizeX = tileSizeY = frame = 0;
    foundPhotoId = 0;
    foundPixelX = foundPixelY = 0.0;
}

const ZoRegion& ZoPhotoVivaPano::GetDigiRegion() const {
    if (digiRegion.Width() == 0.0) {
        digiRegion.Set(0.0, 0.0, CalcTotalPixel(photoIdTable.table.SizeX(), tileSizeX, frame),
                       CalcTotalPixel(photoIdTable.table.SizeY(), tileSizeY, frame));
    }
    return digiRegion;
}

int ZoPhotoVivaPano::CalcTotalPixel(int tiles, int tileSize, int frameWidth) {
    const Pixels count(tiles);
    return (count - Pixels(1)) * Pixels(frameWidth) + count * Pixels(tileSize);
}

bool ZoPhotoVivaPano::ContainsPhoto(unsigned int number) const {
    return Find(photoIdTable, number) >= 0;
}

bool ZoPhotoVivaPano::AreSideBySide(unsigned int id1, unsigned int id2, int distance) const {
    const int index1 = Find(photoIdTable, id1);
    const int index2 = Find(photoIdTable, id2);
    if (index1 < 0 || index2 < 0) return false;
    const Tile a = TileOf(index1, photoIdTable.table.SizeX());
    const Tile b = TileOf(index2, photoIdTable.table.SizeX());
    return std::abs(a.column - b.column) < distance && std::abs(a.row - b.row) < distance;
}

bool ZoPhotoVivaPano::GetPixelRegion(int index, int& x1, int& y1, int& x2, int& y2) const {
    if (photoIdTable.table.SizeX() <= 0) return false;
    const Tile tile = TileOf(index, photoIdTable.table.SizeX());
    x1 = (Pixels(tileSizeX) + Pixels(frame)) * Pixels(tile.column);
    x2 = Pixels(x1) + Pixels(tileSizeX);
    y1 = (Pixels(tileSizeY) + Pixels(frame)) * Pixels(tile.row);
    y2 = Pixels(y1) + Pixels(tileSizeY);
    return true;
}

bool ZoPhotoVivaPano::CalcOffset(int index, ZoMatrix& matrix, bool flipRows) const {
    if (photoIdTable.table.SizeX() <= 0 || matrix.rows != 3 || matrix.cols != 3) return false;
    const Tile tile = TileOf(index, photoIdTable.table.SizeX());
    const int rows = photoIdTable.table.SizeY();
    Pixels offset = (Pixels(rows) - Pixels(tile.row) - Pixels(1)) * (Pixels(tileSizeY) + Pixels(frame));
    if (flipRows) offset = Pixels(CalcTotalPixel(rows, tileSizeY, frame)) - offset;
    matrix[1][3] = (Pixels(tileSizeX) + Pixels(frame)) * Pixels(tile.column);
    matrix[2][3] = offset;
    return true;
}

bool ZoPhotoVivaPano::FindPhotoAndPixelXY(double x, double y) {
    const int columns = photoIdTable.table.SizeX();
    const int rows = photoIdTable.table.SizeY();
    int column = 0;
    if (!Locate(x, tileSizeX, frame, columns, column, foundPixelX)) return false;
    int row = 0;
    double fromTop = 0.0;
    if (!Locate(CalcTotalPixel(rows, tileSizeY, frame) - y, tileSizeY, frame, rows, row, fromTop)) return false;
    foundPixelY = tileSizeY - fromTop;
    if (column >= columns || row >= rows) return false;
    foundPhotoId = photoIdTable.table.At(column, row);
    return true;
}

int ZoPhotoVivaPano::Read(ZoReaderObject* object) {
    zorv::detail::BlockKeywords keywords(object);
    keywords.Call("PHOTOID", [this](ZoReaderObject* value) { ZoObject::Read(value); })
        .Value("COMMENT", &comment)
        .Record("SCREENPOS", screenPos)
        .Value("SCREENSIZE", &screenScale)
        .Value("SCREENFLAGS", &screenFlags)
        .Value("TILESIZE_X", &tileSizeX)
        .Value("TILESIZE_Y", &tileSizeY)
        .Value("FRAME", &frame)
        .Record("PANORAMA", photoIdTable);
    keywords.Process();
    photoType = eZoPhotoDigital;
    activeFlag = kActive;
    hasAOR = true;
    return 1;
}

std::ostream& ZoPhotoVivaPano::Write(std::ostream& stream) const {
    using zorv::detail::FieldWidth;
    const auto number = [&stream](const char* keyword, FieldWidth width, int value) {
        zorv::detail::RecordText text;
        text.Field(width, value).WriteTo(stream << s12 << keyword);
        stream << Zoendl;
    };
    stream << s12 << "PHOTOID" << w4 << ZoBeginBlock;
    ZoObject::Write(stream) << ZoEndBlock << Zoendl;
    stream << s12 << "COMMENT" << w4 << '"' << zorv::detail::QuotableUtf8(comment) << '"' << Zoendl;
    stream << s12 << "SCREENPOS" << w4 << ZoBeginBlock;
    screenPos.Write(stream) << ZoEndBlock << Zoendl;
    stream << p4;
    number("SCREENSIZE", FieldWidth::w4, screenScale);
    number("SCREENFLAGS", FieldWidth::w4, screenFlags);
    number("TILESIZE_X", FieldWidth::w8, tileSizeX);
    number("TILESIZE_Y", FieldWidth::w8, tileSizeY);
    number("FRAME", FieldWidth::w8, frame);
    stream << s12 << "PANORAMA" << Zoendl << ZoBeginBlockNL;
    photoIdTable.Write(stream);
    return stream << ZoEndBlockNL << Zoendl;
}

void ZoPhotoVivaPano::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    archive->Read(&comment);
    screenPos.ReadV9(archive);
    for (std::int32_t* value : {&screenScale, &screenFlags, &tileSizeX, &tileSizeY, &frame})
        archive->ReadValue(*value);
    photoIdTable.ReadV9(archive);
}

void ZoPhotoVivaPano::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    archive->Write(comment);
    screenPos.WriteV9(archive);
    for (const std::int32_t value : {screenScale, screenFlags, tileSizeX, tileSizeY, frame})
        archive->WriteValue(value);
    photoIdTable.WriteV9(archive);
}

ZoPhotoVivaPano* ZoVivaPanoList::AddPhoto(ZoReaderObject* object) {
    return Add(std::make_unique<ZoPhotoVivaPano>(object).release());
}

void ZoVivaPanoList::ReadV9(CZipWrapper* archive) {
    zorv::detail::ReadRecords(*this, archive, kSmallestRecord);
}

void ZoVivaPanoList::WriteV9(CZipWrapper* archive) const {
    zorv::detail::WriteRecords(*this, archive);
}
