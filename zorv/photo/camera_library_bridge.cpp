#include "zorv/photo/camera_library_bridge.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "zorv/core/number_cast.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/auto/library_camera_models.h"
#include "zorv/photo/camera_pair.h"
#include "zorv/photo/camera_parameters.h"
#include "zorv/photo/library_mode.h"

using ZorvLibAuto::Camera;

namespace zorv::detail {

namespace {

std::unique_ptr<ZoCamPair> MakePair(const Camera& library, const PhotoGeometry* photo) {
    return photo ? std::make_unique<ZoCamPair>(library, photo->digiToBiko) : std::make_unique<ZoCamPair>(library);
}

/// Whether the axes of pixels and image coordinates are so far apart that the model, which knows no rotation, cannot
/// hold them.
bool IsTurned(const ZoMatrix& digiToBiko) {
    const ZoMatrix& m = digiToBiko;
    return !(std::fabs(m[1][1]) > std::fabs(m[1][2]) && std::fabs(m[2][2]) > std::fabs(m[2][1]));
}

bool IsPositive(double value) {
    return value > 0.0 && std::isfinite(value);
}

std::uint64_t PixelCount(double size) {
    return static_cast<std::uint64_t>(std::max(SaturatedInt(size), 0));
}

/// Whether it is a camera that can map points.
bool HasModel(const Camera& library) {
    const LibraryModel* model = FindLibraryModel(library.model);
    return model && library.params.size() >= model->parameterCount;
}

/// The principal point in mm. Without a photo pixels stand for mm, with the rows upwards.
void SetPrincipalPoint(ZoCamera& camera, const Camera& library, const PhotoGeometry* photo) {
    camera.xh = library.GetPrincipalPointX();
    camera.yh = library.GetPrincipalPointY();
    if (photo && photo->flippedDigiToBiko)
        photo->flippedDigiToBiko(&camera.xh, &camera.yh);
    else
        camera.yh = static_cast<double>(library.height) - camera.yh;
}

std::wstring NameOfModel(std::uint32_t model) {
    const std::wstring local = ZoCamera::GetLocalAutoLibName(static_cast<int>(model & 0xFFFF));
    return local.empty() ? string2wstring(Camera::GetModelName(model)) : local;
}

}  // namespace

bool CreateLibraryCameraFromClassic(ZoCamera& camera, const PhotoGeometry* photo) {
    const bool isInstrument = camera.IsTs15();
    if (!photo || !(camera.IsOldZorv() || isInstrument) || IsTurned(photo->digiToBiko)) return false;
    const double s = photo->pixelsPerMm();
    const double focal = s * camera.c;
    if (focal == 0.0 || !std::isfinite(focal)) return false;

    Camera library(isInstrument ? Camera::eCamModelZorvViva : Camera::eCamModelZorv, focal, PixelCount(photo->width),
                   PixelCount(photo->height));
    library.id = camera.GetId();
    library.hasData = true;
    std::vector<double>& p = library.params;
    if (isInstrument) {
        p[1] = std::floor(p[1]);
        p[2] = std::floor(p[2]);
    }
    const ZoMatrix& m = photo->digiToBiko;
    p[5] = m[1][1];
    p[6] = m[2][2];
    p[7] = m[1][3];
    p[8] = m[2][3];
    for (const auto& [index, member] : ClassicParameters())
        p[index] = camera.*member;
    if (isInstrument) {
        p[kInstrumentConstantIndex] = s * camera.cViva;
        for (const auto& [index, member] : InstrumentParameters())
            p[index] = camera.*member;
    }
    camera.camPair = MakePair(library, photo);
    return true;
}

void CreateLibraryCamera(ZoCamera& camera, const PhotoGeometry* photo, bool fromClassic) {
    constexpr std::uint32_t kFirstLibraryMode = 4;
    if (fromClassic && CreateLibraryCameraFromClassic(camera, photo)) return;
    if (camera.mode < kFirstLibraryMode) return;
    const LibraryMode* mode = FindLibraryMode(camera.mode);
    if (!mode || !IsPositive(camera.k1) || !IsPositive(camera.k2) || !IsPositive(camera.k3)) {
        camera.DeleteCamPair();
        return;
    }
    const LibraryModel& model = *FindLibraryModel(mode->model);
    Camera library(mode->model, camera.c / camera.k3, PixelCount(camera.k1), PixelCount(camera.k2));
    library.id = camera.GetId();
    library.hasData = true;
    library.flags = static_cast<std::uint32_t>(camera.libAutoFlags);
    if (model.focalYIndex != 0) library.params[model.focalYIndex] = camera.cViva / camera.k3;
    std::size_t index = model.principalPointIndex;
    library.params[index++] = camera.k4;
    library.params[index++] = camera.k5;
    for (; index < model.parameterCount; ++index)
        library.params[index] = camera.*mode->coefficients[index - model.principalPointIndex - 2];
    camera.camPair = MakePair(library, photo);
}

void TakeLibraryCamera(ZoCamera& camera, const Camera& library, const PhotoGeometry* photo) {
    const Camera source = library;  // the given one may be part of the pair that goes
    const double mmPerPixel = photo ? 1.0 / photo->pixelsPerMm() : 1.0;
    for (const auto& parameter : kCameraParameters)
        camera.*parameter.member = 0.0;
    camera.SetId(source.id);
    if (camera.libAutoFlags != 0) camera.SetName(NameOfModel(source.model));
    camera.k1 = static_cast<double>(source.width);
    camera.k2 = static_cast<double>(source.height);
    camera.k3 = mmPerPixel;
    camera.DeleteCamPair();
    if (!HasModel(source)) return;

    camera.c = mmPerPixel * source.GetFocalLength();
    SetPrincipalPoint(camera, source, photo);
    camera.k4 = source.GetPrincipalPointX();
    camera.k5 = source.GetPrincipalPointY();
    const LibraryMode& mode = *FindModeOfLibraryModel(source.model);
    const LibraryModel& model = *FindLibraryModel(source.model);
    camera.mode = mode.mode;
    const std::vector<double>& p = source.params;
    if (camera.IsOldZorv() || camera.IsTs15()) {
        for (const auto& [index, member] : ClassicParameters())
            camera.*member = p[index];
        if (camera.IsTs15()) {
            camera.cViva = mmPerPixel * p[kInstrumentConstantIndex];
            for (const auto& [index, member] : InstrumentParameters())
                camera.*member = p[index];
        }
        return;
    }
    if (model.focalYIndex != 0) camera.cViva = mmPerPixel * source.GetFocalLengthY();
    const std::size_t firstCoefficient = model.principalPointIndex + 2;
    for (std::size_t index = firstCoefficient; index < model.parameterCount; ++index)
        camera.*mode.coefficients[index - firstCoefficient] = p[index];
    camera.camPair = MakePair(source, photo);
}

}  // namespace zorv::detail

