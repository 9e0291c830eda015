#pragma once

#include <cmath>
#include <cstdint>
#include <iosfwd>

#include "zorv/core/flag.h"
#include "zorv/export.h"
#include "zorv/points/column_table.h"

class CZipWrapper;
class ZoReaderObject;
class ZoVector;

/// A record with a number and coordinates: an image measurement, an object or control point, a polygon vertex.
///
/// Its id is the point number. Coordinates are in the unit and system of the list that it stands in: mm for image
/// measurements, project units for object points. Bits 0 and 2 of the flags (kInUse) mark a point as in use.
class ZORV_API ZoPoint : public TZoFlagNode<ZoPoint> {
  public:
    static constexpr int kInUse = 5;
    static constexpr int kControlMask = 7;

    // Not defaulted: `ZoPoint()` would clear the whole record before its members are set.
    ZoPoint() {}
    ZoPoint(unsigned int number, double px, double py, double pz, short control)
        : TZoFlagNode<ZoPoint>(number), controlFlags(control), x(px), y(py), z(pz) {}
    explicit ZoPoint(CZipWrapper* archive) { ReadV9(archive); }
    ZoPoint(ZoReaderObject* object, const TZoFormatTable<eZoPointRWMask>& table) { Read(object, table); }
    ZoPoint(const ZoPoint&) = default;
    /// Copies everything but the neighbours.
    ZoPoint& operator=(const ZoPoint&) = default;

    using TZoFlagNode<ZoPoint>::Compare;
    /// By photo number plus id, own minus other's with wrap-around, so that lists sort ascending.
    virtual int Compare(ZoListnode* other) const;
    std::uint32_t OrderingKey() const { return photoId + id; }

    /// Sets all fields to 0; id, name and flags stay.
    void init();

    /// Whether the coordinates are exactly the same.
    bool operator==(const ZoPoint& other) const { return x == other.x && y == other.y && z == other.z; }
    /// Copies of this point with coordinates and differences added or subtracted.
    ZoPoint operator+(const ZoPoint& other) const;
    ZoPoint operator-(const ZoPoint& other) const;
    /// Copies of this point with scaled coordinates; the differences stay.
    ZoPoint operator*(double factor) const;
    ZoPoint operator/(double divisor) const;
    /// A copy of this point with the mean of both in coordinates and differences.
    ZoPoint operator%(const ZoPoint& other) const;

    /// In space; 0 for null.
    double Distance(const ZoPoint& other) const { return std::sqrt(DistanceSq(other)); }
    double Distance(const ZoPoint* other) const { return other ? Distance(*other) : 0.0; }
    double DistanceSq(const ZoPoint& other) const {
        const double ex = x - other.x;
        const double ey = y - other.y;
        const double ez = z - other.z;
        return ex * ex + ey * ey + ez * ez;
    }
    double DistanceSq(const ZoPoint* other) const { return other ? DistanceSq(*other) : 0.0; }
    /// x, y, z; include zorv/math/vector.h to use it.
    ZoVector GetAsVector() const;
    bool IsOrigin() const { return x == 0.0 && y == 0.0 && z == 0.0; }

    std::uint8_t GetRed() const { return static_cast<std::uint8_t>(color); }
    std::uint8_t GetGreen() const { return static_cast<std::uint8_t>(color >> 8); }
    std::uint8_t GetBlue() const { return static_cast<std::uint8_t>(color >> 16); }
    /// Luminance of the colour, 0 to 255.
    int GrayIntensity() const;

    short GetControlFlags() const { return controlFlags; }
    void SetControlFlags(short control) { controlFlags = control; }
    /// The bits themselves, not a normalised bool.
    int IsControlPoint() const { return controlFlags & kControlMask; }
    int IsXControlPoint() const { return controlFlags & 1; }
    int IsYControlPoint() const { return controlFlags & 2; }
    int IsZControlPoint() const { return controlFlags & 4; }
    /// The lowest three bits as text of three characters: " 12", "XY ".
    static const char* GetControlCodeAs123(int code);
    static const char* GetControlCodeAsXYZ(int code);
    const char* GetControlFlagsAs123() const { return GetControlCodeAs123(controlFlags); }
    const char* GetControlFlagsAsXYZ() const { return GetControlCodeAsXYZ(controlFlags); }
    /// Sets the bits named in the text, by 1, 2, 3 or X, Y, Z in either case, and clears the others. Returns the flags.
    short SetAsControlFlag(const char* text);
    /// The same by the decimal digits of a number: 12 sets X and Y.
    short SetAsControlFlag(int code);

    /// Reads the columns from a line of text, which is cut in place. Blanks, tabs, semicolons and commas separate; a
    /// text in double quotes may hold them. What does not parse gives 0; fields without a value in the line stay.
    /// Returns the number of columns that got a value.
    int Read(char* line, const TZoFormatTable<eZoPointRWMask>& table);
    /// Reads the columns from the tokens at hand. Returns 1; throws ZoParserStatus at the first that does not fit.
    int Read(ZoReaderObject* object, const TZoFormatTable<eZoPointRWMask>& table);
    /// Writes the columns with 16 significant digits, without a line end.
    std::ostream& Write(std::ostream& stream, const TZoFormatTable<eZoPointRWMask>& table) const;

    /// Archive record: ZoObject, flags, then all fields in order but the first two spares.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    /// One line on the debug channel.
    void DbgPrintf(const char* prefix) const;

    std::uint32_t photoId = 0;   ///< photo that the point belongs to, 0 for none
    std::uint32_t cameraId = 0;  ///< its camera
    std::int16_t controlFlags = 0;
    std::uint64_t spare1 = 0;  ///< for the host; in no file
    std::uint64_t spare2 = 0;  ///< for the host; in no file
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double dx = 0.0;  ///< standard deviations or differences, by use
    double dy = 0.0;
    double dz = 0.0;
    double residualX = 0.0;
    double residualY = 0.0;
    double residualZ = 0.0;
    float vx = 0.0F;  ///< vector that belongs to the point
    float vy = 0.0F;
    float vz = 0.0F;
    std::uint16_t spare3 = 0;    ///< for the host; kept in the archive
    std::uint16_t imoCount = 0;  ///< image measurements of an object point
    std::uint32_t color = 0;     ///< red in byte 0, green in byte 1, blue in byte 2
};

/// A position in a plane, as text the two numbers x and y.
class ZORV_API ZoPosition : public ZoPoint {
  public:
    ZoPosition() = default;
    ZoPosition(double px, double py) : ZoPoint(0, px, py, 0.0, 0) {}

    using ZoPoint::Read;
    using ZoPoint::Write;
    int Read(ZoReaderObject* object);
    std::ostream& Write(std::ostream& stream) const;
};

/// Scales coordinates and differences.
ZORV_API void MultiplyZoPoint(ZoPoint* point, double factor);
