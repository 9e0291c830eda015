#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <istream>
#include <memory>
#include <vector>

#include <minizip/ioapi.h>

#include "zorv/core/platform/file_handle.h"
#include "zorv/core/platform/files.h"

/// Where the ZIP container's bytes go to and come from, behind the stream functions that minizip calls.
namespace zorv::detail {

/// Takes the bytes of a ZIP being written. Positions count from the target's first byte, which the container's own
/// offsets do as well.
class ZipSink {
  public:
    virtual ~ZipSink() = default;

    virtual bool Write(const void* data, std::size_t size) = 0;
    virtual bool Seek(std::uint64_t position) = 0;
    virtual std::uint64_t Tell() = 0;
    virtual std::uint64_t End() = 0;
    /// Makes the finished bytes last; false when they could not all be written.
    virtual bool Commit() = 0;
};

/// A ZIP in a block of memory of limited size.
class MemorySink final : public ZipSink {
  public:
    /// Into the caller's block, or with null into one of its own that grows up to the limit.
    MemorySink(void* block, std::size_t sizeLimit) : given(static_cast<char*>(block)), limit(sizeLimit) {}

    bool Write(const void* data, std::size_t size) override;
    bool Seek(std::uint64_t to) override;
    std::uint64_t Tell() override { return position; }
    std::uint64_t End() override { return end; }
    bool Commit() override { return true; }

    char* Data() { return given ? given : grown.get(); }
    std::size_t Limit() const { return limit; }
    /// Makes room for that many bytes, at most the limit, at once.
    bool Grow(std::size_t size);
    /// Room behind the end, from `place` on, for up to `size` bytes; `size` becomes what the limit leaves. What is put
    /// there is part of the ZIP once it is written. Null in a caller's block, and where there is no room.
    char* RoomAhead(std::uint64_t place, std::size_t& size);

  private:
    struct Free {
        void operator()(char* block) const { std::free(block); }
    };

    char* given;
    // realloc moves the pages of a large block instead of copying them.
    std::unique_ptr<char, Free> grown;
    std::size_t capacity = 0;
    std::size_t limit;
    std::size_t position = 0;
    std::size_t end = 0;
};

/// A ZIP file that takes the old one's place when it is complete.
class FileSink final : public ZipSink {
  public:
    explicit FileSink(const std::wstring& file) : replacement(file) {}

    bool IsOpen() const { return replacement.IsOpen(); }
    bool Write(const void* data, std::size_t size) override;
    bool Seek(std::uint64_t to) override;
    std::uint64_t Tell() override { return position; }
    std::uint64_t End() override { return end; }
    bool Commit() override { return replacement.Commit(); }

  private:
    FileReplacement replacement;
    std::uint64_t position = 0;
    std::uint64_t end = 0;
};

/// A ZIP at the present position of a system file handle; where that cannot seek, collected until the commit.
class HandleSink final : public ZipSink {
  public:
    explicit HandleSink(void* handle);

    bool Write(const void* data, std::size_t size) override;
    bool Seek(std::uint64_t to) override;
    std::uint64_t Tell() override { return position; }
    std::uint64_t End() override { return end; }
    bool Commit() override;

  private:
    FileHandle target;
    std::unique_ptr<MemorySink> collected;
    std::uint64_t position = 0;
    std::uint64_t end = 0;
};

/// Gives the bytes of a ZIP being read, any part at any time.
class ZipSource {
  public:
    explicit ZipSource(std::unique_ptr<std::istream> bytes);

    std::uint64_t Size() const { return size; }
    /// Copies what is there from the offset on, at most `count` bytes, and returns how many.
    std::size_t ReadAt(std::uint64_t offset, void* target, std::size_t count);

    std::uint64_t position = 0;  ///< where minizip reads next

  private:
    std::size_t ReadStream(std::uint64_t offset, char* target, std::size_t count);

    std::unique_ptr<std::istream> stream;
    std::uint64_t size = 0;
    /// minizip asks for single bytes and goes to and fro between the directory and the items: they come from two
    /// windows, of which the one used last stays.
    struct Window {
        std::vector<char> bytes;
        std::uint64_t start = 0;
        std::size_t size = 0;
    };
    Window windows[2];
    int recent = 0;
};

/// The stream functions that minizip takes, for an object that outlives the container.
zlib_filefunc64_def StreamFunctions(ZipSink& sink);
zlib_filefunc64_def StreamFunctions(ZipSource& source);

}  // namespace zorv::detail
