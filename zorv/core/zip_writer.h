#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "zorv/core/deflate.h"
#include "zorv/core/zip.h"
#include "zorv/core/zip_io.h"

namespace zorv::detail {

/// A ZIP being written: packs items and hands them to minizip, which keeps the directory.
class ZipWriter {
  public:
    /// Fills the piece that it is given; bytes there were, fewer than asked only at the end, -1 on failure.
    using Source = std::function<std::int64_t(void* target, std::size_t size)>;

    explicit ZipWriter(std::unique_ptr<ZipSink> bytes);
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    bool IsOpen() const { return container != nullptr; }
    eZoZipResult AddBytes(const wchar_t* name, const void* data, std::size_t size, std::time_t time);
    /// `size` is what the source must give, where that is known. Into memory the item comes whole or not at all;
    /// elsewhere a failure in the middle spoils the ZIP.
    eZoZipResult AddStream(const wchar_t* name, const Source& source, std::optional<std::uint64_t> size,
                           std::time_t time);
    eZoZipResult AddFolder(const wchar_t* name, std::time_t time);
    /// Writes the directory; after this nothing can be added.
    eZoZipResult End();
    /// Ends and makes the bytes last.
    eZoZipResult Close();
    /// The sink of a ZIP in memory, else null.
    MemorySink* Memory() { return memory; }

  private:
    struct Item {
        std::string name;
        std::uint32_t attributes = 0;
        std::time_t time = 0;
        bool packed = false;
        bool large = false;  ///< 4 GB and more
    };

    eZoZipResult Prepare(const wchar_t* name, std::time_t time, Item& item);
    eZoZipResult AddWhole(const Item& item, const void* data, std::size_t size, std::uint32_t crc,
                          std::uint64_t unpackedSize);
    eZoZipResult CopyStream(const Item& item, const Source& source, std::optional<std::uint64_t> size);
    bool Fits(const Item& item, std::size_t size);
    /// minizip counts the items in 16 bits unless the file is large: puts the 64-bit count in.
    bool WriteLargeEnd(std::uint64_t directory);
    bool OpenItem(const Item& item, bool raw);
    eZoZipResult Spoil(eZoZipResult result);

    std::unique_ptr<ZipSink> sink;
    MemorySink* memory = nullptr;
    void* container = nullptr;
    Deflater deflater;
    std::uint64_t itemCount = 0;
    std::uint64_t directorySize = 0;
    bool ended = false;
    bool spoiled = false;
};

}  // namespace zorv::detail
