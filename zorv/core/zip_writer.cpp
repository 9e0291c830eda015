#include "zorv/core/zip_writer.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include <minizip/zip.h>

#include "zorv/core/crc32.h"
#include "zorv/core/platform/large_block.h"
#include "zorv/core/platform/local_time.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

constexpr std::size_t kPiece = 64 * 1024;
constexpr std::size_t kLongestName = 0xffff;
constexpr std::uint32_t kFileAttribute = 0x20;
constexpr std::uint32_t kFolderAttribute = 0x10;
constexpr unsigned int kMadeByVersion = 20;
constexpr unsigned int kUtf8Names = 1U << 11;

// Sizes of the container's records without names.
constexpr std::uint64_t kLocalHeader = 30;
constexpr std::uint64_t kLargeExtra = 20;  // sizes of 64 bits behind the name
constexpr std::uint64_t kDirectoryEntry = 46;
constexpr std::uint64_t kDirectoryEnd = 22;
constexpr std::uint64_t kDirectoryEnd64 = 56 + 20;
constexpr std::uint64_t kMostEntries = 0xffff;
constexpr std::uint64_t kLargeItem = 0xffffffff;

tm_zip ZipTime(std::time_t time) {
    // The container's time is local and begins in 1980.
    tm_zip zip{};
    zip.tm_mday = 1;
    zip.tm_year = 1980;
    std::tm parts{};
    if (!LocalTime(time, parts) || parts.tm_year < 80 || parts.tm_year > 207) return zip;
    zip.tm_sec = static_cast<uInt>(std::min(parts.tm_sec, 59));
    zip.tm_min = static_cast<uInt>(parts.tm_min);
    zip.tm_hour = static_cast<uInt>(parts.tm_hour);
    zip.tm_mday = static_cast<uInt>(parts.tm_mday);
    zip.tm_mon = static_cast<uInt>(parts.tm_mon);
    zip.tm_year = static_cast<uInt>(parts.tm_year + 1900);
    return zip;
}

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

ZipWriter::ZipWriter(std::unique_ptr<ZipSink> bytes) : sink(std::move(bytes)) {
    memory = dynamic_cast<MemorySink*>(sink.get());
    zlib_filefunc64_def functions = StreamFunctions(*sink);
    container = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions);
}

ZipWriter::~ZipWriter() {
    if (container && !ended) zipClose(container, nullptr);
}

eZoZipResult ZipWriter::Spoil(eZoZipResult result) {
    spoiled = true;
    return result;
}

eZoZipResult ZipWriter::Prepare(const wchar_t* name, std::time_t time, Item& item) {
    if (spoiled) return eZoZipFailedBefore;
    if (ended) return eZoZipEnded;
    item.name = wstring2string(name);
    std::replace(item.name.begin(), item.name.end(), '\\', '/');
    item.attributes = kFileAttribute;
    item.time = time;
    return item.name.empty() || item.name.size() > kLongestName ? eZoZipArguments : eZoZipOk;
}

bool ZipWriter::Fits(const Item& item, std::size_t size) {
    if (!memory) return true;
    const std::uint64_t needed = memory->End() + kLocalHeader + item.name.size() + size + directorySize +
                                 kDirectoryEntry + item.name.size() + kDirectoryEnd +
                                 (itemCount + 1 >= kMostEntries ? kDirectoryEnd64 : 0);
    return needed <= memory->Limit();
}

bool ZipWriter::OpenItem(const Item& item, bool raw) {
    zip_fileinfo info{};
    info.tmz_date = ZipTime(item.time);
    info.external_fa = item.attributes;
    const unsigned int flags = IsAscii(item.name) ? 0 : kUtf8Names;
    const int result =
        zipOpenNewFileInZip4_64(container, item.name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                item.packed ? Z_DEFLATED : 0, kDeflateLevel, raw ? 1 : 0, -MAX_WBITS, DEF_MEM_LEVEL,
                                Z_DEFAULT_STRATEGY, nullptr, 0, kMadeByVersion, flags, item.large ? 1 : 0);
    if (result != ZIP_OK) return false;
    ++itemCount;
    directorySize += kDirectoryEntry + item.name.size();
    return true;
}

eZoZipResult ZipWriter::AddWhole(const Item& item, const void* data, std::size_t size, std::uint32_t crc,
                                 std::uint64_t unpackedSize) {
    if (!Fits(item, size)) return eZoZipMemoryFull;
    // The room that Fits found, in one step.
    if (memory && !memory->Grow(static_cast<std::size_t>(memory->End()) + kLocalHeader + item.name.size() + size)) {
        return eZoZipNoMemory;
    }
    if (!OpenItem(item, true)) return Spoil(eZoZipWriteFailed);
    const auto* next = static_cast<const char*>(data);
    while (size > 0) {
        const auto part = static_cast<unsigned int>(std::min<std::size_t>(size, 1U << 30));
        if (zipWriteInFileInZip(container, next, part) != ZIP_OK) return Spoil(eZoZipWriteFailed);
        next += part;
        size -= part;
    }
    return zipCloseFileInZipRaw64(container, unpackedSize, crc) == ZIP_OK ? eZoZipOk : Spoil(eZoZipWriteFailed);
}

