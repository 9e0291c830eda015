#include <cerrno>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zorv/core/platform/files.h"
#include "zorv/core/platform/folders.h"

namespace zorv::detail {

namespace {

std::uint64_t StepsSince1601(const timespec& time) {
    constexpr std::int64_t kSecondsTo1970 = 11644473600;
    constexpr std::int64_t kStepsPerSecond = 10'000'000;
    return static_cast<std::uint64_t>((time.tv_sec + kSecondsTo1970) * kStepsPerSecond + time.tv_nsec / 100);
}

FolderEntry MakeEntry(const std::filesystem::path& folder, const char* name) {
    FolderEntry entry;
    entry.path = folder / name;
    entry.name = WidePath(name);
    struct stat status {};
    if (::lstat(entry.path.c_str(), &status) != 0) return entry;
    entry.isLink = S_ISLNK(status.st_mode);
    struct stat target {};
    if (entry.isLink && ::stat(entry.path.c_str(), &target) == 0) status = target;
    entry.isFolder = S_ISDIR(status.st_mode);
    if (!entry.isFolder) entry.size = static_cast<std::uint64_t>(status.st_size);
    entry.time = StepsSince1601(status.st_mtim);
    return entry;
}

}  // namespace

FolderListing ListFolder(const std::filesystem::path& folder) {
    FolderListing listing;
    DIR* const stream = ::opendir(folder.c_str());
    if (!stream) return listing;
    listing.isOpened = true;
    for (;;) {
        errno = 0;
        const dirent* const found = ::readdir(stream);
        if (!found) break;
        const std::string_view name = found->d_name;
        if (name != "." && name != "..") listing.entries.push_back(MakeEntry(folder, found->d_name));
    }
    listing.error = errno;
    ::closedir(stream);
    return listing;
}

bool IsFolder(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool MakeFolder(const std::filesystem::path& path) {
    return ::mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) == 0;
}

void ResetAttributes(const std::filesystem::path& path) {
    struct stat status {};
    // A link has no attributes of its own, and its target is not ours.
    if (::lstat(path.c_str(), &status) != 0 || S_ISLNK(status.st_mode)) return;
    const ::mode_t wanted = S_ISDIR(status.st_mode) ? S_IRWXU : S_IRUSR | S_IWUSR;
    if ((status.st_mode & wanted) != wanted) ::chmod(path.c_str(), (status.st_mode & 07777) | wanted);
}

int Remove(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return error.value();
}

bool ReadFileTimes(const std::filesystem::path& file, FileTimes& times) {
    // A pipe without a writer must not stop the caller.
    const int handle = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) return false;
    struct stat status {};
    const bool found = ::fstat(handle, &status) == 0 && !S_ISDIR(status.st_mode);
    if (found) {
        times = {status.st_mtim.tv_sec, status.st_atim.tv_sec, status.st_mtim.tv_sec};
#ifdef STATX_BTIME
        struct statx more {};
        if (::statx(handle, "", AT_EMPTY_PATH, STATX_BTIME, &more) == 0 && (more.stx_mask & STATX_BTIME) != 0) {
            times.created = more.stx_btime.tv_sec;
        }
#endif
    }
    ::close(handle);
    return found;
}

}  // namespace zorv::detail
