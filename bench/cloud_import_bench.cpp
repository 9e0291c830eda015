// Two million points in text beside a bare std::from_chars loop over the mapped file, and five million of an
// uncompressed LAS file beside the unpacking of its fixed offsets. A floor fills the same array, into memory that has
// been touched before and into fresh memory as an import does. The counter `peak` tells the memory that an import takes
// at its most, without that of the mapped file, as a multiple of the finished points.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include "zorv/cloud/cloud_buffer.h"
#include "zorv/cloud/cloud_container.h"
#include "zorv/core/text_conversion.h"

namespace {

constexpr std::size_t kTextPoints = 2'000'000;
constexpr std::size_t kLasPoints = 5'000'000;
constexpr std::size_t kLasHead = 227;
constexpr std::size_t kLasRecord = 34;
constexpr double kScale = 0.001;
constexpr double kOffset[3] = {5e6, 5e5, 100.0};

/// A file that goes with the program.
struct File {
    explicit File(const std::string& extension)
        : path(std::filesystem::temp_directory_path() / ("zorv-bench-" + std::to_string(::getpid()) + extension)),
          name(string2wstring(path.native())) {}
    ~File() { std::filesystem::remove(path); }
    std::filesystem::path path;
    std::wstring name;
};

/// Points of a facade at map coordinates, in millimetres; what a scanner writes.
template <class Write>
void ForEachPoint(std::size_t count, Write write) {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < count; ++i) {
        const auto x = static_cast<std::int32_t>(random() % 100'000);
        const auto y = static_cast<std::int32_t>(random() % 1'000);
        const auto z = static_cast<std::int32_t>(random() % 30'000);
        write(x, y, z, random());
    }
}

std::string Coordinate(std::int32_t millimetres, double offset) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6f ", millimetres * kScale + offset + 1e-6 * (millimetres % 1000));
    return text;
}

enum Layout { kPts, kPtsWithoutCount, kXyz, kXyzWithColor };
constexpr const char* kExtensions[] = {".pts", "-plain.pts", ".xyz", "-color.xyz"};

const File& TextFile(Layout layout) {
    static std::unique_ptr<File> files[4];
    std::unique_ptr<File>& file = files[layout];
    if (file) return *file;
    file = std::make_unique<File>(kExtensions[layout]);
    std::ofstream out(file->path, std::ios::binary);
    if (layout == kPts) out << kTextPoints << '\n';
    ForEachPoint(kTextPoints, [&](std::int32_t x, std::int32_t y, std::int32_t z, std::uint32_t bits) {
        std::string line = Coordinate(x, kOffset[0]) + Coordinate(y, kOffset[1]) + Coordinate(z, kOffset[2]);
        if (layout <= kPtsWithoutCount) line += std::to_string(static_cast<int>(bits % 4000) - 2000) + ' ';
        if (layout != kXyz) {
            for (const int shift : {0, 8, 16})
                line += std::to_string(bits >> shift & 0xff) + (shift < 16 ? " " : "");
        }
        out << line << '\n';
    });
    return *file;
}

template <class T>
void Put(std::string& bytes, std::size_t at, T value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

const File& LasFile() {
    static std::unique_ptr<File> file;
    if (file) return *file;
    file = std::make_unique<File>(".las");
    std::ofstream out(file->path, std::ios::binary);
    std::string head(kLasHead, '\0');
    std::memcpy(head.data(), "LASF", 4);
    head[24] = 1;
    head[25] = 2;
    Put(head, 94, static_cast<std::uint16_t>(kLasHead));
    Put(head, 96, static_cast<std::uint32_t>(kLasHead));
    head[104] = 3;
    Put(head, 105, static_cast<std::uint16_t>(kLasRecord));
    Put(head, 107, static_cast<std::uint32_t>(kLasPoints));
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Put(head, 131 + 8 * axis, kScale);
        Put(head, 155 + 8 * axis, kOffset[axis]);
    }
    out << head;
    std::string record(kLasRecord, '\0');
    ForEachPoint(kLasPoints, [&](std::int32_t x, std::int32_t y, std::int32_t z, std::uint32_t bits) {
        Put(record, 0, x);
        Put(record, 4, y);
        Put(record, 8, z);
        Put(record, 12, static_cast<std::uint16_t>(bits));
        Put(record, 28, bits);
        Put(record, 32, static_cast<std::uint16_t>(bits >> 16));
        out << record;
    });
    return *file;
}

/// What a point needs in memory.
struct BarePoint {
    double xyzw[4];
    float extra[3], normal[3];
    std::uint8_t measurements, flags;
    std::uint32_t color, falseColor;
};
static_assert(sizeof(BarePoint) == sizeof(ZoScanPoint3d));

using BareArray = std::unique_ptr<BarePoint, decltype(&std::free)>;

BareArray MakeArray(std::size_t count) {
    return {static_cast<BarePoint*>(std::malloc(count * sizeof(BarePoint))), &std::free};
}

/// Reads numbers one after the other without a look at what stands between or behind them.
std::size_t ParseText(const std::wstring& name, Layout layout, BarePoint* points) {
    const ZoFileBuffMemoryMap file(name.c_str());
    const auto* at = reinterpret_cast<const char*>(file.view);
    const auto* const end = reinterpret_cast<const char*>(file.end);
    const auto next = [&at, end](auto& value) { at = std::from_chars(at, end, value).ptr + 1; };
    if (layout == kPts) {
        std::size_t count = 0;
        next(count);
    }
    std::size_t read = 0;
    for (; at < end; ++read) {
        BarePoint point{};
        next(point.xyzw[0]);
        next(point.xyzw[1]);
        next(point.xyzw[2]);
        point.xyzw[3] = 1.0;
        if (layout == kXyz) ++at;
        std::int32_t intensity = -2000;
        std::uint32_t red = 0, green = 0, blue = 0;
        if (layout <= kPtsWithoutCount) next(intensity);
        if (layout != kXyz) {
            next(red);
            next(green);
            next(blue);
        } else {
            --at;
            while (*at != '\n')
                ++at;
            ++at;
        }
        point.color = red | green << 8 | blue << 16 | static_cast<std::uint32_t>((intensity + 2000) * 256 / 4000) << 24;
        points[read] = point;
    }
    return read;
}

void TextFloor(benchmark::State& state, bool fresh) {
    const auto layout = static_cast<Layout>(state.range(0));
    const File& file = TextFile(layout);
    BareArray points = MakeArray(kTextPoints);
    if (ParseText(file.name, layout, points.get()) != kTextPoints) state.SkipWithError("wrong points");
    for (auto _ : state) {
        if (fresh) {
            state.PauseTiming();
            points.reset();
            state.ResumeTiming();
            points = MakeArray(kTextPoints);
        }
        ParseText(file.name, layout, points.get());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kTextPoints);
}

void TextFloorTouched(benchmark::State& state) {
    TextFloor(state, false);
}
BENCHMARK(TextFloorTouched)->DenseRange(kPts, kXyzWithColor)->Unit(benchmark::kMillisecond);

void TextFloorFresh(benchmark::State& state) {
    TextFloor(state, true);
}
BENCHMARK(TextFloorFresh)->DenseRange(kPts, kXyzWithColor)->Unit(benchmark::kMillisecond);

/// Bytes in a line of this process's status.
double StatusBytes(const char* line) {
    std::ifstream status("/proc/self/status");
    double kilobytes = 0.0;
    for (std::string word; status >> word;) {
        if (word == line) status >> kilobytes;
    }
    return kilobytes * 1024.0;
}

/// Leaves the counter out where the system does not let the highest memory be told anew.
template <class Import>
void MeasurePeak(benchmark::State& state, const std::filesystem::path& path, Import import) {
    ::malloc_trim(0);  // else the points may lie in memory that an earlier import gave back
    if (!(std::ofstream("/proc/self/clear_refs") << 5 << std::flush)) return;
    const double before = StatusBytes("VmRSS:");
    ZoPointCloudContainer container;
    ZoPointCloudReadResult result;
    import(container, result);
    const double taken = StatusBytes("VmHWM:") - before - static_cast<double>(std::filesystem::file_size(path));
    state.counters["peak"] = taken / static_cast<double>(container.Size() * sizeof(ZoScanPoint3d));
}

/// Imports again and again, the clouds going without being counted.
template <class Import>
void TimeImport(benchmark::State& state, const std::filesystem::path& path, std::size_t count, Import import) {
    MeasurePeak(state, path, import);
    for (auto _ : state) {
        auto container = std::make_unique<ZoPointCloudContainer>();
        ZoPointCloudReadResult result;
        const bool isRead = import(*container, result);
        state.PauseTiming();
        if (!isRead || result.points != count || container->center.GetCount() != static_cast<int>(count)) {
            state.SkipWithError("wrong points");
        }
        container.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

void ImportText(benchmark::State& state) {
    const auto layout = static_cast<Layout>(state.range(0));
    const File& file = TextFile(layout);
    const BareArray expected = MakeArray(kTextPoints);
    ParseText(file.name, layout, expected.get());
    const auto import = [&](ZoPointCloudContainer& container, ZoPointCloudReadResult& result) {
        return layout <= kPtsWithoutCount ? container.ReadPtsFile(file.name, result)
                                          : container.ReadXYZFile(file.name, result);
    };
    {
        ZoPointCloudContainer container;
        ZoPointCloudReadResult result;
        import(container, result);
        const ZoScanPointVector& points = container.First()->points;
        const bool same =
            std::equal(points.begin(), points.end(), expected.get(), expected.get() + kTextPoints,
                       [](const ZoScanPoint3d& a, const BarePoint& b) {
                           return a.x() == b.xyzw[0] && a.y() == b.xyzw[1] && a.z() == b.xyzw[2] && a.color == b.color;
                       });
        if (!same) state.SkipWithError("wrong points");
    }
    TimeImport(state, file.path, kTextPoints, import);
}
BENCHMARK(ImportText)->DenseRange(kPts, kXyzWithColor)->Unit(benchmark::kMillisecond);

void UnpackLas(BarePoint* points) {
    const ZoFileBuffMemoryMap file(LasFile().name.c_str());
    const unsigned char* record = file.view + kLasHead;
    for (std::size_t i = 0; i < kLasPoints; ++i, record += kLasRecord) {
        std::int32_t xyz[3];
        std::uint16_t intensity, rgb[3];
        std::memcpy(xyz, record, sizeof xyz);
        std::memcpy(&intensity, record + 12, sizeof intensity);
        std::memcpy(rgb, record + 28, sizeof rgb);
        BarePoint point{};
        for (int axis = 0; axis < 3; ++axis)
            point.xyzw[axis] = xyz[axis] * kScale + kOffset[axis];
        point.xyzw[3] = 1.0;
        point.color = static_cast<std::uint32_t>(rgb[0] >> 8 | (rgb[1] >> 8) << 8 | (rgb[2] >> 8) << 16) |
                      static_cast<std::uint32_t>(intensity >> 8) << 24;
        points[i] = point;
    }
}

void LasFloor(benchmark::State& state, bool fresh) {
    LasFile();
    BareArray points = MakeArray(kLasPoints);
    UnpackLas(points.get());
    for (auto _ : state) {
        if (fresh) {
            state.PauseTiming();
            points.reset();
            state.ResumeTiming();
            points = MakeArray(kLasPoints);
        }
        UnpackLas(points.get());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kLasPoints);
}

void LasFloorTouched(benchmark::State& state) {
    LasFloor(state, false);
}
BENCHMARK(LasFloorTouched)->Unit(benchmark::kMillisecond);

void LasFloorFresh(benchmark::State& state) {
    LasFloor(state, true);
}
BENCHMARK(LasFloorFresh)->Unit(benchmark::kMillisecond);

void ImportLas(benchmark::State& state) {
    const File& file = LasFile();
    TimeImport(state, file.path, kLasPoints, [&file](ZoPointCloudContainer& container, ZoPointCloudReadResult& result) {
        return container.ReadLasLazFile(file.name, result);
    });
}
BENCHMARK(ImportLas)->Unit(benchmark::kMillisecond);

/// A LAZ file of point format 3, told by the points a second: the floor above does not decode.
void ImportLaz(benchmark::State& state) {
    const std::filesystem::path path = std::filesystem::path(ZORV_TEST_DATA) / "las" / "autzen_trim.laz";
    constexpr std::size_t kPoints = 110'000;
    if (!std::filesystem::exists(path)) {
        state.SkipWithError("no file");
        return;
    }
    const std::wstring name = string2wstring(path.native());
    TimeImport(state, path, kPoints, [&name](ZoPointCloudContainer& container, ZoPointCloudReadResult& result) {
        return container.ReadLasLazFile(name, result);
    });
}
BENCHMARK(ImportLaz)->Unit(benchmark::kMillisecond);

}  // namespace
