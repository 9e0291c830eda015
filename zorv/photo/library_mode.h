#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "zorv/photo/camera.h"

namespace zorv::detail {

/// How a mode of a ZoCamera and a model of the library camera stand for each other.
struct LibraryMode {
    static constexpr std::size_t kMostCoefficients = 8;

    std::uint32_t mode;
    std::uint32_t model;
    /// Where the parameters behind the principal point are kept; null behind the last one.
    double ZoCamera::*coefficients[kMostCoefficients];
};

/// Parameters of the models Zorv and ZorvViva that are those of a camera of mode 0 or 1, and their places.
struct ClassicParameter {
    std::size_t index;
    double ZoCamera::*member;
};

std::span<const ClassicParameter> ClassicParameters();
/// Those that only ZorvViva has.
std::span<const ClassicParameter> InstrumentParameters();
inline constexpr std::size_t kInstrumentConstantIndex = 12;

/// Null for a mode without a model, and for modes 0 and 1, whose models take the matrix of a photo too.
const LibraryMode* FindLibraryMode(std::uint32_t mode);
/// By the model number, of which the lower 16 bits count; null for a number that is no model.
const LibraryMode* FindModeOfLibraryModel(std::uint32_t model);
/// The mode of a ZoCamera for a model number of the library camera; nothing for a number that is no model.
std::optional<std::uint32_t> ModeOfLibraryModel(std::int64_t model);

}  // namespace zorv::detail
