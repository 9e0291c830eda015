#pragma once

#include <concepts>
#include <cstdint>
#include <string>

#include "zorv/export.h"

/// A file whose bytes stand in memory. Whoever shortens the file meanwhile takes the bytes away from its readers.
class ZORV_API ZoMemoryMap {
  public:
    static constexpr std::intptr_t kInvalidHandle = -1;

    enum eErrorCode : std::int32_t {
        kNoError = 0,
        kCannotOpen = 2,
        kFileEmpty = 3,
        kCannotMap = 5,   ///< also: no room on the disk for a new file
        kCannotView = 6,  ///< also: more bytes than the address space holds
    };

    /// Closed.
    ZoMemoryMap() = default;
    /// As CreateMemoryMap.
    ZoMemoryMap(const std::wstring& file, std::uint64_t size) { CreateMemoryMap(file, size); }
    /// As OpenMemoryMap. Takes a bool and nothing that merely converts to one.
    ZoMemoryMap(const std::wstring& file, std::same_as<bool> auto openReadOnly) { OpenMemoryMap(file, openReadOnly); }
    ZoMemoryMap(const ZoMemoryMap&) = delete;
    ZoMemoryMap& operator=(const ZoMemoryMap&) = delete;
    virtual ~ZoMemoryMap();

    /// Gives everything back that is open; harmless when nothing is. The last error stays readable.
    virtual void CloseMemoryMap();
    /// The address of a byte of the file, without a check of the bound; only while a file is open.
    virtual void* GetMemoryPtr(std::uint64_t offset);
    /// The address of the first byte, or null.
    virtual void* GetMemoryPtr();
    /// Bytes in memory.
    virtual std::uint64_t MemoryMapMemorySize();

    /// Makes a new file of `size` bytes, all zero, in the place of an old one, for reading and writing. Closes what
    /// was open before, as does the next; both are false on failure, with the reason in errorCode and systemError.
    bool CreateMemoryMap(const std::wstring& file, std::uint64_t size);
    /// Maps a whole file that exists. It must be writable even for a map to read only.
    bool OpenMemoryMap(const std::wstring& file, bool openReadOnly);

    bool IsMemoryMapOpen() const { return mappingHandle != kInvalidHandle; }
    std::uint64_t MemoryMapFileSize() const { return fileSize; }
    std::int32_t GetErrorCode() const { return errorCode; }
    std::int32_t GetSystemError() const { return systemError; }

    std::int32_t errorCode = kNoError;  ///< of the last Create or Open
    std::int32_t systemError = 0;       ///< the system's number for it
    bool readOnly = false;
    std::wstring fileName;
    std::uint64_t fileSize = 0;  ///< bytes
    std::intptr_t fileHandle = kInvalidHandle;
    std::intptr_t mappingHandle = kInvalidHandle;
    void* memory = nullptr;
    std::uint64_t memorySize = 0;

  private:
    void Begin(const std::wstring& file, bool openReadOnly);
    bool MapWhole(std::uint64_t size);
    bool Fail(eErrorCode code, int error);
};
