#pragma once

#include <filesystem>
#include <fstream>
#include <string>

/// Files by wide names, in the system's own form.
namespace zorv::detail {

/// The path as the system takes it: `/` and `\` both separate, any Unicode character is allowed.
std::filesystem::path NativePath(const std::wstring& path);

/// A wide path from the system's form.
std::wstring WidePath(const std::filesystem::path& path);

/// A new file that takes the place of an old one only when it is complete: bytes go to a file beside the target,
/// Commit renames it. Without a successful Commit the old file stays as it was and nothing is left beside it. An old
/// file that is write-protected stays as well.
class FileReplacement {
  public:
    /// Opens in binary mode with the classic locale. Failure shows in the stream's state.
    explicit FileReplacement(const std::wstring& file);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    std::ostream& Stream() { return stream; }
    bool IsOpen() const { return stream.is_open(); }
    /// Writes out, closes and renames; false when any of it or an earlier write failed.
    bool Commit();

  private:
    std::filesystem::path target;
    std::filesystem::path beside;
    std::ofstream stream;
};

}  // namespace zorv::detail
