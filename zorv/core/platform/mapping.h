#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// The steps from a file to its bytes in memory. Errors are the system's numbers, 0 for success; a failing step leaves
/// nothing behind.
namespace zorv::detail {

using SystemHandle = std::intptr_t;
inline constexpr SystemHandle kNoHandle = -1;

enum class MapFile { kOpenExisting, kOpenReadOnly, kCreateNew };

/// Opens for reading and, but for kOpenReadOnly, writing, and shares both. A new file replaces an old one.
int OpenForMapping(const std::wstring& file, MapFile mode, SystemHandle& handle);
/// Opens a file, and nothing else that has a name, for reading from its beginning to its end and shares it.
int OpenForReading(const std::wstring& file, SystemHandle& handle);
int GetFileSize(SystemHandle handle, std::uint64_t& size);
/// Gives the file that size, with room for it on the disk.
int ReserveFileSize(SystemHandle handle, std::uint64_t size);
int MakeMapping(SystemHandle file, SystemHandle& mapping);
int MakeView(SystemHandle mapping, std::uint64_t size, bool readOnly, void*& view);

void CloseView(void* view, std::uint64_t size);
void CloseSystemHandle(SystemHandle handle);

/// As long as one of these lives, that step fails as on a system without room for it: the way for tests to what happens
/// then.
class MappingRefusal {
  public:
    enum Step { kMapping, kView };

    explicit MappingRefusal(Step step) { refused = step; }
    ~MappingRefusal() { refused.reset(); }
    MappingRefusal(const MappingRefusal&) = delete;
    MappingRefusal& operator=(const MappingRefusal&) = delete;

    static bool Refuses(Step step) { return refused == step; }

  private:
    static inline std::optional<Step> refused;
};

}  // namespace zorv::detail
