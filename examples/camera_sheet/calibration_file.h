#pragma once

#include <filesystem>
#include <vector>

#include <zorv/zorv.h>

/// Reads the cameras that structure-from-motion programs write as text, one a line:
///
///     id model width height parameters
///
/// Image size, focal lengths and principal point are in pixels, with the origin in the upper left corner; `#` begins a
/// comment. Lines of an unknown model, with too few parameters or without a focal length are left out and told on the
/// terminal.
std::vector<ZorvLibAuto::Camera> ReadCalibrationFile(const std::filesystem::path& path);
