#include "zorv/core/memory_map.h"

#include "zorv/core/platform/mapping.h"

using zorv::detail::MapFile;

static_assert(ZoMemoryMap::kInvalidHandle == zorv::detail::kNoHandle);

ZoMemoryMap::~ZoMemoryMap() {
    ZoMemoryMap::CloseMemoryMap();
}

void ZoMemoryMap::CloseMemoryMap() {
    if (memory) zorv::detail::CloseView(memory, memorySize);
    if (mappingHandle != kInvalidHandle) zorv::detail::CloseSystemHandle(mappingHandle);
    if (fileHandle != kInvalidHandle) zorv::detail::CloseSystemHandle(fileHandle);
    memory = nullptr;
    mappingHandle = kInvalidHandle;
    fileHandle = kInvalidHandle;
    fileSize = 0;
    memorySize = 0;
}

void* ZoMemoryMap::GetMemoryPtr(std::uint64_t offset) {
    return static_cast<unsigned char*>(memory) + offset;
}

void* ZoMemoryMap::GetMemoryPtr() {
    return memory;
}

std::uint64_t ZoMemoryMap::MemoryMapMemorySize() {
    return memorySize;
}

bool ZoMemoryMap::CreateMemoryMap(const std::wstring& file, std::uint64_t size) {
    Begin(file, false);
    if (const int error = zorv::detail::OpenForMapping(file, MapFile::kCreateNew, fileHandle)) {
        return Fail(kCannotOpen, error);
    }
    if (const int error = zorv::detail::ReserveFileSize(fileHandle, size)) return Fail(kCannotMap, error);
    return MapWhole(size);
}

bool ZoMemoryMap::OpenMemoryMap(const std::wstring& file, bool openReadOnly) {
    Begin(file, openReadOnly);
    if (const int error = zorv::detail::OpenForMapping(file, MapFile::kOpenExisting, fileHandle)) {
        return Fail(kCannotOpen, error);
    }
    // Of the open file, so that a name that changes hands meanwhile does not matter.
    std::uint64_t size = 0;
    if (const int error = zorv::detail::GetFileSize(fileHandle, size)) return Fail(kCannotOpen, error);
    if (size == 0) return Fail(kFileEmpty, 0);
    return MapWhole(size);
}

void ZoMemoryMap::Begin(const std::wstring& file, bool openReadOnly) {
    CloseMemoryMap();
    errorCode = kNoError;
    systemError = 0;
    fileName = file;
    readOnly = openReadOnly;
}

bool ZoMemoryMap::MapWhole(std::uint64_t size) {
    if (const int error = zorv::detail::MakeMapping(fileHandle, mappingHandle)) return Fail(kCannotMap, error);
    if (const int error = zorv::detail::MakeView(mappingHandle, size, readOnly, memory)) {
        return Fail(kCannotView, error);
    }
    fileSize = size;
    memorySize = size;
    return true;
}

bool ZoMemoryMap::Fail(eErrorCode code, int error) {
    errorCode = code;
    systemError = error;
    CloseMemoryMap();
    return false;
}
