#include <cerrno>

#include <unistd.h>

#include "zorv/core/platform/file_handle.h"

namespace zorv::detail {

namespace {

int Descriptor(void* handle) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle));
}

}  // namespace

std::int64_t FileHandle::Tell() const {
    return ::lseek(Descriptor(handle), 0, SEEK_CUR);
}

bool FileHandle::Seek(std::uint64_t position) const {
    return ::lseek(Descriptor(handle), static_cast<off_t>(position), SEEK_SET) >= 0;
}

std::int64_t FileHandle::Read(void* target, std::size_t size) const {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got = ::read(Descriptor(handle), static_cast<char*>(target) + done, size - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(done);
}

bool FileHandle::Write(const void* data, std::size_t size) const {
    const char* next = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t put = ::write(Descriptor(handle), next, size);
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) return false;
        next += put;
        size -= static_cast<std::size_t>(put);
    }
    return true;
}

}  // namespace zorv::detail
