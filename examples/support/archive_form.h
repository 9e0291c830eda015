#pragma once

#include <memory>
#include <string>

#include <zorv/zorv.h>

/// The bytes of the archive form of a record or list, by which a host compares two of them.
template <class Record>
std::string ArchiveForm(const Record& record) {
    struct Bytes : CZipWrapper {
        void WriteItem() override {}
    };
    Bytes size;
    record.WriteV9(&size);
    Bytes bytes;
    bytes.bufferSize = size.sizedBytes;
    bytes.buffer = std::make_unique<char[]>(bytes.bufferSize);
    bytes.sizing = false;
    record.WriteV9(&bytes);
    return std::string(bytes.buffer.get(), bytes.bufferSize);
}
