#pragma once

#include <memory>
#include <string>

#include "zorv/core/archive.h"

/// An archive item in memory, as if it had been unpacked. The block is just as long as the bytes.
class ArchiveItem : public CZipWrapper {
  public:
    ArchiveItem() = default;
    explicit ArchiveItem(const std::string& bytes) : ArchiveItem(bytes.data(), bytes.size()) {}
    ArchiveItem(const void* bytes, std::size_t size) {
        bufferSize = size;
        buffer = std::make_unique<char[]>(size);
        if (size > 0) std::memcpy(buffer.get(), bytes, size);
        sizing = false;
    }
    void WriteItem() override {}
};

/// The archive form of a record.
template <class Record>
std::string ArchiveBytes(const Record& record) {
    ArchiveItem size;
    record.WriteV9(&size);
    ArchiveItem item(std::string(size.sizedBytes, '\0'));
    record.WriteV9(&item);
    return std::string(item.buffer.get(), item.position);
}

/// Reads a record from its archive form and returns how many bytes it left.
template <class Record>
std::size_t ReadArchiveBytes(const std::string& bytes, Record& record) {
    ArchiveItem item(bytes);
    record.ReadV9(&item);
    return item.ReadBytesLeft();
}
