#include "zorv/core/file_manager.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "zorv/core/number_format.h"
#include "zorv/core/number_text.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/platform/folders.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"

using zorv::detail::FolderEntry;
using zorv::detail::FolderListing;

namespace {

constexpr wchar_t kSeparators[] = L"/\\";

bool IsHidden(const FolderEntry& entry) {
    return entry.name.starts_with(L'.');
}

/// Makes deletable what the owner had locked, and deletes it.
int ResetAndRemove(const std::filesystem::path& path) {
    zorv::detail::ResetAttributes(path);
    return zorv::detail::Remove(path);
}

int DeleteTree(const std::filesystem::path& folder, bool recursive) {
    const FolderListing listing = zorv::detail::ListFolder(folder);
    if (!listing.isOpened) return zorv::detail::IsFolder(folder) ? ResetAndRemove(folder) : 0;
    bool folderStayed = false;
    for (const FolderEntry& entry : listing.entries) {
        if (IsHidden(entry)) continue;
        if (entry.isFolder && !recursive) {
            folderStayed = true;
            continue;
        }
        const bool isTree = entry.isFolder && !entry.isLink;
        if (const int error = isTree ? DeleteTree(entry.path, true) : ResetAndRemove(entry.path)) return error;
    }
    if (listing.error != 0) return listing.error;
    return folderStayed ? 0 : ResetAndRemove(folder);
}

/// Whether the text behind the last dot, the whole name without one, is the extension.
bool HasExtension(const std::wstring& name, const std::wstring& extension) {
    return extension.empty() || name.compare(name.rfind(L'.') + 1, std::wstring::npos, extension) == 0;
}

/// What a search for files asks for, and where its result goes.
struct FileSearch {
    std::vector<CFileNode>& nodes;
    bool fullPath;
    const std::wstring& extension;
    std::uint64_t* totalSize;
    bool recursive;
};

/// Folders are entered by the system's form of their path: the wide form of a name may lead elsewhere.
int FindInFolder(const FileSearch& search, const std::filesystem::path& folder, const std::wstring& prefix) {
    const FolderListing listing = zorv::detail::ListFolder(folder);
    if (!listing.isOpened) return 0;
    std::uint64_t sum = 0;
    int result = listing.error;
    for (const FolderEntry& entry : listing.entries) {
        if (IsHidden(entry) || (!entry.isFolder && !HasExtension(entry.name, search.extension))) continue;
        CFileNode node;
        node.name = entry.isFolder || search.fullPath ? prefix + entry.name : entry.name;
        node.type = entry.isFolder ? CFileNode::kTypeFolder : CFileNode::kTypeFile;
        node.size = entry.size;
        node.time = {static_cast<std::uint32_t>(entry.time), static_cast<std::uint32_t>(entry.time >> 32)};
        sum += node.size;
        search.nodes.push_back(std::move(node));
        if (!search.recursive || !entry.isFolder || entry.isLink) continue;
        const int inner = FindInFolder(search, entry.path, prefix + entry.name + L"\\");
        if (inner != 0) {
            result = inner;
            break;
        }
    }
    if (search.totalSize) *search.totalSize += sum;
    return result;
}

int TypeRank(std::uint8_t type) {
    switch (type) {
        case CFileNode::kTypeUp:
            return 0;
        case CFileNode::kTypeFolder:
            return 1;
        case CFileNode::kTypeFile:
            return 2;
        default:
            return 3;
    }
}

}  // namespace

void CFileNode::SetUpFolder() {
    name = L"..";
    type = kTypeUp;
}

bool CFileNode::operator<(const CFileNode& other) const {
    if (TypeRank(type) != TypeRank(other.type)) return TypeRank(type) < TypeRank(other.type);
    std::wstring lowered = name;
    std::wstring otherLowered = other.name;
    StringToLower(&lowered);
    StringToLower(&otherLowered);
    if (lowered != otherLowered) return lowered < otherLowered;
    if (name != other.name) return name < other.name;
    if (size != other.size) return size < other.size;
    if (time != other.time) return time.Steps() < other.time.Steps();
    return type < other.type;
}

int CFileManager::CreateFolders(const std::wstring& path) {
    if (path.size() >= kPathSize) return 0;
    int created = 0;
    for (std::size_t at = path.find_first_of(kSeparators); at != std::wstring::npos;
         at = path.find_first_of(kSeparators, at + 1)) {
        if (zorv::detail::MakeFolder(zorv::detail::NativePath(path.substr(0, at + 1)))) ++created;
    }
    return created;
}

int CFileManager::DeleteFolder(const std::wstring& path, bool recursive) {
    return DeleteTree(zorv::detail::NativePath(path), recursive);
}

int CFileManager::FindFiles(std::vector<CFileNode>& nodes, bool fullPath, const std::wstring& directory,
                            const std::wstring& extension, std::uint64_t* totalSize, bool recursive) {
    const std::wstring prefix = directory + L"\\";
    const FileSearch search{nodes, fullPath, extension, totalSize, recursive};
    return FindInFolder(search, zorv::detail::NativePath(prefix), prefix);
}

std::wstring CFileManager::GetAsNiceString(std::uint64_t bytes) {
    constexpr std::uint64_t kKilo = 1024;
    if (bytes <= kKilo) return std::to_wstring(bytes) + L" Byte";
    std::uint64_t unit = kKilo;
    const wchar_t* name = L" KB)";
    if (bytes > kKilo * kKilo) {
        unit = kKilo * kKilo;
        name = L" MB)";
    }
    if (bytes > kKilo * kKilo * kKilo) {
        unit = kKilo * kKilo * kKilo;
        name = L" GB)";
    }
    const double amount = static_cast<double>(bytes) / static_cast<double>(unit);
    return wzoitoa10(bytes) + L" Byte (" + string2wstring(zorv::detail::FixedText(amount, 2)) + name;
}

void CFileManager::Sort(std::vector<CFileNode>& nodes) {
    std::sort(nodes.begin(), nodes.end());
}

bool CFileManager::isRoot(const std::wstring& path) {
    if (path.empty()) return false;
    const std::vector<std::wstring> parts = StringSplit(path, kSeparators);
    const auto names = std::count_if(parts.begin(), parts.end(), [](const auto& part) { return !part.empty(); });
    return parts.front().empty() ? names == 0 : names < 2;
}

bool CFileManager::isWriteAble(const std::wstring& directory) {
    const std::filesystem::path file = zorv::detail::NativePath(ZoMakeFilename(directory, L"isWritable.txt"));
    std::ofstream stream(file);
    if (!stream) return false;
    stream.close();
    zorv::detail::Remove(file);
    return true;
}

std::wstring CFileManager::oneFolderUp(const std::wstring& path) {
    const std::vector<std::wstring> parts = StringSplit(path, kSeparators);
    if (parts.size() < 2) return path;
    std::wstring up = parts.front();
    for (std::size_t i = 1; i + 1 < parts.size(); ++i)
        up += L"\\" + parts[i];
    return up;
}
