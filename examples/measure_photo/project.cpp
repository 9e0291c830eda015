#include "project.h"

#include <filesystem>
#include <fstream>

#include "archive_form.h"

namespace {

const TZoFormatTable<eZoPointRWMask>& PointColumns() {
    static const eZoPointRWMask kinds[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kinds);
    return table;
}

/// The project's archive: one item for each list.
class ProjectArchive : public CZipWrapper {
  public:
    ProjectArchive(const std::wstring& file, const Project& source) : CZipWrapper(file, true), project(&source) {
        for (const wchar_t* item : {L"photos", L"planes", L"points"})
            SzAdd(item);
    }
    explicit ProjectArchive(const std::wstring& file) : CZipWrapper(file, false) {}

    bool Take(Project& target) {
        if (!UnzipItem(L"photos", nullptr)) return false;
        target.photos.ReadV9(this);
        if (!UnzipItem(L"planes", nullptr)) return false;
        target.planes.ReadV9(this);
        if (!UnzipItem(L"points", nullptr)) return false;
        target.points.ReadV9(this);
        return true;
    }

    void WriteItem() override {
        if (itemName == L"photos") project->photos.WriteV9(this);
        if (itemName == L"planes") project->planes.WriteV9(this);
        if (itemName == L"points") project->points.WriteV9(this);
    }

  private:
    const Project* project = nullptr;
};

template <class Record>
void WriteBlock(std::ostream& stream, const char* keyword, const Record& record) {
    stream << s12 << keyword << w4 << ZoBeginBlockNL;
    record.Write(stream);
    stream << ZoEndBlockNL << Zoendl;
}

}  // namespace

int Project::ReadText(const std::wstring& file) {
    points.SetMask(PointColumns());
    ZoReader reader(file);
    reader.RegisterObject(ZoReaderObject("CAMERA", Link(&cameras, &ZoCameraList::ReadFormatFull)));
    reader.RegisterObject(ZoReaderObject("PHOTO", Link(&photos, &ZoPhotoList::AddPhoto)));
    reader.RegisterObject(ZoReaderObject("PLANE", Link(this, &Project::ReadPlane)));
    reader.RegisterObject(ZoReaderObject("COORDINATES", Link(&points, &ZoPointList::Read)));
    reader.DoProcess(false);
    reader.LogErrorsToApplicationLogger();
    return reader.GetReadErrorCount();
}

long Project::ReadPlane(ZoReaderObject* object) {
    planes.AddPlane(object);
    return 1;
}

bool Project::WriteText(const std::wstring& file) const {
    std::ofstream stream(std::filesystem::path(wstring2string(file)), std::ios::binary);
    stream.imbue(std::locale::classic());
    for (const ZoCamera* camera = cameras.First(); camera; camera = camera->NextConst()) {
        stream << s12 << "CAMERA" << w4 << ZoBeginBlockNL;
        camera->WriteFullData(stream, true) << ZoEndBlockNL << Zoendl;
    }
    for (const ZoPhoto* photo = photos.First(); photo; photo = photo->NextConst())
        WriteBlock(stream, "PHOTO", *photo);
    for (const ZoPlane* plane = planes.First(); plane; plane = plane->NextConst())
        WriteBlock(stream, "PLANE", *plane);
    WriteBlock(stream, "COORDINATES", points);
    return static_cast<bool>(stream.flush());
}

bool Project::WriteArchive(const std::wstring& file) const {
    ProjectArchive archive(file, *this);
    archive.SzClose();
    return archive.GetLastResult() == 0 && archive.GetFailedItems().empty();
}

bool Project::ReadArchive(const std::wstring& file) {
    ProjectArchive archive(file);
    return archive.Take(*this);
}

void Project::MakeCameraPairs() {
    for (ZoPhoto* photo = photos.First(); photo; photo = photo->Next())
        photo->SetZorvLibAutoDataFromInternalData();
}

bool SameProject(const Project& a, const Project& b) {
    return ArchiveForm(a.photos) == ArchiveForm(b.photos) && ArchiveForm(a.planes) == ArchiveForm(b.planes) &&
           ArchiveForm(a.points) == ArchiveForm(b.points);
}
