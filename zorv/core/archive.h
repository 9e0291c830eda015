#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "zorv/core/zip.h"
#include "zorv/export.h"

namespace zorv::detail {

/// What an archive item holds as raw bytes. A wide character differs from system to system and is none.
template <class T>
concept ArchiveValue = std::is_enum_v<T> ||(std::is_arithmetic_v<T> && !std::is_same_v<T, wchar_t>);

}  // namespace zorv::detail

/// A project archive: a ZIP file whose items are flat streams of raw values, each sealed by a CRC.
///
/// A host derives from it, names the items and writes the current item's records in WriteItem. Every record has the
/// two operations ReadV9 and WriteV9, which take the archive as their stream. Values are little-endian, without tags
/// and alignment; texts are zero-terminated, wide ones UTF-16LE; counts take 8 bytes.
class ZORV_API CZipWrapper {
  public:
    /// An item that UnzipItem found but could not give, and why.
    struct FailedItem {
        std::uint32_t result = 0;
        std::wstring itemName;
    };

    CZipWrapper() = default;
    CZipWrapper(const std::wstring& archive, bool write);
    virtual ~CZipWrapper();
    CZipWrapper(const CZipWrapper&) = delete;
    CZipWrapper& operator=(const CZipWrapper&) = delete;

    /// Opens an archive for writing (in memory, at most 500,000,000 bytes, until SzClose) or for reading. False when
    /// one is open already or it cannot be opened.
    bool SzOpen(const std::wstring& archive, bool write);
    /// Adds one item: calls WriteItem twice, first to learn the size, then to take the bytes. Returns true; what went
    /// wrong stands in GetLastResult: eZoZipMemoryFull when the archive has no room for it, eZoZipWrongSize when the
    /// two calls differ. The archive then goes on without the item.
    bool SzAdd(const std::wstring& itemName);
    /// Closes the archive. One that was written reaches the disk here, beside the old file first. A failure stands in
    /// GetLastResult; success leaves that as it was.
    void SzClose();

    /// Appends raw bytes to the item being written. False when they exceed what the first pass announced.
    bool AddZipData(const void* data, std::size_t size) {
        if (sizing) {
            sizedBytes += size;
            return true;
        }
        if (size > ReadBytesLeft()) return RefuseData();
        if (size > 0) std::memcpy(buffer.get() + position, data, size);
        position += size;
        return true;
    }
    /// Appends a value as it lies in memory.
    template <zorv::detail::ArchiveValue T>
    bool WriteValue(T value) {
        return AddZipData(&value, sizeof value);
    }
    /// Appends the number of elements of a list or table, 8 bytes.
    bool WriteCount(std::uint64_t count) { return WriteValue(count); }
    /// Appends the text and its terminator. A text ends at its first zero.
    bool Write(const std::string& text);
    bool Write(const std::wstring& text);

    /// Whether the archive being read has the item; case does not matter.
    bool HasItem(const std::wstring& name);
    /// Unpacks an item and checks its seal; its bytes, or null. They stay with the archive until the next item.
    void* UnzipItem(const std::wstring& name, ZIPENTRY* entry);
    /// The same by index, without the seal: the item is taken as it stands.
    void* UnzipItem(int index, ZIPENTRY* entry);

    /// Copies up to `size` bytes and returns how many there were.
    std::size_t Read(char* target, std::size_t size) {
        if (writing) return RefuseRead();
        if (!buffer || !target) return 0;
        const std::size_t count = size < ReadBytesLeft() ? size : ReadBytesLeft();
        if (count > 0) std::memcpy(target, buffer.get() + position, count);
        position += count;
        return count;
    }
    /// Reads a value as it lies in memory; at the end of the item it stays as it is. Returns whether it was there.
    template <zorv::detail::ArchiveValue T>
    bool ReadValue(T& value) {
        char bytes[sizeof(T)] = {};
        if (Read(bytes, sizeof bytes) != sizeof bytes) return false;
        if constexpr (std::is_same_v<T, bool>) {
            value = bytes[0] != 0;
        } else {
            std::memcpy(&value, bytes, sizeof bytes);
        }
        return true;
    }
    /// Reads a count and brings it down to what the rest of the item can hold when each element takes at least
    /// `smallestElement` bytes, so that a lying count costs no memory. A negative one is 0.
    std::uint64_t ReadCount(std::size_t smallestElement);
    /// Appends bytes up to a zero; returns the length of the text.
    std::size_t Read(std::string* text);
    /// Reads UTF-16LE up to a zero; returns the length of the text.
    std::size_t Read(std::wstring* text);

    bool Eof() const { return position >= bufferSize; }
    std::size_t ReadBytesLeft() const { return position < bufferSize ? bufferSize - position : 0; }
    /// Forgets the item at hand.
    void FreeZipData();

    std::wstring ErrorMsg() const { return ErrorMsg(static_cast<int>(lastResult)); }
    static std::wstring ErrorMsg(int result);
    std::uint32_t GetLastResult() const { return lastResult; }
    const std::vector<FailedItem>& GetFailedItems() const { return failedItems; }
    /// A picture to store as "Thumbnail.png" when the archive is closed.
    void SetThumbnailFile(const std::wstring& file) { thumbnailFile = file; }

    /// Writes the records of the item that SzAdd named. It is called twice and must write the same both times.
    virtual void WriteItem() = 0;

    bool writing = false;
    HZIP zipHandle = nullptr;
    std::unique_ptr<char[]> buffer;  ///< the item at hand
    std::size_t bufferSize = 0;
    std::size_t position = 0;
    bool sizing = true;
    std::uint64_t sizedBytes = 0;
    std::uint32_t lastResult = 0;
    std::wstring archiveName;
    std::wstring thumbnailFile;
    std::wstring itemName;
    std::vector<FailedItem> failedItems;

  protected:
    void AddThumbnail();
    bool CheckCurrentItemCRC();

  private:
    std::uint32_t MakeItem();
    bool RefuseData();
    std::size_t RefuseRead();
    void* TakeItem(int index, bool sealed);

    bool overrun = false;     ///< the second pass of SzAdd wanted to write more than the first
    std::string textScratch;  ///< bytes of a wide text on their way to the item
};
