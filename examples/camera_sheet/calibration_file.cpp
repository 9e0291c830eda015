#include "calibration_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>

namespace {

using ZorvLibAuto::Camera;

constexpr struct {
    const char* name;
    std::uint32_t model;
} kModels[] = {
    {"SIMPLE_PINHOLE", Camera::eCamModelSimplePinhole},
    {"PINHOLE", Camera::eCamModelPinhole},
    {"SIMPLE_RADIAL", Camera::eCamModelPinholeSimpleRadial},
    {"RADIAL", Camera::eCamModelPinholeRadial},
    {"OPENCV", Camera::eCamModelPinholeRadialTangential},
    {"OPENCV_FISHEYE", Camera::eCamModelFisheye},
    {"FULL_OPENCV", Camera::eCamModelPinholeOpenCVRadialTangential},
    {"FOV", Camera::eCamModelPinholeFOV},
    {"SIMPLE_RADIAL_FISHEYE", Camera::eCamModelFisheyeSimpleRadial},
    {"RADIAL_FISHEYE", Camera::eCamModelFisheyeRadial},
    {"THIN_PRISM_FISHEYE", Camera::eCamModelFisheyeThinPrism},
};

/// The parameters of these models stand in the order of the library camera.
std::optional<Camera> ReadLine(const std::string& line) {
    std::istringstream in(line);
    in.imbue(std::locale::classic());
    unsigned int id = 0;
    std::string name;
    int width = 0;
    int height = 0;
    if (!(in >> id >> name >> width >> height) || width <= 0 || height <= 0) return std::nullopt;
    const auto found = std::ranges::find_if(kModels, [&](const auto& each) { return name == each.name; });
    if (found == std::end(kModels)) return std::nullopt;
    Camera camera(found->model, 1.0, static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height));
    camera.id = id;
    camera.hasData = true;
    for (double& parameter : camera.params) {
        if (!(in >> parameter) || !std::isfinite(parameter)) return std::nullopt;
    }
    if (!(camera.GetFocalLength() > 0 && camera.GetFocalLengthY() > 0)) return std::nullopt;
    return camera;
}

}  // namespace

std::vector<Camera> ReadCalibrationFile(const std::filesystem::path& path) {
    std::vector<Camera> cameras;
    std::ifstream file(path);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#' || line[0] == '\r') continue;
        if (const auto camera = ReadLine(line))
            cameras.push_back(*camera);
        else
            std::printf("  line %d is no camera of a known model\n", number);
    }
    return cameras;
}
