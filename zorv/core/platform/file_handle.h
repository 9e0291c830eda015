#pragma once

#include <cstddef>
#include <cstdint>

namespace zorv::detail {

/// An open file handle of the system (on POSIX a file descriptor in a pointer), which stays with its owner.
class FileHandle {
  public:
    explicit FileHandle(void* systemHandle) : handle(systemHandle) {}

    /// The present position, or -1 where the handle cannot seek.
    std::int64_t Tell() const;
    bool Seek(std::uint64_t position) const;
    /// Bytes read, fewer than asked only at the end; -1 on failure.
    std::int64_t Read(void* target, std::size_t size) const;
    /// Whether all bytes were written.
    bool Write(const void* data, std::size_t size) const;

  private:
    void* handle;
};

}  // namespace zorv::detail
