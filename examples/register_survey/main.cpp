// A host of the library: brings two surveys of one object together, directly and robustly, lays a local system through
// three points, and tells the site's GPS position in every form.
//
//     register_survey [--out FOLDER] [survey.gsi ...]

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "arguments.h"
#include "console.h"
#include "registration.h"
#include "report_page.h"
#include "second_campaign.h"
#include "site_position.h"
#include <zorv/zorv.h>

namespace {

namespace fs = std::filesystem;

using Table = std::vector<std::vector<std::string>>;

constexpr std::size_t kTableRows = 60;

// Where the made-up house stands: degrees and metres.
constexpr double kLatitude = 47.4104167;
constexpr double kLongitude = 9.6083333;
constexpr double kAltitude = 408.0;

std::string Number(double value, int decimals) {
    return StringPrintf("%.*f", decimals, value);
}

double LargestResidual(const ZoTrafo3d& trafo) {
    const ZoPoint* const worst = trafo.GetWorstPoint();
    return worst ? std::hypot(worst->dx, worst->dy, worst->dz) : 0.0;
}

/// A local system through three points far from each other: the two ends of the survey give the X axis, the point
/// farthest off that line the plane of X and Y. The distance of the ends in the second campaign is the known one.
ZoLokalSystemDef LocalSystem(const ZoPointList& points) {
    const ZoPoint* ends[2] = {points.First(), points.First()};
    for (const ZoPoint* a = points.First(); a; a = a->NextConst()) {
        for (const ZoPoint* b = a->NextConst(); b; b = b->NextConst()) {
            if (a->DistanceSq(b) > ends[0]->DistanceSq(ends[1])) {
                ends[0] = a;
                ends[1] = b;
            }
        }
    }
    const auto at = [](const ZoPoint& p) { return ZoPoint3d(p.x, p.y, p.z); };
    const ZoLine3d axis(at(*ends[0]), at(*ends[1]));
    const ZoPoint* side = ends[0];
    for (const ZoPoint* p = points.First(); p; p = p->NextConst()) {
        if (axis.getNormDistance(at(*p)) > axis.getNormDistance(at(*side))) side = p;
    }
    ZoLokalSystemDef definition;
    definition.id0 = ends[0]->GetId();
    definition.id1 = ends[1]->GetId();
    definition.id2 = side->GetId();
    definition.id3 = definition.id0;
    definition.x = 100.0;
    definition.y = 200.0;
    definition.z = 10.0;
    definition.scale[0] = {definition.id0, definition.id1, ends[0]->Distance(ends[1])};
    return definition;
}

/// One survey, registered, with its report.
class Job {
  public:
    Job(const fs::path& gsiFile, const fs::path& outFolder)
        : source(gsiFile), stem(gsiFile.stem().string() + "_registered"), folder(outFolder) {}

    bool Run() {
        std::printf("\n%s\n", source.filename().string().c_str());
        ZoPointList first;
        if (first.ReadGsiFile(Wide(source), false, eZoUnitM) == 0) {
            std::printf("  no coordinates in this file\n");
            return true;
        }
        first.SortById();
        const SecondCampaign second(first);
        Registration registration(first, second);
        check("both fits found", registration.Run());
        if (!check.Good()) return false;
        std::printf("  direct: rms %.1f %.1f %.1f mm, worst %.0f mm, scale %.6f, rotation off by %.2f mgon\n",
                    registration.Direct().GetRmsX() * 1000, registration.Direct().GetRmsY() * 1000,
                    registration.Direct().GetRmsZ() * 1000, LargestResidual(registration.Direct()) * 1000,
                    registration.Direct().scale, registration.RotationError(registration.Direct()));
        std::printf("  robust: rms %.1f %.1f %.1f mm, scale %.6f, rotation off by %.2f mgon\n",
                    registration.Robust().GetRmsX() * 1000, registration.Robust().GetRmsY() * 1000,
                    registration.Robust().GetRmsZ() * 1000, registration.Robust().scale,
                    registration.RotationError(registration.Robust()));
        std::printf("  rejected:");
        for (const ZoPoint* p = registration.Rejected().First(); p; p = p->NextConst())
            std::printf(" %u", p->GetId());
        std::printf("\n");
        check("the rejected points are the planted blunders", registration.FoundAllBlunders());
        PointFile(registration.Accepted());
        const Table local = Local(first);
        Page(registration, second, local);
        return check.Good();
    }

  private:
    std::wstring Name(const char* ending) const { return string2wstring(stem + ending); }

