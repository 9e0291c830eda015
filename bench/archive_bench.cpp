// An archive item of a million points, packed and unpacked, beside the bare work of the compression library on the same
// bytes. What the archive adds to the floor is the records, the seal and the container.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ZORV_HAVE_LIBDEFLATE
#include <libdeflate.h>
#else
#include <zlib.h>
#endif

#include "zorv/zorv.h"

namespace {

constexpr int kPoints = 1'000'000;
constexpr int kLevel = 6;

ZoPointList& Points() {
    static ZoPointList points;
    if (points.IsEmpty()) {
        // Adjusted points: every digit of the coordinates, differences and residuals is in use.
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(0.0, 1000.0);
        std::normal_distribution<double> small(0.0, 0.002);
        for (unsigned int id = 1; id <= kPoints; ++id) {
            ZoPoint point(id, 2'600'000.0 + across(random), 1'200'000.0 + across(random), across(random), 7);
            for (double* value : {&point.dx, &point.dy, &point.dz, &point.residualX, &point.residualY})
                *value = small(random);
            points.Add(point);
        }
    }
    return points;
}

class PointArchive final : public CZipWrapper {
  public:
    using CZipWrapper::CZipWrapper;
    void WriteItem() override { Points().WriteV9(this); }
};

/// The packed archive in a file, and the item's bytes with its seal.
struct Stored {
    std::filesystem::path file;
    std::vector<char> item;
    std::vector<char> packed;

    Stored() : file(std::filesystem::temp_directory_path() / ("zorv-bench-" + std::to_string(std::random_device()()))) {
        PointArchive archive(file.wstring(), true);
        archive.SzAdd(L"Points");
        archive.SzClose();
        archive.SzOpen(file.wstring(), false);
        const void* bytes = archive.UnzipItem(0, nullptr);
        if (!bytes) std::abort();
        item.assign(static_cast<const char*>(bytes), static_cast<const char*>(bytes) + archive.ReadBytesLeft());
    }
    ~Stored() {
        std::error_code error;
        std::filesystem::remove(file, error);
    }
    Stored(const Stored&) = delete;
    Stored& operator=(const Stored&) = delete;
};

Stored& Archive() {
    static Stored stored;
    return stored;
}

#ifdef ZORV_HAVE_LIBDEFLATE

std::size_t Pack(const std::vector<char>& bytes, std::vector<char>& packed) {
    libdeflate_compressor* compressor = libdeflate_alloc_compressor(kLevel);
    const std::size_t size =
        libdeflate_deflate_compress(compressor, bytes.data(), bytes.size(), packed.data(), packed.size());
    libdeflate_free_compressor(compressor);
    return size;
}

bool Unpack(const std::vector<char>& packed, char* bytes, std::size_t size) {
    libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
    const libdeflate_result result =
        libdeflate_deflate_decompress(decompressor, packed.data(), packed.size(), bytes, size, nullptr);
    libdeflate_free_decompressor(decompressor);
    return result == LIBDEFLATE_SUCCESS;
}

#else

std::size_t Pack(const std::vector<char>& bytes, std::vector<char>& packed) {
    z_stream stream{};
    deflateInit2(&stream, kLevel, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    deflateEnd(&stream);
    return stream.total_out;
}

bool Unpack(const std::vector<char>& packed, char* bytes, std::size_t size) {
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes);
    stream.avail_out = static_cast<uInt>(size);
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return result == Z_STREAM_END;
}

#endif

void SetBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Archive().item.size()));
}

void DeflateFloor(benchmark::State& state) {
    Stored& stored = Archive();
    for (auto _ : state) {
        stored.packed.resize(stored.item.size());
        stored.packed.resize(Pack(stored.item, stored.packed));
        benchmark::DoNotOptimize(stored.packed.data());
    }
    SetBytes(state);
}

void SzAdd(benchmark::State& state) {
    Archive();
    for (auto _ : state) {
        PointArchive archive(L"never-written/archive.zip", true);
        archive.SzAdd(L"Points");
        if (archive.GetLastResult() != 0) state.SkipWithError("the item was not added");
        CloseZipZ(archive.zipHandle);
        archive.zipHandle = nullptr;
    }
    SetBytes(state);
}

void InflateFloor(benchmark::State& state) {
    Stored& stored = Archive();
    stored.packed.resize(stored.item.size());
    stored.packed.resize(Pack(stored.item, stored.packed));
    for (auto _ : state) {
        // The archive gives each item a block of its own, too.
        const auto bytes = std::make_unique_for_overwrite<char[]>(stored.item.size());
        if (!Unpack(stored.packed, bytes.get(), stored.item.size())) state.SkipWithError("the floor does not unpack");
        benchmark::DoNotOptimize(bytes.get());
    }
    SetBytes(state);
}

void UnzipItem(benchmark::State& state) {
    PointArchive archive(Archive().file.wstring(), false);
    for (auto _ : state) {
        if (!archive.UnzipItem(L"Points", nullptr)) state.SkipWithError("the item does not unpack");
    }
    SetBytes(state);
}

void UnzipItemAndReadPoints(benchmark::State& state) {
    PointArchive archive(Archive().file.wstring(), false);
    for (auto _ : state) {
        archive.UnzipItem(L"Points", nullptr);
        ZoPointList points;
        points.ReadV9(&archive);
        if (!archive.Eof() || points.Last()->x != Points().Last()->x) state.SkipWithError("other points came back");
        state.PauseTiming();
        points.Destroy();
        state.ResumeTiming();
    }
    SetBytes(state);
}

BENCHMARK(DeflateFloor)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SzAdd)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(InflateFloor)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(UnzipItem)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(UnzipItemAndReadPoints)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
