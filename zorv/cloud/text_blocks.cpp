#include "zorv/cloud/text_blocks.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

namespace {

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
    plain = true;
    reads = ReadAhead(ownStream);
    size = std::filesystem::file_size(native, failure);
    if (failure) size = 0;
}

TextBlocks::TextBlocks(std::FILE* stream) : plain(true), reads(*stream) {
    const long begin = std::ftell(stream);
    if (begin < 0 || std::fseek(stream, 0, SEEK_END) != 0) return;
    const long end = std::ftell(stream);
    std::fseek(stream, begin, SEEK_SET);
    size = static_cast<std::uint64_t>(std::max(end - begin, 0L));
}

TextBlocks::TextBlocks(std::istream& stream) : plain(true), reads(stream) {
    const std::istream::pos_type begin = stream.tellg();
    if (begin == std::istream::pos_type(-1)) return;
    stream.seekg(0, std::ios::end);
    const std::istream::pos_type end = stream.tellg();
    stream.clear();
    stream.seekg(begin);
    if (end > begin) size = static_cast<std::uint64_t>(end - begin);
}

bool TextBlocks::Next(std::string_view& block) {
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
    if (plain ? reads.PassByteOrderMark() : view.starts_with(kByteOrderMark)) position = kByteOrderMark.size();
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
    const auto atHand = [this] { return std::string_view(reads.AtHand().data(), reads.AtHand().size()); };
    std::size_t searched = 0;  // no line feed stands before this place
    std::size_t end = std::string_view::npos;
    while ((end = atHand().substr(searched).rfind('\n')) == std::string_view::npos) {
        searched = atHand().size();
        if (!reads.ReadOn()) break;
    }
    current = end == std::string_view::npos ? atHand() : atHand().substr(0, searched + end + 1);
    reads.Use(current.size());
    return !current.empty();
}

std::uint64_t TextBlocks::BytesFrom(const char* at) const {
    const auto here = static_cast<std::uint64_t>(current.data() + current.size() - at);
    return here + (size > position ? size - position : 0);
}

std::uint64_t TextBlocks::LinesFrom(const char* at) const {
    if (!plain) return CountLines({at, static_cast<std::size_t>(view.data() + view.size() - at)});
    const std::uint64_t inBlock = std::max<std::uint64_t>(CountLines(current), 1);
    const std::uint64_t perLine = std::max<std::uint64_t>(current.size() / inBlock, 1);
    return BytesFrom(at) / perLine + 1;
}

}  // namespace zorv::detail
