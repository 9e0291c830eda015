#pragma once

#include <atomic>
#include <cstdint>
#include <istream>
#include <memory>
#include <new>

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

/// One of the two directions: which handles are its own, and the result of its last call.
class ZipDirection {
  public:
    constexpr explicit ZipDirection(std::uint32_t ownTag) : tag(ownTag) {}

    bool Has(HZIP zip) const { return zip && zip->tag == tag; }
    std::uint32_t LastResult() const { return lastResult; }
    std::uint32_t Keep(std::uint32_t result) {
        lastResult = result;
        return result;
    }
    HZIP Fail(std::uint32_t result) {
        Keep(result);
        return nullptr;
    }
    /// Runs an operation on what an own handle leads to and keeps its result.
    template <class Operation>
    std::uint32_t Run(HZIP zip, Operation operation) {
        if (!zip) return Keep(eZoZipArguments);
        if (!Has(zip)) return Keep(eZoZipDirection);
        try {
            return Keep(operation(*zip));
        } catch (const std::bad_alloc&) {
            return Keep(eZoZipNoMemory);
        }
    }

  private:
    std::uint32_t tag;
    std::atomic<std::uint32_t> lastResult{eZoZipOk};
};

/// Opens a ZIP for reading from any bytes.
HZIP OpenZip(std::unique_ptr<std::istream> bytes);

/// The last result of writing.
std::uint32_t LastZipResult();

}  // namespace zorv::detail
