#pragma once

#include <cstdio>
#include <iosfwd>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/points/column_table.h"
#include "zorv/points/point.h"

class CZipWrapper;
class ZoBoundingBox3d;
class ZoReaderObject;

/// A list of points with the column table by which it is read and written as text.
///
/// A point file (.coo, .imo) is UTF-8 text with one point on a line and no header; which columns it has is told by the
/// caller.
class ZORV_API ZoPointList : public TZoListHeader<ZoPoint>, public TZoFormatTable<eZoPointRWMask>, public LinkHdl {
  public:
    using Table = TZoFormatTable<eZoPointRWMask>;
    using TZoListHeader<ZoPoint>::Find;

    ZoPointList() = default;
    /// Copies points and columns; the copy has no observers.
    ZoPointList(const ZoPointList&) = default;
    explicit ZoPointList(const Table& table) : Table(table) {}
    /// Reads the file, as ReadFile does.
    ZoPointList(const std::wstring& fileName, const Table& table) { ReadFile(fileName, table); }

    /// Takes copies of the points, the observers and the columns.
    ZoPointList& operator=(const ZoPointList& other);
    using TZoListHeader<ZoPoint>::operator=;

    const Table& GetMask() const { return *this; }
    /// Takes the columns; the units stay.
    void SetMask(const Table& table) { Table::SetTable(table); }

    /// Appends the points of a file of lines, whose columns become the list's. Lines without a number (id 0) are
    /// passed. Returns how many points came in; 0, and nothing changes, when the file cannot be opened.
    int ReadFile(const std::wstring& fileName, const Table& table);
    int ReadFile(const wchar_t* fileName, const Table& table);

    /// Appends the points of a Leica GSI file, in the unit asked for: a line with an easting, northing or height (words
    /// 81, 82, 83) gives a point with its number and name, in which a missing word counts as 0. Lines without one, such
    /// as polar observations, are passed. With `asControl` the coordinates that a line has become control coordinates.
    /// Returns how many points came in; 0 when the file cannot be opened.
    int ReadGsiFile(const std::wstring& fileName, bool asControl, eZoUnit unit);
    /// The same from where an open file stands; null gives 0.
    int ReadGsiFile(std::FILE* file, bool asControl, eZoUnit unit);

    /// Appends points from the tokens at hand, each with the list's columns, up to a `}`, which stays at hand. Returns
    /// 1. Throws ZoParserStatus at a token that fits no column; the points before it stay.
    long Read(ZoReaderObject* object);

    /// Writes the points with the list's columns, one on a line, as tagged text; there is no line end behind the last.
    /// Infinity and not-a-number, which would end the reading, become 0.
    std::ostream& Write(std::ostream& stream) const;
    /// Writes a point file in the place of an old one, which stays when that fails. 1, or 0 for a failure.
    int WriteFile(const std::wstring& fileName) const;
    int WriteFile(const wchar_t* fileName) const;
    /// The same with other columns, which become the list's.
    int WriteFile(const std::wstring& fileName, const Table& table);

    /// Archive record: the number of points (8 bytes), then theirs. Reading appends; a record that is cut off ends it.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    /// The first point with exactly that name, or null.
    ZoPoint* Find(const std::wstring& pointName) const { return Find(pointName, true); }
    /// The first point of that id on that photo, 0 for any photo; null when there is none. The search begins at
    /// `start` (the first point when null), goes on to the end and then from `start` back to the first.
    ZoPoint* Find(unsigned int number, unsigned int photo, ZoPoint* start) const;
    /// As Find by id, in a list ascending by id; gives up at the first id above.
    ZoPoint* FindInSortedList(unsigned int number) const;
    /// The point nearest in space, the first one of equals; null for an empty list. `distance`, unless null, receives
    /// how far it is, infinity for an empty list.
    ZoPoint* FindNearest(const ZoPoint& point, double* distance) const;

    /// Resets the box, then takes in and counts all points, or with `all` false only those in use.
    void CalcBoundingBox(ZoBoundingBox3d& box, bool all) const;
    /// The number of points, and of those in use.
    void GetStat(unsigned long long& total, unsigned long long& used) const;
    bool HasControlPoints() const;
    /// Clears the control flags of all points.
    void RemoveControlInformation();

    /// Hook for a debugging host; it does nothing.
    void AssertDoubleId() const {}
    /// The points, or their ids only, on the debug channel.
    void DbgPrintf(const char* prefix) const;
    void DbgPrintfId(const char* prefix) const;

  protected:
    int ReadFile(std::FILE* file, const Table& table);
};

/// Adds a copy of every point of `a` whose id is in `b` to `out` and returns their number.
ZORV_API int FindCommonZoPointById(const ZoPointList& a, const ZoPointList& b, ZoPointList* out);

/// Brings what a computation adds to a point (name, flags, differences, residuals, vector, number of measurements,
/// colour) from each point of `coo2` to the first one of its id in `coo`. Coordinates and control flags stay. Returns
/// the number of points updated.
ZORV_API int MergeCooCoo2(ZoPointList& coo, ZoPointList& coo2);

/// A point at the mean of the coordinates; its dx, dy, dz are the sums. All 0 for an empty list.
ZORV_API ZoPoint ZoCalcGravitycenter(const ZoPointList& points);

/// Puts the points into `out`, whose former ones it deletes, in the order of a closed polygon that does not cross
/// itself: the first of the lowest points, then the others by their direction from it, those in one direction in their
/// former order. The direction, in degrees of a pseudo-angle from 0 to 360, is left in residualX. Returns the number of
/// points.
ZORV_API int ZoSimpleClosedPath(const ZoPointList& in, ZoPointList* out);
