// Point files, lists and archives of a million points, each beside a floor: the least that any program must do for the
// same result. The figure that counts is the ratio of a run to its floor.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

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

/// Lines `id code x y z` of 80 bytes.
const std::string& FileText() {
    static const std::string text = [] {
        std::string made;
        made.reserve(kPoints * std::size_t{80});
        for (const Row& row : Rows()) {
            char line[96];
            std::snprintf(line, sizeof line, "%9u %3u %21.6f %21.6f %21.6f\n", row.id, row.code, row.x, row.y, row.z);
            made += line;
        }
        return made;
    }();
    return text;
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
    const std::string& text = FileText();
    for (auto _ : state) {
        std::vector<Row> rows(kPoints);
        ParseFloor(text, rows);
        benchmark::DoNotOptimize(rows.data());
        if (rows.back().id != kPoints) Fail("parse floor");
    }
}
BENCHMARK(ReadFileFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadFile(benchmark::State& state) {
    ScratchFile file(".coo");
    std::ofstream(file.Path(), std::ios::binary) << FileText();
    const TZoFormatTable<eZoPointRWMask> table(kCoordinateFile);
    {
        const ZoPointList list(file.Name(), table);
        const ZoPoint* last = list.Last();
        if (list.Count() != kPoints || !last || last->id != kPoints || last->controlFlags != 7) Fail("ReadFile");
        if (std::abs(last->x - Rows().back().x) > 1e-6) Fail("ReadFile");
    }
    for (auto _ : state) {
        auto list = std::make_unique<ZoPointList>();
        if (list->ReadFile(file.Name(), table) != kPoints) Fail("ReadFile");
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(ReadFile)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
