#pragma once

#include <cstdint>
#include <string>

/// The steps from a file to its bytes in memory. Errors are the system's numbers, 0 for success; a failing step leaves
/// nothing behind.
namespace zorv::detail {

using SystemHandle = std::intptr_t;
inline constexpr SystemHandle kNoHandle = -1;

enum class MapFile { kOpenExisting, kOpenReadOnly, kCreateNew };

/// Opens for reading and, but for kOpenReadOnly, writing, and shares both. A new file replaces an old one.
int OpenForMapping(const std::wstring& file, MapFile mode, SystemHandle& handle);
int GetFileSize(SystemHandle handle, std::uint64_t& size);
/// Gives the file that size, with room for it on the disk.
int ReserveFileSize(SystemHandle handle, std::uint64_t size);
int MakeMapping(SystemHandle file, SystemHandle& mapping);
int MakeView(SystemHandle mapping, std::uint64_t size, bool readOnly, void*& view);

void CloseView(void* view, std::uint64_t size);
void CloseSystemHandle(SystemHandle handle);

}  // namespace zorv::detail
