#pragma once

#include <iosfwd>

#include "zorv/core/array.h"
#include "zorv/core/array2d.h"
#include "zorv/core/id_pair.h"
#include "zorv/core/link.h"
#include "zorv/export.h"

class CZipWrapper;
class ZoReaderObject;

/// A table of ids. Its Read can be the handler of a reader keyword.
class ZORV_API ZoIdTable : public TZoArray<unsigned int>, public LinkHdl {
  public:
    /// Does nothing.
    void DbgPrintf(const char* prefix) const;

    /// Ten ids to a line, and a line end behind the last one.
    std::ostream& Write(std::ostream& stream) const;
    /// Adds integers up to the `}` of the block, which stays at hand. Returns 1; anything else throws ZoParserStatus,
    /// and the ids read before it stay.
    long Read(ZoReaderObject* object);

    /// Archive record: the count (8 bytes), the ids (4 bytes each). ReadV9 adds to what the table holds.
    void WriteV9(CZipWrapper* archive) const;
    void ReadV9(CZipWrapper* archive);
};

/// A table of pairs of ids. Its Read can be the handler of a reader keyword.
class ZORV_API ZoIdPairTable : public TZoArray<ZoIdPair>, public LinkHdl {
  public:
    /// Does nothing.
    void DbgPrintf(const char* prefix) const;

    /// Brings the ids within each pair into order; the pairs keep their places.
    void SortIdPairs();

    /// Five pairs to a line, and a line end behind the last one.
    std::ostream& Write(std::ostream& stream) const;
    /// As ZoIdTable::Read, with two integers a pair.
    long Read(ZoReaderObject* object);
};

/// Ids in columns and rows.
class ZORV_API ZoIdTable2D {
  public:
    ZoIdTable2D() = default;
    /// All ids 0.
    ZoIdTable2D(int sizeX, int sizeY) : table(sizeX, sizeY) {}
    ZoIdTable2D(const ZoIdTable2D&) = default;
    ZoIdTable2D& operator=(const ZoIdTable2D&) = default;
    virtual ~ZoIdTable2D() = default;

    /// The number of columns, the number of rows, and the ids, one row a line.
    std::ostream& Write(std::ostream& stream) const;
    /// Reads the same from the tokens at hand and returns 1. A table without ids has no columns and rows then. When the
    /// ids break off, ZoParserStatus is thrown; a table of a size that only a large file could fill is then empty, any
    /// other one keeps what was read and is 0 behind.
    long Read(ZoReaderObject* object);

    /// Archive record: the numbers of columns and rows (8 bytes each), the ids (4 bytes each). A record of more ids
    /// than the rest of the item can hold reads as an empty table.
    void WriteV9(CZipWrapper* archive) const;
    void ReadV9(CZipWrapper* archive);

    ValArray2DXY<unsigned int> table;
};
