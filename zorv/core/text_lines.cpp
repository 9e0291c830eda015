#include "zorv/core/text_lines.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

constexpr std::size_t kBlockSize = 256 * 1024;

}  // namespace

TextLines::TextLines(const std::wstring& file, LineEnd ends) : lineEnd(ends) {
    const std::filesystem::path path = NativePath(file);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    stream.open(path, std::ios::binary);
    isOpen = stream.is_open();
}

TextLines::TextLines(std::FILE* file, LineEnd ends) : lineEnd(ends), isOpen(file != nullptr), handle(file) {}

TextLines TextLines::FromBytes(std::string bytes, LineEnd ends) {
    TextLines lines(ends);
    lines.isOpen = true;
    lines.buffer = std::move(bytes);
    lines.filled = lines.buffer.size();
    return lines;
}

bool TextLines::Next(std::span<char>& line) {
    if (atStart) PassByteOrderMark();
    if (afterReturn) {
        afterReturn = false;
        if ((position < filled || Fill()) && buffer[position] == '\n') ++position;
    }

    std::size_t searched = 0;
    char* end = nullptr;
    while (!(end = FindLineEnd(position + searched))) {
        searched = filled - position;
        if (!Fill()) break;
    }
    if (!end && position == filled) return false;

    char* const begin = buffer.data() + position;
    if (end) {
        position = static_cast<std::size_t>(end - buffer.data()) + 1;
        afterReturn = *end == '\r';
    } else {
        end = buffer.data() + filled;
        position = filled;
    }
    while (end != begin && end[-1] == '\r')
        --end;
    *end = 0;
    line = {begin, end};
    return true;
}

char* TextLines::FindLineEnd(std::size_t from) {
    char* const begin = buffer.data() + from;
    char* const end = buffer.data() + filled;
    if (lineEnd == LineEnd::kLineFeed) {
        return begin == end ? nullptr : static_cast<char*>(std::memchr(begin, '\n', filled - from));
    }
    char* const found = std::find_if(begin, end, [](char c) { return c == '\n' || c == '\r'; });
    return found == end ? nullptr : found;
}

void TextLines::PassByteOrderMark() {
    atStart = false;
    while (filled < kByteOrderMark.size() && Fill()) {
    }
    if (std::string_view(buffer.data(), filled).starts_with(kByteOrderMark)) position = kByteOrderMark.size();
}

/// Moves the line that was begun to the front of the buffer and reads on behind it; false at the end of the file.
bool TextLines::Fill() {
    if (!handle && !stream.is_open()) return false;
    if (position > 0) {
        std::memmove(buffer.data(), buffer.data() + position, filled - position);
        filled -= position;
        position = 0;
    }
    if (filled > buffer.size() / 2) buffer.resize(buffer.size() * 2);
    if (buffer.empty()) buffer.resize(kBlockSize);

    char* const target = buffer.data() + filled;
    const std::size_t room = buffer.size() - filled;
    std::size_t got = 0;
    if (handle) {
        got = std::fread(target, 1, room, handle);
    } else {
        stream.read(target, static_cast<std::streamsize>(room));
        got = static_cast<std::size_t>(stream.gcount());
    }
    filled += got;
    return got > 0;
}

}  // namespace zorv::detail
