// A host of the library: takes point clouds from the files in which they come to a stored selection, with a page for
// each.
//
//     cloud_tour [--out FOLDER] [FILE.pts FILE.xyz FILE.las FILE.laz FILE.zoptc ...]

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "arguments.h"
#include "cloud_pictures.h"
#include "console.h"
#include "report_page.h"
#include <zorv/zorv.h>

namespace {

namespace fs = std::filesystem;

using Table = std::vector<std::vector<std::string>>;

std::string Number(double value, int decimals) {
    return StringPrintf("%.*f", decimals, value);
}

std::string Count(std::uint64_t value) {
    return zoitoa10(static_cast<unsigned long long>(value));
}

bool SameRecord(const ZoScanPoint3d& a, const ZoScanPoint3d& b) {
    return a.x() == b.x() && a.y() == b.y() && a.z() == b.z() && std::equal(a.normal, a.normal + 3, b.normal) &&
           a.color == b.color && a.flags == b.flags;
}

ZoPoint3d LowCorner(const ZoPointCloud& cloud) {
    return {cloud.GetBox().Xmin(), cloud.GetBox().Ymin(), cloud.GetBox().Zmin()};
}

ZoPoint3d HighCorner(const ZoPointCloud& cloud) {
    return {cloud.GetBox().Xmax(), cloud.GetBox().Ymax(), cloud.GetBox().Zmax()};
}

/// Whether two clouds hold points that agree by `same`, in one order.
template <class Same>
bool SamePoints(const ZoPointCloud& a, const ZoPointCloud& b, Same same) {
    return a.Size() == b.Size() && std::equal(a.GetPoints().begin(), a.GetPoints().end(), b.GetPoints().begin(), same);
}

/// The middle half of a box as a volume of selection: four upright planes that look inwards.
Zo3dSelectVolume MiddleOf(const ZoBoundingBox3d& box) {
    const double x[] = {box.Xmin(), box.Xmax()};
    const double y[] = {box.Ymin(), box.Ymax()};
    const double quarterX = (x[1] - x[0]) / 4;
    const double quarterY = (y[1] - y[0]) / 4;
    Zo3dSelectVolume volume;
    volume.SetOffset(ZoPoint3d((x[0] + x[1]) / 2, (y[0] + y[1]) / 2, box.Zmin()));
    const auto plane = [](double a, double b, double d) {
        ZoPlane upright;
        upright.A() = a;
        upright.B() = b;
        upright.D() = d;
        return upright;
    };
    volume.SetPlane(0, plane(1, 0, quarterX));
    volume.SetPlane(1, plane(-1, 0, quarterX));
    volume.SetPlane(2, plane(0, 1, quarterY));
    volume.SetPlane(3, plane(0, -1, quarterY));
    volume.StartPyramid();
    return volume;
}

/// One file on its way.
class Tour {
  public:
    Tour(const fs::path& file, const fs::path& outFolder) : source(file), folder(outFolder) {
        stem = file.filename().string();
        std::replace(stem.begin(), stem.end(), '.', '_');
    }

    bool Run() {
        std::printf("\n%s\n", source.filename().string().c_str());
        ZoPointCloudReadResult result;
        const double started = Seconds();
        if (!Import(result)) {
            std::printf("  this file cannot be read (error %d)\n", result.error);
            return false;
        }
        importSeconds = Seconds() - started;
        if (clouds.Size() == 0) {
            std::printf("  no points\n");
            return true;
        }
        ZoPointCloud& cloud = *clouds.First();
        Statistics(cloud);
        Normals(cloud);
        Selection(cloud);
        Motion(cloud);
        NativeFile();
        Ascii(cloud);
        Page(cloud);
        return check.Good();
    }

  private:
    static double Seconds() {
        return static_cast<double>(std::chrono::steady_clock::now().time_since_epoch().count()) *
               std::chrono::steady_clock::period::num / std::chrono::steady_clock::period::den;
    }

    std::wstring Name(const char* ending) const { return string2wstring(stem + ending); }
    std::wstring File(const char* ending) const { return ZoMakeFilename(Wide(folder), Name(ending)); }

    bool Import(ZoPointCloudReadResult& result) {
        const std::wstring path = Wide(source);
        switch (ZoDetectZorvFiles(path).DetectByExtension()) {
            case eZorvFilePts:
                return clouds.ReadPtsFile(path, result);
            case eZorvFileXyz:
                return clouds.ReadXYZFile(path, result);
            case eZorvFileLas:
            case eZorvFileLaz:
                return clouds.ReadLasLazFile(path, result);
            case eZorvFileZoptc:
                return clouds.Read(path, result);
            default:
                return false;
        }
    }

    void Statistics(const ZoPointCloud& cloud) {
        const ZoBoundingBox3d& box = cloud.GetBox();
        std::printf("  %s points in %.0f ms, x %.3f..%.3f, y %.3f..%.3f, z %.3f..%.3f\n", Count(cloud.Size()).c_str(),
                    importSeconds * 1000, box.Xmin(), box.Xmax(), box.Ymin(), box.Ymax(), box.Zmin(), box.Zmax());
    }

