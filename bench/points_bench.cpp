// Point files, lists and archives of a million points, each beside a floor: the least that any program must do for the
// same result. The figure that counts is the ratio of a run to its floor.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "zorv/zorv.h"

namespace {

constexpr int kPoints = 1'000'000;
constexpr eZoPointRWMask kCoordinateFile[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};

struct Row {
    std::uint32_t id;
    std::uint32_t code;
    double x, y, z;
};

/// A file of the benchmark that goes away with it.
class ScratchFile {
  public:
    explicit ScratchFile(const std::string& extension)
        : file(std::filesystem::temp_directory_path() /
               ("zorv-bench-" + std::to_string(std::random_device()()) + extension)) {}
    ~ScratchFile() {
        std::error_code error;
        std::filesystem::remove(file, error);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::filesystem::path& Path() const { return file; }
    std::wstring Name() const { return file.wstring(); }

  private:
    std::filesystem::path file;
};

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> across(2'600'000.0, 2'601'000.0);
        std::uniform_real_distribution<double> up(400.0, 500.0);
        std::vector<Row> made;
        made.reserve(kPoints);
        for (std::uint32_t i = 1; i <= kPoints; ++i)
            made.push_back({i, i % 4 == 0 ? 123U : 12U, across(random), across(random) - 1'400'000.0, up(random)});
        return made;
    }();
    return rows;
}

/// Lines `id code x y z` of 80 bytes, with micrometres or with 16 significant digits as the library writes them.
const std::string& FileText(bool allDigits) {
    static std::string texts[2];
    std::string& text = texts[allDigits];
    if (!text.empty()) return text;
    const char* format = allDigits ? "%9u %3u %21.16g %21.16g %21.16g\n" : "%9u %3u %21.6f %21.6f %21.6f\n";
    text.reserve(kPoints * std::size_t{80});
    for (const Row& row : Rows()) {
        char line[96];
        std::snprintf(line, sizeof line, format, row.id, row.code, row.x, row.y, row.z);
        text += line;
    }
    return text;
}

/// Bytes of the heap in use, blocks' own overhead included; 0 where the system does not tell.
std::size_t HeapBytes() {
#if defined(__GLIBC__)
    return ::mallinfo2().uordblks;
#else
    return 0;
#endif
}

void Fail(const char* what) {
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(1);
}

const char* SkipBlanks(const char* at) {
    while (*at == ' ' || *at == '\n')
        ++at;
    return at;
}

/// Numbers of a text that is in memory, into an array that is there.
void ParseFloor(const std::string& text, std::vector<Row>& rows) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (Row& row : rows) {
        at = std::from_chars(SkipBlanks(at), end, row.id).ptr;
        at = std::from_chars(SkipBlanks(at), end, row.code).ptr;
        at = std::from_chars(SkipBlanks(at), end, row.x).ptr;
        at = std::from_chars(SkipBlanks(at), end, row.y).ptr;
        at = std::from_chars(SkipBlanks(at), end, row.z).ptr;
    }
}

