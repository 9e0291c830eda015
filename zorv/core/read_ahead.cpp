#include "zorv/core/read_ahead.h"

#include <cstring>
#include <istream>
#include <string_view>

#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} << 10;

}  // namespace

bool ReadAhead::ReadOn() {
    if (!handle && !stream) return false;
    if (next > 0) {
        std::memmove(buffer.data(), buffer.data() + next, filled - next);
        filled -= next;
        next = 0;
    }
    if (filled > buffer.size() / 2) buffer.resize(buffer.size() * 2);
    if (buffer.empty()) buffer.resize(kBlockSize);

    char* const target = buffer.data() + filled;
    const std::size_t room = buffer.size() - filled;
    std::size_t got = 0;
    if (handle) {
        got = std::fread(target, 1, room, handle);
    } else {
        stream->read(target, static_cast<std::streamsize>(room));
        got = static_cast<std::size_t>(stream->gcount());
    }
    filled += got;
    return got > 0;
}

bool ReadAhead::PassByteOrderMark() {
    while (AtHand().size() < kByteOrderMark.size() && ReadOn()) {
    }
    const std::span<const char> text = AtHand();
    if (!std::string_view(text.data(), text.size()).starts_with(kByteOrderMark)) return false;
    Use(kByteOrderMark.size());
    return true;
}

}  // namespace zorv::detail
