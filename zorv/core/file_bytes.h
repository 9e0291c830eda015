#pragma once

#include <cstdint>
#include <string>

#include "zorv/core/byte_view.h"

namespace zorv::detail {

/// The bytes of a file that is only read, in memory while this lives. Unlike a ZoMemoryMap it needs no right to write.
class FileBytes {
  public:
    /// No bytes where the file cannot be opened or is empty.
    explicit FileBytes(const std::wstring& file);
    ~FileBytes();
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    ByteView View() const { return {static_cast<const std::uint8_t*>(memory), static_cast<std::size_t>(size)}; }
    /// The system's number for why there are no bytes, or 0.
    int GetSystemError() const { return systemError; }

  private:
    void* memory = nullptr;
    std::uint64_t size = 0;
    int systemError = 0;
};

}  // namespace zorv::detail
