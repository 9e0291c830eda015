#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

/// Raw deflate streams as ZIP items hold them. Whole blocks go through libdeflate where the build has it, else and for
/// streams through zlib; both make and take the same format.
namespace zorv::detail {

inline constexpr int kDeflateLevel = 6;

/// The most bytes that deflated data of this size can unpack to: a match of 258 bytes takes at least 2 bits.
constexpr std::uint64_t MostInflatedBytes(std::uint64_t packed) {
    return packed * 1032;
}

/// Packs blocks of memory.
class Deflater {
  public:
    Deflater();
    ~Deflater();

    /// Packs into `target`; the packed size, or 0 when it exceeds `room`.
    std::size_t Pack(const void* data, std::size_t size, void* target, std::size_t room);

  private:
    struct State;
    std::unique_ptr<State> state;
};

/// Unpacks blocks of memory.
class Inflater {
  public:
    Inflater();
    ~Inflater();

    /// Whether the packed bytes gave exactly `size` bytes.
    bool Unpack(const void* packed, std::size_t packedSize, void* target, std::size_t size);

  private:
    struct State;
    std::unique_ptr<State> state;
};

/// Unpacks piece by piece. `next` fills the piece that it is given and returns how many bytes there were; `take` gets
/// the unpacked bytes and answers whether it wants more. True when the stream came to its own end.
bool InflateStream(const std::function<std::size_t(unsigned char*, std::size_t)>& next,
                   const std::function<bool(const char*, std::size_t)>& take);

}  // namespace zorv::detail
