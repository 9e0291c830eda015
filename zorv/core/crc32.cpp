#include "zorv/core/crc32.h"

#include <array>

#ifdef ZORV_HAVE_LIBDEFLATE
#include <libdeflate.h>
#else
#include <zlib.h>
#endif

namespace zorv::detail {

std::uint32_t Crc32(std::uint32_t crc, const void* data, std::size_t size) {
    if (size == 0) return crc;
#ifdef ZORV_HAVE_LIBDEFLATE
    return libdeflate_crc32(crc, data, size);
#else
    return static_cast<std::uint32_t>(crc32_z(crc, static_cast<const Bytef*>(data), size));
#endif
}

}  // namespace zorv::detail

std::uint32_t ZoCalcCRC32::Crc(const void* data, std::size_t size) {
    if (!data) {
        crc = 0;
        return 0;
    }
    const std::uint32_t result = zorv::detail::Crc32(crc, data, size);
    crc = ~result;
    return result;
}

void ZoCalcCRC32::AddCrc(const void* data, std::size_t size) {
    if (data) crc = ~zorv::detail::Crc32(~crc, data, size);
}

void ZoCalcCRC32::AddCrc(unsigned int value) {
    std::array<unsigned char, 4> bytes{};
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(value & 0xff);
        value >>= 8;
    }
    AddCrc(bytes.data(), bytes.size());
}
