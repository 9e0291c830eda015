// A host of the library: reads a project with oriented photos, turns pixels into image coordinates, rays and object
// points on a plane, and stores all of it as point file, project text and archive.
//
//     measure_photo [--out FOLDER] [project.pro pixels.imo]

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "arguments.h"
#include "console.h"
#include "photo_picture.h"
#include "project.h"
#include "report_page.h"
#include <zorv/zorv.h>

namespace {

namespace fs = std::filesystem;

using Table = std::vector<std::vector<std::string>>;

std::string Number(double value, int decimals) {
    return StringPrintf("%.*f", decimals, value);
}

/// From measured pixels to object points, photo by photo.
class Measuring {
  public:
    Measuring(Project& source, const fs::path& outFolder) : project(source), folder(outFolder) {}

    bool Run(const fs::path& pixelFile) {
        const eZoPointRWMask columns[] = {eZoRWPhoto, eZoRWId, eZoRWX, eZoRWY, eZoRWEnd};
        ZoPointList pixels;
        pixels.ReadFile(Wide(pixelFile), TZoFormatTable<eZoPointRWMask>(columns));
        std::printf("  %d measurements in %d photos\n", pixels.Count(), project.photos.Count());
        const ZoPlane* const plane = project.planes.First();
        if (!plane || pixels.IsEmpty()) return false;
        bool good = true;
        for (ZoPhoto* photo = project.photos.First(); photo; photo = photo->Next())
            good = Measure(*photo, *plane, pixels) && good;
        ZoPhoto::CalcPhotoCooDistances(&project.photos, &project.points);
        return good;
    }

    /// The mean of the object points of all photos, by id.
    ZoPointList ObjectPoints() const {
        std::map<unsigned int, std::pair<ZoPoint, int>> sums;
        for (const auto& [photo, list] : sights) {
            for (const Sight& sight : list) {
                auto& [sum, count] = sums[sight.point];
                sum.x += sight.object.x;
                sum.y += sight.object.y;
                sum.z += sight.object.z;
                ++count;
            }
        }
        ZoPointList points;
        for (const auto& [id, entry] : sums) {
            const auto& [sum, count] = entry;
            points.Add(ZoPoint(id, sum.x / count, sum.y / count, sum.z / count, 0));
        }
        return points;
    }

    double WorstPixels() const {
        return Worst([](const Sight& s) { return Residual(s); });
    }
    double WorstMetres() const {
        return Worst([](const Sight& s) { return s.offSurvey; });
    }

    /// A section for each photo.
    void AddTo(ReportPage& page) {
        for (const ZoPhoto* photo = project.photos.First(); photo; photo = photo->NextConst()) {
            const std::vector<Sight>& list = sights[photo->GetId()];
            page.Section("Photo " + wstring2string(ZoPhoto::GuiString(photo, true), false));
            double a = 0, b = 0, c = 0;
            photo->GetRotAOR(a, b, c);
            constexpr double kGon = 63.66197723675813;
            page.Table({{"", "x", "y", "z"},
                        {"projection centre [m]", Number(photo->GetPosAOR()[1], 3), Number(photo->GetPosAOR()[2], 3),
                         Number(photo->GetPosAOR()[3], 3)},
                        {"angles [gon]", Number(a * kGon, 4), Number(b * kGon, 4), Number(c * kGon, 4)}});
            const std::wstring name = L"photo_" + std::to_wstring(photo->GetId()) + L".svg";
            page.Picture(name, DrawPhoto(*photo, list), photo->GetName(), 860, 640);
            Table rows{{"Point", "column", "row", "residual [px]", "x [m]", "y [m]", "z [m]", "off the survey [mm]"}};
            for (const Sight& s : list) {
                rows.push_back({std::to_string(s.point), Number(s.column, 2), Number(s.row, 2), Number(Residual(s), 2),
                                Number(s.object.x, 3), Number(s.object.y, 3), Number(s.object.z, 3),
                                Number(s.offSurvey * 1000, 1)});
            }
            page.Table(rows);
        }
        page.Section("The site from above");
        page.Picture(L"site.svg", DrawSite(project.photos, project.points), L"Stations and surveyed points", 860, 640);
    }

    /// Rectification and ray must name the same place on the facade.
    double RectificationAgainstRays() const {
        double worst = 0;
        for (ZoPhoto* photo = project.photos.First(); photo; photo = photo->Next()) {
            for (const Sight& sight : sights.at(photo->GetId())) {
                ZoPoint* const imo = photo->FindImo(sight.point);
                ZoElspTrafo* const rectification = photo->GetElspTrafo(imo, nullptr, true);
                if (!rectification) continue;
                ZoPoint object;
                rectification->Transform(imo, &object);
                worst = std::max(worst, object.Distance(sight.object));
            }
        }
        return worst;
    }

