#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "zorv/export.h"

/// \file
/// ZIP containers: writing to memory, files and handles, reading from files.
///
/// Names of items are wide texts, stored as UTF-8 with `/` between folders; `\` is taken for `/`. Every function that
/// returns a result code also keeps it as the last result of its direction, one value per process for writing and one
/// for reading. A null HZIP gives eZoZipArguments, one of the other direction eZoZipDirection.

/// An open ZIP, for reading or for writing.
struct ZoZip;
/// Handle of an open ZIP, until it is closed.
using HZIP = ZoZip*;

/// Result codes of the ZIP functions.
enum eZoZipResult : std::uint32_t {
    eZoZipOk = 0,
    eZoZipNoDuplicate = 0x100,
    eZoZipNoFile = 0x200,
    eZoZipNoMemory = 0x300,
    eZoZipWriteFailed = 0x400,
    eZoZipNotFound = 0x500,
    eZoZipMore = 0x600,
    eZoZipCorrupt = 0x700,
    eZoZipReadFailed = 0x800,
    eZoZipPassword = 0x1000,
    eZoZipArguments = 0x10000,
    eZoZipNotInMemory = 0x20000,
    eZoZipMemoryFull = 0x30000,
    eZoZipFailedBefore = 0x40000,
    eZoZipEnded = 0x50000,
    eZoZipWrongSize = 0x60000,
    eZoZipPartlyUnzipped = 0x70000,
    eZoZipDirection = 0x80000,
    eZoZipNotInitialised = 0x1000000,
    eZoZipNoSeek = 0x2000000,
    eZoZipNoChange = 0x4000000,
    eZoZipFlate = 0x5000000,
};

/// One item of a ZIP. Times are seconds since 1970, UTC; the container keeps one time, which stands in all three.
struct ZIPENTRY {
    std::int32_t index = 0;
    std::wstring name;
    std::uint32_t attributes = 0;  ///< as the container's directory holds them
    std::int64_t accessTime = 0;
    std::int64_t createTime = 0;
    std::int64_t modifyTime = 0;
    std::uint32_t comp_size = 0;  ///< packed bytes; 0xffffffff for that many and more
    std::uint32_t unc_size = 0;   ///< unpacked bytes; 0xffffffff for that many and more
};

/// Creates a ZIP in memory: in the caller's block, or, with a null pointer, in one of its own that grows up to `size`
/// bytes. Null on failure. Encryption is not offered: a password other than null fails.
ZORV_API HZIP CreateZip(void* memory, unsigned int size, const char* password);
/// Creates a ZIP file. It takes the place of an old one when it is closed complete.
ZORV_API HZIP CreateZip(const wchar_t* file, const char* password);
/// Creates a ZIP at the present position of an open system file handle (a file descriptor on POSIX). The handle stays
/// with the caller. A handle that cannot seek gets the whole ZIP at CloseZipZ.
ZORV_API HZIP CreateZipHandle(void* handle, const char* password);

/// Adds a file.
ZORV_API std::uint32_t ZipAdd(HZIP zip, const wchar_t* name, const wchar_t* file);
/// Adds a block of memory. An item that does not fit into a ZIP in memory gives eZoZipMemoryFull and leaves the ZIP as
/// it was.
ZORV_API std::uint32_t ZipAdd(HZIP zip, const wchar_t* name, const void* memory, unsigned int size);
/// Adds a directory entry.
ZORV_API std::uint32_t ZipAddFolder(HZIP zip, const wchar_t* name);
/// Adds what an open system file handle gives from its present position to its end.
ZORV_API std::uint32_t ZipAddHandle(HZIP zip, const wchar_t* name, void* handle);
/// The same for exactly `size` bytes; fewer give eZoZipWrongSize.
ZORV_API std::uint32_t ZipAddHandle(HZIP zip, const wchar_t* name, void* handle, unsigned int size);

/// Ends the additions and gives the finished ZIP, which stays with the handle. eZoZipNotInMemory for other ZIPs.
ZORV_API std::uint32_t ZipGetMemory(HZIP zip, void** base, unsigned long* size);
/// Ends the additions where that is still to do, completes the file and frees the handle. After a failed addition that
/// left the file incomplete it gives eZoZipFailedBefore, and an old file stays.
ZORV_API std::uint32_t CloseZipZ(HZIP zip);
/// Whether the handle is open for writing.
ZORV_API bool IsZipHandleZ(HZIP zip);

/// The text of a result code; 1 stands for the last result of writing. Copies at most `size` - 1 characters and a
/// terminator, returns the length of the whole text. Without a buffer it only gives the length.
ZORV_API unsigned int FormatZipMessageZ(unsigned int code, char* buffer, unsigned int size);

/// Opens a ZIP file for reading. Null on failure; ZoUnzipLastResult tells why.
ZORV_API HZIP ZoUnzipOpen(const wchar_t* file);
/// The last result of reading.
ZORV_API std::uint32_t ZoUnzipLastResult();
/// Whether the handle is open for reading.
ZORV_API bool ZoIsUnzipHandle(HZIP zip);
/// The entry of an index counted from 0; with index -1 the number of items in `entry->index`.
ZORV_API std::uint32_t ZoUnzipEntry(HZIP zip, int index, ZIPENTRY* entry);
/// Looks an item up by name; of several the first. `index` (-1 without one) and `entry` may be null.
ZORV_API std::uint32_t ZoUnzipFind(HZIP zip, const wchar_t* name, bool ignoreCase, int* index, ZIPENTRY* entry);
/// Unpacks an item into the caller's block. A block that is too small takes the first bytes and gives eZoZipMore.
ZORV_API std::uint32_t ZoUnzipItem(HZIP zip, int index, void* memory, std::size_t size);
/// Unpacks an item into a block of its size. Stated sizes that the packed bytes cannot hold are refused before
/// anything is allocated.
ZORV_API std::uint32_t ZoUnzipItem(HZIP zip, int index, std::unique_ptr<char[]>& block, std::size_t& size);
/// Unpacks an item into a file and creates the directories above it. The file is there whole or not at all.
ZORV_API std::uint32_t ZoUnzipItem(HZIP zip, int index, const wchar_t* file);
/// Closes a ZIP that is open for reading; the handle ends.
ZORV_API std::uint32_t ZoUnzipClose(HZIP zip);
