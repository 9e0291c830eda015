#include "zorv/cloud/cloud_buffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "zorv/core/logger.h"
#include "zorv/core/platform/file_handle.h"
#include "zorv/core/platform/mapping.h"

static_assert(ZoFileBuffMemoryMap::kInvalidHandle == zorv::detail::kNoHandle);

// By way of the default constructor, so that a window for which there is no memory still closes the file.
ZoFileBuffMemoryMap::ZoFileBuffMemoryMap(const wchar_t* path) : ZoFileBuffMemoryMap() {
    fileName = path ? path : L"";
    if (zorv::detail::OpenForReading(fileName, file) != 0 || zorv::detail::GetFileSize(file, size) != 0) {
        error = kCannotOpen;
    } else if (size == 0) {
        error = kFileEmpty;
    } else if (MapWhole()) {
        zorv::detail::CloseSystemHandle(file);
        file = kInvalidHandle;
    } else {
        ZoApplicationLogger::Log(1, L"ZoFileBuff: Memory Map Error");
        window = std::make_unique<unsigned char[]>(kWindowSize);
        cursor = end = window.get();
    }
}

ZoFileBuffMemoryMap::~ZoFileBuffMemoryMap() {
    if (view) zorv::detail::CloseView(const_cast<unsigned char*>(view), size);
    if (mapping != kInvalidHandle) zorv::detail::CloseSystemHandle(mapping);
    if (file != kInvalidHandle) zorv::detail::CloseSystemHandle(file);
}

bool ZoFileBuffMemoryMap::MapWhole() {
    void* mapped = nullptr;
    if (zorv::detail::MakeMapping(file, mapping) != 0) return false;
    if (zorv::detail::MakeView(mapping, size, true, mapped) != 0) {
        zorv::detail::CloseSystemHandle(mapping);
        mapping = kInvalidHandle;
        return false;
    }
    view = cursor = static_cast<const unsigned char*>(mapped);
    end = view + size;
    return true;
}

bool ZoFileBuffMemoryMap::Read(void* target, std::size_t bytes) {
    if (bytes > BytesLeft()) return false;
    for (auto* next = static_cast<unsigned char*>(target); bytes > 0;) {
        const std::span<const unsigned char> part = Peek(bytes);
        if (part.empty()) return false;
        std::memcpy(next, part.data(), part.size());
        Skip(part.size());
        next += part.size();
        bytes -= part.size();
    }
    return true;
}

std::span<const unsigned char> ZoFileBuffMemoryMap::Peek(std::size_t bytes) {
    if (!view) {
        bytes = std::min(bytes, kWindowSize);
        if (bytes > static_cast<std::size_t>(end - cursor)) ReadAhead();
    }
    return {cursor, std::min(bytes, static_cast<std::size_t>(end - cursor))};
}

void ZoFileBuffMemoryMap::SkipAll() {
    cursor = end;
    if (!view) base = size - static_cast<std::uint64_t>(end - window.get());
}

/// Moves what is left of the window to its beginning and fills the rest from the file.
void ZoFileBuffMemoryMap::ReadAhead() {
    if (!window) return;
    const std::uint64_t position = Position();
    const auto left = static_cast<std::size_t>(end - cursor);
    std::memmove(window.get(), cursor, left);
    const std::uint64_t unread = size - position - left;
    const auto room = static_cast<std::size_t>(std::min<std::uint64_t>(unread, kWindowSize - left));
    const zorv::detail::FileHandle handle(std::bit_cast<void*>(file));
    const std::int64_t got = handle.Read(window.get() + left, room);
    base = position;
    cursor = window.get();
    end = cursor + left + static_cast<std::size_t>(std::max<std::int64_t>(got, 0));
}
