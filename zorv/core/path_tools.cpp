#include "zorv/core/path_tools.h"

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "zorv/core/crc32.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/platform/folders.h"
#include "zorv/core/platform/local_time.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"

namespace {

constexpr wchar_t kSeparators[] = L"/\\";

bool IsSeparator(wchar_t c) {
    return c == L'/' || c == L'\\';
}

std::size_t FilenameStart(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    return separator == std::wstring::npos ? 0 : separator + 1;
}

/// Where the dot of the extension stands; the end of the path when there is none.
std::size_t ExtensionStart(const std::wstring& path) {
    const std::size_t name = FilenameStart(path);
    const std::size_t dot = path.rfind(L'.');
    if (dot == std::wstring::npos || dot <= name || path.compare(name, std::wstring::npos, L"..") == 0) {
        return path.size();
    }
    return dot;
}

}  // namespace

void ZoChangeFileExtension(std::wstring& path, const std::wstring& extension) {
    std::wstring added = extension;
    if (!added.empty() && added.front() != L'.') added.insert(0, 1, L'.');
    path.replace(ExtensionStart(path), std::wstring::npos, added);
}

bool ZoExistFile(const std::wstring& path) {
    std::error_code error;
    return std::filesystem::exists(zorv::detail::NativePath(path), error);
}

std::wstring ZoGetExtension(const std::wstring& path) {
    return path.substr(ExtensionStart(path));
}

std::wstring ZoGetFilename(const std::wstring& path) {
    return path.substr(FilenameStart(path));
}

std::wstring ZoGetFilenameNoExt(const std::wstring& path) {
    const std::size_t start = FilenameStart(path);
    return path.substr(start, ExtensionStart(path) - start);
}

std::wstring ZoGetPath(const std::wstring& path) {
    std::size_t end = FilenameStart(path);
    if (end == 0) return {};
    const std::size_t firstSeparator = path.find_first_of(kSeparators);
    while (end > firstSeparator && IsSeparator(path[end - 1]))
        --end;
    // "/" and "C:\" are roots, which keep their separator.
    const bool isDrive = end == 2 && path[1] == L':';
    if (end == 0 || isDrive) ++end;
    return path.substr(0, end);
}

std::wstring ZoMakeFilename(const std::wstring& directory, const std::wstring& name) {
    if (directory.empty()) return name;
    if (name.empty()) return directory;
    const bool ends = IsSeparator(directory.back());
    const bool begins = IsSeparator(name.front());
    if (ends && begins) return directory + name.substr(1);
    if (ends || begins) return directory + name;
    return directory + zorv::detail::kPathSeparator + name;
}

std::wstring ZoGetFileTimeAsString(const std::wstring& file, int which) {
    zorv::detail::FileTimes times;
    if (!zorv::detail::ReadFileTimes(zorv::detail::NativePath(file), times)) return {};
    std::tm time{};
    if (!zorv::detail::LocalTime(which == 1 ? times.accessed : which == 2 ? times.written : times.created, time)) {
        return {};
    }
    char text[96];
    std::snprintf(text, std::size(text), "%d-%02d-%02d  %02d:%02d:%02d", time.tm_year + 1900, time.tm_mon + 1,
                  time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
    return string2wstring(text);
}

std::wstring GetPathCRC(const std::wstring& path) {
    std::string bytes;
    std::vector<std::wstring> names = StringSplit(path, kSeparators);
    names.pop_back();
    for (const std::wstring& name : names)
        zorv::detail::AppendUtf16Le(bytes, name);
    char text[16];
    std::snprintf(text, std::size(text), "%08X",
                  static_cast<unsigned int>(zorv::detail::Crc32(0, bytes.data(), bytes.size())));
    return string2wstring(text);
}

std::wstring MakePathCrcDir(const std::wstring& directory, const std::wstring& path) {
    return directory + L"_" + GetPathCRC(path);
}

std::wstring MakeOutputPathCRCFilename(const std::wstring& root, const std::wstring& directory,
                                       const std::wstring& path) {
    return ZoMakeFilename(ZoMakeFilename(root, MakePathCrcDir(directory, path)), ZoGetFilename(path));
}
