#pragma once

#include <zorv/zorv.h>

/// The project file of this program: one archive item with the survey's points.
class SurveyArchive : public CZipWrapper {
  public:
    static constexpr const wchar_t* kPointsItem = L"Points";

    /// Stores the points in a new archive; false when it could not be written.
    static bool Save(const std::wstring& file, const ZoPointList& points) {
        SurveyArchive archive;
        archive.points = &points;
        if (!archive.SzOpen(file, true)) return false;
        archive.SzAdd(kPointsItem);
        archive.SzClose();
        return archive.GetLastResult() == 0;
    }

    /// Reads the points of an archive; false when it does not hold them intact.
    static bool Load(const std::wstring& file, ZoPointList* points) {
        SurveyArchive archive;
        archive.SzOpen(file, false);
        if (!archive.UnzipItem(kPointsItem, nullptr)) return false;
        points->ReadV9(&archive);
        return true;
    }

  private:
    void WriteItem() override {
        if (itemName == kPointsItem) points->WriteV9(this);
    }

    const ZoPointList* points = nullptr;
};