  private:
    static double Residual(const Sight& s) { return std::hypot(s.computedColumn - s.column, s.computedRow - s.row); }

    template <class Size>
    double Worst(Size size) const {
        double worst = 0;
        for (const auto& [photo, list] : sights) {
            for (const Sight& sight : list)
                worst = std::max(worst, size(sight));
        }
        return worst;
    }

    bool Measure(ZoPhoto& photo, const ZoPlane& plane, const ZoPointList& pixels) {
        const ZoSortHelper<ZoPoint> surveyed(&project.points);
        const ZoBikoTransform toPixels(&photo, eObjectToDigi, true);
        bool good = true;
        for (const ZoPoint* pixel = pixels.First(); pixel; pixel = pixel->NextConst()) {
            if (pixel->photoId != photo.GetId()) continue;
            Sight sight;
            sight.point = pixel->GetId();
            sight.column = pixel->x;
            sight.row = pixel->y;
            // Pixels with rows from the top into the list of image measurements, then along the ray to the plane.
            ZoPoint measured(*pixel);
            photo.PixelRks_Lks(&measured);
            photo.AddImo(measured, eDigiToBiko);
            good = photo.CalcSip(&sight.object, plane, sight.point, false) && good;
            if (const ZoPoint* control = surveyed.Find(sight.point)) {
                ZoPoint computed(*control);
                toPixels.Transform(&computed);
                sight.computedColumn = computed.x;
                sight.computedRow = computed.y;
                sight.offSurvey = sight.object.Distance(control);
            }
            sights[photo.GetId()].push_back(sight);
        }
        return good;
    }

    Project& project;
    fs::path folder;
    std::map<unsigned int, std::vector<Sight>> sights;
};

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = TakeArguments(argc, argv, "measure_photo", "[project.pro pixels.imo]");
    if (!arguments) return 2;
    fs::path projectFile = fs::path(ZORV_EXAMPLE_DATA) / "facade_project.pro";
    fs::path pixelFile = fs::path(ZORV_EXAMPLE_DATA) / "facade_pixels.imo";
    if (arguments->files.size() == 2) {
        projectFile = arguments->files[0];
        pixelFile = arguments->files[1];
    }
    const HostSession session;
    Checks check;
    const auto file = [&](const wchar_t* name) { return ZoMakeFilename(Wide(arguments->out), name); };
    std::printf("\n%s\n", projectFile.filename().string().c_str());

    Project project;
    check("project read without errors", project.ReadText(Wide(projectFile)) == 0);
    project.MakeCameraPairs();

    Measuring measuring(project, arguments->out);
    check("every measurement gives an object point", measuring.Run(pixelFile));
    std::printf("  largest residual %.2f px, object points off the survey by up to %.1f mm\n", measuring.WorstPixels(),
                measuring.WorstMetres() * 1000);
    check("rectification and rays agree within 1 mm", measuring.RectificationAgainstRays() < 0.001);

    ZoPointList objects = measuring.ObjectPoints();
    const eZoPointRWMask columns[] = {eZoRWId, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};
    check("object points written", objects.WriteFile(file(L"facade_objects.coo"), columns) == 1);

    Project fromText;
    check("project text written", project.WriteText(file(L"facade_project.pro")));
    check("project text read back", fromText.ReadText(file(L"facade_project.pro")) == 0);
    Project fromArchive;
    check("archive written", project.WriteArchive(file(L"facade_project.zip")));
    check("archive read back", fromArchive.ReadArchive(file(L"facade_project.zip")));
    check("archive brings everything back", SameProject(project, fromArchive));
    check("text brings photos, planes and points back", fromText.photos.Count() == project.photos.Count() &&
                                                            fromText.planes.Count() == project.planes.Count() &&
                                                            fromText.points.Count() == project.points.Count());

    ReportPage page(Wide(arguments->out));
    page.Heading("Measuring in photos: " + projectFile.filename().string());
    page.Paragraph(
        StringPrintf("The largest residual is %.2f pixels; the object points lie up to %.1f mm off the survey.",
                     measuring.WorstPixels(), measuring.WorstMetres() * 1000));
    measuring.AddTo(page);
    check("report written", page.Write(L"facade_photos.html", "Measuring in photos"));
    std::printf("  %s\n", (arguments->out / "facade_photos.html").string().c_str());
    return check.Good() ? 0 : 1;
}
