#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "zorv/export.h"

namespace ZorvLibAuto {

/// Numbers of the camera models. All others are free.
enum eCamModel : std::uint32_t {
    eCamModelSimplePinhole = 0,
    eCamModelPinhole = 1,
    eCamModelPinholeSimpleRadial = 2,
    eCamModelPinholeRadial = 3,
    eCamModelPinholeRadialTangential = 6,
    eCamModelFisheye = 7,
    eCamModelPinholeOpenCVRadialTangential = 8,
    eCamModelPinholeFOV = 9,
    eCamModelFisheyeSimpleRadial = 10,
    eCamModelFisheyeRadial = 11,
    eCamModelFisheyeThinPrism = 12,
    eCamModelZorv = 24,
    eCamModelZorvViva = 25,
    eCamModelPinholeBLKRadialTangential = 28,
};

/// A digital camera as automatic orientation calibrates it: a model number and the parameters of that model.
///
/// It maps between pixels (u, v), with the origin in the upper left corner of the image and v downwards, and the plane
/// at unit distance in front of the projection centre (x, y), with its axes parallel to those of the pixels. Focal
/// lengths and principal points are in pixels. The names of a model's parameters, in their order, are those of
/// GetModelParameters; k are radial, p tangential and s thin prism coefficients on the plane. The distortion of the
/// models Zorv and ZorvViva acts in mm of the image plane: a1 to a4 are there m11, m22, m13, m23 of the matrix from
/// pixels to mm, and R1, R2, R0 are a1, a2, r0 of a ZoCamera, with its principal point xh, yh.
///
/// An operation that maps or asks by the model throws std::domain_error when the lower 16 bits of `model` are no model
/// number, or when there are fewer parameters than the model has. Nothing has changed then.
class ZORV_API Camera {
  public:
    using enum eCamModel;
    /// (u, v) or (x, y).
    using Coordinates = std::array<double, 2>;

    static constexpr std::uint32_t kNoId = 0xFFFFFFFF;
    static constexpr std::uint32_t kNoModel = 0xFFFFFFFF;

    Camera() = default;
    /// Throws as SetModel does.
    Camera(std::uint32_t modelNumber, double focal, std::uint64_t imageWidth, std::uint64_t imageHeight) {
        SetModel(modelNumber, focal, imageWidth, imageHeight);
    }

    /// Takes the model and the image size, with the focal length for both directions, the principal point in the image
    /// centre, and no distortion. The omega of Pinhole_FOV begins at 0.01, the matrix of the Zorv models as identity.
    void SetModel(std::uint32_t modelNumber, double focal, std::uint64_t imageWidth, std::uint64_t imageHeight);

    /// Takes the distortion off: (u, v) to (x, y). Where the distortion has no closed inverse, a Newton iteration ends
    /// with a step below 1e-5, after 100 passes, or before its values cease to be finite; its error is then about the
    /// square of the last step. There is no failure: beyond the reach of the model it gives what it has.
    Coordinates PixelToPlane(double u, double v) const;
    /// All points in place, which is faster than one by one and gives the same.
    void PixelToPlane(std::span<Coordinates> points) const;

    /// Puts the distortion on: (x, y) to (u, v), in closed form.
    Coordinates PlaneToPixel(double x, double y) const;
    void PlaneToPixel(std::span<Coordinates> points) const;

    /// In pixels. A model with one focal length has it in both directions.
    double GetFocalLength() const;
    double GetFocalLengthY() const;
    double GetPrincipalPointX() const;
    double GetPrincipalPointY() const;

    /// Name and parameter names of a model; empty for a number that is none.
    static std::string GetModelName(std::uint32_t modelNumber);
    static std::string GetModelParameters(std::uint32_t modelNumber);
    /// -1 for a name that is none.
    static int GetModelNumber(const std::string& name);

    std::uint32_t id = kNoId;
    std::uint32_t model = kNoModel;
    std::uint32_t flags = 0;
    std::uint64_t width = 0;   ///< image size in pixels
    std::uint64_t height = 0;  ///<
    std::vector<double> params;
    bool hasData = false;
};

}  // namespace ZorvLibAuto
