#include "round_trip.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "archive_form.h"

namespace {

constexpr double kReachOfZeroRadius = 2.1;  // what a file without a reach stands for, in units of R0

/// Cameras in an archive: their number, then the records.
class CameraArchive : public CZipWrapper {
  public:
    static constexpr const wchar_t* kItem = L"cameras";

    static bool Save(const std::wstring& file, const ZoCameraList& cameras) {
        CameraArchive archive;
        archive.source = &cameras;
        if (!archive.SzOpen(file, true)) return false;
        archive.SzAdd(kItem);
        archive.SzClose();
        return archive.GetLastResult() == 0;
    }

    static bool Load(const std::wstring& file, ZoCameraList& cameras) {
        constexpr std::size_t kNumbers = 26 * sizeof(double);  // of each record, beside its texts
        CameraArchive archive;
        archive.SzOpen(file, false);
        if (!archive.UnzipItem(kItem, nullptr)) return false;
        for (std::uint64_t left = archive.ReadCount(kNumbers); left > 0; --left)
            cameras.Add(ZoCamera())->ReadV9(&archive);
        return archive.Eof();
    }

  private:
    void WriteItem() override {
        WriteCount(static_cast<std::uint64_t>(source->Count()));
        for (const ZoCamera* camera = source->First(); camera; camera = camera->NextConst())
            camera->WriteV9(this);
    }

    const ZoCameraList* source = nullptr;
};

bool Same(const ZoCameraList& a, const ZoCameraList& b) {
    const ZoCamera* p = a.First();
    const ZoCamera* q = b.First();
    for (; p && q && ArchiveForm(*p) == ArchiveForm(*q); p = p->NextConst())
        q = q->NextConst();
    return !p && !q;
}

/// The cameras as a form brings them back that knows no reach.
ZoCameraList WithoutReach(const ZoCameraList& cameras) {
    ZoCameraList changed(cameras);
    for (ZoCamera* camera = changed.First(); camera; camera = camera->Next())
        camera->rmax = camera->r0 * kReachOfZeroRadius;
    return changed;
}

/// The classic cameras with what the simple form holds of them.
ZoCameraList ClassicOnes(const ZoCameraList& cameras) {
    ZoCameraList classic;
    for (const ZoCamera* camera = cameras.First(); camera; camera = camera->NextConst()) {
        if (!camera->IsOldZorv()) continue;
        classic.Add(ZoCamera(camera->GetId(), std::fabs(camera->c), camera->xh, camera->yh, camera->a1, camera->a2,
                             camera->r0, wstring2string(camera->GetName(), false).c_str()));
    }
    return WithoutReach(classic);
}

std::ptrdiff_t LinesOf(const std::wstring& file) {
    std::ifstream in(std::filesystem::path(wstring2string(file)), std::ios::binary);
    return std::count(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>(), '\n');
}

}  // namespace

void CheckRoundTrips(const ZoCameraList& cameras, const std::wstring& folder, const std::wstring& stem, Checks& check) {
    const auto file = [&](const wchar_t* ending) { return ZoMakeFilename(folder, stem + ending); };

    cameras.WriteFileFormatFull(file(L"_full.cam"));
    ZoCameraList full;
    check("full form read back by its keywords", full.ReadFileFormatFull(file(L"_full.cam")) == 1 && !full.IsEmpty());
    check("full form brings everything back", Same(full, cameras));

    const ZoCameraList classic = ClassicOnes(cameras);
    if (!classic.IsEmpty()) {
        classic.WriteFile(file(L"_simple.cam"), false);
        ZoCameraList simple;
        simple.ReadFileFormatSimple(file(L"_simple.cam"));
        check("simple form brings the classic cameras back", Same(simple, classic));
    }

    check("archive written", CameraArchive::Save(file(L".zip"), cameras));
    ZoCameraList archived;
    check("archive read back", CameraArchive::Load(file(L".zip"), archived));
    check("archive brings everything but the reach back", Same(archived, WithoutReach(cameras)));

    cameras.WriteFile(file(L".gentri"), true);
    check("a line for each camera in the adjustment's form", LinesOf(file(L".gentri")) == cameras.Count());
}
