#pragma once

#include <fstream>
#include <string>

#include "zorv/export.h"

/// A narrow text file that grows: opening appends and writes a short header with the time. When it cannot be opened
/// the stream fails and swallows all output.
class ZORV_API ZoLogfile : public std::basic_fstream<char> {
  public:
    ZoLogfile() = default;
    /// Opens the file; the second argument has no meaning any more.
    explicit ZoLogfile(const std::wstring& file, int mode = 1);

    /// Opens for appending, after closing what was open.
    void OpenFile(const std::wstring& file);
    /// A rule, the time, and the beginning of a line: what is written next stands behind "//  ".
    void WriteSmallHeader();
};
