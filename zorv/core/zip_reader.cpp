#include "zorv/core/zip_reader.h"

#include <algorithm>
#include <limits>

#include "zorv/core/case_folding.h"
#include "zorv/core/crc32.h"
#include "zorv/core/platform/large_block.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

constexpr std::uint32_t kStored = 0;
constexpr std::uint32_t kDeflated = 8;
constexpr std::uint32_t kEncrypted = 1;
constexpr std::size_t kLongestName = 0xffff;
constexpr std::size_t kPiece = 64 * 1024;
/// A directory of 16-bit counts that is full may go on.
constexpr ZPOS64_T kManyEntries = 0xffff;

std::wstring FoldedName(std::wstring_view name) {
    std::wstring folded(name);
    for (wchar_t& c : folded)
        c = c == L'\\' ? L'/' : ToLower(c);
    return folded;
}

bool SameName(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) {
        return x == y || ((x == L'\\' || x == L'/') && (y == L'\\' || y == L'/'));
    });
}

}  // namespace

std::unique_ptr<ZipReader> ZipReader::Open(std::unique_ptr<std::istream> bytes) {
    std::unique_ptr<ZipReader> reader(new ZipReader(std::move(bytes)));
    if (reader->IsEmptyZip()) return reader;
    zlib_filefunc64_def functions = StreamFunctions(reader->source);
    reader->container = unzOpen2_64("", &functions);
    if (!reader->container || !reader->ReadDirectory()) return nullptr;
    return reader;
}

ZipReader::~ZipReader() {
    if (container) unzClose(container);
}

bool ZipReader::IsEmptyZip() {
    // minizip takes no ZIP whose end record stands at its beginning: such a ZIP has no items.
    constexpr std::string_view kEndRecord("PK\5\6\0\0\0\0\0\0\0\0", 12);
    char bytes[kEndRecord.size()];
    return source.ReadAt(0, bytes, sizeof bytes) == sizeof bytes && std::string_view(bytes, sizeof bytes) == kEndRecord;
}

