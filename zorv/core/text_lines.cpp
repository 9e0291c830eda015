#include "zorv/core/text_lines.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "zorv/core/platform/files.h"

namespace zorv::detail {

TextLines::TextLines(const std::wstring& file, LineEnd ends) : lineEnd(ends) {
    const std::filesystem::path path = NativePath(file);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return;
    stream = std::make_unique<std::ifstream>(path, std::ios::binary);
    isOpen = stream->is_open();
    if (isOpen) bytes = ReadAhead(*stream);
}

TextLines::TextLines(std::FILE* file, LineEnd ends) : lineEnd(ends), isOpen(file != nullptr) {
    if (file) bytes = ReadAhead(*file);
}

TextLines TextLines::FromBytes(std::string text, LineEnd ends) {
    TextLines lines(ends);
    lines.isOpen = true;
    lines.bytes = ReadAhead(std::move(text));
    return lines;
}

bool TextLines::Next(std::span<char>& line) {
    if (atStart) {
        atStart = false;
        bytes.PassByteOrderMark();
    }
    if (afterReturn) {
        afterReturn = false;
        if ((!bytes.AtHand().empty() || bytes.ReadOn()) && bytes.AtHand().front() == '\n') bytes.Use(1);
    }

    std::size_t searched = 0;
    char* end = nullptr;
    while (!(end = FindLineEnd(searched))) {
        searched = bytes.AtHand().size();
        if (!bytes.ReadOn()) break;
    }
    const std::span<char> text = bytes.AtHand();
    if (!end && text.empty()) return false;

    char* const begin = text.data();
    if (end) {
        bytes.Use(static_cast<std::size_t>(end - begin) + 1);
        afterReturn = *end == '\r';
    } else {
        end = begin + text.size();
        bytes.Use(text.size());
    }
    while (end != begin && end[-1] == '\r')
        --end;
    *end = 0;
    line = {begin, end};
    return true;
}

char* TextLines::FindLineEnd(std::size_t from) {
    const std::span<char> text = bytes.AtHand().subspan(from);
    if (lineEnd == LineEnd::kLineFeed) {
        return text.empty() ? nullptr : static_cast<char*>(std::memchr(text.data(), '\n', text.size()));
    }
    const auto found = std::find_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
    return found == text.end() ? nullptr : &*found;
}

}  // namespace zorv::detail
