#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>

#include "zorv/export.h"

/// A file to read from its beginning to its end: through a view of it in memory, or where the system has none to give,
/// in plain reads. Whoever shortens the file meanwhile takes the bytes away from its reader.
class ZORV_API ZoFileBuffMemoryMap {
  public:
    static constexpr std::intptr_t kInvalidHandle = -1;

    enum eErrorCode : std::int32_t { kNoError = 0, kCannotOpen = 1, kFileEmpty = 2 };

    /// Opens the file for shared reading; what goes wrong stands in `error`. The name must outlive this object.
    explicit ZoFileBuffMemoryMap(const wchar_t* path);
    ~ZoFileBuffMemoryMap();
    ZoFileBuffMemoryMap(const ZoFileBuffMemoryMap&) = delete;
    ZoFileBuffMemoryMap& operator=(const ZoFileBuffMemoryMap&) = delete;

    /// Copies the next bytes and moves on. When there are fewer than asked for: false, with target and position as they
    /// were.
    bool Read(void* target, std::size_t bytes);
    template <class T>
    requires std::is_trivially_copyable_v<T>
    bool Read(T& value) { return Read(&value, sizeof value); }

    /// A look at the next bytes, without moving on: all that are asked for with a view, else up to kWindowSize of them;
    /// fewer only at the end. Good until the next operation.
    std::span<const unsigned char> Peek(std::size_t bytes);
    /// Moves on by what Peek has shown.
    void Skip(std::size_t bytes) { cursor += bytes; }
    /// Moves to the end of the file.
    void SkipAll();

    /// Bytes passed so far, and bytes to come.
    std::uint64_t Position() const { return base + static_cast<std::uint64_t>(cursor - (view ? view : window.get())); }
    std::uint64_t BytesLeft() const { return size - Position(); }

    /// Bytes that a Peek without a view has at least, unless the file ends.
    static constexpr std::size_t kWindowSize = std::size_t{256} << 10;

    std::intptr_t file = kInvalidHandle;  ///< open only when there is no view
    const wchar_t* fileName = nullptr;
    std::intptr_t mapping = kInvalidHandle;
    const unsigned char* view = nullptr;
    const unsigned char* cursor = nullptr;  ///< into the view, or into the bytes read in advance
    const unsigned char* end = nullptr;
    std::uint64_t size = 0;  ///< of the file, in bytes
    std::int32_t error = kNoError;

  private:
    ZoFileBuffMemoryMap() = default;

    bool MapWhole();
    void ReadAhead();

    std::unique_ptr<unsigned char[]> window;
    std::uint64_t base = 0;  // position of the window in the file
};