bool ZipReader::ReadDirectory() {
    unz_global_info64 global{};
    if (unzGetGlobalInfo64(container, &global) != UNZ_OK) return false;
    if (global.number_entry == 0) return true;
    std::vector<char> name(kLongestName + 1);
    int state = unzGoToFirstFile(container);
    while (state == UNZ_OK) {
        unz_file_info64 info{};
        ZipItem item;
        if (unzGetCurrentFileInfo64(container, &info, name.data(), kLongestName, nullptr, 0, nullptr, 0) != UNZ_OK ||
            unzGetFilePos64(container, &item.place) != UNZ_OK || info.size_filename > kLongestName) {
            return false;
        }
        item.name = string2wstring(std::string(name.data(), info.size_filename));
        item.packedSize = info.compressed_size;
        item.size = info.uncompressed_size;
        item.crc = static_cast<std::uint32_t>(info.crc);
        item.method = static_cast<std::uint32_t>(info.compression_method);
        item.flags = static_cast<std::uint32_t>(info.flag);
        item.attributes = static_cast<std::uint32_t>(info.external_fa);
        item.dosTime = static_cast<std::uint32_t>(info.dosDate);
        items.push_back(std::move(item));
        state = unzGoToNextFile(container);
    }
    const bool whole =
        state == UNZ_END_OF_LIST_OF_FILE || (global.number_entry == kManyEntries && items.size() >= kManyEntries);
    if (!whole || items.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;

    // From the last item to the first, so that each name leads to its first item and from there on.
    firstOfName.reserve(items.size());
    for (int i = static_cast<int>(items.size()) - 1; i >= 0; --i) {
        ZipItem& item = items[static_cast<std::size_t>(i)];
        const auto [place, isNew] = firstOfName.try_emplace(FoldedName(item.name), i);
        if (!isNew) {
            item.nextOfName = place->second;
            place->second = i;
        }
    }
    return true;
}

int ZipReader::Find(std::wstring_view name, bool ignoreCase) const {
    const auto place = firstOfName.find(FoldedName(name));
    if (place == firstOfName.end()) return -1;
    int index = place->second;
    while (index >= 0 && !ignoreCase && !SameName(items[static_cast<std::size_t>(index)].name, name))
        index = items[static_cast<std::size_t>(index)].nextOfName;
    return index;
}

eZoZipResult ZipReader::Check(const ZipItem& item) {
    if (item.flags & kEncrypted) return eZoZipPassword;
    if (item.packedSize > source.Size()) return eZoZipCorrupt;
    if (item.method == kStored) return item.size == item.packedSize ? eZoZipOk : eZoZipCorrupt;
    if (item.method != kDeflated) return eZoZipCorrupt;
    return item.size <= MostInflatedBytes(item.packedSize) ? eZoZipOk : eZoZipCorrupt;
}

eZoZipResult ZipReader::Locate(const ZipItem& item, std::uint64_t& offset) {
    if (const eZoZipResult result = Check(item)) return result;
    if (unzGoToFilePos64(container, &item.place) != UNZ_OK) return eZoZipCorrupt;
    // minizip compares the item's local header with the directory.
    int method = 0;
    if (unzOpenCurrentFile2(container, &method, nullptr, 1) != UNZ_OK) return eZoZipCorrupt;
    offset = unzGetCurrentFileZStreamPos64(container);
    unzCloseCurrentFile(container);
    const bool inside = offset <= source.Size() && item.packedSize <= source.Size() - offset;
    return inside ? eZoZipOk : eZoZipCorrupt;
}

eZoZipResult ZipReader::Unpack(const ZipItem& item, char* block) {
    std::uint64_t offset = 0;
    if (const eZoZipResult result = Locate(item, offset)) return result;
    const auto size = static_cast<std::size_t>(item.size);
    const auto packedSize = static_cast<std::size_t>(item.packedSize);
    if (item.method == kStored) {
        if (source.ReadAt(offset, block, size) != size) return eZoZipReadFailed;
    } else {
        const auto packed = std::make_unique_for_overwrite<char[]>(packedSize);
        ExpectFullUse(packed.get(), packedSize);
        if (source.ReadAt(offset, packed.get(), packedSize) != packedSize) return eZoZipReadFailed;
        if (!inflater.Unpack(packed.get(), packedSize, block, size)) return eZoZipCorrupt;
    }
    return Crc32(0, block, size) == item.crc ? eZoZipOk : eZoZipCorrupt;
}

eZoZipResult ZipReader::Unpack(const ZipItem& item, const Taker& take) {
    std::uint64_t offset = 0;
    if (const eZoZipResult result = Locate(item, offset)) return result;
    const std::uint64_t end = offset + item.packedSize;
    bool readFailed = false;
    const auto next = [&](void* target, std::size_t room) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(room, end - offset));
        const std::size_t got = source.ReadAt(offset, target, wanted);
        readFailed = got != wanted;
        offset += got;
        return got;
    };
    std::uint32_t crc = 0;
    std::uint64_t done = 0;
    bool stopped = false;
    const auto pass = [&](const char* data, std::size_t size) {
        if (size > item.size - done) return false;
        crc = Crc32(crc, data, size);
        done += size;
        stopped = !take(data, size);
        return !stopped;
    };
    bool complete = true;
    if (item.method == kStored) {
        std::vector<char> piece(kPiece);
        while (complete && offset < end) {
            const std::size_t got = next(piece.data(), piece.size());
            complete = !readFailed && pass(piece.data(), got);
        }
    } else {
        complete = InflateStream(next, pass);
    }
    if (readFailed) return eZoZipReadFailed;
    if (stopped) return eZoZipMore;
    return complete && done == item.size && crc == item.crc ? eZoZipOk : eZoZipCorrupt;
}

}  // namespace zorv::detail
