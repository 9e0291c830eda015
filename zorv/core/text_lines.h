#pragma once

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <memory>
#include <span>
#include <string>

#include "zorv/core/read_ahead.h"

namespace zorv::detail {

/// What ends a line: always LF and CR LF; a lone CR only where old tables are read.
enum class LineEnd { kLineFeed, kLineFeedOrReturn };

/// Hands out the lines of a file one by one, read in big blocks and without a copy per line.
///
///     TextLines lines(file);
///     for (std::span<char> line; lines.Next(line);)
///         ...
///
/// Lines come whole, whatever their length, without line end and without a UTF-8 byte order mark at the start; a last
/// line without line end is one too. A line may be cut in place until the next one is asked for. A zero follows it, so
/// that it is also a terminated text. Memory stays within a few times the longest line.
class TextLines {
  public:
    explicit TextLines(const std::wstring& file, LineEnd ends = LineEnd::kLineFeed);
    /// From where the file stands to its end; it stays open. Null counts as not open.
    explicit TextLines(std::FILE* file, LineEnd ends = LineEnd::kLineFeed);
    /// Text in memory.
    static TextLines FromBytes(std::string bytes, LineEnd ends = LineEnd::kLineFeed);

    bool IsOpen() const { return isOpen; }

    /// The next line; false at the end.
    bool Next(std::span<char>& line);

  private:
    explicit TextLines(LineEnd ends) : lineEnd(ends) {}
    char* FindLineEnd(std::size_t from);

    LineEnd lineEnd;
    bool isOpen = false;
    bool atStart = true;
    bool afterReturn = false;  ///< a line feed at hand belongs to the line before
    std::unique_ptr<std::ifstream> stream;
    ReadAhead bytes;
};

}  // namespace zorv::detail
