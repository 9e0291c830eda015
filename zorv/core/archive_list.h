#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "zorv/core/archive.h"
#include "zorv/core/list.h"

namespace zorv::detail {

/// Archive form of a list: the number of records (8 bytes), then theirs.
template <class T>
void WriteRecords(const TZoListHeader<T>& list, CZipWrapper* archive) {
    // A walk of its own, which takes time with a long list; the size does not depend on it.
    archive->WriteCount(archive->sizing ? 0 : static_cast<std::uint64_t>(list.Count()));
    for (const T* record = list.First(); record; record = static_cast<const T*>(record->next))
        record->WriteV9(archive);
}

/// Appends the records of a list as WriteRecords writes it, each made by `make(archive)`, whatever the count says only
/// as far as the item goes. `smallestRecord` is the least number of bytes that a record takes.
template <class T, class Make>
void ReadRecords(TZoListHeader<T>& list, CZipWrapper* archive, std::size_t smallestRecord, Make make) {
    std::uint64_t left = archive->ReadCount(smallestRecord);
    for (; left > 0 && archive->ReadBytesLeft() >= smallestRecord; --left)
        list.Add(std::unique_ptr<T>(make(archive)).release());
}

/// The same for records that read themselves on construction.
template <class T>
void ReadRecords(TZoListHeader<T>& list, CZipWrapper* archive, std::size_t smallestRecord) {
    ReadRecords(list, archive, smallestRecord, [](CZipWrapper* item) { return new T(item); });
}

}  // namespace zorv::detail
