// Any text as the block of a photo: what was read can be used, and what is written of it comes back.

#include <cstddef>
#include <cstdint>

#include "photo_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto make = [] { return ZoPhoto(0u); };
    ZoPhoto photo(0u);
    ReadBlock(std::string(reinterpret_cast<const char*>(data), size),
              [&photo](ZoReaderObject* object) { Require(photo.Read(object) == 1); });
    RequireTextComesBack(make, photo);
    UsePhoto(photo);
    return 0;
}
