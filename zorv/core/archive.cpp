#include "zorv/core/archive.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>

#include "zorv/core/crc32.h"
#include "zorv/core/debug_output.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/platform/large_block.h"
#include "zorv/core/profiler.h"
#include "zorv/core/text_conversion.h"
#include "zorv/core/zip_messages.h"

static_assert(std::endian::native == std::endian::little, "archive values lie in memory as they do in the file");

namespace {

constexpr unsigned int kArchiveRoom = 500'000'000;
constexpr std::size_t kSealSize = sizeof(std::uint32_t);
constexpr std::uint64_t kLargestItem = 0xffffffff;

}  // namespace

CZipWrapper::CZipWrapper(const std::wstring& archive, bool write) {
    SzOpen(archive, write);
}

CZipWrapper::~CZipWrapper() {
    SzClose();
}

bool CZipWrapper::SzOpen(const std::wstring& archive, bool write) {
    if (zipHandle) return false;
    archiveName = archive;
    writing = write;
    if (write) {
        zipHandle = CreateZip(nullptr, kArchiveRoom, nullptr);
        lastResult = zipHandle ? eZoZipOk : eZoZipNoMemory;
    } else {
        zipHandle = ZoUnzipOpen(archive.c_str());
        lastResult = ZoUnzipLastResult();
    }
    return zipHandle != nullptr;
}

bool CZipWrapper::SzAdd(const std::wstring& name) {
    const ZoProfiler whole(L"CZipWrapper::SzAdd " + name);
    itemName = name;
    lastResult = MakeItem();
    if (lastResult == eZoZipOk) {
        const ZoProfiler scope(L"..Zip");
        lastResult = ZipAdd(zipHandle, name.c_str(), buffer.get(), static_cast<unsigned int>(bufferSize));
    }
    FreeZipData();
    return true;
}

std::uint32_t CZipWrapper::MakeItem() {
    {
        const ZoProfiler scope(L"Get Size");
        sizing = true;
        sizedBytes = 0;
        WriteItem();
    }
    if (sizedBytes > kLargestItem - kSealSize) return eZoZipMemoryFull;
    const auto size = static_cast<std::size_t>(sizedBytes);
    {
        const ZoProfiler scope(L"Size " + std::to_wstring(size) + L", Memory write");
        FreeZipData();
        try {
            buffer = std::make_unique_for_overwrite<char[]>(size + kSealSize);
            zorv::detail::ExpectFullUse(buffer.get(), size + kSealSize);
        } catch (const std::bad_alloc&) {
            return eZoZipNoMemory;
        }
        bufferSize = size;
        sizing = false;
        overrun = false;
        WriteItem();
    }
    // The item's writer may have freed the buffer.
    if (overrun || !buffer || position != size) return eZoZipWrongSize;
    const ZoProfiler scope(L"CRC");
    bufferSize = size + kSealSize;
    WriteValue(ZoCalcCRC32().Crc(buffer.get(), size));
    return eZoZipOk;
}

void CZipWrapper::AddThumbnail() {
    if (thumbnailFile.empty()) return;
    const std::uint32_t result = ZipAdd(zipHandle, L"Thumbnail.png", thumbnailFile.c_str());
    if (result != eZoZipOk) lastResult = result;
}

void CZipWrapper::SzClose() {
    FreeZipData();
    if (!zipHandle) return;
    if (!writing) {
        ZoUnzipClose(zipHandle);
        zipHandle = nullptr;
        return;
    }
    AddThumbnail();
    void* memory = nullptr;
    unsigned long size = 0;
    std::uint32_t result = ZipGetMemory(zipHandle, &memory, &size);
    if (result == eZoZipOk) {
        zorv::detail::FileReplacement file(archiveName);
        if (!file.IsOpen()) {
            result = eZoZipNoFile;
        } else {
            file.Stream().write(static_cast<const char*>(memory), static_cast<std::streamsize>(size));
            result = file.Commit() ? eZoZipOk : eZoZipWriteFailed;
        }
    }
    if (result != eZoZipOk) lastResult = result;
    CloseZipZ(zipHandle);
    zipHandle = nullptr;
    writing = false;
}

bool CZipWrapper::RefuseData() {
    overrun = true;
    return false;
}

bool CZipWrapper::Write(const std::string& text) {
    return AddZipData(text.c_str(), std::char_traits<char>::length(text.c_str()) + 1);
}

