#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// Bytes of a file in memory, read with their bounds in sight. Numbers are little-endian.
namespace zorv::detail {

using ByteView = std::span<const std::uint8_t>;

/// A number from the bytes at that address.
template <class Number>
requires std::integral<Number> || std::floating_point<Number> Number LoadNumber(const std::uint8_t* bytes) {
    static_assert(std::endian::native == std::endian::little, "numbers lie in memory as they do in the file");
    Number number;
    std::memcpy(&number, bytes, sizeof(Number));
    return number;
}

/// A number at an offset, or 0 where the bytes end before it does.
template <class Number>
Number NumberAt(ByteView bytes, std::uint64_t offset) {
    if (bytes.size() < sizeof(Number) || offset > bytes.size() - sizeof(Number)) return Number{};
    return LoadNumber<Number>(bytes.data() + offset);
}

/// As many of `size` bytes from an offset as there are.
inline ByteView BytesAt(ByteView bytes, std::uint64_t offset, std::uint64_t size) {
    if (offset >= bytes.size()) return {};
    const std::uint64_t left = bytes.size() - offset;
    return bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size < left ? size : left));
}

/// All bytes from an offset.
inline ByteView BytesFrom(ByteView bytes, std::uint64_t offset) {
    return BytesAt(bytes, offset, bytes.size());
}

}  // namespace zorv::detail
