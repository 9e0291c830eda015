#pragma once

#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

/// LAS and LAZ files put together by hand for the tests.
namespace las_bytes {

template <class Number>
void Put(std::string& bytes, std::size_t at, Number number) {
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

template <class Number>
void Append(std::string& bytes, const Number& number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

/// A header of version 1.`minor` with scales 0.01, 0.02, 0.5 and offsets 1000, 2000, -3; the points follow at once.
inline std::string Header(int minor, unsigned int format, unsigned int recordLength, std::uint64_t points) {
    const std::uint16_t size = minor >= 4 ? 375 : (minor == 3 ? 235 : 227);
    std::string bytes(size, '\0');
    std::memcpy(bytes.data(), "LASF", 4);
    bytes[24] = 1;
    bytes[25] = static_cast<char>(minor);
    Put(bytes, 94, size);
    Put(bytes, 96, std::uint32_t{size});
    bytes[104] = static_cast<char>(format);
    Put(bytes, 105, static_cast<std::uint16_t>(recordLength));
    // From format 6 on only the 64-bit count tells.
    if ((format & 0x7f) < 6) Put(bytes, 107, static_cast<std::uint32_t>(points));
    if (minor >= 4) Put(bytes, 247, points);
    std::size_t at = 131;
    for (const double value : {0.01, 0.02, 0.5, 1000.0, 2000.0, -3.0}) {
        Put(bytes, at, value);
        at += sizeof value;
    }
    return bytes;
}

/// A group of fields of a compressed record.
struct Item {
    std::uint16_t type, size, version;
};
using Items = std::vector<Item>;

inline std::size_t RecordLength(const Items& items) {
    return std::accumulate(items.begin(), items.end(), std::size_t{0},
                           [](std::size_t sum, const Item& item) { return sum + item.size; });
}

/// A header with the record of the compressor behind it; the compressed points follow at once.
inline std::string LazHeader(int minor, unsigned int format, std::uint64_t points, std::uint16_t compressor,
                             std::uint32_t chunkSize, const Items& items) {
    std::string record(34, '\0');
    Put(record, 0, compressor);
    Put(record, 12, chunkSize);
    Put(record, 32, static_cast<std::uint16_t>(items.size()));
    for (const Item& item : items)
        Append(record, item);
    std::string bytes = Header(minor, format | 0x80, static_cast<unsigned int>(RecordLength(items)), points);
    std::string recordHeader(54, '\0');
    std::memcpy(recordHeader.data() + 2, "laszip encoded", 14);
    Put(recordHeader, 18, std::uint16_t{22204});
    Put(recordHeader, 20, static_cast<std::uint16_t>(record.size()));
    Put(bytes, 96, static_cast<std::uint32_t>(bytes.size() + recordHeader.size() + record.size()));
    Put(bytes, 100, std::uint32_t{1});
    return bytes + recordHeader + record;
}

}  // namespace las_bytes
