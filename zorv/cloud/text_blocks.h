#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "zorv/core/file_bytes.h"
#include "zorv/core/read_ahead.h"

namespace zorv::detail {

/// Hands out a text in blocks of whole lines: of a file in memory without a copy, or in plain reads where the system
/// gives no view of it. Only a UTF-8 byte order mark in front of it is dropped; carriage returns stay.
///
/// Plain reads take memory for a few times the longest line.
class TextBlocks {
  public:
    explicit TextBlocks(const std::wstring& file);
    /// From where the stream stands to its end; it stays open.
    explicit TextBlocks(std::FILE* stream);
    explicit TextBlocks(std::istream& stream);
    TextBlocks(const TextBlocks&) = delete;
    TextBlocks& operator=(const TextBlocks&) = delete;

    /// The system's number for why the file cannot be read, or 0.
    int GetError() const { return error; }

    /// The next lines; false at the end. A last line that no line feed ends comes in a block of its own. A block of
    /// plain reads is good until the next one.
    bool Next(std::string_view& block);

    /// Bytes of the text, 0 where the stream does not tell, and bytes handed out.
    std::uint64_t Size() const { return size; }
    std::uint64_t Position() const { return position; }
    /// Bytes from a place in the block at hand to the end.
    std::uint64_t BytesFrom(const char* at) const;
    /// Lines from there to the end; an estimate with plain reads.
    std::uint64_t LinesFrom(const char* at) const;

  private:
    void PassByteOrderMark();
    bool NextOfView();
    bool NextOfReads();

    std::unique_ptr<FileBytes> file;
    std::string_view view;
    std::ifstream ownStream;
    bool plain = false;  // reads instead of the view
    ReadAhead reads;
    std::string_view current;
    std::uint64_t size = 0;
    std::uint64_t position = 0;
    int error = 0;
};

}  // namespace zorv::detail