    void Normals(ZoPointCloud& cloud) {
        planeFitted = cloud.CalcEstimatedNormals();
        const ZoPoint3d low = LowCorner(cloud);
        const ZoPoint3d high = HighCorner(cloud);
        cloud.EstimateNormals(ZoPoint3d((low.x() + high.x()) / 2, (low.y() + high.y()) / 2, high.z() + 100.0));
        std::uint64_t withNormal = 0;
        std::uint64_t all = 0;
        cloud.CountNormals(withNormal, all);
        check("every point has a normal", withNormal == all && all == cloud.Size());
    }

    void Selection(ZoPointCloud& cloud) {
        const std::size_t before = cloud.Size();
        selected = cloud.SelectPoints(MiddleOf(cloud.GetBox()));
        const std::size_t removed = clouds.DeleteSelectedPoints(false);
        const std::size_t left = cloud.Size();
        std::printf("  %s points selected and deleted, %s left\n", Count(selected).c_str(), Count(left).c_str());
        check("the selected points are gone", removed == selected && left + removed == before);
        if (removed > 0) check("undo brings them back", cloud.UndoDelete() && cloud.Size() == before);
        clouds.UpdateCenterAndBox(nullptr);
    }

    void Motion(ZoPointCloud& cloud) {
        const ZoPoint3d first = cloud.GetPoints().front();
        const ZoPoint3d low = LowCorner(cloud);
        const ZoVector3d shift(10, -20, 5);
        const ZoAffinMap3d map = ZoAffinMap3d::Translate(low.x(), low.y(), low.z()) * ZoAffinMap3d::Translate(shift) *
                                 ZoAffinMap3d::RotZ(0.3) * ZoAffinMap3d::Translate(-low.x(), -low.y(), -low.z());
        clouds.Transform(map, true);
        clouds.Transform(ZoAffinMap3d::Inv(map), true);
        constexpr double kRounding = 1e-6;
        check("a transformation and its inverse", cloud.GetPoints().front().Distance(first) < kRounding);
    }

    void NativeFile() {
        check("cloud file written", clouds.Write(File(".zoptc")) == 1);
        ZoPointCloudContainer back;
        ZoPointCloudReadResult result;
        check("cloud file read back equal",
              back.Read(File(".zoptc"), result) && SamePoints(*back.First(), *clouds.First(), SameRecord));
    }

    void Ascii(const ZoPointCloud& cloud) {
        {
            const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
                std::fopen((folder / (stem + "_export.pts")).string().c_str(), "wb"), std::fclose);
            if (!file) return check("text export", false);
            std::fprintf(file.get(), "%s\n", std::to_string(cloud.Size()).c_str());
            for (const ZoScanPoint3d& point : cloud.GetPoints())
                point.WriteAscii(file.get(), false, false);
        }
        ZoPointCloudContainer back;
        ZoPointCloudReadResult result;
        const auto close = [](const ZoScanPoint3d& a, const ZoScanPoint3d& b) {
            constexpr double kSixDigits = 1e-6;
            return a.Distance(b) < kSixDigits && a.GetColor() == b.GetColor();
        };
        check("text export reads back",
              back.ReadPtsFile(File("_export.pts"), result) && SamePoints(*back.First(), cloud, close));
    }

    void Page(const ZoPointCloud& cloud) {
        ReportPage page(Wide(folder));
        page.Heading("Cloud " + source.filename().string());
        page.Paragraph(Count(cloud.Size()) + " points, imported in " + Number(importSeconds * 1000, 0) + " ms.");
        const ZoPoint3d low = LowCorner(cloud);
        const ZoPoint3d high = HighCorner(cloud);
        Table rows{{"", "smallest", "largest", "extent"}};
        const char* const axes[] = {"x [m]", "y [m]", "z [m]"};
        for (int i = 0; i < 3; ++i)
            rows.push_back({axes[i], Number(low[i], 3), Number(high[i], 3), Number(high[i] - low[i], 3)});
        page.Table(rows);
        page.Table({{"", ""},
                    {"colours", cloud.HasNoColors() ? "none" : "yes"},
                    {"one plane through the cloud", planeFitted ? "fitted" : "no"},
                    {"points in the middle half", Count(selected)}});
        page.Section("From above");
        page.Picture(Name("_top.bmp"), TopView(cloud), L"The cloud from above");
        const HeightHistogram heights(cloud);
        page.Section("Heights");
        std::string peaks = "Heights that stand out [m]:";
        for (const int peak : heights.peaks)
            peaks += " " + Number(heights.low + (peak + 0.5) * heights.step, 2);
        page.Paragraph(peaks);
        page.Picture(Name("_heights.svg"), heights.Svg(), L"Histogram of the heights", 860, 400);
        check("report written", page.Write(Name(".html"), "Cloud " + stem));
        std::printf("  %s\n", (folder / (stem + ".html")).string().c_str());
    }

    fs::path source;
    fs::path folder;
    std::string stem;
    ZoPointCloudContainer clouds;
    double importSeconds = 0;
    bool planeFitted = false;
    std::size_t selected = 0;
    Checks check;
};

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = TakeArguments(argc, argv, "cloud_tour", "[cloud.pts|xyz|las|laz|zoptc ...]");
    if (!arguments) return 2;
    std::vector<fs::path> files = arguments->files;
    if (files.empty()) {
        for (const char* name : {"house.pts", "house.xyz", "house.las"})
            files.push_back(fs::path(ZORV_EXAMPLE_DATA) / name);
    }
    const HostSession session;
    bool good = true;
    for (const fs::path& file : files)
        good = Tour(file, arguments->out).Run() && good;
    return good ? 0 : 1;
}
