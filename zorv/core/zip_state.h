#pragma once

#include <cstdint>
#include <istream>
#include <memory>

#include "zorv/core/zip.h"
#include "zorv/core/zip_reader.h"
#include "zorv/core/zip_writer.h"

/// What an HZIP leads to: a tag that tells the direction, and the state of that direction.
struct ZoZip {
    std::uint32_t tag = 0;
    std::unique_ptr<zorv::detail::ZipReader> reader;
    std::unique_ptr<zorv::detail::ZipWriter> writer;
};

namespace zorv::detail {

inline constexpr std::uint32_t kReadingTag = 1;
inline constexpr std::uint32_t kWritingTag = 2;

/// Opens a ZIP for reading from any bytes.
HZIP OpenZip(std::unique_ptr<std::istream> bytes);

/// The last result of writing.
std::uint32_t LastZipResult();

}  // namespace zorv::detail
