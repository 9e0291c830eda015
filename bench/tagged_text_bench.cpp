// Reading and writing tagged text beside bare number parsing and formatting, on 1,000,000 records of five tokens in
// lines of 80 bytes.

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "zorv/zorv.h"

namespace {

constexpr int kRecords = 1'000'000;

struct Record {
    unsigned int id = 0;
    double x = 0.0, y = 0.0, z = 0.0;
};

const std::string& Body() {
    static const std::string body = [] {
        std::string text;
        char line[96];
        for (int i = 0; i < kRecords; ++i) {
            std::snprintf(line, sizeof line, "%8d \"P\" %20.9f %20.9f %24.9f\n", i + 1, 4500000.0 + i * 0.37,
                          5800000.0 - i * 0.11, 400.0 + i * 1e-5);
            text += line;
        }
        return text;
    }();
    return body;
}

class TaggedFile {
  public:
    TaggedFile() : path(std::filesystem::temp_directory_path() / ("zorv_tagged_" + std::to_string(std::rand()))) {
        std::ofstream(path, std::ios::binary) << "POINTS {\n" << Body() << "}\n";
    }
    ~TaggedFile() { std::filesystem::remove(path); }
    std::wstring Name() const { return path.wstring(); }

  private:
    std::filesystem::path path;
};

class Points : public LinkHdl {
  public:
    void ReadFile(const std::wstring& file) {
        records.clear();
        ZoReader reader(file);
        reader.RegisterObject(ZoReaderObject("POINTS", Link(this, &Points::Read)));
        reader.DoProcess(false);
    }
    long Read(ZoReaderObject* object) {
        ZoStreamParser in = object->GetStreamParser();
        const ZoParserToken& token = in.parser->GetToken();
        while (token.GetType() != eZoTokenBlockEnd) {
            Record record;
            in >> record.id >> name >> record.x >> record.y >> record.z;
            records.push_back(record);
        }
        return 1;
    }

    std::vector<Record> records;
    std::string name;
};

const char* PassBlanks(const char* at) {
    while (*at == ' ' || *at == '\n')
        ++at;
    return at;
}

std::vector<Record> ParseBare(const std::string& text) {
    std::vector<Record> records;
    const char* end = text.data() + text.size();
    for (const char* at = PassBlanks(text.data()); at != end; at = PassBlanks(at)) {
        Record record;
        at = PassBlanks(std::from_chars(at, end, record.id).ptr) + 3;
        at = PassBlanks(std::from_chars(PassBlanks(at), end, record.x).ptr);
        at = PassBlanks(std::from_chars(at, end, record.y).ptr);
        at = std::from_chars(at, end, record.z).ptr;
        records.push_back(record);
    }
    return records;
}

void FloorFromChars(benchmark::State& state) {
    const std::string& text = Body();
    for (auto _ : state)
        benchmark::DoNotOptimize(ParseBare(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Body().size()));
}
BENCHMARK(FloorFromChars)->Unit(benchmark::kMillisecond);

void TaggedRead(benchmark::State& state) {
    const TaggedFile file;
    Points points;
    points.ReadFile(file.Name());
    const std::vector<Record> expected = ParseBare(Body());
    if (points.records.size() != expected.size() || points.records.back().z != expected.back().z) {
        state.SkipWithError("the records differ from the file");
        return;
    }
    for (auto _ : state)
        points.ReadFile(file.Name());
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Body().size()));
}
BENCHMARK(TaggedRead)->Unit(benchmark::kMillisecond);

void TaggedHeaderWrite(benchmark::State& state) {
    const ZoObject object(4711, L"Wall");
    std::ostringstream out;
    for (auto _ : state) {
        out.seekp(0);
        for (int i = 0; i < 1000; ++i)
            object.Write(out);
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(TaggedHeaderWrite);

}  // namespace
