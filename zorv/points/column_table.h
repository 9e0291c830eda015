#pragma once

#include <cstdint>
#include <iosfwd>

#include "zorv/core/array.h"
#include "zorv/core/units.h"
#include "zorv/export.h"

/// The columns that a text record of a point can have. Which header, manipulator and field each one stands for is told
/// in one table, point_columns.cpp.
enum eZoPointRWMask : int {
    eZoRWEnd = 0,  ///< ends a table
    eZoRWId = 1,
    eZoRWName = 2,
    eZoRWIdOrName = 3,  ///< reads a number as the id, anything else as a name with an id made from it; never written
    eZoRWFlag = 4,
    eZoRWCode = 5,        ///< control coordinates as the digits 1, 2, 3
    eZoRWCodeNumber = 6,  ///< control coordinates as a number
    eZoRWPP = 7,          ///< a number without meaning and the name in quotes
    eZoRWPhoto = 8,
    eZoRWCamera = 9,
    eZoRWX = 10,
    eZoRWY = 11,
    eZoRWZ = 12,
    eZoRWDx = 13,
    eZoRWDy = 14,
    eZoRWDz = 15,
    eZoRWDs = 16,  ///< length of (dx, dy, dz); passed when read
    eZoRWRedu1 = 17,
    eZoRWRedu2 = 18,
    eZoRWRedu3 = 19,
    eZoRWColor = 20,
    eZoRWImoCount = 24,
    eZoRWVx = 25,
    eZoRWVy = 26,
    eZoRWVz = 27,
    eZoRWZero = 28,  ///< a written 0
    eZoRWResidualX = 29,
    eZoRWResidualY = 30,
    eZoRWResidualZ = 31,
    eZoRWSkip = 32,  ///< passes one value when read; never written
    eZoRWSx = 105,
    eZoRWSy = 106,
    eZoRWSz = 107,
};

/// The unit in which a column is kept, and the one in which it is shown.
struct ZoUnitPair {
    eZoUnit from = eZoUnitNone;
    eZoUnit to = eZoUnitNone;

    bool operator==(const ZoUnitPair&) const = default;
};

/// Which columns a text file of records holds, in their order, and the units to show them in.
///
/// The units stand beside the columns, one pair each. Only AddUnitEntry and the tables made of plain kinds fill them;
/// a column without a pair has the unit 0 and is shown unchanged.
template <class Kind>
class TZoFormatTable {
  public:
    TZoFormatTable() : columns(kUsualColumns), units(kUsualColumns) {}
    /// From kinds up to a 0; each gets the unit pair (0, 0). Null gives an empty table.
    TZoFormatTable(const Kind* kinds) : TZoFormatTable() { SetTable(kinds); }
    TZoFormatTable(const TZoFormatTable&) = default;
    virtual ~TZoFormatTable() = default;

    /// The kind at a zero-based place; 0 outside the table.
    Kind operator[](int index) const { return Has(columns, index) ? columns[index] : Kind(0); }
    int Size() const { return columns.Size(); }
    /// The place of the first column of that kind, or -1.
    int HasEntry(Kind kind) const { return columns.Search(kind); }

    /// Takes the other table's columns; the units stay as they are.
    void SetTable(const TZoFormatTable& table) { columns = table.columns; }
    TZoFormatTable& operator=(const TZoFormatTable& table) {
        SetTable(table);
        return *this;
    }
    /// Columns and units anew, from kinds up to a 0.
    void SetTable(const Kind* kinds) {
        DelTable();
        for (; kinds && *kinds != Kind(0); ++kinds) {
            columns.Add(*kinds);
            units.Add(ZoUnitPair());
        }
    }
    TZoFormatTable& operator=(const Kind* kinds) {
        SetTable(kinds);
        return *this;
    }
    void DelTable() {
        columns = TZoArray<Kind>(kUsualColumns);
        units = TZoArray<ZoUnitPair>(kUsualColumns);
    }

    void AddUnitEntry(eZoUnit from, eZoUnit to) { units.Add(ZoUnitPair{from, to}); }
    /// Sets the pair of that column and returns its place; -1 when there is none.
    int SetUnit(Kind kind, eZoUnit from, eZoUnit to) {
        const int index = HasEntry(kind);
        if (!Has(units, index)) return -1;
        units[index] = ZoUnitPair{from, to};
        return index;
    }
    void SetUnit(int index, eZoUnit to) {
        if (Has(units, index)) units[index].to = to;
    }
    /// The unit to show the column in, 0 where there is none.
    eZoUnit GetUnit(int index) const { return Has(units, index) ? units[index].to : eZoUnitNone; }
    eZoUnit GetUnit(Kind kind) const { return GetUnit(HasEntry(kind)); }
    /// The value brought from the column's unit to the one to show it in.
    double GetDisplayValue(int index, double value) const {
        if (Has(units, index)) ConvertUnit(&value, units[index].from, units[index].to);
        return value;
    }
    double GetDisplayValue(Kind kind, double value) const { return GetDisplayValue(HasEntry(kind), value); }

    TZoArray<Kind> columns;
    TZoArray<ZoUnitPair> units;

  private:
    static constexpr int kUsualColumns = 16;

    template <class T>
    static bool Has(const TZoArray<T>& array, int index) {
        return index >= 0 && index < array.Size();
    }
};

/// Writes the titles of the columns, each as wide as its column, on one line without a line end.
ZORV_API std::ostream& operator<<(std::ostream& stream, const TZoFormatTable<eZoPointRWMask>& table);
