#include <atomic>
#include <locale>
#include <system_error>

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

}  // namespace

FileReplacement::FileReplacement(const std::wstring& file) : target(Resolve(NativePath(file))) {
    static std::atomic<unsigned int> serial{0};
    beside = target;
    beside += "." + std::to_string(::getpid()) + "-" + std::to_string(serial++) + ".tmp";
    stream.imbue(std::locale::classic());
    // A directory, a device or a pipe cannot be replaced by a rename.
    std::error_code error;
    const auto status = std::filesystem::status(target, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) return;
    stream.open(beside, std::ios::binary | std::ios::trunc);
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
