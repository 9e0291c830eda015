#include <atomic>
#include <cerrno>
#include <climits>
#include <locale>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"

namespace zorv::detail {

std::filesystem::path NativePath(const std::wstring& path) {
    std::string native = wstring2string(path);
    for (char& c : native) {
        if (c == '\\') c = '/';
    }
    return native;
}

std::wstring WidePath(const std::filesystem::path& path) {
    return string2wstring(path.native());
}

namespace {

/// The file itself where the name is a symbolic link, so that the link survives the rename.
std::filesystem::path Resolve(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(path, error)) return path;
    std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved;
}

/// Makes a file with a name of its own beside the target: neither somebody else's nor what a killed process left behind
/// is touched. Empty when none can be made.
std::filesystem::path MakeBeside(const std::filesystem::path& target) {
    static std::atomic<unsigned int> serial{0};
    for (;;) {
        const std::string end = "." + std::to_string(::getpid()) + "-" + std::to_string(serial++) + ".tmp";
        std::string name = target.filename().native();
        if (name.size() + end.size() > NAME_MAX) {
            std::size_t length = NAME_MAX - end.size();
            while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xc0) == 0x80)
                --length;
            name.resize(length);
        }
        std::filesystem::path beside = target.parent_path() / (name + end);
        const int made = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (made >= 0) {
            ::close(made);
            return beside;
        }
        if (errno != EEXIST) return {};
    }
}

/// Whether there is nothing yet, or a file that may be written to. A directory, a device or a pipe cannot be replaced
/// by a rename; a write-protected file could be, but its owner wants it kept.
bool MayReplace(const std::filesystem::path& target) {
    std::error_code error;
    const auto status = std::filesystem::status(target, error);
    if (!std::filesystem::exists(status)) return true;
    return std::filesystem::is_regular_file(status) && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

FileReplacement::FileReplacement(const std::wstring& file) : target(Resolve(NativePath(file))) {
    stream.imbue(std::locale::classic());
    if (MayReplace(target)) beside = MakeBeside(target);
    if (!beside.empty()) stream.open(beside, std::ios::binary | std::ios::trunc);
}

FileReplacement::~FileReplacement() {
    if (beside.empty()) return;
    stream.close();
    std::error_code error;
    std::filesystem::remove(beside, error);
}

bool FileReplacement::Commit() {
    if (!stream.is_open()) return false;
    const bool written = static_cast<bool>(stream.flush());
    stream.close();
    if (!written || !stream) return false;
    std::error_code error;
    struct stat old {};
    if (::stat(target.c_str(), &old) == 0) ::chmod(beside.c_str(), old.st_mode & 07777);
    std::filesystem::rename(beside, target, error);
    if (error) return false;
    beside.clear();
    return true;
}

}  // namespace zorv::detail
