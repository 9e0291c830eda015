#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "zorv/photo/auto/library_camera.h"

namespace zorv::detail {

/// What a model of the library camera is: the names, the places of its parameters and its two mappings.
struct LibraryModel {
    using Mapping = void (*)(const double* parameters, std::span<ZorvLibAuto::Camera::Coordinates> points);
    /// A parameter that begins at another value than 0.
    struct Preset {
        std::size_t index;
        double value;
    };

    std::uint32_t number;
    const char* name;
    const char* parameterNames;
    std::size_t parameterCount;
    std::size_t focalYIndex;  // the other focal length is the first parameter
    std::size_t principalPointIndex;
    Mapping pixelToPlane;
    Mapping planeToPixel;
    Preset presets[2] = {};
};

std::span<const LibraryModel> LibraryModels();
/// By the lower 16 bits; null for a number that is no model.
const LibraryModel* FindLibraryModel(std::uint32_t number);

}  // namespace zorv::detail
