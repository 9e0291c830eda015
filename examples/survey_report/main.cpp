// A host of the library: takes a total station survey from its GSI file to a point file, an archive, a measurement
// log, an updated coordinate list and a report with a plan.
//
//     survey_report [--out FOLDER] [survey.gsi ...]

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "arguments.h"
#include "console.h"
#include "facades.h"
#include "report_page.h"
#include "survey_archive.h"
#include "survey_plan.h"
#include <zorv/zorv.h>

namespace {

namespace fs = std::filesystem;

constexpr double kTolerance = 0.020;  // metres; points that moved further are held back
constexpr std::size_t kTableRows = 60;

const TZoFormatTable<eZoPointRWMask>& CooColumns() {
    static const eZoPointRWMask kinds[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kinds);
    return table;
}

std::string Number(double value, int decimals) {
    return StringPrintf("%.*f", decimals, value);
}

/// The host's own comparison: what the files must bring back.
bool SamePoints(const ZoPointList& a, const ZoPointList& b) {
    const ZoPoint* p = a.First();
    const ZoPoint* q = b.First();
    for (; p && q; p = p->NextConst(), q = q->NextConst()) {
        if (p->GetId() != q->GetId() || !(*p == *q) || p->GetControlFlags() != q->GetControlFlags()) return false;
    }
    return !p && !q;
}

/// One survey on its way from file to report. The folder takes all files that it makes.
class Survey : public LinkHdl {
  public:
    Survey(const fs::path& gsiFile, const fs::path& outFolder)
        : source(gsiFile), stem(gsiFile.stem().string()), folder(outFolder) {}

    bool Run() {
        std::printf("\n%s\n", source.filename().string().c_str());
        if (fs::is_directory(source) || !std::ifstream(source)) {
            std::printf("  this file cannot be opened\n");
            return false;
        }
        if (points.ReadGsiFile(Wide(source), false, eZoUnitM) == 0) {
            std::printf("  no coordinates in this file, as when it holds angles and distances only\n");
            return true;
        }
        points.SetMask(CooColumns());
        PrintStatistics();
        PointFile();
        ProjectText();
        Archive();
        MeasurementLog();
        Update();
        Planes();
        Page();
        return check.Good();
    }

  private:
    std::wstring Name(const char* ending) const { return string2wstring(stem + ending); }
    std::wstring File(const char* ending) const { return ZoMakeFilename(Wide(folder), Name(ending)); }

    void PrintStatistics() {
        unsigned long long total = 0;
        unsigned long long used = 0;
        points.GetStat(total, used);
        const ZoPoint centre = ZoCalcGravitycenter(points);
        low = high = *points.First();
        for (const ZoPoint* p = points.First(); p; p = p->NextConst()) {
            low.x = std::min(low.x, p->x), high.x = std::max(high.x, p->x);
            low.y = std::min(low.y, p->y), high.y = std::max(high.y, p->y);
            low.z = std::min(low.z, p->z), high.z = std::max(high.z, p->z);
        }
        std::printf("  %s points, x %.3f..%.3f, y %.3f..%.3f, z %.3f..%.3f m\n", zoitoa10(total).c_str(), low.x, high.x,
                    low.y, high.y, low.z, high.z);
        const std::size_t ids = ZoSortHelper<ZoPoint>(&points).index.size();
        std::printf("  centre %.3f %.3f %.3f, %zu different ids up to %u\n", centre.x, centre.y, centre.z, ids,
                    points.GetFreeId(0) - 1);
    }

    void PointFile() {
        check("point file written", points.WriteFile(File(".coo"), CooColumns()) == 1);
        ZoPointList back;
        back.ReadFile(File(".coo"), CooColumns());
        check("point file read back equal", SamePoints(points, back));
    }