bool CZipWrapper::Write(const std::wstring& text) {
    textScratch.clear();
    zorv::detail::AppendUtf16Le(textScratch, text.c_str());
    textScratch.append(2, '\0');
    return AddZipData(textScratch.data(), textScratch.size());
}

bool CZipWrapper::HasItem(const std::wstring& name) {
    lastResult = ZoUnzipFind(zipHandle, name.c_str(), true, nullptr, nullptr);
    return lastResult == eZoZipOk;
}

void* CZipWrapper::UnzipItem(const std::wstring& name, ZIPENTRY* entry) {
    FreeZipData();
    int index = -1;
    lastResult = ZoUnzipFind(zipHandle, name.c_str(), true, &index, entry);
    if (lastResult != eZoZipOk) return nullptr;
    itemName = name;
    return TakeItem(index, true);
}

void* CZipWrapper::UnzipItem(int index, ZIPENTRY* entry) {
    FreeZipData();
    ZIPENTRY described;
    lastResult = index < 0 ? std::uint32_t{eZoZipArguments} : ZoUnzipEntry(zipHandle, index, &described);
    if (lastResult != eZoZipOk) return nullptr;
    itemName = described.name;
    if (entry) *entry = described;
    return TakeItem(index, false);
}

void* CZipWrapper::TakeItem(int index, bool sealed) {
    lastResult = ZoUnzipItem(zipHandle, index, buffer, bufferSize);
    if (lastResult == eZoZipOk && sealed && !CheckCurrentItemCRC()) lastResult = eZoZipCorrupt;
    if (lastResult == eZoZipOk) return buffer.get();
    FreeZipData();
    failedItems.push_back({lastResult, itemName});
    return nullptr;
}

bool CZipWrapper::CheckCurrentItemCRC() {
    if (!buffer || bufferSize < kSealSize) return false;
    const std::size_t size = bufferSize - kSealSize;
    std::uint32_t seal = 0;
    std::memcpy(&seal, buffer.get() + size, kSealSize);
    if (ZoCalcCRC32().Crc(buffer.get(), size) != seal) return false;
    bufferSize = size;
    return true;
}

std::size_t CZipWrapper::RefuseRead() {
    constexpr int kFrequency = 1000;
    constexpr int kDuration = 100;
    ZorvBeep(kFrequency, kDuration);
    return 0;
}

std::uint64_t CZipWrapper::ReadCount(std::size_t smallestElement) {
    std::uint64_t count = 0;
    ReadValue(count);
    if (count > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return 0;
    return smallestElement == 0 ? count : std::min<std::uint64_t>(count, ReadBytesLeft() / smallestElement);
}

std::size_t CZipWrapper::Read(std::string* text) {
    if (writing) return RefuseRead();
    if (!text) return 0;
    if (const std::size_t left = ReadBytesLeft(); buffer && left > 0) {
        const char* start = buffer.get() + position;
        const auto* end = static_cast<const char*>(std::memchr(start, 0, left));
        const std::size_t length = end ? static_cast<std::size_t>(end - start) : left;
        text->append(start, length);
        position += end ? length + 1 : length;
    }
    return text->size();
}

std::size_t CZipWrapper::Read(std::wstring* text) {
    if (!text) return 0;
    text->clear();
    if (writing) return RefuseRead();
    if (!buffer) return 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(buffer.get()) + position;
    const std::size_t units = ReadBytesLeft() / 2;
    std::size_t length = 0;
    unsigned int all = 0;
    for (; length < units; ++length) {
        const unsigned int unit = bytes[2 * length] | (bytes[2 * length + 1] << 8);
        if (unit == 0) break;
        all |= unit;
    }
    constexpr unsigned int kFirstSurrogate = 0xd800;
    if (all < kFirstSurrogate) {
        text->resize(length);
        for (std::size_t i = 0; i < length; ++i)
            (*text)[i] = static_cast<wchar_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
    } else {
        std::u16string pairs(length, u'\0');
        std::memcpy(pairs.data(), bytes, 2 * length);
        *text = zorv::detail::WideFromUtf16(pairs);
    }
    // A text that the item's end cuts off takes what is left of it.
    position = length < units ? position + 2 * (length + 1) : bufferSize;
    return text->size();
}

void CZipWrapper::FreeZipData() {
    buffer.reset();
    bufferSize = 0;
    position = 0;
}

std::wstring CZipWrapper::ErrorMsg(int result) {
    return zorv::detail::WideZipMessage(static_cast<std::uint32_t>(result));
}
