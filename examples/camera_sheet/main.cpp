// A host of the library: a sheet for each camera of camera files and calibrations, with its parameters, its distortion
// as curve and vector field, and the error of the inversion; the files go through all their forms.
//
//     camera_sheet [--out FOLDER] [cameras.cam | calibrations.txt ...]

#include <cmath>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "arguments.h"
#include "calibration_file.h"
#include "camera_sheet.h"
#include "console.h"
#include "interior.h"
#include "round_trip.h"
#include <zorv/zorv.h>

namespace {

namespace fs = std::filesystem;

constexpr double kLongSide = 36.0;  // mm, of an image whose calibration tells no size of a pixel

/// The cameras of one file.
class Job {
  public:
    Job(const fs::path& cameraFile, const fs::path& outFolder)
        : source(cameraFile), stem(cameraFile.stem().string()), folder(outFolder) {}

    bool Run() {
        std::printf("\n%s\n", source.filename().string().c_str());
        if (source.extension() == ".txt")
            ReadCalibrations();
        else
            ReadCameras();
        if (cameras.IsEmpty()) {
            std::printf("  no cameras in this file\n");
            return true;
        }
        CheckRoundTrips(cameras, Wide(folder), string2wstring(stem), check);
        for (const Interior& interior : interiors)
            Sheet(interior);
        return check.Good();
    }

  private:
    void ReadCameras() {
        cameras.Read(Wide(source));
        for (const ZoCamera* camera = cameras.First(); camera; camera = camera->NextConst())
            interiors.emplace_back(*camera);
    }

    void ReadCalibrations() {
        for (const ZorvLibAuto::Camera& calibration : ReadCalibrationFile(source)) {
            const std::string name = ZorvLibAuto::Camera::GetModelName(calibration.model) + " " +
                                     std::to_string(calibration.width) + " x " + std::to_string(calibration.height);
            const Interior& interior = interiors.emplace_back(calibration, name, kLongSide);
            cameras.Add(interior.Camera());
            check("camera " + std::to_string(calibration.id) + " corrects as its calibration",
                  CorrectsAs(interior, calibration));
        }
    }

    /// The corrected place of a pixel is the ray that the calibration gives it, at the distance of the constant.
    static bool CorrectsAs(const Interior& interior, const ZorvLibAuto::Camera& calibration) {
        constexpr double kRounding = 1e-9;  // mm
        const double pixel = interior.PixelSize();
        const double c = pixel * calibration.GetFocalLength();
        for (int part = 0; part <= 10; ++part) {
            const double column = static_cast<double>(calibration.width) * part / 10;
            const double row = static_cast<double>(calibration.height) * (10 - part) / 13;
            const auto [x, y] = calibration.PixelToPlane(column, row);
            const auto corrected =
                interior.Corrected({pixel * column - interior.HalfWidth(), interior.HalfHeight() - pixel * row});
            if (!corrected || !(std::hypot(corrected->x - c * x, corrected->y + c * y) < kRounding)) return false;
        }
        return true;
    }

    void Sheet(const Interior& interior) {
        // Tables are kept by number and constant, which the camera of another file may share.
        ZoCamera::DeleteInvAdjustTables();
        const ZoCamera& camera = interior.Camera();
        const std::string number = std::to_string(camera.GetId());
        std::string name = stem + "_camera_" + number;
        if (!pages.insert(name).second) pages.insert(name += "_" + std::to_string(pages.size()));
        const CameraSheet sheet(interior);
        const InversionReport& inversion = sheet.Inversion();
        if (interior.HasDistortion()) {
            constexpr double kUsualPart = 0.1;  // of the limit
            std::printf(
                "  camera %s, mode %u: distortion up to %.4g mm, inversion within %.2g mm, 99 %% within %.2g mm\n",
                number.c_str(), camera.mode, sheet.LargestShift(), inversion.worst, inversion.usual);
            if (inversion.lost > 0)
                std::printf("  %d of %d places without inverse\n", inversion.lost, inversion.places);
            const double limit = interior.InversionLimit();
            check("camera " + number + ", inversion as good as its way",
                  inversion.lost < inversion.places && inversion.worst < limit && inversion.usual < kUsualPart * limit);
        }
        check("camera " + number + " has its page", sheet.Write(Wide(folder), name));
        std::printf("  %s\n", (folder / (name + ".html")).string().c_str());
    }

    fs::path source;
    std::string stem;
    fs::path folder;
    ZoCameraList cameras;
    std::vector<Interior> interiors;
    std::set<std::string> pages;
    Checks check;
};

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = TakeArguments(argc, argv, "camera_sheet", "[cameras.cam | calibrations.txt ...]");
    if (!arguments) return 2;
    std::vector<fs::path> files = arguments->files;
    if (files.empty()) {
        for (const char* name : {"classic_cameras.cam", "mixed_cameras.cam", "calibrations.txt"})
            files.emplace_back(fs::path(ZORV_EXAMPLE_DATA) / name);
    }

    const HostSession session;
    bool good = true;
    for (const fs::path& file : files)
        good = Job(file, arguments->out).Run() && good;
    return good ? 0 : 1;
}
