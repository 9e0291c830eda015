#include <algorithm>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <new>
#include <system_error>

#include "zorv/core/platform/large_block.h"
#include "zorv/core/zip.h"
#include "zorv/core/zip_state.h"

using zorv::detail::ExpectFullUse;
using zorv::detail::FileReplacement;
using zorv::detail::kReadingTag;
using zorv::detail::NativePath;
using zorv::detail::ZipDirection;
using zorv::detail::ZipItem;
using zorv::detail::ZipReader;

namespace {

constinit ZipDirection reading(kReadingTag);

template <class Operation>
std::uint32_t OnReader(HZIP zip, Operation operation) {
    return reading.Run(zip, [&](ZoZip& open) { return operation(*open.reader); });
}

/// The same for one item of the reader.
template <class Operation>
std::uint32_t OnItem(HZIP zip, int index, Operation operation) {
    return OnReader(zip, [&](ZipReader& reader) {
        if (index < 0 || static_cast<std::size_t>(index) >= reader.Items().size()) return eZoZipArguments;
        return operation(reader, reader.Items()[static_cast<std::size_t>(index)]);
    });
}

std::int64_t FileTime(std::uint32_t dosTime) {
    std::tm parts{};
    parts.tm_sec = static_cast<int>(dosTime & 31) * 2;
    parts.tm_min = static_cast<int>((dosTime >> 5) & 63);
    parts.tm_hour = static_cast<int>((dosTime >> 11) & 31);
    parts.tm_mday = static_cast<int>((dosTime >> 16) & 31);
    parts.tm_mon = static_cast<int>((dosTime >> 21) & 15) - 1;
    parts.tm_year = static_cast<int>(dosTime >> 25) + 80;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

std::uint32_t Bounded(std::uint64_t size) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(size, std::numeric_limits<std::uint32_t>::max()));
}

void Describe(const ZipItem& item, int index, ZIPENTRY& entry) {
    entry.index = index;
    entry.name = item.name;
    entry.attributes = item.attributes;
    entry.accessTime = entry.createTime = entry.modifyTime = FileTime(item.dosTime);
    entry.comp_size = Bounded(item.packedSize);
    entry.unc_size = Bounded(item.size);
}

}  // namespace

HZIP zorv::detail::OpenZip(std::unique_ptr<std::istream> bytes) {
    try {
        auto zip = std::make_unique<ZoZip>();
        zip->tag = kReadingTag;
        zip->reader = ZipReader::Open(std::move(bytes));
        if (!zip->reader) return reading.Fail(eZoZipCorrupt);
        reading.Keep(eZoZipOk);
        return zip.release();
    } catch (const std::bad_alloc&) {
        return reading.Fail(eZoZipNoMemory);
    }
}

HZIP ZoUnzipOpen(const wchar_t* file) {
    if (!file || !*file) return reading.Fail(eZoZipArguments);
    const std::filesystem::path path = NativePath(file);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return reading.Fail(eZoZipNoFile);
    auto stream = std::make_unique<std::ifstream>(path, std::ios::binary);
    return stream->is_open() ? zorv::detail::OpenZip(std::move(stream)) : reading.Fail(eZoZipNoFile);
}

std::uint32_t ZoUnzipLastResult() {
    return reading.LastResult();
}

bool ZoIsUnzipHandle(HZIP zip) {
    return reading.Has(zip);
}

std::uint32_t ZoUnzipEntry(HZIP zip, int index, ZIPENTRY* entry) {
    if (index != -1) {
        return OnItem(zip, index, [&](ZipReader&, const ZipItem& item) {
            if (!entry) return eZoZipArguments;
            Describe(item, index, *entry);
            return eZoZipOk;
        });
    }
    return OnReader(zip, [&](ZipReader& reader) {
        if (!entry) return eZoZipArguments;
        *entry = ZIPENTRY();
        entry->index = static_cast<std::int32_t>(reader.Items().size());
        return eZoZipOk;
    });
}

std::uint32_t ZoUnzipFind(HZIP zip, const wchar_t* name, bool ignoreCase, int* index, ZIPENTRY* entry) {
    if (index) *index = -1;
    return OnReader(zip, [&](ZipReader& reader) {
        if (!name) return eZoZipArguments;
        const int found = reader.Find(name, ignoreCase);
        if (found < 0) return eZoZipNotFound;
        if (index) *index = found;
        if (entry) Describe(reader.Items()[static_cast<std::size_t>(found)], found, *entry);
        return eZoZipOk;
    });
}

std::uint32_t ZoUnzipItem(HZIP zip, int index, void* memory, std::size_t size) {
    return OnItem(zip, index, [&](ZipReader& reader, const ZipItem& item) {
        if (!memory && size > 0) return eZoZipArguments;
        char* next = static_cast<char*>(memory);
        if (memory && item.size <= size) return reader.Unpack(item, next);
        return reader.Unpack(item, [&](const char* data, std::size_t count) {
            const std::size_t part = std::min(count, size);
            if (part > 0) std::memcpy(next, data, part);
            next += part;
            size -= part;
            return part == count;
        });
    });
}

std::uint32_t ZoUnzipItem(HZIP zip, int index, std::unique_ptr<char[]>& block, std::size_t& size) {
    block.reset();
    size = 0;
    return OnItem(zip, index, [&](ZipReader& reader, const ZipItem& item) {
        if (const eZoZipResult result = reader.Check(item)) return result;
        auto bytes = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(item.size));
        ExpectFullUse(bytes.get(), static_cast<std::size_t>(item.size));
        if (const eZoZipResult result = reader.Unpack(item, bytes.get())) return result;
        block = std::move(bytes);
        size = static_cast<std::size_t>(item.size);
        return eZoZipOk;
    });
}

std::uint32_t ZoUnzipItem(HZIP zip, int index, const wchar_t* file) {
    return OnItem(zip, index, [&](ZipReader& reader, const ZipItem& item) {
        if (!file || !*file) return eZoZipArguments;
        std::error_code error;
        std::filesystem::create_directories(NativePath(file).parent_path(), error);
        FileReplacement target(file);
        if (!target.IsOpen()) return eZoZipNoFile;
        const eZoZipResult result = reader.Unpack(item, [&target](const char* data, std::size_t size) {
            return static_cast<bool>(target.Stream().write(data, static_cast<std::streamsize>(size)));
        });
        if (result == eZoZipMore) return eZoZipWriteFailed;
        if (result != eZoZipOk) return result;
        return target.Commit() ? eZoZipOk : eZoZipWriteFailed;
    });
}

std::uint32_t ZoUnzipClose(HZIP zip) {
    const std::uint32_t result = OnReader(zip, [](ZipReader&) { return eZoZipOk; });
    if (ZoIsUnzipHandle(zip)) const std::unique_ptr<ZoZip> freed(zip);
    return result;
}
