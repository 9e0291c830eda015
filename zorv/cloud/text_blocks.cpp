#include "zorv/cloud/text_blocks.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

constexpr std::size_t kReadSize = std::size_t{256} << 10;

/// A view is cut into this many blocks, so that there is something to tell on the way.
constexpr std::size_t kBlocksOfView = 64;
constexpr std::size_t kSmallestBlock = std::size_t{64} << 10;

std::uint64_t CountLineFeeds(std::string_view text) {
    // In pieces whose count fits a byte: many bytes are then compared at a time.
    constexpr std::size_t kPiece = 192;
    std::uint64_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += kPiece) {
        unsigned char here = 0;
        for (const char c : text.substr(at, kPiece))
            here = static_cast<unsigned char>(here + (c == '\n' ? 1 : 0));
        count += here;
    }
    return count;
}

/// Lines of a text, one without line feed at its end included.
std::uint64_t CountLines(std::string_view text) {
    return CountLineFeeds(text) + (!text.empty() && text.back() != '\n' ? 1 : 0);
}

}  // namespace

TextBlocks::TextBlocks(const std::wstring& path) : file(std::make_unique<FileBytes>(path)) {
    const ByteView bytes = file->View();
    view = {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    size = view.size();
    error = file->GetSystemError();
    if (error == 0) return;
    const std::filesystem::path native = NativePath(path);
    std::error_code failure;
    if (!std::filesystem::is_regular_file(native, failure)) return;
    ownStream.open(native, std::ios::binary);
    if (!ownStream) return;
    error = 0;
    input = &ownStream;
    size = std::filesystem::file_size(native, failure);
    if (failure) size = 0;
}

TextBlocks::TextBlocks(std::FILE* stream) : handle(stream) {
    const long begin = std::ftell(stream);
    if (begin < 0 || std::fseek(stream, 0, SEEK_END) != 0) return;
    const long end = std::ftell(stream);
    std::fseek(stream, begin, SEEK_SET);
    size = static_cast<std::uint64_t>(std::max(end - begin, 0L));
}

TextBlocks::TextBlocks(std::istream& stream) : input(&stream) {
    const std::istream::pos_type begin = stream.tellg();
    if (begin == std::istream::pos_type(-1)) return;
    stream.seekg(0, std::ios::end);
    const std::istream::pos_type end = stream.tellg();
    stream.clear();
    stream.seekg(begin);
    if (end > begin) size = static_cast<std::uint64_t>(end - begin);
}

bool TextBlocks::Next(std::string_view& block) {
    const bool plain = input || handle;
    if (position == 0) PassByteOrderMark();
    if (!(plain ? NextOfReads() : NextOfView())) {
        current = {};
        return false;
    }
    position += current.size();
    block = current;
    return true;
}

void TextBlocks::PassByteOrderMark() {
    if (input || handle) {
        while (filled < kByteOrderMark.size() && Fill()) {
        }
    }
    const std::string_view start = input || handle ? std::string_view(buffer.data(), filled) : view;
    if (!start.starts_with(kByteOrderMark)) return;
    position = kByteOrderMark.size();
    next = kByteOrderMark.size();
}

bool TextBlocks::NextOfView() {
    const std::string_view rest = view.substr(static_cast<std::size_t>(position));
    if (rest.empty()) return false;
    const std::size_t wanted = std::max(view.size() / kBlocksOfView, kSmallestBlock);
    std::size_t end = rest.find('\n', wanted - 1);
    if (end == rest.npos) end = rest.substr(0, wanted - 1).rfind('\n');
    current = end == rest.npos ? rest : rest.substr(0, end + 1);
    return true;
}

bool TextBlocks::NextOfReads() {
    // No line feed stands before this place.
    std::size_t searched = next;
    for (;;) {
        const std::string_view fresh(buffer.data() + searched, filled - searched);
        const std::size_t end = fresh.rfind('\n');
        const bool found = end != fresh.npos;
        const std::size_t begun = filled - next;
        if (found || !Fill()) {
            const std::size_t length = found ? searched + end + 1 - next : begun;
            current = {buffer.data() + next, length};
            next += length;
            return length > 0;
        }
        searched = next + begun;
    }
}

/// Moves the line that was begun to the front of the buffer and reads on behind it; false at the end.
bool TextBlocks::Fill() {
    if (next > 0) {
        std::memmove(buffer.data(), buffer.data() + next, filled - next);
        filled -= next;
        next = 0;
    }
    if (filled > buffer.size() / 2) buffer.resize(buffer.size() * 2);
    if (buffer.empty()) buffer.resize(kReadSize);
    char* const target = buffer.data() + filled;
    const std::size_t room = buffer.size() - filled;
    std::size_t got = 0;
    if (handle) {
        got = std::fread(target, 1, room, handle);
    } else {
        input->read(target, static_cast<std::streamsize>(room));
        got = static_cast<std::size_t>(input->gcount());
    }
    filled += got;
    return got > 0;
}

std::uint64_t TextBlocks::BytesFrom(const char* at) const {
    const auto here = static_cast<std::uint64_t>(current.data() + current.size() - at);
    return here + (size > position ? size - position : 0);
}

std::uint64_t TextBlocks::LinesFrom(const char* at) const {
    if (!input && !handle) return CountLines({at, static_cast<std::size_t>(view.data() + view.size() - at)});
    const std::uint64_t inBlock = std::max<std::uint64_t>(CountLines(current), 1);
    const std::uint64_t perLine = std::max<std::uint64_t>(current.size() / inBlock, 1);
    return BytesFrom(at) / perLine + 1;
}

}  // namespace zorv::detail
