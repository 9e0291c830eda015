#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Folders, attributes and times of files. Errors are the system's numbers, 0 for success; nothing throws.
namespace zorv::detail {

/// What separates the names of a path that the library puts together for the system.
inline constexpr wchar_t kPathSeparator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);

struct FolderEntry {
    std::filesystem::path path;  ///< in the system's form, with the folder
    std::wstring name;           ///< the bare name
    bool isFolder = false;       ///< also true for a link to a folder
    bool isLink = false;
    std::uint64_t size = 0;  ///< bytes; 0 for a folder
    std::uint64_t time = 0;  ///< last write, in steps of 100 ns since 1601-01-01 UTC
};

struct FolderListing {
    bool isOpened = false;
    int error = 0;  ///< why the listing stopped before its end
    std::vector<FolderEntry> entries;
};

/// All entries but "." and "..", in the order of the system. Read whole and closed before it returns, so that entries
/// may be deleted meanwhile and deep trees hold no handles.
FolderListing ListFolder(const std::filesystem::path& folder);

bool IsFolder(const std::filesystem::path& path);
/// True when the folder was really made; one that exists was not.
bool MakeFolder(const std::filesystem::path& path);
/// Lets the owner change and delete the file or folder.
void ResetAttributes(const std::filesystem::path& path);
/// Removes a file, a link or an empty folder.
int Remove(const std::filesystem::path& path);

/// In seconds since 1970. Where the system keeps no creation time, that is the last write.
struct FileTimes {
    std::int64_t created = 0;
    std::int64_t accessed = 0;
    std::int64_t written = 0;
};

/// False when the file cannot be opened for reading or is a folder.
bool ReadFileTimes(const std::filesystem::path& file, FileTimes& times);

}  // namespace zorv::detail
