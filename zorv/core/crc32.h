#pragma once

#include <cstddef>
#include <cstdint>

#include "zorv/export.h"

/// CRC-32 of IEEE 802.3, reflected, as in ZIP.
///
/// In one piece: `Crc(data, size)` on a new object. In several: StartSingleCrc, any number of AddCrc, StopSingleCrc,
/// then GetCrc.
class ZORV_API ZoCalcCRC32 {
  public:
    virtual ~ZoCalcCRC32() = default;

    /// Runs over the data from the present state, inverted; keeps the running value and returns it inverted. A null
    /// pointer clears the state and returns 0.
    std::uint32_t Crc(const void* data, std::size_t size);
    void Reset() { crc = 0; }
    std::uint32_t GetCrc() const { return crc; }

    void StartSingleCrc() { crc = ~crc; }
    void StopSingleCrc() { crc = ~crc; }
    /// Takes more bytes between Start and Stop.
    void AddCrc(const void* data, std::size_t size);
    /// Takes the value's four bytes, low byte first.
    void AddCrc(unsigned int value);

    std::uint32_t crc = 0;
};

namespace zorv::detail {

/// Continues the standard CRC-32 of earlier bytes (0 for none) over more.
std::uint32_t Crc32(std::uint32_t crc, const void* data, std::size_t size);

}  // namespace zorv::detail