    /// The same points as a block of a project file, read through keywords.
    void ProjectText() {
        {
            std::ofstream stream(fs::path(wstring2string(File(".pro"))), std::ios::binary);
            stream.imbue(std::locale::classic());
            stream << ZoComment << "points of " << stem << Zoendl << "COORDINATES" << w4 << ZoBeginBlockNL;
            points.Write(stream);
            stream << ZoEndBlockNL << Zoendl;
        }
        fromProject.SetMask(CooColumns());
        ZoReader reader(File(".pro"));
        reader.RegisterObject(ZoReaderObject("COORDINATES", Link(this, &Survey::ReadCoordinates)));
        reader.DoProcess(false);
        reader.LogErrorsToApplicationLogger();
        check("project block read back equal", reader.GetReadErrorCount() == 0 && SamePoints(points, fromProject));
    }

    long ReadCoordinates(ZoReaderObject* object) { return fromProject.Read(object); }

    void Archive() {
        ZoPointList back;
        check("archive written", SurveyArchive::Save(File(".zip"), points));
        check("archive read back equal", SurveyArchive::Load(File(".zip"), &back) && SamePoints(points, back));
    }

    void MeasurementLog() {
        const std::wstring file = File(".mlg");
        fs::remove(fs::path(wstring2string(file)));
        ZoLogItemList log;
        log.SetFilename(file);
        unsigned int items = 0;
        for (const ZoPoint* p = points.First(); p && items < 3; p = p->NextConst()) {
            ZoPointList images;
            for (unsigned int photo = 1; photo <= 2; ++photo) {
                ZoPoint measured(p->GetId(), 10.25 * photo, 20.5, 0, 0);
                measured.photoId = photo;
                images.Add(measured);
            }
            log.AddItem(ZoLogItem(*p, &images, eZoMeasureMode{}, ++items));
        }
        ZoLogItemList back;
        back.SetFilename(file);
        back.ReadFile();
        check("measurement log read back", back.Count() == static_cast<int>(items));
        check("points of the log written", back.WriteAsCooFile(back.GetDefaultCooFilename(), 1) == back.Count());
    }

    /// A second campaign, made up: all points 4 mm to the east, every tenth point 0.5 m up, two new points.
    void Update() {
        updated = points;
        ZoCooListUpdateHelper helper(&updated);
        ZoPointList* campaign = helper.GetUpdateList();
        int place = 0;
        for (const ZoPoint* p = points.First(); p; p = p->NextConst(), ++place) {
            ZoPoint moved(*p);
            moved.x += 0.004;
            if (place % 10 == 9) moved.z += 0.5;
            campaign->Add(moved);
        }
        const unsigned int firstNew = points.GetFreeId(0);
        const ZoPoint centre = ZoCalcGravitycenter(points);
        campaign->Add(ZoPoint(firstNew, centre.x - 5.0, centre.y, centre.z, 0));
        campaign->Add(ZoPoint(firstNew + 1, centre.x + 5.0, centre.y, centre.z, 0));

        const int incoming = campaign->Count();
        heldBackCount = helper.UpdateCooStep1(kTolerance, 1);
        heldBack = *helper.GetUpdateFailedList();
        // The host decides: in turn the mean, the old and the new value.
        ZoPointList* const decisions[] = {helper.GetMediumList(), helper.GetOldValueList(), helper.GetNewValueList()};
        ZoPointList* failed = helper.GetUpdateFailedList();
        std::size_t turn = 0;
        for (ZoPoint* p = failed->First(); p;)
            p = failed->Move(p, *decisions[turn++ % 3]);
        helper.UpdateCooStep2();

        added = updated.Count() - static_cast<int>(ZoSortHelper<ZoPoint>(&points).index.size());
        std::printf("  update: %d incoming, %d held back above %.0f mm, %d new, list now %d points\n", incoming,
                    heldBackCount, kTolerance * 1000, added, updated.Count());
        check("update added the two new points", added == 2);
    }

    /// Only a survey with two facades has any; others go without.
    void Planes() {
        hasFacades = facades.Fit(points);
        if (!hasFacades) return;
        fs::remove(fs::path(wstring2string(File("_planes.log"))));
        facades.Construct(points);
        facades.Print();
        check("plane file written and read back", facades.WriteFiles(File(".sip"), File("_planes.log")));
    }

