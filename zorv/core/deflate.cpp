#include "zorv/core/deflate.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include <zlib.h>

#ifdef ZORV_HAVE_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace zorv::detail {

namespace {

constexpr int kRawWindowBits = -MAX_WBITS;
constexpr std::size_t kPiece = 64 * 1024;

#ifndef ZORV_HAVE_LIBDEFLATE
/// Moves zlib's 32-bit windows over blocks of any size. `step` runs zlib once and answers whether to go on.
template <class Step>
void RunOverBlocks(z_stream& stream, const void* in, std::size_t inSize, void* out, std::size_t outSize, Step step) {
    constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
    stream.next_in = static_cast<Bytef*>(const_cast<void*>(in));
    stream.next_out = static_cast<Bytef*>(out);
    do {
        const std::size_t inPart = std::min(inSize, kMost);
        const std::size_t outPart = std::min(outSize, kMost);
        stream.avail_in = static_cast<uInt>(inPart);
        stream.avail_out = static_cast<uInt>(outPart);
        const bool goOn = step(inPart == inSize);
        const std::size_t taken = inPart - stream.avail_in;
        const std::size_t made = outPart - stream.avail_out;
        inSize -= taken;
        outSize -= made;
        if (!goOn || (taken == 0 && made == 0)) return;
    } while (true);
}
#endif

}  // namespace

#ifdef ZORV_HAVE_LIBDEFLATE

struct Deflater::State {
    libdeflate_compressor* compressor = libdeflate_alloc_compressor(kDeflateLevel);
    ~State() { libdeflate_free_compressor(compressor); }
};

std::size_t Deflater::Pack(const void* data, std::size_t size, void* target, std::size_t room) {
    if (!state->compressor) throw std::bad_alloc();
    return libdeflate_deflate_compress(state->compressor, data, size, target, room);
}

struct Inflater::State {
    libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
    ~State() { libdeflate_free_decompressor(decompressor); }
};

bool Inflater::Unpack(const void* packed, std::size_t packedSize, void* target, std::size_t size) {
    if (!state->decompressor) throw std::bad_alloc();
    return libdeflate_deflate_decompress(state->decompressor, packed, packedSize, target, size, nullptr) ==
           LIBDEFLATE_SUCCESS;
}

#else

struct Deflater::State {
    z_stream stream{};
    State() {
        if (deflateInit2(&stream, kDeflateLevel, Z_DEFLATED, kRawWindowBits, MAX_MEM_LEVEL - 1, Z_DEFAULT_STRATEGY) !=
            Z_OK) {
            throw std::bad_alloc();
        }
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { deflateEnd(&stream); }
};

std::size_t Deflater::Pack(const void* data, std::size_t size, void* target, std::size_t room) {
    z_stream& stream = state->stream;
    deflateReset(&stream);
    bool complete = false;
    RunOverBlocks(stream, data, size, target, room, [&](bool last) {
        const int result = deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
        complete = result == Z_STREAM_END;
        return result == Z_OK;
    });
    return complete ? static_cast<std::size_t>(stream.next_out - static_cast<Bytef*>(target)) : 0;
}

struct Inflater::State {
    z_stream stream{};
    State() {
        if (inflateInit2(&stream, kRawWindowBits) != Z_OK) throw std::bad_alloc();
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { inflateEnd(&stream); }
};

bool Inflater::Unpack(const void* packed, std::size_t packedSize, void* target, std::size_t size) {
    z_stream& stream = state->stream;
    inflateReset(&stream);
    bool complete = false;
    RunOverBlocks(stream, packed, packedSize, target, size, [&](bool /*last*/) {
        const int result = inflate(&stream, Z_NO_FLUSH);
        complete = result == Z_STREAM_END;
        return result == Z_OK;
    });
    return complete && static_cast<std::size_t>(stream.next_out - static_cast<Bytef*>(target)) == size;
}

#endif

Deflater::Deflater() : state(std::make_unique<State>()) {}
Deflater::~Deflater() = default;
Inflater::Inflater() : state(std::make_unique<State>()) {}
Inflater::~Inflater() = default;

bool InflateStream(const std::function<std::size_t(unsigned char*, std::size_t)>& next,
                   const std::function<bool(const char*, std::size_t)>& take) {
    z_stream stream{};
    if (inflateInit2(&stream, kRawWindowBits) != Z_OK) throw std::bad_alloc();
    const std::unique_ptr<z_stream, int (*)(z_stream*)> ended(&stream, inflateEnd);
    std::vector<unsigned char> in(kPiece);
    std::vector<unsigned char> out(kPiece);
    int result = Z_OK;
    while (result == Z_OK) {
        if (stream.avail_in == 0) {
            stream.next_in = in.data();
            stream.avail_in = static_cast<uInt>(next(in.data(), in.size()));
        }
        stream.next_out = out.data();
        stream.avail_out = static_cast<uInt>(out.size());
        result = inflate(&stream, Z_NO_FLUSH);
        const std::size_t made = out.size() - stream.avail_out;
        if (made > 0 && !take(reinterpret_cast<const char*>(out.data()), made)) return false;
    }
    return result == Z_STREAM_END;
}

}  // namespace zorv::detail
