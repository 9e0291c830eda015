#include "zorv/photo/library_mode.h"

#include <algorithm>
#include <iterator>

#include "zorv/photo/auto/library_camera.h"

namespace zorv::detail {

namespace {

using ZorvLibAuto::Camera;
using C = ZoCamera;

constexpr LibraryMode kModes[] = {
    {0, Camera::eCamModelZorv, {}},
    {1, Camera::eCamModelZorvViva, {}},
    {4, Camera::eCamModelSimplePinhole, {}},
    {5, Camera::eCamModelPinhole, {}},
    {6, Camera::eCamModelPinholeSimpleRadial, {&C::a1}},
    {7, Camera::eCamModelFisheyeSimpleRadial, {&C::a1}},
    {8, Camera::eCamModelPinholeRadial, {&C::a1, &C::a2}},
    {11, Camera::eCamModelFisheyeRadial, {&C::a1, &C::a2}},
    {12, Camera::eCamModelPinholeRadialTangential, {&C::a1, &C::a2, &C::c1, &C::c2}},
    {13, Camera::eCamModelFisheye, {&C::a1, &C::a2, &C::a3, &C::a4}},
    {14,
     Camera::eCamModelPinholeOpenCVRadialTangential,
     {&C::a1, &C::a2, &C::c1, &C::c2, &C::a3, &C::a4, &C::a5, &C::a6}},
    {15, Camera::eCamModelPinholeFOV, {&C::omega}},
    {16, Camera::eCamModelFisheyeThinPrism, {&C::a1, &C::a2, &C::c1, &C::c2, &C::a3, &C::a4, &C::sx1, &C::sx2}},
    {17, Camera::eCamModelPinholeBLKRadialTangential, {&C::a1, &C::a2, &C::c1, &C::c2, &C::a3}},
};

constexpr ClassicParameter kClassicParameters[] = {
    {3, &C::xh}, {4, &C::yh}, {9, &C::a1}, {10, &C::a2}, {11, &C::r0},
};

constexpr ClassicParameter kInstrumentParameters[] = {
    {13, &C::xhViva},
    {14, &C::yhViva},
};

const LibraryMode* Find(std::uint32_t LibraryMode::*member, std::uint32_t value) {
    const auto found = std::ranges::find(kModes, value, member);
    return found == std::end(kModes) ? nullptr : found;
}

}  // namespace

std::span<const ClassicParameter> ClassicParameters() {
    return kClassicParameters;
}

std::span<const ClassicParameter> InstrumentParameters() {
    return kInstrumentParameters;
}

const LibraryMode* FindLibraryMode(std::uint32_t mode) {
    const bool isClassic = mode == ZoCamera::kClassicMode || mode == ZoCamera::kInstrumentMode;
    return isClassic ? nullptr : Find(&LibraryMode::mode, mode);
}

const LibraryMode* FindModeOfLibraryModel(std::uint32_t model) {
    return Find(&LibraryMode::model, model & 0xFFFF);
}

std::optional<std::uint32_t> ModeOfLibraryModel(std::int64_t model) {
    if (model < 0 || model > 0xFFFF) return std::nullopt;
    const LibraryMode* found = FindModeOfLibraryModel(static_cast<std::uint32_t>(model));
    return found ? std::optional(found->mode) : std::nullopt;
}

}  // namespace zorv::detail
