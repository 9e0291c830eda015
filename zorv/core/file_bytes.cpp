#include "zorv/core/file_bytes.h"

#include "zorv/core/platform/mapping.h"

namespace zorv::detail {

FileBytes::FileBytes(const std::wstring& file) {
    SystemHandle handle = kNoHandle;
    systemError = OpenForReading(file, handle);
    if (systemError != 0) return;
    std::uint64_t found = 0;
    systemError = GetFileSize(handle, found);
    if (systemError == 0 && found > 0) systemError = MakeView(handle, found, true, memory);
    if (memory) size = found;
    CloseSystemHandle(handle);
}

FileBytes::~FileBytes() {
    if (memory) CloseView(memory, size);
}

}  // namespace zorv::detail
