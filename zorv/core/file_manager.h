#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "zorv/export.h"

/// A moment of the file system in two halves: steps of 100 ns since 1601-01-01 UTC.
struct CFileTime {
    std::uint32_t low = 0;
    std::uint32_t high = 0;

    std::uint64_t Steps() const { return (static_cast<std::uint64_t>(high) << 32) | low; }
    bool operator==(const CFileTime&) const = default;
};

/// One entry of a folder.
class ZORV_API CFileNode {
  public:
    static constexpr std::uint8_t kTypeFile = 0;
    static constexpr std::uint8_t kTypeFolder = 1;
    static constexpr std::uint8_t kTypeUp = 2;
    static constexpr std::uint8_t kTypeInvalid = 3;

    /// Makes it the entry for the parent folder, "..".
    void SetUpFolder();

    bool operator==(const CFileNode& other) const = default;
    /// As a file list shows it: the way up, folders, files; each by name without regard to case.
    bool operator<(const CFileNode& other) const;

    std::wstring name;
    std::uint8_t type = kTypeInvalid;
    std::uint64_t size = 0;  ///< bytes; 0 for a folder
    CFileTime time;          ///< last write
};

/// Operations on folders. `/` and `\` both separate. Results of type int that are no count are 0 or the system's error
/// number.
class ZORV_API CFileManager {
  public:
    /// Longest path that CreateFolders takes, its terminator included.
    static constexpr int kPathSize = 260;

    /// Creates the folders of a path that ends in a separator; what stands behind the last one is not created. Levels
    /// that exist or fail are passed over. The result is the number of folders created, 0 for a path that is too long.
    static int CreateFolders(const std::wstring& path);

    /// Deletes the files of a folder, with `recursive` its sub-folders too, and the folder itself unless a sub-folder
    /// stayed. Names that begin with a dot are left alone, and then the folder cannot go. A link counts as what it
    /// points to, but only the link itself is deleted. The first failure ends the operation. What is no folder is left
    /// alone, with result 0.
    static int DeleteFolder(const std::wstring& path, bool recursive);

    /// Appends the folders and files of a directory, except names that begin with a dot, in the order of the system.
    /// Folders come with their full path and are entered with `recursive` (but not through a link). Files are taken
    /// whose name ends in exactly this extension, given without a dot, or all with an empty one; with their full path
    /// or the bare name. The sizes are added to `totalSize`, which may be null.
    static int FindFiles(std::vector<CFileNode>& nodes, bool fullPath, const std::wstring& directory,
                         const std::wstring& extension, std::uint64_t* totalSize, bool recursive);

    /// "900 Byte", "1,536 Byte (1.50 KB)", and so on up to GB.
    static std::wstring GetAsNiceString(std::uint64_t bytes);

    static void Sort(std::vector<CFileNode>& nodes);

    /// "\", "C:", "C:\" and a single name are roots; the empty text is none.
    static bool isRoot(const std::wstring& path);
    /// Whether a file can be made there; "isWritable.txt" is used for it.
    static bool isWriteAble(const std::wstring& directory);
    /// The path without its last part, with `\` as separator and none at its end. A path of one part stays.
    static std::wstring oneFolderUp(const std::wstring& path);
};
