// Any bytes as the archive item of a list of photos.

#include <cstddef>
#include <cstdint>

#include "photo_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kSmallestRecord = 49;
    CheckArchive<ZoPhotoList>(std::string(reinterpret_cast<const char*>(data), size), kSmallestRecord, UsePhoto);
    return 0;
}