using zorv::detail::GeometryOf;
using zorv::detail::PhotoGeometry;

namespace {

const PhotoGeometry* PointerTo(const std::optional<PhotoGeometry>& geometry) {
    return geometry ? &*geometry : nullptr;
}

std::map<int, std::wstring>& LocalNames() {
    static std::map<int, std::wstring> names;
    return names;
}

}  // namespace

void ZoCamera::CreateLibAutoCam(ZoPhoto* photo, bool fromClassic) {
    zorv::detail::CreateLibraryCamera(*this, PointerTo(GeometryOf(photo)), fromClassic);
}

bool ZoCamera::CreateLibAutoCamFromZorvCamera(ZoPhoto* photo) {
    return zorv::detail::CreateLibraryCameraFromClassic(*this, PointerTo(GeometryOf(photo)));
}

void ZoCamera::SetFromLibAuto(const Camera* camera, ZoPhoto* photo) {
    if (camera) zorv::detail::TakeLibraryCamera(*this, *camera, PointerTo(GeometryOf(photo)));
}

std::wstring ZoCamera::GetLocalAutoLibName(int model) {
    const auto found = LocalNames().find(model);
    return found == LocalNames().end() ? std::wstring() : found->second;
}

bool ZoCamera::SetLocalAutoLibName(int model, const wchar_t* name) {
    if (!name) return false;
    LocalNames()[model] = name;
    return true;
}
