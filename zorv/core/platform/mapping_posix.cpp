#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zorv/core/platform/files.h"
#include "zorv/core/platform/mapping.h"

namespace zorv::detail {

namespace {

int Descriptor(SystemHandle handle) {
    return static_cast<int>(handle);
}

template <class Size>
bool Fits(std::uint64_t size) {
    return size <= static_cast<std::uint64_t>(std::numeric_limits<Size>::max());
}

}  // namespace

int OpenForMapping(const std::wstring& file, MapFile mode, SystemHandle& handle) {
    const int access = mode == MapFile::kOpenReadOnly ? O_RDONLY : O_RDWR;
    const int how = mode == MapFile::kCreateNew ? O_CREAT | O_TRUNC : 0;
    const int opened = ::open(NativePath(file).c_str(), access | O_CLOEXEC | how, 0666);
    if (opened < 0) return errno;
    handle = opened;
    return 0;
}

int OpenForReading(const std::wstring& file, SystemHandle& handle) {
    // A pipe would keep the caller waiting for its writer.
    const int opened = ::open(NativePath(file).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (opened < 0) return errno;
    struct stat status {};
    if (::fstat(opened, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(opened);
        return EINVAL;
    }
    ::posix_fadvise(opened, 0, 0, POSIX_FADV_SEQUENTIAL);
    handle = opened;
    return 0;
}

int GetFileSize(SystemHandle handle, std::uint64_t& size) {
    struct stat status {};
    if (::fstat(Descriptor(handle), &status) != 0) return errno;
    size = status.st_size > 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
    return 0;
}

int ReserveFileSize(SystemHandle handle, std::uint64_t size) {
    if (!Fits<::off_t>(size)) return EFBIG;
    return ::posix_fallocate(Descriptor(handle), 0, static_cast<::off_t>(size));
}

int MakeMapping(SystemHandle file, SystemHandle& mapping) {
    if (MappingRefusal::Refuses(MappingRefusal::kMapping)) return ENOMEM;
    const int copy = ::fcntl(Descriptor(file), F_DUPFD_CLOEXEC, 0);
    if (copy < 0) return errno;
    mapping = copy;
    return 0;
}

int MakeView(SystemHandle mapping, std::uint64_t size, bool readOnly, void*& view) {
    if (!Fits<std::size_t>(size) || MappingRefusal::Refuses(MappingRefusal::kView)) return ENOMEM;
    const int access = readOnly ? PROT_READ : PROT_READ | PROT_WRITE;
    void* const mapped = ::mmap(nullptr, static_cast<std::size_t>(size), access, MAP_SHARED, Descriptor(mapping), 0);
    if (mapped == MAP_FAILED) return errno;
    view = mapped;
    return 0;
}

void CloseView(void* view, std::uint64_t size) {
    ::munmap(view, static_cast<std::size_t>(size));
}

void CloseSystemHandle(SystemHandle handle) {
    ::close(Descriptor(handle));
}

}  // namespace zorv::detail
