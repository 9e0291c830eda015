#include "zorv/photo/auto/library_camera.h"

#include <stdexcept>

#include "zorv/photo/auto/library_camera_models.h"

using zorv::detail::FindLibraryModel;
using zorv::detail::LibraryModel;

namespace ZorvLibAuto {

namespace {

const LibraryModel& ModelOf(std::uint32_t number) {
    const LibraryModel* model = FindLibraryModel(number);
    if (!model) throw std::domain_error("Unknown Camera model");
    return *model;
}

const LibraryModel& ModelOf(const Camera& camera) {
    const LibraryModel& model = ModelOf(camera.model);
    if (camera.params.size() < model.parameterCount) throw std::domain_error("Too few parameters of the Camera model");
    return model;
}

}  // namespace

void Camera::SetModel(std::uint32_t modelNumber, double focal, std::uint64_t imageWidth, std::uint64_t imageHeight) {
    const LibraryModel& known = ModelOf(modelNumber);
    params.assign(known.parameterCount, 0.0);
    params[0] = focal;
    params[known.focalYIndex] = focal;
    params[known.principalPointIndex] = static_cast<double>(imageWidth) / 2.0;
    params[known.principalPointIndex + 1] = static_cast<double>(imageHeight) / 2.0;
    for (const auto& [index, value] : known.presets)
        if (value != 0.0) params[index] = value;
    model = known.number;
    width = imageWidth;
    height = imageHeight;
}

Camera::Coordinates Camera::PixelToPlane(double u, double v) const {
    Coordinates point{u, v};
    PixelToPlane({&point, 1});
    return point;
}

void Camera::PixelToPlane(std::span<Coordinates> points) const {
    ModelOf(*this).pixelToPlane(params.data(), points);
}

Camera::Coordinates Camera::PlaneToPixel(double x, double y) const {
    Coordinates point{x, y};
    PlaneToPixel({&point, 1});
    return point;
}

void Camera::PlaneToPixel(std::span<Coordinates> points) const {
    ModelOf(*this).planeToPixel(params.data(), points);
}

double Camera::GetFocalLength() const {
    ModelOf(*this);
    return params[0];
}

double Camera::GetFocalLengthY() const {
    return params[ModelOf(*this).focalYIndex];
}

double Camera::GetPrincipalPointX() const {
    return params[ModelOf(*this).principalPointIndex];
}

double Camera::GetPrincipalPointY() const {
    return params[ModelOf(*this).principalPointIndex + 1];
}

std::string Camera::GetModelName(std::uint32_t modelNumber) {
    const LibraryModel* model = FindLibraryModel(modelNumber);
    return model ? model->name : "";
}

std::string Camera::GetModelParameters(std::uint32_t modelNumber) {
    const LibraryModel* model = FindLibraryModel(modelNumber);
    return model ? model->parameterNames : "";
}

int Camera::GetModelNumber(const std::string& name) {
    for (const LibraryModel& model : zorv::detail::LibraryModels())
        if (name == model.name) return static_cast<int>(model.number);
    return -1;
}

}  // namespace ZorvLibAuto