    void Page() {
        ReportPage page(Wide(folder));
        page.Heading("Survey " + stem);
        page.Paragraph("Read from " + source.filename().string() + " on " + GetLocalTimeString() + ".");
        page.Table({{"", "smallest", "largest", "extent"},
                    {"x [m]", Number(low.x, 3), Number(high.x, 3), Number(high.x - low.x, 3)},
                    {"y [m]", Number(low.y, 3), Number(high.y, 3), Number(high.y - low.y, 3)},
                    {"z [m]", Number(low.z, 3), Number(high.z, 3), Number(high.z - low.z, 3)}});

        page.Section("Plan");
        page.Picture(Name("_plan.svg"), DrawPlan(PlanPoints(), kMarks, 900, 700), L"Plan of the survey", 900, 700);

        if (hasFacades) facades.AddTo(page, Name("_facade.svg"));

        page.Section("Update by the second campaign");
        page.Paragraph(StringPrintf("%d points moved by more than %.0f mm and were held back, %d points are new.",
                                    heldBackCount, kTolerance * 1000, added));
        std::vector<std::vector<std::string>> rows{{"Point", "dx [m]", "dy [m]", "dz [m]", "dS [m]"}};
        for (const ZoPoint* p = heldBack.First(); p && rows.size() <= kTableRows; p = p->NextConst()) {
            rows.push_back({std::to_string(p->GetId()), Number(p->dx, 3), Number(p->dy, 3), Number(p->dz, 3),
                            Number(std::hypot(p->dx, p->dy, p->dz), 3)});
        }
        page.Table(rows);

        page.Section("Points");
        rows = {{"Point", "Name", "Code", "x [m]", "y [m]", "z [m]"}};
        for (const ZoPoint* p = points.First(); p && rows.size() <= kTableRows; p = p->NextConst()) {
            rows.push_back({std::to_string(p->GetId()), wstring2string(p->GetName(), false), p->GetControlFlagsAsXYZ(),
                            Number(p->x, 3), Number(p->y, 3), Number(p->z, 3)});
        }
        page.Table(rows);
        if (points.CountMoreThan(static_cast<int>(kTableRows))) {
            page.Paragraph(StringPrintf("The first %d of %d points.", static_cast<int>(kTableRows), points.Count()));
        }
        check("report written", page.Write(Name(".html"), "Survey " + stem));
        std::printf("  %s\n", (folder / (stem + ".html")).string().c_str());
    }

    std::vector<PlanPoint> PlanPoints() {
        const ZoSortHelper<ZoPoint> surveyed(&points);
        const ZoSortHelper<ZoPoint> suspicious(&heldBack);
        std::vector<PlanPoint> plan;
        for (const ZoPoint* p = updated.First(); p; p = p->NextConst()) {
            const std::size_t mark = suspicious.Find(p->GetId()) ? 1 : surveyed.Find(p->GetId()) ? 0 : 2;
            plan.push_back({p->x, p->y, std::to_string(p->GetId()), mark});
        }
        return plan;
    }

    inline static const std::vector<Mark> kMarks{
        {"surveyed", "#008055"}, {"held back in the update", "#b10027"}, {"new", "#1f5fbf"}};

    fs::path source;
    std::string stem;
    fs::path folder;
    ZoPointList points;
    ZoPointList fromProject;
    ZoPointList updated;
    ZoPointList heldBack;
    ZoPoint low;
    ZoPoint high;
    Facades facades;
    bool hasFacades = false;
    int heldBackCount = 0;
    int added = 0;
    Checks check;
};

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = TakeArguments(argc, argv, "survey_report", "[survey.gsi ...]");
    if (!arguments) return 2;
    std::vector<fs::path> files = arguments->files;
    if (files.empty()) files.emplace_back(fs::path(ZORV_EXAMPLE_DATA) / "facade_survey.gsi");

    const HostSession session;
    bool good = true;
    int done = 0;
    ZoProgressBarRouter::ShowProgressBar(L"surveys", 0, static_cast<int>(files.size()));
    for (const fs::path& file : files) {
        Survey survey(file, arguments->out);
        if (!survey.Run()) {
            ZoApplicationLogger::Log(1, L"%s could not be worked through", Wide(file).c_str());
            good = false;
        }
        ZoProgressBarRouter::SetProgressBarPos(++done);
    }
    ZoProgressBarRouter::HideProgressBar();
    return good ? 0 : 1;
}