    void PointFile(const ZoPointList& points) {
        constexpr double kFileRounding = 1e-9;  // metres: the file holds 16 digits
        const eZoPointRWMask columns[] = {eZoRWId, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
        const std::wstring file = ZoMakeFilename(Wide(folder), Name(".coo"));
        ZoPointList written(points);
        check("registered points written", written.WriteFile(file, columns) == 1);
        ZoPointList back;
        back.ReadFile(file, columns);
        const ZoPoint* p = points.First();
        const ZoPoint* q = back.First();
        for (; p && q && p->GetId() == q->GetId() && p->Distance(q) < kFileRounding; p = p->NextConst())
            q = q->NextConst();
        check("registered points read back", !p && !q);
    }

    /// The three points of the system and the first others, in local coordinates.
    Table Local(const ZoPointList& first) {
        const ZoLokalSystemDef definition = LocalSystem(first);
        ZoTrafo3d trafo;
        check("local system computed", trafo.CalcByLocalSystem(definition, &first, 0.0, 0.001));
        ZoPointList points(first);
        trafo.InPlaceTransform(&points);
        const ZoSortHelper<ZoPoint> local(&points);
        const ZoPoint* const origin = local.Find(definition.id0);
        const ZoPoint* const along = local.Find(definition.id1);
        const ZoPoint* const side = local.Find(definition.id2);
        constexpr double kRounding = 1e-6;
        check("its points lie on axis and plane",
              std::fabs(origin->x - definition.x) < kRounding && std::fabs(along->y - definition.y) < kRounding &&
                  std::fabs(along->z - definition.z) < kRounding && std::fabs(side->z - definition.z) < kRounding);
        std::printf("  local system: X axis from %u to %u, plane XY through %u\n", definition.id0, definition.id1,
                    definition.id2);
        Table rows{{"Point", "x [m]", "y [m]", "z [m]", "role"}};
        const auto row = [&](const ZoPoint& p, const char* role) {
            rows.push_back({std::to_string(p.GetId()), Number(p.x, 3), Number(p.y, 3), Number(p.z, 3), role});
        };
        row(*origin, "start of the X axis, given coordinates");
        row(*along, "end of the X axis");
        row(*side, "in the plane XY");
        for (const ZoPoint* p = points.First(); p && rows.size() < 9; p = p->NextConst()) {
            if (!definition.IsUsedInDef(p->GetId())) row(*p, "");
        }
        return rows;
    }

    void Page(const Registration& registration, const SecondCampaign& second, const Table& local) {
        ReportPage page(Wide(folder));
        page.Heading("Registration of " + source.filename().string());
        page.Paragraph(
            StringPrintf("The first campaign is the file. The second one was made from it by a known motion "
                         "with a noise of %.0f mm and %d planted blunders.",
                         second.noise * 1000, static_cast<int>(second.blunders.size())));
        Table rows{{"", "true", "direct fit", "robust fit"}};
        const ZoTrafo3d& direct = registration.Direct();
        const ZoTrafo3d& robust = registration.Robust();
        rows.push_back({"scale", Number(second.scale, 6), Number(direct.scale, 6), Number(robust.scale, 6)});
        rows.push_back({"rotation off by [mgon]", "0", Number(registration.RotationError(direct), 2),
                        Number(registration.RotationError(robust), 2)});
        rows.push_back({"rms x, y, z [mm]", Number(second.noise * 1000, 1), Rms(direct), Rms(robust)});
        rows.push_back(
            {"points used", "", std::to_string(direct.GetCommonCount()), std::to_string(robust.GetCommonCount())});
        page.Table(rows);
        page.Picture(Name("_direct.svg"), registration.DirectPicture(), L"Residuals of the direct fit", 860, 640);
        page.Picture(Name("_robust.svg"), registration.RobustPicture(), L"Residuals of the robust fit", 860, 640);

        page.Section("Residuals [mm]");
        Table residuals = registration.ResidualTable();
        const std::size_t all = residuals.size() - 1;
        residuals.resize(std::min(residuals.size(), kTableRows + 1));
        page.Table(residuals);
        if (all > kTableRows)
            page.Paragraph(
                StringPrintf("The first %d of %d points.", static_cast<int>(kTableRows), static_cast<int>(all)));

        page.Section("Local system");
        page.Table(local);
        page.Section("GPS position of the site (assumed)");
        page.Table(SitePositionTable(kLatitude, kLongitude, kAltitude));
        check("report written", page.Write(Name(".html"), "Registration of " + source.stem().string()));
        std::printf("  %s\n", (folder / (stem + ".html")).string().c_str());
    }

    static std::string Rms(const ZoTrafo3d& trafo) {
        return StringPrintf("%.1f, %.1f, %.1f", trafo.GetRmsX() * 1000, trafo.GetRmsY() * 1000, trafo.GetRmsZ() * 1000);
    }

    fs::path source;
    std::string stem;
    fs::path folder;
    Checks check;
};

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = TakeArguments(argc, argv, "register_survey", "[survey.gsi ...]");
    if (!arguments) return 2;
    std::vector<fs::path> files = arguments->files;
    if (files.empty()) files.emplace_back(fs::path(ZORV_EXAMPLE_DATA) / "facade_survey.gsi");

    const HostSession session;
    bool good = true;
    for (const fs::path& file : files)
        good = Job(file, arguments->out).Run() && good;
    return good ? 0 : 1;
}
