#include "zorv/core/zip_io.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "zorv/core/platform/large_block.h"

namespace zorv::detail {

namespace {

constexpr std::size_t kWindowSize = 16 * 1024;

/// The position that a seek of minizip means, forwards or backwards; beyond `end` there is none.
bool SeekTarget(std::uint64_t present, std::uint64_t end, std::uint64_t offset, int origin, std::uint64_t& target) {
    std::uint64_t to = offset;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR) to += present;
    if (origin == ZLIB_FILEFUNC_SEEK_END) to += end;
    if (to > end) return false;
    target = to;
    return true;
}

voidpf OpenNothing(voidpf opaque, const void* /*name*/, int /*mode*/) {
    return opaque;
}

int CloseNothing(voidpf /*opaque*/, voidpf /*stream*/) {
    return 0;
}

int NoError(voidpf /*opaque*/, voidpf /*stream*/) {
    return 0;
}

uLong RefuseRead(voidpf /*opaque*/, voidpf /*stream*/, void* /*target*/, uLong /*size*/) {
    return 0;
}

uLong RefuseWrite(voidpf /*opaque*/, voidpf /*stream*/, const void* /*data*/, uLong /*size*/) {
    return 0;
}

uLong WriteSink(voidpf opaque, voidpf /*stream*/, const void* data, uLong size) {
    return static_cast<ZipSink*>(opaque)->Write(data, size) ? size : 0;
}

ZPOS64_T TellSink(voidpf opaque, voidpf /*stream*/) {
    return static_cast<ZipSink*>(opaque)->Tell();
}

long SeekSink(voidpf opaque, voidpf /*stream*/, ZPOS64_T offset, int origin) {
    auto* sink = static_cast<ZipSink*>(opaque);
    std::uint64_t target = 0;
    return SeekTarget(sink->Tell(), sink->End(), offset, origin, target) && sink->Seek(target) ? 0 : -1;
}

uLong ReadSource(voidpf opaque, voidpf /*stream*/, void* target, uLong size) {
    auto* source = static_cast<ZipSource*>(opaque);
    const std::size_t got = source->ReadAt(source->position, target, size);
    source->position += got;
    return static_cast<uLong>(got);
}

ZPOS64_T TellSource(voidpf opaque, voidpf /*stream*/) {
    return static_cast<ZipSource*>(opaque)->position;
}

long SeekSource(voidpf opaque, voidpf /*stream*/, ZPOS64_T offset, int origin) {
    auto* source = static_cast<ZipSource*>(opaque);
    return SeekTarget(source->position, source->Size(), offset, origin, source->position) ? 0 : -1;
}

}  // namespace

bool MemorySink::Grow(std::size_t size) {
    if (given || size <= capacity) return true;
    const std::size_t wanted = std::min(limit, std::max(size, capacity + capacity / 2));
    auto* block = static_cast<char*>(std::realloc(grown.get(), wanted));
    if (!block) return false;
    static_cast<void>(grown.release());
    grown.reset(block);
    capacity = wanted;
    ExpectFullUse(block, wanted);
    return true;
}

char* MemorySink::RoomAhead(std::uint64_t place, std::size_t& size) {
    if (given || place >= limit) return nullptr;
    const auto start = static_cast<std::size_t>(place);
    const std::size_t room = std::min(size, limit - start);
    if (!Grow(start + room)) return nullptr;
    size = room;
    return Data() + start;
}

bool MemorySink::Write(const void* data, std::size_t size) {
    if (size > limit - position || !Grow(position + size)) return false;
    if (size > 0) std::memcpy(Data() + position, data, size);
    position += size;
    end = std::max(end, position);
    return true;
}

bool MemorySink::Seek(std::uint64_t to) {
    if (to > end) return false;
    position = static_cast<std::size_t>(to);
    return true;
}

bool FileSink::Write(const void* data, std::size_t size) {
    if (!replacement.Stream().write(static_cast<const char*>(data), static_cast<std::streamsize>(size))) return false;
    position += size;
    end = std::max(end, position);
    return true;
}

bool FileSink::Seek(std::uint64_t to) {
    if (!replacement.Stream().seekp(static_cast<std::streamoff>(to))) return false;
    position = to;
    return true;
}

HandleSink::HandleSink(void* handle) : target(handle) {
    const std::int64_t present = target.Tell();
    if (present >= 0) {
        position = end = static_cast<std::uint64_t>(present);
    } else {
        collected = std::make_unique<MemorySink>(nullptr, std::numeric_limits<std::size_t>::max());
    }
}

bool HandleSink::Write(const void* data, std::size_t size) {
    if (!(collected ? collected->Write(data, size) : target.Write(data, size))) return false;
    position += size;
    end = std::max(end, position);
    return true;
}

bool HandleSink::Seek(std::uint64_t to) {
    if (!(collected ? collected->Seek(to) : target.Seek(to))) return false;
    position = to;
    return true;
}

bool HandleSink::Commit() {
    return collected ? target.Write(collected->Data(), static_cast<std::size_t>(end)) : Seek(end);
}

ZipSource::ZipSource(std::unique_ptr<std::istream> bytes) : stream(std::move(bytes)) {
    stream->seekg(0, std::ios::end);
    const std::streamoff end = stream->tellg();
    if (*stream && end > 0) size = static_cast<std::uint64_t>(end);
}

std::size_t ZipSource::ReadStream(std::uint64_t offset, char* target, std::size_t count) {
    stream->clear();
    stream->seekg(static_cast<std::streamoff>(offset));
    stream->read(target, static_cast<std::streamsize>(count));
    return static_cast<std::size_t>(std::max<std::streamsize>(stream->gcount(), 0));
}

std::size_t ZipSource::ReadAt(std::uint64_t offset, void* target, std::size_t count) {
    if (offset >= size) return 0;
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset));
    if (count >= kWindowSize) return ReadStream(offset, static_cast<char*>(target), count);
    const auto holds = [&](const Window& w) { return offset >= w.start && offset + count <= w.start + w.size; };
    if (!holds(windows[recent])) {
        recent = 1 - recent;
        if (Window& other = windows[recent]; !holds(other)) {
            other.bytes.resize(kWindowSize);
            other.start = offset;
            other.size = ReadStream(offset, other.bytes.data(), kWindowSize);
            count = std::min(count, other.size);
        }
    }
    const Window& window = windows[recent];
    if (count > 0) std::memcpy(target, window.bytes.data() + (offset - window.start), count);
    return count;
}

zlib_filefunc64_def StreamFunctions(ZipSink& sink) {
    return {OpenNothing, RefuseRead, WriteSink, TellSink, SeekSink, CloseNothing, NoError, &sink};
}

zlib_filefunc64_def StreamFunctions(ZipSource& source) {
    return {OpenNothing, ReadSource, RefuseWrite, TellSource, SeekSource, CloseNothing, NoError, &source};
}

}  // namespace zorv::detail
