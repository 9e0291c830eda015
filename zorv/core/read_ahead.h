#pragma once

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <span>
#include <string>
#include <utility>

namespace zorv::detail {

/// The bytes of a stream that were read in big blocks and not used yet. Memory stays within a few times of what is at
/// hand.
class ReadAhead {
  public:
    /// Nothing to read.
    ReadAhead() = default;
    /// From where the stream stands to its end; it belongs to the caller and stays open.
    explicit ReadAhead(std::FILE& source) : handle(&source) {}
    explicit ReadAhead(std::istream& source) : stream(&source) {}
    /// Bytes in memory.
    explicit ReadAhead(std::string bytes) : buffer(std::move(bytes)), filled(buffer.size()) {}

    /// The bytes at hand, until the next ReadOn. They may be changed, and a zero may be put behind them.
    std::span<char> AtHand() { return {buffer.data() + next, filled - next}; }
    void Use(std::size_t count) { next += count; }
    /// Adds bytes behind those at hand; false at the end.
    bool ReadOn();
    /// Passes a UTF-8 byte order mark in front of the text; true when there was one.
    bool PassByteOrderMark();

  private:
    std::FILE* handle = nullptr;
    std::istream* stream = nullptr;
    std::string buffer;
    std::size_t next = 0;    // in the buffer: the first byte at hand,
    std::size_t filled = 0;  // and the end of them
};

}  // namespace zorv::detail
