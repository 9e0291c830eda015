#pragma once

#include <string>

#include "zorv/export.h"

/// \file
/// Parts of a path. `/` and `\` both separate, on every system; nothing here but ZoExistFile and
/// ZoGetFileTimeAsString looks at a disk. A name that begins with its only dot has no extension.

/// Replaces the extension, in place; without a dot one is put before it. An empty extension takes the old one away.
ZORV_API void ZoChangeFileExtension(std::wstring& path, const std::wstring& extension);
/// Whether there is a file or a folder of that name.
ZORV_API bool ZoExistFile(const std::wstring& path);
/// With its dot; empty when there is none.
ZORV_API std::wstring ZoGetExtension(const std::wstring& path);
/// What stands behind the last separator.
ZORV_API std::wstring ZoGetFilename(const std::wstring& path);
/// The same without the extension.
ZORV_API std::wstring ZoGetFilenameNoExt(const std::wstring& path);
/// The parent: all before the last separator, a root with its separator.
ZORV_API std::wstring ZoGetPath(const std::wstring& path);
/// Joins with exactly one separator, the one of the system where neither brings one. When one side is empty the
/// result is the other.
ZORV_API std::wstring ZoMakeFilename(const std::wstring& directory, const std::wstring& name);

/// Local time as "2024-05-31  14:03:59" of the last access (1), the last write (2) or, for any other number, the
/// creation. Empty when the file cannot be opened.
ZORV_API std::wstring ZoGetFileTimeAsString(const std::wstring& file, int which);

/// Eight upper-case hexadecimal digits that stand for the folder of a path: the CRC-32 of the UTF-16LE bytes of its
/// names, put together without separators and without the last one.
ZORV_API std::wstring GetPathCRC(const std::wstring& path);
/// "<directory>_<crc of the path>".
ZORV_API std::wstring MakePathCrcDir(const std::wstring& directory, const std::wstring& path);
/// "<root>/<directory>_<crc of the path>/<file name>", so that files of one name from several folders stay apart.
ZORV_API std::wstring MakeOutputPathCRCFilename(const std::wstring& root, const std::wstring& directory,
                                                const std::wstring& path);
