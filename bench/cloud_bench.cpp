// A cloud of five million points: its native file beside the bare conversion of the mapped records into an array, and
// selection, transformation and bounds beside a copy of the same memory.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "zorv/cloud/cloud_buffer.h"
#include "zorv/cloud/cloud_container.h"
#include "zorv/core/text_conversion.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/rectify/select_volume3d.h"

namespace {

constexpr std::size_t kPoints = 5'000'000;
constexpr std::size_t kHead = 12 + 544;
constexpr std::size_t kRecord = 58;

/// A facade of 100 m by 30 m at map coordinates with normals, colours and intensities.
ZoPointCloudContainer& Clouds() {
    static ZoPointCloudContainer clouds = [] {
        ZoPointCloudContainer made;
        ZoPointCloud* cloud = made.AddCloud(kPoints, L"facade");
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(0.0, 100.0);
        for (std::size_t i = 0; i < kPoints; ++i) {
            ZoScanPoint3d point(5e6 + across(random), 5e5 + 0.01 * across(random), 0.3 * across(random),
                                static_cast<int>(random()));
            point.normal[1] = 1.0F;
            cloud->AddPoint(point);
        }
        made.UpdateCenterAndBox(nullptr);
        return made;
    }();
    return clouds;
}

/// The clouds' native file, which goes with the program.
const std::wstring& CloudFile() {
    struct File {
        File()
            : path(std::filesystem::temp_directory_path() / ("zorv-bench-" + std::to_string(::getpid()) + ".zoptc")),
              name(string2wstring(path.native())) {
            Clouds().Write(name);
        }
        ~File() { std::filesystem::remove(path); }
        std::filesystem::path path;
        std::wstring name;
    };
    static const File file;
    return file.name;
}

/// What a point needs in memory, filled field by field from its record.
struct BarePoint {
    double xyzw[4];
    float extra[3], normal[3];
    std::uint8_t measurements, flags;
    std::uint32_t color, falseColor;
};

void Convert(BarePoint* points) {
    ZoFileBuffMemoryMap file(CloudFile().c_str());
    const unsigned char* record = file.view + kHead;
    for (std::size_t i = 0; i < kPoints; ++i, record += kRecord) {
        BarePoint& point = points[i];
        std::memcpy(point.xyzw, record + 4, 24);
        point.xyzw[3] = 1.0;
        std::memcpy(point.extra, record + 28, 12);
        std::memcpy(point.normal, record + 40, 12);
        point.measurements = record[52];
        point.flags = record[53];
        std::memcpy(&point.color, record + 54, 4);
        point.falseColor = point.color;
    }
}

bool IsRight(const BarePoint& point) {
    const ZoScanPoint3d& last = Clouds().First()->points.back();
    return point.xyzw[2] == last.z() && point.color == last.color;
}

using BareArray = std::unique_ptr<BarePoint, decltype(&std::free)>;

BareArray MakeArray() {
    return {static_cast<BarePoint*>(std::malloc(kPoints * sizeof(BarePoint))), &std::free};
}

/// Takes and gives back what a cloud needs. On a virtual machine the first touch of memory that was free for long takes
/// ten times as long as any later one, which would be told of whatever comes first.
void WarmMemory() {
    constexpr std::size_t kSize = kPoints * sizeof(BarePoint);
    void* const block = zorv::detail::AllocateLargeBlock(kSize);
    std::memset(block, 1, kSize);
    benchmark::ClobberMemory();
    zorv::detail::FreeLargeBlock(block);
}

void ConvertFloorTouched(benchmark::State& state) {
    const BareArray points = MakeArray();
    Convert(points.get());
    if (!IsRight(points.get()[kPoints - 1])) state.SkipWithError("wrong points");
    for (auto _ : state) {
        Convert(points.get());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(ConvertFloorTouched)->Unit(benchmark::kMillisecond);

void ConvertFloorFresh(benchmark::State& state) {
    CloudFile();
    WarmMemory();
    for (auto _ : state) {
        BareArray points = MakeArray();
        Convert(points.get());
        benchmark::ClobberMemory();
        state.PauseTiming();
        points.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(ConvertFloorFresh)->Unit(benchmark::kMillisecond);

/// The same into fresh memory in large pages, as the points of a cloud have it.
void ConvertFloorLargePages(benchmark::State& state) {
    CloudFile();
    WarmMemory();
    for (auto _ : state) {
        auto* points = static_cast<BarePoint*>(zorv::detail::AllocateLargeBlock(kPoints * sizeof(BarePoint)));
        Convert(points);
        benchmark::ClobberMemory();
        state.PauseTiming();
        zorv::detail::FreeLargeBlock(points);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(ConvertFloorLargePages)->Unit(benchmark::kMillisecond);

void ReadNative(benchmark::State& state) {
    CloudFile();
    WarmMemory();
    for (auto _ : state) {
        ZoPointCloudContainer read;
        ZoPointCloudReadResult result;
        read.Read(CloudFile(), result);
        state.PauseTiming();
        if (read.Size() != kPoints || std::memcmp(&read.box, &Clouds().box, 48) != 0) {
            state.SkipWithError("wrong points");
        }
        read.Destroy();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(ReadNative)->Unit(benchmark::kMillisecond);

std::filesystem::path SecondFile() {
    return std::filesystem::path(wstring2string(CloudFile())).concat("2");
}

/// The bytes of the file as they are, into a new one that takes the place of the former.
void WriteFloor(benchmark::State& state) {
    constexpr std::size_t kPiece = 1 << 20;
    const ZoFileBuffMemoryMap file(CloudFile().c_str());
    const std::filesystem::path path = SecondFile();
    const std::filesystem::path fresh = std::filesystem::path(path).concat("-new");
    WarmMemory();
    for (auto _ : state) {
        std::FILE* const out = std::fopen(fresh.c_str(), "wb");
        std::setvbuf(out, nullptr, _IONBF, 0);
        for (std::size_t at = 0; at < file.size; at += kPiece)
            std::fwrite(file.view + at, 1, std::min<std::size_t>(kPiece, file.size - at), out);
        if (std::fclose(out) != 0) state.SkipWithError("not written");
        std::filesystem::rename(fresh, path);
    }
    if (std::filesystem::file_size(path) != file.size) state.SkipWithError("wrong size");
    std::filesystem::remove(path);
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(WriteFloor)->Unit(benchmark::kMillisecond);

void WriteNative(benchmark::State& state) {
    const std::filesystem::path path = SecondFile();
    const std::wstring name = string2wstring(path.native());
    WarmMemory();
    for (auto _ : state) {
        if (Clouds().Write(name) != 1) state.SkipWithError("not written");
    }
    if (std::filesystem::file_size(path) != kHead + kPoints * kRecord) state.SkipWithError("wrong size");
    std::filesystem::remove(path);
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(WriteNative)->Unit(benchmark::kMillisecond);

void CopyFloor(benchmark::State& state) {
    const ZoScanPointVector& points = Clouds().First()->points;
    const BareArray copy = MakeArray();
    static_assert(sizeof(BarePoint) == sizeof(ZoScanPoint3d));
    for (auto _ : state) {
        std::memcpy(static_cast<void*>(copy.get()), points.data(), kPoints * sizeof(BarePoint));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kPoints * sizeof(BarePoint)));
}
BENCHMARK(CopyFloor)->Unit(benchmark::kMillisecond);

/// The third of the facade between the two planes across it.
Zo3dSelectVolume MiddleThird() {
    const auto plane = [](double a, double c, double d) {
        ZoPlane made;
        made.A() = a;
        made.C() = c;
        made.D() = d;
        return made;
    };
    Zo3dSelectVolume volume;
    volume.SetOffset(ZoPoint3d(5e6, 5e5, 0.0));
    volume.SetPlane(0, plane(1.0, 0.0, -100.0 / 3.0));
    volume.SetPlane(1, plane(-1.0, 0.0, 200.0 / 3.0));
    volume.SetPlane(2, plane(0.0, 1.0, 0.0));
    volume.SetPlane(3, plane(0.0, -1.0, 30.0));
    volume.StartPyramid();
    return volume;
}

void Select(benchmark::State& state) {
    ZoPointCloud& cloud = *Clouds().First();
    const Zo3dSelectVolume volume = MiddleThird();
    cloud.Deselect();
    for (auto _ : state) {
        const std::uint32_t selected = cloud.SelectPoints(volume);
        if (selected < kPoints / 4 || selected > kPoints / 2) state.SkipWithError("wrong selection");
    }
    cloud.Deselect();
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(Select)->Unit(benchmark::kMillisecond);

void Bounds(benchmark::State& state) {
    ZoPointCloud& cloud = *Clouds().First();
    for (auto _ : state) {
        cloud.CalcCenterAndBoundingBox(false);
        if (cloud.box.xmax <= 5e6) state.SkipWithError("wrong box");
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(Bounds)->Unit(benchmark::kMillisecond);

/// On a cloud of its own, since the coordinates are rounded on the way there and back.
void Transform(benchmark::State& state) {
    const auto copy = std::make_unique<ZoPointCloud>(*Clouds().First());
    ZoPointCloud& cloud = *copy;
    ZoAffinMap3d map = ZoAffinMap3d::Translate(1.0, 2.0, 3.0);
    for (auto _ : state) {
        cloud.Transform(map);
        map.Invert();
    }
    if (cloud.box.xmax <= 5e6) state.SkipWithError("wrong box");
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(Transform)->Unit(benchmark::kMillisecond);

void AddPoint(benchmark::State& state) {
    const ZoScanPointVector& points = Clouds().First()->points;
    WarmMemory();
    for (auto _ : state) {
        ZoPointCloud cloud;
        cloud.Reserve(kPoints);
        for (const ZoScanPoint3d& point : points)
            cloud.AddPoint(point);
        if (cloud.Size() != kPoints) state.SkipWithError("wrong size");
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(AddPoint)->Unit(benchmark::kMillisecond);

}  // namespace