eZoZipResult ZipWriter::AddBytes(const wchar_t* name, const void* data, std::size_t size, std::time_t time) {
    Item item;
    if (const eZoZipResult result = Prepare(name, time, item)) return result;
    const std::uint32_t crc = Crc32(0, data, size);
    item.large = size >= kLargeItem;
    if (size > 1) {
        // In memory the item is packed where it will lie: fresh memory for many megabytes costs as much as copying
        // them. minizip then moves it onto itself, if at all towards the beginning.
        std::size_t room = size - 1;
        std::unique_ptr<char[]> own;
        char* packed = nullptr;
        if (memory) {
            const std::uint64_t header = kLocalHeader + item.name.size() + (item.large ? kLargeExtra : 0);
            packed = memory->RoomAhead(memory->End() + header, room);
        }
        if (!packed) {
            own = std::make_unique_for_overwrite<char[]>(room);
            packed = own.get();
            ExpectFullUse(packed, room);
        }
        if (const std::size_t packedSize = deflater.Pack(data, size, packed, room)) {
            item.packed = true;
            return AddWhole(item, packed, packedSize, crc, size);
        }
    }
    return AddWhole(item, data, size, crc, size);
}

eZoZipResult ZipWriter::CopyStream(const Item& item, const Source& source, std::optional<std::uint64_t> size) {
    if (!OpenItem(item, false)) return Spoil(eZoZipWriteFailed);
    std::vector<char> piece(kPiece);
    std::uint64_t done = 0;
    while (!size || done < *size) {
        const std::uint64_t wanted = size ? std::min<std::uint64_t>(*size - done, kPiece) : kPiece;
        const std::int64_t got = source(piece.data(), static_cast<std::size_t>(wanted));
        if (got < 0) return Spoil(eZoZipReadFailed);
        if (got == 0) break;
        if (zipWriteInFileInZip(container, piece.data(), static_cast<unsigned int>(got)) != ZIP_OK) {
            return Spoil(eZoZipWriteFailed);
        }
        done += static_cast<std::uint64_t>(got);
    }
    if (size && done != *size) return Spoil(eZoZipWrongSize);
    return zipCloseFileInZip(container) == ZIP_OK ? eZoZipOk : Spoil(eZoZipWriteFailed);
}

eZoZipResult ZipWriter::AddStream(const wchar_t* name, const Source& source, std::optional<std::uint64_t> size,
                                  std::time_t time) {
    Item item;
    if (const eZoZipResult result = Prepare(name, time, item)) return result;
    if (!memory) {
        item.packed = true;
        item.large = !size || *size >= kLargeItem;
        return CopyStream(item, source, size);
    }
    // What cannot fit even if it packs as well as possible need not be read.
    const std::uint64_t most = std::min(MostInflatedBytes(memory->Limit()), kLargeItem);
    if (size && *size > most) return eZoZipMemoryFull;
    std::vector<char> bytes;
    for (std::int64_t got = 1; got > 0;) {
        const std::size_t done = bytes.size();
        const std::uint64_t wanted = size ? std::min<std::uint64_t>(*size - done, kPiece) : kPiece;
        bytes.resize(done + static_cast<std::size_t>(wanted));
        got = wanted > 0 ? source(bytes.data() + done, static_cast<std::size_t>(wanted)) : 0;
        if (got < 0) return eZoZipReadFailed;
        bytes.resize(done + static_cast<std::size_t>(got));
        if (bytes.size() > most) return eZoZipMemoryFull;
    }
    if (size && bytes.size() != *size) return eZoZipWrongSize;
    return AddBytes(name, bytes.data(), bytes.size(), time);
}

eZoZipResult ZipWriter::AddFolder(const wchar_t* name, std::time_t time) {
    Item item;
    if (const eZoZipResult result = Prepare(name, time, item)) return result;
    if (item.name.back() != '/') item.name += '/';
    item.attributes = kFolderAttribute;
    return AddWhole(item, nullptr, 0, 0, 0);
}

eZoZipResult ZipWriter::End() {
    if (spoiled) return eZoZipFailedBefore;
    if (ended) return eZoZipOk;
    ended = true;
    const std::uint64_t directory = sink->End();
    if (zipClose(container, nullptr) != ZIP_OK) return Spoil(eZoZipWriteFailed);
    return itemCount < kMostEntries || directory >= kLargeItem || WriteLargeEnd(directory) ? eZoZipOk
                                                                                           : Spoil(eZoZipWriteFailed);
}

bool ZipWriter::WriteLargeEnd(std::uint64_t directory) {
    const std::uint64_t end = sink->End() - kDirectoryEnd;
    std::string record;
    const auto put = [&record](std::uint64_t value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8)
            record += static_cast<char>(value & 0xff);
    };
    put(0x06064b50, 4);  // the end of directory with 64-bit counts
    put(44, 8);          // bytes that follow in this record
    put(45, 2);          // versions: made by, needed
    put(45, 2);
    put(0, 8);  // disk numbers
    put(itemCount, 8);
    put(itemCount, 8);
    put(end - directory, 8);
    put(directory, 8);
    put(0x07064b50, 4);  // where that record stands
    put(0, 4);
    put(end, 8);
    put(1, 4);
    put(0x06054b50, 4);  // the end of directory with its full 16-bit counts
    put(0, 4);
    put(kMostEntries, 2);
    put(kMostEntries, 2);
    put(end - directory, 4);
    put(directory, 4);
    put(0, 2);
    return sink->Seek(end) && sink->Write(record.data(), record.size());
}

eZoZipResult ZipWriter::Close() {
    if (const eZoZipResult result = End()) return result;
    return sink->Commit() ? eZoZipOk : Spoil(eZoZipWriteFailed);
}

}  // namespace zorv::detail
