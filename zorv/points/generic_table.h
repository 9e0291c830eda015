#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zorv/export.h"

/// A table of any text file, as rows of cells for the host to map onto columns. Cells are the bytes of the file.
///
///     ZoReadGenericTableFile table(L"points.csv");
///     for (const auto& row : table.GetRows()) ...
class ZORV_API ZoReadGenericTableFile {
  public:
    using Row = std::vector<std::string>;

    ZoReadGenericTableFile() = default;
    /// Reads the file.
    explicit ZoReadGenericTableFile(const std::wstring& fileName) { ReadFile(fileName); }
    ZoReadGenericTableFile(const ZoReadGenericTableFile&) = default;
    ZoReadGenericTableFile& operator=(const ZoReadGenericTableFile&) = default;
    virtual ~ZoReadGenericTableFile() = default;

    /// Reads the rows of a file in the place of the former ones. LF, CR and CR LF end a line; separators in a row count
    /// as one, and empty lines are passed.
    ///
    /// A line of `maxColumns` cells or more says that the file is no table: the reading stops with a last row of four
    /// cells, a message in German, English and French and the counts as "12 (max 10)". False, and nothing changes,
    /// when the file cannot be opened.
    bool ReadFile(const std::wstring& fileName);

    const std::vector<Row>& GetRows() const { return rows; }
    std::uint64_t NumberLines() const { return rows.size(); }
    /// The largest number of cells in a row; the row of the message does not count.
    std::uint64_t MaxLineLen() const { return maxLineLen; }
    /// Whether the file was read to its end.
    bool IsEndReached() const { return endReached; }
    /// The characters that separate cells, for the next ReadFile.
    void SetSeparators(const std::string& characters) { separators = characters; }

    std::vector<Row> rows;
    std::string separators = " ;,\t";
    std::uint64_t maxLineLen = 0;
    std::uint64_t maxColumns = 10;
    bool endReached = false;

  private:
    void AddErrorRow(std::uint64_t cells);
};
