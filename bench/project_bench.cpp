// A project text with 2,000 photos and their rectifications, read and written, beside a pass of bare number parsing
// over it; the same photos in an archive, beside the unpacking alone.

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>

#include "zorv/zorv.h"

namespace {

constexpr unsigned int kPhotos = 2000;
constexpr int kRectifications = 2;
constexpr int kCorners = 8;

ZoPhoto MakePhoto(unsigned int id) {
    ZoPhoto photo(id, L"images/photo_" + std::to_wstring(id) + L".jpg");
    photo.SetComment(L"from station " + std::to_wstring(id % 37));
    photo.SetActiveFlag(ZoPhoto::kActive);
    photo.SetHasAOR(true);
    photo.SetPixelRegion(ZoRegion(0, 0, 6000, 4000));
    photo.preTrafo.Set(-18.0, 0.006, -12.0, 0.0);
    photo.mainTrafo.Set(0.01, 1.0, 0.02, 1e-4, -0.013, 0.999);
    photo.SetPosAOR(4500000.123 + id, 5800000.456 - id, 400.789);
    photo.SetRotAOR(0.3, 0.001 * id, -0.2);
    photo.SetCamera(ZoCamera(1, 24.35, 0.052, -0.031, -4e-5, 3e-8, 12.0, "Wide 24 mm"), false);
    for (int i = 0; i < kRectifications; ++i) {
        ZoElspTrafo rectification;
        rectification.SetName(L"facade");
        rectification.SetActive(true);
        for (int k = 0; k < kCorners; ++k) {
            rectification.GetRegion().AddPoint(ZoPoint(0, -15.123 + k, 10.456 - k * 0.7, 0, 0));
            rectification.GetBikoList().AddPoint(ZoPoint(static_cast<unsigned>(k + 1), -15.123 + k, 10.456, 0, 0));
            rectification.GetPPList().AddPoint(ZoPoint(static_cast<unsigned>(k + 1), 4500000.1, 5800000.2, 400.3, 0));
        }
        photo.AddElspTrafo(rectification, true);
    }
    return photo;
}

const ZoPhotoList& Photos() {
    static const auto photos = [] {
        auto list = std::make_unique<ZoPhotoList>();
        for (unsigned int id = 1; id <= kPhotos; ++id) {
            const ZoPhoto photo = MakePhoto(id);
            ZoPhoto* const added = list->Add(photo);
            for (const ZoElspTrafo* each = photo.FirstElspTrafo(); each; each = each->NextConst())
                added->AddElspTrafo(*each, false);
        }
        return list;
    }();
    return *photos;
}

std::string ProjectText() {
    std::ostringstream text;
    for (const ZoPhoto* photo = Photos().First(); photo; photo = photo->NextConst()) {
        text << s12 << "PHOTO" << w4 << ZoBeginBlockNL;
        photo->Write(text) << ZoEndBlockNL << Zoendl;
    }
    return text.str();
}

class ProjectFile {
  public:
    ProjectFile()
        : text(ProjectText()),
          path(std::filesystem::temp_directory_path() / ("zorv_project_" + std::to_string(std::rand()))) {
        std::ofstream(path, std::ios::binary) << text;
    }
    ~ProjectFile() { std::filesystem::remove(path); }

    std::string text;
    std::filesystem::path path;
};

const ProjectFile& File() {
    static const ProjectFile file;
    return file;
}

void ReadAll(ZoPhotoList& photos) {
    ZoReader reader(File().path.wstring());
    reader.RegisterObject(ZoReaderObject("PHOTO", Link(&photos, &ZoPhotoList::AddPhoto)));
    reader.DoProcess(false);
}

void ReadProjectText(benchmark::State& state) {
    ZoPhotoList check;
    ReadAll(check);
    if (check.Count() != static_cast<int>(kPhotos) || check.Last()->GetElspList()->Count() != kRectifications)
        state.SkipWithError("the project does not read back");
    for (auto _ : state) {
        ZoPhotoList photos;
        ReadAll(photos);
        benchmark::DoNotOptimize(photos.Last());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(File().text.size()));
}
BENCHMARK(ReadProjectText)->Unit(benchmark::kMillisecond);

void BareNumbersOfProjectText(benchmark::State& state) {
    const std::string& text = File().text;
    for (auto _ : state) {
        double sum = 0;
        const char* at = text.data();
        const char* const end = at + text.size();
        while (at < end) {
            double value = 0;
            const auto [next, error] = std::from_chars(at, end, value);
            at = error == std::errc() ? next : at + 1;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BareNumbersOfProjectText)->Unit(benchmark::kMillisecond);

void WriteProjectText(benchmark::State& state) {
    std::size_t size = 0;
    for (auto _ : state)
        size = ProjectText().size();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK(WriteProjectText)->Unit(benchmark::kMillisecond);

class PhotoArchive : public CZipWrapper {
  public:
    using CZipWrapper::CZipWrapper;
    void WriteItem() override { Photos().WriteV9(this); }
};

void WriteProjectArchive(benchmark::State& state) {
    const std::wstring name = (File().path.wstring() + L".zip");
    for (auto _ : state) {
        PhotoArchive archive(name, true);
        archive.SzAdd(L"photos");
        archive.SzClose();
    }
    PhotoArchive size;
    Photos().WriteV9(&size);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size.sizedBytes));
    std::filesystem::remove(name);
}
BENCHMARK(WriteProjectArchive)->Unit(benchmark::kMillisecond);

void ReadProjectArchive(benchmark::State& state) {
    const std::wstring name = (File().path.wstring() + L".zip");
    {
        PhotoArchive archive(name, true);
        archive.SzAdd(L"photos");
        archive.SzClose();
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        PhotoArchive archive(name, false);
        archive.UnzipItem(L"photos", nullptr);
        bytes = archive.bufferSize;
        ZoPhotoList photos;
        photos.ReadV9(&archive);
        if (photos.Count() != static_cast<int>(kPhotos)) state.SkipWithError("the archive does not read back");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    std::filesystem::remove(name);
}
BENCHMARK(ReadProjectArchive)->Unit(benchmark::kMillisecond);

/// Only the unpacking, without the records.
void UnzipProjectArchive(benchmark::State& state) {
    const std::wstring name = (File().path.wstring() + L".zip");
    {
        PhotoArchive archive(name, true);
        archive.SzAdd(L"photos");
        archive.SzClose();
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        PhotoArchive archive(name, false);
        benchmark::DoNotOptimize(archive.UnzipItem(L"photos", nullptr));
        bytes = archive.bufferSize;
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    std::filesystem::remove(name);
}
BENCHMARK(UnzipProjectArchive)->Unit(benchmark::kMillisecond);

}  // namespace
