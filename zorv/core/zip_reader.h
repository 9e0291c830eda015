#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <minizip/unzip.h>

#include "zorv/core/deflate.h"
#include "zorv/core/zip.h"
#include "zorv/core/zip_io.h"

namespace zorv::detail {

/// One entry of a ZIP's directory, as it states itself: nothing of it is to be believed before Locate.
struct ZipItem {
    std::wstring name;
    unz64_file_pos place{};  ///< for minizip
    std::uint64_t packedSize = 0;
    std::uint64_t size = 0;
    std::uint32_t crc = 0;
    std::uint32_t method = 0;
    std::uint32_t flags = 0;
    std::uint32_t attributes = 0;
    std::uint32_t dosTime = 0;
    int nextOfName = -1;  ///< the next item whose name differs in case only
};

/// A ZIP being read. Its directory is read once, at the opening; items are found by name in constant time.
class ZipReader {
  public:
    /// Gets unpacked bytes and answers whether it wants more.
    using Taker = std::function<bool(const char* data, std::size_t size)>;

    /// Null when the bytes hold no ZIP with a whole directory.
    static std::unique_ptr<ZipReader> Open(std::unique_ptr<std::istream> bytes);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    const std::vector<ZipItem>& Items() const { return items; }
    /// Index of the first item of the name, or -1.
    int Find(std::wstring_view name, bool ignoreCase) const;

    /// Whether the item's stated sizes can be true for the bytes that are there.
    eZoZipResult Check(const ZipItem& item);
    /// Unpacks the whole item into a block of its size.
    eZoZipResult Unpack(const ZipItem& item, char* block);
    /// Unpacks piece by piece.
    eZoZipResult Unpack(const ZipItem& item, const Taker& take);

  private:
    explicit ZipReader(std::unique_ptr<std::istream> bytes) : source(std::move(bytes)) {}
    bool IsEmptyZip();
    bool ReadDirectory();
    eZoZipResult Locate(const ZipItem& item, std::uint64_t& offset);

    ZipSource source;
    unzFile container = nullptr;
    Inflater inflater;
    std::vector<ZipItem> items;
    std::unordered_map<std::wstring, int> firstOfName;
};

}  // namespace zorv::detail