void ReadFileFloor(benchmark::State& state) {
    const std::string& text = FileText(state.range(0) != 0);
    for (auto _ : state) {
        std::vector<Row> rows(kPoints);
        ParseFloor(text, rows);
        benchmark::DoNotOptimize(rows.data());
        if (rows.back().id != kPoints) Fail("parse floor");
    }
}
BENCHMARK(ReadFileFloor)->ArgName("digits16")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void ReadFile(benchmark::State& state) {
    ScratchFile file(".coo");
    std::ofstream(file.Path(), std::ios::binary) << FileText(state.range(0) != 0);
    const TZoFormatTable<eZoPointRWMask> table(kCoordinateFile);
    {
        const std::size_t heapBefore = HeapBytes();
        const ZoPointList list(file.Name(), table);
        const ZoPoint* last = list.Last();
        if (list.Count() != kPoints || !last || last->id != kPoints || last->controlFlags != 7) Fail("ReadFile");
        if (std::abs(last->x - Rows().back().x) > 1e-6) Fail("ReadFile");
        if (heapBefore > 0) {
            const auto used = static_cast<double>(HeapBytes() - heapBefore);
            state.counters["bytes_beside_point"] = used / kPoints - double{sizeof(ZoPoint)};
        }
    }
    for (auto _ : state) {
        auto list = std::make_unique<ZoPointList>();
        if (list->ReadFile(file.Name(), table) != kPoints) Fail("ReadFile");
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(ReadFile)->ArgName("digits16")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// A list of the rows, each node on its own.
std::unique_ptr<ZoPointList> MakeList(const std::vector<Row>& rows) {
    auto list = std::make_unique<ZoPointList>(TZoFormatTable<eZoPointRWMask>(kCoordinateFile));
    for (const Row& row : rows) {
        ZoPoint* point = list->Add(ZoPoint(row.id, row.x, row.y, row.z, 0));
        point->SetAsControlFlag(static_cast<int>(row.code));
    }
    return list;
}

void ReadTagged(benchmark::State& state) {
    ScratchFile file(".txt");
    std::ofstream(file.Path(), std::ios::binary) << "POINTS {\n" << FileText(state.range(0) != 0) << "}\n";
    const TZoFormatTable<eZoPointRWMask> table(kCoordinateFile);
    for (auto _ : state) {
        auto list = std::make_unique<ZoPointList>(table);
        {
            ZoReader reader(file.Name());
            reader.RegisterObject(ZoReaderObject("POINTS", Link(list.get(), &ZoPointList::Read)));
            reader.DoProcess(false);
            if (reader.GetReadErrorCount() != 0) Fail("tagged read");
        }
        state.PauseTiming();
        const ZoPoint* last = list->Last();
        if (!last || last->id != kPoints || last->controlFlags != 7) Fail("tagged read");
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(ReadTagged)->ArgName("digits16")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// The numbers alone with a blank between them, into memory that is there.
char* FormatFloor(const std::vector<Row>& rows, char* out) {
    for (const Row& row : rows) {
        out = std::to_chars(out, out + 16, row.id).ptr;
        *out++ = ' ';
        out = std::to_chars(out, out + 16, row.code).ptr;
        for (const double value : {row.x, row.y, row.z}) {
            *out++ = ' ';
            out = std::to_chars(out, out + 32, value, std::chars_format::general, 16).ptr;
        }
        *out++ = '\n';
    }
    return out;
}

void WriteFileFloor(benchmark::State& state) {
    const std::vector<Row>& rows = Rows();
    std::vector<char> buffer(rows.size() * 128);
    for (auto _ : state) {
        char* end = FormatFloor(rows, buffer.data());
        benchmark::DoNotOptimize(end);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(WriteFileFloor)->Unit(benchmark::kMillisecond);

void WriteFile(benchmark::State& state) {
    ScratchFile file(".coo");
    const auto list = MakeList(Rows());
    for (auto _ : state) {
        if (list->WriteFile(file.Name()) != 1) Fail("WriteFile");
    }
    // Each line: fields of 11, 5 and three times 22 characters.
    if (std::filesystem::file_size(file.Path()) != kPoints * std::uintmax_t{83} - 1) Fail("WriteFile");
    ZoPointList back(file.Name(), list->GetMask());
    if (back.Count() != kPoints || std::abs(back.Last()->x - Rows().back().x) > 1e-8) Fail("WriteFile");
}
BENCHMARK(WriteFile)->Unit(benchmark::kMillisecond);

const std::vector<Row>& ShuffledRows() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> shuffled = Rows();
        std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(2));
        return shuffled;
    }();
    return rows;
}

void SortFloor(benchmark::State& state) {
    std::vector<std::pair<std::uint32_t, const Row*>> pairs;
    for (const Row& row : ShuffledRows())
        pairs.emplace_back(row.id, &row);
    for (auto _ : state) {
        auto sorted = pairs;
        std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        if (sorted.back().first != kPoints) Fail("sort floor");
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(SortFloor)->Unit(benchmark::kMillisecond);

void Sort(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto list = MakeList(ShuffledRows());
        state.ResumeTiming();
        list->Sort();
        state.PauseTiming();
        std::uint32_t expected = 0;
        for (const ZoPoint* point = list->First(); point; point = point->NextConst()) {
            if (point->id != ++expected) Fail("Sort");
        }
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(Sort)->Unit(benchmark::kMillisecond);

class PointArchive : public CZipWrapper {
  public:
    PointArchive(const std::wstring& file, bool write, const ZoPointList* list)
        : CZipWrapper(file, write), points(list) {}
    ~PointArchive() override { SzClose(); }
    void WriteItem() override { points->WriteV9(this); }

  private:
    const ZoPointList* points;
};

constexpr wchar_t kItem[] = L"points";

/// The records of a million points in an archive of one item, and the same bytes in memory.
struct StoredPoints {
    StoredPoints() : list(MakeList(Rows())), file(".zip") {
        {
            PointArchive archive(file.Name(), true, list.get());
            archive.SzAdd(kItem);
        }
        PointArchive archive(file.Name(), false, list.get());
        const char* item = static_cast<const char*>(archive.UnzipItem(kItem, nullptr));
        if (!item) Fail("archive");
        bytes.assign(item, archive.bufferSize);
        ZoPointList back;
        back.ReadV9(&archive);
        if (back.Count() != kPoints || !(*back.Last() == *list->Last())) Fail("archive");
    }
    std::unique_ptr<ZoPointList> list;
    ScratchFile file;
    std::string bytes;
};

const StoredPoints& Stored() {
    static const StoredPoints stored;
    return stored;
}

void ArchiveWriteFloor(benchmark::State& state) {
    const std::string& bytes = Stored().bytes;
    for (auto _ : state) {
        HZIP zip = CreateZip(nullptr, 500'000'000U, nullptr);
        if (ZipAdd(zip, kItem, bytes.data(), static_cast<unsigned int>(bytes.size())) != 0) Fail("ZipAdd");
        state.PauseTiming();
        CloseZipZ(zip);
        state.ResumeTiming();
    }
}
BENCHMARK(ArchiveWriteFloor)->Unit(benchmark::kMillisecond);

void ArchiveWrite(benchmark::State& state) {
    const StoredPoints& stored = Stored();
    ScratchFile file(".zip");
    for (auto _ : state) {
        PointArchive archive(file.Name(), true, stored.list.get());
        archive.SzAdd(kItem);
        state.PauseTiming();
        if (archive.GetLastResult() != 0) Fail("SzAdd");
        archive.SzClose();
        state.ResumeTiming();
    }
}
BENCHMARK(ArchiveWrite)->Unit(benchmark::kMillisecond);

void ArchiveReadFloor(benchmark::State& state) {
    HZIP zip = ZoUnzipOpen(Stored().file.Name().c_str());
    for (auto _ : state) {
        std::unique_ptr<char[]> block;
        std::size_t size = 0;
        if (ZoUnzipItem(zip, 0, block, size) != 0 || size < Stored().bytes.size()) Fail("ZoUnzipItem");
        benchmark::DoNotOptimize(block.get());
    }
    ZoUnzipClose(zip);
}
BENCHMARK(ArchiveReadFloor)->Unit(benchmark::kMillisecond);

void ArchiveRead(benchmark::State& state) {
    PointArchive archive(Stored().file.Name(), false, nullptr);
    for (auto _ : state) {
        if (!archive.UnzipItem(kItem, nullptr)) Fail("UnzipItem");
    }
}
BENCHMARK(ArchiveRead)->Unit(benchmark::kMillisecond);

void ReadRecords(benchmark::State& state) {
    PointArchive archive(Stored().file.Name(), false, nullptr);
    archive.UnzipItem(kItem, nullptr);
    for (auto _ : state) {
        archive.position = 0;
        auto list = std::make_unique<ZoPointList>();
        list->ReadV9(&archive);
        state.PauseTiming();
        if (!list->Last() || list->Last()->id != kPoints) Fail("ReadV9");
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(ReadRecords)->Unit(benchmark::kMillisecond);

}  // namespace
